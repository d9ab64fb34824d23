// The command line's contract, which other tools script: texts on standard output, exit codes,
// files written.
#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

struct RunResult {
    int Exit = -1;
    std::string Out;
};

// Runs the CLI with MENUWRIGHT_HOME set to home; standard error is dropped.
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

class Cli : public ::testing::Test {
protected:
    void SetUp() override
    {
        folder.Write("movie.avi", "");
        folder.Write("project.xml", kProject);
    }
    mw::test::ScratchFolder folder;
    fs::path Project() const { return folder.Path() / "project.xml"; }
};

} // namespace

TEST_F(Cli, HelpAndVersion)
{
    const RunResult help = RunCli(folder.Path(), "--help");
    EXPECT_EQ(help.Exit, 0);
    EXPECT_NE(help.Out.find("resave"), std::string::npos);
    EXPECT_NE(help.Out.find("normalize"), std::string::npos);
    const RunResult version = RunCli(folder.Path(), "--version");
    EXPECT_EQ(version.Exit, 0);
    EXPECT_EQ(version.Out.rfind("menuwright-cli ", 0), 0u);
}

TEST_F(Cli, BadCommandLinesExitTwo)
{
    EXPECT_EQ(RunCli(folder.Path(), "").Exit, 2);
    EXPECT_EQ(RunCli(folder.Path(), "frobnicate x.xml").Exit, 2);
    EXPECT_EQ(RunCli(folder.Path(), "check").Exit, 2);
    EXPECT_EQ(RunCli(folder.Path(), "check a.xml --answer maybe").Exit, 2);
    EXPECT_EQ(RunCli(folder.Path(), "resave a.xml -o").Exit, 2);
}

TEST_F(Cli, CheckPrintsEachFaultThenTheSummary)
{
    const RunResult r = RunCli(folder.Path(), "check '" + Project().string() + "'");
    EXPECT_EQ(r.Exit, 1);
    EXPECT_EQ(r.Out, "Error while checking at node ButtonMenu (15). ID not found 40\n"
                     "Checking complete with errors\n");

    // Remove the dangling overlay and the same project checks clean.
    std::string fixed = kProject;
    fixed.replace(fixed.find(" overlayID=\"40\""), 15, "");
    folder.Write("project.xml", fixed);
    const RunResult clean = RunCli(folder.Path(), "check '" + Project().string() + "'");
    EXPECT_EQ(clean.Exit, 0);
    EXPECT_EQ(clean.Out, "Checking complete with no errors\n");
}

TEST_F(Cli, MessagesWithLineBreaksKeepThem)
{
    fs::remove(folder.Path() / "movie.avi");
    const RunResult r = RunCli(folder.Path(), "check '" + Project().string() + "'");
    EXPECT_EQ(r.Exit, 1);
    const std::string missing = "Can not find file " + (folder.Path() / "movie.avi").string() +
                                "\nIs used as MediaSource in title ";
    EXPECT_NE(r.Out.find(missing), std::string::npos) << r.Out;
}

TEST_F(Cli, TextsComeFromTheLanguageFileOfTheProgramFolder)
{
    folder.Write("English.Menuwright.exe.xml",
                 R"(<Lang><Form1_Module s22="Fertig mit " s24="Fehlern"/></Lang>)");
    const RunResult r = RunCli(folder.Path(), "check '" + Project().string() + "'");
    EXPECT_NE(r.Out.find("Fertig mit Fehlern\n"), std::string::npos) << r.Out;
}

