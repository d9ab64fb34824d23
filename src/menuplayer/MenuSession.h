#pragma once

#include "menuplayer/MenuGraph.h"

#include <functional>
#include <map>
#include <string>

namespace mw {

enum class RemoteKey { Up, Down, Left, Right, Ok, Menu, Title };

// What a session tells whoever follows it, in the order it happens.
struct PlayerEvent {
    enum class Kind {
        MenuShown,      // MenuID, Frames: the background plays from the start of the range
        Looped,         // MenuID, Frames: the background ended without an exit and starts again
        ButtonSelected, // MenuID, ButtonID
        Play,           // TitleID, MediaObjectID, Frames: from Position to the end of the range;
                        // Text: the audio and subtitle chosen for the title
        Status,         // Text
        DeadEnd,        // Text
    };
    Kind What = Kind::Status;
    std::string MenuID;
    std::string ButtonID;
    std::string TitleID;
    std::string MediaObjectID;
    FrameRange Frames;
    long Position = 0;
    std::string Text;
};

// One line for a log: "menu 9 "Main" frames 0..124", "play title 6 chapter 12 frames 0..99", ...
std::string DescribeEvent(const MenuGraph& graph, const PlayerEvent& event);

// Plays the menus of one language set as a remote control drives a player, without pictures:
// the caller shows what the events say and moves time on with Tick, one call per frame shown
// or as many frames at once as it likes.
//
// A title that plays to its end leads back to the menu it was started from, on the button that
// started it. The menu key leaves a title and goes to the root menu; the title key goes to the
// set's first menu of type "title", else to the root menu. A title left by a key keeps its
// position for a PlayFromCurrentOffsetAction of the same title.
class MenuSession {
public:
    using Listener = std::function<void(const PlayerEvent&)>;

    MenuSession(const Document& doc, std::string languageCode, Listener listener);

    // Shows the starting menu of the set, else its root menu. False, with a dead end told,
    // when the set or both menus are missing.
    bool Start();
    void Press(RemoteKey key);
    void Tick(long frames = 1);

    bool PlayingTitle() const { return playing_; }
    const std::string& MenuID() const { return menu_; }
    const std::string& ButtonID() const { return button_; }
    long Position() const { return position_; }
    const FrameRange& Frames() const { return frames_; }
    const MenuGraph& Graph() const { return graph_; }
    // The tracks chosen by the actions so far, by title; an empty subtitle is "off".
    const std::map<std::string, std::string>& AudioChoice() const { return audio_; }
    const std::map<std::string, std::string>& SubtitleChoice() const { return subtitle_; }

private:
    // Tells the event with the session as it stands: menu, button, the title playing, frames.
    void Emit(PlayerEvent::Kind kind, const std::string& text = {}, const std::string& mediaObjectID = {}) const;
    void DeadEnd(const std::string& text) const;
    void ShowMenu(const std::string& menuID, const std::string& buttonID);
    void SelectButton(const std::string& buttonID);
    // The menu and title keys: leave what plays for the menu, when there is one to go to.
    void JumpTo(const DocNode& languageSet, const std::string& key);
    void Move(Direction direction);
    void Select();
    // Runs a list of the shown menu; true when it left the menu, for another or for a title.
    bool RunList(const ResolvedActions& list, bool selectionsOnly);
    void PlayTitle(const ActionStep& step);
    std::string SelectionText(const std::string& titleID) const;

    MenuGraph graph_;
    std::string language_;
    Listener listener_;

    std::string menu_;
    std::string button_;
    bool playing_ = false;
    std::string titleID_;
    FrameRange frames_;
    long position_ = 0;
    std::map<std::string, std::string> audio_;
    std::map<std::string, std::string> subtitle_;
    std::map<std::string, long> resumeAt_; // by title
};

} // namespace mw
