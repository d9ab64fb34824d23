#include "menus/MenuTemplates.h"

#include "core/Text.h"
#include "document/ObjectIds.h"
#include "document/Project.h"
#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"
#include "document/TreeViewToXml.h"
#include "document/XmlToTreeView.h"
#include "menus/AddNewMenu.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/MenuForms.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <map>
#include <optional>
#include <sstream>
#include <vector>

namespace mw {

namespace {

namespace fs = std::filesystem;

bool IsNamed(const DocNode& node, std::string_view name)
{
    return EqualsNoCase(node.Text, name);
}

// The value of a row by its whole name, case ignored; nothing when the element has no such row.
std::optional<std::string> RowOf(const DocNode& element, std::string_view name)
{
    for (const auto& child : element) {
        if (!child->HasChildren() && child->Text.find('=') != std::string::npos &&
            EqualsNoCase(RowName(child->Text), name))
            return RowValue(child->Text);
    }
    return std::nullopt;
}

bool IsOneOf(const std::string& name, std::initializer_list<std::string_view> names)
{
    for (const std::string_view n : names) {
        if (EqualsNoCase(name, n))
            return true;
    }
    return false;
}

// What a template must hold for a menu to be made from it, checked before the project is touched.
struct TemplateMenu {
    const DocNode* Menu = nullptr;
    std::string Video, Start, End, Type, Name;
    std::vector<std::pair<const DocNode*, ButtonShape>> Buttons;
};

// Why the template cannot make a menu; empty when it can.
std::string ReadTemplateMenu(const DocTree& aside, TemplateMenu& read)
{
    for (std::size_t i = 0; i < aside.TopLevelCount() && !read.Menu; ++i) {
        if (aside.TopLevel(i)->Image != "comment")
            read.Menu = aside.TopLevel(i);
    }
    if (!read.Menu || !IsNamed(*read.Menu, "DivXMediaMenu"))
        return "it holds no DivXMediaMenu";
    const DocNode& menu = *read.Menu;
    const auto video = RowOf(menu, "backgroundVideoID");
    const auto start = RowOf(menu, "startFrame");
    const auto end = RowOf(menu, "endFrame");
    const auto type = RowOf(menu, "menuType");
    const auto name = RowOf(menu, "menuName");
    if (!video || !start || !end || !type || !name)
        return "the menu lacks one of backgroundVideoID, startFrame, endFrame, menuType and menuName";
    std::error_code ec;
    if (!fs::is_regular_file(*video, ec))
        return "its background video " + *video + " is missing";
    read = {&menu, *video, *start, *end, *type, *name, {}};
    for (const auto& child : menu) {
        if (!IsNamed(*child, "ButtonMenu"))
            continue;
        const DocNode* rect = ChildNamed(child.get(), "MenuRectangle");
        const auto left = rect ? RowOf(*rect, "left") : std::nullopt;
        const auto top = rect ? RowOf(*rect, "top") : std::nullopt;
        const auto width = rect ? RowOf(*rect, "width") : std::nullopt;
        const auto height = rect ? RowOf(*rect, "height") : std::nullopt;
        if (!left || !top || !width || !height)
            return "a button lacks its MenuRectangle with left, top, width and height";
        read.Buttons.push_back({child.get(), {"", static_cast<long>(LeadingNumber(*left)),
                                              static_cast<long>(LeadingNumber(*top)),
                                              static_cast<long>(LeadingNumber(*width)),
                                              static_cast<long>(LeadingNumber(*height))}});
    }
    return "";
}

// The references that follow the copy: the four remote-control links, and the action lists that
// the menu and its buttons own (their elements get fresh identifiers too). What an action leads
// to stays as the template wrote it.
bool FollowsTheCopy(const std::string& row)
{
    return IsOneOf(RowName(row),
                   {"upAction", "downAction", "leftAction", "rightAction", "selectAction", "enterAction", "exitAction"});
}

// Copies the content of template elements into the project: each element gets a fresh
// identifier, and the links and action lists follow their copies.
class TemplateCopy {
public:
    explicit TemplateCopy(Document& doc) : doc_(doc), tree_(doc.Tree) {}

