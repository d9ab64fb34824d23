#include "menuplayer/MenuSession.h"

#include "document/TreeQueries.h"

namespace mw {

namespace {

std::string FramesText(const FrameRange& frames)
{
    return "frames " + std::to_string(frames.Start) + ".." + std::to_string(frames.End);
}

} // namespace

std::string DescribeEvent(const MenuGraph& graph, const PlayerEvent& event)
{
    using Kind = PlayerEvent::Kind;
    switch (event.What) {
    case Kind::MenuShown:
        return graph.MenuLabel(event.MenuID) + " " + FramesText(event.Frames);
    case Kind::Looped:
        return graph.MenuLabel(event.MenuID) + " again from frame " + std::to_string(event.Frames.Start);
    case Kind::ButtonSelected:
        return "button " + event.ButtonID;
    case Kind::Play: {
        std::string text = "play title " + event.TitleID;
        if (event.MediaObjectID != event.TitleID)
            text += " chapter " + event.MediaObjectID;
        text += " " + FramesText(event.Frames);
        if (event.Position != event.Frames.Start)
            text += " from " + std::to_string(event.Position);
        return event.Text.empty() ? text : text + " (" + event.Text + ")";
    }
    case Kind::Status:
        return event.Text;
    case Kind::DeadEnd:
        return "dead end: " + event.Text;
    }
    return {};
}

MenuSession::MenuSession(const Document& doc, std::string languageCode, Listener listener)
    : graph_(doc), language_(std::move(languageCode)), listener_(std::move(listener))
{
}

void MenuSession::Emit(PlayerEvent::Kind kind, const std::string& text, const std::string& mediaObjectID) const
{
    if (!listener_)
        return;
    PlayerEvent event;
    event.What = kind;
    event.MenuID = menu_;
    event.ButtonID = button_;
    event.TitleID = playing_ ? titleID_ : std::string();
    event.MediaObjectID = mediaObjectID;
    event.Frames = frames_;
    event.Position = position_;
    event.Text = text;
    listener_(event);
}

void MenuSession::DeadEnd(const std::string& text) const
{
    Emit(PlayerEvent::Kind::DeadEnd, text);
}

bool MenuSession::Start()
{
    std::string error;
    const DocNode* set = graph_.LanguageSet(language_, &error);
    if (!set) {
        DeadEnd(error);
        return false;
    }
    std::vector<std::string> deadEnds;
    const std::string start = graph_.StartMenu(*set, deadEnds);
    for (const std::string& text : deadEnds)
        DeadEnd(text);
    if (start.empty())
        return false;
    ShowMenu(start, {});
    return true;
}

void MenuSession::ShowMenu(const std::string& menuID, const std::string& buttonID)
{
    const DocNode* menu = graph_.Menu(menuID);
    if (!menu)
        return;
    playing_ = false;
    menu_ = menuID;
    button_.clear();
    std::vector<std::string> deadEnds;
    frames_ = graph_.Background(*menu, deadEnds);
    position_ = frames_.Start;
    Emit(PlayerEvent::Kind::MenuShown);
    RunList(graph_.Actions(*menu, *menu, "enterAction"), true);

    const std::string start = graph_.StartButton(*menu, deadEnds);
    for (const std::string& text : deadEnds)
        DeadEnd(text);
    if (!buttonID.empty() || !start.empty())
        SelectButton(buttonID.empty() ? start : buttonID);
    else if (const std::string stuck = graph_.Stuck(*menu); !stuck.empty())
        DeadEnd(stuck);
}

void MenuSession::SelectButton(const std::string& buttonID)
{
    button_ = buttonID;
    Emit(PlayerEvent::Kind::ButtonSelected);
}

bool MenuSession::RunList(const ResolvedActions& list, bool selectionsOnly)
{
    for (const std::string& text : list.DeadEnds)
        DeadEnd(text);
    std::string nextMenu;
    std::string nextButton;
    for (const ActionStep& step : list.Steps) {
        switch (step.What) {
        case ActionStep::Kind::SelectAudio:
            audio_[step.TitleID] = step.Target;
            Emit(PlayerEvent::Kind::Status, SelectionText(step.TitleID));
            break;
        case ActionStep::Kind::SelectSubtitle:
            subtitle_[step.TitleID] = step.Target;
            Emit(PlayerEvent::Kind::Status, SelectionText(step.TitleID));
            break;
        case ActionStep::Kind::Play:
        case ActionStep::Kind::Resume:
            if (!selectionsOnly) {
                PlayTitle(step);
                return true;
            }
            break;
        case ActionStep::Kind::GoToMenu:
            if (!selectionsOnly)
                nextMenu = step.Target;
            break;
        case ActionStep::Kind::GoToButton:
            if (selectionsOnly)
                break;
            if (nextMenu.empty())
                SelectButton(step.Target);
            else
                nextButton = step.Target;
            break;
        }
    }
    if (nextMenu.empty())
        return false;
    ShowMenu(nextMenu, nextButton);
    return true;
}

std::string MenuSession::SelectionText(const std::string& titleID) const
{
    std::string text;
    if (const auto audio = audio_.find(titleID); audio != audio_.end())
        text = "audio " + audio->second;
    if (const auto subtitle = subtitle_.find(titleID); subtitle != subtitle_.end()) {
        text += text.empty() ? "" : ", ";
        text += subtitle->second.empty() ? "subtitles off" : "subtitle " + subtitle->second;
    }
    return text.empty() ? text : "title " + titleID + ": " + text;
}

void MenuSession::PlayTitle(const ActionStep& step)
{
    playing_ = true;
    titleID_ = step.TitleID;
    frames_ = step.Frames;
    position_ = frames_.Start;
    const auto kept = resumeAt_.find(step.TitleID);
    FrameRange whole;
    // A return to the playback in progress goes on from where the title was left, to its end.
    if (step.What == ActionStep::Kind::Resume && kept != resumeAt_.end() &&
        graph_.PlayRange(step.TitleID, step.TitleID, whole)) {
        frames_ = whole;
        position_ = kept->second;
    }
    Emit(PlayerEvent::Kind::Play, SelectionText(titleID_), step.Target);
}

void MenuSession::Press(RemoteKey key)
{
    switch (key) {
    case RemoteKey::Menu:
    case RemoteKey::Title:
        if (const DocNode* set = graph_.LanguageSet(language_))
            JumpTo(*set, key == RemoteKey::Menu ? "menu" : "title");
        return;
    case RemoteKey::Ok:
        Select();
        return;
    case RemoteKey::Up:
    case RemoteKey::Down:
    case RemoteKey::Left:
    case RemoteKey::Right:
        Move(Direction(int(key) - int(RemoteKey::Up)));
        return;
    }
}

void MenuSession::JumpTo(const DocNode& languageSet, const std::string& key)
{
    std::string deadEnd;
    const std::string menu = graph_.KeyMenu(languageSet, key, deadEnd);
    if (menu.empty()) {
        DeadEnd(deadEnd);
        return;
    }
    if (playing_)
        resumeAt_[titleID_] = position_;
    ShowMenu(menu, {});
}

void MenuSession::Move(Direction direction)
{
    const DocNode* menu = graph_.Menu(menu_);
    const DocNode* button = menu && !playing_ ? graph_.Button(*menu, button_) : nullptr;
    if (!button) {
        Emit(PlayerEvent::Kind::Status, playing_ ? "a title plays: the arrows wait for a menu" : "no button is selected");
        return;
    }
    std::string deadEnd;
    const std::string next = graph_.Neighbour(*menu, *button, direction, deadEnd);
    if (!deadEnd.empty())
        DeadEnd(deadEnd);
    else if (next.empty())
        Emit(PlayerEvent::Kind::Status, std::string("no button ") + (direction == Direction::Up     ? "above"
                                                                     : direction == Direction::Down ? "below"
                                                                     : direction == Direction::Left ? "to the left"
                                                                                                    : "to the right"));
    else
        SelectButton(next);
}

void MenuSession::Select()
{
    const DocNode* menu = graph_.Menu(menu_);
    const DocNode* button = menu && !playing_ ? graph_.Button(*menu, button_) : nullptr;
    if (!button) {
        Emit(PlayerEvent::Kind::Status, playing_ ? "a title plays: OK waits for a menu" : "no button is selected");
        return;
    }
    RunList(graph_.Actions(*menu, *button, "selectAction"), false);
}

void MenuSession::Tick(long frames)
{
    if (menu_.empty())
        return;
    position_ += frames;
    if (position_ <= frames_.End)
        return;
    if (playing_) {
        resumeAt_.erase(titleID_);
        Emit(PlayerEvent::Kind::Status, "title " + titleID_ + " ended");
        playing_ = false;
        const DocNode* from = graph_.Menu(menu_);
        if (from)
            ShowMenu(menu_, graph_.Button(*from, button_) ? button_ : std::string());
        else
            Press(RemoteKey::Menu);
        return;
    }
    const DocNode* menu = graph_.Menu(menu_);
    if (!menu) {
        // The menu was removed while it played and nothing else could be shown: the player stops.
        menu_.clear();
        return;
    }
    if (RunList(graph_.Actions(*menu, *menu, "exitAction"), false))
        return;
    position_ = frames_.Start;
    Emit(PlayerEvent::Kind::Looped);
}

} // namespace mw
