#pragma once

#include "document/UndoHistory.h"
#include "generators/PageModel.h"
#include "media/LoadTitlesInForm.h"
#include "menus/Buttons.h"

#include <QImage>
#include <QRect>

#include <optional>
#include <string>
#include <vector>

namespace mw {

class DocNode;
class Prompt;
class Project;
struct MenuVideoTools;
struct NewMenuForm;

// The steps every generator's run shares: naming and placing the menu videos, encoding a still
// page, adding a menu as the new-menu form would, the overlay of a button, and the way back
// when a run fails part way.

// The row of the title list of the identifier, with its movie's full path.
std::optional<TitleListRow> FindTitle(const Project& project, const std::string& titleID);

// The name of the menu's video: the one given, else asked for with the filter of the window;
// ".avi" is added when missing. Nothing when the user cancels.
std::optional<std::string> MenuFileName(Prompt& prompt, const std::string& given, const std::string& filter);

// The filter of that dialog in each generator's window: the title window also shows DivX files.
std::string MenuFileFilter(GeneratorKind kind);

// A menu video is made under a name in the program's tmp folder first and only put in place
// once every video of the run has been made.
struct PageVideo {
    std::string Work;
    std::string Final;
};

void RemoveFiles(const std::vector<PageVideo>& videos);

// Puts every video in place, or none: a file of the user under a video's name is moved aside
// first and comes back when any video fails. A folder under a video's name fails the run.
bool PutAllInPlace(const std::vector<PageVideo>& videos);

// The way page videos are made: the settings' picture-to-menu method when the window gives its
// tools, else the built-in encoder.
int PicToMenuMethod(Project& project, const MenuVideoTools* tools);

// The composed page saved as `picture` and encoded into `video`, by the settings' picture-to-menu
// method with `tools`, by the built-in encoder without them; the picture is removed afterwards
// whatever happened.
bool MakeStillVideo(Project& project, const QImage& composed, const std::string& picture, const std::string& video,
                    double fps, const std::string& sound, MenuVideoTools* tools);

// The new-menu form as it opens, at the language set of the code (the selected one when empty).
// False when the project has no such set.
bool OpenNewMenuForm(Project& project, NewMenuForm& form, const std::string& language);

// The new-menu form filled as the user fills it for one menu; its identifier, empty on failure.
std::string AddPageMenu(Project& project, const std::string& video, const std::string& name,
                        const std::string& language);

// The language set as it was before the menus are added: one undo step for the whole run when
// it succeeds, and the way back when it fails part way. A set the run makes goes again then,
// with all the run made.
class LanguageSetGuard {
public:
    LanguageSetGuard(Project& project, const DocNode* languageSet);
    ~LanguageSetGuard();
    LanguageSetGuard(const LanguageSetGuard&) = delete;
    LanguageSetGuard& operator=(const LanguageSetGuard&) = delete;

    void Done() { done_ = true; }

private:
    Project& project_;
    UndoHistory undo_;
    UndoSnapshot before_;
    long nextID_;
    bool dirty_;
    std::string shownMenu_;
    std::string selected_;
    bool kept_ = false;
    bool done_ = false;
};

ButtonShape ShapeOf(const PageLabel& label);

// A generated button's overlay: the bitmap of the border's shape when the overlay library has
// one and the page asks for the button's shape, else a text overlay over the button's caption.
struct ButtonOverlay {
    std::string Bitmap; // "frames\<shape>.bmp"; empty for a text overlay
};
ButtonOverlay ChooseOverlay(const Project& project, const PageDesign& design);

// Gives the button just added (the last on the canvas) its overlay; `caption` is where the
// text prints, in `font`.
void SetButtonOverlay(Project& project, const ButtonOverlay& overlay, const std::string& text, const FontGroup& font,
                      const QRect& caption);

} // namespace mw