    std::map<std::string, std::string> NewID; // template identifier to project identifier

    void Follow(const DocNode* from, const DocNode* to)
    {
        if (!from || !to)
            return;
        if (const std::string id = IdOfKey(from->Key()); !id.empty())
            NewID[id] = IdOfKey(to->Key());
    }

    // Every element of the template that has no copy yet gets its identifier now, so that
    // references to elements further on can be followed.
    void NumberTheRest(const DocNode& node)
    {
        if (const std::string id = IdOfKey(node.Key()); !id.empty() && !NewID.contains(id))
            NewID[id] = std::to_string(TakeObjectID(doc_));
        for (const auto& child : node) {
            if (child->HasChildren())
                NumberTheRest(*child);
        }
    }

    // The rows but `skipRows` and the elements but `skipElement`, into an existing element.
    void CopyContent(const DocNode& from, DocNode& into, std::initializer_list<std::string_view> skipRows,
                     std::string_view skipElement)
    {
        for (const auto& child : from) {
            if (child->HasChildren()) {
                if (!IsNamed(*child, skipElement))
                    CopyElement(*child, into);
            } else if (child->Image == "comment" || child->Text.find('=') == std::string::npos) {
                tree_.AddChild(into, "", child->Text, child->Image).Tag = child->Tag;
            } else if (!IsOneOf(RowName(child->Text), skipRows)) {
                UpdatePropertyInNode(tree_, into, RowName(child->Text), Mapped(child->Text), true);
            }
        }
    }

private:
    std::string Mapped(const std::string& row) const
    {
        const std::string value = RowValue(row);
        const auto found = FollowsTheCopy(row) ? NewID.find(value) : NewID.end();
        return found == NewID.end() ? value : found->second;
    }

    void CopyElement(const DocNode& from, DocNode& parent)
    {
        const std::string id = IdOfKey(from.Key());
        DocNode& copy = id.empty() ? tree_.AddChild(parent, "", from.Text, from.Image)
                                   : AddObjectNode(tree_, parent, LeadingNumber(NewID.at(id)), from.Text, from.Image);
        copy.Tag = from.Tag;
        for (const auto& child : from) {
            if (child->HasChildren())
                CopyElement(*child, copy);
            else if (child->Image == "comment" || child->Text.find('=') == std::string::npos)
                tree_.AddChild(copy, "", child->Text, child->Image).Tag = child->Tag;
            else if (!EqualsNoCase(RowName(child->Text), "objectID"))
                AddPropRow(tree_, copy, RowName(child->Text), Mapped(child->Text));
        }
    }

    Document& doc_;
    DocTree& tree_;
};

} // namespace

bool mnuExportToTemplate(Project& project, const std::string& menuID, const std::string& path)
{
    DocNode* menu = project.Doc.Tree.ObjectNode(menuID);
    if (!menu || !IsNamed(*menu, "DivXMediaMenu")) {
        project.Ask().Message(menuID + " is not a menu of the project", "", PromptIcon::Warning);
        return false;
    }
    std::string error;
    if (!SaveNodeToTemplate(project.Doc, *menu, path, error)) {
        project.Ask().Message(error, "", PromptIcon::Warning);
        return false;
    }
    return true;
}

DocNode* TemplateLanguageSet(const DocTree& tree)
{
    for (DocNode* node = tree.Selected(); node; node = node->Parent()) {
        if (IsNamed(*node, "LanguageMenus"))
            return node;
    }
    return ChildNamed(tree.Root(), "LanguageMenus");
}

std::string LoadXmlTemplate(Project& project, const std::string& path, DocNode& languageMenus)
{
    Prompt& prompt = project.Ask();
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        prompt.Message("Cannot open the file " + path + ": " + std::strerror(errno) + ".", "", PromptIcon::Warning);
        return "";
    }
    std::ostringstream text;
    text << file.rdbuf();

    // Read aside: a template that cannot make a menu leaves the project untouched.
    Document aside;
    if (!LoadXmlString(text.str(), aside, nullptr, Relationship::Last, prompt))
        return "";
    TemplateMenu read;
    if (const std::string why = ReadTemplateMenu(aside.Tree, read); !why.empty()) {
        prompt.Message("The file " + path + " is not a menu template that can be inserted: " + why + ".", "",
                       PromptIcon::Warning);
        return "";
    }

