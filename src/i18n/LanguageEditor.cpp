#include "i18n/LanguageEditor.h"

#include "core/AtomicFile.h"
#include "core/Prompt.h"
#include "core/Text.h"
#include "core/Version.h"
#include "i18n/LanguageFiles.h"

#include <algorithm>
#include <sstream>
#include <system_error>

namespace fs = std::filesystem;

namespace mw {

namespace {

constexpr const char* kForm = "frmCreateLang";
constexpr std::string_view kRowSeparator = " = ";
constexpr const char* kPrivate = "Private";

pugi::xml_node ChildElement(pugi::xml_node parent, const std::string& name)
{
    for (pugi::xml_node child : parent.children()) {
        if (child.type() == pugi::node_element && child.name() == name)
            return child;
    }
    return {};
}

// The element of an item, or none when one of its sections is missing.
pugi::xml_node ElementOf(const pugi::xml_document& doc, const LangItem& item)
{
    pugi::xml_node element = doc.document_element();
    for (const std::string& section : item.Sections) {
        if (!element)
            break;
        element = ChildElement(element, section);
    }
    return element;
}

pugi::xml_attribute AttributeOf(const pugi::xml_document& doc, const LangItem& item)
{
    if (!item.Attribute)
        return {};
    return ElementOf(doc, item).attribute(item.Attribute->c_str());
}

// AddNodes and AddAttr: the element's own rows first, then its elements.
LangTreeNode AddNodes(pugi::xml_node element, const LangItem& item)
{
    LangTreeNode node{element.name(), item, {}};
    for (pugi::xml_attribute attr : element.attributes()) {
        LangItem row{item.Sections, attr.name()};
        node.Children.push_back({std::string(attr.name()) + std::string(kRowSeparator) + attr.value(), row, {}});
    }
    for (pugi::xml_node child : element.children()) {
        if (child.type() != pugi::node_element)
            continue;
        LangItem section{item.Sections, std::nullopt};
        section.Sections.emplace_back(child.name());
        node.Children.push_back(AddNodes(child, section));
    }
    return node;
}

std::optional<LangTreeNode> TreeOf(const pugi::xml_document& doc)
{
    if (!doc.document_element())
        return std::nullopt;
    return AddNodes(doc.document_element(), {});
}

// A row of Private, found as the tree shows it: by the start of its text, in any case.
std::optional<std::string> PrivateRow(const pugi::xml_document& doc, std::string_view start)
{
    const pugi::xml_node priv = ChildElement(doc.document_element(), kPrivate);
    for (pugi::xml_attribute attr : priv.attributes()) {
        const std::string row = std::string(attr.name()) + std::string(kRowSeparator) + attr.value();
        if (StartsWithNoCase(row, start))
            return Trim(row.substr(row.find('=') + 1));
    }
    return std::nullopt;
}

void WriteAttribute(pugi::xml_node element, const std::string& name, const std::string& value)
{
    pugi::xml_attribute attr = element.attribute(name.c_str());
    if (!attr)
        attr = element.append_attribute(name.c_str());
    attr.set_value(value.c_str());
}

std::string ValueOf(pugi::xml_attribute attr) { return attr ? attr.value() : ""; }

const LangTreeNode* FindNode(const LangTreeNode& node, const LangItem& item, const LangTreeNode** parent)
{
    for (const LangTreeNode& child : node.Children) {
        if (child.Item == item) {
            *parent = &node;
            return &child;
        }
        if (const LangTreeNode* found = FindNode(child, item, parent))
            return found;
    }
    return nullptr;
}

} // namespace

LanguageEditor::LanguageEditor(fs::path programFolder, const LangDoc& lang, Prompt& prompt)
    : programFolder_(std::move(programFolder)), lang_(lang), prompt_(prompt)
{
}

FormTexts LanguageEditor::CreateLangTexts() const { return FormTexts(lang_, kForm); }

std::string LanguageEditor::RunningVersion()
{
    return std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "." +
           std::to_string(kVersionRevision);
}

std::string LanguageEditor::Title() const
{
    const FormTexts t = CreateLangTexts();
    return t(1, "Create new language for program ") + kAppTitle + " ver. " + RunningVersion();
}

std::string LanguageEditor::UpdateHelp() const
{
    const FormTexts t = CreateLangTexts();
    return t(16, "If you have create a language file and want to update/add some new strings\n"
                 "1. Be sure that the \"Auto create missing items\" is NOT checked.\n"
                 "2. At left treeview (original language) click/select the root (first) item\n"
                 "and hit the * key at numpad. This way will be expanded all items there.\n"
                 "3. Hit and hold the down arrow key. This will parse all items. If a new string is found\n"
                 "you will see this message \"Section/Node <something> not found. Create it?\".\n"
                 "Hit Yes and you are ready to translate. Continue until all items parsed.\n"
                 "4. If you must/want to edit some items you must do it manually, checking\n"
                 "one by one all items.");
}

std::vector<std::string> LanguageEditor::OriginalFiles() const
{
    std::vector<std::string> names;
    for (const LanguageFileEntry& entry : ListLanguageFiles(programFolder_))
        names.push_back(entry.File.filename().string());
    return names;
}

std::vector<std::string> LanguageEditor::NewFiles() const
{
    std::vector<std::string> names = OriginalFiles();
    if (!newFile_.empty() && std::find(names.begin(), names.end(), newFile_) == names.end())
        names.push_back(newFile_);
    names.emplace_back(kCreateNew);
    return names;
}

bool LanguageEditor::XmlToTree(const std::string& fileName, pugi::xml_document& doc) const
{
    const fs::path path = programFolder_ / fileName;
    if (doc.load_file(path.c_str()) && doc.document_element())
        return true;
    prompt_.Message(CreateLangTexts()(2, "Error loading xml file ") + path.string());
    return false;
}

bool LanguageEditor::ChooseOriginal(const std::string& fileName)
{
    if (!AskToSave())
        return false;
    pugi::xml_document loaded;
    if (!XmlToTree(fileName, loaded))
        return false;
    original_.reset(loaded);
    originalFile_ = fileName;
    originalVersion_ = PrivateRow(original_, "programversion").value_or(kNoVersion);
    selectedOriginal_.reset();
    return true;
}

bool LanguageEditor::ChooseNew(const std::string& entry)
{
    if (entry == kCreateNew)
        return CreateNewFile();
    if (entry == newFile_)
        return false;
    if (entry == originalFile_) {
        prompt_.Message(CreateLangTexts()(6, "Can not load the same file as the original one"));
        return false;
    }
    pugi::xml_document loaded;
    if (!AskToSave() || !XmlToTree(entry, loaded))
        return false;
    new_.reset(loaded);
    newFile_ = entry;
    creator_ = PrivateRow(new_, "creator").value_or("");
    versionEdit_ = PrivateRow(new_, "programversion").value_or(kNoVersion);
    modified_ = false;
    declined_.clear();
    selectedNew_.reset();
    return true;
}

bool LanguageEditor::CreateNewFile()
{
    const FormTexts t = CreateLangTexts();
    const std::optional<std::string> answer =
        prompt_.Input(t(3, "Type the new language name\n(New file will be created at program's folder)"), kAppTitle, "");
    const std::string name = Trim(answer.value_or(""));
    if (name.empty())
        return false;
    if (!original_.document_element()) {
        prompt_.Message(t(4, "Can not find original/source language. Select one from combo box"));
        return false;
    }
    // The name becomes a file name and the language menu's caption, which ends at the first dot.
    if (name.find_first_of("./\\") != std::string::npos) {
        prompt_.Message(t(18, "A language name can not hold the characters . / \\"));
        return false;
    }
    const std::string fileName = LangFileStemOf(name) + ".xml";
    const std::vector<std::string> existing = NewFiles();
    if (std::find(existing.begin(), existing.end(), fileName) != existing.end()) {
        prompt_.Message(t(5, "This name exist, just select it from list"));
        return false;
    }
    if (!AskToSave())
        return false;
    new_.reset();
    new_.append_child(original_.document_element().name()).append_child(kPrivate);
    newFile_ = fileName;
    creator_.clear();
    versionEdit_ = RunningVersion();
    // Not on disk yet: closing without saving would lose it.
    modified_ = true;
    declined_.clear();
    selectedNew_.reset();
    return true;
}

std::optional<LangTreeNode> LanguageEditor::OriginalTree() const { return TreeOf(original_); }

std::optional<LangTreeNode> LanguageEditor::NewTree() const { return TreeOf(new_); }

void LanguageEditor::SetVersionEdit(std::string version)
{
    modified_ = modified_ || version != versionEdit_;
    versionEdit_ = std::move(version);
}

void LanguageEditor::SetCreator(std::string creator)
{
    modified_ = modified_ || creator != creator_;
    creator_ = std::move(creator);
}

// The element of the new file that matches a section of the original, made when it is missing
// and the user wants it.
pugi::xml_node LanguageEditor::NewElement(const LangItem& item, Shown& shown)
{
    pugi::xml_node element = new_.document_element();
    std::vector<std::string> path;
    for (const std::string& section : item.Sections) {
        path.push_back(section);
        pugi::xml_node child = ChildElement(element, section);
        if (!child) {
            if (!AutoCreate) {
                if (declined_.contains(path))
                    return {};
                const FormTexts t = CreateLangTexts();
                const std::string question = t(7, "Section/Node ") + section + t(8, " not found. Create it?");
                if (prompt_.Ask(question, PromptButtons::YesNo, PromptAnswer::Yes) != PromptAnswer::Yes) {
                    declined_.insert(path);
                    return {};
                }
            }
            child = element.append_child(section.c_str());
            modified_ = true;
            shown.NewTreeChanged = true;
        }
        element = child;
    }
    return element;
}

LanguageEditor::Shown LanguageEditor::SelectOriginal(const LangItem& item)
{
    selectedOriginal_ = item;
    Shown shown{.Text1 = ValueOf(AttributeOf(original_, item)), .Original = item};
    if (!new_.document_element())
        return shown;
    const pugi::xml_node element = NewElement(item, shown);
    if (!element) {
        selectedNew_.reset();
        return shown;
    }
    shown.New = LangItem{item.Sections, std::nullopt};
    if (item.Attribute) {
        pugi::xml_attribute attr = element.attribute(item.Attribute->c_str());
        if (!attr) {
            const FormTexts t = CreateLangTexts();
            const std::string question = t(9, "Value/Node \"") + *item.Attribute + t(10, "\" not found. Create it?");
            if (AutoCreate ||
                prompt_.Ask(question, PromptButtons::YesNo, PromptAnswer::Yes) == PromptAnswer::Yes) {
                // The translator starts from the original text.
                WriteAttribute(element, *item.Attribute, shown.Text1);
                attr = element.attribute(item.Attribute->c_str());
                modified_ = true;
                shown.NewTreeChanged = true;
            }
        }
        if (attr) {
            shown.New = item;
            shown.Text2 = attr.value();
        }
    }
    selectedNew_ = shown.New;
    return shown;
}

LanguageEditor::Shown LanguageEditor::SelectNew(const LangItem& item)
{
    selectedNew_ = item;
    Shown shown{.Text2 = ValueOf(AttributeOf(new_, item)), .New = item};
    if (!ElementOf(original_, item) || (item.Attribute && !AttributeOf(original_, item))) {
        prompt_.Message(CreateLangTexts()(11, "Original item not found"));
        return shown;
    }
    selectedOriginal_ = item;
    shown.Original = item;
    shown.Text1 = ValueOf(AttributeOf(original_, item));
    return shown;
}

std::optional<LangItem> LanguageEditor::Update(const std::string& text)
{
    if (!selectedNew_ || !selectedNew_->Attribute)
        return std::nullopt;
    const pugi::xml_node element = ElementOf(new_, *selectedNew_);
    if (!element) {
        prompt_.Message(CreateLangTexts()(12, "Error writing text in language file"));
        return std::nullopt;
    }
    WriteAttribute(element, *selectedNew_->Attribute, text);
    modified_ = true;
    if (!selectedOriginal_)
        return std::nullopt;
    return MoveToNextItem(*selectedOriginal_);
}

// The next row of the section, else the first row of the next section.
std::optional<LangItem> LanguageEditor::MoveToNextItem(const LangItem& from) const
{
    const std::optional<LangTreeNode> tree = OriginalTree();
    const LangTreeNode* parent = nullptr;
    const LangTreeNode* node = tree ? FindNode(*tree, from, &parent) : nullptr;
    if (!node)
        return std::nullopt;
    const auto next = [](const LangTreeNode& in, const LangTreeNode* after) -> const LangTreeNode* {
        const auto it = std::find_if(in.Children.begin(), in.Children.end(),
                                     [after](const LangTreeNode& child) { return &child == after; });
        return it == in.Children.end() || it + 1 == in.Children.end() ? nullptr : &*(it + 1);
    };
    if (const LangTreeNode* sibling = next(*parent, node))
        return sibling->Item;
    const LangTreeNode* grandParent = nullptr;
    if (parent == &*tree || !FindNode(*tree, parent->Item, &grandParent))
        return std::nullopt;
    const LangTreeNode* section = next(*grandParent, parent);
    if (!section)
        return std::nullopt;
    return section->Children.empty() ? section->Item : section->Children.front().Item;
}

bool LanguageEditor::Save()
{
    const FormTexts t = CreateLangTexts();
    if (newFile_.empty() || !new_.document_element()) {
        prompt_.Message(t(13, "Select or create a new language file first"));
        return false;
    }
    pugi::xml_node priv = ChildElement(new_.document_element(), kPrivate);
    if (!priv)
        priv = new_.document_element().prepend_child(kPrivate);
    WriteAttribute(priv, "Creator", creator_);
    WriteAttribute(priv, "ProgramVersion", versionEdit_);
    std::ostringstream xml;
    new_.save(xml, "\t", pugi::format_default, pugi::encoding_utf8);
    const fs::path path = programFolder_ / newFile_;
    std::string error;
    if (!WriteFileAtomically(path.string(), xml.str(), error)) {
        prompt_.Message(t(17, "Can not save the language file ") + path.string() + ": " + error, {},
                        PromptIcon::Critical);
        return false;
    }
    modified_ = false;
    return true;
}

bool LanguageEditor::AskToSave()
{
    if (!modified_)
        return true;
    const FormTexts t = CreateLangTexts();
    const std::string question = t(14, "Language file ") + newFile_ + t(15, " is not saved. Save it now?");
    if (prompt_.Ask(question, PromptButtons::YesNo, PromptAnswer::Yes) != PromptAnswer::Yes)
        return true;
    return Save();
}

} // namespace mw
