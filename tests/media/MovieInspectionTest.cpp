// Track rows of movies made by the ffmpeg command, word for word.
#include "media/mAVIDecs.h"

#include "core/ScriptedPrompt.h"
#include "media/MovieFixtures.h"

#include <gtest/gtest.h>

using namespace mw;
using namespace mw::test;

TEST(MovieInspection, RowsOfMoviesMadeByFfmpeg)
{
    REQUIRE_MEDIA(HaveTool("ffmpeg"), "ffmpeg is not installed");
    const struct {
        const char* Name;
        std::filesystem::path (*Make)();
        std::vector<std::string> Rows;
        double Fps;
    } movies[] = {
        {"PAL with two MP3 streams",
         PalMovieWithTwoMp3,
         {"Video||320 x 240 - PAL - 25 fps, Length: 00:00:02.040|00dc|0|50",
          "Audio|Audio - en-US;02|SamplesPerSec: 41.6666666666667, Length: 00:00:02.064|01wb|0|85",
          "Audio|Audio - de-DE;03|SamplesPerSec: 38.28125, Length: 00:00:02.038|02wb|0|77"},
         25},
        {"NTSC", NtscMovie, {"Video||352 x 240 - NTSC - 23.976 fps, Length: 00:00:02.002|00dc|0|47"}, 23.976},
        {"XSUB subtitles",
         XsubMovie,
         {"Video||720 x 576 - PAL - 25 fps, Length: 00:00:03.000|00dc|0|74",
          "Subtitle|Subtitle - en-US;02|0 x 0 - Lenght: 1|01sb|0|0"},
         25},
    };
    for (const auto& movie : movies) {
        if (movie.Make == XsubMovie && !HaveTool("spumux")) {
            EXPECT_FALSE(InCi()) << "spumux (dvdauthor) is not installed";
            continue;
        }
        const auto file = movie.Make();
        ASSERT_FALSE(file.empty()) << movie.Name << ": the fixture could not be made";
        ScriptedPrompt prompt;
        TrackRows rows;
        double fps = 0;
        ASSERT_TRUE(LoadStreamsToListView(file.string(), rows, true, fps, prompt)) << movie.Name;
        std::vector<std::string> lines;
        for (const TrackRow& r : rows)
            lines.push_back(r.Kind + "|" + r.NameLanguage + "|" + r.Info + "|" + r.TrackID + "|" + r.StartFrame + "|" +
                            r.EndFrame);
        EXPECT_EQ(lines, movie.Rows) << movie.Name;
        EXPECT_DOUBLE_EQ(fps, movie.Fps) << movie.Name;
        EXPECT_TRUE(prompt.Log.empty()) << movie.Name;
    }
}
