// Chapter creation: the nodes of each chapter, the ranges of every mode, the question about
// chapters already there and the actions that played them.
#include "media/TitleTestKit.h"

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

} // namespace

TEST_F(Chapters, EachChapterHasItsNodesAndSharesTheAudioTranslation)
{
    mw::ChapForm form = p.OpenChapForm();
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
}

TEST(ChapterDivision, EachChapterEndsBeforeTheNearestKeyFrame)
{
    const fs::path movie = mw::test::ChapterMovie();
    REQUIRE_MOVIE(movie);
    const std::tuple<ChapMode, const char*, Pairs> cases[] = {
        // Steps of 215: ideal ends 214, 439, ... lie 11 frames before a key and 14 after one.
        {ChapMode::Count, "7", {{0, 224}, {225, 449}, {450, 674}, {675, 899}, {900, 1124}, {1125, 1349}, {1350, 1499}}},
        {ChapMode::PerMinutes, "0.25", {{0, 374}, {375, 749}, {750, 1124}, {1125, 1499}}},
        // Steps of 188 (187.5): each ideal end lies 12 frames after a key, so every chapter
        // comes out shorter and the last frames are left without one.
        {ChapMode::Count, "8", {{0, 174}, {175, 349}, {350, 524}, {525, 699}, {700, 874}, {875, 1049},
                                {1050, 1224}, {1225, 1399}}},
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
    const fs::path file = p.folder.Write("c.txt", "[CHAPTERS]\n00:00:10\n00:00:20.5\n00:05:00\n");
    ASSERT_TRUE(mw::ImportChapterFile(form, file.string(), p.project.Lang(), p.prompt));
    mw::CreateChaps(p.project, form, false);
    // 250, 512 and 7500; the last is past the end, so is the chapter after it.
    EXPECT_EQ(ChapterFrames(p.Node(6)), (Pairs{{0, 249}, {250, 511}, {512, 1499}, {1500, 1499}}));
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
