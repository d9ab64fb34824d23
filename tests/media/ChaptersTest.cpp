// Chapter creation: the nodes of each chapter, the ranges of every mode, the question about
// chapters already there and the actions that played them. Then the chapter dialog as
// data: the title list, the regular division, the hand-made list, the import of chapter files
// and the checks before it is accepted.
#include "media/TitleTestKit.h"

#include "core/settings/clsIniFile.h"
#include "document/TreeQueries.h"
#include "media/AddTitle.h"
#include "media/ChapterNodes.h"
#include "media/TitleNodes.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

namespace fs = std::filesystem;
using mw::ChapMode;
using Pairs = std::vector<std::pair<long, long>>;
using Texts = std::vector<std::string>;

// Chapters as the dialog makes them from a count or a number of minutes.
void DivideChapters(mw::test::TitleProject& p, ChapMode mode, const char* value)
{
    mw::ChapForm form = p.OpenChapForm();
    form.Mode = mode;
    (mode == ChapMode::Count ? form.txtChapters : form.txtMinutes) = value;
    mw::CalcChapters(form, p.prompt);
    mw::CreateChaps(p.project, form, false);
}

// Each chapter's frames, read from its video track.
Pairs ChapterFrames(const mw::DocNode& title)
{
    Pairs frames;
    for (const mw::DocNode* chapter : mw::ChapterNodesOf(title)) {
        const mw::DocNode& video = *chapter->Child(2);
        frames.emplace_back(std::stol(mw::GetPropertyInNode(video, "startFrame")),
                            std::stol(mw::GetPropertyInNode(video, "endFrame")));
    }
    return frames;
}

Texts ChapterIds(const mw::DocNode& title)
{
    Texts ids;
    for (const mw::DocNode* chapter : mw::ChapterNodesOf(title))
        ids.push_back(mw::ObjectIdOf(*chapter));
    return ids;
}

// A project started on the minute movie (1500 frames, a key frame every 25): title 6, source 7.
class Chapters : public mw::test::StartedProjectTest<mw::test::ChapterMovie> {};

Pairs Frames(const mw::ChapForm& form)
{
    Pairs frames;
    for (const mw::ChapterRow& row : form.ListView1)
        frames.emplace_back(row.Start, row.End);
    return frames;
}

// A project started on the minute movie: title 6, 1500 frames at 25 fps.
class ChapFormTest : public mw::test::StartedProjectTest<mw::test::ChapterMovie> {};

} // namespace

TEST_F(Chapters, EachChapterHasItsNodesAndSharesTheAudioTranslation)
{
    mw::ChapForm form = p.OpenChapForm();
    EXPECT_EQ(form.lblRuntime, "00:01:00.000");
    EXPECT_EQ(form.lblEndFrame, 1499);
    EXPECT_DOUBLE_EQ(form.Fps, 25.0);
    ASSERT_EQ(form.lstTracks.size(), 2u);
    EXPECT_TRUE(form.ListView1.empty());
    form.Mode = ChapMode::Manual;
    form.ListView1 = {{1, 0, 100, "Intro"}, {2, 101, 2000, ""}};

    mw::CreateChaps(p.project, form, false);

    EXPECT_EQ(p.Xml(12), R"(<Chapter objectID="12" translationLookupID="13"><MediaTrack objectID="15" )"
                         R"(mediaSourceID="7" sourceTrackID="none" trackID="00dc" startFrame="0" endFrame="100" )"
                         R"(type="video"/><MediaTrack objectID="16" mediaSourceID="7" sourceTrackID="none" )"
                         R"(trackID="01wb" languageCode="en" strn="Audio - en-US;02" translationLookupID="17" )"
                         R"(type="audio"/></Chapter>)");
    // The second ends at the movie's last frame; its audio track shares the first one's
    // translation and has no strn.
    EXPECT_EQ(p.Xml(19), R"(<Chapter objectID="19" translationLookupID="20"><MediaTrack objectID="22" )"
                         R"(mediaSourceID="7" sourceTrackID="none" trackID="00dc" startFrame="101" endFrame="1499" )"
                         R"(type="video"/><MediaTrack objectID="23" mediaSourceID="7" sourceTrackID="none" )"
                         R"(trackID="01wb" languageCode="en" translationLookupID="17" type="audio"/></Chapter>)");
    EXPECT_EQ(p.Node(12).Previous()->Text, " -> Chapter Intro");
    EXPECT_EQ(p.Node(12).Previous()->Tag, " -> Chapter Intro");
    EXPECT_EQ(p.Node(12).Next()->Text, " -> Chapter 2");
    EXPECT_EQ(p.Node(12).Image + " " + p.Node(15).Image + " " + p.Node(16).Image, "chapter movielink audiolink");
    EXPECT_EQ(mw::GetPropertyInNode(*p.Node(13).Child(1), "value"), "Intro");
    EXPECT_EQ(mw::GetPropertyInNode(*p.Node(17).Child(1), "value"), "Audio - en-US;02");
    EXPECT_EQ(mw::GetPropertyInNode(*p.Node(20).Child(1), "value"), "2");
    EXPECT_EQ(p.project.Doc.NextObjectID, 24);
    EXPECT_TRUE(p.project.FileIsDirty);
    EXPECT_TRUE(p.prompt.Log.empty()); // a hand-made list does not ask

    // Opened again on the title, the dialog lists the chapters with their names or numbers.
    const mw::ChapForm again = p.OpenChapForm();
    ASSERT_EQ(again.ListView1.size(), 2u);
    EXPECT_EQ(again.ListView1[0].Name, "Intro");
    EXPECT_EQ(again.ListView1[1].Name, "2");
    EXPECT_EQ(again.ListView1[1].Number, 2);
    EXPECT_EQ(Frames(again), (Pairs{{0, 100}, {101, 1499}}));
}

