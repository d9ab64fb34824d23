// The pic2avi command: the built-in route from the command line, its exit codes and messages.
#include "build/BuildTestFiles.h"
#include "cli/CliFixture.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class Pic2AviCli : public mw::test::CliFixture {
protected:
    void SetUp() override { Require("ffprobe"); }
    CommandResult Pic2Avi(const std::string& arguments) const { return Run("pic2avi " + arguments); }
    std::string Picture(const std::string& name, int width, int height) const
    {
        return Quoted(mw::test::SavePicture(folder.Path() / name, width, height, mw::Rgb(10, 20, 30)));
    }
    fs::path Output() const { return folder.Path() / "menu.avi"; }
};

TEST_F(Pic2AviCli, PicturesMakeTheVideo)
{
    const auto run = Pic2Avi(Picture("a.bmp", 64, 48) + " " + Picture("b.bmp", 64, 48) + " -o " +
                             Quoted(folder.Path() / "menu") + " --fps 25"); // ".avi" is added
    EXPECT_EQ(run.Exit, 0);
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(mw::test::ProbeStream(Output(), "v:0").at("nb_read_packets"), "2");
}

TEST_F(Pic2AviCli, FailuresPrintTheMessageAndExit1)
{
    auto run = Pic2Avi(Quoted(folder.Path() / "none.png") + " -o " + Quoted(Output()) + " --fps 25");
    EXPECT_EQ(run.Exit, 1);
    EXPECT_EQ(run.Out, "Image not found\n");

    run = Pic2Avi(Picture("big.bmp", 721, 576) + " -o " + Quoted(Output()) + " --fps 1");
    EXPECT_EQ(run.Exit, 0);
    EXPECT_EQ(run.Out, "Be sure that image size is not more than 720x576 pixels\n"); // once, not once per frame
}

TEST_F(Pic2AviCli, ABadCommandLineExits2)
{
    const std::string picture = Picture("a.bmp", 16, 16);
    const std::string out = " -o " + Quoted(Output());
    for (const std::string& arguments : {picture + " --fps 25", picture + out, out + " --fps 25",
                                         picture + out + " --fps fast", picture + out + " --fps 0",
                                         picture + out + " --fps 25 --audio"}) {
        EXPECT_EQ(Pic2Avi(arguments).Exit, 2) << arguments;
    }
    EXPECT_FALSE(fs::exists(Output()));
}

} // namespace
