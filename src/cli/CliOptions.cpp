#include "cli/CliOptions.h"

#include "cli/CliOverlayCommands.h"
#include "core/Text.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

namespace mw {

namespace {

// "-1" is a frame number, not an option.
bool IsNegativeNumber(const std::string& a)
{
    return a.size() > 1 && a[0] == '-' && a.find_first_not_of("0123456789", 1) == std::string::npos;
}

// A stream number of --default-audio or --default-subtitle: digits, or "none" for -1.
std::optional<int> StreamChoice(const std::string& value)
{
    if (Lower(value) == "none")
        return -1;
    const std::optional<long> stream = DigitsNumber(value, 4);
    return stream ? std::optional(static_cast<int>(*stream)) : std::nullopt;
}

// A number such as "25" or "29.97".
std::optional<double> DecimalNumber(const std::string& value)
{
    double fps = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), fps);
    if (error != std::errc() || end != value.data() + value.size())
        return std::nullopt;
    return fps;
}

// Everything but the menu commands' own options.
CliParseResult ParseCommonOptions(const std::vector<std::string>& args)
{
    CliParseResult result;
    CliOptions& o = result.Options;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool hasValue = i + 1 < args.size();
        if (a == "--help" || a == "-h") {
            o.Help = true;
        } else if (a == "--version") {
            o.Version = true;
        } else if (a == "-o" || a == "--output") {
            if (!hasValue) {
                result.Error = "option " + a + " needs a file name";
                return result;
            }
            o.Output = args[++i];
        } else if (a == "--answer") {
            const std::string value = hasValue ? Lower(args[++i]) : std::string();
            if (value == "yes")
                o.Answer = PromptAnswer::Yes;
            else if (value == "no")
                o.Answer = PromptAnswer::No;
            else if (value == "cancel")
                o.Answer = PromptAnswer::Cancel;
            else {
                result.Error = "--answer takes yes, no or cancel";
                return result;
            }
        } else if (a == "--next") {
            o.Next = true;
        } else if (a == "--fps") {
            o.Fps = hasValue ? DecimalNumber(args[++i]) : std::nullopt;
            if (!o.Fps) {
                result.Error = "--fps takes a number of frames per second";
                return result;
            }
        } else if (a == "--audio") {
            if (!hasValue) {
                result.Error = "--audio needs a file name";
                return result;
            }
            o.Audio = args[++i];
        } else if (a == "--default-audio" || a == "--default-subtitle") {
            const std::optional<int> stream = hasValue ? StreamChoice(args[++i]) : std::nullopt;
            if (!stream) {
                result.Error = a + " takes a stream number or none";
                return result;
            }
            (a == "--default-audio" ? o.DefaultAudio : o.DefaultSubtitle) = stream;
        } else if (a == "--lang") {
            if (!hasValue || args[i + 1].empty()) {
                result.Error = "--lang needs a language code";
                return result;
            }
            o.DefLang = args[++i];
        } else if (a == "--count" || a == "--chapters" || a == "--every" || a == "--import" || a == "--manual") {
            if (!hasValue) {
                result.Error = a + " needs a value";
                return result;
            }
            std::optional<std::string>& value = a == "--count" || a == "--chapters" ? o.ChapCount
                                                : a == "--every"  ? o.ChapEvery
                                                : a == "--import" ? o.ChapImport
                                                                  : o.ChapManual;
            value = args[++i];
        } else if (a == "--all") {
            o.AllTitles = true;
        } else if (IsOverlayOption(a)) {
            if (!hasValue) {
                result.Error = a + " needs a value";
                return result;
            }
            o.Values[a] = args[++i];
        } else if (a.size() > 1 && a[0] == '-' && !IsNegativeNumber(a)) {
            result.Error = "unknown option " + a;
            return result;
        } else if (o.Command.empty()) {
            o.Command = a;
        } else {
            o.Arguments.push_back(a);
        }
    }
    return result;
}

} // namespace