TEST(ChapterDivision, EachChapterEndsBeforeTheNearestKeyFrame)
{
    const fs::path movie = mw::test::ChapterMovie();
    REQUIRE_MOVIE(movie);
    // Thirty chapters of 50 frames, which is what 31 of 49 snap to.
    Pairs fifties;
    for (long start = 0; start < 1500; start += 50)
        fifties.emplace_back(start, start + 49);
    const std::tuple<ChapMode, const char*, Pairs> cases[] = {
        // Steps of 215: ideal ends 214, 439, ... lie 11 frames before a key and 14 after one.
        {ChapMode::Count, "7", {{0, 224}, {225, 449}, {450, 674}, {675, 899}, {900, 1124}, {1125, 1349}, {1350, 1499}}},
        {ChapMode::PerMinutes, "0.25", {{0, 374}, {375, 749}, {750, 1124}, {1125, 1499}}},
        // Steps of 188 (187.5): each ideal end lies 12 frames after a key, so every chapter
        // comes out shorter; the last one takes the frames that are left.
        {ChapMode::Count, "8", {{0, 174}, {175, 349}, {350, 524}, {525, 699}, {700, 874}, {875, 1049},
                                {1050, 1224}, {1225, 1499}}},
        // Steps of 49: each chapter grows to 50, so the 30th reaches the end. Nothing starts
        // after it, nor on the last frame alone.
        {ChapMode::Count, "31", fifties},
    };
    for (const auto& [mode, value, frames] : cases) {
        SCOPED_TRACE(value);
        mw::test::TitleProject p;
        p.StartWith(movie);
        DivideChapters(p, mode, value);
        EXPECT_EQ(ChapterFrames(p.Node(6)), frames);
        EXPECT_TRUE(p.prompt.Log.empty());
    }
}

TEST_F(Chapters, ImportedFramesStartChaptersAfterTheFirst)
{
    mw::ChapForm form = p.OpenChapForm();
    // 0, 250, 512, 250 again and 7500: the first starts no chapter before the first one, the
    // repeat no empty one, and the last lies past the end of the movie.
    const fs::path file =
        p.folder.Write("c.txt", "[CHAPTERS]\n00:00:00\n00:00:10\n00:00:20.5\n00:00:10\n00:05:00\n");
    ASSERT_TRUE(mw::ImportChapterFile(form, file.string(), p.project.Lang(), p.prompt));
    mw::CreateChaps(p.project, form, false);
    EXPECT_EQ(ChapterFrames(p.Node(6)), (Pairs{{0, 249}, {250, 511}, {512, 1499}}));
}

