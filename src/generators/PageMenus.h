#pragma once

#include "core/Prompt.h"
#include "generators/PageModel.h"
#include "menus/Actions.h"

#include <filesystem>
#include <string>
#include <vector>

namespace mw {

class Project;
struct MenuVideoTools;

// The message line of the generator windows.
inline const ProgressChannel kPageMessage{"lblMsg"};

// The file of page `page`: page 1 keeps the chosen name, a later page gets "_" and its number
// before the last four characters (".avi").
std::string PageFileName(const std::string& fileName, int page);

// Grabs each item's frame from its movie, one movie per item, and lays the page out again.
void LoadItemPictures(Project& project, MenuPage& page, const std::vector<std::string>& movies);

// The page as a generator window opens it once its items are loaded: the size of the first
// item's movie and the layout of the settings section of the page's kind.
void FitPageToItems(Project& project, const std::string& menuName, MenuPage& page);

// The frames of a motion page: the seconds rounded to whole seconds, times the frames per second,
// rounded; 0, a still page, for no seconds or less.
long MotionFrameCount(double seconds, double fps);

// The play action of an item's button: a chapter, or the title itself when the chapter is the
// title's own identifier.
ActionChoice PlayChoice(const std::string& titleID, const std::string& chapterID);

// What the user asks of a generator's menus.
struct PageMenuRequest {
    std::string FileName{};   // the video of page 1, asked for when empty; ".avi" is added when missing
    std::string MainMenuID{}; // the menu the main buttons lead to; none when empty
    std::string Language{};   // the language set's code; the selected one when empty
    // How long each thumbnail plays from its start, in seconds: Round(seconds) times the
    // project's frames per second (MovieFps) make a page, played at that rate. 0, or below,
    // makes still pages.
    double MotionSeconds = 0;
    // When given, the page videos are made by the settings' MethodForPicToMenu with these tools,
    // and Runner.Cancel() from any thread ends the run at the next frame as if it had failed.
    // Without them the built-in encoder makes the videos and the run cannot be cancelled.
    MenuVideoTools* Tools = nullptr;
};

// What a generator adds to the request for the pages it makes.
struct PageMenuJob {
    PageMenuRequest Request{};
    std::string WorkName{};   // the page videos' names in tmp before the page number
    std::string CreatingMessage{};         // shown before the page number while a page is made
    std::string MotionMessage{};           // shown before the page and frame numbers of a motion page
    std::string DoneMessage{};
    std::filesystem::path PictureFolder{}; // where composed pictures are saved for the encoder
    std::vector<ActionChoice> Plays{};     // what each item's button plays, one per item
    std::vector<std::string> Movies{};     // the movie each item's thumbnail plays, one per item
};

struct PageMenuResult {
    std::vector<std::string> MenuIDs; // one per page
    std::string SetupButtonID;
};

// Makes a menu of every page, each with its video, a button per item playing it, the page
// buttons and the navigation of the remote. A motion page is F frames, frame k showing each
// visible item's frame plus k, and says MotionMessage with the page and "k/F-1" on kPageMessage
// for every frame; the outside tools read them from picformenu<k>_<page>.bmp in the picture
// folder, deleted after. The item pictures are as they were after the run. All videos are made
// before the project is touched: a run that fails leaves the project as it was, and no file of
// the user is replaced until every page has its video.
bool CreatePageMenus(Project& project, MenuPage& page, const PageMenuJob& job, PageMenuResult& result);

} // namespace mw
