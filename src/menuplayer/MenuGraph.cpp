#include "menuplayer/MenuGraph.h"

#include "core/Paths.h"
#include "core/Text.h"
#include "document/ObjectIds.h"
#include "document/TreeQueries.h"
#include "media/TitleNodes.h"

#include <array>

namespace mw {

namespace {

const DocNode* Element(const DocTree& tree, const std::string& id, std::string_view kind)
{
    if (!IsReferenceValue(id))
        return nullptr;
    const DocNode* node = tree.ObjectNode(Trim(id));
    return node && EqualsNoCase(node->Text, kind) ? node : nullptr;
}

std::vector<const DocNode*> ChildrenNamed(const DocNode& parent, std::string_view kind)
{
    std::vector<const DocNode*> found;
    for (const auto& child : parent) {
        if (EqualsNoCase(child->Text, kind))
            found.push_back(child.get());
    }
    return found;
}

// The video track among the children of a title or a chapter.
const DocNode* VideoTrackIn(const DocNode& parent)
{
    for (const DocNode* track : ChildrenNamed(parent, "MediaTrack")) {
        if (EqualsNoCase(GetPropertyInNode(*track, "type"), "video") ||
            EndsWithNoCase(GetPropertyInNode(*track, "trackid"), "dc"))
            return track;
    }
    return nullptr;
}

bool RangeOf(const DocNode* track, FrameRange& frames)
{
    if (!track)
        return false;
    frames.Start = long(LeadingNumber(GetPropertyInNode(*track, "startframe")));
    frames.End = long(LeadingNumber(GetPropertyInNode(*track, "endframe")));
    return true;
}

bool TitleHasTrack(const DocNode& title, const std::string& trackID)
{
    for (const DocNode* track : ChildrenNamed(title, "MediaTrack")) {
        if (EqualsNoCase(GetPropertyInNode(*track, "trackid"), trackID))
            return true;
    }
    return false;
}

constexpr std::array<const char*, 4> kDirectionRows = {"upAction", "downAction", "leftAction", "rightAction"};

} // namespace

const char* DirectionName(Direction direction)
{
    constexpr std::array<const char*, 4> names = {"up", "down", "left", "right"};
    return names[std::size_t(direction)];
}

const DocNode* MenuGraph::LanguageSet(const std::string& code, std::string* error) const
{
    const DocNode* root = doc_.Tree.Root();
    const std::vector<const DocNode*> sets = root ? LanguageSets(*root) : std::vector<const DocNode*>();
    const std::string wanted = code.empty() && root ? GetPropertyInNode(*root, "defaultMenuLanguage") : code;
    for (const DocNode* set : sets) {
        if (EqualsNoCase(GetPropertyInNode(*set, "languageCode"), wanted))
            return set;
    }
    if (code.empty() && !sets.empty())
        return sets.front();
    if (error)
        *error = code.empty() ? "the project has no language set" : "the project has no language set \"" + code + "\"";
    return nullptr;
}

std::vector<const DocNode*> MenuGraph::LanguageSets(const DocNode& root) const
{
    return ChildrenNamed(root, "LanguageMenus");
}

const DocNode* MenuGraph::Menu(const std::string& id) const
{
    return Element(doc_.Tree, id, "DivXMediaMenu");
}

const DocNode* MenuGraph::Button(const DocNode& menu, const std::string& id) const
{
    const DocNode* button = Element(doc_.Tree, id, "ButtonMenu");
    return button && button->Parent() == &menu ? button : nullptr;
}

std::vector<const DocNode*> MenuGraph::Menus(const DocNode& languageSet) const
{
    return ChildrenNamed(languageSet, "DivXMediaMenu");
}

std::vector<const DocNode*> MenuGraph::Buttons(const DocNode& menu) const
{
    return ChildrenNamed(menu, "ButtonMenu");
}

std::string MenuGraph::MenuLabel(const std::string& id) const
{
    const DocNode* menu = Menu(id);
    const std::string name = menu ? GetPropertyInNode(*menu, "menuName") : std::string();
    return "menu " + id + (name.empty() ? "" : " \"" + name + "\"");
}

FrameRange MenuGraph::Background(const DocNode& menu, std::vector<std::string>& deadEnds) const
{
    FrameRange frames;
    if (!RangeOf(Element(doc_.Tree, GetPropertyInNode(menu, "backgroundVideoID"), "MediaTrack"), frames))
        deadEnds.push_back(MenuLabel(ObjectIdOf(menu)) + ": its background video is gone");
    return frames;
}

std::string MenuGraph::BackgroundFile(const DocNode& menu) const
{
    const DocNode* track = Element(doc_.Tree, GetPropertyInNode(menu, "backgroundVideoID"), "MediaTrack");
    const DocNode* source = track ? Element(doc_.Tree, GetPropertyInNode(*track, "mediaSourceID"), "MediaSource") : nullptr;
    return source ? ResolveLocation(doc_.ProjectFile, GetPropertyInNode(*source, "location")) : std::string();
}

std::string MenuGraph::TitleMovie(const std::string& titleID) const
{
    const DocNode* title = Element(doc_.Tree, titleID, "Title");
    return title ? TitleFile(doc_, *title) : std::string();
}

std::string MenuGraph::StartButton(const DocNode& menu, std::vector<std::string>& deadEnds) const
{
    const std::string id = GetPropertyInNode(menu, "startingMenuItemID");
    if (Button(menu, id))
        return Trim(id);
    const std::vector<const DocNode*> buttons = Buttons(menu);
    if (IsReferenceValue(id))
        deadEnds.push_back(MenuLabel(ObjectIdOf(menu)) + ": the starting button " + id +
                           " is not one of its buttons");
    return buttons.empty() ? std::string() : ObjectIdOf(*buttons.front());
}

std::string MenuGraph::Neighbour(const DocNode& menu, const DocNode& button, Direction direction,
                                 std::string& deadEnd) const
{
    const std::string id = GetPropertyInNode(button, kDirectionRows[std::size_t(direction)]);
    if (!IsReferenceValue(id))
        return {};
    if (Button(menu, id))
        return Trim(id);
    deadEnd = OwnerLabel(menu, button) + ": " + DirectionName(direction) + " leads to " + id +
              ", which is not a button of this menu";
    return {};
}

std::string MenuGraph::OwnerLabel(const DocNode& menu, const DocNode& owner) const
{
    const std::string label = MenuLabel(ObjectIdOf(menu));
    return &owner == &menu ? label : "button " + ObjectIdOf(owner) + " of " + label;
}

ResolvedActions MenuGraph::Actions(const DocNode& menu, const DocNode& owner, const std::string& row) const
{
    ResolvedActions result;
    const std::string id = GetPropertyInNode(owner, row);
    const std::string where = OwnerLabel(menu, owner);
    const DocNode* list = Element(doc_.Tree, id, "Action");
    if (IsReferenceValue(id) && !list)
        result.DeadEnds.push_back(where + ": its " + row + " " + id + " is gone");
    else if (list)
        Resolve(menu, *list, where + ", " + row, result);
    if (&owner != &menu && result.Steps.empty() && result.DeadEnds.empty())
        result.DeadEnds.push_back(where + " has no action");
    return result;
}

std::string MenuGraph::Stuck(const DocNode& menu) const
{
    if (!Buttons(menu).empty() || IsReferenceValue(GetPropertyInNode(menu, "exitAction")))
        return {};
    return MenuLabel(ObjectIdOf(menu)) + " has no buttons and no exitAction: only the menu key leaves it";
}

void MenuGraph::Resolve(const DocNode& menu, const DocNode& list, const std::string& where,
                        ResolvedActions& result) const
{
    const DocTree& tree = doc_.Tree;
    // A ButtonTransitionAction picks a button of the menu that an earlier MenuTransitionAction
    // of the list goes to.
    const DocNode* buttonsOf = &menu;
    for (const auto& child : list) {
        const DocNode& action = *child;
        if (!action.HasChildren())
            continue;
        const std::string type = action.Text;
        const std::string said = where + ": " + type + " " + ObjectIdOf(action);
        ActionStep step;
        if (EqualsNoCase(type, "AudioSelectAction") || EqualsNoCase(type, "SubtitleSelectAction")) {
            const bool audio = EqualsNoCase(type, "AudioSelectAction");
            step.What = audio ? ActionStep::Kind::SelectAudio : ActionStep::Kind::SelectSubtitle;
            step.TitleID = GetPropertyInNode(action, "titleID");
            step.Target = GetPropertyInNode(action, "trackID");
            const DocNode* title = Element(tree, step.TitleID, "Title");
            const bool off = !audio && (step.Target == kNoneMarker || !IsReferenceValue(step.Target));
            if (!title) {
                result.DeadEnds.push_back(said + " names title " + step.TitleID + ", which is gone");
                continue;
            }
            if (!off && !TitleHasTrack(*title, step.Target)) {
                result.DeadEnds.push_back(said + " names track " + step.Target + ", which title " + step.TitleID +
                                          " does not have");
                continue;
            }
            if (off)
                step.Target.clear();
        } else if (EqualsNoCase(type, "PlayAction") || EqualsNoCase(type, "PlayFromCurrentOffsetAction")) {
            step.What = EqualsNoCase(type, "PlayAction") ? ActionStep::Kind::Play : ActionStep::Kind::Resume;
            step.TitleID = GetPropertyInNode(action, "titleID");
            step.Target = GetPropertyInNode(action, "mediaObjectID");
            if (!PlayRange(step.TitleID, step.Target, step.Frames)) {
                result.DeadEnds.push_back(said + " plays " + step.Target + " of title " + step.TitleID +
                                          ", which is gone");
                continue;
            }
        } else if (EqualsNoCase(type, "MenuTransitionAction")) {
            step.What = ActionStep::Kind::GoToMenu;
            step.Target = GetPropertyInNode(action, "menuID");
            buttonsOf = Menu(step.Target);
            if (!buttonsOf) {
                result.DeadEnds.push_back(said + " goes to menu " + step.Target + ", which is gone");
                continue;
            }
        } else if (EqualsNoCase(type, "ButtonTransitionAction")) {
            step.What = ActionStep::Kind::GoToButton;
            step.Target = GetPropertyInNode(action, "buttonMenuID");
            if (!buttonsOf || !Button(*buttonsOf, step.Target)) {
                result.DeadEnds.push_back(said + " selects button " + step.Target +
                                          ", which is not a button of the menu it shows");
                continue;
            }
        } else {
            result.DeadEnds.push_back(said + " is no action a player knows");
            continue;
        }
        step.Target = Trim(step.Target);
        step.TitleID = Trim(step.TitleID);
        result.Steps.push_back(step);
        if (step.What == ActionStep::Kind::Play || step.What == ActionStep::Kind::Resume)
            return;
    }
}

bool MenuGraph::PlayRange(const std::string& titleID, const std::string& mediaObjectID, FrameRange& frames) const
{
    const DocNode* title = Element(doc_.Tree, titleID, "Title");
    if (!title)
        return false;
    if (Trim(mediaObjectID) == Trim(titleID))
        return RangeOf(VideoTrackIn(*title), frames);
    const DocNode* chapter = Element(doc_.Tree, mediaObjectID, "Chapter");
    return chapter && chapter->Parent() == title && RangeOf(VideoTrackIn(*chapter), frames);
}

std::string MenuGraph::StartMenu(const DocNode& languageSet, std::vector<std::string>& deadEnds) const
{
    const std::string start = GetPropertyInNode(languageSet, "startingMenuID");
    const std::string root = GetPropertyInNode(languageSet, "rootMenuID");
    if (Menu(start))
        return Trim(start);
    if (IsReferenceValue(start) || !Menu(root))
        deadEnds.push_back("the " + GetPropertyInNode(languageSet, "languageCode") + " language set's startingMenuID " +
                           (start.empty() ? "none" : start) + " names no menu");
    return Menu(root) ? Trim(root) : std::string();
}

std::string MenuGraph::KeyMenu(const DocNode& languageSet, const std::string& key, std::string& deadEnd) const
{
    std::string target = GetPropertyInNode(languageSet, "rootMenuID");
    if (key == "title") {
        for (const DocNode* menu : Menus(languageSet)) {
            if (EqualsNoCase(GetPropertyInNode(*menu, "menuType"), "title"))
                return ObjectIdOf(*menu);
        }
    }
    if (Menu(target))
        return Trim(target);
    deadEnd = "the " + key + " key leads nowhere: " + (target.empty() ? "none" : target) + " names no menu";
    return {};
}

} // namespace mw