TEST_F(Chapters, CancelAtTheQuestionChangesNothingAndNoAddsAfterTheOldChapters)
{
    DivideChapters(p, ChapMode::Count, "2");
    p.project.FileIsDirty = false;
    const std::string before = p.Xml();
    const long next = p.project.Doc.NextObjectID;
    const Texts old = ChapterIds(p.Node(6));
    p.prompt.Log.clear();
    p.prompt.Answers = {mw::PromptAnswer::Cancel, mw::PromptAnswer::No};

    DivideChapters(p, ChapMode::Count, "5");
    EXPECT_EQ(p.prompt.Texts(), Texts{"Seems that this title has chapters. Delete them first?\r\n" + movie.string()});
    EXPECT_EQ(p.Xml(), before);
    EXPECT_EQ(p.project.Doc.NextObjectID, next);
    EXPECT_FALSE(p.project.FileIsDirty);

    DivideChapters(p, ChapMode::Count, "3");
    const Texts ids = ChapterIds(p.Node(6));
    ASSERT_EQ(ids.size(), 5u);
    EXPECT_EQ(Texts(ids.begin(), ids.begin() + 2), old);
    EXPECT_EQ(p.Node(6).LastChild()->Previous()->Text, " -> Chapter 3");
}

TEST_F(Chapters, YesReplacesTheChaptersAndTheActionsFollowThem)
{
    DivideChapters(p, ChapMode::Count, "3");
    const Texts old = ChapterIds(p.Node(6));
    mw::Document& doc = p.project.Doc;
    mw::DocNode& language = mw::CreateLanguageMenusNode(doc, "en");
    mw::test::AddPlayMenu(doc, language, "Scenes", "6", old[0]);
    mw::DocNode& unnamed = mw::test::AddPlayMenu(doc, language, "", "6", old[2]);
    const std::string button = mw::ObjectIdOf(*unnamed.Child(3));
    p.prompt.Answers.push_back(mw::PromptAnswer::Yes);

    DivideChapters(p, ChapMode::Count, "2");

    const Texts ids = ChapterIds(p.Node(6));
    ASSERT_EQ(ids.size(), 2u);
    for (const std::string& id : old)
        EXPECT_EQ(doc.Tree.Find("k" + id), nullptr);
    mw::DocNode* row = nullptr;
    EXPECT_TRUE(mw::FindInTree(*doc.Tree.Root(), "mediaObjectID = " + ids[0], row));
    ASSERT_EQ(p.prompt.Texts().size(), 2u);
    EXPECT_EQ(p.prompt.Texts()[1], "Chapter with ID " + old[2] + " deleted, but was in use at action in button " +
                                       button + " in menu " + mw::ObjectIdOf(unnamed));
    ASSERT_NE(doc.Tree.Selected(), nullptr);
    EXPECT_EQ(doc.Tree.Selected()->Text, "mediaObjectID = " + old[2]);
    EXPECT_TRUE(language.Expanded);
    // Only the old chapters' translations went: the title's name, its audio track, two chapter
    // names and the shared audio translation.
    EXPECT_EQ(p.Node(3).ChildCount(), 1u + 5u);
}

TEST_F(Chapters, AllTitlesDivideEachMovieByItsOwnLength)
{
    const fs::path cut = mw::test::CutMovie();
    REQUIRE_MOVIE(cut);
    mw::AddTitle(p.project, cut.string());
    mw::ChapForm form = p.OpenChapForm();
    form.txtChapters = "2";
    mw::CalcChapters(form, p.prompt);
    form.chkAll = true;

    mw::CreateChaps(p.project, form, false);

    const std::vector<mw::DocNode*> titles = mw::TitleNodes(p.project.Doc);
    ASSERT_EQ(titles.size(), 2u);
    EXPECT_EQ(ChapterFrames(*titles[0]), (Pairs{{0, 749}, {750, 1499}}));
    EXPECT_EQ(ChapterFrames(*titles[1]), (Pairs{{0, 249}, {250, 499}}));
}

