#include "document/MenuTrackList.h"

#include "core/Text.h"
#include "document/Document.h"
#include "document/TreeQueries.h"

#include <algorithm>

namespace mw {

bool MenuTrackList::Add(const std::string& key, const std::string& text)
{
    if (Find(key))
        return false;
    entries_.push_back({key, text});
    return true;
}

bool MenuTrackList::Remove(const std::string& key)
{
    const auto it = std::find_if(entries_.begin(), entries_.end(), [&](const auto& e) { return e.Key == key; });
    if (it == entries_.end())
        return false;
    entries_.erase(it);
    return true;
}

const MenuTrackEntry* MenuTrackList::Find(const std::string& key) const
{
    const auto it = std::find_if(entries_.begin(), entries_.end(), [&](const auto& e) { return e.Key == key; });
    return it == entries_.end() ? nullptr : &*it;
}

std::string MenuTrackText(const std::string& objectID, const std::string& mediaSourceID, const std::string& fileName,
                          const std::string& type, const std::string& trackID)
{
    return objectID + "|" + mediaSourceID + "(" + fileName + ")-" + type + " " + trackID;
}

std::string LocationFileName(const std::string& location)
{
    const auto slash = location.find_last_of("/\\");
    return slash == std::string::npos ? location : location.substr(slash + 1);
}

void LoadMediaTracsFromMenuTracs(const Document& doc, MenuTrackList& tracks)
{
    tracks.Clear();
    const DocNode* menuTracks = ChildNamed(ChildNamed(doc.Tree.Root(), "media"), "menutracks");
    if (!menuTracks)
        return;
    for (const auto& track : *menuTracks) {
        if (!EqualsNoCase(track->Text, "mediatrack"))
            continue;
        std::string objectID, sourceID, trackID, type;
        for (const auto& row : *track) {
            const std::string lowered = Lower(row->Text);
            if (lowered.starts_with("objectid"))
                objectID = RowValue(row->Text);
            else if (lowered.starts_with("mediasourceid"))
                sourceID = RowValue(row->Text);
            else if (lowered.starts_with("trackid"))
                trackID = RowValue(row->Text);
            else if (lowered.starts_with("type"))
                type = RowValue(row->Text);
        }
        const DocNode* source = doc.Tree.ObjectNode(sourceID);
        const std::string fileName = source ? LocationFileName(GetPropertyInNode(*source, "location")) : "";
        tracks.Add(objectID, MenuTrackText(objectID, sourceID, fileName, type, trackID));
    }
}

} // namespace mw
