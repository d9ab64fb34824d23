#pragma once

#include "document/Document.h"
#include "media/TrackRow.h"

#include <string>

namespace mw {

// Replaces the tree with the skeleton of a new project around one movie: the root, the
// translation of the title's name, Media with its Title and MediaSource, and one MediaTrack per
// track row with a translation for each audio and subtitle stream. The default streams are
// zero-based stream numbers, -1 for none. NextObjectID ends at the first free identifier.
void BuildNewProjectTree(Document& doc, const std::string& moviePath, const TrackRows& rows,
                         const std::string& defLang, int defaultAudioStream, int defaultSubtitleStream);

} // namespace mw
