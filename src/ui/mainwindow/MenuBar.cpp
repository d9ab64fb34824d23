#include "ui/mainwindow/MenuBar.h"

#include "menus/MenuBarCommands.h"

#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <array>

namespace mw {

namespace {

using S = CommandSource;
using C = CommandStates;

constexpr MenuEntry Sep(const char* menu) { return {menu, nullptr, nullptr, nullptr}; }

const std::array kEntries{
    MenuEntry{"", "File", nullptr, "mnuFile", S::Submenu},
    MenuEntry{"mnuFile", "New...", "Ctrl+N", "mnuNew"},
    MenuEntry{"mnuFile", "New with wizard...", "Ctrl+W", "mnuNewWizard"},
    MenuEntry{"mnuFile", "Open...", "Ctrl+O", "mnuOpen"},
    MenuEntry{"mnuFile", "Close", nullptr, "mnuClose", S::Document},
    Sep("mnuFile"),
    MenuEntry{"mnuFile", "Normalize", nullptr, "mnuNormalize", S::State, &C::mnuNormalize},
    MenuEntry{"mnuFile", "Check for errors", nullptr, "mnuCheck", S::State, &C::mnuCheck},
    Sep("mnuFile"),
    MenuEntry{"mnuFile", "Save", "Ctrl+S", "mnuSave", S::Document},
    MenuEntry{"mnuFile", "Save As...", nullptr, "mnuSaveAs", S::Document},
    Sep("mnuFile"),
    MenuEntry{"mnuFile", "Export DVD-Video...", nullptr, "mnuExportDvd", S::Document},
    Sep("mnuFile"),
    MenuEntry{"mnuFile", "Options...", "Ctrl+P", "mnuOptions"},
    Sep("mnuFile"),
    MenuEntry{"mnuFile", "Recent files", nullptr, "mnuRecentFiles", S::Submenu},
    Sep("mnuFile"),
    MenuEntry{"mnuFile", "Exit", nullptr, "mnuExit"},

    MenuEntry{"", "Edit", nullptr, "mnuEdit", S::Submenu},
    MenuEntry{"mnuEdit", "Undo", "Ctrl+Z", "mnuUndo", S::State, &C::mnuUndo},
    Sep("mnuEdit"),
    MenuEntry{"mnuEdit", "Copy button(s)", nullptr, "mnuCopyButtons2", S::Rule, nullptr, &CanCopyButtons},
    MenuEntry{"mnuEdit", "Paste button(s)", nullptr, "mnuPasteButtons2", S::Rule, nullptr, &CanPasteButtons},
    Sep("mnuEdit"),
    MenuEntry{"mnuEdit", "Copy buttons size", "F4", "mnuCopySize2", S::Rule, nullptr, &CanCopySize},
    MenuEntry{"mnuEdit", "Paste button size", "F5", "mnuPasteSize2", S::Rule, nullptr, &CanPasteSize},

    MenuEntry{"", "Features", nullptr, "mnuFeatures", S::Submenu},
    MenuEntry{"mnuFeatures", "Add Titles...", "F6", "mnuAddTitle", S::Document},
    MenuEntry{"mnuFeatures", "Create Chapters for Title...", "F9", "mnuCreateChapters", S::Document},
    MenuEntry{"mnuFeatures", "Refresh Title", "Ctrl+F6", "mnuRefreshTitle", S::State, &CommandStates::mnuRefreshTitle},
    MenuEntry{"mnuFeatures", "Add Language Menus...", nullptr, "mnuAddLang", S::Document},
    MenuEntry{"mnuFeatures", "Add Menu...", "F7", "mnuAddMenu", S::Document},
    MenuEntry{"mnuFeatures", "Add Button", "F8", "mnuAddButton", S::Rule, nullptr, &MenuOnCanvas},
    Sep("mnuFeatures"),
    MenuEntry{"mnuFeatures", "Remove Title", "Shift+F6", "mnuRemoveTitle", S::State, &CommandStates::mnuRemoveTitle},
    MenuEntry{"mnuFeatures", "Remove Language Menus", nullptr, "mnuRemoveLang", S::State, &C::mnuRemoveLang},
    MenuEntry{"mnuFeatures", "Remove Menu", "Shift+F7", "mnuRemoveMenu", S::State, &C::mnuRemoveMenu},
    MenuEntry{"mnuFeatures", "Remove Button", "Shift+F8", "mnuRemoveButton", S::State, &C::mnuRemoveButton},
    Sep("mnuFeatures"),
    MenuEntry{"mnuFeatures", "Create DivX", "F12", "mnuCreateDivX", S::Document},

    MenuEntry{"", "View", nullptr, "mnuView", S::Submenu},
    MenuEntry{"mnuView", "Simple mode", nullptr, "mnuSimpleMode"},
    MenuEntry{"mnuView", "Expert Mode", nullptr, "mnuExpertMode"},
    Sep("mnuView"),
    MenuEntry{"mnuView", "Menu properties", nullptr, "mnuShowMenuProp", S::Rule, nullptr, &MenuOnCanvas, true},
    MenuEntry{"mnuView", "Button properties", nullptr, "mnuShowButtonProp", S::Rule, nullptr, &MenuOnCanvas, true},
    MenuEntry{"mnuView", "Rulers in menu", nullptr, "mnuViewRullers"},
    Sep("mnuView"),
    MenuEntry{"mnuView", "Previous node", "F2", "mnuPreviusNode", S::State, &CommandStates::mnuPreviusNode},
    MenuEntry{"mnuView", "Next node", "F3", "mnuNextNode", S::State, &CommandStates::mnuNextNode},

    MenuEntry{"", "Tools", nullptr, "mnuTools", S::Submenu},
    MenuEntry{"mnuTools", "Mux multiple files", nullptr, "mnuMux", S::Always},
    MenuEntry{"mnuTools", "Many movies with menu...", "Ctrl+M", "mnuMoviesWithMenu", S::Always},
    MenuEntry{"mnuTools", "One movie with chapters...", nullptr, "mnuMovieWithChaps", S::Always},
    MenuEntry{"mnuTools", "Menu for chapters with preview...", nullptr, "mnuCreateVisualMenuForChapters", S::Rule, nullptr, &HasTitles},
    MenuEntry{"mnuTools", "Menu for Audio/Subtitles setup...", nullptr, "mnuSetup", S::Rule, nullptr, &HasTitles},
    MenuEntry{"mnuTools", "Buttons from DVDSubEdit...", nullptr, "mnuButtonsFromDVDSubEdit", S::Document},
    Sep("mnuTools"),
    MenuEntry{"mnuTools", "Export menu to template...", nullptr, "mnuExportToTemplate", S::Rule, nullptr, &MenuOnCanvas},
    MenuEntry{"mnuTools", "Insert menu template...", nullptr, "mnuInsertTemplate", S::Rule, nullptr, &CanInsertTemplate},
    Sep("mnuTools"),
    MenuEntry{"mnuTools", "Sub2DivX (Add subtitles)", nullptr, "mnuSrt2Divx", S::Always},
    Sep("mnuTools"),
    MenuEntry{"mnuTools", "Play the menus with a remote...", "Ctrl+F5", "mnuMenuPlayer", S::Document},

    MenuEntry{"", "Help", nullptr, "mnuHelp", S::Submenu},
    MenuEntry{"mnuHelp", "Contents...", nullptr, "mnuHelpHelp", S::Always},
    MenuEntry{"mnuHelp", "Help window is on top", nullptr, "mnuHelpOnTop", S::Always, nullptr, nullptr, true},
    Sep("mnuHelp"),
    MenuEntry{"mnuHelp", "Languages", nullptr, "mnuLanguages", S::Submenu},
    MenuEntry{"mnuLanguages", "Create new Language...", nullptr, "mnuCreateLangNick"},
    MenuEntry{"mnuLanguages", "Default", nullptr, "mnuLangDef"},
    MenuEntry{"mnuHelp", "About...", nullptr, "mnuAbout"},
};

} // namespace

std::span<const MenuEntry> MainMenuEntries()
{
    return kEntries;
}

MenuBar::MenuBar(QMainWindow& window)
{
    QMenuBar* bar = window.menuBar();
    for (const MenuEntry& entry : kEntries) {
        const std::string parentName = entry.Menu;
        QMenu* parent = parentName.empty() ? nullptr : menus_.at(parentName);
        if (!entry.Caption) {
            parent->addSeparator();
            continue;
        }
        if (entry.Source == CommandSource::Submenu) {
            QMenu* menu = parent ? parent->addMenu(entry.Caption) : bar->addMenu(entry.Caption);
            menu->setObjectName(entry.Name);
            menu->menuAction()->setObjectName(entry.Name);
            menu->setToolTipsVisible(true);
            menus_[entry.Name] = menu;
            continue;
        }
        QAction* action = parent->addAction(entry.Caption);
        action->setObjectName(entry.Name);
        if (entry.Shortcut)
            action->setShortcut(QKeySequence(entry.Shortcut));
        action->setCheckable(entry.Checkable);
        actions_[entry.Name] = action;
    }
    // The first language entry only stands for the list of language files.
    actions_.at("mnuLangDef")->setVisible(false);
}

QAction* MenuBar::Action(const std::string& name) const
{
    const auto found = actions_.find(name);
    return found == actions_.end() ? nullptr : found->second;
}

QMenu* MenuBar::Menu(const std::string& name) const
{
    const auto found = menus_.find(name);
    return found == menus_.end() ? nullptr : found->second;
}

void MenuBar::ApplyStates(const Project& project)
{
    for (const MenuEntry& entry : kEntries) {
        if (!entry.Caption || entry.Source == CommandSource::Submenu)
            continue;
        bool enabled = true;
        switch (entry.Source) {
        case CommandSource::Document:
            enabled = project.ItemsEnabled;
            break;
        case CommandSource::State:
            enabled = project.Commands.*entry.State;
            break;
        case CommandSource::Rule:
            enabled = entry.Rule(project);
            break;
        case CommandSource::Always:
        case CommandSource::Submenu:
            break;
        }
        actions_.at(entry.Name)->setEnabled(enabled);
    }
}

void MenuBar::AfterRelabel()
{
    recentShown_.reset();
}

void MenuBar::FillRecent(const std::vector<std::string>& files, const LangDoc& lang,
                         const std::function<void(std::size_t)>& open)
{
    if (recentShown_ == files)
        return;
    recentShown_ = files;
    QMenu* menu = menus_.at("mnuRecentFiles");
    menu->clear();
    if (files.empty()) {
        QAction* none =
            menu->addAction(QString::fromStdString(lang.DesignText("Form1", "mnuRecent_0").value_or("No files")));
        none->setObjectName("mnuRecent_0");
        none->setEnabled(false);
        return;
    }
    for (std::size_t i = 0; i < files.size(); ++i) {
        QAction* item = menu->addAction(QString::fromStdString(files[i]));
        item->setObjectName("mnuRecent_" + QString::number(i));
        QObject::connect(item, &QAction::triggered, menu, [open, i] { open(i); });
    }
}

} // namespace mw
