#include "menus/Buttons.h"

#include "core/NumberText.h"
#include "core/Text.h"
#include "core/Version.h"
#include "document/MenuTrackList.h"
#include "document/ObjectIds.h"
#include "document/Project.h"
#include "document/SchemaNodes.h"
#include "menus/CanvasCommands.h"
#include "menus/OverlayAttributes.h"
#include "menus/OverlayMenu.h"

namespace mw {

namespace {

bool IsButton(const DocNode& node)
{
    return EqualsNoCase(node.Text, "ButtonMenu");
}

// The last button of the menu, or the last row before its elements when it has no button:
// where a new button goes.
DocNode* ButtonPlace(const DocNode& menu, bool& isButton)
{
    DocNode* node = menu.LastChild();
    while (node && !IsButton(*node) && node->HasChildren())
        node = node->Previous();
    isButton = node && IsButton(*node);
    return node;
}

// Adds delta to the Buttons counter on the menu's background track; broken extra info starts
// again from 0.
void CountButtons(DocNode& track, const std::string& menuID, long delta)
{
    ExtraInfoElement info(track.Tag);
    const auto count = info.Get("Buttons");
    if (!count) {
        info = ExtraInfoElement("");
        info.Set("Buttons", "0");
        info.Set("menuID", menuID);
    }
    info.Set("Buttons", std::to_string(LeadingNumber(count.value_or("0")) + delta));
    track.Tag = info.Text();
}

DocNode* MenuTracksNode(const DocTree& tree)
{
    return ChildNamed(ChildNamed(tree.Root(), "Media"), "MenuTracks");
}

// The drawn shape an overlay setting names, or empty for a bitmap.
std::string SpecialShape(const std::string& overlay)
{
    if (overlay.empty())
        return "*Rect";
    if (!overlay.starts_with('|'))
        return "";
    const std::string kind = Lower(overlay.substr(1));
    return kind == "shape1" ? "*Shape1" : kind == "oval" ? "*Oval" : "*Rect";
}

// The deletion of one button by its identifier.
void DeleteOneButton(Project& project, DocNode& menu, const std::string& id)
{
    DocTree& tree = project.Doc.Tree;
    DocNode* button = tree.ObjectNode(id);
    if (!button)
        return;
    project.MarkDirty();
    const std::string overlay = GetPropertyInNode(*button, "overlayid");
    project.Doc.MenuTracks.Remove(overlay);
    const char* directions[] = {"leftAction", "rightAction", "upAction", "downAction"};
    std::string neighbours[4];
    for (int d = 0; d < 4; ++d) {
        neighbours[d] = Trim(GetPropertyInNode(*button, directions[d]));
        if (neighbours[d].empty())
            neighbours[d] = kNoneMarker;
    }
    tree.Remove(*button);
    for (const auto& other : menu) {
        if (!IsButton(*other))
            continue;
        for (int d = 0; d < 4; ++d) {
            if (GetPropertyInNode(*other, directions[d]) == id)
                UpdatePropertyInNode(tree, *other, directions[d], neighbours[d], false);
        }
    }
    if (LeadingNumber(overlay) > 0) {
        if (DocNode* track = tree.ObjectNode(overlay))
            tree.Remove(*track);
    }
    ParceMenuToRemoveButtonRef(tree, menu, id);

    std::vector<CanvasButton>& buttons = project.Canvas.Buttons;
    std::erase_if(buttons, [&](const CanvasButton& b) { return b.Label.Tag == id; });
    if (DocNode* track = tree.ObjectNode(GetPropertyInNode(menu, "backgroundvideoid")))
        CountButtons(*track, GetPropertyInNode(menu, "objectid"), -1);
}

// The selected buttons, or none without a last clicked one to measure them by.
template <typename Change>
void ChangeSelected(Project& project, Change change)
{
    MenuCanvas& canvas = project.Canvas;
    if (canvas.LastSelected < 0)
        return;
    project.UndoAdd();
    const ButtonShape reference = canvas.Buttons.at(static_cast<std::size_t>(canvas.LastSelected)).Label;
    for (CanvasButton& button : canvas.Buttons) {
        if (!button.Selected)
            continue;
        change(button.Label, reference);
        PlaceShapeFromTag(button);
        UpDateTree(project.Doc.Tree, button.Label);
        project.MarkDirty();
    }
    canvas.Selected = -1;
}

} // namespace

std::string AddButtonToMenu(Project& project, const ButtonShape& rect, const std::string& overlay)
{
    Document& doc = project.Doc;
    DocTree& tree = doc.Tree;
    MenuCanvas& canvas = project.Canvas;
    DocNode* menu = tree.ObjectNode(canvas.CurrentMenuID);
    if (!menu)
        return "";
    project.MarkDirty();
    if (!canvas.NoUndo)
        project.UndoAdd();

    bool afterButton = false;
    DocNode* place = ButtonPlace(*menu, afterButton);
    const long frame = static_cast<long>(canvas.Buttons.size());
    const long number = TakeObjectID(doc);
    const std::string id = std::to_string(number);
    const std::string rectID = std::to_string(TakeObjectID(doc));
    const std::string trackID = std::to_string(TakeObjectID(doc));

    DocNode& button = place ? tree.Add(place, Relationship::Next, "k" + id, "ButtonMenu", "button")
                            : tree.AddChild(*menu, "k" + id, "ButtonMenu", "button");
    tree.AddChild(button, "", "objectID = " + id, "objectid");
    AddPropRow(tree, button, "overlayID", trackID);
    AddPropRow(tree, button, "selectAction", "");
    if (!afterButton)
        UpdatePropertyInNode(tree, *menu, "startingMenuItemID", id, true);

    DocNode& rectangle = AddObjectNode(tree, button, LeadingNumber(rectID), "MenuRectangle", "menurect");
    for (auto [name, value] : {std::pair{"left", rect.Left}, {"top", rect.Top}, {"width", rect.Width},
                               {"height", rect.Height}})
        AddPropRow(tree, rectangle, name, std::to_string(value));

    CanvasButton shown;
    shown.Label = {id, rect.Left, rect.Top, rect.Width, rect.Height};
    shown.Position = project.Values().DefOverlayPos == 0 ? kDefaultOverlayPosition : kSameOverlayPosition;
    const std::string special = SpecialShape(overlay);
    ExtraInfoElement info("");
    info.Set("Shape", special.empty() ? overlay : special);
    if (!special.empty())
        info.Set("width", "3");
    info.Set("Position", shown.Position);
    button.Tag = info.Text();
    shown.Shape = special.empty() ? overlay : special;
    shown.OverlayFile = OverlayFileFor(project.ProgramFolder(), shown.Shape);
    PlaceShapeFromTag(shown);
    canvas.Buttons.push_back(shown);
    Label1_Click(project, static_cast<int>(canvas.Buttons.size()) - 1);

    if (DocNode* tracks = MenuTracksNode(tree)) {
        DocNode& track = AddObjectNode(tree, *tracks, LeadingNumber(trackID), "MediaTrack", "sublink");
        const std::string stream = PadZeros(canvas.OverlayStream, 2) + "sb";
        DocNode* background = tree.ObjectNode(GetPropertyInNode(*menu, "backgroundvideoid"));
        const std::string source = background ? GetPropertyInNode(*background, "mediasourceid") : "<error>";
        AddPropRow(tree, track, "mediaSourceID", source);
        AddPropRow(tree, track, "sourceTrackID", "none");
        AddPropRow(tree, track, "trackID", stream);
        AddPropRow(tree, track, "startFrame", std::to_string(frame));
        AddPropRow(tree, track, "endFrame", std::to_string(frame));
        AddPropRow(tree, track, "type", "subtitle");
        ExtraInfoElement trackInfo("");
        trackInfo.Set("rectID", rectID);
        track.Tag = trackInfo.Text();
        std::string fileName = "<error>";
        if (background) {
            CountButtons(*background, canvas.CurrentMenuID, 1);
            const DocNode* sourceNode = tree.ObjectNode(source);
            fileName = sourceNode ? LocationFileName(GetPropertyInNode(*sourceNode, "location")) : "";
        }
        doc.MenuTracks.Add(trackID, MenuTrackText(trackID, source, fileName, "subtitle", stream));
    }
    return id;
}

void DeleteButton(Project& project, int index)
{
    MenuCanvas& canvas = project.Canvas;
    DocNode* menu = project.Doc.Tree.ObjectNode(canvas.CurrentMenuID);
    if (!menu)
        return;
    if (index != kSelectedButtons) {
        if (index < 0 || static_cast<std::size_t>(index) >= canvas.Buttons.size())
            return;
        if (!canvas.NoUndo)
            project.UndoAdd();
        DeleteOneButton(project, *menu, canvas.Buttons[static_cast<std::size_t>(index)].Label.Tag);
        canvas.Selected = canvas.LastSelected = -1;
        return;
    }
    std::vector<std::string> selected;
    for (const CanvasButton& button : canvas.Buttons) {
        if (button.Selected)
            selected.push_back(button.Label.Tag);
    }
    if (selected.empty())
        return;
    project.UndoAdd();
    for (const std::string& id : selected)
        DeleteOneButton(project, *menu, id);
    ParceMenu(project, *menu);
}

void ParceMenuToRemoveButtonRef(DocTree& tree, DocNode& menu, const std::string& buttonID)
{
    bool startGone = false;
    const auto walk = [&](auto&& self, DocNode& node, int level) -> void {
        for (const auto& child : node) {
            if (child->HasChildren()) {
                if (level < 3)
                    self(self, *child, level + 1);
            } else if (child->Text.find('=') != std::string::npos && RowValue(child->Text) == buttonID) {
                child->Text = child->Text.substr(0, child->Text.find('=') + 1);
                startGone = startGone || RowMatches(*child, "startingmenuitemid");
            }
        }
    };
    walk(walk, menu, 1);
    bool isButton = false;
    DocNode* last = ButtonPlace(menu, isButton);
    if (!startGone || !isButton)
        return;
    for (const auto& row : menu) {
        if (RowMatches(*row, "startingmenuitemid")) {
            tree.Remove(*row);
            break;
        }
    }
    UpdatePropertyInNode(tree, menu, "startingMenuItemID", GetPropertyInNode(*last, "objectid"), true);
}

long GetStartFrameForButton(DocTree& tree, const std::string& overlayID, long& startFrame, long& endFrame)
{
    DocNode* track = tree.ObjectNode(overlayID);
    if (!track)
        return -1;
    for (auto [name, value] : {std::pair{"startFrame", &startFrame}, {"endFrame", &endFrame}}) {
        if (*value == -1)
            *value = static_cast<long>(LeadingNumber(GetPropertyInNode(*track, name)));
        else
            UpdatePropertyInNode(tree, *track, name, std::to_string(*value), false);
    }
    return startFrame;
}

void SetStartEndFrameForButton(DocTree& tree, const std::string& overlayID, long startFrame, long endFrame)
{
    if (DocNode* track = tree.ObjectNode(overlayID)) {
        UpdatePropertyInNode(tree, *track, "startFrame", std::to_string(startFrame), false);
        UpdatePropertyInNode(tree, *track, "endFrame", std::to_string(endFrame), false);
    }
}

long GetStartFrameForButtonByID(DocTree& tree, const std::string& buttonID, long& startFrame, long& endFrame)
{
    const DocNode* button = tree.ObjectNode(buttonID);
    const std::string overlay = button ? GetPropertyInNode(*button, "overlayid") : "";
    if (LeadingNumber(overlay) <= 0)
        return -1;
    startFrame = endFrame = -1;
    return GetStartFrameForButton(tree, overlay, startFrame, endFrame);
}

DocNode* FindRectForOverlayID(const DocTree& tree, const std::string& overlayID)
{
    const DocNode* root = tree.Root();
    if (!root)
        return nullptr;
    for (const auto& language : *root) {
        if (!EqualsNoCase(language->Text, "LanguageMenus"))
            continue;
        for (const auto& menu : *language) {
            for (const auto& button : *menu) {
                if (IsButton(*button) && GetPropertyInNode(*button, "overlayid") == overlayID)
                    return ChildNamed(button.get(), "MenuRectangle");
            }
        }
    }
    return nullptr;
}

void DoAlign(Project& project, int mode)
{
    ChangeSelected(project, [mode](ButtonShape& r, const ButtonShape& ref) {
        switch (mode) {
        case 1: r.Left = ref.Left; break;
        case 2: r.Top = ref.Top; break;
        case 3: r.Left = ref.Left + ref.Width - r.Width; break;
        case 4: r.Top = ref.Top + ref.Height - r.Height; break;
        default: break;
        }
    });
}

void DoSameSize(Project& project, int mode)
{
    ChangeSelected(project, [mode](ButtonShape& r, const ButtonShape& ref) {
        if (mode == 1 || mode == 3)
            r.Width = ref.Width;
        if (mode == 2 || mode == 3)
            r.Height = ref.Height;
    });
}

void mnuCopyButtons(Project& project)
{
    MenuCanvas& canvas = project.Canvas;
    std::vector<CopiedButton> copied;
    for (const CanvasButton& button : canvas.Buttons) {
        if (!button.Selected)
            continue;
        const DocNode* node = project.Doc.Tree.ObjectNode(button.Label.Tag);
        copied.push_back({button.Label, node ? node->Tag : std::string()});
    }
    if (!copied.empty())
        canvas.CopiedButtons = std::move(copied);
}

void mnuPasteButtons(Project& project)
{
    MenuCanvas& canvas = project.Canvas;
    DocNode* menu = project.Doc.Tree.ObjectNode(canvas.CurrentMenuID);
    if (canvas.CopiedButtons.empty() || !menu)
        return;
    project.UndoAdd();
    canvas.NoUndo = true;
    const std::vector<CopiedButton> copied = canvas.CopiedButtons;
    for (const CopiedButton& button : copied) {
        const std::string id = AddButtonToMenu(project, button.Rect, project.Values().DefOverlay);
        project.Doc.Tree.Item("k" + id).Tag = button.Tag;
    }
    canvas.NoUndo = false;
    ParceMenu(project, *menu);
}

void mnuCopySize(Project& project)
{
    MenuCanvas& canvas = project.Canvas;
    if (canvas.Selected < 0)
        return;
    const ButtonShape& r = canvas.Buttons.at(static_cast<std::size_t>(canvas.Selected)).Label;
    canvas.CopiedSize = std::pair{r.Width, r.Height};
}

void mnuPasteSize(Project& project)
{
    MenuCanvas& canvas = project.Canvas;
    if (canvas.Selected < 0 || !canvas.CopiedSize)
        return;
    project.UndoAdd();
    CanvasButton& button = canvas.Buttons.at(static_cast<std::size_t>(canvas.Selected));
    button.Label.Width = canvas.CopiedSize->first;
    button.Label.Height = canvas.CopiedSize->second;
    PlaceShapeFromTag(button);
    UpDateTree(project.Doc.Tree, button.Label);
    project.MarkDirty();
}

} // namespace mw
