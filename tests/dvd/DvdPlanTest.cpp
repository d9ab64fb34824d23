#include "dvd/DvdAuthorXml.h"
#include "dvd/DvdExport.h"
#include "dvd/DvdPlan.h"
#include "dvd/GeneratedDvdProject.h"

#include "core/ScriptedPrompt.h"
#include "document/XmlToTreeView.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace mw::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// Two language sets. English: an intro that hands over to the main menu's second button, a
// still main menu with music and four buttons (tracks and resume, another title, a menu of the
// other language, a chapter), a chapter menu with a button beside its picture. German: one menu whose button leads to English.
// The first title has an audio track of another file and a subtitle track.
constexpr const char* kProject = R"(<DivXMediaManager menuVersion="1" objectID="1" defaultMenuLanguage="en" version="1.0">
<Media objectID="2">
<Title objectID="6" defaultAudioTrack="02wb" defaultSubtitleTrack="none">
<MediaSource objectID="7" mediaType="featureAvi" location="movie.avi"/>
<MediaTrack objectID="8" mediaSourceID="7" trackID="00dc" startFrame="0" endFrame="999" type="video"/>
<MediaTrack objectID="10" mediaSourceID="7" trackID="02wb" type="audio"/>
<MediaTrack objectID="9" mediaSourceID="7" trackID="01wb" type="audio"/>
<MediaTrack objectID="12" mediaSourceID="25" trackID="00wb" type="audio"/>
<MediaTrack objectID="13" mediaSourceID="7" trackID="03sb" type="subtitle"/>
<Chapter objectID="11"><MediaTrack objectID="14" mediaSourceID="7" trackID="00dc" startFrame="500" endFrame="999" type="video"/></Chapter>
<Chapter objectID="15"><MediaTrack objectID="17" mediaSourceID="7" trackID="00dc" startFrame="250" endFrame="499" type="video"/></Chapter>
</Title>
<Title objectID="16" defaultAudioTrack="none" defaultSubtitleTrack="none">
<MediaSource objectID="18" mediaType="featureAvi" location="second.avi"/>
<MediaTrack objectID="19" mediaSourceID="18" trackID="00dc" startFrame="0" endFrame="99" type="video"/>
</Title>
<MenuTracks objectID="20">
<MediaSource objectID="21" mediaType="menuAvi" location="menu.avi"/>
<MediaSource objectID="25" mediaType="menuAvi" location="music.mp3"/>
<MediaTrack objectID="22" mediaSourceID="21" trackID="00dc" startFrame="0" endFrame="49" type="video"/>
<MediaTrack objectID="23" mediaSourceID="21" trackID="00dc" startFrame="50" endFrame="50" type="video"/>
<MediaTrack objectID="24" mediaSourceID="25" trackID="00wb" type="audio"/>
</MenuTracks>
</Media>
<LanguageMenus objectID="30" languageCode="en" startingMenuID="40" rootMenuID="50">
<DivXMediaMenu objectID="40" backgroundVideoID="22" menuType="other" menuName="Intro" exitAction="41">
<Action objectID="41"><MenuTransitionAction objectID="42" menuID="50"/><ButtonTransitionAction objectID="43" buttonMenuID="53"/></Action>
</DivXMediaMenu>
<DivXMediaMenu objectID="50" backgroundVideoID="23" backgroundAudioID="24" menuType="title" menuName="Main" startingMenuItemID="53" enterAction="60">
<Action objectID="60"><SubtitleSelectAction objectID="61" titleID="6" trackID="&lt;none&gt;"/></Action>
<ButtonMenu objectID="51" rightAction="53" selectAction="70">
<MenuRectangle objectID="52" left="16" top="8" width="64" height="32"/>
<Action objectID="70"><AudioSelectAction objectID="71" titleID="6" trackID="02wb"/><SubtitleSelectAction objectID="72" titleID="6" trackID="03sb"/><PlayFromCurrentOffsetAction objectID="73" titleID="6" mediaObjectID="11"/></Action>
</ButtonMenu>
<ButtonMenu objectID="53" leftAction="51" downAction="55" selectAction="80">
<MenuRectangle objectID="54" left="100" top="9" width="50" height="21"/>
<Action objectID="80"><PlayAction objectID="81" titleID="16" mediaObjectID="16"/></Action>
</ButtonMenu>
<ButtonMenu objectID="55" upAction="53" selectAction="85">
<MenuRectangle objectID="56" left="0" top="400" width="640" height="80"/>
<Action objectID="85"><MenuTransitionAction objectID="86" menuID="95"/></Action>
</ButtonMenu>
<ButtonMenu objectID="57" selectAction="87">
<MenuRectangle objectID="58" left="300" top="300" width="20" height="20"/>
<Action objectID="87"><PlayAction objectID="88" titleID="6" mediaObjectID="15"/></Action>
</ButtonMenu>
</DivXMediaMenu>
<DivXMediaMenu objectID="59" backgroundVideoID="23" menuType="chapter" menuName="Scenes">
<ButtonMenu objectID="62" selectAction="63">
<MenuRectangle objectID="64" left="0" top="0" width="10" height="10"/>
<Action objectID="63"><PlayAction objectID="65" titleID="6" mediaObjectID="11"/></Action>
</ButtonMenu>
<ButtonMenu objectID="66" selectAction="63">
<MenuRectangle objectID="67" left="640" top="0" width="20" height="20"/>
</ButtonMenu>
</DivXMediaMenu>
</LanguageMenus>
<LanguageMenus objectID="90" languageCode="de" startingMenuID="none" rootMenuID="95">
<DivXMediaMenu objectID="95" backgroundVideoID="22" menuType="other" menuName="Haupt">
<ButtonMenu objectID="96" selectAction="97">
<MenuRectangle objectID="98" left="10" top="10" width="10" height="10"/>
<Action objectID="97"><MenuTransitionAction objectID="99" menuID="50"/></Action>
</ButtonMenu>
</DivXMediaMenu>
</LanguageMenus>
</DivXMediaManager>
)";

