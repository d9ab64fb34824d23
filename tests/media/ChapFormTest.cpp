// The chapter dialog as data: the title list, the regular division, the hand-made list, the
// import of chapter files and the checks before it is accepted.
#include "media/TitleTestKit.h"

#include "core/settings/clsIniFile.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

namespace fs = std::filesystem;
using mw::ChapMode;

using Pairs = std::vector<std::pair<long, long>>;
using Texts = std::vector<std::string>;

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

TEST_F(ChapFormTest, ChoosingATitleLoadsItsMovieAndListsItsChapters)
{
    mw::ChapForm form = p.OpenChapForm();
    EXPECT_EQ(form.lblRuntime, "00:01:00.000");
    EXPECT_EQ(form.lblEndFrame, 1499);
    EXPECT_DOUBLE_EQ(form.Fps, 25.0);
    ASSERT_EQ(form.lstTracks.size(), 2u);
    EXPECT_TRUE(form.ListView1.empty());

    form.Mode = ChapMode::Manual;
    form.ListView1 = {{1, 0, 99, "Opening"}, {2, 100, 1499, ""}};
    mw::CreateChaps(p.project, form, false);
    mw::ChapForm again = p.OpenChapForm();
    ASSERT_EQ(again.ListView1.size(), 2u);
    EXPECT_EQ(again.ListView1[0].Name, "Opening");
    EXPECT_EQ(again.ListView1[1].Name, "2");
    EXPECT_EQ(Frames(again), (Pairs{{0, 99}, {100, 1499}}));
    EXPECT_EQ(again.ListView1[1].Number, 2);
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
