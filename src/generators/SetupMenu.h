#pragma once

#include "generators/PageMenus.h"

#include <QImage>

#include <string>
#include <vector>

namespace mw {

class Project;

// The caption of a stream's label, from the stream's name in the form "Audio - en-US;02": the
// language's name, then " - " and the description the number after ";" stands for, when it
// stands for one. A name not of that form gives "Unknown audio " or "Unknown subtitle " and the
// stream's number in its column; a language not in the list gives "Audio " or "Subtitle " and
// the number.
std::string StreamCaption(const std::string& strn, bool audio, int number);

// A label of one of the setup page's columns.
struct StreamLabel {
    PageLabel Label{};
    std::string Strn{};    // the stream's name as the file holds it
    std::string TrackID{}; // "01wb"; empty for the "None" row, which switches subtitles off
};

// The setup window's page: no thumbnails and one page; the headings and the main label are in
// the design, the stream labels beside it.
struct SetupPage {
    std::string TitleID{};
    MenuPage Page{.Kind = GeneratorKind::SetupMenu};
    std::vector<StreamLabel> Audio{};
    std::vector<StreamLabel> Subtitles{}; // ends with "None"
};

// The setup window as it opens for a title: a page of the movie's size with the layout of the
// settings section SetupMenu, a label per audio stream and per subtitle stream of the movie,
// and "None". False when the identifier names no title of the project.
bool OpenSetupPage(Project& project, const std::string& titleID, SetupPage& setup);

// Stacks each column's labels from the column's first place, each the height of its heading
// below the one before.
void PlaceStreamLabels(SetupPage& setup);

// The page as a 24-bit picture, the stream labels printed in the labels' font.
QImage ComposeSetupPage(const SetupPage& setup);

struct SetupMenuRequest {
    PageMenuRequest Menus{};
    bool FromWizard = false; // the wizard tells the user itself when everything is made
};

struct SetupMenuResult {
    std::string MenuID;
    std::string MainButtonID; // empty when the main label is hidden
};

// The still setup menu of the page: a button per stream label selecting its stream (the
// "None" row selecting no subtitle), the main button, and the remote's keys wired so that up
// and down walk a column, left and right cross to the other column, and the main button closes
// both columns. A run that fails leaves the project and the files as they were.
bool CreateSetupMenu(Project& project, SetupPage& setup, const SetupMenuRequest& request, SetupMenuResult& result);

} // namespace mw
