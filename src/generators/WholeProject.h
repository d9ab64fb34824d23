#pragma once

#include "generators/PageMenus.h"
#include "media/ChapForm.h"

#include <string>
#include <vector>

namespace mw {

class Project;

// The short black clip of the program folder that plays before the movie.
inline constexpr const char* kIntroFile = "black.avi";

enum class MovieWithChapsEnd {
    Stopped,   // cancelled, refused or failed
    Ready,     // the project is made
    CreateNow, // made, and the user wants the DivX file at once
};

// "One movie with chapters": a new project around the movie (asked for when empty), its chapters
// from the chapter dialog, and an intro menu over black.avi with no buttons whose exit action
// plays the movie. The intro is looked for before anything else, so that its absence leaves the
// open project alone. Once the new project is made it stays, also when the user declines to go on
// without chapters.
MovieWithChapsEnd mnuMovieWithChaps(Project& project, const std::string& movie = {});

// One row of the list of movies: the title, its movie, and the frame its thumbnail shows.
struct ManyMoviesRow {
    std::string TitleID;
    std::string Movie;
    long Frame = 0;
};

// The "Many movies with menu" window without the window.
struct ManyMoviesForm {
    std::vector<ManyMoviesRow> List1;
    int ListIndex = -1;
    std::string Text1 = "0"; // the frame of the selected row

    bool chkCreateChap = false;
    ChapMode Mode = ChapMode::Count; // optChapters, or optPerMin
    std::string txtChapters = "8";
    std::string txtMinutes = "5";

    std::string txtColumns = "4";
    std::string txtRows = "2";
};

// On load: a row per title of the open project, each from its first frame.
void LoadManyMovies(const Project& project, ManyMoviesForm& form);

// A click in the list shows the row's frame; a frame typed in Text1 goes to the row, text that is
// no number as 0. Up and down step the frame by one, never below 0.
void SelectMovie(ManyMoviesForm& form, int index);
void SetMovieFrame(ManyMoviesForm& form, const std::string& text);
void StepMovieFrame(ManyMoviesForm& form, int step);

// "Add": the movies chosen in the dialog, or those given, each a title with its own dialog. With
// no project open the first movie makes a new one. False when nothing was added.
bool AddMovies(Project& project, ManyMoviesForm& form, std::vector<std::string> files = {});
// "Remove": the selected row and its title.
void RemoveMovie(Project& project, ManyMoviesForm& form);
// "Close existing file": false when the user kept the project.
bool CloseExistingFile(Project& project, ManyMoviesForm& form);

// The thumbnails a page holds: the grid of the title menu has two rows, and three columns make
// pages of six; any other count of columns gives eight.
int MoviesPerPage(const ManyMoviesForm& form);

// "Preview/Edit/Create menu" up to the title window: with no movies says so and is false; else
// the chapters for all titles when asked for, then the title page with each row's frame.
bool OpenManyMoviesPage(Project& project, const ManyMoviesForm& form, MenuPage& page);

} // namespace mw
