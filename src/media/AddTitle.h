#pragma once

#include "document/Document.h"
#include "media/TrackRow.h"

#include <string>

namespace mw {

class Project;

// The "Add title" command: asks for movies (several at once) starting in the last folder used,
// remembers their folder and adds each as a title with its own dialog.
void mnuAddTitle(Project& project);

// Shows the new-title dialog for the movie and, when accepted, adds the title under Media: its
// name translation, its MediaSource and one MediaTrack per stream, with identifiers that follow
// each other from the document's next one. False, with nothing added, when the movie cannot be
// read (the user was told) or the dialog was cancelled.
bool AddTitle(Project& project, const std::string& fileName);

// One MediaTrack per track row, appended to the title, identifiers from the document's next one
// (each audio, subtitle or unknown stream also takes two for its translation). The language of
// a stream is read from its name, or with languageFromName off is the default menu language.
void AddTitleTracks(Document& doc, DocNode& title, DocNode& table, const std::string& sourceId,
                    const TrackRows& rows, bool languageFromName, const std::string& defLang);

} // namespace mw
