// Track rows and the wizard's texts from the file and stream records alone.
#include "media/StreamTexts.h"
#include "media/StreamLanguage.h"

#include <gtest/gtest.h>

namespace {

using mw::AviFileInfo;
using mw::AviStreamInfo;

AviStreamInfo Stream(const char* type, std::uint32_t scale, std::uint32_t rate, std::uint32_t length,
                     std::string name = "", std::int32_t width = 0, std::int32_t height = 0)
{
    AviStreamInfo s;
    s.fccType = mw::FourCCFromString(type);
    s.dwScale = scale;
    s.dwRate = rate;
    s.dwLength = length;
    s.szName = std::move(name);
    s.rcFrame.right = width;
    s.rcFrame.bottom = height;
    return s;
}

AviFileInfo File(std::uint32_t scale, std::uint32_t rate)
{
    AviFileInfo f;
    f.dwScale = scale;
    f.dwRate = rate;
    return f;
}

const AviFileInfo kPal = File(1, 25);

} // namespace

TEST(StreamTexts, KindAndInfoWordForWord)
{
    const AviFileInfo ntsc = File(1001, 24000);
    const struct {
        AviFileInfo File;
        AviStreamInfo Stream;
        const char* Kind;
        const char* Info;
    } cases[] = {
        {ntsc, Stream("vids", 1001, 24000, 1440, "", 352, 240), "Video",
         "352 x 240 - NTSC - 23.976 fps, Length: 00:01:00.060"},
        {File(1000, 24976), Stream("vids", 1, 25, 100, "SUBTITL"), "Video",
         "0 x 0 - PAL - 24.976 fps, Length: 00:00:04.000"},
        {File(1001, 30000), Stream("vids", 0, 25, 100, "", 720, 480), "Video",
         "720 x 480 - NTSC - <error> fps, Length: <error>"},
        {File(0, 0), Stream("vids", 1, 25, 100, "", 720, 576), "Video", "720 x 576 -  - <error> fps, Length: <error>"},
        {kPal, Stream("auds", 3, 125, 86), "Audio", "SamplesPerSec: 41.6666666666667, Length: 00:00:02.064"},
        {kPal, Stream("auds", 1, 0, 100), "Audio", "<error>"},
        {kPal, Stream("vids", 0, 0, 1, "subtitle track", 720, 576), "Subtitle", "720 x 576 - Lenght: 1"},
        {kPal, Stream("auds", 1, 8000, 1, "Subtitle"), "Audio", "SamplesPerSec: 8000, Length: 00:00:00.000"},
        {kPal, Stream("txts", 1, 25, 10, "Subtitle"), "Unknown", ""},
    };
    for (const auto& c : cases) {
        const mw::StreamKind kind = mw::KindOfStream(c.Stream);
        EXPECT_EQ(mw::KindWord(kind), c.Kind) << c.Info;
        EXPECT_EQ(mw::StreamInfoText(c.File, c.Stream, kind), c.Info);
    }
    EXPECT_EQ(mw::TrackID(3, mw::StreamKind::Subtitle), "03sb");
    EXPECT_EQ(mw::TrackID(4, mw::StreamKind::Unknown), "04??");
    EXPECT_EQ(mw::TrackID(100, mw::StreamKind::Video), "100dc");
    EXPECT_EQ(mw::CountNonSubtitle({Stream("vids", 1, 25, 1), Stream("auds", 1, 8000, 1),
                                    Stream("vids", 1, 25, 1, "subtitle - en"), Stream("txts", 1, 25, 1)}),
              2);
}

TEST(StreamTexts, FpsComesFromTheLastVideoStreamThatCanBeTimed)
{
    const auto fpsAfter = [](const AviFileInfo& file, const std::vector<AviStreamInfo>& streams) {
        mw::TrackRows rows;
        double fps = -7;
        mw::AppendTrackRows(file, streams, false, rows, fps);
        return fps;
    };
    EXPECT_DOUBLE_EQ(fpsAfter(File(1001, 30000), {Stream("vids", 1001, 30000, 10), Stream("vids", 1, 25, 10)}),
                     29.97);
    EXPECT_DOUBLE_EQ(fpsAfter(kPal, {Stream("vids", 1, 25, 10, "Subtitle"), Stream("auds", 1, 8000, 10)}), -7);
    EXPECT_DOUBLE_EQ(fpsAfter(kPal, {Stream("vids", 0, 25, 10)}), -7);
}

TEST(StreamTexts, TimeHasNoCarryIntoTheSeconds)
{
    const struct {
        float Seconds;
        const char* Text;
    } cases[] = {
        {3661.5f, "01:01:01.500"},          {59.9996f, "00:00:59.1000"},
        {0.0625f, "00:00:00.062"},          {0.1875f, "00:00:00.188"}, // halves to even
        {360000, "100:00:00.000"},          {1099511627776.0f, "305419896:36:16.000"},
        {-1, "00:00:00.000"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(mw::FormatSecondsAsTime(c.Seconds), c.Text) << c.Text;
}

TEST(StreamTexts, WizardHasItsOwnAudioTimeAndTheWholeNameField)
{
    const std::string name(64, 'n');
    const std::vector<AviStreamInfo> streams = {
        Stream("vids", 1, 25, 100, "", 720, 576),
        Stream("auds", 3, 125, 86, name + "cut"),
        Stream("vids", 0, 0, 1, "Subtitle - en-US;02", 720, 576),
        Stream("txts", 0, 0, 1),
    };
    const auto info = mw::WizardInfoOf(kPal, streams);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->Video, "Video 720 x 576 - PAL - 25 fps, Length: 00:00:04.000\r\n" + std::string(64, '\0'));
    // 86 / 125 seconds: the scale of 3 is left out.
    EXPECT_EQ(info->Audio,
              std::vector<std::string>{"SamplesPerSec: 41.6666666666667, Length: 00:00:00.688\r\n" + name});
    ASSERT_EQ(info->Subtitles.size(), 1u);
    EXPECT_EQ(info->Subtitles[0].substr(0, 23), "720 x 576 - Lenght: 1\r\n");

    EXPECT_FALSE(mw::WizardInfoOf(kPal, {Stream("auds", 1, 0, 100)}));
    EXPECT_FALSE(mw::WizardInfoOf(File(0, 0), {Stream("vids", 1, 25, 100)}));
}

// The language code of a stream name; a new project's reading runs to the ";" and so takes no country.
TEST(StreamLanguage, CodeIsTheTwoLettersBehindTheFirstDash)
{
    const struct {
        const char* Strn;
        const char* Code;
        const char* ToSemicolon;
    } cases[] = {
        {"Audio - en-US;02", "en", ""},
        {"Subtitle - el-GR;02", "el", ""},
        {"Audio - fr;02", "fr", "fr"},
        {"Audio -  de  ;02", "de", "de"},
        {"Audio - it", "it", "it"},
        {"Audio - eng;02", "", ""},
        {"Audio;02", "", ""},
        {"Audio - ;02", "", ""},
        {"", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(mw::StreamLanguageCode(c.Strn), c.Code) << c.Strn;
        EXPECT_EQ(mw::StreamLanguageCode(c.Strn, mw::CodeEnd::Semicolon), c.ToSemicolon) << c.Strn;
    }
}
