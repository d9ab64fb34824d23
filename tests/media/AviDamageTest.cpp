#include "media/AviFile.h"

#include "core/ScratchFolder.h"
#include "media/AviBytes.h"

#include <gtest/gtest.h>

using namespace mw;
using namespace mw::test;

namespace {

std::optional<AviFile> OpenBytes(const ScratchFolder& dir, const std::string& bytes, std::string* error = nullptr)
{
    return AviFile::Open(dir.Write("t.avi", bytes).string(), error);
}

void Patch32(std::string& bytes, std::size_t at, std::uint32_t value)
{
    for (int i = 0; i < 4; ++i)
        bytes[at + static_cast<std::size_t>(i)] = static_cast<char>((value >> (8 * i)) & 0xFF);
}

void Patch64(std::string& bytes, std::size_t at, std::uint64_t value)
{
    Patch32(bytes, at, static_cast<std::uint32_t>(value));
    Patch32(bytes, at + 4, static_cast<std::uint32_t>(value >> 32));
}

std::uint64_t Get64(const std::string& bytes, std::size_t at)
{
    std::uint64_t value = 0;
    for (int i = 7; i >= 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    return value;
}

std::size_t SuperIndexEntry(const std::string& bytes, std::size_t entry)
{
    return bytes.find("indx") + 8 + 24 + 16 * entry;
}

AviSpec TwoRiffSpec(AviIndexKind index)
{
    AviSpec spec;
    spec.Index = index;
    spec.FramesPerRiff = 10;
    spec.Streams.push_back(VideoStream(20, 4));
    spec.Streams[0].Name = "Video";
    spec.Streams[0].JunkAfterName = 20;
    AviStreamSpec audio = VideoStream(20, 1);
    audio.Type = "auds";
    audio.Suffix = "wb";
    spec.Streams.push_back(audio);
    return spec;
}

// Whatever survived of a damaged file must agree with itself: FindSample answers from the
// same key frames that the chunk list shows.
void ExpectConsistent(const AviFile& avi, const std::string& context)
{
    EXPECT_EQ(avi.FileInfo().dwStreams, avi.StreamCount()) << context;
    for (std::size_t s = 0; s < avi.StreamCount(); ++s) {
        long lastKey = -1;
        const auto& chunks = avi.Stream(s).Chunks;
        for (std::size_t i = 0; i < chunks.size(); ++i) {
            if (chunks[i].KeyFrame)
                lastKey = static_cast<long>(i);
            ASSERT_EQ(avi.FindSample(s, static_cast<long>(i), KeySearch::PreviousKey), lastKey) << context;
        }
    }
}

} // namespace

TEST(AviDamage, FileCutAtAnyPointOpensConsistentlyOrNotAtAll)
{
    ScratchFolder dir;
    for (const AviIndexKind index : {AviIndexKind::OpenDmlAndIdx1, AviIndexKind::Idx1, AviIndexKind::None}) {
        const std::string whole = BuildAvi(TwoRiffSpec(index)).Bytes;
        std::size_t opened = 0;
        for (std::size_t cut = 0; cut < whole.size(); cut += 7) {
            const auto avi = OpenBytes(dir, whole.substr(0, cut));
            if (!avi)
                continue;
            ++opened;
            ASSERT_LE(avi->StreamCount(), 2u);
            ExpectConsistent(*avi, "cut at " + std::to_string(cut));
        }
        // Every cut after the headers still opens.
        const std::size_t afterHeaders = whole.find("movi");
        EXPECT_GE(opened, (whole.size() - afterHeaders) / 7);
    }
}

TEST(AviDamage, SizesPastTheEndAreCutToTheFile)
{
    const struct {
        const char* Name;
        AviIndexKind Index;
        const char* Field;    // the chunk or list whose size is spoilt
        std::size_t VideoChunks; // -1 when the file must be refused
    } cases[] = {
        {"RIFF", AviIndexKind::Idx1, "RIFF", 20}, // an index or a scan still finds every frame
        {"movi", AviIndexKind::Idx1, "LIST", 20},
        {"idx1", AviIndexKind::Idx1, "idx1", 20},
        {"ix00", AviIndexKind::OpenDml, "ix00", 20},
        {"a frame in an unindexed file", AviIndexKind::None, "00dc", 0},
        {"strf", AviIndexKind::Idx1, "strf", std::size_t(-1)},
        {"avih", AviIndexKind::Idx1, "avih", std::size_t(-1)},
    };
    ScratchFolder dir;
    for (const auto& c : cases) {
        AviSpec spec = TwoRiffSpec(c.Index);
        spec.FramesPerRiff = std::numeric_limits<std::size_t>::max(); // the spoilt chunk is the last of its kind
        std::string bytes = BuildAvi(spec).Bytes;
        const std::size_t at = std::string(c.Field) == "LIST" ? bytes.find("movi") - 8 : bytes.find(c.Field);
        Patch32(bytes, at + 4, 0xFFFFFFF0u);
        std::string error;
        const auto avi = OpenBytes(dir, bytes, &error);
        if (c.VideoChunks == std::size_t(-1)) {
            EXPECT_FALSE(avi) << c.Name;
            EXPECT_FALSE(error.empty()) << c.Name;
            continue;
        }
        ASSERT_TRUE(avi) << c.Name << ": " << error;
        EXPECT_EQ(avi->Stream(0).Chunks.size(), c.VideoChunks) << c.Name;
        ExpectConsistent(*avi, c.Name);
    }
}

TEST(AviDamage, DeepListNestingStopsTheScanNotTheProgram)
{
    const struct {
        std::size_t Depth;
        std::size_t Found;
    } cases[] = {{8, 3}, {9, 0}, {20000, 0}};
    ScratchFolder dir;
    for (const auto& c : cases) {
        AviSpec spec;
        spec.Index = AviIndexKind::None;
        spec.RecDepth = c.Depth;
        spec.Streams.push_back(VideoStream(3, 1));
        const auto avi = OpenBytes(dir, BuildAvi(spec).Bytes);
        ASSERT_TRUE(avi) << c.Depth;
        EXPECT_EQ(avi->Stream(0).Chunks.size(), c.Found) << c.Depth;
    }
}

TEST(AviDamage, AbsurdStreamCountsAreRefused)
{
    ScratchFolder dir;
    AviSpec spec;
    spec.Streams.assign(100, VideoStream(1, 1));
    const auto hundred = OpenBytes(dir, BuildAvi(spec).Bytes);
    ASSERT_TRUE(hundred);
    EXPECT_EQ(hundred->StreamCount(), 100u);

    spec.Streams.push_back(VideoStream(1, 1));
    std::string error;
    EXPECT_FALSE(OpenBytes(dir, BuildAvi(spec).Bytes, &error));
    EXPECT_EQ(error, "more than 100 streams");
}

TEST(AviDamage, AbsurdIndexesStayWithinTheFile)
{
    const struct {
        const char* Name;
        void (*Spoil)(std::string&);
        std::size_t VideoChunks;
    } cases[] = {
        {"ix00 claims 2^32 entries", [](std::string& b) { Patch32(b, b.find("ix00") + 8 + 4, 0xFFFFFFFFu); }, 20},
        {"super index claims 2^32 entries",
         [](std::string& b) { Patch32(b, b.find("indx") + 8 + 4, 0xFFFFFFFFu); }, 20},
        {"both super index entries point at one ix00",
         [](std::string& b) { Patch64(b, SuperIndexEntry(b, 1), Get64(b, SuperIndexEntry(b, 0))); }, 10},
        {"super index entry points past the end",
         [](std::string& b) { Patch64(b, SuperIndexEntry(b, 1), 0xFFFFFFFFFFFF0000ull); }, 10},
        {"super index entry points at itself",
         [](std::string& b) { Patch64(b, SuperIndexEntry(b, 1), b.find("indx")); }, 10},
        {"ix00 holds entries of 0 bytes", [](std::string& b) { b[b.find("ix00") + 8] = '\0'; }, 10},
    };
    ScratchFolder dir;
    for (const auto& c : cases) {
        std::string bytes = BuildAvi(TwoRiffSpec(AviIndexKind::OpenDml)).Bytes;
        c.Spoil(bytes);
        std::string error;
        const auto avi = OpenBytes(dir, bytes, &error);
        ASSERT_TRUE(avi) << c.Name << ": " << error;
        EXPECT_EQ(avi->Stream(0).Chunks.size(), c.VideoChunks) << c.Name;
        ExpectConsistent(*avi, c.Name);
    }
}

TEST(AviDamage, Idx1EntriesOfStreamsThatDoNotExistAreIgnored)
{
    ScratchFolder dir;
    AviSpec spec;
    spec.Streams.push_back(VideoStream(4, 2));
    std::string bytes = BuildAvi(spec).Bytes;
    const std::size_t idx1 = bytes.find("idx1") + 8;
    bytes.replace(idx1 + 16, 4, "99dc");
    bytes.replace(idx1 + 32, 4, "ix00");
    const auto avi = OpenBytes(dir, bytes);
    ASSERT_TRUE(avi);
    EXPECT_EQ(avi->Stream(0).Chunks.size(), 2u);
}
