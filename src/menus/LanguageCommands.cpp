#include "menus/LanguageCommands.h"

#include "core/Text.h"
#include "document/Project.h"
#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"
#include "menus/LanguageList.h"
#include "menus/MenuCommands.h"
#include "menus/MenuForms.h"

namespace mw {

void LoadNewLangForm(NewLangForm& form, const std::string& defLang)
{
    form.Combo1.Clear();
    for (const std::string_view row : kLanguageRows) {
        form.Combo1.AddItem(std::string(row));
        if (row.substr(0, 2) == defLang)
            form.Combo1.ListIndex = static_cast<int>(form.Combo1.Items.size()) - 1;
    }
}

bool AddLanguage(Project& project, const NewLangForm& form)
{
    DocTree& tree = project.Doc.Tree;
    const std::string code = Lower(ComboText(form.Combo1).substr(0, 2));
    if (tree.Empty() || code.empty())
        return false;
    for (const auto& child : *tree.Root()) {
        if (EqualsNoCase(child->Text, "LanguageMenus") && GetPropertyInNode(*child, "languagecode") == code) {
            project.Ask().Message(FormTexts(project.Lang(), "frmNewLang")(2, "This language exist"));
            return false;
        }
    }
    project.MarkDirty();
    CreateLanguageMenusNode(project.Doc, code);
    return true;
}

void mnuAddLang(Project& project)
{
    NewLangForm form;
    LoadNewLangForm(form, project.Values().defLang);
    if (project.Forms().ShowNewLang(form))
        AddLanguage(project, form);
}

void mnuRemoveLang(Project& project)
{
    DocTree& tree = project.Doc.Tree;
    DocNode* language = nullptr;
    for (DocNode* node = tree.Selected(); node; node = node->Parent()) {
        if (EqualsNoCase(node->Text, "DivXMediaMenu")) {
            language = node->Parent();
            break;
        }
        if (node->HasChildren()) {
            if (Lower(node->Text) == "languagemenus")
                language = node;
            break;
        }
    }
    const FormTexts texts = project.Texts();
    if (!language) {
        project.Ask().Message(texts(36, "Please select a Language Menu node"));
        return;
    }
    if (project.Ask().Ask(texts(37, "Are you sure you want to delete the Language Menu?"), PromptButtons::YesNo,
                          PromptAnswer::Yes) != PromptAnswer::Yes)
        return;
    project.MarkDirty();
    std::vector<std::string> menus;
    for (const auto& child : *language) {
        if (EqualsNoCase(child->Text, "DivXMediaMenu"))
            menus.push_back(GetPropertyInNode(*child, "objectid"));
    }
    for (const std::string& menu : menus)
        DeleteMenu(project, menu);
    tree.Remove(*language);
}

} // namespace mw
