#include "cli/CliMenuCommands.h"

#include "build/PicturesToMenuVideo.h"
#include "cli/ConsoleFormHost.h"
#include "core/Text.h"
#include "core/settings/Settings.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "menus/AddNewMenu.h"
#include "menus/LanguageCommands.h"
#include "menus/MenuCommands.h"
#include "menus/MenuForms.h"

#include <filesystem>
#include <cstdlib>
#include <iostream>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

namespace {

int Refuse(CliContext& context, const CliOptions& options, const std::string& why)
{
    context.Err << "menuwright-cli " << options.Command << ": " << why << '\n';
    return kExitUnreadable;
}

// Selects the entry with this text, or with this number kept beside it; false when none has.
bool Choose(ComboList& combo, const std::string& text, std::optional<int> itemData = std::nullopt)
{
    for (std::size_t i = 0; i < combo.Items.size(); ++i) {
        if (itemData ? combo.Items[i].ItemData == *itemData : combo.Items[i].Text == text) {
            combo.ListIndex = static_cast<int>(i);
            return true;
        }
    }
    return false;
}

std::optional<int> MenuNumber(const std::string& id)
{
    if (id.empty() || id.size() > 9 || id.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    return std::stoi(id);
}

bool IsMenu(const Project& project, const std::string& id)
{
    const DocNode* node = project.Doc.Tree.ObjectNode(id);
    return node && EqualsNoCase(node->Text, "DivXMediaMenu");
}

std::string Absolute(const std::string& path)
{
    std::error_code ec;
    const fs::path full = fs::absolute(path, ec);
    return ec ? path : full.string();
}

// The video made from pictures goes beside the project under the first picture's name, with a
// number added when that name is taken, so that no file of the user is replaced.
std::string PictureVideoName(const Project& project, const std::string& picture)
{
    const fs::path folder = fs::path(project.Doc.ProjectFile).parent_path();
    const std::string stem = fs::path(picture).stem().string();
    fs::path name = folder / (stem + ".avi");
    std::error_code ec;
    for (int n = 2; fs::exists(name, ec); ++n)
        name = folder / (stem + "_" + std::to_string(n) + ".avi");
    return name.string();
}

// Fills the new-menu form as the user would from the options: 0 when it was accepted, 1 when
// the form refused it (it said why), 2 for values the form cannot take.
int FillNewMenuForm(NewMenuForm& form, const CliOptions& options, const MenuCliOptions& menu, Project& project,
                    CliContext& context)
{
    DocTree& tree = project.Doc.Tree;
    LoadNewMenuForm(form, clsIniFile(SettingsFilePath(project.ProgramFolder()).string()));
    FillLanguageCombo(form, tree);
    if (options.DefLang) {
        const bool isNew = *options.DefLang == "new";
        if (isNew && !Choose(form.Combo2, kNewLanguageRow)) {
            form.Combo2.AddItem(kNewLanguageRow);
            Choose(form.Combo2, kNewLanguageRow);
        } else if (!isNew && !Choose(form.Combo2, *options.DefLang)) {
            return Refuse(context, options, "the project has no language set " + *options.DefLang);
        }
    }
    Combo2_Click(form, tree);

    if (menu.Video) {
        const std::string video = Absolute(*menu.Video);
        std::error_code ec;
        if (!fs::is_regular_file(video, ec))
            return Refuse(context, options, "cannot find " + *menu.Video);
        LoadMovieForMenu(project, form, video);
    } else if (!menu.Pictures.empty()) {
        const double fps = options.Fps.value_or(std::strtod(form.cmbfpsText.c_str(), nullptr));
        const std::string video = PictureVideoName(project, menu.Pictures.front());
        const Settings& settings = project.Values();
        const bool made = menu.Pictures.size() == 1
                              ? CreateAviFromaPic(Absolute(menu.Pictures.front()), video, fps, "", kPicToMenuBuiltIn,
                                                  settings, project.Lang(), project.Ask())
                              : CreateAviFromPics(menu.Pictures, video, fps, "", kPicToMenuBuiltIn, settings,
                                                  project.Lang(), project.Ask());
        if (!made)
            return kExitFaults;
        LoadMovieForMenu(project, form, video);
    } else {
        SelectMenuForm select;
        if (!LoadMenusToSelect(project, form, select))
            return kExitFaults;
        if (!Choose(select.List, "", MenuNumber(*menu.FromMenu)))
            return Refuse(context, options, *menu.FromMenu + " is not a menu of the language");
        AcceptSelectedMenu(project, form, select);
    }

    if (menu.Start)
        form.txtStartFrame = *menu.Start;
    if (menu.End)
        form.txtEndFrame = *menu.End;
    if (menu.Type && !Choose(form.Combo1, *menu.Type))
        return Refuse(context, options, "--type takes audio, chapter, other, subtitle or title");
    form.txtMenuName = menu.Name.value_or("");
    if (menu.Exit) {
        const std::string& exit = *menu.Exit;
        const bool chosen = exit == "create-after" ? Choose(form.Combo3, kCreateAfterRow)
                            : exit == "again"      ? Choose(form.Combo3, kPlayAgainRow)
                                                   : MenuNumber(exit) && Choose(form.Combo3, "", MenuNumber(exit));
        if (!chosen)
            return Refuse(context, options, "--exit takes create-after, again or a menu of the language");
    }
    return cmdOK_Click(project, form) ? kExitOk : kExitFaults;
}

// One action list: each action with its rows but its identifier.
void PrintActions(std::ostream& out, const DocTree& tree, const std::string& listID, const std::string& indent,
                  const std::string& what)
{
    const DocNode* list = tree.ObjectNode(listID);
    if (!list)
        return;
    out << indent << what << ' ' << listID << ':';
    for (const auto& action : *list) {
        if (!action->HasChildren())
            continue;
        out << ' ' << action->Text;
        for (const auto& row : *action) {
            if (!row->HasChildren() && !RowMatches(*row, "objectID"))
                out << ' ' << RowName(row->Text) << '=' << RowValue(row->Text);
        }
        out << ';';
    }
    out << '\n';
}

void PrintMenus(std::ostream& out, const DocTree& tree)
{
    const auto row = [](const DocNode& node, const char* name) {
        const std::string value = GetPropertyInNode(node, name);
        return value.empty() ? std::string("none") : value;
    };
    for (const auto& language : *tree.Root()) {
        if (!EqualsNoCase(language->Text, "LanguageMenus"))
            continue;
        out << "language " << row(*language, "languagecode") << ' ' << row(*language, "objectid")
            << " starting=" << row(*language, "startingmenuid") << " root=" << row(*language, "rootmenuid") << '\n';
        for (const auto& menu : *language) {
            if (!EqualsNoCase(menu->Text, "DivXMediaMenu"))
                continue;
            out << "  menu " << row(*menu, "objectid") << " type=" << row(*menu, "menutype") << " name="
                << GetPropertyInNode(*menu, "menuname") << " video=" << row(*menu, "backgroundvideoid")
                << " audio=" << row(*menu, "backgroundaudioid")
                << " start-button=" << row(*menu, "startingmenuitemid") << '\n';
            PrintActions(out, tree, GetPropertyInNode(*menu, "enteraction"), "    ", "enter");
            PrintActions(out, tree, GetPropertyInNode(*menu, "exitaction"), "    ", "exit");
            for (const auto& button : *menu) {
                if (!EqualsNoCase(button->Text, "ButtonMenu"))
                    continue;
                out << "    button " << row(*button, "objectid");
                if (const DocNode* rect = ChildNamed(button.get(), "MenuRectangle"))
                    out << " rect=" << row(*rect, "left") << ',' << row(*rect, "top") << ',' << row(*rect, "width")
                        << ',' << row(*rect, "height");
                for (const char* key : {"upAction", "downAction", "leftAction", "rightAction"})
                    out << ' ' << key << '=' << row(*button, key);
                out << '\n';
                PrintActions(out, tree, GetPropertyInNode(*button, "selectaction"), "      ", "select");
            }
        }
    }
}

} // namespace

CliParseResult ParseMenuCommandLine(std::vector<std::string> args, MenuCliOptions& menu)
{
    std::vector<std::string> rest;
    std::string error;
    bool taken = false;
    for (std::size_t i = 0; i < args.size() && error.empty(); ++i) {
        const std::string& a = args[i];
        const bool hasValue = i + 1 < args.size();
        std::optional<std::string>* single = a == "--video"       ? &menu.Video
                                             : a == "--from-menu" ? &menu.FromMenu
                                             : a == "--start"     ? &menu.Start
                                             : a == "--end"       ? &menu.End
                                             : a == "--type"      ? &menu.Type
                                             : a == "--name"      ? &menu.Name
                                             : a == "--exit"      ? &menu.Exit
                                                                  : nullptr;
        if (single) {
            taken = true;
            if (!hasValue)
                error = a + " needs a value";
            else
                *single = args[++i];
        } else if (a == "--picture") {
            taken = true;
            while (i + 1 < args.size() && !args[i + 1].starts_with("--"))
                menu.Pictures.push_back(args[++i]);
            if (menu.Pictures.empty())
                error = "--picture needs at least one picture";
        } else {
            rest.push_back(a);
        }
    }
    CliParseResult parsed = ParseCliOptions(rest);
    if (parsed.Error.empty() && !error.empty())
        parsed.Error = error;
    if (parsed.Error.empty() && taken && parsed.Options.Command != "add-menu")
        parsed.Error = "the options --video, --picture, --from-menu, --start, --end, --type, --name and --exit "
                       "belong to add-menu";
    return parsed;
}

int RunAddLang(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 2)
        return Refuse(context, options, "expected a project file and a language code");
    const std::string code = Lower(options.Arguments[1]);
    return RunOnProject(options, context, [&](Project& project) {
        NewLangForm form;
        LoadNewLangForm(form, project.Values().defLang);
        form.Combo1.ListIndex = -1;
        for (std::size_t i = 0; i < form.Combo1.Items.size(); ++i) {
            if (code.size() == 2 && form.Combo1.Items[i].Text.starts_with(code + " "))
                form.Combo1.ListIndex = static_cast<int>(i);
        }
        if (form.Combo1.ListIndex < 0)
            return Refuse(context, options, code + " is not in the language list");
        return AddLanguage(project, form) ? static_cast<int>(kExitOk) : static_cast<int>(kExitFaults);
    });
}

