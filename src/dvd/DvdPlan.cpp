#include "dvd/DvdPlan.h"

#include "build/MuxScripts.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "document/ObjectIds.h"
#include "document/TreeQueries.h"
#include "media/ChapterNodes.h"
#include "media/TitleNodes.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace mw {

namespace {

// A DVD has at most this many audio streams, and buttons per menu.
constexpr std::size_t kDvdAudioStreams = 8;
constexpr std::size_t kDvdButtons = 36;

const DocNode* NodeOf(const DocTree& tree, const std::string& id)
{
    return IsReferenceValue(id) ? tree.ObjectNode(Trim(id)) : nullptr;
}

std::vector<const DocNode*> TracksOfType(const DocNode& parent, const std::string& type, const std::string& sourceID)
{
    std::vector<const DocNode*> tracks;
    for (const auto& child : parent) {
        if (EqualsNoCase(child->Text, "MediaTrack") && EqualsNoCase(GetPropertyInNode(*child, "type"), type) &&
            (sourceID.empty() || Trim(GetPropertyInNode(*child, "mediaSourceID")) == sourceID))
            tracks.push_back(child.get());
    }
    std::stable_sort(tracks.begin(), tracks.end(), [](const DocNode* a, const DocNode* b) {
        return LeadingNumber(GetPropertyInNode(*a, "trackID")) < LeadingNumber(GetPropertyInNode(*b, "trackID"));
    });
    return tracks;
}

// The track's place among the audio streams of its file, as far as the project lists them.
int AudioOrdinal(const DocNode& track)
{
    const DocNode* parent = track.Parent();
    if (!parent)
        return 0;
    const auto tracks = TracksOfType(*parent, "audio", Trim(GetPropertyInNode(track, "mediaSourceID")));
    return int(std::find(tracks.begin(), tracks.end(), &track) - tracks.begin());
}

std::string Number(long value)
{
    return std::to_string(value);
}

DvdArea EvenLines(DvdArea area, int frameHeight)
{
    const int top = std::clamp(area.Top - area.Top % 2, 0, frameHeight);
    int bottom = std::clamp(area.Top + area.Height, 0, frameHeight);
    bottom += bottom % 2 && bottom < frameHeight ? 1 : 0;
    return {area.Left, top, area.Width, std::max(0, bottom - top)};
}

class Planner {
public:
    Planner(const Document& doc, TvStandard standard, const DvdProbe& probe)
        : doc_(doc), graph_(doc), probe_(probe)
    {
        plan_.Standard = standard;
    }

    DvdPlan Make(const std::array<Colour, 3>& colours, const std::string& language)
    {
        PlanTitles();
        const DocNode* root = doc_.Tree.Root();
        std::vector<const DocNode*> sets = root ? graph_.LanguageSets(*root) : std::vector<const DocNode*>();
        if (!language.empty()) {
            std::string error;
            const DocNode* chosen = graph_.LanguageSet(language, &error);
            sets = chosen ? std::vector<const DocNode*>{chosen} : std::vector<const DocNode*>();
            if (!chosen)
                plan_.Unsupported.push_back(error);
        }
        // A set without menus has nothing to show, and its entry would lead nowhere on the disc.
        std::erase_if(sets, [this](const DocNode* set) {
            if (!graph_.Menus(*set).empty())
                return false;
            plan_.Unsupported.push_back("language set \"" + Trim(GetPropertyInNode(*set, "languageCode")) +
                                        "\" has no menus of its own and is left out");
            return true;
        });
        // Menus are numbered first, as commands name menus that come later.
        for (std::size_t l = 0; l < sets.size(); ++l) {
            int number = 0;
            for (const DocNode* menu : graph_.Menus(*sets[l]))
                menus_[ObjectIdOf(*menu)] = {int(l), ++number};
        }
        for (const DocNode* set : sets) {
            for (const DocNode* menu : graph_.Menus(*set))
                PlaceButtons(*menu);
        }
        std::array<Colour, 3> current = colours;
        for (std::size_t l = 0; l < sets.size(); ++l)
            plan_.Languages.push_back(PlanLanguage(*sets[l], int(l), current));
        if (!plan_.Languages.empty()) {
            plan_.FirstPlay = "g0 = 1; g1 = 0; g3 = 0; jump titleset 1 menu entry root;";
            plan_.TitleKeyMenu = "g0 = 2; jump titleset 1 menu entry root;";
        } else if (!plan_.Titles.empty()) {
            plan_.FirstPlay = "jump title 1;";
        }
        for (DvdTitle& title : plan_.Titles) {
            if (!plan_.Languages.empty())
                title.Post = "g0 = 3; call menu entry root;";
        }
        return std::move(plan_);
    }

private:
    struct MenuPlace {
        int Language = 0;
        int Number = 0;
    };
    struct ButtonPlace {
        int Number = 0;
        DvdArea Source;
        DvdArea Area;
    };

