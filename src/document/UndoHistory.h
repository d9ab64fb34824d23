#pragma once

#include "core/Prompt.h"
#include "document/Document.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace mw {

// One child of MenuTracks as XML, and the key of the first later sibling that was not kept with
// it: it goes back in front of that one, or at the end when the key is empty.
struct TrackPiece {
    std::string Xml;
    std::string NextKey;
};

// What one undo step brings back: the kept element (the menu on the canvas, or a whole language
// set) as XML and where it hangs, the tracks and sources of MenuTracks that it refers to, the
// selected node and the menu that was on the canvas. Only those tracks are kept, since a command
// on a menu touches no other menu's tracks; tracks made after the step are taken away again.
struct UndoSnapshot {
    std::string MenuXml;
    std::string MenuParentKey;
    std::string CurrentMenuKey; // the kept element's key
    std::size_t MenuPosition = 0; // its place among its siblings, for when it is gone
    std::string ShownMenuID;      // the menu on the canvas
    std::string SelectedKey;
    std::string MenuTracksKey;
    std::vector<TrackPiece> Tracks;
    long FirstNewID = 0; // objects from this identifier on did not exist yet
};

// The last snapshots, oldest first. When full, a new one pushes the oldest out.
class UndoHistory {
public:
    static constexpr std::size_t kDepth = 8;

    void Push(UndoSnapshot snapshot);
    std::optional<UndoSnapshot> Pop();
    void Clear() { snapshots_.clear(); }
    // How many snapshots are held (UndoTop).
    std::size_t Count() const { return snapshots_.size(); }
    bool Empty() const { return snapshots_.empty(); }

private:
    std::deque<UndoSnapshot> snapshots_;
};

// Which tracks a snapshot keeps: those the element refers to, or none for a command that only
// adds tracks (those go again on undo all the same).
enum class KeptTracks { Referred, None };

// Takes the snapshot of the element with the given identifier, with the menu on the canvas to
// show again. False when the element, MenuTracks or the element's parent cannot be found or written.
bool TakeUndoSnapshot(Document& doc, const std::string& objectID, const std::string& shownMenuID,
                      UndoSnapshot& snapshot, KeptTracks kept = KeptTracks::Referred);

// Puts the kept element back in the place its node holds (so a menu keeps its place among the
// menus of its language), and the kept tracks where they stood; tracks made since go. Selects the
// stored node. False when a parent is gone or a piece cannot be read back; both are checked
// before anything is removed, so a refused snapshot leaves the tree as it was.
bool RestoreUndoSnapshot(Document& doc, const UndoSnapshot& snapshot, Prompt& prompt);

} // namespace mw