DvdSource Probe(const std::string& file)
{
    if (file.ends_with("menu.avi"))
        return {640, 480, 25};
    return {176, 144, 25};
}

class DvdPlanTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ScriptedPrompt prompt;
        ASSERT_TRUE(LoadXmlString(kProject, doc, nullptr, Relationship::Last, prompt));
        doc.ProjectFile = "/discs/project.xml";
    }
    DvdPlan Plan(TvStandard standard = TvStandard::Pal, const std::string& language = {}) const
    {
        return PlanDvd(doc, {1, 2, 3}, standard, language, Probe);
    }
    Document doc;
};

TEST(DvdFrame, PicturesKeepTheirShapeInTheFourByThreeFrame)
{
    EXPECT_EQ(DvdPictureArea(640, 480, TvStandard::Pal), (DvdArea{0, 0, 720, 576}));
    EXPECT_EQ(DvdPictureArea(1280, 720, TvStandard::Pal), (DvdArea{0, 72, 720, 432}));
    EXPECT_EQ(DvdPictureArea(1280, 720, TvStandard::Ntsc), (DvdArea{0, 60, 720, 360}));
    // Narrower than 4:3: black at the sides.
    EXPECT_EQ(DvdPictureArea(176, 144, TvStandard::Pal), (DvdArea{30, 0, 660, 576}));
    EXPECT_EQ(DvdPictureArea(0, 0, TvStandard::Ntsc), (DvdArea{0, 0, 720, 480}));

    // 176x144 in PAL: x to 30 + 3.75x, y to 4y; odd lines widen to even ones.
    EXPECT_EQ(ToDvdFrame({16, 8, 64, 32}, 176, 144, TvStandard::Pal), (DvdArea{90, 32, 240, 128}));
    EXPECT_EQ(ToDvdFrame({100, 9, 50, 21}, 640, 480, TvStandard::Ntsc), (DvdArea{113, 8, 56, 22}));
    // A rectangle past the picture's edge stops at the frame's.
    EXPECT_EQ(ToDvdFrame({600, 470, 100, 50}, 640, 480, TvStandard::Pal), (DvdArea{675, 564, 45, 12}));
}