    DvdSource Probe(const std::string& file)
    {
        const auto known = sources_.find(file);
        return known != sources_.end() ? known->second : sources_[file] = probe_(file);
    }

    // The buttons a menu keeps on the disc, numbered as the DVD numbers them: those that show
    // on the menu's picture, up to the most a DVD menu has.
    void PlaceButtons(const DocNode& menu)
    {
        const DvdSource picture = Probe(graph_.BackgroundFile(menu));
        const std::string label = graph_.MenuLabel(ObjectIdOf(menu));
        int number = 0;
        for (const DocNode* button : graph_.Buttons(menu)) {
            ButtonPlace place;
            if (const DocNode* rect = ChildNamed(button, "MenuRectangle")) {
                const auto row = [rect](const char* name) { return int(LeadingNumber(GetPropertyInNode(*rect, name))); };
                place.Source = {row("left"), row("top"), row("width"), row("height")};
            }
            place.Area = ToDvdFrame(place.Source, picture.Width, picture.Height, plan_.Standard);
            const std::string id = ObjectIdOf(*button);
            if (place.Area.Width <= 0 || place.Area.Height <= 0)
                plan_.Unsupported.push_back("button " + id + " of " + label +
                                            " lies outside the menu's picture and is left out");
            else if (std::size_t(number) == kDvdButtons)
                plan_.Unsupported.push_back("button " + id + " of " + label +
                                            " is left out, as a DVD menu has at most 36 buttons");
            else {
                place.Number = ++number;
                buttons_[id] = place;
            }
        }
    }

    // The button's number on the disc; 0 when the disc leaves it out.
    int ButtonNumber(const std::string& id) const
    {
        const auto place = buttons_.find(Trim(id));
        return place == buttons_.end() ? 0 : place->second.Number;
    }

    const DvdTitle* TitleOf(const std::string& id) const
    {
        for (const DvdTitle& title : plan_.Titles) {
            if (title.ID == Trim(id))
                return &title;
        }
        return nullptr;
    }

    void PlanTitles()
    {
        for (const DocNode* node : TitleNodes(doc_)) {
            DvdTitle title;
            title.ID = ObjectIdOf(*node);
            title.Number = int(plan_.Titles.size()) + 1;
            title.Movie = TitleFile(doc_, *node);
            graph_.PlayRange(title.ID, title.ID, title.Frames);
            title.Fps = Probe(title.Movie).Fps;
            title.ChapterStarts.push_back(title.Frames.Start);
            for (const DocNode* chapter : ChapterNodesOf(*node)) {
                FrameRange frames;
                if (graph_.PlayRange(title.ID, ObjectIdOf(*chapter), frames) && frames.Start > title.Frames.Start &&
                    frames.Start <= title.Frames.End)
                    title.ChapterStarts.push_back(frames.Start);
            }
            std::sort(title.ChapterStarts.begin(), title.ChapterStarts.end());
            title.ChapterStarts.erase(std::unique(title.ChapterStarts.begin(), title.ChapterStarts.end()),
                                      title.ChapterStarts.end());
            PlanTracks(*node, title);
            plan_.Titles.push_back(std::move(title));
        }
    }

