// The command line's project commands: what they write, print and how they exit.
#include "CliFixture.h"
#include "media/TitleTestKit.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class CliProject : public mw::test::CliFixture {
protected:
    void SetUp() override
    {
        movie = CopyMovie(mw::test::ShortMovie(), "movie.avi");
        REQUIRE_MEDIA(!movie.empty(), "ffmpeg is not available");
    }
    std::string Saved(const std::string& name) const { return mw::test::ReadAll(folder.Path() / name); }

    fs::path movie;
};

TEST_F(CliProject, NewTakesTheDialogsDefaultsOrTheChosenOnes)
{
    const CommandResult r = Run("new movie.avi -o project");
    EXPECT_EQ(r.Exit, 0);
    EXPECT_EQ(r.Out, "");
    const std::string xml = Saved("project.xml"); // the name gets its extension
    for (const std::string& part : {std::string("defaultMenuLanguage=\"en\""),
                                    std::string("defaultAudioTrack=\"01wb\" defaultSubtitleTrack=\"none\""),
                                    "location=\"" + movie.string() + "\"", std::string("strn=\"Audio - en-US;02\"")})
        EXPECT_NE(xml.find(part), std::string::npos) << part;
    EXPECT_EQ(Run("check project.xml").Exit, 0);

    for (const auto& [options, expected] :
         {std::pair{"--default-audio none --lang de", "defaultMenuLanguage=\"de\""},
          std::pair{"--default-audio none", "defaultAudioTrack=\"none\""},
          std::pair{"--default-audio 1 --default-subtitle none", "defaultAudioTrack=\"01wb\""}}) {
        ASSERT_EQ(Run(std::string("new movie.avi -o chosen.xml ") + options).Exit, 0);
        EXPECT_NE(Saved("chosen.xml").find(expected), std::string::npos) << options;
    }
    EXPECT_NE(Saved("chosen.xml").find("defaultMenuLanguage=\"en\""), std::string::npos); // --lang was for one run
}

TEST_F(CliProject, NewRefusesWhatItCannotDo)
{
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

} // namespace