    Document& doc = project.Doc;
    DocTree& tree = doc.Tree;
    GetMenuTracksOrCreate(doc);
    project.UndoAddFor(IdOfKey(languageMenus.Key()));

    NewMenuForm form;
    form.Combo1.AddItem(read.Type);
    form.Combo1.ListIndex = 0;
    form.Combo2.AddItem(GetPropertyInNode(languageMenus, "languagecode"));
    form.Combo2.ListIndex = 0;
    form.Combo3.AddItem(kCreateAfterRow); // an exit list of the template comes with its actions
    form.Combo3.ListIndex = 0;
    form.lblVideo = read.Video;
    form.txtStartFrame = read.Start;
    form.txtEndFrame = read.End;
    form.txtMenuName = read.Name;
    const std::string menuID = AddNewMenu(project, form, false);
    DocNode& menu = tree.Item("k" + menuID);
    if (!read.Menu->Tag.empty())
        menu.Tag = read.Menu->Tag;

    TemplateCopy copy(doc);
    copy.Follow(read.Menu, &menu);
    MenuCanvas& canvas = project.Canvas;
    ParceMenu(project, menu);
    canvas.NoUndo = true;
    std::vector<DocNode*> addedButtons;
    for (const auto& [button, rect] : read.Buttons) {
        DocNode& added = tree.Item("k" + AddButtonToMenu(project, rect, ""));
        addedButtons.push_back(&added);
        if (!button->Tag.empty())
            added.Tag = button->Tag;
        copy.Follow(button, &added);
        copy.Follow(ChildNamed(button, "MenuRectangle"), ChildNamed(&added, "MenuRectangle"));
    }
    canvas.NoUndo = false;
    copy.NumberTheRest(*read.Menu);

    copy.CopyContent(*read.Menu, menu,
                     {"objectID", "backgroundVideoID", "backgroundAudioID", "startFrame", "endFrame", "menuType",
                      "menuName", "startingMenuItemID"},
                     "ButtonMenu");
    for (std::size_t i = 0; i < read.Buttons.size(); ++i) {
        const DocNode* button = read.Buttons[i].first;
        DocNode& added = *addedButtons[i];
        copy.CopyContent(*button, added, {"objectID", "overlayID"}, "MenuRectangle");
        copy.CopyContent(*ChildNamed(button, "MenuRectangle"), *ChildNamed(&added, "MenuRectangle"),
                         {"objectID", "left", "top", "width", "height"}, "");
    }
    ParceMenu(project, menu);
    tree.Select(&menu);
    return menuID;
}

// The file dialog of both template commands, in the program folder's Templates (made if missing).
std::optional<std::string> AskTemplateFile(Project& project, bool forSaving)
{
    const fs::path folder = project.ProgramFolder() / "Templates";
    std::error_code ignored;
    fs::create_directories(folder, ignored);
    FileDialogRequest request;
    request.Filter = "*.xml|*.xml";
    request.DefaultExt = "xml";
    request.InitialDir = folder.string();
    if (forSaving) {
        request.OverwritePrompt = true;
        return project.Ask().SaveFile(request);
    }
    std::vector<std::string> chosen = project.Ask().OpenFiles(request);
    if (chosen.empty())
        return std::nullopt;
    return chosen.front();
}

bool mnuExportToTemplate(Project& project)
{
    const std::string menuID = project.Canvas.CurrentMenuID;
    if (menuID.empty())
        return false;
    const std::optional<std::string> path = AskTemplateFile(project, true);
    return path && mnuExportToTemplate(project, menuID, *path);
}

std::string mnuInsertTemplate(Project& project)
{
    DocNode* languageMenus = TemplateLanguageSet(project.Doc.Tree);
    if (!languageMenus)
        return "";
    const std::optional<std::string> path = AskTemplateFile(project, false);
    return path ? LoadXmlTemplate(project, *path, *languageMenus) : "";
}

} // namespace mw
