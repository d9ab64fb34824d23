// The pic2avi command: the built-in route from the command line, its exit codes and messages.
#include "build/BuildTestFiles.h"
#include "cli/RunCli.h"
#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using mw::test::Quoted;

class Pic2AviCli : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!mw::test::HaveTool("ffprobe"))
            GTEST_SKIP() << "ffprobe is not installed";
    }
    mw::test::CommandResult Cli(const std::string& arguments) const
    {
        return mw::test::RunCli(folder_.Path(), "pic2avi " + arguments);
    }
    std::string Picture(const std::string& name, int width, int height) const
    {
        return Quoted(mw::test::SavePicture(folder_.Path() / name, width, height, mw::Rgb(10, 20, 30)));
    }
    fs::path Output() const { return folder_.Path() / "menu.avi"; }

    mw::test::ScratchFolder folder_;
};

TEST_F(Pic2AviCli, PicturesMakeTheVideo)
{
    const auto run = Cli(Picture("a.bmp", 64, 48) + " " + Picture("b.bmp", 64, 48) + " -o " +
                         Quoted(folder_.Path() / "menu") + " --fps 25"); // ".avi" is added
    EXPECT_EQ(run.Exit, 0);
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(mw::test::ProbeStream(Output(), "v:0").at("nb_read_packets"), "2");
}

TEST_F(Pic2AviCli, FailuresPrintTheMessageAndExit1)
{
    auto run = Cli(Quoted(folder_.Path() / "none.png") + " -o " + Quoted(Output()) + " --fps 25");
    EXPECT_EQ(run.Exit, 1);
    EXPECT_EQ(run.Out, "Image not found\n");

    run = Cli(Picture("big.bmp", 800, 600) + " -o " + Quoted(Output()) + " --fps 1");
    EXPECT_EQ(run.Exit, 0);
    EXPECT_EQ(run.Out, "Be sure that image size is not more than 720x576 pixels\n");
}

TEST_F(Pic2AviCli, ABadCommandLineExits2)
{
    const std::string picture = Picture("a.bmp", 16, 16);
    const std::string out = " -o " + Quoted(Output());
    for (const std::string& arguments : {picture + " --fps 25", picture + out, out + " --fps 25",
                                         picture + out + " --fps fast", picture + out + " --fps 0",
                                         picture + out + " --fps 25 --audio"}) {
        EXPECT_EQ(Cli(arguments).Exit, 2) << arguments;
    }
    EXPECT_FALSE(fs::exists(Output()));
}

} // namespace
