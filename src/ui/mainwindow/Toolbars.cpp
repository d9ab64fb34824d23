#include "ui/mainwindow/Toolbars.h"

#include "ui/mainwindow/MenuBar.h"
#include "ui/mainwindow/ToolbarIcons.h"

#include <QAction>
#include <QMainWindow>
#include <QToolBar>

#include <array>
#include <string_view>

namespace mw {

namespace {

// One button: its key, its tool tip and the menu entry it stands for. No key is a separator.
struct ToolbarButton {
    const char* Key;
    const char* ToolTip;
    const char* Command;
};

const std::array kToolbar1{
    ToolbarButton{"newXml", "New xml", "mnuNew"},
    ToolbarButton{"openXml", "Open xml", "mnuOpen"},
    ToolbarButton{"save", "Save", "mnuSave"},
    ToolbarButton{"saveAs", "Save As", "mnuSaveAs"},
    ToolbarButton{nullptr, nullptr, nullptr},
    ToolbarButton{"addTitle", "Add Titles", "mnuAddTitle"},
    ToolbarButton{"addLang", "Add Language Menu", "mnuAddLang"},
    ToolbarButton{"addMenu", "Add Menu", "mnuAddMenu"},
    ToolbarButton{"DivX", "Create the DivX file", "mnuCreateDivX"},
    ToolbarButton{"NoCreateOverlays", "Dont recreate overlays (del temp must be false)", nullptr},
    ToolbarButton{nullptr, nullptr, nullptr},
    ToolbarButton{"options", "Options", "mnuOptions"},
    ToolbarButton{nullptr, nullptr, nullptr},
    ToolbarButton{"help", "Help", "mnuHelpHelp"},
};

// A button runs its menu entry and is enabled with it.
void Forward(QAction& button, QAction& command)
{
    QObject::connect(&button, &QAction::triggered, &command, &QAction::trigger);
    QObject::connect(&command, &QAction::changed, &button, [&button, &command] { button.setEnabled(command.isEnabled()); });
    button.setEnabled(command.isEnabled());
}

template <std::size_t N>
QToolBar* Build(QMainWindow& window, const char* name, const std::array<ToolbarButton, N>& buttons,
                const MenuBar& menus, QAction*& noCreateOverlays)
{
    auto* bar = new QToolBar(&window);
    bar->setObjectName(name);
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    for (const ToolbarButton& entry : buttons) {
        if (!entry.Key) {
            bar->addSeparator();
            continue;
        }
        // The text is what an overflow menu and a screen reader show.
        QAction* button = bar->addAction(ToolbarIcon(entry.Key),
                                         *entry.ToolTip ? entry.ToolTip : entry.Key);
        button->setObjectName(entry.Key);
        button->setToolTip(entry.ToolTip);
        if (std::string_view(entry.Key) == "NoCreateOverlays") {
            button->setCheckable(true);
            noCreateOverlays = button;
        } else {
            Forward(*button, *menus.Action(entry.Command));
        }
    }
    window.addToolBar(Qt::TopToolBarArea, bar);
    return bar;
}

} // namespace

Toolbars::Toolbars(QMainWindow& window, const MenuBar& menus)
    : toolbar1_(Build(window, "Toolbar1", kToolbar1, menus, noCreateOverlays_))
{
}

void Toolbars::ApplyStates(const Project& project)
{
    noCreateOverlays_->setEnabled(project.ItemsEnabled);
    noCreateOverlays_->setChecked(project.NoCreateOverlays);
}

} // namespace mw
