// The command line's contract, which other tools script: texts on standard output, exit codes,
// files written; the project commands and the movie commands.
#include "CliFixture.h"
#include "media/AviBytes.h"
#include "media/MovieFixtures.h"
#include "media/TitleTestKit.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using mw::test::ReadAll;

const char* kProject = R"(<DivXMediaManager menuVersion="1" objectID="1" defaultMenuLanguage="en" version="1.0">
<TranslationTable objectID="3"/>
<Media objectID="2">
<Title objectID="6" translationLookupID="3">
<MediaSource objectID="7" mediaType="featureAvi" location="movie.avi"/>
</Title>
</Media>
<LanguageMenus objectID="9" languageCode="en" startingMenuID="12" rootMenuID="12">
<DivXMediaMenu objectID="12" exitAction="14" menuType="title">
<Action objectID="14"/>
<ButtonMenu objectID="15" selectAction="16" overlayID="40">
<Action objectID="16"/>
</ButtonMenu>
</DivXMediaMenu>
</LanguageMenus>
</DivXMediaManager>
)";

class Cli : public mw::test::CliFixture {
protected:
    void SetUp() override { folder.Write("project.xml", kProject); }
};

class CliMedia : public mw::test::CliFixture {
protected:
    void SetUp() override { Require("ffmpeg"); }
};

TEST_F(Cli, HelpVersionAndBadCommandLines)
{
    const CommandResult help = Run("--help");
    EXPECT_EQ(help.Exit, 0);
    EXPECT_NE(help.Out.find("normalize"), std::string::npos);
    EXPECT_EQ(Run("--version").Out.rfind("menuwright-cli ", 0), 0u);
    for (const char* arguments : {"", "frobnicate x.xml", "check", "check a.xml --answer maybe", "resave a.xml -o"})
        EXPECT_EQ(Run(arguments).Exit, 2) << arguments;
}

TEST_F(Cli, CheckPrintsEachFaultThenTheSummary)
{
    CommandResult r = Run("check project.xml");
    EXPECT_EQ(r.Exit, 1);
    EXPECT_EQ(r.Out, "Error while checking at node ButtonMenu (15). ID not found 40\n"
                     "Can not find file " + (folder.Path() / "movie.avi").string() +
                         "\nIs used as MediaSource in title Title (6)\n" // the line break is kept
                         "Checking complete with errors\n");

    std::string fixed = kProject;
    fixed.replace(fixed.find(" overlayID=\"40\""), 15, "");
    folder.Write("project.xml", fixed);
    folder.Write("movie.avi", "");
    r = Run("check project.xml");
    EXPECT_EQ(r.Exit, 0);
    EXPECT_EQ(r.Out, "Checking complete with no errors\n");
}

TEST_F(Cli, TextsComeFromTheLanguageOfTheSettingsFile)
{
    folder.Write("English.Menuwright.exe.xml", R"(<Lang><Form1_Module s22="Done with "/></Lang>)");
    folder.Write("German.Menuwright.exe.xml", R"(<Lang><Form1_Module s22="Fertig mit "/></Lang>)");
    const auto summary = [this] { // the last line
        const std::string out = Run("check project.xml").Out;
        return out.substr(out.rfind('\n', out.size() - 2) + 1);
    };
    EXPECT_EQ(summary(), "Done with errors\n");
    folder.Write("Menuwright.ini", "[General]\r\nLang=German\r\n");
    EXPECT_EQ(summary(), "Fertig mit errors\n");
    folder.Write("Menuwright.ini", "[General]\r\nLang=Nosuch\r\n"); // keeps the language of the start
    EXPECT_EQ(summary(), "Done with errors\n");
}

TEST_F(Cli, UnreadableInputExitsTwoWithTheReadersMessage)
{
    folder.Write("broken.xml", "<DivXMediaManager><Media></DivXMediaManager>");
    folder.Write("other.xml", "<html/>");
    for (const auto& [arguments, out] : {std::pair{"check broken.xml", "Error occured when parsing the XML file"},
                                         std::pair{"resave other.xml", "Seems that this xml file is not a valid DivX"},
                                         std::pair{"normalize nosuch.xml", "Cannot open the file"}}) {
        const CommandResult r = Run(arguments);
        EXPECT_EQ(r.Exit, 2) << arguments;
        EXPECT_EQ(r.Out.rfind(out, 0), 0u) << r.Out;
    }
    EXPECT_FALSE(fs::exists(folder.Path() / "nosuch.xml"));
}