TEST_F(Chapters, TracksThatCannotBeReadOrTypedAreTold)
{
    mw::ChapForm form = p.OpenChapForm();
    form.lstTracks.clear();
    form.txtChapters = "2";
    const long next = p.project.Doc.NextObjectID;
    mw::CreateChaps(p.project, form, false);
    EXPECT_EQ(p.prompt.Texts(), Texts{"An error occured loading tracks"});
    EXPECT_TRUE(mw::ChapterNodesOf(p.Node(6)).empty());
    EXPECT_EQ(p.project.Doc.NextObjectID, next);

    // A stream of unknown type is told for every chapter and gets a bare track.
    p.prompt.Log.clear();
    form = p.OpenChapForm();
    form.lstTracks.push_back({"Unknown", "", "", "02??", "", ""});
    form.Mode = ChapMode::Manual;
    form.ListView1 = {{1, 0, 99, ""}, {2, 100, 199, ""}};
    mw::CreateChaps(p.project, form, false);
    EXPECT_EQ(p.prompt.Texts(), Texts(2, "Can not detect type for stream number 3"));
    mw::DocNode& track = *mw::ChapterNodesOf(p.Node(6)).at(0)->LastChild();
    EXPECT_EQ(mw::NodeToXmlString(track),
              R"(<MediaTrack objectID=")" + mw::ObjectIdOf(track) + R"(" mediaSourceID="7" sourceTrackID="none"/>)");
}

TEST_F(Chapters, TheCommandShowsTheDialogOnTheFirstTitle)
{
    const std::string before = p.Xml();
    p.forms.Chap.push_back([](mw::ChapForm& form) {
        EXPECT_EQ(form.Combo1.ListIndex, 0);
        EXPECT_FALSE(form.chkAll);
        EXPECT_EQ(form.lblEndFrame, 1499);
        return false;
    });
    mw::mnuCreateChapters(p.project);
    EXPECT_EQ(p.Xml(), before);
    EXPECT_FALSE(p.project.FileIsDirty);

    p.forms.Chap.push_back([](mw::ChapForm& form) {
        form.Mode = ChapMode::Manual;
        form.txtStartFrame = "0";
        form.txtEndFrame = "10";
        mw::ScriptedPrompt quiet;
        return mw::AddChapterRow(form, quiet);
    });
    mw::mnuCreateChapters(p.project);
    EXPECT_EQ(ChapterFrames(p.Node(6)), (Pairs{{0, 10}}));
}

TEST_F(ChapFormTest, OpeningListsTheTitlesAndAcceptingKeepsStepFrames)
{
    const std::string ini = mw::ChapSettingsFile(p.project);
    mw::ChapForm form;
    mw::LoadChapForm(form, p.project.Doc, ini, p.prompt);
    EXPECT_EQ(form.txtStepFrames, "30");
    ASSERT_EQ(form.Combo1.Items.size(), 1u);
    EXPECT_EQ(form.Combo1.Items[0].Text, "6|" + movie.string());
    EXPECT_EQ(form.Combo1.Items[0].ItemData, 6);

    form.Combo1.ListIndex = 0;
    form.txtStepFrames = "12";
    form.Mode = ChapMode::Manual;
    EXPECT_FALSE(mw::AcceptChapForm(form, ini, p.project.Lang(), p.prompt));
    EXPECT_EQ(p.prompt.Texts(), (Texts{"Add at least 1 chapter"}));
    EXPECT_EQ(mw::clsIniFile(ini, "General").GetString("StepFrames", ""), "");
    form.Mode = ChapMode::Count;
    form.Combo1.ListIndex = -1;
    EXPECT_FALSE(mw::AcceptChapForm(form, ini, p.project.Lang(), p.prompt));
    EXPECT_EQ(p.prompt.Log.size(), 1u); // no title: nothing happens, and nothing is said
    form.chkAll = true;
    EXPECT_TRUE(mw::AcceptChapForm(form, ini, p.project.Lang(), p.prompt));
    EXPECT_TRUE(form.Accepted);

    mw::LoadChapForm(form, p.project.Doc, ini, p.prompt);
    EXPECT_EQ(form.txtStepFrames, "12");
    EXPECT_EQ(form.Combo1.Items.size(), 1u);

    p.prompt.Log.clear();
    p.project.Doc.Tree.Remove(p.Node(2));
    mw::LoadChapForm(form, p.project.Doc, ini, p.prompt);
    EXPECT_EQ(p.prompt.Texts(), (Texts{"Can not find \"Media\" node"}));
    EXPECT_TRUE(form.Combo1.Items.empty());
}

