#include "build/StarterLibrary.h"
#include "core/ProgramFolder.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "media/AviFile.h"
#include "render/OverlayFont.h"
#include "render/OverlayScheme.h"
#include "render/OverlayStretch.h"
#include "render/TestBitmaps.h"

#include <QImage>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace mw::test {

TEST(StarterLibrary, ShipsFourColourOverlaysAndTheHelperFilesAndSeedsAFreshProgramFolder)
{
    NeedFontApplication();
    ScratchFolder shipped;
    ScriptedPrompt prompt;
    ASSERT_TRUE(MakeStarterLibrary(shipped.Path(), prompt)) << ::testing::PrintToString(prompt.Texts());

    std::set<OverlayStretchMode> modes;
    int overlays = 0;
    for (const auto& entry : fs::recursive_directory_iterator(shipped.Path() / "overlays")) {
        if (entry.path().extension() != ".bmp")
            continue;
        ++overlays;
        modes.insert(StretchModeOfFile(entry.path().filename().string()));
        cDIB dib;
        ASSERT_TRUE(dib.CreateFromBitmapFile(entry.path().string())) << entry.path();
        ASSERT_EQ(dib.BPP(), 4) << entry.path();
        EXPECT_EQ(dib.GetColorTable(), OverlayColorTable()) << entry.path();
        const std::set<std::uint32_t> used = ValuesIn(dib);
        EXPECT_LE(*used.rbegin(), 3u) << entry.path();
        EXPECT_GE(used.size(), 2u) << entry.path() << " draws nothing";
    }
    EXPECT_GE(overlays, 6);
    EXPECT_EQ(modes.size(), 3u); // plain, nine-slice and lower-corner files
    EXPECT_TRUE(fs::exists(shipped.Path() / "overlays" / "frames" / "DVD_Button_2.bmp"));

    // The border shows the thumbnail through pure green and hides the outside with pure red.
    const QImage border(QString::fromStdString((shipped.Path() / "frames" / "DVD_Button_2.gif").string()));
    ASSERT_FALSE(border.isNull());
    EXPECT_EQ(border.pixelColor(0, 0), QColor(255, 0, 0));
    EXPECT_EQ(border.pixelColor(border.width() / 2, border.height() / 2), QColor(0, 255, 0));
    EXPECT_FALSE(QImage(QString::fromStdString((shipped.Path() / "Templates" / "Pictures" / "sky.jpg").string())).isNull());
    const auto black = AviFile::Open((shipped.Path() / "black.avi").string());
    ASSERT_TRUE(black);
    EXPECT_GT(black->Stream(0).Info.dwLength, 0u);

    ScratchFolder home;
    ProgramEnvironment env;
    env.XdgDataHome = home.Path().string();
    env.IsWritable = [](const fs::path&) { return false; };
    const fs::path folder = ResolveProgramFolder("/opt/menuwright/bin/menuwright", env, shipped.Path());
    for (const char* file : {"overlays/Rectangle_.bmp", "overlays/Corners}.bmp", "overlays/frames/DVD_Button_2.bmp",
                             "frames/DVD_Button_2.gif", "Templates/Pictures/sky.jpg", "black.avi"})
        EXPECT_TRUE(fs::exists(folder / file)) << file;
}

} // namespace mw::test
