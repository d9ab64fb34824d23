#include "generators/SetupMenu.h"

#include "core/Text.h"
#include "core/settings/Settings.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "generators/GeneratorRun.h"
#include "generators/PageComposer.h"
#include "generators/PageSettings.h"
#include "media/mAVIDecs.h"
#include "menus/Actions.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/LanguageList.h"
#include "menus/MenuCommands.h"
#include "menus/MenuForms.h"
#include "menus/OverlayAttributes.h"
#include "render/OverlayFont.h"

#include <QFontMetrics>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

namespace {

constexpr std::array<const char*, 17> kDescriptions = {
    "Other",  "Normal", "Letterbox", "Wide screen", "Full screen", "Closed Captioned", "Forced", "Karaoke",
    "Not Specified", "Large", "Children", "Director Commentary", "Large Director Commentary",
    "Director Commentary for Children", "Normal Captions", "Large Captions", "Children's Captions"};

std::optional<std::string> LanguageName(const std::string& code)
{
    for (const std::string_view row : kLanguageRows) {
        if (row.substr(0, 2) == code)
            return std::string(row.substr(3));
    }
    return std::nullopt;
}

// Where a label's caption prints: centred across the label, at its top.
QRect CaptionRect(const PageLabel& label, const FontGroup& font)
{
    const QFontMetrics metrics(OverlayFont(FontChoice{font.Name, double(font.Size), font.Bold, font.Italic}));
    const int width = metrics.horizontalAdvance(QString::fromStdString(label.Caption));
    return QRect(label.Left + (label.Width - width) / 2, label.Top, width, metrics.height());
}

// A button of the new menu: its identifier and its place on the canvas.
struct Placed {
    std::string ID;
    int Canvas = 0;
};

} // namespace

std::string StreamCaption(const std::string& strn, bool audio, int number)
{
    const std::string n = std::to_string(number);
    const auto p = strn.find(" - ");
    const auto from = p == std::string::npos ? p : p + 3;
    const auto r = strn.find('-', from);
    const auto q = strn.find(';', from);
    if (p == std::string::npos || r == std::string::npos || q == std::string::npos || q < r)
        return (audio ? "Unknown audio " : "Unknown subtitle ") + n;
    const std::optional<std::string> language = LanguageName(Lower(Trim(strn.substr(from, r - from))));
    if (!language)
        return (audio ? "Audio " : "Subtitle ") + n;
    const long long description = LeadingNumber(strn.substr(q + 1));
    if (description < 1 || description > static_cast<long long>(kDescriptions.size()))
        return *language;
    return *language + " - " + kDescriptions[static_cast<std::size_t>(description - 1)];
}

bool OpenSetupPage(Project& project, const std::string& titleID, SetupPage& setup)
{
    const std::optional<TitleListRow> title = FindTitle(project, titleID);
    if (!title)
        return false;
    setup = SetupPage{.TitleID = titleID};
    MenuPage& page = setup.Page;
    long start = 0;
    long length = 0;
    float fps = 0;
    long width = 0;
    long height = 0;
    // A movie of an odd size gives the page the nearest smaller size that pages may have.
    if (GetStreamByType(title->Path, "video", start, length, fps, width, height, project.Ask()) >= 0) {
        SetPageWidth(page, width - width % 4);
        SetPageHeight(page, height - height % 4);
    }
    page.Design = LoadDefValues(GeneratorKind::SetupMenu, SettingsFilePath(project.ProgramFolder()),
                                project.ProgramFolder(), "Setup ", page.Width, page.Height);
    for (const TrackRow& track : LoadTitleTargets(project, *title).Tracks) {
        const bool audio = track.Kind == "Audio";
        if (!audio && track.Kind != "Subtitle")
            continue;
        std::vector<StreamLabel>& column = audio ? setup.Audio : setup.Subtitles;
        StreamLabel row{.Strn = track.NameLanguage, .TrackID = track.TrackID};
        row.Label.Caption = StreamCaption(track.NameLanguage, audio, static_cast<int>(column.size()) + 1);
        column.push_back(std::move(row));
    }
    StreamLabel none;
    none.Label.Caption = "None";
    setup.Subtitles.push_back(std::move(none));
    PlaceStreamLabels(setup);
    return true;
}

void PlaceStreamLabels(SetupPage& setup)
{
    const PageDesign& d = setup.Page.Design;
    const auto stack = [](std::vector<StreamLabel>& column, int left, int top, const PageLabel& heading) {
        for (std::size_t i = 0; i < column.size(); ++i) {
            PageLabel& label = column[i].Label;
            label.Left = left;
            label.Top = top + static_cast<int>(i) * heading.Height;
            label.Width = heading.Width;
            label.Height = heading.Height;
        }
    };
    stack(setup.Audio, d.AudioButtonLeft, d.AudioButtonTop, d.Audio);
    stack(setup.Subtitles, d.SubtitleButtonLeft, d.SubtitleButtonTop, d.Subtitle);
}

QImage ComposeSetupPage(const SetupPage& setup)
{
    MenuPage page = setup.Page;
    for (const auto* column : {&setup.Audio, &setup.Subtitles}) {
        for (const StreamLabel& row : *column)
            page.FreeItems.push_back(FreeItem{row.Label, page.Design.Labels});
    }
    return ComposePage(page, LoadPageArt(page));
}

