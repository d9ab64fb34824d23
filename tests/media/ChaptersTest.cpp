// Chapter creation: the nodes of each chapter, the ranges of every mode, the question about
// chapters already there and the actions that played them.
#include "media/TitleTestKit.h"

#include "document/TreeQueries.h"
#include "media/AddTitle.h"
#include "media/ChapForm.h"
#include "media/ChapterNodes.h"
#include "media/Chapters.h"
#include "media/TitleNodes.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using mw::ChapMode;
using mw::test::Dump;
using mw::test::TitleProject;
using Pairs = std::vector<std::pair<long, long>>;

// Chapters in count mode, as the dialog makes them.
void CountChapters(TitleProject& p, const char* count, int title = 0)
{
    mw::ChapForm form = p.OpenChapForm(title);
    form.Mode = ChapMode::Count;
    form.txtChapters = count;
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

std::vector<std::string> ChapterIds(const mw::DocNode& title)
{
    std::vector<std::string> ids;
    for (const mw::DocNode* chapter : mw::ChapterNodesOf(title))
        ids.push_back(mw::ObjectIdOf(*chapter));
    return ids;
}

} // namespace

TEST(Chapters, EachChapterHasItsNodesAndSharesTheAudioTranslation)
{
    const fs::path movie = mw::test::ChapterMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    mw::ChapForm form = p.OpenChapForm();
    form.Mode = ChapMode::Manual;
    form.ListView1 = {{1, 0, 100, "Intro"}, {2, 101, 2000, ""}};

    mw::CreateChaps(p.project, form, false);

    std::string chapters; // after the rows, the source and the tracks: the first chapter
    for (std::size_t i = 7; i < 10; ++i)
        chapters += Dump(*p.Node(6).Child(i));
    EXPECT_EQ(chapters, "comment  -> Chapter Intro\n"
                        "chapter Chapter [k12]\n"
                        "  objectid objectID = 12\n"
                        "  prop translationLookupID = 13\n"
                        "  movielink MediaTrack [k15]\n"
                        "    objectid objectID = 15\n"
                        "    prop mediaSourceID = 7\n"
                        "    prop sourceTrackID = none\n"
                        "    prop trackID = 00dc\n"
                        "    prop startFrame = 0\n"
                        "    prop endFrame = 100\n"
                        "    prop type = video\n"
                        "  audiolink MediaTrack [k16]\n"
                        "    objectid objectID = 16\n"
                        "    prop mediaSourceID = 7\n"
                        "    prop sourceTrackID = none\n"
                        "    prop trackID = 01wb\n"
                        "    prop languageCode = en\n"
                        "    prop strn = Audio - en-US;02\n"
                        "    prop translationLookupID = 17\n"
                        "    prop type = audio\n"
                        "comment  -> Chapter 2\n");
    // The second chapter's audio track shares the first one's translation and has no strn.
    const mw::DocNode& second = p.Node(19);
    EXPECT_EQ(mw::GetPropertyInNode(*second.Child(2), "endFrame"), "1499"); // cut to the movie's last frame
    EXPECT_EQ(second.Child(3)->Key(), "k23");
    EXPECT_EQ(mw::GetPropertyInNode(*second.Child(3), "translationLookupID"), "17");
    EXPECT_EQ(mw::GetPropertyInNode(*second.Child(3), "strn"), "");
    EXPECT_EQ(p.Node(6).Child(7)->Tag, " -> Chapter Intro");
    EXPECT_EQ(Dump(p.Node(13)), "translookup TranslationLookup [k13]\n"
                                "  objectid objectID = 13\n"
                                "  trans Translation [k14]\n"
                                "    objectid objectID = 14\n"
                                "    prop languageCode = en\n"
                                "    prop value = Intro\n");
    EXPECT_EQ(mw::GetPropertyInNode(*p.Node(17).Child(1), "value"), "Audio - en-US;02");
    EXPECT_EQ(mw::GetPropertyInNode(*p.Node(20).Child(1), "value"), "2");
    EXPECT_EQ(p.project.Doc.NextObjectID, 24);
    EXPECT_TRUE(p.project.FileIsDirty);
    EXPECT_TRUE(p.prompt.Log.empty()); // a hand-made list does not ask
}