TEST_F(DvdPlanTest, MenusButtonsAndNavigationOfEachLanguage)
{
    const DvdPlan plan = Plan();
    ASSERT_EQ(plan.Languages.size(), 2u);
    const DvdLanguage& en = plan.Languages[0];
    EXPECT_EQ(en.Code, "en");
    ASSERT_EQ(en.Menus.size(), 3u);
    EXPECT_EQ(en.StartMenu, 1);
    EXPECT_EQ(en.RootMenu, 2);
    EXPECT_EQ(en.TitleKeyMenu, 2);

    const DvdMenu& intro = en.Menus[0];
    EXPECT_FALSE(intro.Still);
    EXPECT_EQ(intro.Video, "/discs/menu.avi");
    EXPECT_EQ(intro.Frames.End, 49);
    EXPECT_TRUE(intro.AudioStreams.empty()); // silence
    EXPECT_TRUE(intro.Entries.empty());

    const DvdMenu& main = en.Menus[1];
    EXPECT_TRUE(main.Still);
    EXPECT_THAT(main.Entries, ElementsAre("root"));
    EXPECT_EQ(main.AudioFile, "/discs/music.mp3");
    EXPECT_THAT(main.AudioStreams, ElementsAre(0));
    EXPECT_EQ(main.Colours, (std::array<Colour, 3>{1, 2, 3}));
    ASSERT_EQ(main.Buttons.size(), 4u);
    // 640x480 fills the PAL frame: x times 1.125, y times 1.2.
    EXPECT_EQ(main.Buttons[0].Area, (DvdArea{18, 10, 72, 38}));
    EXPECT_EQ(main.Buttons[1].Area, (DvdArea{113, 10, 56, 26}));
    EXPECT_EQ(main.Buttons[2].Area, (DvdArea{0, 480, 720, 96}));
    EXPECT_EQ(main.Buttons[1].Source, (DvdArea{100, 9, 50, 21}));
    // Arrows that lead nowhere keep the button where it is.
    EXPECT_THAT(main.Buttons[0].Neighbours, ElementsAre("b1", "b1", "b1", "b2"));
    EXPECT_THAT(main.Buttons[1].Neighbours, ElementsAre("b2", "b3", "b1", "b2"));
    EXPECT_THAT(main.Buttons[2].Neighbours, ElementsAre("b2", "b3", "b3", "b3"));

    EXPECT_THAT(en.Menus[2].Entries, ElementsAre("ptt"));
    EXPECT_EQ(en.Menus[2].Buttons.size(), 1u);

    const DvdLanguage& de = plan.Languages[1];
    EXPECT_EQ(de.Code, "de");
    ASSERT_EQ(de.Menus.size(), 1u);
    EXPECT_EQ(de.StartMenu, 1);
    EXPECT_THAT(de.Menus[0].Entries, ElementsAre("root"));

    // One language on its own; a code of no set leaves a disc of titles only, and says why.
    const DvdPlan german = Plan(TvStandard::Ntsc, "DE");
    ASSERT_EQ(german.Languages.size(), 1u);
    EXPECT_EQ(german.Languages[0].Code, "de");
    EXPECT_EQ(german.Languages[0].Menus[0].Buttons[0].Area, (DvdArea{11, 10, 12, 10}));
    const DvdPlan none = Plan(TvStandard::Pal, "xx");
    EXPECT_TRUE(none.Languages.empty());
    EXPECT_EQ(none.FirstPlay, "jump title 1;");
    EXPECT_THAT(none.Unsupported, ::testing::Contains(HasSubstr("no language set \"xx\"")));
}

