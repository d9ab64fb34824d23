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
    scratch.Write("Overlays/star.bmp", "x");
    scratch.Write("Overlays/Arrow.BMP", "x");
    scratch.Write("Overlays/ball.bmp", "x");
    scratch.Write("Overlays/notes.txt", "x");
    scratch.Write("Overlays/inner.bmp/keep.bmp", "x"); // a folder named like a picture
    EXPECT_EQ(mw::LoadDefOverlays(scratch.Path()),
              (Rows{"|Shape1", "|Oval", "|Rectangle", "=================", "Arrow.BMP", "ball.bmp", "star.bmp"}));
}

} // namespace