TEST(Chapters, RegularDivisionEndsEachChapterBeforeTheNearestKeyFrame)
{
    const fs::path movie = mw::test::ChapterMovie(); // a key frame every 25 frames
    REQUIRE_MOVIE(movie);
    const struct {
        ChapMode Mode;
        const char* Value;
        Pairs Frames;
    } cases[] = {
        // Steps of 215: ideal ends 214, 439, ... lie 11 frames before a key and 14 after one.
        {ChapMode::Count,
         "7",
         {{0, 224}, {225, 449}, {450, 674}, {675, 899}, {900, 1124}, {1125, 1349}, {1350, 1499}}},
        {ChapMode::PerMinutes, "0.25", {{0, 374}, {375, 749}, {750, 1124}, {1125, 1499}}},
        // Steps of 188 (187.5): each ideal end lies 12 frames after a key, so every chapter
        // comes out shorter and the last frames are left without one.
        {ChapMode::Count, "8", {{0, 174}, {175, 349}, {350, 524}, {525, 699}, {700, 874}, {875, 1049},
                                {1050, 1224}, {1225, 1399}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Value);
        TitleProject p;
        p.StartWith(movie);
        mw::ChapForm form = p.OpenChapForm();
        form.Mode = c.Mode;
        (c.Mode == ChapMode::Count ? form.txtChapters : form.txtMinutes) = c.Value;
        mw::CalcChapters(form, p.prompt);
        mw::CreateChaps(p.project, form, false);
        EXPECT_EQ(ChapterFrames(p.Node(6)), c.Frames);
        EXPECT_TRUE(p.prompt.Log.empty());
    }
}

TEST(Chapters, ImportedFramesStartChaptersAfterTheFirst)
{
    const fs::path movie = mw::test::ChapterMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    mw::ChapForm form = p.OpenChapForm();
    const fs::path file = p.folder.Write("c.txt", "[CHAPTERS]\n00:00:10\n00:00:20.5\n00:05:00\n");
    ASSERT_TRUE(mw::ImportChapterFile(form, file.string(), p.project.Lang(), p.prompt));
    mw::CreateChaps(p.project, form, false);
    // 250, 512 and 7500; the last is past the end, so is the chapter after it.
    EXPECT_EQ(ChapterFrames(p.Node(6)), (Pairs{{0, 249}, {250, 511}, {512, 1499}, {1500, 1499}}));
}

TEST(Chapters, CancelAtTheQuestionLeavesTheProjectAsItWas)
{
    const fs::path movie = mw::test::ChapterMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    CountChapters(p, "3");
    p.project.FileIsDirty = false;
    const std::string before = p.Xml();
    const long next = p.project.Doc.NextObjectID;
    p.prompt.Log.clear();
    p.prompt.Answers.push_back(mw::PromptAnswer::Cancel);

    CountChapters(p, "5");

    const std::string question = "Seems that this title has chapters. Delete them first?\r\n" + movie.string();
    EXPECT_EQ(p.prompt.Texts(), (std::vector<std::string>{question}));
    EXPECT_EQ(p.Xml(), before);
    EXPECT_EQ(p.project.Doc.NextObjectID, next);
    EXPECT_FALSE(p.project.FileIsDirty);
}

TEST(Chapters, NoKeepsTheOldChaptersAndAddsTheNewOnesAfterThem)
{
    const fs::path movie = mw::test::ChapterMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    CountChapters(p, "2");
    const std::vector<std::string> old = ChapterIds(p.Node(6));
    p.prompt.Answers.push_back(mw::PromptAnswer::No);
    CountChapters(p, "3");
    const std::vector<std::string> ids = ChapterIds(p.Node(6));
    ASSERT_EQ(ids.size(), 5u);
    EXPECT_EQ(std::vector<std::string>(ids.begin(), ids.begin() + 2), old);
    EXPECT_EQ(p.Node(6).LastChild()->Previous()->Text, " -> Chapter 3");
}

TEST(Chapters, YesReplacesTheChaptersAndTheActionsFollowThem)
{
    const fs::path movie = mw::test::ChapterMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    CountChapters(p, "3");
    const std::vector<std::string> old = ChapterIds(p.Node(6));
    mw::Document& doc = p.project.Doc;
    mw::DocNode& language = mw::CreateLanguageMenusNode(doc, "en");
    mw::test::AddPlayMenu(doc, language, "Scenes", "6", old[0]);
    mw::DocNode& unnamed = mw::test::AddPlayMenu(doc, language, "", "6", old[2]);
    const std::string button = mw::ObjectIdOf(*unnamed.Child(3));
    p.prompt.Answers.push_back(mw::PromptAnswer::Yes);

    CountChapters(p, "2");

    const std::vector<std::string> ids = ChapterIds(p.Node(6));
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

TEST(Chapters, AllTitlesDivideEachMovieByItsOwnLength)
{
    const fs::path minute = mw::test::ChapterMovie();
    const fs::path cut = mw::test::CutMovie();
    REQUIRE_MOVIE(minute);
    REQUIRE_MOVIE(cut);
    TitleProject p;
    p.StartWith(minute);
    mw::AddTitle(p.project, cut.string());
    mw::ChapForm form = p.OpenChapForm();
    form.Mode = ChapMode::Count;
    form.txtChapters = "2";
    mw::CalcChapters(form, p.prompt);
    form.chkAll = true;

    mw::CreateChaps(p.project, form, false);

    const std::vector<mw::DocNode*> titles = mw::TitleNodes(p.project.Doc);
    ASSERT_EQ(titles.size(), 2u);
    EXPECT_EQ(ChapterFrames(*titles[0]), (Pairs{{0, 749}, {750, 1499}}));
    EXPECT_EQ(ChapterFrames(*titles[1]), (Pairs{{0, 249}, {250, 499}}));
}

TEST(Chapters, ATitleWhoseTracksCannotBeReadGetsNoChapters)
{
    const fs::path movie = mw::test::ChapterMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    mw::ChapForm form = p.OpenChapForm();
    form.lstTracks.clear();
    form.txtChapters = "2";
    const long next = p.project.Doc.NextObjectID;
    mw::CreateChaps(p.project, form, false);
    EXPECT_EQ(p.prompt.Texts(), (std::vector<std::string>{"An error occured loading tracks"}));
    EXPECT_TRUE(mw::ChapterNodesOf(p.Node(6)).empty());
    EXPECT_EQ(p.project.Doc.NextObjectID, next);
}

TEST(Chapters, AStreamOfUnknownTypeIsToldForEveryChapter)
{
    const fs::path movie = mw::test::ChapterMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
    mw::ChapForm form = p.OpenChapForm();
    form.lstTracks.push_back({"Unknown", "", "", "02??", "", ""});
    form.Mode = ChapMode::Manual;
    form.ListView1 = {{1, 0, 99, ""}, {2, 100, 199, ""}};
    mw::CreateChaps(p.project, form, false);

    EXPECT_EQ(p.prompt.Texts(), (std::vector<std::string>(2, "Can not detect type for stream number 3")));
    const mw::DocNode& track = *mw::ChapterNodesOf(p.Node(6))[0]->LastChild();
    EXPECT_EQ(Dump(track), "node MediaTrack [" + track.Key() + "]\n  objectid " + track.FirstChild()->Text +
                               "\n  prop mediaSourceID = 7\n  prop sourceTrackID = none\n");
}

TEST(Chapters, TheCommandShowsTheDialogOnTheFirstTitle)
{
    const fs::path movie = mw::test::ChapterMovie();
    REQUIRE_MOVIE(movie);
    TitleProject p;
    p.StartWith(movie);
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