CliParseResult ParseCliOptions(const std::vector<std::string>& args)
{
    MenuCliOptions menu;
    struct Option {
        const char* Name;
        const char* Command; // the only command that takes it
        std::optional<std::string>* Value;
    };
    const Option table[] = {
        {"--video", "add-menu", &menu.Video},      {"--from-menu", "add-menu", &menu.FromMenu},
        {"--start", "add-menu", &menu.Start},      {"--end", "add-menu", &menu.End},
        {"--type", "add-menu", &menu.Type},        {"--name", "add-menu", &menu.Name},
        {"--exit", "add-menu", &menu.Exit},        {"--picture", "add-menu", nullptr},
        {"--overlay", "add-button", &menu.Overlay}, {"--reset-position", "set-overlay", nullptr},
        {"--from-picture", "set-overlay", &menu.FromPicture},
        {"--prepare-only", "build", nullptr},
        {"--per-page", "chapter-menu", &menu.PerPage}, {"--main", "chapter-menu", &menu.Main},
        {"--per-page", "title-menu", &menu.PerPage}, {"--main", "setup-menu", &menu.Main},
        {"--motion", "chapter-menu", &menu.Motion}, {"--motion", "title-menu", &menu.Motion},
        {"--force", "buttons-from-picture", &menu.Force}, {"--no-overlays", "buttons-from-picture", nullptr},
        {"--set", "buttons-from-picture", &menu.Set},
        {"--iso", "dvd", &menu.Iso}, {"--standard", "dvd", &menu.Standard},
        {"--motion", "wizard", &menu.Motion}, {"--chapters-every", "wizard", &menu.ChaptersEvery},
        {"--title-menu", "wizard", nullptr}, {"--chapter-menus", "wizard", nullptr},
        {"--setup-menus", "wizard", nullptr},
    };
    bool prepareOnly = false;
    std::vector<std::string> rest;
    std::string error;
    std::vector<const Option*> given;
    for (std::size_t i = 0; i < args.size() && error.empty(); ++i) {
        const std::string& a = args[i];
        const Option* option = nullptr;
        for (const Option& o : table) {
            if (a == o.Name && !option)
                option = &o;
        }
        if (!option) {
            rest.push_back(a);
            continue;
        }
        given.push_back(option);
        if (a == "--picture") {
            while (i + 1 < args.size() && !args[i + 1].starts_with("--"))
                menu.Pictures.push_back(args[++i]);
            if (menu.Pictures.empty())
                error = "--picture needs at least one picture";
        } else if (a == "--reset-position") {
            menu.ResetPosition = true;
        } else if (a == "--prepare-only") {
            prepareOnly = true;
        } else if (a == "--no-overlays") {
            menu.NoOverlays = true;
        } else if (a == "--title-menu" || a == "--chapter-menus" || a == "--setup-menus") {
            (a == "--title-menu" ? menu.TitleMenu : a == "--chapter-menus" ? menu.ChapterMenus : menu.SetupMenus) = true;
        } else if (i + 1 < args.size()) {
            *option->Value = args[++i];
        } else {
            error = a + " needs a value";
        }
    }
    CliParseResult parsed = ParseCommonOptions(rest);
    parsed.Options.Menu = std::move(menu);
    parsed.Options.PrepareOnly = prepareOnly;
    if (parsed.Error.empty() && !error.empty())
        parsed.Error = error;
    // An option some commands share is listed once for each of them.
    const auto takes = [&](const Option* option) {
        return std::any_of(std::begin(table), std::end(table), [&](const Option& o) {
            return std::string_view(o.Name) == option->Name && parsed.Options.Command == o.Command;
        });
    };
    for (const Option* option : given) {
        if (parsed.Error.empty() && !takes(option))
            parsed.Error = std::string("the option ") + option->Name + " belongs to " + option->Command;
    }
    return parsed;
}
std::optional<long> DigitsNumber(const std::string& text, std::size_t digits)
{
    if (text.empty() || text.size() > digits || text.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    return std::stol(text);
}

std::optional<double> MotionSeconds(const std::string& text)
{
    const std::optional<double> seconds = DecimalNumber(text);
    return seconds ? std::optional(std::max(*seconds, 0.0)) : std::nullopt;
}

std::string CliUsage()
{
    return "Usage: menuwright-cli COMMAND [ARGUMENTS] [OPTIONS]\n"
           "\n"
           "Commands:\n"
           "  new MOVIE.avi -o PROJECT.xml      a new project around a movie\n"
           "      [--default-audio N|none] [--default-subtitle N|none] [--lang CODE]\n"
           "  resave IN.xml [-o OUT.xml]        read a project and write it again\n"
           "  check PROJECT.xml                 report dangling references and missing media\n"
           "  normalize PROJECT.xml [-o OUT.xml] renumber all objects 1..N, then save\n"
           "  tracks MOVIE.avi                  list the streams as track rows, then the fps\n"
           "  keyframe MOVIE.avi FRAME [--next] the key frame nearest to FRAME (or the next one)\n"
           "  grab MOVIE.avi FRAME -o OUT.bmp   save a frame as a 24-bit bitmap (-1: the first)\n"
           "  streamname MOVIE.avi INDEX NAME   write a stream's name into the file\n"
           "  add-title PROJECT.xml MOVIE...    add each movie as a title, with its default tracks\n"
           "  chapters PROJECT.xml TITLE_ID (--count N | --every MINUTES | --import FILE.txt |\n"
           "      --manual START-END[:NAME],...) [--all]\n"
           "                                    make the chapters of a title, or of all titles\n"
           "  refresh-title PROJECT.xml TITLE_ID read a title's movie again\n"
           "  remove-title PROJECT.xml TITLE_ID remove a title and the first menu per language using it\n"
           "  add-lang PROJECT.xml CODE         add a language set\n"
           "  add-menu PROJECT.xml (--video FILE | --picture PIC... [--fps F] | --from-menu MENU_ID)\n"
           "      [--start N] [--end N] [--type TYPE] [--name NAME] [--exit create-after|again|MENU_ID]\n"
           "      [--lang CODE|new]               add a menu and print its identifier\n"
           "  remove-menu PROJECT.xml MENU_ID   remove a menu\n"
           "  remove-lang PROJECT.xml CODE      remove a language set with its menus\n"
           "  add-button PROJECT.xml MENU_ID LEFT TOP WIDTH HEIGHT [--overlay SHAPE]\n"
           "                                    add a button and print its identifier\n"
           "  remove-button PROJECT.xml BUTTON_ID...  remove buttons\n"
           "  set-nav PROJECT.xml BUTTON_ID up|down|left|right BUTTON_ID|none\n"
           "  set-action PROJECT.xml BUTTON_ID|MENU_ID:enter|MENU_ID:exit ACTION...|none\n"
           "      ACTION: play:TITLE[:CHAPTER] resume:TITLE[:CHAPTER] menu:MENU_ID button:BUTTON_ID\n"
           "              audio:TITLE:TRACK subtitle:TITLE:TRACK\n"
           "  set-overlay PROJECT.xml BUTTON_ID... SHAPE [--width N] [--reset-position] [--text T]\n"
           "      [--font \"Family[,B][,I]\"] [--font-size PT] [--outline N] [--shadow 4RB]\n"
           "  set-overlay PROJECT.xml BUTTON_ID... --from-picture PICTURE [--transparent X,Y]\n"
           "                                    a picture as a new overlay of the library, on the buttons\n"
           "  set-colors PROJECT.xml MENU_ID COLOR1 COLOR2 COLOR3\n"
           "  align PROJECT.xml left|top|right|bottom REFERENCE_ID BUTTON_ID...\n"
           "  same-size PROJECT.xml width|height|both REFERENCE_ID BUTTON_ID...\n"
           "  move-button PROJECT.xml BUTTON_ID LEFT TOP [WIDTH HEIGHT]\n"
           "  menus PROJECT.xml                 the language sets, menus, buttons and actions as text\n"
           "  export-template PROJECT.xml MENU_ID -o TEMPLATE.xml\n"
           "                                    write a menu as a template file\n"
           "  insert-template PROJECT.xml TEMPLATE.xml [--lang CODE]\n"
           "                                    insert a template as a new menu, print its identifier\n"
           "  chapter-menu PROJECT.xml TITLE_ID -o MENU.avi [--per-page 6|8] [--motion SECONDS]\n"
           "      [--main MENU_ID] [--lang CODE]  chapter menus, a page of thumbnails each, with\n"
           "                                    the layout of section ChaptersMenu of the\n"
           "                                    settings; later pages add _2, _3... to the name;\n"
           "                                    with --motion each thumbnail plays that many\n"
           "                                    seconds of its chapter; prints the new menus'\n"
           "                                    identifiers\n"
           "  title-menu PROJECT.xml -o MENU.avi [--per-page 6|8] [--motion SECONDS] [--lang CODE]\n"
           "                                    title menus, a page of thumbnails each, with\n"
           "                                    the layout of section TitleMenu of the settings;\n"
           "                                    --motion as for chapter-menu; prints the new\n"
           "                                    menus' identifiers\n"
           "  setup-menu PROJECT.xml TITLE_ID -o MENU.avi [--main MENU_ID] [--lang CODE]\n"
           "                                    a still setup menu choosing the title's audio and\n"
           "                                    subtitle streams, with the layout of section\n"
           "                                    SetupMenu of the settings; prints its identifier\n"
           "  movie-with-chapters MOVIE -o PROJECT.xml (--chapters N | --every MINUTES)\n"
           "                                    a new project that plays the movie through its\n"
           "                                    chapters behind the program folder's black.avi as\n"
           "                                    an intro menu with no buttons\n"
           "  movies-with-menu MOVIE... -o PROJECT.xml [--chapters N | --every MINUTES]\n"
           "                                    a new project with a title per movie and a still\n"
           "                                    title menu, PROJECT_menu.avi beside the project;\n"
           "                                    prints the new menus' identifiers\n"
           "  wizard MOVIE... -o PROJECT.xml [--title-menu] [--chapter-menus] [--setup-menus]\n"
           "      [--chapters-every MINUTES | --chapters N] [--motion SECONDS]\n"
           "                                    the project wizard: a title per movie, chapters\n"
           "                                    for every title when asked for, and the menus\n"
           "                                    named (without any: a title menu for several\n"
           "                                    movies, chapter menus for titles with chapters),\n"
           "                                    beside the first movie and each title's movie,\n"
           "                                    made and linked; prints the files made\n"
           "  walk PROJECT.xml [--lang CODE]    press every key of a remote through the menus of a\n"
           "                                    language set; list the dead ends and the menus and\n"
           "                                    buttons no path reaches; exit 1 on a dead end\n"
           "  buttons-from-picture PROJECT.xml MENU_ID PICTURE [--set N] [--force SIZE]\n"
           "      [--no-overlays]               the highlight areas of a picture (runs of one colour\n"
           "                                    other than the most common one, at least 5 by 5\n"
           "                                    pixels, at most 20) as buttons of the menu, each\n"
           "                                    with its area as its overlay in the program folder's\n"
           "                                    overlays/DVDSubEdit/MENU_ID_N.bmp; prints the new\n"
           "                                    buttons' identifiers\n"
           "  map PROJECT.xml -o MAP.svg        draw the menus and their links with Graphviz's dot\n"
           "  pic2avi PICTURE... -o OUT.avi --fps F [--audio FILE]\n"
           "                                    a menu video: five seconds of one picture, or one\n"
           "                                    frame per picture, MPEG-4 by our own encoder\n"
           "  overlay SHAPE WIDTHxHEIGHT -o OUT.bmp [--width N] [--colors C1,C2,C3]\n"
           "      [--text T] [--font \"Family[,B][,I]\"] [--font-size PT] [--outline N] [--shadow 4RB]\n"
           "                                    a button overlay as a 4-bit bitmap: *Rect, *Oval,\n"
           "                                    *Shape1, *Text or a file of the overlay library\n"
           "  build PROJECT.xml [--prepare-only] [-o OUT.divx]\n"
           "                                    the DivX file of the project, as Create DivX makes it\n"
           "                                    with the settings of the program folder; the muxer\n"
           "                                    and the scripts run through Wine. --prepare-only\n"
           "                                    writes every file into its tmp folder, runs nothing\n"
           "                                    and cleans nothing; -o names the result\n"
           "  dvd PROJECT.xml -o FOLDER [--iso OUT.iso] [--standard pal|ntsc] [--lang CODE]\n"
           "                                    the project as a DVD-Video in FOLDER (VIDEO_TS), made\n"
           "                                    with ffmpeg, spumux and dvdauthor; --iso also writes a\n"
           "                                    disc image; --standard defaults to the project's frame\n"
           "                                    rate; --lang exports one language set's menus only\n"
           "  overlay-from-picture PICTURE -o OUT.bmp [--transparent X,Y]\n"
           "                                    a picture in 16 colours as an overlay, the colour of\n"
           "                                    pixel X,Y (default 0,0) transparent\n"
           "\n"
           "Options:\n"
           "  -o, --output FILE          where to save; without it the project is saved in place\n"
           "  --answer yes|no|cancel     the answer to every question (default: its default button)\n"
           "  --next                     keyframe: the first key frame at or after FRAME\n"
           "  --default-audio N|none     new: the default audio track, by stream number\n"
           "  --default-subtitle N|none  new: the default subtitle track, by stream number\n"
           "  --lang CODE                new: the menu language instead of the setting defLang;\n"
           "                             chapter-menu, title-menu, setup-menu: the language set of the\n"
           "                             new menus; walk: the language set to walk (default:\n"
           "                             defaultMenuLanguage); dvd: the one language set to export\n"
           "  --fps F                    pic2avi: frames per second, such as 25 or 29.97\n"
           "  --audio FILE               pic2avi: an audio file to add as a second stream\n"
           "  --count N                  chapters: N chapters of equal length\n"
           "  --chapters N               movie-with-chapters, movies-with-menu, wizard: N chapters a\n"
           "                             title\n"
           "  --every MINUTES            chapters, movie-with-chapters, movies-with-menu: a chapter\n"
           "                             every MINUTES minutes\n"
           "  --chapters-every MINUTES   wizard: a chapter every MINUTES minutes in every title\n"
           "  --title-menu, --chapter-menus, --setup-menus\n"
           "                             wizard: the menus to make\n"
           "  --motion SECONDS           chapter-menu, title-menu, wizard: thumbnails that play\n"
           "                             that many seconds\n"
           "  --import FILE.txt          chapters: the times after [CHAPTERS] in the file\n"
           "  --manual LIST              chapters: START-END[:NAME],... in place of the chapters\n"
           "  --all                      chapters: the same for every title\n"
           "  --prepare-only             build: write every file, run no tool, clean nothing\n"
           "  --set N                    buttons-from-picture: the N-th group of twenty areas\n"
           "  --force SIZE               buttons-from-picture: every button SIZE by SIZE pixels\n"
           "  --no-overlays              buttons-from-picture: the default overlay, no files written\n"
           "  --iso OUT.iso              dvd: also an ISO image of the disc\n"
           "  --standard pal|ntsc        dvd: the TV standard (default: by the project's rate)\n"
           "  --help                     show this text\n"
           "  --version                  show the version\n"
           "\n"
           "Messages go to standard output in order. Exit status: 0 success, 1 check found faults,\n"
           "a media command failed, a movie of the project could not be read or a build's tool was\n"
           "missing or failed, 2 the command line or the input could not be read, 3 the result could\n"
           "not be saved, 4 the command was cancelled (--answer cancel), 5 an unexpected error\n"
           "stopped the command. A project is saved only with 0; build never saves it.\n"
           "The program folder is $MENUWRIGHT_HOME when set.\n";
}

} // namespace mw