int RunAddMenu(const CliOptions& options, const MenuCliOptions& menu, CliContext& context)
{
    if (options.Arguments.size() != 1)
        return Refuse(context, options, "expected a project file");
    if (int(menu.Video.has_value()) + int(!menu.Pictures.empty()) + int(menu.FromMenu.has_value()) != 1)
        return Refuse(context, options, "give one of --video, --picture and --from-menu");
    return RunOnProject(options, context, [&](Project& project) {
        NewMenuForm form;
        if (const int status = FillNewMenuForm(form, options, menu, project, context); status != kExitOk)
            return status;
        const std::string id = AddNewMenu(project, form, false);
        if (id.empty())
            return static_cast<int>(kExitFaults);
        std::cout << id << '\n';
        return static_cast<int>(kExitOk);
    });
}

int RunRemoveMenu(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 2)
        return Refuse(context, options, "expected a project file and a menu id");
    const std::string& menuID = options.Arguments[1];
    return RunOnProject(options, context, [&](Project& project) {
        if (!IsMenu(project, menuID))
            return Refuse(context, options, menuID + " is not a menu of the project");
        project.Doc.Tree.Select(project.Doc.Tree.ObjectNode(menuID));
        DeleteMenu(project, menuID);
        return static_cast<int>(kExitOk);
    });
}

int RunRemoveLang(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 2)
        return Refuse(context, options, "expected a project file and a language code");
    const std::string& code = options.Arguments[1];
    return RunOnProject(options, context, [&](Project& project) {
        DocNode* language = IsLanguageMenusThere(project.Doc.Tree, code);
        if (!language)
            return Refuse(context, options, "the project has no language set " + code);
        project.Doc.Tree.Select(language);
        mnuRemoveLang(project);
        return static_cast<int>(kExitOk);
    });
}

int RunMenus(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 1)
        return Refuse(context, options, "expected a project file");
    Project project(context.Program, context.Ask, context.Forms);
    if (!project.OpenFile(Absolute(options.Arguments.front())))
        return kExitUnreadable;
    PrintMenus(std::cout, project.Doc.Tree);
    return kExitOk;
}

} // namespace mw
