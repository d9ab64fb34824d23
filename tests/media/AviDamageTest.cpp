#include "media/AviFile.h"

#include "media/AviBytes.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <set>

using namespace mw;
using namespace mw::test;

namespace {

AviSpec TwoRiffSpec(AviIndexKind index)
{
    AviSpec spec;
    spec.Index = index;
    spec.FramesPerRiff = 10;
    spec.Streams = {VideoStream(20, 4), AudioStream(20)};
    spec.Streams[0].Name = "Video";
    spec.Streams[0].JunkAfterName = 20;
    return spec;
}

std::size_t SuperIndexEntry(const std::string& bytes, std::size_t entry)
{
    return bytes.find("indx") + 8 + 24 + 16 * entry;
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

// Cuts around every chunk header: on it, inside it, and just into its data. Frame chunks all
// look alike, so only the first of each stream in each movi list counts.
std::set<std::size_t> CutPoints(const std::string& bytes)
{
    std::set<std::size_t> cuts;
    for (const char* id : {"RIFF", "LIST", "avih", "strh", "strf", "strn", "JUNK", "indx", "ix00", "ix01", "idx1"}) {
        for (std::size_t at = bytes.find(id); at != std::string::npos; at = bytes.find(id, at + 1))
            cuts.insert({at, at + 6, at + 10});
    }
    for (const std::size_t movi : {bytes.find("movi"), bytes.rfind("movi")}) {
        for (const char* frame : {"00dc", "01wb"})
            cuts.insert(bytes.find(frame, movi) + 9);
    }
    cuts.erase(cuts.lower_bound(bytes.size() - 1), cuts.end());
    cuts.insert(bytes.size() - 1);
    return cuts;
}

} // namespace

TEST(AviDamage, FileCutAtAnyHeaderOpensConsistentlyOrNotAtAll)
{
    for (const AviIndexKind index : {AviIndexKind::OpenDmlAndIdx1, AviIndexKind::Idx1, AviIndexKind::None}) {
        const std::string whole = BuildAvi(TwoRiffSpec(index)).Bytes;
        const std::size_t afterHeaders = whole.find("movi");
        for (const std::size_t cut : CutPoints(whole)) {
            const auto avi = OpenAviBytes(whole.substr(0, cut));
            // Once the headers are whole, what is left of the movie still opens.
            EXPECT_TRUE(avi || cut < afterHeaders) << "cut at " << cut;
            if (avi) {
                ASSERT_LE(avi->StreamCount(), 2u);
                ExpectConsistent(*avi, "cut at " + std::to_string(cut));
            }
        }
    }
}

TEST(AviDamage, DamagedHeadersAreRefusedAndDamagedIndexesStayWithinTheFile)
{
    const auto hugeSize = [](const char* field) {
        return [field](std::string& b) { PatchLe(b, b.find(field) + 4, 0xFFFFFFF0u); };
    };
    const auto renamed = [](const char* field, const char* to) {
        return [field, to](std::string& b) { b.replace(b.find(field), 4, to); };
    };
    const std::size_t refused = std::size_t(-1);
    const struct {
        const char* Name;
        AviIndexKind Index;
        bool TwoRiffs;
        std::function<void(std::string&)> Spoil;
        std::size_t VideoChunks; // `refused` when the file must be refused
    } cases[] = {
        // An index or a scan still finds every frame.
        {"RIFF size", AviIndexKind::Idx1, false, hugeSize("RIFF"), 20},
        {"RIFF size 0, as an interrupted capture leaves it", AviIndexKind::Idx1, false,
         [](std::string& b) { PatchLe(b, 4, 0); }, 20},
        {"movi size", AviIndexKind::Idx1, false, [](std::string& b) { PatchLe(b, b.find("movi") - 4, 0xFFFFFFF0u); },
         20},
        {"idx1 size", AviIndexKind::Idx1, false, hugeSize("idx1"), 20},
        {"ix00 size", AviIndexKind::OpenDml, false, hugeSize("ix00"), 20},
        {"frame size in an unindexed file", AviIndexKind::None, false, hugeSize("00dc"), 0},
        {"strf size", AviIndexKind::Idx1, false, hugeSize("strf"), refused},
        {"avih size", AviIndexKind::Idx1, false, hugeSize("avih"), refused},
        {"a WAVE file", AviIndexKind::Idx1, false, renamed("AVI ", "WAVE"), refused},
        {"no hdrl", AviIndexKind::Idx1, false, renamed("hdrl", "xxxx"), refused},
        {"no avih", AviIndexKind::Idx1, false, renamed("avih", "xxxx"), refused},
        {"no strh", AviIndexKind::Idx1, false, renamed("strh", "xxxx"), refused},
        {"idx1 entries of streams that do not exist", AviIndexKind::Idx1, false,
         [](std::string& b) {
             const std::size_t idx1 = b.find("idx1") + 8;
             b.replace(idx1 + 32, 4, "99dc");
             b.replace(idx1 + 64, 4, "ix00");
         },
         18},
        {"ix00 claims 2^32 entries", AviIndexKind::OpenDml, true,
         [](std::string& b) { PatchLe(b, b.find("ix00") + 8 + 4, 0xFFFFFFFFu); }, 20},
        {"super index claims 2^32 entries", AviIndexKind::OpenDml, true,
         [](std::string& b) { PatchLe(b, b.find("indx") + 8 + 4, 0xFFFFFFFFu); }, 20},
        {"both super index entries point at one ix00", AviIndexKind::OpenDml, true,
         [](std::string& b) { b.replace(SuperIndexEntry(b, 1), 8, b.substr(SuperIndexEntry(b, 0), 8)); }, 10},
        {"super index entry points past the end", AviIndexKind::OpenDml, true,
         [](std::string& b) { PatchLe(b, SuperIndexEntry(b, 1), 0xFFFFFFFFFFFF0000ull, 8); }, 10},
        {"super index entry points at itself", AviIndexKind::OpenDml, true,
         [](std::string& b) { PatchLe(b, SuperIndexEntry(b, 1), b.find("indx"), 8); }, 10},
        {"ix00 holds entries of 0 bytes", AviIndexKind::OpenDml, true,
         [](std::string& b) { b[b.find("ix00") + 8] = '\0'; }, 10},
    };
    for (const auto& c : cases) {
        AviSpec spec = TwoRiffSpec(c.Index);
        if (!c.TwoRiffs)
            spec.FramesPerRiff = std::numeric_limits<std::size_t>::max(); // the spoilt chunk is the last of its kind
        std::string bytes = BuildAvi(spec).Bytes;
        c.Spoil(bytes);
        std::string error;
        const auto avi = OpenAviBytes(bytes, &error);
        if (c.VideoChunks == refused) {
            EXPECT_FALSE(avi) << c.Name;
            EXPECT_FALSE(error.empty()) << c.Name;
            continue;
        }
        ASSERT_TRUE(avi) << c.Name << ": " << error;
        EXPECT_EQ(avi->Stream(0).Chunks.size(), c.VideoChunks) << c.Name;
        ExpectConsistent(*avi, c.Name);
    }
}

TEST(AviDamage, SuperIndexesClaimingAMillionEntriesCostNoMoreThanTheirOwnChunks)
{
    // Each super index is read within its own stream list, whatever its chunk claims. The
    // reader that followed every claimed entry took 18 s and 90 MB over this file.
    const auto began = std::chrono::steady_clock::now();
    std::string error;
    const auto avi = OpenAviBytes(ForgedSuperIndexAvi(), &error);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began;
    ASSERT_TRUE(avi) << error;
    ASSERT_EQ(avi->StreamCount(), 100u);
    for (std::size_t s = 0; s < avi->StreamCount(); ++s)
        EXPECT_EQ(avi->Stream(s).Chunks.size(), 1u) << s; // found by the scan of movi
    EXPECT_LT(took.count(), 2.0);
}

TEST(AviDamage, DeepListNestingStopsTheScanNotTheProgram)
{
    const struct {
        std::size_t Depth;
        std::size_t Found;
    } cases[] = {{8, 3}, {9, 0}, {20000, 0}};
    for (const auto& c : cases) {
        AviSpec spec;
        spec.Index = AviIndexKind::None;
        spec.RecDepth = c.Depth;
        spec.Streams.push_back(VideoStream(3, 1));
        const auto avi = OpenAviBytes(BuildAvi(spec).Bytes);
        ASSERT_TRUE(avi) << c.Depth;
        EXPECT_EQ(avi->Stream(0).Chunks.size(), c.Found) << c.Depth;
    }
}

TEST(AviDamage, MoreThanAHundredStreamsAreRefused)
{
    AviSpec spec;
    spec.Streams.assign(100, VideoStream(1, 1));
    const auto hundred = OpenAviBytes(BuildAvi(spec).Bytes);
    ASSERT_TRUE(hundred);
    EXPECT_EQ(hundred->StreamCount(), 100u);

    spec.Streams.push_back(VideoStream(1, 1));
    std::string error;
    EXPECT_FALSE(OpenAviBytes(BuildAvi(spec).Bytes, &error));
    EXPECT_EQ(error, "more than 100 streams");
}
