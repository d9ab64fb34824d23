#include "cli/CliMenuCommands.h"

#include "build/BuildLog.h"
#include "build/OutsideMenuVideo.h"
#include "build/PicturesToMenuVideo.h"
#include "cli/CliOverlayCommands.h"
#include "build/ToolRunner.h"
#include "cli/ConsoleFormHost.h"
#include "core/Text.h"
#include "core/settings/Settings.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "media/TitleNodes.h"
#include "media/mAVIDecs.h"
#include "menus/Actions.h"
#include "menus/AddNewMenu.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/LanguageCommands.h"
#include "menus/MenuCommands.h"
#include "menus/MenuForms.h"
#include "menus/MenuTemplates.h"
#include "menus/OverlayAttributes.h"
#include "menus/OverlayDialogs.h"
#include "render/OverlayFont.h"

#include <filesystem>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

namespace {

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
    const std::optional<long> number = DigitsNumber(id, 9);
    return number ? std::optional(static_cast<int>(*number)) : std::nullopt;
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

// What an outside tool prints while it makes a menu video goes to standard error, so that
// standard output keeps the messages and the new menu's identifier.
class ConsoleBuildLog : public BuildLog {
public:
    explicit ConsoleBuildLog(std::ostream& out) : out_(out) {}
    void Step(const std::string& text) override { out_ << text << '\n'; }
    void Progress(int, int) override {}
    void Line(const std::string& text) override { out_ << text << '\n'; }
    void ShowTextFile(const fs::path& file) override { out_ << file.string() << '\n'; }
    void OpenResult(const fs::path&) override {}

private:
    std::ostream& out_;
};

// With no dialog to point at a missing tool, the user is asked whether our own encoder may
// make the video instead.
ToolAnswer OfferBuiltInEncoder(int method, Prompt& prompt)
{
    const std::string tool = method == kPicToMenuCli ? "cli.exe" : "VirtualDubMod.exe";
    if (prompt.Ask(tool + " was not found. Make the menu video with the built-in encoder instead?",
                   PromptButtons::YesNo, PromptAnswer::Yes) != PromptAnswer::Yes)
        return {};
    return {true, true, ""};
}

// The menu video from pictures by the method of the settings, beside the project.
bool MenuVideoFromPictures(Project& project, const std::vector<std::string>& pictures, double fps,
                           const std::string& video, CliContext& context)
{
    const Settings& settings = project.Values();
    ToolRunner runner;
    ConsoleBuildLog log(context.Err);
    MenuVideoTools tools{runner, log, project.ProgramFolder(),
                         [&](int method) { return OfferBuiltInEncoder(method, project.Ask()); }};
    const int method = settings.MethodForPicToMenu;
    if (pictures.size() == 1)
        return CreateAviFromaPic(Absolute(pictures.front()), video, fps, "", method, settings, project.Lang(),
                                 project.Ask(), &tools);
    std::vector<std::string> absolute;
    for (const std::string& picture : pictures)
        absolute.push_back(Absolute(picture));
    return CreateAviFromPics(absolute, video, fps, "", method, settings, project.Lang(), project.Ask(), &tools);
}

// Fills the new-menu form as the user would from the options: 0 when it was accepted, 1 when
// the form refused it (it said why), 2 for values the form cannot take.
int FillNewMenuForm(NewMenuForm& form, const CliOptions& options, Project& project,
                    CliContext& context)
{
    const MenuCliOptions& menu = options.Menu;
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
        if (!MenuVideoFromPictures(project, menu.Pictures, fps, video, context))
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

// The whole numbers from the third argument on; the list stops at the first that is none.
std::vector<long> Numbers(const std::vector<std::string>& args)
{
    std::vector<long> numbers;
    for (std::size_t i = 2; i < args.size(); ++i) {
        const std::string& text = args[i];
        if (text.empty() || text.size() > 9 || text.find_first_not_of("-0123456789") != std::string::npos ||
            text.find('-', 1) != std::string::npos || text == "-")
            break;
        numbers.push_back(std::stol(text));
    }
    return numbers;
}

// Shows the menu that holds the buttons on the canvas and gives their indexes there; empty when
// one of them is no button or they are not all of one menu.
std::vector<int> ShowButtons(Project& project, const std::vector<std::string>& ids)
{
    DocTree& tree = project.Doc.Tree;
    DocNode* menu = nullptr;
    for (const std::string& id : ids) {
        const DocNode* button = tree.ObjectNode(id);
        if (!button || !EqualsNoCase(button->Text, "ButtonMenu") || (menu && button->Parent() != menu))
            return {};
        menu = button->Parent();
    }
    if (!menu)
        return {};
    ParceMenu(project, *menu);
    std::vector<int> indexes;
    for (const std::string& id : ids) {
        for (std::size_t i = 0; i < project.Canvas.Buttons.size(); ++i) {
            if (project.Canvas.Buttons[i].Label.Tag == id)
                indexes.push_back(static_cast<int>(i));
        }
    }
    return indexes;
}

// align and same-size: the reference clicked last, the others in the multi-selection.
int RunOnSelection(const CliOptions& options, CliContext& context, const std::vector<std::string>& modes,
                   void (*command)(Project&, int))
{
    const std::vector<std::string>& args = options.Arguments;
    const auto mode = args.size() > 1 ? std::find(modes.begin(), modes.end(), args[1]) : modes.end();
    if (args.size() < 4 || mode == modes.end())
        return Refuse(context, options, "expected a project file, " + modes.front() + "|...|" + modes.back() +
                                            ", the reference button and the buttons to change");
    return RunOnProject(options, context, [&](Project& project) {
        const std::vector<std::string> ids(args.begin() + 2, args.end());
        const std::vector<int> indexes = ShowButtons(project, ids);
        if (indexes.size() != ids.size())
            return Refuse(context, options, "the buttons must be buttons of one menu");
        Label1_Click(project, indexes.front());
        for (std::size_t i = 1; i < indexes.size(); ++i)
            project.Canvas.Buttons[static_cast<std::size_t>(indexes[i])].Selected = true;
        command(project, static_cast<int>(mode - modes.begin()) + 1);
        return static_cast<int>(kExitOk);
    });
}

bool IsNode(const Project& project, const std::string& id, const char* text)
{
    const DocNode* node = project.Doc.Tree.ObjectNode(id);
    return node && EqualsNoCase(node->Text, text);
}

// The choice in the action dialog that an ACTION argument stands for; false when it names
// nothing of the right kind.
bool ActionChoiceFor(Project& project, const std::string& action, const std::vector<ActionRow>& rows,
                     ActionChoice& choice)
{
    std::vector<std::string> parts;
    for (std::size_t from = 0;;) {
        const std::size_t colon = action.find(':', from);
        parts.push_back(action.substr(from, colon - from));
        if (colon == std::string::npos)
            break;
        from = colon + 1;
    }
    const std::string& word = parts.front();
    const auto title = [&] { return parts.size() > 1 && IsNode(project, parts[1], "Title"); };
    choice = {};
    if ((word == "play" || word == "resume") && (parts.size() == 2 || parts.size() == 3) && title()) {
        choice.Type = word == "play" ? "PlayAction" : "PlayFromCurrentOffsetAction";
        choice.TitleID = parts[1];
        choice.ChapterID = parts.size() == 3 ? parts[2] : parts[1];
        return parts.size() == 2 || IsNode(project, parts[2], "Chapter");
    }
    if ((word == "audio" || word == "subtitle") && parts.size() == 3 && title()) {
        choice.Type = word == "audio" ? "AudioSelectAction" : "SubtitleSelectAction";
        choice.TitleID = parts[1];
        choice.TrackID = parts[2];
        TrackRows tracks;
        double fps = 0;
        const std::string file = TitleFile(project.Doc, project.Doc.Tree.Item("k" + parts[1]));
        LoadStreamsToListView(file, tracks, false, fps, project.Ask());
        for (const TrackRow& track : tracks) {
            if (track.TrackID == parts[2])
                choice.TrackKind = track.Kind;
        }
        return true;
    }
    if (word == "menu" && parts.size() == 2 && IsMenu(project, parts[1])) {
        choice.Type = "MenuTransitionAction";
        choice.MenuID = parts[1];
        return true;
    }
    if (word == "button" && parts.size() == 2) {
        choice.Type = "ButtonTransitionAction";
        for (const std::string& offered : ButtonChoices(project.Doc.Tree, rows, project.Canvas.CurrentMenuID)) {
            if (offered.substr(0, offered.find(' ')) == parts[1])
                choice.ButtonID = parts[1];
        }
        return !choice.ButtonID.empty();
    }
    return false;
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

int RunAddMenu(const CliOptions& options, CliContext& context)
{
    const MenuCliOptions& menu = options.Menu;
    if (options.Arguments.size() != 1)
        return Refuse(context, options, "expected a project file");
    if (int(menu.Video.has_value()) + int(!menu.Pictures.empty()) + int(menu.FromMenu.has_value()) != 1)
        return Refuse(context, options, "give one of --video, --picture and --from-menu");
    return RunOnProject(options, context, [&](Project& project) {
        NewMenuForm form;
        if (const int status = FillNewMenuForm(form, options, project, context); status != kExitOk)
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

int RunAddButton(const CliOptions& options, CliContext& context)
{
    const MenuCliOptions& menu = options.Menu;
    const std::vector<std::string>& args = options.Arguments;
    const std::vector<long> numbers = Numbers(args);
    if (args.size() != 6 || numbers.size() != 4)
        return Refuse(context, options, "expected a project file, a menu id, LEFT TOP WIDTH HEIGHT");
    std::optional<std::string> overlay = menu.Overlay;
    if (overlay == "*Rect" || overlay == "*Oval" || overlay == "*Shape1")
        overlay = *overlay == "*Rect" ? "|Rectangle" : "|" + overlay->substr(1);
    else if (overlay && overlay->starts_with('*'))
        return Refuse(context, options, "--overlay takes *Rect, *Oval, *Shape1 or a bitmap of the overlays folder");
    return RunOnProject(options, context, [&](Project& project) {
        if (!IsMenu(project, args[1]))
            return Refuse(context, options, args[1] + " is not a menu of the project");
        ParceMenu(project, project.Doc.Tree.Item("k" + args[1]));
        const std::string id = AddButtonToMenu(project, {"", numbers[0], numbers[1], numbers[2], numbers[3]},
                                               overlay.value_or(project.Values().DefOverlay));
        std::cout << id << '\n';
        return static_cast<int>(kExitOk);
    });
}

int RunRemoveButton(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() < 2)
        return Refuse(context, options, "expected a project file and the buttons");
    return RunOnProject(options, context, [&](Project& project) {
        const std::vector<std::string> ids(options.Arguments.begin() + 1, options.Arguments.end());
        const std::vector<int> indexes = ShowButtons(project, ids);
        if (indexes.size() != ids.size())
            return Refuse(context, options, "the buttons must be buttons of one menu");
        if (indexes.size() == 1) {
            DeleteButton(project, indexes.front());
        } else {
            for (int i : indexes)
                project.Canvas.Buttons[static_cast<std::size_t>(i)].Selected = true;
            DeleteButton(project, kSelectedButtons);
        }
        return static_cast<int>(kExitOk);
    });
}

int RunSetNav(const CliOptions& options, CliContext& context)
{
    const std::vector<std::string>& args = options.Arguments;
    const std::vector<std::string> directions = {"up", "down", "left", "right"};
    if (args.size() != 4 || std::find(directions.begin(), directions.end(), args[2]) == directions.end())
        return Refuse(context, options, "expected a project file, a button, up|down|left|right and a button or none");
    return RunOnProject(options, context, [&](Project& project) {
        const bool none = args[3] == "none";
        const std::vector<std::string> ids = none ? std::vector{args[1]} : std::vector{args[1], args[3]};
        if (ShowButtons(project, ids).size() != ids.size())
            return Refuse(context, options, "the buttons must be buttons of one menu");
        project.UndoAdd();
        DocNode& button = project.Doc.Tree.Item("k" + args[1]);
        UpdatePropertyInNode(project.Doc.Tree, button, args[2] + "Action", args[3], true);
        project.MarkDirty();
        return static_cast<int>(kExitOk);
    });
}

int RunSetAction(const CliOptions& options, CliContext& context)
{
    const std::vector<std::string>& args = options.Arguments;
    if (args.size() < 3)
        return Refuse(context, options, "expected a project file, BUTTON_ID|MENU_ID:enter|MENU_ID:exit and actions");
    const std::size_t colon = args[1].find(':');
    const std::string owner = args[1].substr(0, colon);
    const std::string list = colon == std::string::npos        ? "selectAction"
                             : args[1].substr(colon) == ":enter" ? "enterAction"
                             : args[1].substr(colon) == ":exit"  ? "exitAction"
                                                                 : "";
    return RunOnProject(options, context, [&](Project& project) {
        const bool isButton = list == "selectAction";
        const std::vector<int> button = isButton ? ShowButtons(project, {owner}) : std::vector<int>{};
        if (button.size() == 1)
            Label1_Click(project, button.front());
        else if (!isButton && !list.empty() && IsMenu(project, owner))
            ParceMenu(project, project.Doc.Tree.Item("k" + owner));
        else
            return Refuse(context, options, args[1] + " is no button, MENU_ID:enter or MENU_ID:exit");
        std::vector<ActionRow> rows;
        if (!(args.size() == 3 && args[2] == "none")) {
            for (std::size_t i = 2; i < args.size(); ++i) {
                ActionChoice choice;
                if (!ActionChoiceFor(project, args[i], rows, choice))
                    return Refuse(context, options, args[i] + " names no target of its kind");
                ActionRow row;
                if (!AcceptActionChoice(project.Ask(), choice, row))
                    return static_cast<int>(kExitFaults);
                rows.push_back(row);
            }
        }
        ApplyActionList(project, list, isButton, rows);
        return static_cast<int>(kExitOk);
    });
}

int RunAlign(const CliOptions& options, CliContext& context)
{
    return RunOnSelection(options, context, {"left", "top", "right", "bottom"}, DoAlign);
}

int RunSameSize(const CliOptions& options, CliContext& context)
{
    return RunOnSelection(options, context, {"width", "height", "both"}, DoSameSize);
}

int RunMoveButton(const CliOptions& options, CliContext& context)
{
    const std::vector<std::string>& args = options.Arguments;
    const std::vector<long> numbers = Numbers(args);
    if ((args.size() != 4 && args.size() != 6) || numbers.size() != args.size() - 2)
        return Refuse(context, options, "expected a project file, a button id, LEFT TOP [WIDTH HEIGHT]");
    return RunOnProject(options, context, [&](Project& project) {
        const std::vector<int> index = ShowButtons(project, {args[1]});
        if (index.empty())
            return Refuse(context, options, args[1] + " is not a button of the project");
        Label1_Click(project, index.front());
        ButtonShape rect = project.Canvas.Buttons[static_cast<std::size_t>(index.front())].Label;
        rect.Left = numbers[0];
        rect.Top = numbers[1];
        if (numbers.size() == 4) {
            rect.Width = numbers[2];
            rect.Height = numbers[3];
        }
        if (!EndButtonGesture(project, index.front(), rect)) {
            context.Err << "menuwright-cli move-button: the menu is locked\n";
            return static_cast<int>(kExitFaults);
        }
        return static_cast<int>(kExitOk);
    });
}

namespace {

// The buttons as the canvas selects them: the first clicked, the others added to the selection.
void SelectButtons(Project& project, const std::vector<int>& indexes)
{
    Label1_Click(project, indexes.front());
    for (std::size_t i = 1; i < indexes.size(); ++i)
        project.Canvas.Buttons[static_cast<std::size_t>(indexes[i])].Selected = true;
}

// set-overlay --from-picture: the picture becomes an overlay of the library, the buttons show it.
int SetOverlayFromPicture(const CliOptions& options, CliContext& context)
{
    const std::vector<std::string>& args = options.Arguments;
    const auto pixel = TransparentPixel(options);
    const bool otherOptions = std::any_of(options.Values.begin(), options.Values.end(),
                                          [](const auto& option) { return option.first != "--transparent"; });
    if (args.size() < 2 || !pixel || otherOptions || options.Menu.ResetPosition)
        return Refuse(context, options, "expected a project file and the buttons, --from-picture PICTURE and at most "
                                        "--transparent X,Y");
    const std::string picture = Absolute(*options.Menu.FromPicture);
    context.Forms.FillCreateOverFromPic = [&](CreateOverFromPicForm& form) {
        if (form.Overlay.PickTransparent(pixel->first, pixel->second))
            return true;
        context.Forms.Error = form.Overlay.Picture().Empty() ? "cannot read the picture " + picture
                                                             : "the pixel of --transparent is outside the picture";
        return false;
    };
    return RunOnProject(options, context, [&](Project& project) {
        const std::vector<std::string> ids(args.begin() + 1, args.end());
        const std::vector<int> indexes = ShowButtons(project, ids);
        if (indexes.size() != ids.size())
            return Refuse(context, options, "the buttons must be buttons of one menu");
        SelectButtons(project, indexes);
        if (CreateOverlayFromPic(project, picture))
            return static_cast<int>(kExitOk);
        if (!context.Forms.Error.empty())
            context.Err << "menuwright-cli set-overlay: " << context.Forms.Error << '\n';
        return static_cast<int>(kExitFaults);
    });
}

} // namespace

int RunSetOverlay(const CliOptions& options, CliContext& context)
{
    if (options.Menu.FromPicture)
        return SetOverlayFromPicture(options, context);
    const std::vector<std::string>& args = options.Arguments;
    const std::optional<std::string> widthOption = options.Value("--width");
    const std::optional<std::string> textOption = options.Value("--text");
    const std::optional<std::string> fontOption = options.Value("--font");
    const std::optional<std::string> fontSizeOption = options.Value("--font-size");
    const std::optional<std::string> outlineOption = options.Value("--outline");
    const std::optional<std::string> shadowOption = options.Value("--shadow");
    if (args.size() < 3)
        return Refuse(context, options, "expected a project file, the buttons and a shape");
    const std::string& shape = args.back();
    const bool text = shape == "*Text";
    const bool textOptions = textOption || fontOption || fontSizeOption || outlineOption || shadowOption;
    const bool special = shape == "*Rect" || shape == "*Oval" || shape == "*Shape1" || text;
    const auto width = widthOption ? Numbers({"", "", *widthOption}) : std::vector<long>{};
    if ((!special && shape.starts_with('*')) || (textOptions && !text))
        return Refuse(context, options, "the shape is *Rect, *Oval, *Shape1, *Text (with text options) or a bitmap");
    if (widthOption && (width.size() != 1 || width.front() < 1 || width.front() > 7))
        return Refuse(context, options, "--width takes 1 to 7");
    return RunOnProject(options, context, [&](Project& project) {
        const std::vector<std::string> ids(args.begin() + 1, args.end() - 1);
        const std::vector<int> indexes = ShowButtons(project, ids);
        if (indexes.size() != ids.size())
            return Refuse(context, options, "the buttons must be buttons of one menu");
        SelectButtons(project, indexes);
        if (special)
            SetSpecialOverlay(project, shape);
        else
            SetThisOverlay(project, shape);
        if (widthOption)
            mnuOverlayWidthValue_Click(project, static_cast<int>(width.front()) - 1);
        TextOverlayForm& panel = project.Overlays.TextPanel;
        for (int i : indexes) {
            if (textOptions) {
                // The panel shows each button's own values; the options change some of them.
                Label1_Click(project, i);
                SetSpecialOverlay(project, shape);
                if (textOption)
                    panel.Text = *textOption;
                if (fontOption)
                    panel.Font = FontFromAttribute(*fontOption, panel.Font.Size);
                if (fontSizeOption) {
                    std::string size = *fontSizeOption;
                    std::replace(size.begin(), size.end(), ',', '.');
                    panel.Font.Size = std::strtod(size.c_str(), nullptr);
                }
                if (outlineOption)
                    panel.Outline = static_cast<int>(std::strtol(outlineOption->c_str(), nullptr, 10));
                if (shadowOption)
                    SetTextOverlayShadow(panel, *shadowOption);
                UpdateTextOverlay(project);
            }
            if (options.Menu.ResetPosition) {
                Label1_Click(project, i);
                ResetOverlayPos(project);
            }
        }
        return static_cast<int>(kExitOk);
    });
}

int RunSetColors(const CliOptions& options, CliContext& context)
{
    const std::vector<std::string>& args = options.Arguments;
    const std::vector<long> colors = Numbers(args);
    if (args.size() != 5 || colors.size() != 3 ||
        std::any_of(colors.begin(), colors.end(), [](long c) { return c < 0 || c > 0xFFFFFF; }))
        return Refuse(context, options, "expected a project file, a menu id and three colours 0 to 16777215");
    return RunOnProject(options, context, [&](Project& project) {
        if (!IsMenu(project, args[1]))
            return Refuse(context, options, args[1] + " is not a menu of the project");
        ParceMenu(project, project.Doc.Tree.Item("k" + args[1]));
        SelectColor(project, {static_cast<std::uint32_t>(colors[0]), static_cast<std::uint32_t>(colors[1]),
                              static_cast<std::uint32_t>(colors[2])});
        return static_cast<int>(kExitOk);
    });
}

int RunExportTemplate(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 2 || !options.Output)
        return Refuse(context, options, "expected a project file, a menu id and -o TEMPLATE.xml");
    Project project(context.Program, context.Ask, context.Forms);
    if (!project.OpenFile(Absolute(options.Arguments.front())))
        return kExitUnreadable;
    if (!IsMenu(project, options.Arguments[1]))
        return Refuse(context, options, options.Arguments[1] + " is not a menu of the project");
    return mnuExportToTemplate(project, options.Arguments[1], Absolute(*options.Output)) ? kExitOk : kExitFaults;
}

int RunInsertTemplate(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 2)
        return Refuse(context, options, "expected a project file and a template file");
    const std::string file = Absolute(options.Arguments[1]);
    return RunOnProject(options, context, [&](Project& project) {
        DocTree& tree = project.Doc.Tree;
        DocNode* language = options.DefLang ? IsLanguageMenusThere(tree, *options.DefLang) : TemplateLanguageSet(tree);
        if (!language)
            return Refuse(context, options,
                          options.DefLang ? "the project has no language set " + *options.DefLang
                                          : std::string("the project has no language set"));
        const std::string id = LoadXmlTemplate(project, file, *language);
        if (id.empty())
            return static_cast<int>(kExitFaults);
        std::cout << id << '\n';
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
