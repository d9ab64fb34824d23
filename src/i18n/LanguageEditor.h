#pragma once

#include "i18n/LangDoc.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <pugixml.hpp>

namespace mw {

class Prompt;

// One item of a language file: an element, by the names of the elements from below the root
// down to it, or one of its attributes. The root is the item with no sections.
struct LangItem {
    std::vector<std::string> Sections;
    std::optional<std::string> Attribute;
    bool operator==(const LangItem&) const = default;
};

// A row of a language file's tree: an element by its name, or an attribute as "name = value".
struct LangTreeNode {
    std::string Text;
    LangItem Item;
    std::vector<LangTreeNode> Children;
};

// The language editor without its window: an original language file and the new one made or
// completed from it, both from the program folder. Every question and message goes through the
// prompt; a failed load or save leaves the documents and the files as they were.
class LanguageEditor {
public:
    static constexpr const char* kCreateNew = "<create new>";
    static constexpr const char* kNoVersion = "?.0.0";

    LanguageEditor(std::filesystem::path programFolder, const LangDoc& lang, Prompt& prompt);

    std::string Title() const;
    // The help of Command3, as one message.
    std::string UpdateHelp() const;
    // The language files of the program folder, sorted; the new list adds kCreateNew and a new
    // file that is not saved yet.
    std::vector<std::string> OriginalFiles() const;
    std::vector<std::string> NewFiles() const;
    // The running program's version, which a click on a version label takes.
    static std::string RunningVersion();

    // Combo1: true when the file loaded.
    bool ChooseOriginal(const std::string& fileName);
    // Combo2, an existing file or kCreateNew: true when the new file changed.
    bool ChooseNew(const std::string& entry);
    const std::string& OriginalFile() const { return originalFile_; }
    const std::string& NewFile() const { return newFile_; }

    std::optional<LangTreeNode> OriginalTree() const;
    std::optional<LangTreeNode> NewTree() const;

    const std::string& OriginalVersion() const { return originalVersion_; } // lblVersion
    void SetOriginalVersion(std::string version) { originalVersion_ = std::move(version); }
    const std::string& VersionEdit() const { return versionEdit_; } // lblVersionEdit
    void SetVersionEdit(std::string version);
    const std::string& Creator() const { return creator_; } // txtCreator
    void SetCreator(std::string creator);
    bool AutoCreate = false; // chkAutoCreate

    // What the window shows after a click in either tree.
    struct Shown {
        std::string Text1{};
        std::string Text2{};
        std::optional<LangItem> Original{}; // the item to select in Tree1
        std::optional<LangItem> New{};      // the item to select in Tree2
        bool NewTreeChanged = false;      // items were created in the new file
    };
    // Tree1_NodeClick: the matching item of the new file, created when missing and wanted.
    Shown SelectOriginal(const LangItem& item);
    // A click on Tree2: the matching item of the original.
    Shown SelectNew(const LangItem& item);
    // Command2: the selected row of the new file gets `text`; the result is the next item of
    // Tree1 to select, if any.
    std::optional<LangItem> Update(const std::string& text);
    // Command1.
    bool Save();
    // True when the caller may go on: nothing unsaved, the user said No, or the save worked.
    bool AskToSave();
    bool Modified() const { return modified_; }

private:
    FormTexts CreateLangTexts() const;
    bool XmlToTree(const std::string& fileName, pugi::xml_document& doc) const;
    bool CreateNewFile();
    pugi::xml_node NewElement(const LangItem& item, Shown& shown);
    std::optional<LangItem> MoveToNextItem(const LangItem& from) const;

    std::filesystem::path programFolder_;
    const LangDoc& lang_;
    Prompt& prompt_;
    pugi::xml_document original_;
    pugi::xml_document new_;
    std::string originalFile_;
    std::string newFile_;
    std::string originalVersion_ = kNoVersion;
    std::string versionEdit_ = kNoVersion;
    std::string creator_;
    bool modified_ = false;
    // Sections the user chose not to create: asked once per new file.
    std::set<std::vector<std::string>> declined_;
    std::optional<LangItem> selectedOriginal_;
    std::optional<LangItem> selectedNew_;
};

} // namespace mw
