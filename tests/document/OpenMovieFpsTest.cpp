#include "ProjectFixture.h"

namespace mw::test {
namespace {

// Opening learns the frame rate from the last source of the last title, found beside the project.
class OpenMovieFpsTest : public ProjectFixture {
protected:
    void SetUp() override
    {
        project.ReadMovieFps = [this](const std::string& movie, double& fps, Prompt&) {
            read.push_back(movie);
            fps = 25;
        };
    }
    std::vector<std::string> read;
};

TEST_F(OpenMovieFpsTest, TheLastTitlesMovieIsReadFromTheProjectFolder)
{
    std::string xml = kMenuProject;
    xml.replace(xml.find("</Media>"), 0,
                "<Title objectID=\"40\"><MediaSource objectID=\"41\" location=\"old.avi\"/>"
                "<MediaSource objectID=\"42\" location=\"sub/last.avi\"/></Title>");
    work.Write("sub/last.avi", "RIFF");
    project.MovieFps = 10;
    Open("p.xml", xml);
    EXPECT_EQ(read, std::vector<std::string>{(work.Path() / "sub/last.avi").string()});
    EXPECT_EQ(project.MovieFps, 25);

    // A missing movie is not read, and the rate starts again.
    read.clear();
    Open("q.xml");
    EXPECT_TRUE(read.empty());
    EXPECT_EQ(project.MovieFps, 23.976);
}

} // namespace
} // namespace mw::test