    void PlanTracks(const DocNode& node, DvdTitle& title)
    {
        const DocNode* source = MediaSourceOf(node);
        const std::string sourceID = source ? ObjectIdOf(*source) : std::string();
        const std::string label = "title " + title.ID;
        for (const DocNode* track : TracksOfType(node, "audio", {})) {
            const std::string trackID = Trim(GetPropertyInNode(*track, "trackID"));
            if (Trim(GetPropertyInNode(*track, "mediaSourceID")) != sourceID)
                plan_.Unsupported.push_back(label + ": audio track " + trackID +
                                            " comes from another file, which the disc leaves out");
            else if (title.AudioTracks.size() == kDvdAudioStreams)
                plan_.Unsupported.push_back(label + ": audio track " + trackID +
                                            " is left out, as a DVD title has at most 8 audio streams");
            else {
                title.AudioTracks.push_back(trackID);
                title.AudioStreams.push_back(AudioOrdinal(*track));
            }
        }
        for (const DocNode* track : TracksOfType(node, "subtitle", {}))
            title.SubtitleTracks.push_back(Trim(GetPropertyInNode(*track, "trackID")));
        if (!title.SubtitleTracks.empty())
            plan_.Unsupported.push_back(label + ": its subtitle tracks are not carried to the disc");

        const std::string defaultAudio = Trim(GetPropertyInNode(node, "defaultAudioTrack"));
        const auto audio = std::find(title.AudioTracks.begin(), title.AudioTracks.end(), defaultAudio);
        if (audio == title.AudioTracks.end())
            return;
        const std::string set = "audio = " + Number(audio - title.AudioTracks.begin()) + ";";
        title.Pre = title.Number <= kTrackChoiceTitles
                        ? "if ((g3 & " + Number(1L << (title.Number - 1)) + ") eq 0) " + set
                        : set;
    }

    DvdLanguage PlanLanguage(const DocNode& set, int index, std::array<Colour, 3>& colours)
    {
        DvdLanguage language;
        language.Code = Lower(Trim(GetPropertyInNode(set, "languageCode")));
        const std::vector<const DocNode*> menus = graph_.Menus(set);
        // The number of one of this set's menus; a menu of another set cannot be reached from
        // this language's menus on a disc, so the set's own first menu stands in for it.
        const auto numberOf = [&](const std::string& id, const char* role) {
            const auto place = menus_.find(Trim(id));
            if (place == menus_.end())
                return 0;
            if (place->second.Language != index) {
                plan_.Unsupported.push_back("language set \"" + language.Code + "\": its " + role + " " +
                                            graph_.MenuLabel(Trim(id)) +
                                            " belongs to another language set; its first menu stands in");
                return 0;
            }
            return place->second.Number;
        };
        std::vector<std::string> deadEnds;
        language.StartMenu = numberOf(graph_.StartMenu(set, deadEnds), "startingMenuID");
        language.RootMenu = numberOf(GetPropertyInNode(set, "rootMenuID"), "rootMenuID");
        std::string deadEnd;
        language.TitleKeyMenu = numberOf(graph_.KeyMenu(set, "title", deadEnd), "title menu");
        if (language.RootMenu == 0)
            language.RootMenu = language.StartMenu ? language.StartMenu : 1;
        if (language.StartMenu == 0)
            language.StartMenu = language.RootMenu;
        if (language.TitleKeyMenu == 0)
            language.TitleKeyMenu = language.RootMenu;

        for (std::size_t m = 0; m < menus.size(); ++m) {
            TakeMenuColours(menus[m], colours);
            language.Menus.push_back(PlanMenu(*menus[m], index, int(m) + 1, colours));
        }
        language.Menus[std::size_t(language.RootMenu - 1)].Entries.push_back("root");
        for (const auto& [type, entry] : {std::pair{"chapter", "ptt"}, {"audio", "audio"}, {"subtitle", "subtitle"}}) {
            const std::string_view wanted = type; // clang cannot capture a structured binding
            const auto ofType = std::find_if(menus.begin(), menus.end(), [wanted](const DocNode* menu) {
                return EqualsNoCase(GetPropertyInNode(*menu, "menuType"), wanted);
            });
            if (ofType != menus.end())
                language.Menus[std::size_t(ofType - menus.begin())].Entries.push_back(entry);
        }
        DvdMenu& root = language.Menus[std::size_t(language.RootMenu - 1)];
        root.Pre = RootDispatch(language) + root.Pre;
        return language;
    }

