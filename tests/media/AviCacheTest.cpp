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

TEST(AviCache, ACommandReadsEachFileOnceAndAgainOnlyWhenItChanged)
{
    ScratchFolder folder;
    const std::string path = folder.Write("movie.avi", NamedMovie(8)).string();
    // Without a scope every question reads the file.
    EXPECT_NE(OpenAvi(path, AviRead::HeadersAndIndex), OpenAvi(path, AviRead::HeadersAndIndex));

    {
        const AviCacheScope command;
        const auto headers = OpenAvi(path, AviRead::Headers);
        ASSERT_TRUE(headers);
        EXPECT_FALSE(headers->HasIndex());
        EXPECT_EQ(OpenAvi(path, AviRead::Headers), headers);
        const auto indexed = OpenAvi(path, AviRead::HeadersAndIndex); // headers alone do not answer this
        ASSERT_TRUE(indexed && indexed->HasIndex());
        EXPECT_NE(indexed, headers);
        {
            const AviCacheScope inner; // shares the command's files
            EXPECT_EQ(OpenAvi(path, AviRead::Headers), indexed);
        }
        EXPECT_EQ(OpenAvi(path, AviRead::HeadersAndIndex), indexed);

        folder.Write("movie.avi", NamedMovie(12));
        const auto changed = OpenAvi(path, AviRead::HeadersAndIndex);
        ASSERT_TRUE(changed);
        EXPECT_EQ(changed->Stream(0).Chunks.size(), 12u);

        // A name written by the program is read back at once, even within one tick of the
        // file system's clock.
        ScriptedPrompt prompt;
        ASSERT_TRUE(SetStreamName(path, 0, "Renamed", prompt));
        TrackRows rows;
        double fps = 0;
        ASSERT_TRUE(LoadStreamsToListView(path, rows, false, fps, prompt));
        EXPECT_EQ(rows.at(0).NameLanguage, "Renamed");

        std::filesystem::remove(path);
        EXPECT_FALSE(OpenAvi(path, AviRead::Headers));
    }
}