TEST_F(Cli, UnreadableInputExitsTwoWithTheReadersMessage)
{
    folder.Write("broken.xml", "<DivXMediaManager><Media></DivXMediaManager>");
    const RunResult broken = RunCli(folder.Path(), "check '" + (folder.Path() / "broken.xml").string() + "'");
    EXPECT_EQ(broken.Exit, 2);
    EXPECT_NE(broken.Out.find("Error occured when parsing the XML file"), std::string::npos);

    folder.Write("other.xml", "<html/>");
    const RunResult other = RunCli(folder.Path(), "resave '" + (folder.Path() / "other.xml").string() + "'");
    EXPECT_EQ(other.Exit, 2);
    EXPECT_EQ(other.Out, "Seems that this xml file is not a valid DivX xml file\n");

    const RunResult missing = RunCli(folder.Path(), "normalize '" + (folder.Path() / "nosuch.xml").string() + "'");
    EXPECT_EQ(missing.Exit, 2);
    EXPECT_FALSE(fs::exists(folder.Path() / "nosuch.xml"));
}

TEST_F(Cli, ResaveWritesTheSameProjectAgain)
{
    const fs::path once = folder.Path() / "once.xml";
    const fs::path twice = folder.Path() / "twice.xml";
    ASSERT_EQ(RunCli(folder.Path(), "resave '" + Project().string() + "' -o '" + once.string() + "'").Exit, 0);
    ASSERT_EQ(RunCli(folder.Path(), "resave '" + once.string() + "' -o '" + twice.string() + "'").Exit, 0);
    EXPECT_EQ(mw::test::ReadAll(once), mw::test::ReadAll(twice));
    EXPECT_EQ(mw::test::ReadAll(Project()), kProject); // the input is left alone
    EXPECT_NE(mw::test::ReadAll(once).find("<ButtonMenu objectID=\"15\" selectAction=\"16\" overlayID=\"40\">"),
              std::string::npos);
}

TEST_F(Cli, NormalizeReportsAndSavesInPlace)
{
    const RunResult r = RunCli(folder.Path(), "normalize '" + Project().string() + "'");
    EXPECT_EQ(r.Exit, 0);
    // Ten objects: 1 2 3 6 7 9 12 14 15 16 become 1..10; the dangling 40 gets 11.
    EXPECT_EQ(r.Out, "Error while normalize at ID 40. New ID for this will be 11\nNormalize complete\n");
    const std::string saved = mw::test::ReadAll(Project());
    EXPECT_NE(saved.find("<ButtonMenu objectID=\"9\" selectAction=\"10\" overlayID=\"11\">"), std::string::npos)
        << saved;
    EXPECT_NE(saved.find("<LanguageMenus objectID=\"6\" languageCode=\"en\" startingMenuID=\"7\" rootMenuID=\"7\">"),
              std::string::npos)
        << saved;
}

TEST_F(Cli, FailedSaveLeavesTheTargetAndExitsThree)
{
    // A folder standing where the file should go cannot be replaced by a file, even by root.
    const fs::path target = folder.Path() / "taken.xml";
    fs::create_directory(target);
    folder.Write("taken.xml/keep.txt", "old");
    const RunResult r = RunCli(folder.Path(), "resave '" + Project().string() + "' -o '" + target.string() + "'");
    EXPECT_EQ(r.Exit, 3);
    EXPECT_EQ(mw::test::ReadAll(target / "keep.txt"), "old");
    EXPECT_EQ(RunCli(folder.Path(), "resave '" + Project().string() + "' -o '" +
                                        (folder.Path() / "no/such/folder/out.xml").string() + "'")
                  .Exit,
              3);
}

TEST_F(Cli, TheLanguageOfTheSettingsFileIsUsed)
{
    folder.Write("English.Menuwright.exe.xml", R"(<Lang><Form1_Module s22="Done with "/></Lang>)");
    folder.Write("German.Menuwright.exe.xml", R"(<Lang><Form1_Module s22="Fertig mit "/></Lang>)");
    folder.Write("Menuwright.ini", "[General]\r\nLang=German\r\n");
    EXPECT_NE(RunCli(folder.Path(), "check '" + Project().string() + "'").Out.find("Fertig mit errors"),
              std::string::npos);

    // A language whose file is gone leaves the one of the start.
    folder.Write("Menuwright.ini", "[General]\r\nLang=Nosuch\r\n");
    EXPECT_NE(RunCli(folder.Path(), "check '" + Project().string() + "'").Out.find("Done with errors"),
              std::string::npos);
}