    // The root menu sends the disc on to the menu that g0 asks for.
    static std::string RootDispatch(const DvdLanguage& language)
    {
        std::string text;
        const auto go = [&](const std::string& when, int menu, const std::string& also) {
            if (menu != language.RootMenu)
                text += "if (" + when + ") { g0 = 0; " + also + "jump menu " + Number(menu) + "; } ";
        };
        go("g0 eq 1", language.StartMenu, "");
        go("g0 eq 2", language.TitleKeyMenu, "");
        for (const DvdMenu& menu : language.Menus)
            go("g0 eq 3 and g2 eq " + Number(menu.Number), menu.Number, "g1 = button; ");
        return text + "if (g0 eq 3) g1 = button; g0 = 0; ";
    }

    DvdMenu PlanMenu(const DocNode& node, int language, int menuNumber, const std::array<Colour, 3>& colours)
    {
        DvdMenu menu;
        menu.ID = ObjectIdOf(node);
        menu.Name = GetPropertyInNode(node, "menuName");
        menu.Number = menuNumber;
        menu.Colours = colours;
        menu.Video = graph_.BackgroundFile(node);
        std::vector<std::string> deadEnds;
        menu.Frames = graph_.Background(node, deadEnds);
        for (const std::string& deadEnd : deadEnds)
            plan_.Unsupported.push_back(deadEnd);
        menu.Picture = Probe(menu.Video);
        menu.Still = IsPictureMenu(menu.Video) || menu.Frames.End <= menu.Frames.Start;
        PlanMenuAudio(node, menu);
        const std::string label = graph_.MenuLabel(menu.ID);

        std::map<std::string, std::string> names;
        std::vector<const DocNode*> buttons;
        for (const DocNode* button : graph_.Buttons(node)) {
            const int number = ButtonNumber(ObjectIdOf(*button));
            if (number > 0) {
                names[ObjectIdOf(*button)] = "b" + Number(number);
                buttons.push_back(button);
            }
        }
        for (const DocNode* button : buttons)
            menu.Buttons.push_back(PlanButton(node, *button, language, names));

        const int start = std::max(1, ButtonNumber(graph_.StartButton(node, deadEnds)));
        menu.Pre = "g2 = " + Number(menu.Number) + "; " +
                   Commands(graph_.Actions(node, node, "enterAction"), language, label).Sets;
        if (!menu.Buttons.empty())
            menu.Pre += "if (g1 gt 0) { button = g1; g1 = 0; } else button = " + Number(1024L * start) + "; ";
        const ListCommands exit = Commands(graph_.Actions(node, node, "exitAction"), language, label);
        if (!exit.Jump.empty())
            menu.Post = exit.Sets + exit.Jump;
        else if (!menu.Still)
            menu.Post = exit.Sets + "jump cell 1;";
        Tidy(menu.Pre);
        Tidy(menu.Post);
        return menu;
    }

    void PlanMenuAudio(const DocNode& node, DvdMenu& menu)
    {
        const DocTree& tree = doc_.Tree;
        const DocNode* audio = NodeOf(tree, GetPropertyInNode(node, "backgroundAudioID"));
        const DocNode* video = NodeOf(tree, GetPropertyInNode(node, "backgroundVideoID"));
        if (!audio || !EqualsNoCase(audio->Text, "MediaTrack"))
            return;
        const std::string sourceID = Trim(GetPropertyInNode(*audio, "mediaSourceID"));
        if (!video || Trim(GetPropertyInNode(*video, "mediaSourceID")) != sourceID) {
            const DocNode* source = NodeOf(tree, sourceID);
            if (!source)
                return;
            menu.AudioFile = ResolveLocation(doc_.ProjectFile, GetPropertyInNode(*source, "location"));
        }
        menu.AudioStreams = {AudioOrdinal(*audio)};
    }

