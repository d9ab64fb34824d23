// The title and chapter commands of the command line, and a project taken from "new" through
// every chapter mode, a refresh and a removal to a file that checks clean.
#include "core/ScratchFolder.h"
#include "media/TitleTestKit.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

struct RunResult {
    int Exit = -1;
    std::string Out;
};

RunResult RunCli(const fs::path& home, const std::string& arguments)
{
    const std::string command =
        "MENUWRIGHT_HOME='" + home.string() + "' '" + MENUWRIGHT_CLI_PATH + "' " + arguments + " 2>/dev/null";
    RunResult result;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return result;
    std::array<char, 4096> buffer{};
    std::size_t n = 0;
    while ((n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0)
        result.Out.append(buffer.data(), n);
    const int status = pclose(pipe);
    result.Exit = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

// The file without carriage returns and trailing blanks, to compare with a written-out text.
std::string Normalised(const fs::path& file)
{
    std::string text;
    for (char c : mw::test::ReadAll(file)) {
        if (c != '\r')
            text += c;
    }
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    return text;
}

// A project made by "new" around a minute of movie, with a short movie beside it.
class CliTitles : public ::testing::Test {
protected:
    void SetUp() override
    {
        const fs::path minute = mw::test::ChapterMovie();
        const fs::path shorter = mw::test::ShortMovie();
        if (minute.empty() || shorter.empty())
            GTEST_SKIP() << "ffmpeg could not make the movies";
        fs::copy_file(minute, Movie());
        fs::copy_file(shorter, Short());
        ASSERT_EQ(Run("new " + Quoted(Movie()) + " -o " + Quoted(Project())).Exit, 0);
    }

    RunResult Run(const std::string& arguments) { return RunCli(folder.Path(), arguments); }
    // A command on the project.
    RunResult On(const std::string& command, const std::string& rest)
    {
        return Run(command + " " + Quoted(Project()) + " " + rest);
    }
    static std::string Quoted(const fs::path& path) { return "'" + path.string() + "'"; }

    fs::path Movie() const { return folder.Path() / "movie.avi"; }
    fs::path Short() const { return folder.Path() / "short.avi"; }
    fs::path Project() const { return folder.Path() / "project.xml"; }

    mw::test::ScratchFolder folder;
};

} // namespace

TEST_F(CliTitles, EveryModeThenRefreshAndRemoveLeaveExactlyTheExpectedProject)
{
    const std::string question = "Seems that this title has chapters. Delete them first?\r\n" + Movie().string() + "\n";
    ASSERT_EQ(On("add-title", Quoted(Short())).Exit, 0);                // title 12, tracks 16 and 17
    ASSERT_EQ(On("refresh-title", "12").Exit, 0);                        // tracks 20 and 21
    ASSERT_EQ(On("chapters", "6 --count 2").Exit, 0);                    // chapters 24 and 31
    EXPECT_EQ(On("chapters", "6 --every 0.25").Out, question);           // chapters 36 to 53
    const fs::path times = folder.Write("times.txt", "[CHAPTERS]\r\n00:00:01.000\r\n");
    EXPECT_EQ(On("chapters", "6 --import " + Quoted(times) + " --all").Out, question); // 58, 65; 70, 77
    ASSERT_EQ(On("chapters", "12 --manual 0-9:Intro,10-49").Exit, 0);    // chapters 82 and 89
    const std::string middle = Normalised(Project());
    EXPECT_NE(middle.find("<Translation objectID=\"84\" languageCode=\"en\" value=\"Intro\" />"), std::string::npos);
    EXPECT_NE(middle.find("<MediaTrack objectID=\"92\" mediaSourceID=\"15\" sourceTrackID=\"none\" trackID=\"00dc\" "
                          "startFrame=\"10\" endFrame=\"49\" type=\"video\" />"),
              std::string::npos);
    ASSERT_EQ(On("refresh-title", "6").Exit, 0);                         // chapters 94 and 101
    const RunResult removed = On("remove-title", "12");
    EXPECT_EQ(removed.Out, "Are you sure you want to delete the selected title?\r\n"
                           "Also will be deleted any menu that is related to this title.\n");

    // The translation of title 12's own audio track stays: the title had chapters.
    const std::string audio = "trackID=\"01wb\" languageCode=\"en\" ";
    const std::string strn = "strn=\"Audio - en-US;02\" ";
    EXPECT_EQ(Normalised(Project()),
              "<DivXMediaManager menuVersion=\"1\" objectID=\"1\" defaultMenuLanguage=\"en\" version=\"1.0\">\n"
              "\t<TranslationTable objectID=\"3\">\n"
              "\t\t<TranslationLookup objectID=\"4\">\n"
              "\t\t\t<Translation objectID=\"5\" languageCode=\"en\" value=\"Main Feature\" />\n"
              "\t\t</TranslationLookup>\n"
              "\t\t<TranslationLookup objectID=\"10\">\n"
              "\t\t\t<Translation objectID=\"11\" languageCode=\"en\" value=\"Audio - en-US;02\" />\n"
              "\t\t</TranslationLookup>\n"
              "\t\t<TranslationLookup objectID=\"22\">\n"
              "\t\t\t<Translation objectID=\"23\" languageCode=\"en\" value=\"Audio - en-US;02\" />\n"
              "\t\t</TranslationLookup>\n"
              "\t\t<TranslationLookup objectID=\"95\">\n"
              "\t\t\t<Translation objectID=\"96\" languageCode=\"en\" value=\"1\" />\n"
              "\t\t</TranslationLookup>\n"
              "\t\t<TranslationLookup objectID=\"99\">\n"
              "\t\t\t<Translation objectID=\"100\" languageCode=\"en\" value=\"Audio - en-US;02\" />\n"
              "\t\t</TranslationLookup>\n"
              "\t\t<TranslationLookup objectID=\"102\">\n"
              "\t\t\t<Translation objectID=\"103\" languageCode=\"en\" value=\"2\" />\n"
              "\t\t</TranslationLookup>\n"
              "\t</TranslationTable>\n"
              "\t<Media objectID=\"2\">\n"
              "\t\t<Title objectID=\"6\" translationLookupID=\"4\" defaultAudioTrack=\"01wb\" "
              "defaultSubtitleTrack=\"none\">\n"
              "\t\t\t<MediaSource objectID=\"7\" mediaType=\"featureAvi\" location=\"" +
                  Movie().string() +
                  "\" />\n"
                  "\t\t\t<MediaTrack objectID=\"8\" mediaSourceID=\"7\" trackID=\"00dc\" startFrame=\"0\" "
                  "endFrame=\"1499\" type=\"video\" />\n"
                  "\t\t\t<MediaTrack objectID=\"9\" mediaSourceID=\"7\" " +
                  audio + strn +
                  "translationLookupID=\"10\" type=\"audio\" />\n"
                  "\t\t\t<!-- -> Chapter 1 -->\n"
                  "\t\t\t<Chapter objectID=\"94\" translationLookupID=\"95\">\n"
                  "\t\t\t\t<MediaTrack objectID=\"97\" mediaSourceID=\"7\" sourceTrackID=\"none\" trackID=\"00dc\" "
                  "startFrame=\"0\" endFrame=\"24\" type=\"video\" />\n"
                  "\t\t\t\t<MediaTrack objectID=\"98\" mediaSourceID=\"7\" sourceTrackID=\"none\" " +
                  audio + strn +
                  "translationLookupID=\"99\" type=\"audio\" />\n"
                  "\t\t\t</Chapter>\n"
                  "\t\t\t<!-- -> Chapter 2 -->\n"
                  "\t\t\t<Chapter objectID=\"101\" translationLookupID=\"102\">\n"
                  "\t\t\t\t<MediaTrack objectID=\"104\" mediaSourceID=\"7\" sourceTrackID=\"none\" trackID=\"00dc\" "
                  "startFrame=\"25\" endFrame=\"1499\" type=\"video\" />\n"
                  "\t\t\t\t<MediaTrack objectID=\"105\" mediaSourceID=\"7\" sourceTrackID=\"none\" " +
                  audio +
                  "translationLookupID=\"99\" type=\"audio\" />\n"
                  "\t\t\t</Chapter>\n"
                  "\t\t</Title>\n"
                  "\t</Media>\n"
                  "</DivXMediaManager>");

    const RunResult check = Run("check " + Quoted(Project()));
    EXPECT_EQ(check.Exit, 0);
    EXPECT_EQ(check.Out, "Checking complete with no errors\n");
}

TEST_F(CliTitles, AnAnswerOtherThanYesLeavesTheFileAsItWas)
{
    ASSERT_EQ(On("chapters", "6 --count 3").Exit, 0);
    const std::string before = mw::test::ReadAll(Project());
    EXPECT_EQ(On("chapters", "6 --count 2 --answer cancel").Exit, 0);
    EXPECT_EQ(mw::test::ReadAll(Project()), before);
    EXPECT_EQ(On("remove-title", "6 --answer no").Exit, 0);
    EXPECT_EQ(mw::test::ReadAll(Project()), before);
    // A refused hand-made list is not saved either.
    const RunResult refused = On("chapters", "6 --manual 0-100,100-100");
    EXPECT_EQ(refused.Exit, 1);
    EXPECT_EQ(refused.Out, "Error in frames\n");
    EXPECT_EQ(mw::test::ReadAll(Project()), before);
}

TEST_F(CliTitles, ChapterFilesWithoutChaptersAreRefused)
{
    const fs::path empty = folder.Write("empty.txt", "00:00:10\n");
    const RunResult r = On("chapters", "6 --import " + Quoted(empty));
    EXPECT_EQ(r.Exit, 1);
    EXPECT_EQ(r.Out, "Can not find any chapter\n");
}

TEST_F(CliTitles, BadCommandLinesExitTwo)
{
    const std::string before = mw::test::ReadAll(Project());
    for (const char* args : {"6", "6 --count 2 --every 1", "99 --count 2", "7 --count 2", "6 --count 0",
                             "6 --manual 0-x", "6 --manual 5", "6 --manual 0-10,,20-30"}) {
        SCOPED_TRACE(args);
        EXPECT_EQ(On("chapters", args).Exit, 2);
    }
    EXPECT_EQ(On("add-title", Quoted(folder.Path() / "missing.avi")).Exit, 2);
    EXPECT_EQ(On("add-title", "").Exit, 2);
    EXPECT_EQ(On("refresh-title", "7").Exit, 2); // a source, not a title
    EXPECT_EQ(On("remove-title", "99").Exit, 2);
    EXPECT_EQ(mw::test::ReadAll(Project()), before);
}