// Shift+Enter in a frame field steps to the frame before the next key frame (every 25 frames).
TEST_F(ChapFormTest, ShiftEnterStepsToTheFrameBeforeTheNextKeyFrame)
{
    mw::ChapForm form = p.OpenChapForm();
    const std::pair<const char*, const char*> cases[] = {
        {"0", "24"}, {"10", "24"}, {"23", "24"}, {"", "24"},
        {"24", "49"},     // standing before a key frame moves on to the next one
        {"1499", "1499"}, // no key frame after the end: the field stays
    };
    for (const auto& [before, after] : cases) {
        std::string field = before;
        mw::NextKeyFrameEnd(form, field, p.prompt);
        EXPECT_EQ(field, after) << before;
    }
    EXPECT_TRUE(p.prompt.Log.empty());
    // Without a title there are no key frames to go by.
    mw::ChapForm untitled;
    std::string field = "12";
    mw::NextKeyFrameEnd(untitled, field, p.prompt);
    EXPECT_EQ(field, "12");
}

TEST(ChapFormDivision, RoundsAFractionOfAFrameUp)
{
    const fs::path pal = mw::test::ChapterMovie();
    const fs::path ntsc = mw::test::NtscMinuteMovie();
    REQUIRE_MOVIE(pal);
    REQUIRE_MOVIE(ntsc);
    const std::tuple<fs::path, ChapMode, const char*, const char*, const char*> cases[] = {
        {pal, ChapMode::PerMinutes, "1", "1 chapter(s) every 1500 frames", "1500"},
        {ntsc, ChapMode::PerMinutes, "1", "1 chapter(s) every 1439 frames", "1439"}, // 1438.56
        {pal, ChapMode::PerMinutes, "0.25", "4 chapter(s) every 375 frames", "375"},
        {pal, ChapMode::PerMinutes, "0", "?", ""},
        {pal, ChapMode::PerMinutes, "", "?", ""},
        {pal, ChapMode::Count, "3", "every 500 frames", "500"},
        {pal, ChapMode::Count, "7", "every 215 frames", "215"},   // 214.29
        {ntsc, ChapMode::Count, "2", "every 720 frames", "720"}, // 1439 / 2
        {pal, ChapMode::Count, "0", "?", ""},
    };
    for (const auto& [movie, mode, value, caption, tag] : cases) {
        SCOPED_TRACE(movie.filename().string() + " " + value);
        mw::test::TitleProject p;
        p.StartWith(movie);
        mw::ChapForm form = p.OpenChapForm();
        form.Mode = mode;
        (mode == ChapMode::PerMinutes ? form.txtMinutes : form.txtChapters) = value;
        mw::CalcChapters(form, p.prompt);
        const mw::TaggedLabel& label = mode == ChapMode::PerMinutes ? form.lblCountChapters : form.lblCountTime;
        EXPECT_EQ(label.Caption, caption);
        EXPECT_EQ(label.Tag, tag);
        EXPECT_TRUE(p.prompt.Log.empty());
    }
}