    DvdButton PlanButton(const DocNode& menu, const DocNode& node, int language,
                         const std::map<std::string, std::string>& names)
    {
        DvdButton button;
        button.ID = ObjectIdOf(node);
        button.Name = names.at(button.ID);
        const ButtonPlace& place = buttons_.at(button.ID);
        button.Source = place.Source;
        button.Area = place.Area;
        for (int d = 0; d < 4; ++d) {
            std::string deadEnd;
            const auto next = names.find(graph_.Neighbour(menu, node, Direction(d), deadEnd));
            button.Neighbours[std::size_t(d)] = next == names.end() ? button.Name : next->second;
        }
        const std::string label = "button " + button.ID + " of " + graph_.MenuLabel(ObjectIdOf(menu));
        const ListCommands select = Commands(graph_.Actions(menu, node, "selectAction"), language, label);
        button.Command = select.Sets + select.Jump;
        Tidy(button.Command);
        // dvdauthor wants a command for every button; one that does nothing keeps it highlighted.
        if (button.Command.empty())
            button.Command = "button = " + Number(1024L * ButtonNumber(button.ID)) + ";";
        return button;
    }

    struct ListCommands {
        std::string Sets; // register changes, which run first
        std::string Jump; // where the disc goes then; empty to stay
    };

    // A list of actions as DVD commands. A jump ends what a DVD runs, so the selections go
    // before it; a button picked after a menu change is handed to that menu through g1.
    ListCommands Commands(const ResolvedActions& actions, int language, const std::string& where)
    {
        ListCommands result;
        bool leftMenu = false;
        bool menuOnDisc = false;
        for (const ActionStep& step : actions.Steps) {
            const DvdTitle* title = TitleOf(step.TitleID);
            switch (step.What) {
            case ActionStep::Kind::SelectAudio:
            case ActionStep::Kind::SelectSubtitle:
                if (title)
                    result.Sets += TrackChoice(step, *title, where);
                break;
            case ActionStep::Kind::Play:
            case ActionStep::Kind::Resume:
                if (!title)
                    break;
                result.Jump = step.What == ActionStep::Kind::Resume ? "resume; " : "";
                result.Jump += "jump title " + Number(title->Number);
                if (step.Target != title->ID)
                    result.Jump += " chapter " + Number(std::max(1, DvdChapterNumber(*title, step.Frames.Start)));
                result.Jump += ";";
                break;
            case ActionStep::Kind::GoToMenu: {
                const auto place = menus_.find(step.Target);
                leftMenu = true;
                if (place == menus_.end() || place->second.Language != language) {
                    plan_.Unsupported.push_back(where + ": MenuTransitionAction to " + graph_.MenuLabel(step.Target) +
                                                " of another language set; a disc shows the menus of one "
                                                "language only");
                    menuOnDisc = false;
                    break;
                }
                menuOnDisc = true;
                result.Jump = "jump menu " + Number(place->second.Number) + ";";
                break;
            }
            case ActionStep::Kind::GoToButton: {
                // The player has checked that the button is one of the menu shown by then.
                const long value = 1024L * ButtonNumber(step.Target);
                if (value == 0 || (leftMenu && !menuOnDisc))
                    break;
                result.Sets += (leftMenu ? "g1 = " : "button = ") + Number(value) + "; ";
                break;
            }
            }
        }
        return result;
    }

