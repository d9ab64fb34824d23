#include "core/settings/DefOverlays.h"

#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

using mw::test::ScratchFolder;

namespace {

using Rows = std::vector<std::string>;

TEST(DefOverlays, ShapesSeparatorThenPicturesByNameAndNoOtherFiles)
{
    ScratchFolder scratch;
    const Rows shapes = {"|Shape1", "|Oval", "|Rectangle", "================="};
    EXPECT_EQ(mw::LoadDefOverlays(scratch.Path()), shapes); // no overlays folder
    for (const char* file : {"star.bmp", "Arrow.BMP", "ball.bmp", "notes.txt", "inner.bmp/keep.bmp"})
        scratch.Write(std::string("overlays/") + file, "x"); // the last is a folder named like a picture
    Rows expected = shapes;
    expected.insert(expected.end(), {"Arrow.BMP", "ball.bmp", "star.bmp"});
    EXPECT_EQ(mw::LoadDefOverlays(scratch.Path()), expected);
}

} // namespace