TEST_F(Cli, ResaveWritesTheSameProjectAgainAndNormalizeSavesInPlace)
{
    ASSERT_EQ(Run("resave project.xml -o once.xml").Exit, 0);
    ASSERT_EQ(Run("resave once.xml -o twice.xml").Exit, 0);
    const std::string once = ReadAll(folder.Path() / "once.xml");
    EXPECT_EQ(ReadAll(folder.Path() / "twice.xml"), once);
    EXPECT_EQ(ReadAll(folder.Path() / "project.xml"), kProject); // the input is left alone
    EXPECT_NE(once.find("<ButtonMenu objectID=\"15\" selectAction=\"16\" overlayID=\"40\">"), std::string::npos);

    const CommandResult r = Run("normalize project.xml");
    EXPECT_EQ(r.Exit, 0);
    // Ten objects: 1 2 3 6 7 9 12 14 15 16 become 1..10; the dangling 40 gets 11.
    EXPECT_EQ(r.Out, "Error while normalize at ID 40. New ID for this will be 11\nNormalize complete\n");
    EXPECT_NE(ReadAll(folder.Path() / "project.xml").find(R"(<ButtonMenu objectID="9" selectAction="10" overlayID="11">)"),
              std::string::npos);
}

TEST_F(Cli, FailedSaveLeavesTheTargetAndExitsThree)
{
    // A folder standing where the file should go cannot be replaced by a file, even by root.
    folder.Write("taken.xml/keep.txt", "old");
    EXPECT_EQ(Run("resave project.xml -o taken.xml").Exit, 3);
    EXPECT_EQ(ReadAll(folder.Path() / "taken.xml" / "keep.txt"), "old");
    EXPECT_EQ(Run("resave project.xml -o no/such/folder/out.xml").Exit, 3);
}

TEST_F(Cli, NewTakesTheDialogsDefaultsOrTheChosenOnes)
{
    const fs::path movie = CopyMovie(mw::test::ShortMovie(), "movie.avi");
    REQUIRE_MEDIA(!movie.empty(), "ffmpeg is not available");
    const CommandResult r = Run("new movie.avi -o made");
    EXPECT_EQ(r.Exit, 0);
    EXPECT_EQ(r.Out, "");
    const std::string xml = ReadAll(folder.Path() / "made.xml"); // the name gets its extension
    for (const std::string& part : {std::string("defaultMenuLanguage=\"en\""),
                                    std::string("defaultAudioTrack=\"01wb\" defaultSubtitleTrack=\"none\""),
                                    "location=\"" + movie.string() + "\"", std::string("strn=\"Audio - en-US;02\"")})
        EXPECT_NE(xml.find(part), std::string::npos) << part;
    EXPECT_EQ(Run("check made.xml").Exit, 0);

    for (const auto& [options, expected] :
         {std::pair{"--default-audio none --lang de", "defaultMenuLanguage=\"de\""},
          std::pair{"--default-audio none", "defaultAudioTrack=\"none\""},
          std::pair{"--default-audio 1 --default-subtitle none", "defaultAudioTrack=\"01wb\""}}) {
        ASSERT_EQ(Run(std::string("new movie.avi -o chosen.xml ") + options).Exit, 0);
        EXPECT_NE(ReadAll(folder.Path() / "chosen.xml").find(expected), std::string::npos) << options;
    }
    // --lang was for one run.
    EXPECT_NE(ReadAll(folder.Path() / "chosen.xml").find("defaultMenuLanguage=\"en\""), std::string::npos);
}

TEST_F(Cli, NewRefusesWhatItCannotDo)
{
    REQUIRE_MEDIA(!CopyMovie(mw::test::ShortMovie(), "movie.avi").empty(), "ffmpeg is not available");
    for (const char* arguments :
         {"new movie.avi", "new -o x.xml", "new gone.avi -o x.xml", "new movie.avi -o x.xml --default-audio 0",
          "new movie.avi -o x.xml --default-subtitle 1", "new movie.avi -o x.xml --default-audio one",
          "new movie.avi -o x.xml --lang", "new movie.avi movie.avi -o x.xml"}) {
        SCOPED_TRACE(arguments);
        EXPECT_EQ(Run(arguments).Exit, 2);
        EXPECT_FALSE(fs::exists(folder.Path() / "x.xml"));
    }
    const CommandResult unsaved = Run("new movie.avi -o no/such/folder/x.xml");
    EXPECT_EQ(unsaved.Exit, 3);
    EXPECT_NE(unsaved.Out.find("Could not save"), std::string::npos) << unsaved.Out;
}

