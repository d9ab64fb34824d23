#pragma once

#include "document/Document.h"
#include "dvd/DvdStandard.h"
#include "menuplayer/MenuGraph.h"
#include "render/cDIB.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace mw {

// A rectangle in pixels.
struct DvdArea {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;

    bool operator==(const DvdArea&) const = default;
};

// What the plan needs to know of a movie or a picture.
struct DvdSource {
    int Width = 0;
    int Height = 0;
    double Fps = 0;
};
using DvdProbe = std::function<DvdSource(const std::string& file)>;

// Where a picture of this size lands in the 4:3 DVD frame: scaled with its shape kept, centred,
// the rest black.
DvdArea DvdPictureArea(int width, int height, TvStandard standard);
// A rectangle of a picture of this size, moved into the DVD frame. Tops and bottoms fall on even
// lines, as the subpicture's fields want.
DvdArea ToDvdFrame(const DvdArea& rect, int width, int height, TvStandard standard);

// The registers the commands share between menus and titles.
// g0: what the root menu does on entry (1: go to the starting menu, 2: to the title key's menu,
//     3: back to the menu shown last, after a title ended).
// g1: the button (times 1024) the next menu starts on; 0 for its own.
// g2: the number of the menu shown last.
// g3: one bit per title whose audio a menu chose, so that its default no longer applies.
inline constexpr int kTrackChoiceTitles = 15;

struct DvdButton {
    std::string ID;
    std::string Name; // "b1", "b2", ... in the menu's order
    DvdArea Source;   // the MenuRectangle, in the menu's pixels
    DvdArea Area;     // the same in the DVD frame
    // The neighbours' names by the remote's arrows (up, down, left, right); the button's own
    // name where the arrow does nothing.
    std::array<std::string, 4> Neighbours;
    std::string Command;
};

struct DvdMenu {
    std::string ID;
    std::string Name;
    int Number = 0; // among the menus of its language, from 1
    std::string Video;
    FrameRange Frames;
    // The background sound: a file of its own, or empty for the video's own streams; the
    // stream by its place among the audio streams of that file, none for silence.
    std::string AudioFile;
    std::vector<int> AudioStreams;
    DvdSource Picture;
    bool Still = false;
    std::vector<std::string> Entries; // "root", "ptt", "audio", "subtitle"
    std::string Pre;
    std::string Post;
    std::vector<DvdButton> Buttons;
    std::array<Colour, 3> Colours{}; // of the overlays' indexes 1 to 3
};

struct DvdLanguage {
    std::string Code;
    std::vector<DvdMenu> Menus;
    int StartMenu = 0; // numbers of its menus, from 1; a set without menus is left out
    int RootMenu = 0;
    int TitleKeyMenu = 0;
};

struct DvdTitle {
    std::string ID;
    int Number = 0; // from 1
    std::string Movie;
    FrameRange Frames;
    double Fps = 0;
    std::vector<long> ChapterStarts; // frames of the movie; the first is the title's start
    std::vector<std::string> AudioTracks;    // trackIDs, in the DVD's stream order
    std::vector<std::string> SubtitleTracks; // trackIDs
    std::vector<int> AudioStreams;           // their places among the movie's audio streams
    std::string Pre;
    std::string Post;
};

struct DvdPlan {
    TvStandard Standard = TvStandard::Pal;
    std::vector<DvdLanguage> Languages;
    std::vector<DvdTitle> Titles;
    std::string FirstPlay;    // commands of the disc's first program chain
    std::string TitleKeyMenu; // commands of the disc's title menu
    // What the disc cannot do as the project says, each in words that name the element.
    std::vector<std::string> Unsupported;
};

// The DVD-Video the project becomes: every language set, or only the one whose code is given.
// `colours` are the overlay colours that menus without their own use. A language code that
// names no set gives a plan without languages and the reason in Unsupported.
DvdPlan PlanDvd(const Document& doc, const std::array<Colour, 3>& colours, TvStandard standard,
                const std::string& language, const DvdProbe& probe);

// The title's chapter starts as frames of its transcode (from 0, at the standard's rate):
// where the transcode puts a key frame and the disc a chapter mark.
std::vector<long> DvdChapterFrames(const DvdTitle& title, TvStandard standard);

// The chapter's place on the DVD (from 1) among the title's chapter starts; 0 when the frame
// starts none.
int DvdChapterNumber(const DvdTitle& title, long startFrame);

} // namespace mw
