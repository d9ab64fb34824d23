#pragma once

#include "media/NewTitleForm.h"
#include "media/TrackRow.h"

#include <string>
#include <vector>

namespace mw {

class LangDoc;
class Prompt;
struct Document;

// One row of the chapter list: the number, then "Start Frame", "End Frame", "Name".
struct ChapterRow {
    int Number = 0;
    long Start = 0;
    long End = 0;
    std::string Name;
};

// A label whose tag carries the number that its caption shows.
struct TaggedLabel {
    std::string Caption;
    std::string Tag;
};

// The three option buttons of the dialog.
enum class ChapMode {
    PerMinutes, // optPerMin: a chapter every txtMinutes minutes
    Count,      // optChapters: txtChapters chapters of equal length
    Manual,     // Option1: the rows of ListView1
};

// The model of the chapter dialog: the window edits it, the refresh of a title and the
// generators fill it themselves before CreateChaps runs.
struct ChapForm {
    ComboList Combo1; // the titles: "id|location", the identifier as item data
    std::vector<ChapterRow> ListView1;
    int ListView1Index = -1; // the selected row, -1 for none

    long lblEndFrame = 0;   // last frame of the movie
    std::string lblRuntime; // its length, hh:mm:ss.mmm
    TrackRows lstTracks;
    double Fps = 23.976;

    ChapMode Mode = ChapMode::Count;
    std::string txtMinutes;
    std::string txtChapters;
    TaggedLabel lblCountChapters; // every-minutes mode: count and step
    TaggedLabel lblCountTime;     // count mode: step; "from <file> file" after an import

    // Frames read from a chapter file; each one starts a chapter after the first. While the
    // list is imported it is used in place of the regular division.
    std::vector<long> List1;
    bool Imported = false;

    std::string txtStartFrame = "0";
    std::string txtEndFrame;
    std::string txtStepFrames = "30";
    bool chkAll = false;
    bool Accepted = false;

    // Locations of titles are relative to this project file.
    std::string ProjectFile;
};

// Opening the dialog: "StepFrames" from section General of the settings file, and one item
// per title of the document's Media node.
void LoadChapForm(ChapForm& form, const Document& doc, const std::string& settingsFile, Prompt& prompt);

// The title id and the absolute movie file of the chosen item; empty when none is chosen.
std::string ChosenTitleID(const ChapForm& form);
std::string ChosenTitleFile(const ChapForm& form);

// Loads the chosen title's tracks, last frame and running time, without touching the list.
// False when the movie cannot be read (the user was told); the tracks are then empty.
bool LoadChosenTitle(ChapForm& form, Prompt& prompt);
// Combo1_Click: the tracks as above, and the title's own chapters listed in ListView1.
bool Combo1_Click(ChapForm& form, const Document& doc, Prompt& prompt);

// Recomputes the captions and tags of the regular division for the mode in use.
void CalcChapters(ChapForm& form, Prompt& prompt);

// "Add" (Command7), "Insert" after the selected row (Command8), "Delete": false, after the
// message, when the frames are refused.
bool AddChapterRow(ChapForm& form, Prompt& prompt);
bool InsertChapterRow(ChapForm& form, Prompt& prompt);
void DeleteChapterRow(ChapForm& form);

// Shift+Enter in a frame field: the frame before the next key frame past the one after the
// field's frame, so that pressing it again steps on. The field stays when there is none.
void NextKeyFrameEnd(const ChapForm& form, std::string& field, Prompt& prompt);

// "from .txt" (Command9): asks for the file, starting in lastFolder, and imports it.
void ImportChaptersFromTxt(ChapForm& form, const std::string& lastFolder, const LangDoc& lang, Prompt& prompt);
// Reads a "[CHAPTERS]" text file into List1; false, after the message, when it holds none.
bool ImportChapterFile(ChapForm& form, const std::string& path, const LangDoc& lang, Prompt& prompt);
// Right click on "from .txt".
void ClearImportedChapters(ChapForm& form);

// "Create chapters" (Command2) and "Apply" (Command10): the checks, then "StepFrames" is
// written and the form is accepted. False when the dialog must stay as it is.
bool AcceptChapForm(ChapForm& form, const std::string& settingsFile, const LangDoc& lang, Prompt& prompt);

} // namespace mw