TEST_F(CliMedia, TracksPrintsTheRowsThenTheFpsOrExitsOne)
{
    const auto movie = mw::test::PalMovieWithTwoMp3();
    ASSERT_FALSE(movie.empty());
    const CommandResult r = Run("tracks " + Quoted(movie));
    EXPECT_EQ(r.Exit, 0);
    EXPECT_EQ(r.Out, "Video\t\t320 x 240 - PAL - 25 fps, Length: 00:00:02.040\t00dc\t0\t50\n"
                     "Audio\tAudio - en-US;02\tSamplesPerSec: 41.6666666666667, Length: 00:00:02.064\t01wb\t0\t85\n"
                     "Audio\tAudio - de-DE;03\tSamplesPerSec: 38.28125, Length: 00:00:02.038\t02wb\t0\t77\n"
                     "fps\t25\n");

    const fs::path garbage = folder.Write("garbage.avi", "not a movie");
    const CommandResult bad = Run("tracks " + Quoted(garbage));
    EXPECT_EQ(bad.Exit, 1);
    EXPECT_EQ(bad.Out, "Error geting info for file\n");
    const CommandResult key = Run("keyframe " + Quoted(garbage) + " 3");
    EXPECT_EQ(key.Exit, 1);
    EXPECT_EQ(key.Out, "Error geting info for file '" + garbage.string() + "'\n");

    EXPECT_EQ(Run("tracks").Exit, 2);
    EXPECT_EQ(Run("keyframe " + Quoted(movie) + " three").Exit, 2);
    EXPECT_EQ(Run("grab " + Quoted(movie) + " 3").Exit, 2); // no -o
}

TEST_F(CliMedia, KeyframeAndGrab)
{
    const auto movie = mw::test::DroppedFramesMovie(); // key frames 0, 8, 21; 10 to 14 dropped
    ASSERT_FALSE(movie.empty());
    EXPECT_EQ(Run("keyframe " + Quoted(movie) + " 12").Out, "8\n");
    EXPECT_EQ(Run("keyframe " + Quoted(movie) + " 12 --next").Out, "21\n");

    const fs::path out = folder.Path() / "frame.bmp";
    const CommandResult r = Run("grab " + Quoted(movie) + " 12 -o " + Quoted(out));
    EXPECT_EQ(r.Exit, 0);
    EXPECT_EQ(r.Out, "");
    const std::string bmp = mw::test::ReadAll(out);
    ASSERT_EQ(bmp.size(), 14u + 40 + 64 * 3 * 48); // 24 bits a pixel
    EXPECT_NEAR(static_cast<unsigned char>(bmp[54]), 88, 2); // frame 9's grey: 16 + 8 x 9
    EXPECT_EQ(Run("grab " + Quoted(movie) + " -1 -o " + Quoted(out)).Exit, 0);

    const fs::path none = folder.Path() / "none.bmp";
    const CommandResult beyond = Run("grab " + Quoted(movie) + " 26 -o " + Quoted(none));
    EXPECT_EQ(beyond.Exit, 1);
    EXPECT_EQ(beyond.Out, "Frame not found\n");
    EXPECT_FALSE(fs::exists(none));
}

TEST_F(CliMedia, StreamnameExitsZeroOnlyWhenTheNameWasWritten)
{
    mw::test::AviSpec spec;
    spec.Streams = {mw::test::VideoStream(2, 1), mw::test::VideoStream(2, 1)};
    spec.Streams[0].Name = std::string("Old\0", 4);
    spec.Streams[0].JunkAfterName = 32;
    spec.Streams[1].Name = std::string("Sub\0", 4);
    const fs::path movie = folder.Write("named.avi", mw::test::BuildAvi(spec).Bytes);

    EXPECT_EQ(Run("streamname " + Quoted(movie) + " 0 'Video - en-US;02'").Exit, 0);
    EXPECT_EQ(Run("streamname " + Quoted(movie) + " 1 'Subtitle - en-US;02'").Exit, 1); // no room
    EXPECT_EQ(Run("streamname " + Quoted(movie) + " 2 'Audio'").Exit, 1);                // no such stream
    EXPECT_EQ(Run("streamname " + Quoted(movie) + " x 'Audio'").Exit, 2);
    const std::string out = Run("tracks " + Quoted(movie)).Out;
    EXPECT_EQ(out.substr(0, out.find('\n')), "Video\tVideo - en-US;02\t64 x 48 - PAL - 25 fps, Length: "
                                             "00:00:00.080\t00dc\t0\t1");
    EXPECT_NE(out.find("\nVideo\tSub\t"), std::string::npos);
}

} // namespace
