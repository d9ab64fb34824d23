#pragma once

#include "document/Document.h"
#include "media/TrackRow.h"

#include <string>

namespace mw {

class Project;
class Prompt;

// The title of the dialog in which CreateNewFile asks for the movie.
inline constexpr const char* kNewFileDialogTitle = "Select new titles/movies";

// The New command: a new project around one movie, asked for when preset is empty, with the
// tracks and default streams chosen in the new-title dialog. False when anything was cancelled;
// the open project then stays as it was.
bool CreateNewFile(Project& project, const std::string& preset = {},
                   const std::string& dialogTitle = kNewFileDialogTitle);

// The frame rate of a movie by the stream inspection, for Project::ReadMovieFps: fps is left as
// it was, and the user told, when the file cannot be read.
void ReadMovieFps(const std::string& movie, double& fps, Prompt& prompt);

// Replaces the tree with the skeleton of a new project around one movie: the root, the
// translation of the title's name, Media with its Title and MediaSource, and one MediaTrack per
// track row with a translation for each audio and subtitle stream. The default streams are
// zero-based stream numbers, -1 for none. NextObjectID ends at the first free identifier.
void BuildNewProjectTree(Document& doc, const std::string& moviePath, const TrackRows& rows,
                         const std::string& defLang, int defaultAudioStream, int defaultSubtitleStream);

} // namespace mw
