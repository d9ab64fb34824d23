#include "menus/Actions.h"

#include "core/Text.h"
#include "document/ObjectIds.h"
#include "document/Project.h"
#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"
#include "media/ChapterNodes.h"
#include "media/mAVIDecs.h"
#include "menus/CanvasCommands.h"

#include <algorithm>

namespace mw {

namespace {

bool IsType(const ActionRow& row, const char* type)
{
    return EqualsNoCase(row.Type, type);
}

// The rows an action of this type holds after its identifier: names of the first and second target.
std::pair<const char*, const char*> TargetRows(const std::string& type)
{
    const std::string t = Lower(type);
    if (t == "subtitleselectaction" || t == "audioselectaction")
        return {"titleID", "trackID"};
    if (t == "playaction" || t == "playfromcurrentoffsetaction")
        return {"titleID", "mediaObjectID"};
    if (t == "menutransitionaction")
        return {"menuID", nullptr};
    return {"buttonMenuID", nullptr};
}

// The node that holds a list: the selected button, or the menu on the canvas.
DocNode* ListOwner(Project& project, bool isButton)
{
    const MenuCanvas& canvas = project.Canvas;
    if (!isButton)
        return project.Doc.Tree.ObjectNode(canvas.CurrentMenuID);
    if (canvas.Selected < 0)
        return nullptr;
    return project.Doc.Tree.ObjectNode(canvas.Buttons.at(static_cast<std::size_t>(canvas.Selected)).Label.Tag);
}

} // namespace

bool AcceptActionChoice(Prompt& prompt, const ActionChoice& choice, ActionRow& row)
{
    row = {choice.Type, "", "", ""};
    const std::string type = Lower(choice.Type);
    if (type == "subtitleselectaction" || type == "audioselectaction") {
        if (choice.TitleID.empty() || choice.TrackID.empty()) {
            prompt.Message("Please, select a Title and a Track");
            return false;
        }
        row.Target1 = choice.TitleID;
        row.Target2 = choice.TrackID;
        if (type == "subtitleselectaction" && choice.TrackKind != "Subtitle") {
            switch (prompt.Ask("Seems that the track you selected is not a subtitle track. Ok to continue, No to set "
                               "to <none>, Cancel to exit.",
                               PromptButtons::YesNoCancel, PromptAnswer::Yes)) {
            case PromptAnswer::Yes: break;
            case PromptAnswer::No: row.Target2 = kNoneMarker; break;
            default: return false;
            }
        } else if (type == "audioselectaction" && choice.TrackKind != "Audio") {
            if (prompt.Ask("Seems that the track you selected is not an audio track. Ok to continue?",
                           PromptButtons::YesNo, PromptAnswer::Yes) != PromptAnswer::Yes)
                return false;
        }
        return true;
    }
    if (type == "playaction" || type == "playfromcurrentoffsetaction") {
        if (choice.TitleID.empty() || choice.ChapterID.empty()) {
            prompt.Message("Please, select a Title and a Chapter");
            return false;
        }
        row.Target1 = choice.TitleID;
        row.Target2 = choice.ChapterID;
        return true;
    }
    if (type == "menutransitionaction") {
        if (choice.MenuID.empty()) {
            prompt.Message("Please, select a Menu");
            return false;
        }
        row.Target1 = choice.MenuID;
        return true;
    }
    if (choice.ButtonID.empty() || choice.ButtonID == kNoButtonsInMenu) {
        prompt.Message(choice.ButtonID.empty() ? "Please,  select a button" : kNoButtonsInMenu);
        return false;
    }
    row.Target1 = choice.ButtonID;
    return true;
}

bool AddActionRow(Prompt& prompt, ActionForm& form, const ActionChoice& choice)
{
    ActionRow row;
    if (!AcceptActionChoice(prompt, choice, row))
        return false;
    const auto selected = static_cast<std::size_t>(form.Selected);
    if (form.Selected >= 0 && selected < form.lstActions.size()) {
        row.Tag = form.lstActions[selected].Tag;
        form.lstActions[selected] = row;
        return true;
    }
    form.lstActions.push_back(row);
    return true;
}

void RemoveActionRow(ActionForm& form)
{
    const auto selected = static_cast<std::size_t>(form.Selected);
    if (form.Selected < 0 || selected >= form.lstActions.size())
        return;
    form.lstActions.erase(form.lstActions.begin() + form.Selected);
    form.Selected = std::min(form.Selected, static_cast<int>(form.lstActions.size()) - 1);
}

TitleTargets LoadTitleTargets(Project& project, const TitleListRow& title)
{
    TitleTargets targets;
    double fps = 0;
    LoadStreamsToListView(title.Path, targets.Tracks, false, fps, project.Ask());
    targets.Chapters.push_back({title.TitleID, "", "", "The Title it self"});
    const DocTree& tree = project.Doc.Tree;
    const DocNode* node = tree.ObjectNode(title.TitleID);
    if (!node)
        return targets;
    for (const DocNode* chapter : ChapterNodesOf(*node)) {
        ChapterChoiceRow row{GetPropertyInNode(*chapter, "objectid"), "", "", ""};
        for (const auto& child : *chapter) {
            if (EqualsNoCase(child->Text, "MediaTrack") && EqualsNoCase(GetPropertyInNode(*child, "type"), "video")) {
                row.StartFrame = GetPropertyInNode(*child, "startframe");
                row.EndFrame = GetPropertyInNode(*child, "endframe");
                break;
            }
        }
        const DocNode* lookup = tree.ObjectNode(GetPropertyInNode(*chapter, "translationlookupid"));
        if (const DocNode* translation = ChildNamed(lookup, "Translation"))
            row.Name = GetPropertyInNode(*translation, "value");
        targets.Chapters.push_back(std::move(row));
    }
    return targets;
}

std::vector<std::string> ButtonChoices(const DocTree& tree, const std::vector<ActionRow>& rows,
                                       const std::string& currentMenuID)
{
    std::string menuID = currentMenuID;
    for (const ActionRow& row : rows) {
        if (IsType(row, "MenuTransitionAction"))
            menuID = row.Target1;
    }
    std::vector<std::string> choices;
    if (const DocNode* menu = tree.ObjectNode(menuID)) {
        for (const auto& button : *menu) {
            if (!EqualsNoCase(button->Text, "ButtonMenu"))
                continue;
            const std::vector<ActionRow> actions = LoadActionRows(tree, GetPropertyInNode(*button, "selectaction"));
            choices.push_back(GetPropertyInNode(*button, "objectid") + " " +
                              (actions.empty() ? std::string() : actions.front().Type));
        }
    }
    if (choices.empty())
        choices.push_back(kNoButtonsInMenu);
    return choices;
}

std::vector<ActionRow> LoadActionRows(const DocTree& tree, const std::string& actionID)
{
    std::vector<ActionRow> rows;
    const DocNode* list = IsReferenceValue(actionID) ? tree.ObjectNode(actionID) : nullptr;
    if (!list)
        return rows;
    for (const auto& action : *list) {
        if (!action->HasChildren())
            continue;
        const auto [first, second] = TargetRows(action->Text);
        rows.push_back({action->Text, GetPropertyInNode(*action, first),
                        second ? GetPropertyInNode(*action, second) : std::string(),
                        GetPropertyInNode(*action, "objectid")});
    }
    return rows;
}

std::string UpdateOrAddActionNode(Project& project, const std::string& actionKey, bool isButton,
                                  const std::vector<ActionRow>& rows)
{
    Document& doc = project.Doc;
    DocTree& tree = doc.Tree;
    DocNode* list = actionKey.empty() ? nullptr : tree.ObjectNode(actionKey);
    if (!list) {
        DocNode* owner = ListOwner(project, isButton);
        if (!owner)
            return "";
        list = &AddObjectNode(tree, *owner, TakeObjectID(doc), "Action", "action");
    }
    // The actions are made again in the order of the rows, each keeping the identifier it had.
    std::vector<DocNode*> old;
    for (const auto& child : *list) {
        if (child->HasChildren())
            old.push_back(child.get());
    }
    for (DocNode* action : old)
        tree.Remove(*action);
    for (const ActionRow& row : rows) {
        const long id = row.Tag.empty() ? TakeObjectID(doc) : static_cast<long>(LeadingNumber(row.Tag));
        DocNode& action = AddObjectNode(tree, *list, id, row.Type, "action");
        const auto [first, second] = TargetRows(row.Type);
        AddPropRow(tree, action, first, row.Target1);
        if (second)
            AddPropRow(tree, action, second, row.Target2);
    }
    return GetPropertyInNode(*list, "objectid");
}

void ApplyActionList(Project& project, const std::string& listName, bool isButton, const std::vector<ActionRow>& rows)
{
    DocNode* owner = ListOwner(project, isButton);
    if (!owner)
        return;
    project.UndoAdd();
    project.MarkDirty();
    DocTree& tree = project.Doc.Tree;
    if (rows.empty()) {
        UpdatePropertyInNode(tree, *owner, listName, "", false);
        return;
    }
    const std::string id = UpdateOrAddActionNode(project, GetPropertyInNode(*owner, listName), isButton, rows);
    UpdatePropertyInNode(tree, *owner, listName, id, true);
}

void EditActionList(Project& project, const std::string& listName, bool isButton)
{
    DocNode* owner = ListOwner(project, isButton);
    if (!owner)
        return;
    const std::string id = GetPropertyInNode(*owner, "objectid");
    ActionForm form;
    form.Caption = isButton ? "Edit Action list for button " + id : "Edit " + listName + " Action list for menu " + id;
    form.Lists = LoadTitlesInForm(project.Doc);
    form.lstActions = LoadActionRows(project.Doc.Tree, GetPropertyInNode(*owner, listName));
    form.Selected = form.lstActions.empty() ? -1 : 0;
    if (project.Forms().ShowAction(form))
        ApplyActionList(project, listName, isButton, form.lstActions);
}

void RemoveActionAt(Project& project, const std::string& listName, bool isButton, int index)
{
    DocNode* owner = ListOwner(project, isButton);
    DocTree& tree = project.Doc.Tree;
    DocNode* list = owner ? tree.ObjectNode(GetPropertyInNode(*owner, listName)) : nullptr;
    if (!list)
        return;
    std::vector<DocNode*> actions;
    for (const auto& child : *list) {
        if (child->HasChildren())
            actions.push_back(child.get());
    }
    if (index < 0 || index >= static_cast<int>(actions.size()))
        return;
    project.UndoAdd();
    project.MarkDirty();
    tree.Remove(*actions[static_cast<std::size_t>(index)]);
    if (actions.size() == 1)
        UpdatePropertyInNode(tree, *owner, listName, kNoneMarker, false);
}

void ActionFromButtonToMenu(Project& project, const std::string& buttonID, const std::string& menuID)
{
    Document& doc = project.Doc;
    DocTree& tree = doc.Tree;
    DocNode* button = tree.ObjectNode(buttonID);
    if (!button)
        return;
    if (DocNode* old = tree.ObjectNode(Get1NodeInNode(*button, "action")))
        tree.Remove(*old);
    DocNode& list = AddObjectNode(tree, *button, TakeObjectID(doc), "Action", "action");
    DocNode& transition = AddObjectNode(tree, list, TakeObjectID(doc), "MenuTransitionAction", "action");
    AddPropRow(tree, transition, "menuID", menuID);
    UpdatePropertyInNode(tree, *button, "selectAction", GetPropertyInNode(list, "objectid"), true);
    project.MarkDirty();
}

MenuActionLists LoadActionsFromMenu(const Project& project)
{
    MenuActionLists lists;
    const DocTree& tree = project.Doc.Tree;
    const DocNode* menu = tree.ObjectNode(project.Canvas.CurrentMenuID);
    if (!menu)
        return lists;
    for (auto [name, list] : {std::pair{"enteraction", &lists.Enter}, {"exitaction", &lists.Exit}}) {
        for (const ActionRow& row : LoadActionRows(tree, GetPropertyInNode(*menu, name)))
            list->push_back(row.Type);
    }
    return lists;
}

void Label1_DblClick(Project& project, int index)
{
    switch (project.Values().DoubleClickInButtonsAction) {
    case 1: {
        DocTree& tree = project.Doc.Tree;
        const DocNode* button =
            tree.ObjectNode(project.Canvas.Buttons.at(static_cast<std::size_t>(index)).Label.Tag);
        if (!button)
            return;
        for (const auto& list : *button) {
            if (!EqualsNoCase(list->Text, "Action"))
                continue;
            for (const ActionRow& row : LoadActionRows(tree, GetPropertyInNode(*list, "objectid"))) {
                DocNode* menu = IsType(row, "MenuTransitionAction") ? tree.ObjectNode(row.Target1) : nullptr;
                if (!menu)
                    continue;
                tree.Select(menu);
                ParceMenu(project, *menu);
                return;
            }
        }
        return;
    }
    case 2:
        Label1_Click(project, index);
        EditActionList(project, "selectAction", true);
        return;
    default: return;
    }
}

} // namespace mw
