// Track rows of movies made by the ffmpeg command, word for word, and the same movies as
// ffprobe sees them.
#include "media/mAVIDecs.h"

#include "core/NumberText.h"
#include "core/ScriptedPrompt.h"
#include "media/MovieFixtures.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

using namespace mw;
using namespace mw::test;

namespace {

using Fixture = std::filesystem::path (*)();

std::string Line(const TrackRow& row)
{
    return row.Kind + "|" + row.NameLanguage + "|" + row.Info + "|" + row.TrackID + "|" + row.StartFrame + "|" +
           row.EndFrame;
}

// One map of field to value per stream, from ffprobe's compact output.
std::vector<std::map<std::string, std::string>> Probe(const std::filesystem::path& file)
{
    std::vector<std::map<std::string, std::string>> streams;
    std::istringstream lines(CommandOutput("ffprobe -v error -show_streams -of compact=p=0 '" + file.string() + "'"));
    for (std::string line; std::getline(lines, line);) {
        auto& fields = streams.emplace_back();
        std::istringstream pairs(line);
        for (std::string pair; std::getline(pairs, pair, '|');) {
            const auto eq = pair.find('=');
            if (eq != std::string::npos)
                fields[pair.substr(0, eq)] = pair.substr(eq + 1);
        }
    }
    return streams;
}

double Ratio(const std::string& text)
{
    const auto slash = text.find('/');
    return std::stod(text.substr(0, slash)) / std::stod(text.substr(slash + 1));
}

const struct {
    const char* Name;
    Fixture Make;
    std::vector<std::string> Rows;
    double Fps;
} kMovies[] = {
    {"PAL with two MP3 streams",
     PalMovieWithTwoMp3,
     {"Video||320 x 240 - PAL - 25 fps, Length: 00:00:02.040|00dc|0|50",
      "Audio|Audio - en-US;02|SamplesPerSec: 41.6666666666667, Length: 00:00:02.064|01wb|0|85",
      "Audio|Audio - de-DE;03|SamplesPerSec: 38.28125, Length: 00:00:02.038|02wb|0|77"},
     25},
    {"NTSC",
     NtscMovie,
     {"Video||352 x 240 - NTSC - 23.976 fps, Length: 00:00:02.002|00dc|0|47"},
     23.976},
    {"XSUB subtitles",
     XsubMovie,
     {"Video||720 x 576 - PAL - 25 fps, Length: 00:00:03.000|00dc|0|74",
      "Subtitle|Subtitle - en-US;02|0 x 0 - Lenght: 1|01sb|0|0"},
     25},
};

} // namespace

TEST(MovieInspection, RowsOfMoviesMadeByFfmpeg)
{
    if (!HaveTool("ffmpeg"))
        GTEST_SKIP() << "ffmpeg is not installed";
    for (const auto& movie : kMovies) {
        if (movie.Make == XsubMovie && !HaveTool("spumux"))
            continue; // dvdauthor is not installed
        const auto file = movie.Make();
        ASSERT_FALSE(file.empty()) << movie.Name << ": the fixture could not be made";
        ScriptedPrompt prompt;
        TrackRows rows;
        double fps = 0;
        ASSERT_TRUE(LoadStreamsToListView(file.string(), rows, true, fps, prompt)) << movie.Name;
        std::vector<std::string> lines;
        for (const TrackRow& row : rows)
            lines.push_back(Line(row));
        EXPECT_EQ(lines, movie.Rows) << movie.Name;
        EXPECT_DOUBLE_EQ(fps, movie.Fps) << movie.Name;
        EXPECT_TRUE(prompt.Log.empty()) << movie.Name;
    }
}

TEST(MovieInspection, AgreesWithFfprobe)
{
    if (!HaveTool("ffmpeg") || !HaveTool("ffprobe"))
        GTEST_SKIP() << "ffmpeg or ffprobe is not installed";
    for (const auto& movie : kMovies) {
        if (movie.Make == XsubMovie && !HaveTool("spumux"))
            continue;
        const auto file = movie.Make();
        ASSERT_FALSE(file.empty()) << movie.Name;
        ScriptedPrompt prompt;
        TrackRows rows;
        double fps = 0;
        ASSERT_TRUE(LoadStreamsToListView(file.string(), rows, true, fps, prompt));
        const auto probed = Probe(file);
        ASSERT_EQ(probed.size(), rows.size()) << movie.Name;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            auto fields = probed[i];
            const std::string context = std::string(movie.Name) + ", stream " + std::to_string(i);
            const std::map<std::string, std::string> kinds = {
                {"video", "Video"}, {"audio", "Audio"}, {"subtitle", "Subtitle"}};
            EXPECT_EQ(kinds.at(fields["codec_type"]), rows[i].Kind) << context;
            EXPECT_EQ(std::stol(fields["nb_frames"]), std::stol(rows[i].EndFrame) + 1) << context;
            if (fields["codec_type"] == "video") {
                EXPECT_EQ(rows[i].Info.rfind(fields["width"] + " x " + fields["height"] + " - ", 0), 0u) << context;
                EXPECT_DOUBLE_EQ(RoundHalfEven(Ratio(fields["r_frame_rate"]), 3), fps) << context;
            }
            if (fields["codec_type"] == "audio") {
                // FFmpeg's time base of an AVI stream is its scale over its rate.
                const std::string samples = "SamplesPerSec: " + NumberText(1 / Ratio(fields["time_base"])) + ",";
                EXPECT_EQ(rows[i].Info.rfind(samples, 0), 0u) << context << ": " << rows[i].Info;
            }
        }
    }
}
