// The pic2avi command: the built-in route from the command line, its exit codes and messages.
#include "build/BuildTestFiles.h"
#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using mw::Rgb;

class Pic2AviCli : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!mw::test::HaveTool("ffprobe"))
            GTEST_SKIP() << "ffprobe is not installed";
    }
    mw::test::CommandResult Cli(const std::string& arguments) const
    {
        return mw::test::RunCommand("MENUWRIGHT_HOME='" + folder_.Path().string() + "' '" MENUWRIGHT_CLI_PATH
                                    "' pic2avi " + arguments + " 2>/dev/null");
    }
    std::string Picture(const std::string& name, int width, int height) const
    {
        return "'" + mw::test::SavePicture(folder_.Path() / name, width, height, Rgb(10, 20, 30)).string() + "'";
    }
    fs::path Output() const { return folder_.Path() / "menu.avi"; }

    mw::test::ScratchFolder folder_;
};

TEST_F(Pic2AviCli, OnePictureOrSeveralMakeTheVideo)
{
    const std::string out = " -o '" + (folder_.Path() / "menu").string() + "'"; // ".avi" is added
    auto run = Cli(Picture("a.bmp", 64, 48) + out + " --fps 25");
    EXPECT_EQ(run.Exit, 0);
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(mw::test::ProbeStream(Output(), "v:0").at("nb_read_packets"), "125");

    run = Cli(Picture("a.bmp", 64, 48) + " " + Picture("b.bmp", 64, 48) + out + " --fps 29.97");
    EXPECT_EQ(run.Exit, 0);
    const auto probe = mw::test::ProbeStream(Output(), "v:0");
    EXPECT_EQ(probe.at("nb_read_packets"), "2");
    EXPECT_EQ(probe.at("r_frame_rate"), "2997/100");
}

TEST_F(Pic2AviCli, FailuresPrintTheMessageAndExit1)
{
    auto run = Cli("'" + (folder_.Path() / "none.png").string() + "' -o '" + Output().string() + "' --fps 25");
    EXPECT_EQ(run.Exit, 1);
    EXPECT_EQ(run.Out, "Image not found\n");

    run = Cli(Picture("big.bmp", 800, 600) + " -o '" + Output().string() + "' --fps 1");
    EXPECT_EQ(run.Exit, 0);
    EXPECT_EQ(run.Out, "Be sure that image size is not more than 720x576 pixels\n");
}

TEST_F(Pic2AviCli, ABadCommandLineExits2)
{
    const std::string picture = Picture("a.bmp", 16, 16);
    const std::string out = " -o '" + Output().string() + "'";
    for (const std::string& arguments : {picture + " --fps 25", picture + out, out + " --fps 25",
                                         picture + out + " --fps fast", picture + out + " --fps 0",
                                         picture + out + " --fps 25 --audio"}) {
        EXPECT_EQ(Cli(arguments).Exit, 2) << arguments;
    }
    EXPECT_FALSE(fs::exists(Output()));
}

} // namespace
