#include "media/StreamLanguage.h"

#include <gtest/gtest.h>

TEST(StreamLanguage, CodeIsTheTwoLettersBehindTheFirstDash)
{
    const struct {
        const char* Strn;
        const char* Code;
    } cases[] = {
        {"Audio - en-US;02", "en"},
        {"Subtitle - el-GR;02", "el"},
        {"Audio - fr;02", "fr"},
        {"Audio -  de  ;02", "de"},
        {"Audio - it", "it"},
        {"Audio - eng;02", ""},
        {"Audio;02", ""},
        {"Audio - ;02", ""},
        {"", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(mw::StreamLanguageCode(c.Strn), c.Code) << c.Strn;
}

TEST(StreamLanguage, NewProjectCodeRunsToTheSemicolon)
{
    using mw::CodeEnd;
    EXPECT_EQ(mw::StreamLanguageCode("Audio - en-US;02", CodeEnd::Semicolon), "");
    EXPECT_EQ(mw::StreamLanguageCode("Audio -  fr ;02", CodeEnd::Semicolon), "fr");
    EXPECT_EQ(mw::StreamLanguageCode("Audio - it", CodeEnd::Semicolon), "it");
}
