#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace mw {

struct Document;

// One track of the menus as the property panels show it: the track's objectID as key, and the
// text "ID|mediaSourceID(fileName)-type trackID".
struct MenuTrackEntry {
    std::string Key;
    std::string Text;
};

// The tracks under MenuTracks, in the order they were entered, each key standing once.
class MenuTrackList {
public:
    // False, and the list unchanged, when the key already stands.
    bool Add(const std::string& key, const std::string& text);
    bool Remove(const std::string& key);
    const MenuTrackEntry* Find(const std::string& key) const;
    void Clear() { entries_.clear(); }

    std::size_t Count() const { return entries_.size(); }
    bool Empty() const { return entries_.empty(); }
    const MenuTrackEntry& Entry(std::size_t i) const { return entries_[i]; }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

private:
    std::vector<MenuTrackEntry> entries_;
};

// The entry text of a track: objectID "|" mediaSourceID "(" file name ")-" type " " trackID.
std::string MenuTrackText(const std::string& objectID, const std::string& mediaSourceID, const std::string& fileName,
                          const std::string& type, const std::string& trackID);

// The file name at the end of a location, whichever separator it uses.
std::string LocationFileName(const std::string& location);

// Clears the list and enters every MediaTrack under Media/MenuTracks in tree order.
void LoadMediaTracsFromMenuTracs(const Document& doc, MenuTrackList& tracks);

} // namespace mw