TEST_F(DvdPlanTest, ActionsBecomeCommandsAndWhatCannotBeDoneIsNamed)
{
    const DvdPlan plan = Plan();
    ASSERT_EQ(plan.Titles.size(), 2u);
    const DvdTitle& first = plan.Titles[0];
    EXPECT_EQ(first.Movie, "/discs/movie.avi");
    EXPECT_THAT(first.ChapterStarts, ElementsAre(0, 250, 500));
    EXPECT_THAT(first.AudioTracks, ElementsAre("01wb", "02wb"));
    EXPECT_THAT(first.AudioStreams, ElementsAre(0, 1));
    EXPECT_EQ(first.Pre, "if ((g3 & 1) eq 0) audio = 1;");
    EXPECT_EQ(first.Post, "g0 = 3; call menu entry root;");
    EXPECT_EQ(plan.Titles[1].Pre, "");
    EXPECT_EQ(DvdChapterNumber(first, 500), 3);
    EXPECT_EQ(DvdChapterNumber(first, 499), 0);
    // Chapter marks in dvdauthor's time, from the movie's frames.
    EXPECT_EQ(DvdTime(3003, 30000.0 / 1001), "0:01:40.200");
    EXPECT_EQ(DvdTime(25 * 3723, 25), "1:02:03.000");

    const std::vector<DvdMenu>& en = plan.Languages[0].Menus;
    // The intro hands its button on to the menu it goes to.
    EXPECT_EQ(en[0].Pre, "g2 = 1;");
    EXPECT_EQ(en[0].Post, "g1 = 2048; jump menu 2;");
    // The root menu first sends the disc where g0 asks, then shows its own start button.
    EXPECT_EQ(en[1].Pre, "if (g0 eq 1) { g0 = 0; jump menu 1; } "
                         "if (g0 eq 3 and g2 eq 1) { g0 = 0; g1 = button; jump menu 1; } "
                         "if (g0 eq 3 and g2 eq 3) { g0 = 0; g1 = button; jump menu 3; } "
                         "if (g0 eq 3) g1 = button; g0 = 0; g2 = 2; subtitle = 0; "
                         "if (g1 gt 0) { button = g1; g1 = 0; } else button = 2048;");
    EXPECT_EQ(en[1].Post, ""); // a still without an exit list waits
    EXPECT_EQ(en[1].Buttons[0].Command, "audio = 1; g3 = g3 | 1; subtitle = 64; resume; jump title 1 chapter 3;");
    EXPECT_EQ(en[1].Buttons[1].Command, "jump title 2;");
    EXPECT_EQ(en[1].Buttons[2].Command, "button = 3072;"); // stays where it is
    EXPECT_EQ(en[1].Buttons[3].Command, "jump title 1 chapter 2;");
    EXPECT_EQ(en[2].Pre, "g2 = 3; if (g1 gt 0) { button = g1; g1 = 0; } else button = 1024;");
    EXPECT_EQ(plan.Languages[1].Menus[0].Post, "jump cell 1;"); // a moving menu loops

    EXPECT_EQ(plan.FirstPlay, "g0 = 1; g1 = 0; g3 = 0; jump titleset 1 menu entry root;");
    EXPECT_EQ(plan.TitleKeyMenu, "g0 = 2; jump titleset 1 menu entry root;");
    EXPECT_THAT(plan.Unsupported,
                ElementsAre("title 6: audio track 00wb comes from another file, which the disc leaves out",
                            "title 6: its subtitle tracks are not carried to the disc",
                            "button 66 of menu 59 \"Scenes\" lies outside the menu's picture and is left out",
                            HasSubstr("button 55 of menu 50 \"Main\": MenuTransitionAction to menu 95 \"Haupt\" of "
                                      "another language set"),
                            HasSubstr("button 96 of menu 95 \"Haupt\": MenuTransitionAction to menu 50")));
}

// Sets whose entry menus name menus of another set, and sets with no menus at all, as a
// damaged or hand-edited project has them: the disc keeps what it can and says what it left.
TEST_F(DvdPlanTest, EntryMenusOfAnotherSetOrNoMenusGiveAPlainerDiscNotACrash)
{
    const auto load = [this](const std::string& from, const std::string& to) {
        std::string text = kProject;
        text.replace(text.find(from), from.size(), to);
        ScriptedPrompt prompt;
        doc = Document();
        ASSERT_TRUE(LoadXmlString(text, doc, nullptr, Relationship::Last, prompt));
    };
    const std::string german = R"(languageCode="de" startingMenuID="none" rootMenuID="95">)";
    load(german, R"(languageCode="de" startingMenuID="40" rootMenuID="50">)");
    DvdPlan plan = Plan();
    ASSERT_EQ(plan.Languages.size(), 2u);
    const DvdLanguage& de = plan.Languages[1];
    EXPECT_EQ(de.StartMenu, 1);
    EXPECT_EQ(de.RootMenu, 1);
    EXPECT_THAT(de.Menus[0].Entries, ElementsAre("root"));
    EXPECT_THAT(plan.Unsupported, ::testing::IsSupersetOf({HasSubstr("\"de\": its startingMenuID menu 40"),
                                                           HasSubstr("\"de\": its rootMenuID menu 50")}));

    // A menuless set first, pointing at the other's menus: it is left out, the other leads.
    load("<LanguageMenus objectID=\"30\"", R"(<LanguageMenus objectID="100" languageCode="fr" startingMenuID="50" )"
                                           R"(rootMenuID="95"/><LanguageMenus objectID="30")");
    plan = Plan();
    ASSERT_EQ(plan.Languages.size(), 2u);
    EXPECT_EQ(plan.Languages[0].Code, "en");
    EXPECT_EQ(plan.Languages[0].RootMenu, 2);
    EXPECT_THAT(plan.Unsupported, ::testing::Contains("language set \"fr\" has no menus of its own and is left out"));
    // Chosen on its own it leaves a disc of titles.
    plan = Plan(TvStandard::Pal, "fr");
    EXPECT_TRUE(plan.Languages.empty());
    EXPECT_EQ(plan.FirstPlay, "jump title 1;");
    EXPECT_THAT(plan.Titles, ::testing::SizeIs(2));
    const DvdFiles files{"/work"};
    EXPECT_THAT(DvdAuthorXml(plan, files, "/disc"), ::testing::Not(HasSubstr("<menus")));
}

