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

    // Runs that must leave the project's file as it was; Out is how standard output starts.
    struct Refusal {
        const char* Command;
        std::string Rest;
        int Exit;
        std::string Out;
    };
    void ExpectRefused(const std::vector<Refusal>& refusals)
    {
        const std::string before = Saved();
        for (const Refusal& r : refusals) {
            SCOPED_TRACE(std::string(r.Command) + " " + r.Rest);
            const CommandResult result = On(r.Command, r.Rest);
            EXPECT_EQ(result.Exit, r.Exit);
            EXPECT_EQ(result.Out.substr(0, r.Out.size()), r.Out);
            EXPECT_EQ(Saved(), before);
        }
    }

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

TEST_F(CliTitles, RefusalsBadCommandLinesAndAnswersOtherThanYesLeaveTheFileAsItWas)
{
    ASSERT_EQ(On("chapters", "6 --count 3").Exit, 0);
    const std::string empty = Quoted(folder.Write("empty.txt", "00:00:10\n"));
    ExpectRefused({
        {"chapters", "6 --count 2 --answer cancel", 4, ""},
        {"remove-title", "6 --answer cancel", 4, ""}, // a Yes/No question is declined
        {"remove-title", "6 --answer no", 0, ""},
        {"chapters", "6 --manual 0-100,100-100", 1, "Error in frames\n"},
        {"chapters", "6 --import " + empty, 1, "Can not find any chapter\n"},
        {"chapters", "6", 2, ""}, {"chapters", "6 --count 2 --every 1", 2, ""}, {"chapters", "99 --count 2", 2, ""},
        {"chapters", "7 --count 2", 2, ""}, {"chapters", "6 --count 0", 2, ""}, {"chapters", "6 --manual 0-x", 2, ""},
        {"chapters", "6 --manual 5", 2, ""}, {"chapters", "6 --manual 0-10,,20-30", 2, ""},
        {"add-title", Quoted(folder.Path() / "missing.avi"), 2, ""}, {"add-title", "", 2, ""},
        {"refresh-title", "7", 2, ""}, {"remove-title", "99", 2, ""}, // 7 is a source, not a title
    });
}

TEST_F(CliTitles, AMovieThatCannotBeReadExitsOneAndSavesNothing)
{
    ASSERT_EQ(On("add-title", Quoted(Short())).Exit, 0); // title 12
    ASSERT_EQ(On("chapters", "12 --count 2").Exit, 0);
    const std::string junk = Quoted(folder.Write("junk.avi", "not a movie"));
    fs::remove(Movie());
    fs::remove(Short());
    const std::string error = "Error geting info for file";
    ExpectRefused({{"refresh-title", "6", 1, error}, {"refresh-title", "12", 1, error}, {"add-title", junk, 1, error},
                   {"chapters", "6 --count 2", 1, error}, {"chapters", "12 --manual 0-9", 1, error}});
}

TEST_F(CliTitles, InPlaceTheFileReadIsWrittenWhateverItsExtension)
{
    const fs::path other = folder.Path() / "p.proj";
    fs::copy_file(Project(), other);
    ASSERT_EQ(Run("chapters " + Quoted(other) + " 6 --count 2").Exit, 0);
    EXPECT_NE(mw::test::ReadAll(other).find("<Chapter "), std::string::npos);
    EXPECT_FALSE(fs::exists(folder.Path() / "p.proj.xml"));
}
