#pragma once

#include "document/Document.h"

#include <string>
#include <vector>

namespace mw {

// The remote's arrows, in the order of the button rows upAction, downAction, leftAction,
// rightAction.
enum class Direction { Up, Down, Left, Right };
const char* DirectionName(Direction direction);

// A range of frames of a movie, both ends included.
struct FrameRange {
    long Start = 0;
    long End = 0;
};

// One action of a list as a player carries it out, its targets already looked up.
struct ActionStep {
    enum class Kind { SelectAudio, SelectSubtitle, Play, Resume, GoToMenu, GoToButton };
    Kind What = Kind::Play;
    std::string TitleID;
    std::string Target; // the track, the chapter (or the title itself), the menu or the button
    FrameRange Frames;  // of Play and Resume
};

// An action list read for playing: the steps that can run, in order, and a text for each step
// whose target is gone. Steps after a play are dropped, as a player never reaches them.
struct ResolvedActions {
    std::vector<ActionStep> Steps;
    std::vector<std::string> DeadEnds;
};

// Reads the menus of one document as a player sees them. Nothing is kept but the document, so
// an edit made while a session runs is seen at the next key.
class MenuGraph {
public:
    explicit MenuGraph(const Document& doc) : doc_(doc) {}

    const Document& Doc() const { return doc_; }

    // The language set of the code, case ignored; without a code the set of the document's
    // defaultMenuLanguage, else the first set. Null, with the reason in error, when there is none.
    const DocNode* LanguageSet(const std::string& code, std::string* error = nullptr) const;

    std::vector<const DocNode*> LanguageSets(const DocNode& root) const;

    // The menu or the button that the identifier names; null when it names anything else.
    const DocNode* Menu(const std::string& id) const;
    const DocNode* Button(const DocNode& menu, const std::string& id) const;
    std::vector<const DocNode*> Menus(const DocNode& languageSet) const;
    std::vector<const DocNode*> Buttons(const DocNode& menu) const;

    // "menu 9 "Main"", or without the name when it has none: how texts name a menu.
    std::string MenuLabel(const std::string& id) const;

    // The frames of the menu's background video; when its track is gone, none, and the dead
    // end is added to deadEnds.
    FrameRange Background(const DocNode& menu, std::vector<std::string>& deadEnds) const;

    // The movie of the menu's background and the movie of a title, made absolute against the
    // project file; empty when a link on the way is gone.
    std::string BackgroundFile(const DocNode& menu) const;
    std::string TitleMovie(const std::string& titleID) const;

    // The button a menu starts on: startingMenuItemID, else its first button; empty for a
    // menu without buttons. A starting button that is not one of the menu's is a dead end.
    std::string StartButton(const DocNode& menu, std::vector<std::string>& deadEnds) const;

    // Where the arrow leads from the button: empty when the row is not set (the key does
    // nothing) or names no button of the menu (a dead end, said in deadEnd).
    std::string Neighbour(const DocNode& menu, const DocNode& button, Direction direction,
                          std::string& deadEnd) const;

    // The list of a menu ("enterAction", "exitAction") or a button ("selectAction"), as
    // steps; `owner` names the one it belongs to in the texts. A row that is not set gives
    // no steps; one that names no list is a dead end, and so is a button whose list does nothing.
    ResolvedActions Actions(const DocNode& menu, const DocNode& owner, const std::string& row) const;

    // Why only the menu key leaves the menu (it has no buttons and no exitAction); empty when
    // it can be left.
    std::string Stuck(const DocNode& menu) const;

    // The frames of a title's own video, or of one of its chapters.
    bool PlayRange(const std::string& titleID, const std::string& mediaObjectID, FrameRange& frames) const;

    // The menu a player starts the set with: startingMenuID, else rootMenuID; empty when
    // neither names a menu. A starting menu that is set but gone is a dead end, and so is one
    // left unset without a root menu to stand in.
    std::string StartMenu(const DocNode& languageSet, std::vector<std::string>& deadEnds) const;
    // Where the menu key ("menu": rootMenuID) and the title key ("title": the first menu of
    // type "title", else the root menu) lead; empty, with the dead end said, when nowhere.
    std::string KeyMenu(const DocNode& languageSet, const std::string& key, std::string& deadEnd) const;

private:
    std::string OwnerLabel(const DocNode& menu, const DocNode& owner) const;
    void Resolve(const DocNode& menu, const DocNode& action, const std::string& where,
                 ResolvedActions& result) const;

    const Document& doc_;
};

} // namespace mw