bool CreateSetupMenu(Project& project, SetupPage& setup, const SetupMenuRequest& request, SetupMenuResult& result)
{
    result = {};
    Prompt& prompt = project.Ask();
    const std::optional<TitleListRow> title = FindTitle(project, setup.TitleID);
    if (!title || setup.Subtitles.empty())
        return false;
    const std::optional<std::string> fileName = MenuFileName(prompt, request.Menus.FileName, MenuFileFilter(GeneratorKind::SetupMenu));
    if (!fileName)
        return false;
    const fs::path tmp = project.ProgramFolder() / "tmp";
    std::error_code ec;
    fs::create_directories(tmp, ec);
    NewMenuForm form;
    if (!OpenNewMenuForm(project, form, request.Menus.Language)) {
        prompt.Message("The project has no language set " + request.Menus.Language, "", PromptIcon::Critical);
        return false;
    }

    prompt.Progress(kPageMessage, "Creating picture...");
    const PageDesign& design = setup.Page.Design;
    const PageVideo video{(tmp / "setupmenu.avi").string(), *fileName};
    prompt.Progress(kPageMessage, "Creating menu/movie for setup... ");
    const bool made = MakeStillVideo(project, ComposeSetupPage(setup), (tmp / "picformenu.bmp").string(), video.Work,
                                     std::strtod(form.cmbfpsText.c_str(), nullptr), design.UseThisSound,
                                     request.Menus.Tools);
    const bool placed = made && PutAllInPlace({video});
    RemoveFiles({video});
    if (!placed) {
        if (made)
            prompt.Message("There was an error working with the file:\n" + video.Final, "", PromptIcon::Critical);
        return false;
    }

    LanguageSetGuard guard(project, IsLanguageMenusThere(project.Doc.Tree, ComboText(form.Combo2)));
    prompt.Progress(kPageMessage, "Adding menu...");
    const std::string menuID = AddPageMenu(project, video.Final, design.MenuName, request.Menus.Language);
    if (menuID.empty())
        return false;
    prompt.Progress(kPageMessage, "Setting menu properties...");
    DocTree& tree = project.Doc.Tree;
    ParceMenu(project, tree.Item("k" + menuID));

    const ButtonOverlay overlay = ChooseOverlay(project, design);
    const auto addColumn = [&](const std::vector<StreamLabel>& column) {
        std::vector<Placed> buttons;
        for (const StreamLabel& row : column) {
            const std::string id = AddButtonToMenu(project, ShapeOf(row.Label), "");
            buttons.push_back(Placed{id, static_cast<int>(project.Canvas.Buttons.size()) - 1});
            SetButtonOverlay(project, overlay, row.Label.Caption, design.Labels, CaptionRect(row.Label, design.Labels));
        }
        return buttons;
    };
    const std::vector<Placed> audio = addColumn(setup.Audio);
    const std::vector<Placed> subtitles = addColumn(setup.Subtitles);
    std::string main;
    if (design.Main.Visible) {
        main = AddButtonToMenu(project, ShapeOf(design.Main), "");
        SetSpecialOverlay(project, "*Oval");
    }

    const auto select = [&](const std::vector<Placed>& buttons, const std::vector<StreamLabel>& column, bool isAudio) {
        for (std::size_t i = 0; i < buttons.size(); ++i) {
            ActionChoice choice;
            choice.Type = isAudio ? "AudioSelectAction" : "SubtitleSelectAction";
            choice.TitleID = setup.TitleID;
            choice.TrackID = column[i].TrackID.empty() ? kNoneMarker : column[i].TrackID;
            choice.TrackKind = isAudio ? "Audio" : "Subtitle";
            ActionRow row;
            if (!AcceptActionChoice(prompt, choice, row))
                return false;
            Label1_Click(project, buttons[i].Canvas);
            const std::string list = UpdateOrAddActionNode(project, "", true, {row});
            if (DocNode* node = tree.ObjectNode(buttons[i].ID))
                UpdatePropertyInNode(tree, *node, "selectAction", list, true);
        }
        return true;
    };
    if (!select(audio, setup.Audio, true) || !select(subtitles, setup.Subtitles, false))
        return false;

    const auto link = [&](const std::string& from, const char* key, const std::string& to) {
        if (DocNode* node = tree.ObjectNode(from); node && !to.empty() && to != from)
            UpdatePropertyInNode(tree, *node, key, to, true);
    };
    // Up and down walk a column and leave it through the main button; without one the column
    // closes on itself.
    const auto chain = [&](const std::vector<Placed>& column) {
        if (column.empty())
            return;
        for (std::size_t i = 1; i < column.size(); ++i) {
            link(column[i].ID, "upAction", column[i - 1].ID);
            link(column[i - 1].ID, "downAction", column[i].ID);
        }
        link(column.front().ID, "upAction", main.empty() ? column.back().ID : main);
        link(column.back().ID, "downAction", main.empty() ? column.front().ID : main);
    };
    chain(audio);
    chain(subtitles);
    // Left and right cross to the same row of the other column, or to its last row when it is
    // shorter; with no audio stream the subtitles cross to the main button.
    const auto cross = [&](const std::vector<Placed>& from, const std::vector<Placed>& to) {
        for (std::size_t i = 0; i < from.size(); ++i) {
            const std::string& other = to.empty() ? main : to[std::min(i, to.size() - 1)].ID;
            link(from[i].ID, "leftAction", other);
            link(from[i].ID, "rightAction", other);
        }
    };
    cross(audio, subtitles);
    cross(subtitles, audio);
    if (!main.empty()) {
        const std::vector<Placed>& first = audio.empty() ? subtitles : audio;
        link(main, "upAction", first.back().ID);
        link(main, "downAction", first.front().ID);
        link(main, "leftAction", first.back().ID);
        link(main, "rightAction", subtitles.back().ID);
        if (!request.Menus.MainMenuID.empty())
            ActionFromButtonToMenu(project, main, request.Menus.MainMenuID);
    }

    prompt.Progress(kPageMessage, request.FromWizard ? "" : "Creating menu for setup done");
    project.MarkDirty();
    guard.Done();
    result = SetupMenuResult{menuID, main};
    return true;
}

} // namespace mw
