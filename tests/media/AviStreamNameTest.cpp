#include "media/AviFile.h"

#include "core/ScratchFolder.h"
#include "media/AviBytes.h"

#include <gtest/gtest.h>

using namespace mw;
using namespace mw::test;

namespace {

AviSpec NamedSpec(const std::optional<std::string>& strn, std::optional<std::uint32_t> junk)
{
    AviSpec spec;
    spec.Streams = {VideoStream(3, 1), VideoStream(2, 1)};
    spec.Streams[0].Name = strn;
    spec.Streams[0].JunkAfterName = junk;
    return spec;
}

// The chunk names of the first stream list, walked by their sizes; the walk must land exactly
// on the list's end.
std::vector<std::string> FirstStreamListChunks(const std::string& bytes)
{
    const auto size = [&](std::size_t at) {
        return static_cast<std::size_t>(static_cast<unsigned char>(bytes[at]) |
                                        static_cast<unsigned char>(bytes[at + 1]) << 8);
    };
    const std::size_t strl = bytes.find("strl");
    const std::size_t end = strl + size(strl - 4);
    std::vector<std::string> found;
    std::size_t at = strl + 4;
    for (; at < end; at += 8 + size(at + 4) + (size(at + 4) & 1))
        found.push_back(bytes.substr(at, 4));
    if (at != end)
        found.push_back("overrun");
    return found;
}

} // namespace

TEST(AviStreamName, NameGoesIntoTheStrnChunkAndTheJunkAfterIt)
{
    const std::string old("Old\0", 4);
    const struct {
        const char* Case;
        std::optional<std::string> Strn;
        std::optional<std::uint32_t> Junk;
        std::string Name;
        bool Written;
        std::vector<std::string> ChunksAfter;
    } cases[] = {
        {"fits the strn", old, std::nullopt, "Abc", true, {"strh", "strf", "strn"}},
        {"grows into the JUNK", old, 40, std::string(20, 'g'), true, {"strh", "strf", "strn", "JUNK"}},
        {"takes the whole JUNK", old, 40, std::string(51, 'w'), true, {"strh", "strf", "strn"}},
        {"leaves less than a JUNK header", old, 40, std::string(45, 'l'), true, {"strh", "strf", "strn"}},
        {"odd strn size", std::string("Odd"), 16, std::string(10, 'o'), true, {"strh", "strf", "strn", "JUNK"}},
        {"cut to 64 characters", old, 60, std::string(70, 'c'), true, {"strh", "strf", "strn"}},
        {"one character too long", old, 40, std::string(52, 't'), false, {}},
        {"no JUNK after the strn", old, std::nullopt, "Abcd", false, {}},
        {"no strn", std::nullopt, 40, "A", false, {}},
    };
    ScratchFolder dir;
    for (const auto& c : cases) {
        const std::string before = BuildAvi(NamedSpec(c.Strn, c.Junk)).Bytes;
        const auto path = dir.Write("n.avi", before).string();
        EXPECT_EQ(AviFile::WriteStreamName(path, 0, c.Name), c.Written) << c.Case;
        const std::string after = ReadAll(path);
        ASSERT_EQ(after.size(), before.size()) << c.Case;
        if (!c.Written) {
            EXPECT_EQ(after, before) << c.Case;
            continue;
        }
        // Only the strn chunk and the JUNK header after it change; the walk over the list
        // proves the sizes still add up.
        const std::size_t strn = before.find("strn");
        const std::size_t next = before.find("LIST", strn);
        EXPECT_EQ(after.substr(0, strn), before.substr(0, strn)) << c.Case;
        EXPECT_EQ(after.substr(next), before.substr(next)) << c.Case;
        EXPECT_EQ(FirstStreamListChunks(after), c.ChunksAfter) << c.Case;
        const auto renamed = AviFile::Open(path);
        ASSERT_TRUE(renamed) << c.Case;
        EXPECT_EQ(renamed->Stream(0).Info.szName, c.Name.substr(0, 64)) << c.Case;
    }
}

TEST(AviStreamName, RefusesStreamsAndFilesThatAreNotThere)
{
    ScratchFolder dir;
    const auto path = dir.Write("r.avi", BuildAvi(NamedSpec(std::string("Old\0", 4), 40)).Bytes).string();
    EXPECT_FALSE(AviFile::WriteStreamName(path, 2, "A"));
    EXPECT_FALSE(AviFile::WriteStreamName((dir.Path() / "missing.avi").string(), 0, "A"));
    EXPECT_FALSE(AviFile::WriteStreamName(dir.Path().string(), 0, "A"));
    const std::string wave("RIFF\4\0\0\0WAVE", 12);
    const auto notAvi = dir.Write("x.avi", wave).string();
    EXPECT_FALSE(AviFile::WriteStreamName(notAvi, 0, "A"));
    EXPECT_EQ(ReadAll(notAvi), wave);
}