    std::string TrackChoice(const ActionStep& step, const DvdTitle& title, const std::string& where)
    {
        const bool audio = step.What == ActionStep::Kind::SelectAudio;
        const std::vector<std::string>& tracks = audio ? title.AudioTracks : title.SubtitleTracks;
        const auto found = std::find(tracks.begin(), tracks.end(), step.Target);
        if (audio && found == tracks.end()) {
            plan_.Unsupported.push_back(where + ": AudioSelectAction picks track " + step.Target + " of title " +
                                        title.ID + ", which the disc leaves out");
            return {};
        }
        if (!audio)
            return "subtitle = " +
                   Number(step.Target.empty() || found == tracks.end() ? 0 : 64 + (found - tracks.begin())) + "; ";
        std::string text = "audio = " + Number(found - tracks.begin()) + "; ";
        if (title.Number <= kTrackChoiceTitles)
            text += "g3 = g3 | " + Number(1L << (title.Number - 1)) + "; ";
        else if (!title.Pre.empty())
            plan_.Unsupported.push_back(where + ": the track chosen for title " + title.ID +
                                        " gives way to its default track, as only the first 15 titles keep a choice");
        return text;
    }

    static void Tidy(std::string& commands)
    {
        commands = Trim(commands);
    }

    const Document& doc_;
    MenuGraph graph_;
    const DvdProbe& probe_;
    DvdPlan plan_;
    std::map<std::string, MenuPlace> menus_;
    std::map<std::string, ButtonPlace> buttons_;
    std::map<std::string, DvdSource> sources_;
};

} // namespace

DvdArea DvdPictureArea(int width, int height, TvStandard standard)
{
    const int frameHeight = DvdFrameHeight(standard);
    if (width <= 0 || height <= 0)
        return {0, 0, kDvdFrameWidth, frameHeight};
    // The frame shows 4:3; the picture's pixels are square.
    const double shape = double(width) / height;
    if (shape >= 4.0 / 3.0) {
        const int shown = int(std::lround(frameHeight * (4.0 / 3.0) / shape / 2)) * 2;
        return {0, (frameHeight - shown) / 2, kDvdFrameWidth, shown};
    }
    const int shown = int(std::lround(kDvdFrameWidth * shape / (4.0 / 3.0) / 2)) * 2;
    return {(kDvdFrameWidth - shown) / 2, 0, shown, frameHeight};
}

DvdArea ToDvdFrame(const DvdArea& rect, int width, int height, TvStandard standard)
{
    const DvdArea picture = DvdPictureArea(width, height, standard);
    const double sx = width > 0 ? double(picture.Width) / width : 1;
    const double sy = height > 0 ? double(picture.Height) / height : 1;
    // What lies beyond the picture never shows.
    const auto place = [](int origin, int from, int to, double scale, int low, int high) {
        return std::pair{std::clamp(origin + int(std::lround(from * scale)), low, high),
                         std::clamp(origin + int(std::lround(to * scale)), low, high)};
    };
    const auto [left, right] = place(picture.Left, rect.Left, rect.Left + rect.Width, sx, picture.Left,
                                     picture.Left + picture.Width);
    const auto [top, bottom] = place(picture.Top, rect.Top, rect.Top + rect.Height, sy, picture.Top,
                                     picture.Top + picture.Height);
    if (right <= left || bottom <= top)
        return {left, top, 0, 0};
    return EvenLines({left, top, right - left, bottom - top}, DvdFrameHeight(standard));
}

DvdPlan PlanDvd(const Document& doc, const std::array<Colour, 3>& colours, TvStandard standard,
                const std::string& language, const DvdProbe& probe)
{
    return Planner(doc, standard, probe).Make(colours, language);
}

std::vector<long> DvdChapterFrames(const DvdTitle& title, TvStandard standard)
{
    const double scale = title.Fps > 0 ? DvdFrameRate(standard).Fps() / title.Fps : 1;
    std::vector<long> frames;
    for (long start : title.ChapterStarts)
        frames.push_back(std::lround(double(start - title.Frames.Start) * scale));
    return frames;
}

int DvdChapterNumber(const DvdTitle& title, long startFrame)
{
    const auto found = std::find(title.ChapterStarts.begin(), title.ChapterStarts.end(), startFrame);
    return found == title.ChapterStarts.end() ? 0 : int(found - title.ChapterStarts.begin()) + 1;
}

} // namespace mw
