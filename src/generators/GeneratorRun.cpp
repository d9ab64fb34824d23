#include "generators/GeneratorRun.h"

#include "build/PicturesToMenuVideo.h"
#include "core/Prompt.h"
#include "core/Text.h"
#include "document/MenuTrackList.h"
#include "document/ObjectIds.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "menus/AddNewMenu.h"
#include "menus/CanvasCommands.h"
#include "menus/MenuCommands.h"
#include "menus/MenuForms.h"
#include "menus/OverlayAttributes.h"
#include "render/cDIB.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <unordered_set>

namespace fs = std::filesystem;

namespace mw {

std::optional<TitleListRow> FindTitle(const Project& project, const std::string& titleID)
{
    for (TitleListRow& row : LoadTitlesInForm(project.Doc).lstTitles) {
        if (row.TitleID == titleID)
            return row;
    }
    return std::nullopt;
}

std::string MenuFileFilter(GeneratorKind kind)
{
    return kind == GeneratorKind::TitleMenu ? "*.avi;*.divx|*.avi;*.divx" : "*.avi|*.avi";
}

std::optional<std::string> MenuFileName(Prompt& prompt, const std::string& given, const std::string& filter)
{
    std::string name = given;
    if (name.empty()) {
        FileDialogRequest ask;
        ask.Title = "Type a name for the menu";
        ask.Filter = filter;
        ask.DefaultExt = "avi";
        name = prompt.SaveFile(ask).value_or("");
        if (name.empty())
            return std::nullopt;
    }
    if (!EndsWithNoCase(name, ".avi"))
        name += ".avi";
    return name;
}

void RemoveFiles(const std::vector<PageVideo>& videos)
{
    std::error_code ec;
    for (const PageVideo& video : videos)
        fs::remove(video.Work, ec);
}

bool PutAllInPlace(const std::vector<PageVideo>& videos)
{
    std::error_code ec;
    for (const PageVideo& video : videos) {
        if (fs::is_directory(video.Final, ec))
            return false;
    }
    std::vector<std::pair<fs::path, fs::path>> asides;
    std::vector<fs::path> placed;
    bool ok = true;
    for (const PageVideo& video : videos) {
        const fs::path final = video.Final;
        if (fs::exists(final, ec)) {
            const fs::path aside = final.string() + ".old";
            fs::rename(final, aside, ec);
            if (ec) {
                ok = false;
                break;
            }
            asides.emplace_back(final, aside);
        }
        fs::rename(video.Work, final, ec);
        if (ec) // another file system
            fs::copy_file(video.Work, final, fs::copy_options::overwrite_existing, ec);
        placed.push_back(final); // whatever stands there now is ours
        if (ec) {
            ok = false;
            break;
        }
    }
    for (const fs::path& file : ok ? std::vector<fs::path>{} : placed)
        fs::remove(file, ec);
    for (const auto& [final, aside] : asides) {
        if (ok)
            fs::remove(aside, ec);
        else
            fs::rename(aside, final, ec);
    }
    return ok;
}

int PicToMenuMethod(Project& project, const MenuVideoTools* tools)
{
    return tools ? project.Values().MethodForPicToMenu : kPicToMenuBuiltIn;
}

bool MakeStillVideo(Project& project, const QImage& composed, const std::string& picture, const std::string& video,
                    double fps, const std::string& sound, MenuVideoTools* tools)
{
    std::error_code ec;
    fs::remove(picture, ec);
    cDIB dib;
    const bool made = dib.CreateFromImage(composed) && dib.Save(picture) &&
                      CreateAviFromaPic(picture, video, fps, sound,
                                        PicToMenuMethod(project, tools),
                                        project.Values(), project.Lang(), project.Ask(), tools);
    fs::remove(picture, ec);
    return made;
}

bool OpenNewMenuForm(Project& project, NewMenuForm& form, const std::string& language)
{
    LoadNewMenuForm(form, clsIniFile(SettingsFilePath(project.ProgramFolder()).string()));
    FillLanguageCombo(form, project.Doc.Tree);
    if (!language.empty()) {
        const auto& items = form.Combo2.Items;
        const auto found = std::find_if(items.begin(), items.end(), [&](const ComboItem& i) { return i.Text == language; });
        if (found == items.end())
            return false;
        form.Combo2.ListIndex = static_cast<int>(found - items.begin());
    }
    Combo2_Click(form, project.Doc.Tree);
    return true;
}

std::string AddPageMenu(Project& project, const std::string& video, const std::string& name,
                        const std::string& language)
{
    NewMenuForm form;
    if (!OpenNewMenuForm(project, form, language) || !LoadMovieForMenu(project, form, video))
        return "";
    form.txtMenuName = name;
    return AddNewMenu(project, form, false);
}

namespace {

// Takes away every object numbered from `firstNewID` on, with what it holds: with no language
// set before a run, all the run made is numbered so, the set itself included.
void RemoveNewObjects(DocTree& tree, long firstNewID)
{
    std::vector<DocNode*> made;
    std::unordered_set<const DocNode*> madeSet;
    tree.ForEach([&](DocNode& node) {
        const std::string id = IdOfKey(node.Key());
        if (!id.empty() && LeadingNumber(id) >= firstNewID) {
            made.push_back(&node);
            madeSet.insert(&node);
        }
    });
    // Only the outermost go: the others go with them.
    const auto withinMade = [&](const DocNode* node) {
        for (const DocNode* up = node->Parent(); up; up = up->Parent()) {
            if (madeSet.contains(up))
                return true;
        }
        return false;
    };
    std::erase_if(made, withinMade);
    for (DocNode* node : made)
        tree.Remove(*node);
}

} // namespace

LanguageSetGuard::LanguageSetGuard(Project& project, const DocNode* languageSet)
    : project_(project), undo_(project.Undo), nextID_(project.Doc.NextObjectID), dirty_(project.FileIsDirty),
      shownMenu_(project.Canvas.CurrentMenuID)
{
    const DocNode* selected = project.Doc.Tree.Selected();
    selected_ = selected ? selected->Key() : std::string();
    kept_ = languageSet && TakeUndoSnapshot(project.Doc, GetPropertyInNode(*languageSet, "objectid"),
                                            project.Canvas.CurrentMenuID, before_, KeptTracks::None);
}

LanguageSetGuard::~LanguageSetGuard()
{
    // The steps the menu commands recorded on the way give way to the one of the run.
    project_.Undo = std::move(undo_);
    if (kept_)
        project_.Undo.Push(std::move(before_));
    if (!done_) {
        Document& doc = project_.Doc;
        if (kept_) {
            project_.UndoDo();
            if (DocNode* shown = doc.Tree.ObjectNode(project_.Canvas.CurrentMenuID))
                ParceMenu(project_, *shown);
        } else {
            RemoveNewObjects(doc.Tree, nextID_);
            LoadMediaTracsFromMenuTracs(doc, doc.MenuTracks);
            // Each menu made was shown on the canvas in its turn.
            if (DocNode* shown = shownMenu_.empty() ? nullptr : doc.Tree.ObjectNode(shownMenu_))
                ParceMenu(project_, *shown);
            else
                project_.ForgetCanvas();
            doc.Tree.Select(doc.Tree.Find(selected_));
        }
        doc.NextObjectID = nextID_;
        project_.FileIsDirty = dirty_;
    }
    project_.Commands.mnuUndo = !project_.Undo.Empty();
}

ButtonShape ShapeOf(const PageLabel& label) { return ButtonShape{"", label.Left, label.Top, label.Width, label.Height}; }

ButtonOverlay ChooseOverlay(const Project& project, const PageDesign& design)
{
    std::error_code ec;
    const std::string shapeFile = fs::path(design.ButtonPicture).stem().string() + ".bmp";
    const bool bitmap = !design.ButtonPicture.empty() && design.WhatOverlay == 0 &&
                        fs::is_regular_file(project.ProgramFolder() / "overlays" / "frames" / shapeFile, ec);
    return ButtonOverlay{bitmap ? "frames\\" + shapeFile : ""};
}

void SetButtonOverlay(Project& project, const ButtonOverlay& overlay, const std::string& text, const FontGroup& font,
                      const QRect& caption)
{
    if (!overlay.Bitmap.empty()) {
        SetThisOverlay(project, overlay.Bitmap);
        return;
    }
    TextOverlayForm& panel = project.Overlays.TextPanel;
    panel.Text = text;
    panel.Font = FontChoice{font.Name, double(font.Size), font.Bold, font.Italic};
    panel.Charset = font.CharSet;
    UpdateTextOverlay(project);
    PlaceShapeToPos(project, static_cast<int>(project.Canvas.Buttons.size()) - 1,
                    ButtonShape{"", caption.left(), caption.top(), caption.width(), caption.height()});
}

} // namespace mw
