#pragma once

#include "core/Prompt.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace mw {

// The options that only one command takes.
struct MenuCliOptions {
    std::optional<std::string> Video;    // --video FILE
    std::vector<std::string> Pictures;   // --picture PIC...
    std::optional<std::string> FromMenu; // --from-menu MENU_ID
    std::optional<std::string> Start;    // --start N
    std::optional<std::string> End;      // --end N
    std::optional<std::string> Type;     // --type TYPE
    std::optional<std::string> Name;     // --name NAME
    std::optional<std::string> Exit;     // --exit create-after|again|MENU_ID
    std::optional<std::string> Overlay;  // --overlay SHAPE, of add-button
    bool ResetPosition = false;          // --reset-position, of set-overlay
    std::optional<std::string> FromPicture; // --from-picture PICTURE, of set-overlay
    std::optional<std::string> PerPage;  // --per-page 6|8, of chapter-menu and title-menu
    std::optional<std::string> Main;     // --main MENU_ID, of chapter-menu and setup-menu
    std::optional<std::string> Motion;   // --motion SECONDS, of chapter-menu, title-menu and wizard
    std::optional<std::string> Force;    // --force SIZE, of buttons-from-picture
    bool NoOverlays = false;             // --no-overlays, of buttons-from-picture
    std::optional<std::string> Set;      // --set N, of buttons-from-picture
    std::optional<std::string> Iso;      // --iso OUT.iso, of dvd
    std::optional<std::string> Standard; // --standard pal|ntsc, of dvd
    // The wizard's menus and the chapters it makes for every title.
    bool TitleMenu = false;              // --title-menu
    bool ChapterMenus = false;           // --chapter-menus
    bool SetupMenus = false;             // --setup-menus
    std::optional<std::string> ChaptersEvery; // --chapters-every MINUTES
};

// A whole number written in digits only, at most `digits` of them. Nothing otherwise.
std::optional<long> DigitsNumber(const std::string& text, std::size_t digits);

// The seconds of --motion; below 0 is a still menu, as in the window's box. Nothing when the
// text is no number.
std::optional<double> MotionSeconds(const std::string& text);

// The command line, taken apart: a command word, its plain arguments and the options.
struct CliOptions {
    std::string Command;
    std::vector<std::string> Arguments;
    std::optional<std::string> Output;       // -o FILE
    std::optional<PromptAnswer> Answer;      // --answer yes|no|cancel
    std::optional<int> DefaultAudio;         // --default-audio N|none; none is -1
    std::optional<int> DefaultSubtitle;      // --default-subtitle N|none
    std::optional<std::string> DefLang;      // --lang CODE
    bool Next = false;                       // --next
    std::optional<double> Fps;               // --fps F
    std::optional<std::string> Audio;        // --audio FILE
    std::optional<std::string> ChapCount;    // --count N
    std::optional<std::string> ChapEvery;    // --every MINUTES
    std::optional<std::string> ChapImport;   // --import FILE.txt
    std::optional<std::string> ChapManual;   // --manual START-END[:NAME],...
    bool AllTitles = false;                  // --all
    bool PrepareOnly = false;                // --prepare-only, of build
    std::map<std::string, std::string> Values; // the overlay options (--width, --text, ...), by name
    MenuCliOptions Menu;
    bool Help = false;
    bool Version = false;

    // An overlay option's value, or nothing when it was not given.
    std::optional<std::string> Value(const std::string& name) const
    {
        const auto found = Values.find(name);
        return found == Values.end() ? std::nullopt : std::optional(found->second);
    }
};

struct CliParseResult {
    CliOptions Options;
    std::string Error; // empty when the line was understood
};

CliParseResult ParseCliOptions(const std::vector<std::string>& args);

std::string CliUsage();

} // namespace mw
