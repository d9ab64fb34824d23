#include "menus/RemoveTitle.h"

#include "core/Text.h"
#include "document/Project.h"
#include "document/TreeQueries.h"
#include "media/ChapterNodes.h"
#include "media/TitleNodes.h"
#include "menus/MenuCommands.h"

namespace mw {

namespace {

// The first menu among the node's children that refers to the title anywhere inside it is
// deleted; any later one stays.
void DeleteFirstMenuUsing(Project& project, const DocNode& parent, const std::string& titleId)
{
    std::string menuId;
    for (const auto& child : parent) {
        DocNode* found = nullptr;
        if (EqualsNoCase(child->Text, "DivXMediaMenu") && FindInTree(*child, "titleid = " + titleId, found)) {
            menuId = ObjectIdOf(*child);
            break;
        }
    }
    if (!menuId.empty())
        DeleteMenu(project, menuId);
}

} // namespace

void mnuRemoveTitle(Project& project)
{
    DocTree& tree = project.Doc.Tree;
    const FormTexts texts = project.Texts();
    DocNode* title = GetParentNode(tree);
    if (!IsTitleNode(title)) {
        project.Ask().Message(texts(38, "Please select a Title node"));
        return;
    }
    const std::string question = texts(39, "Are you sure you want to delete the selected title?") + "\r\n" +
                                 texts(40, "Also will be deleted any menu that is related to this title.");
    if (project.Ask().Ask(question, PromptButtons::YesNo, PromptAnswer::Yes) != PromptAnswer::Yes)
        return;
    project.MarkDirty();

    // A title with chapters leaves the translations of its own tracks behind, as it always did.
    const std::vector<DocNode*> chapters = ChapterNodesOf(*title);
    if (chapters.empty())
        RemoveOwnTracks(tree, *title);
    for (DocNode* chapter : chapters)
        RemoveChapter(tree, *chapter);
    RemoveLookups(tree, {GetPropertyInNode(*title, "translationlookupid")}, title);
    if (DocNode* source = MediaSourceOf(*title))
        tree.Remove(*source);

    const std::string titleId = ObjectIdOf(*title);
    const std::string titleKey = title->Key();
    DocNode& root = *tree.Root();
    DeleteFirstMenuUsing(project, root, titleId);
    std::vector<DocNode*> languages;
    for (const auto& child : root) {
        if (EqualsNoCase(child->Text, "LanguageMenus"))
            languages.push_back(child.get());
    }
    for (DocNode* language : languages)
        DeleteFirstMenuUsing(project, *language, titleId);

    // Found again: in a damaged file the title may have stood inside a menu that went.
    title = tree.Find(titleKey);
    DocNode* parent = title ? title->Parent() : tree.Root();
    if (title)
        tree.Remove(*title);
    tree.Select(parent);
}

} // namespace mw
