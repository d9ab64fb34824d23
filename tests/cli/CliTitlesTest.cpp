// The title and chapter commands of the command line: a project taken from "new" through every
// chapter mode, a refresh and a removal to a file that checks clean.
#include "cli/CliFixture.h"
#include "media/TitleTestKit.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

// A project made by "new" around a minute of movie, with a short movie beside it.
class CliTitles : public mw::test::CliFixture {
protected:
    void SetUp() override
    {
        REQUIRE_MEDIA(!CopyMovie(mw::test::ChapterMovie(), "movie.avi").empty() &&
                          !CopyMovie(mw::test::ShortMovie(), "short.avi").empty(),
                      "ffmpeg could not make the movies");
        ASSERT_EQ(Run("new " + Quoted(Movie()) + " -o " + Quoted(Project())).Exit, 0);
    }

    // A command on the project.
    CommandResult On(const std::string& command, const std::string& rest)
    {
        return Run(command + " " + Quoted(Project()) + " " + rest);
    }
    std::string Saved() const { return mw::test::ReadAll(Project()); }

    fs::path Movie() const { return folder.Path() / "movie.avi"; }
    fs::path Short() const { return folder.Path() / "short.avi"; }
    fs::path Project() const { return folder.Path() / "project.xml"; }
};

} // namespace

TEST_F(CliTitles, EveryModeThenRefreshAndRemoveLeaveTheExpectedProject)
{
    const std::string question = "Seems that this title has chapters. Delete them first?\r\n" + Movie().string() + "\n";
    ASSERT_EQ(On("add-title", Quoted(Short())).Exit, 0);             // title 12, tracks 16 and 17
    ASSERT_EQ(On("refresh-title", "12").Exit, 0);                     // tracks 20 and 21
    ASSERT_EQ(On("chapters", "6 --count 2").Exit, 0);                 // chapters 24 and 31
    EXPECT_EQ(On("chapters", "6 --every 0.25").Out, question);        // chapters 36 to 53
    const fs::path times = folder.Write("times.txt", "[CHAPTERS]\r\n00:00:01.000\r\n");
    EXPECT_EQ(On("chapters", "6 --import " + Quoted(times) + " --all").Out, question); // 58, 65; 70, 77
    ASSERT_EQ(On("chapters", "12 --manual 0-9:Intro,10-49").Exit, 0); // chapters 82 and 89
    std::string saved = Saved();
    EXPECT_NE(saved.find(R"(<Translation objectID="84" languageCode="en" value="Intro" />)"), std::string::npos);
    EXPECT_NE(saved.find(R"(<MediaTrack objectID="92" mediaSourceID="15" sourceTrackID="none" trackID="00dc" )"
                         R"(startFrame="10" endFrame="49" type="video" />)"),
              std::string::npos);
    ASSERT_EQ(On("refresh-title", "6").Exit, 0); // chapters 94 and 101
    EXPECT_EQ(On("remove-title", "12").Out, "Are you sure you want to delete the selected title?\r\n"
                                            "Also will be deleted any menu that is related to this title.\n");

    // Title 12 went, but its own audio track's translation (22) stays: the title had chapters.
    saved = Saved();
    for (const char* kept : {R"(<TranslationLookup objectID="22">)", R"(<Chapter objectID="94" translationLookupID="95">)",
                             R"(trackID="00dc" startFrame="0" endFrame="24" type="video")",
                             R"(<Chapter objectID="101" translationLookupID="102">)",
                             R"(trackID="00dc" startFrame="25" endFrame="1499" type="video")",
                             R"(trackID="01wb" languageCode="en" translationLookupID="99" type="audio")"})
        EXPECT_NE(saved.find(kept), std::string::npos) << kept;
    for (const char* gone : {R"(objectID="12")", R"(objectID="13")", R"(mediaSourceID="15")", R"(objectID="84")"})
        EXPECT_EQ(saved.find(gone), std::string::npos) << gone;
    const CommandResult check = Run("check " + Quoted(Project()));
    EXPECT_EQ(check.Exit, 0);
    EXPECT_EQ(check.Out, "Checking complete with no errors\n");
}

TEST_F(CliTitles, RefusalsAndAnswersOtherThanYesLeaveTheFileAsItWas)
{
    ASSERT_EQ(On("chapters", "6 --count 3").Exit, 0);
    const std::string before = Saved();
    EXPECT_EQ(On("chapters", "6 --count 2 --answer cancel").Exit, 0);
    EXPECT_EQ(On("remove-title", "6 --answer no").Exit, 0);
    const CommandResult frames = On("chapters", "6 --manual 0-100,100-100");
    EXPECT_EQ(frames.Exit, 1);
    EXPECT_EQ(frames.Out, "Error in frames\n");
    const CommandResult empty = On("chapters", "6 --import " + Quoted(folder.Write("empty.txt", "00:00:10\n")));
    EXPECT_EQ(empty.Exit, 1);
    EXPECT_EQ(empty.Out, "Can not find any chapter\n");
    EXPECT_EQ(Saved(), before);
}

TEST_F(CliTitles, BadCommandLinesExitTwo)
{
    const std::string before = Saved();
    for (const char* args : {"6", "6 --count 2 --every 1", "99 --count 2", "7 --count 2", "6 --count 0",
                             "6 --manual 0-x", "6 --manual 5", "6 --manual 0-10,,20-30"}) {
        SCOPED_TRACE(args);
        EXPECT_EQ(On("chapters", args).Exit, 2);
    }
    EXPECT_EQ(On("add-title", Quoted(folder.Path() / "missing.avi")).Exit, 2);
    EXPECT_EQ(On("add-title", "").Exit, 2);
    EXPECT_EQ(On("refresh-title", "7").Exit, 2); // a source, not a title
    EXPECT_EQ(On("remove-title", "99").Exit, 2);
    EXPECT_EQ(Saved(), before);
}
