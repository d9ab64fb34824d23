#include "core/settings/DefOverlays.h"

#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

using mw::test::ScratchFolder;

namespace {

using Rows = std::vector<std::string>;

TEST(DefOverlays, ShapesAndSeparatorWithoutOverlaysFolder)
{
    ScratchFolder scratch;
    EXPECT_EQ(mw::LoadDefOverlays(scratch.Path()), (Rows{"|Shape1", "|Oval", "|Rectangle", "================="}));
}

TEST(DefOverlays, PicturesFollowByNameAndOtherFilesAreLeftOut)
{
    ScratchFolder scratch;
    scratch.Write("overlays/star.bmp", "x");
    scratch.Write("overlays/Arrow.BMP", "x");
    scratch.Write("overlays/ball.bmp", "x");
    scratch.Write("overlays/notes.txt", "x");
    scratch.Write("overlays/inner.bmp/keep.bmp", "x"); // a folder named like a picture
    EXPECT_EQ(mw::LoadDefOverlays(scratch.Path()),
              (Rows{"|Shape1", "|Oval", "|Rectangle", "=================", "Arrow.BMP", "ball.bmp", "star.bmp"}));
}

} // namespace
