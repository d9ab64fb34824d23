#include "media/AviCache.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "media/AviBytes.h"
#include "media/mAVIDecs.h"

#include <gtest/gtest.h>

using namespace mw;
using namespace mw::test;

namespace {

std::string NamedMovie(std::size_t frames)
{
    AviSpec spec;
    spec.Streams = {VideoStream(frames, 4)};
    spec.Streams[0].Name = "Video";
    spec.Streams[0].JunkAfterName = 20;
    return BuildAvi(spec).Bytes;
}

} // namespace

TEST(AviCache, ACommandReadsEachFileOnceAndTheIndexOnlyForKeyFrames)
{
    ScratchFolder folder;
    const std::string path = folder.Write("movie.avi", NamedMovie(8)).string();
    // Without a scope every question reads the file.
    EXPECT_NE(OpenAvi(path, AviRead::HeadersAndIndex), OpenAvi(path, AviRead::HeadersAndIndex));

    const AviCacheScope command;
    ScriptedPrompt prompt;
    TrackRows rows;
    double fps = 0;
    ASSERT_TRUE(LoadStreamsToListView(path, rows, true, fps, prompt));
    long start = 0, length = 0, width = 0, height = 0;
    float rate = 0;
    EXPECT_EQ(GetStreamByType(path, "video", start, length, rate, width, height, prompt), 0);
    EXPECT_EQ(CountNonSubtitleStreams(path, prompt), 1);
    const auto headers = OpenAvi(path, AviRead::Headers);
    ASSERT_TRUE(headers);
    EXPECT_FALSE(headers->HasIndex()); // what the questions above kept

    EXPECT_EQ(FindNearestKeyFrame(path, 3, true, prompt), 4);
    const auto indexed = OpenAvi(path, AviRead::Headers);
    ASSERT_TRUE(indexed);
    EXPECT_TRUE(indexed->HasIndex());
    EXPECT_EQ(FindNextKeyFrame(path, 1, prompt), 4);
    {
        const AviCacheScope inner; // shares the command's files
        EXPECT_EQ(OpenAvi(path, AviRead::HeadersAndIndex), indexed);
    }

    EXPECT_EQ(FindNextKeyFrame(path, 5, prompt), -1);
    folder.Write("movie.avi", NamedMovie(12)); // another size: read again
    EXPECT_EQ(FindNextKeyFrame(path, 5, prompt), 8);
    // A name written by the program is read back at once, even within one tick of the file
    // system's clock.
    ASSERT_TRUE(SetStreamName(path, 0, "Renamed", prompt));
    rows.clear();
    ASSERT_TRUE(LoadStreamsToListView(path, rows, false, fps, prompt));
    EXPECT_EQ(rows.at(0).NameLanguage, "Renamed");
    EXPECT_TRUE(prompt.Log.empty());

    std::filesystem::remove(path);
    EXPECT_FALSE(OpenAvi(path, AviRead::Headers));
}
