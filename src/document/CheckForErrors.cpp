#include "document/CheckForErrors.h"

#include "core/Paths.h"
#include "core/Text.h"
#include "document/ExtraInfo.h"
#include "document/ObjectIds.h"
#include "document/TreeQueries.h"

#include <filesystem>

namespace mw {

namespace {

constexpr const char* kForm = "Form1";

bool FileExists(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

// A title's name is the first translation of its lookup; a title without one goes by its
// element name.
std::string TitleName(const DocTree& tree, const DocNode& title)
{
    if (const DocNode* lookup = tree.ObjectNode(GetPropertyInNode(title, "translationLookupID"))) {
        for (const auto& child : *lookup) {
            if (!EqualsNoCase(child->Text, "translation"))
                continue;
            std::string value = GetPropertyInNode(*child, "value");
            if (!value.empty())
                return value;
        }
    }
    return title.Text;
}

std::string MenuOfSource(const DocNode& source)
{
    pugi::xml_document extraInfo;
    if (ParseExtraInfo(source.Tag, extraInfo)) {
        if (const pugi::xml_attribute menuID = extraInfo.document_element().attribute("menuID"))
            return menuID.value();
    }
    return "???";
}

struct TargetTexts {
    std::string Missing;
    std::string WrongType;
    std::string NotValid;
};

// Checks that the row `row` of an element names an existing element called `required`.
void CheckTarget(const DocTree& tree, DocNode& owner, const std::string& ownerID, const char* row,
                 const char* required, const TargetTexts& texts, Prompt& prompt, bool& hasError)
{
    const DocNode* target = tree.ObjectNode(GetPropertyInNode(owner, row));
    if (!target) {
        EnsureVisible(owner);
        hasError = true;
        prompt.Message(texts.Missing + ownerID);
    } else if (!EqualsNoCase(target->Text, required)) {
        // Told, but not counted as a fault: the player only needs the target to exist.
        prompt.Message(texts.WrongType + ownerID + texts.NotValid + target->Text);
    }
}

} // namespace

void EnsureVisible(DocNode& node)
{
    for (DocNode* parent = node.Parent(); parent; parent = parent->Parent())
        parent->Expanded = true;
}

void LoadIDs(const DocNode* first, IdSet& ids)
{
    for (const DocNode* node = first; node; node = node->Next()) {
        if (node->HasChildren())
            LoadIDs(node->FirstChild(), ids);
        else if (Lower(RowName(node->Text)) == "objectid")
            ids.Add(LeadingNumber(RowValue(node->Text)));
    }
}

void ParceForErrors(DocNode* first, const IdSet& ids, const LangDoc& lang, Prompt& prompt, bool& hasError)
{
    const FormTexts text(lang, kForm);
    ReferenceVisitor visit;
    visit.Row = [&](DocNode& row) {
        if (ids.Find(IdSet::EntryOf(RowValue(row.Text))) >= 0)
            return;
        const long long id = LeadingNumber(RowValue(row.Text));
        hasError = true;
        EnsureVisible(row);
        const DocNode* parent = row.Parent();
        const std::string name = parent ? parent->Text : "";
        const std::string key = parent ? IdOfKey(parent->Key()) : "";
        prompt.Message(text(26, "Error while checking at node ") + name + " (" + key +
                       text(27, "). ID not found ") + std::to_string(id));
    };
    visit.ExtraInfo = [&](DocNode& element, pugi::xml_document& extraInfo) {
        for (const char* name : kExtraInfoReferences) {
            const pugi::xml_attribute attr = extraInfo.document_element().attribute(name);
            if (!attr || !IsReferenceValue(attr.value()) || ids.Find(IdSet::EntryOf(attr.value())) >= 0)
                continue;
            hasError = true;
            prompt.Message(text(28, "Error while checking at ID ") + attr.value() +
                           text(29, " in extra info used by ") + element.Text);
        }
    };
    WalkReferences(first, visit);
}

void CheckMediaForErrors(const Document& doc, const LangDoc& lang, Prompt& prompt, bool& hasError)
{
    const FormTexts text(lang, kForm);
    const DocTree& tree = doc.Tree;
    const DocNode* media = tree.Root() ? tree.ObjectNode(Get1NodeInNode(*tree.Root(), "media")) : nullptr;
    if (!media)
        return;

    // The path shown is the resolved one; an empty location counts as missing.
    auto missingFile = [&](const DocNode* source, std::string& path) {
        const std::string location = source ? GetPropertyInNode(*source, "location") : "";
        path = ResolveLocation(doc.ProjectFile, location);
        return location.empty() || !FileExists(path);
    };

    if (const auto titles = GetAllNodesInNode(*media, "title")) {
        for (const std::string& id : *titles) {
            const DocNode* title = tree.ObjectNode(id);
            if (!title)
                continue;
            std::string path;
            if (!missingFile(tree.ObjectNode(Get1NodeInNode(*title, "mediasource")), path))
                continue;
            hasError = true;
            prompt.Message(text(11, "Can not find file ") + path + "\n" +
                           text(12, "Is used as MediaSource in title ") + TitleName(tree, *title) + " (" + id + ")");
        }
    }

    const DocNode* menuTracks = tree.ObjectNode(Get1NodeInNode(*media, "menutracks"));
    if (!menuTracks)
        return;
    if (const auto sources = GetAllNodesInNode(*menuTracks, "mediasource")) {
        for (const std::string& id : *sources) {
            const DocNode* source = tree.ObjectNode(id);
            std::string path;
            if (!source || !missingFile(source, path))
                continue;
            hasError = true;
            prompt.Message(text(11, "Can not find file ") + path + "\n" +
                           text(13, "Is used as MediaSource in menu ") + MenuOfSource(*source));
        }
    }
}

void CheckMenusForErrors(Document& doc, const LangDoc& lang, Prompt& prompt, bool& hasError)
{
    const FormTexts text(lang, kForm);
    const DocTree& tree = doc.Tree;
    const TargetTexts startingMenu{text(14, "Missing startingMenuID in Language Menu "),
                                   text(15, "Type of startingMenuID in Language Menu "),
                                   text(16, " is not valid. Required DivXMediaMenu, current ")};
    const std::string notAction = text(19, " is not valid. Required Action, current ");
    const TargetTexts exitAction{text(17, "Missing exitAction in menu "), text(18, "Type of exitAction in menu "),
                                 notAction};
    const TargetTexts selectAction{text(20, "Missing selectAction in button "),
                                   text(21, "Type of selectAction in button "), notAction};

    if (!tree.Root())
        return;
    const auto languages = GetAllNodesInNode(*tree.Root(), "LanguageMenus");
    if (!languages)
        return;
    for (const std::string& languageID : *languages) {
        DocNode* language = tree.ObjectNode(languageID);
        if (!language)
            continue;
        CheckTarget(tree, *language, languageID, "startingMenuID", "DivXMediaMenu", startingMenu, prompt, hasError);
        const auto menus = GetAllNodesInNode(*language, "DivXMediaMenu");
        if (!menus)
            continue;
        for (const std::string& menuID : *menus) {
            DocNode* menu = tree.ObjectNode(menuID);
            if (!menu)
                continue;
            CheckTarget(tree, *menu, menuID, "exitAction", "Action", exitAction, prompt, hasError);
            const auto buttons = GetAllNodesInNode(*menu, "ButtonMenu");
            if (!buttons)
                continue;
            for (const std::string& buttonID : *buttons) {
                if (DocNode* button = tree.ObjectNode(buttonID))
                    CheckTarget(tree, *button, buttonID, "selectAction", "Action", selectAction, prompt, hasError);
            }
        }
    }
}

bool CheckForErrors(Document& doc, const LangDoc& lang, Prompt& prompt, bool showMessage)
{
    DocNode* root = doc.Tree.Root();
    if (!root)
        return true;

    IdSet ids;
    LoadIDs(root, ids);
    bool referenceFault = false;
    bool menuFault = false;
    bool mediaFault = false;
    ParceForErrors(root, ids, lang, prompt, referenceFault);
    CheckMenusForErrors(doc, lang, prompt, menuFault);
    CheckMediaForErrors(doc, lang, prompt, mediaFault);

    const bool ok = !referenceFault && !menuFault && !mediaFault;
    if (showMessage) {
        const FormTexts text(lang, kForm);
        prompt.Message(text(22, "Checking complete with ") + (ok ? text(23, "no ") : "") + text(24, "errors"));
    }
    return ok;
}

} // namespace mw
