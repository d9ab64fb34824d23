// Shift+Enter in the chapter dialog's frame fields: stepping from key frame to key frame.
#include "media/TitleTestKit.h"

#include <gtest/gtest.h>

#include <utility>

TEST(ChapKeyFrame, ShiftEnterStepsToTheFrameBeforeTheNextKeyFrame)
{
    const std::filesystem::path movie = mw::test::ChapterMovie(); // a key frame every 25 frames
    REQUIRE_MOVIE(movie);
    mw::test::TitleProject p;
    p.StartWith(movie);
    mw::ChapForm form = p.OpenChapForm();
    const std::pair<const char*, const char*> cases[] = {
        {"0", "24"}, // the next key frame is 25
        {"10", "24"},
        {"24", "49"}, // standing before a key frame moves on to the next one
        {"23", "24"},
        {"", "24"},
        {"1499", "1499"}, // no key frame after the end: the field stays
    };
    for (const auto& [before, after] : cases) {
        SCOPED_TRACE(before);
        std::string field = before;
        mw::NextKeyFrameEnd(form, field, p.prompt);
        EXPECT_EQ(field, after);
    }
    EXPECT_TRUE(p.prompt.Log.empty());
}

TEST(ChapKeyFrame, WithoutATitleTheFieldStays)
{
    mw::test::TitleProject p;
    mw::ChapForm form;
    std::string field = "12";
    mw::NextKeyFrameEnd(form, field, p.prompt);
    EXPECT_EQ(field, "12");
}