TEST(ChapFormRows, HandMadeListChecksItsFrames)
{
    mw::ChapForm form;
    mw::ScriptedPrompt prompt;
    const auto add = [&](const char* start, const char* end) {
        form.txtStartFrame = start;
        form.txtEndFrame = end;
        return mw::AddChapterRow(form, prompt);
    };
    EXPECT_FALSE(add("10", "10")); // an end equal to the start is refused
    EXPECT_FALSE(add("20", "10"));
    EXPECT_TRUE(form.ListView1.empty());
    EXPECT_EQ(prompt.Texts(), (Texts{"Error in frames", "Error in frames"}));

    EXPECT_TRUE(add("0", "100"));
    EXPECT_EQ(form.txtStartFrame, "101");
    EXPECT_TRUE(add("200", "300"));
    EXPECT_EQ(Frames(form), (Pairs{{0, 199}, {200, 300}})); // the previous row ends before the new one
    EXPECT_EQ(form.txtStartFrame, "301");

    prompt.Log.clear();
    const auto insert = [&](int after, const char* start, const char* end) {
        form.ListView1Index = after;
        form.txtStartFrame = start;
        form.txtEndFrame = end;
        return mw::InsertChapterRow(form, prompt);
    };
    EXPECT_FALSE(insert(1, "150", "250"));
    EXPECT_FALSE(insert(0, "250", "260"));
    EXPECT_FALSE(insert(-1, "50", "60")); // no selected row
    EXPECT_EQ(prompt.Texts(), (Texts{"The start frame is smaller from the last one",
                                                        "The start frame is bigger from the next one"}));
    EXPECT_TRUE(insert(0, "50", "199"));
    EXPECT_EQ(Frames(form), (Pairs{{0, 49}, {50, 199}, {200, 300}}));
    EXPECT_EQ(form.ListView1[2].Number, 3);
    EXPECT_TRUE(insert(2, "400", "500")); // after the last row there is no next one to check
    EXPECT_EQ(form.txtStartFrame, "501");

    form.ListView1Index = 0;
    mw::DeleteChapterRow(form);
    EXPECT_EQ(Frames(form), (Pairs{{50, 199}, {200, 399}, {400, 500}}));
    EXPECT_EQ(form.ListView1[0].Number, 1);
    for (int i = 0; i < 3; ++i) {
        form.ListView1Index = 0;
        mw::DeleteChapterRow(form);
    }
    EXPECT_EQ(form.txtStartFrame, "0");
}

TEST_F(ChapFormTest, ChapterFilesAreReadAfterTheirHeader)
{
    const std::tuple<const char*, const char*, std::vector<long>> cases[] = {
        {"pgcdemux", "[CHAPTERS]\r\n00:00:00.000\r\n00:00:12.480\r\n01:00:00.5\r\n", {0, 312, 90012}},
        {"lower case header", "junk 00:00:05\n[chapters]\n00:00:10\n", {250}},
        {"chapterxtractor", "CHAPTER01=00:00:20.000\nCHAPTER01NAME=Intro\n", {}},
        {"chapterxtractor after header", "[CHAPTERS]\nCHAPTER01=00:00:20.000\nCHAPTER01NAME=Intro\n", {500}},
        {"two and four parts", "[CHAPTERS]\n00:30\n1:2:3:4\nx:y:z\n", {0}},
    };
    for (const auto& [name, content, frames] : cases) {
        SCOPED_TRACE(name);
        mw::ChapForm form = p.OpenChapForm();
        p.prompt.Log.clear();
        const fs::path file = p.folder.Write("chapters.txt", content);
        const bool read = mw::ImportChapterFile(form, file.string(), p.project.Lang(), p.prompt);
        EXPECT_EQ(form.List1, frames);
        EXPECT_EQ(read, !frames.empty());
        EXPECT_EQ(form.Imported, read);
        if (read) {
            EXPECT_EQ(form.txtChapters, std::to_string(frames.size() + 1));
            EXPECT_EQ(form.lblCountTime.Caption, "from " + file.string() + " file");
            EXPECT_TRUE(p.prompt.Log.empty());
        } else {
            EXPECT_EQ(p.prompt.Texts(), (Texts{"Can not find any chapter"}));
        }
    }
}

TEST_F(ChapFormTest, ImportAsksForAFileOfTheChosenTitle)
{
    mw::ChapForm form = p.OpenChapForm();
    const fs::path file = p.folder.Write("in/chapters.txt", "[CHAPTERS]\n00:00:10\n");
    p.prompt.OpenedFiles.push_back({file.string()});
    mw::ImportChaptersFromTxt(form, "/last", p.project.Lang(), p.prompt);
    EXPECT_EQ(form.List1, (std::vector<long>{250}));
    ASSERT_EQ(p.prompt.Log.size(), 1u);
    EXPECT_EQ(p.prompt.Log[0].Text, "*.txt|*.txt");

    form.Combo1.ListIndex = -1;
    mw::ImportChaptersFromTxt(form, "/last", p.project.Lang(), p.prompt);
    EXPECT_EQ(p.prompt.Texts(), (Texts{"Please select a title"}));
}