class GeneratedPlan : public GeneratedDvdProject {};

TEST_F(GeneratedPlan, ChapterPagesTitleAndSetupMenusBecomeJumpsWithButtonsInThePicture)
{
    ASSERT_NO_FATAL_FAILURE(Generate());
    const DvdPlan plan = PlanDvdExport(project, {});
    EXPECT_EQ(plan.Standard, TvStandard::Pal); // the demo runs at 25 frames a second
    ASSERT_EQ(plan.Titles.size(), 2u);
    EXPECT_EQ(plan.Titles[0].ChapterStarts.size(), 7u);
    ASSERT_EQ(plan.Languages.size(), 2u);
    const std::vector<DvdMenu>& en = plan.Languages[0].Menus;
    ASSERT_EQ(en.size(), 5u); // main, titles, two chapter pages, setup

    int mainNumber = 0;
    std::vector<const DvdMenu*> chapterPages;
    std::set<std::string> chapterJumps;
    for (const DvdMenu& menu : en) {
        mainNumber = menu.ID == mainMenuID ? menu.Number : mainNumber;
        const DvdArea picture = DvdPictureArea(menu.Picture.Width, menu.Picture.Height, plan.Standard);
        bool chapters = false;
        for (const DvdButton& button : menu.Buttons) {
            EXPECT_GT(button.Area.Width * button.Area.Height, 0) << menu.ID << " " << button.ID;
            EXPECT_GE(button.Area.Left, picture.Left);
            EXPECT_LE(button.Area.Left + button.Area.Width, picture.Left + picture.Width);
            EXPECT_LE(button.Area.Top + button.Area.Height, picture.Top + picture.Height);
            for (const std::string& next : button.Neighbours)
                EXPECT_TRUE(std::any_of(menu.Buttons.begin(), menu.Buttons.end(),
                                        [&](const DvdButton& b) { return b.Name == next; }))
                    << next;
            if (button.Command.starts_with("jump title 1 chapter ")) {
                chapters = true;
                EXPECT_TRUE(chapterJumps.insert(button.Command).second) << button.Command;
            }
        }
        if (chapters)
            chapterPages.push_back(&menu);
    }
    // Every chapter once, on two pages that lead to each other and back to the main menu.
    EXPECT_EQ(chapterJumps.size(), 7u);
    EXPECT_TRUE(chapterJumps.count("jump title 1 chapter 7;"));
    ASSERT_EQ(chapterPages.size(), 2u);
    ASSERT_GT(mainNumber, 0);
    const auto leadsTo = [](const DvdMenu& menu, int number) {
        return std::any_of(menu.Buttons.begin(), menu.Buttons.end(), [&](const DvdButton& b) {
            return b.Command == "jump menu " + std::to_string(number) + ";";
        });
    };
    EXPECT_TRUE(leadsTo(*chapterPages[0], chapterPages[1]->Number));
    EXPECT_TRUE(leadsTo(*chapterPages[1], chapterPages[0]->Number));
    EXPECT_TRUE(leadsTo(*chapterPages[0], mainNumber));

    const auto commands = [](const DvdMenu& menu) {
        std::set<std::string> all;
        for (const DvdButton& button : menu.Buttons)
            all.insert(button.Command);
        return all;
    };
    const std::vector<DvdMenu>& de = plan.Languages[1].Menus;
    ASSERT_EQ(de.size(), 1u);
    EXPECT_TRUE(commands(de[0]).count("jump title 1;"));
    EXPECT_TRUE(commands(de[0]).count("jump title 2;"));
    EXPECT_THAT(de[0].Entries, ElementsAre("root"));
    // The setup menu picks the first title's audio and leads back.
    EXPECT_TRUE(std::any_of(en.begin(), en.end(), [&](const DvdMenu& menu) {
        return commands(menu).count("audio = 0; g3 = g3 | 1;") && leadsTo(menu, mainNumber);
    }));
}

} // namespace
} // namespace mw::test
