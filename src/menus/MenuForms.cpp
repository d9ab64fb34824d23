#include "menus/MenuForms.h"

#include "core/Paths.h"
#include "core/Text.h"
#include "core/settings/clsIniFile.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "media/AskForMovies.h"
#include "media/mAVIDecs.h"
#include "menus/MenuCommands.h"

#include <cstdlib>

namespace mw {

namespace {

constexpr const char* kForm = "frmNewMenu";
constexpr int kBuiltInFps = 3;

// The file of the video the form shows: the chosen one, or that of the menu it refers to.
std::string FormVideoFile(Project& project, const NewMenuForm& form)
{
    if (form.lblVideo.starts_with(kMenuReference))
        return GetFileNameForMenu(project, MenuIdOfRow(form.lblVideo));
    return form.lblVideo;
}

// The frames of a chosen video: its start and its length.
void TakeFrames(Project& project, NewMenuForm& form, const std::string& file)
{
    form.cmdOKEnabled = form.Command10Enabled = true;
    long start = 0, length = 0, width = 0, height = 0;
    float fps = 0;
    if (GetStreamByType(file, "video", start, length, fps, width, height, project.Ask()) < 0)
        return;
    form.txtStartFrame = std::to_string(start);
    form.txtEndFrame = std::to_string(length);
    form.txtStartFrameToolTip = "Start Frame = " + form.txtStartFrame + " - Ctrl+Enter to set movie to that frame";
    form.txtEndFrameToolTip = "End Frame = " + form.txtEndFrame + " - Ctrl+Enter to set movie to that frame";
}

} // namespace

void LoadNewMenuForm(NewMenuForm& form, const clsIniFile& settings)
{
    form = NewMenuForm{};
    for (const char* fps : {"23.976", "25", "29.97"})
        form.cmbfps.AddItem(fps);
    for (int n = 1;; ++n) {
        const std::string fps = settings.GetString("pic2aviFPS" + std::to_string(n), "");
        if (fps.empty())
            break;
        form.cmbfps.AddItem(fps);
    }
    form.cmbfpsText = form.cmbfps.Items.back().Text;
    for (char& c : form.cmbfpsText) {
        if (c == ',')
            c = '.';
    }
    for (const char* type : {"audio", "chapter", "other", "subtitle", "title"})
        form.Combo1.AddItem(type);
    form.Combo1.ListIndex = 2;
    form.Combo3.AddItem(kCreateAfterRow);
    form.Combo3.AddItem(kPlayAgainRow);
    form.Combo3.ListIndex = 1;
}

bool cmbfps_Enter(NewMenuForm& form, clsIniFile& settings)
{
    const double fps = std::strtod(form.cmbfpsText.c_str(), nullptr);
    if (fps < 1 || fps >= 50)
        return false;
    for (const ComboItem& item : form.cmbfps.Items) {
        if (item.Text == form.cmbfpsText)
            return false;
    }
    form.cmbfps.AddItem(form.cmbfpsText);
    const int number = static_cast<int>(form.cmbfps.Items.size()) - kBuiltInFps;
    settings.PutString("pic2aviFPS" + std::to_string(number), form.cmbfpsText);
    return true;
}

void FillLanguageCombo(NewMenuForm& form, const DocTree& tree)
{
    ComboList& combo = form.Combo2;
    combo.Clear();
    const DocNode* root = tree.Root();
    if (root) {
        for (const auto& child : *root) {
            if (EqualsNoCase(child->Text, "LanguageMenus")) {
                const std::string code = GetPropertyInNode(*child, "languagecode");
                combo.AddItem(code.empty() ? "??" : code);
            }
        }
    }
    if (combo.Items.empty())
        combo.AddItem(kNewLanguageRow);
    combo.ListIndex = 0;
    for (const DocNode* node = tree.Selected(); node; node = node->Parent()) {
        if (!EqualsNoCase(node->Text, "LanguageMenus"))
            continue;
        const std::string code = GetPropertyInNode(*node, "languagecode");
        for (std::size_t i = 0; i < combo.Items.size(); ++i) {
            if (combo.Items[i].Text == code) {
                combo.ListIndex = static_cast<int>(i);
                break;
            }
        }
        break;
    }
}

std::string ComboText(const ComboList& combo)
{
    const auto i = static_cast<std::size_t>(combo.ListIndex);
    return combo.ListIndex < 0 || i >= combo.Items.size() ? "" : combo.Items[i].Text;
}

std::string MenuIdOfRow(const std::string& row)
{
    return std::to_string(LeadingNumber(row.substr(row.rfind(' ') + 1)));
}

void AddMenuRows(ComboList& list, const DocTree& tree, const std::string& languageCode)
{
    for (const std::string& id : LoadAllMenus(tree, languageCode)) {
        const std::string name = GetPropertyInNode(tree.Item("k" + id), "menuname");
        list.AddItem(name.empty() ? "to Menu " + id : "to Menu " + name + " " + id,
                     static_cast<int>(LeadingNumber(id)));
    }
}

void Combo2_Click(NewMenuForm& form, const DocTree& tree)
{
    form.Combo3.Clear();
    form.Combo3.AddItem(kCreateAfterRow);
    form.Combo3.AddItem(kPlayAgainRow);
    AddMenuRows(form.Combo3, tree, ComboText(form.Combo2));
    form.Combo3.ListIndex = 1;
    if (form.lblVideo.starts_with("<Menu")) {
        form.lblVideo.clear();
        form.cmdOKEnabled = form.Command10Enabled = false;
    }
}

std::string Combo3ToolTip(const NewMenuForm& form)
{
    switch (form.Combo3.ListIndex) {
    case 0: return "Use this to create after (example if menu is an intro to an other menu)";
    case 1: return "Use this if the menu will have buttons";
    default: return "Use this to redirect to an other menu";
    }
}

bool LoadMovieForMenu(Project& project, NewMenuForm& form, const std::string& fileName)
{
    std::string file = fileName;
    if (file.empty()) {
        const std::vector<std::string> files = AskForMovies(project, "", false);
        if (files.empty())
            return false;
        file = files.front();
    }
    form.lblVideo = file;
    TakeFrames(project, form, file);
    return true;
}

bool LoadMenusToSelect(Project& project, const NewMenuForm& form, SelectMenuForm& select)
{
    select.List.Clear();
    AddMenuRows(select.List, project.Doc.Tree, ComboText(form.Combo2));
    if (select.List.Items.empty()) {
        project.Ask().Message(FormTexts(project.Lang(), kForm)(4, "No menus inside this Laguage menu"));
        return false;
    }
    select.List.ListIndex = 0;
    return true;
}

void AcceptSelectedMenu(Project& project, NewMenuForm& form, const SelectMenuForm& select)
{
    form.lblVideo = std::string(kMenuReference) + MenuIdOfRow(ComboText(select.List)) + ">";
    TakeFrames(project, form, FormVideoFile(project, form));
}

void Command8_Click(Project& project, NewMenuForm& form)
{
    SelectMenuForm select;
    if (LoadMenusToSelect(project, form, select) && project.Forms().ShowSelectMenu(select))
        AcceptSelectedMenu(project, form, select);
}

void Command9_Click(Project& project)
{
    project.Ask().Message(
        "The menu will have as video, the same as a menu all ready exist.\r\n"
        "This is useful if you have a video for menu that has an intro at the beginning and after is the \"real\" "
        "menu with the buttons.\r\n"
        "An example: let's say from frame 0 to 450 is the intro and from frame 451 to end is the real menu.\r\n"
        "In this case the best thing to do is to load your file for the menu as usual, as exitAction put <create "
        "after> and \"Start Frame\" = 0 and \"End Frame\" = 450 and hit the Ok button.\r\n"
        "After we go again to create a new menu. We hit the button \"from menu\" and we select the menu we "
        "previous create. Now we put \"Start Frame\" to 451 and \"End Frame\" to <last frame of file>, exiAction "
        "is \"Play this menu again\" and we hit the Ok button.\r\n"
        "After, at main screen we select the first menu we create (the intro) and at \"Menu Properties\" window "
        "we set as exitAction a MenuTransitionAction to our second menu (the \"real\" one).\r\n"
        "That's all. I hope I make it clear to you.");
}

void Command10_Click(Project& project, NewMenuForm& form)
{
    const std::string file = FormVideoFile(project, form);
    form.txtStartFrame =
        std::to_string(FindNextKeyFrame(file, static_cast<long>(LeadingNumber(form.txtStartFrame)), project.Ask()));
}

bool cmdOK_Click(Project& project, NewMenuForm& form)
{
    if (LeadingNumber(form.txtStartFrame) > LeadingNumber(form.txtEndFrame)) {
        project.Ask().Message(FormTexts(project.Lang(), kForm)(2, "Error in frame ranges"));
        return false;
    }
    form.Accepted = true;
    return true;
}

std::string GetFileNameForMenu(Project& project, const std::string& menuID)
{
    const DocTree& tree = project.Doc.Tree;
    const DocNode* menu = tree.ObjectNode(menuID);
    const DocNode* track = menu ? tree.ObjectNode(GetPropertyInNode(*menu, "backgroundvideoid")) : nullptr;
    if (!track) {
        project.Ask().Message(FormTexts(project.Lang(), kForm)(6, "Background ID for menu not found"));
        return "";
    }
    const DocNode* source = tree.ObjectNode(GetPropertyInNode(*track, "mediasourceid"));
    if (!source) {
        project.Ask().Message("Media source ID for menu not found");
        return "";
    }
    return ResolveLocation(project.Doc.ProjectFile, GetPropertyInNode(*source, "location"));
}

} // namespace mw
