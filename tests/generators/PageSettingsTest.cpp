#include "generators/PageSettings.h"

#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

namespace mw {
namespace {

using test::ReadAll;
using test::ScratchFolder;

TEST(PageSettings, MissingKeysGiveTheDefaults)
{
    ScratchFolder dir;
    const PageDesign d = LoadDefValues(GeneratorKind::ChaptersMenu, dir.Path() / "Menuwright.ini", "/prog", "Menu ", 720, 576);
    EXPECT_EQ(d.MenuName, "Menu ");
    EXPECT_EQ(d.Captions, FontGroup{});
    EXPECT_EQ(d.Labels, (FontGroup{.Bold = true, .Size = 18}));
    EXPECT_EQ(d.Picture, "/prog/Templates/Pictures/sky.jpg");
    EXPECT_EQ(d.ButtonPicture, "/prog/frames/DVD_Button_2.gif");
    EXPECT_EQ(d.Animation, "0");
    EXPECT_EQ(d.Title.Caption, "Select chapter");
    EXPECT_EQ(d.Setup.Caption, "Setup");
    EXPECT_TRUE(LoadDefValues(GeneratorKind::SetupMenu, dir.Path() / "none.ini", "/prog", "", 720, 576).ButtonPicture.empty());

    // Numbers are read by their leading digits; a text that is none reads as 0.
    dir.Write("Menuwright.ini", "[TitleMenu]\r\nFontSize=14pt\r\nFontBold=yes\r\nTitleLeft=abc\r\n");
    const PageDesign t = LoadDefValues(GeneratorKind::TitleMenu, dir.Path() / "Menuwright.ini", "/prog", "", 720, 576);
    EXPECT_EQ(t.Captions.Size, 14);
    EXPECT_FALSE(t.Captions.Bold);
    EXPECT_EQ(t.Title.Left, 0);
}

TEST(PageSettings, EveryKeyRoundTripsInItsOwnSection)
{
    ScratchFolder dir;
    const auto ini = dir.Path() / "Menuwright.ini";
    PageDesign d = StartDesign(GeneratorKind::ChaptersMenu, 720, 576);
    d.MenuName = "Chapters";
    d.Captions = FontGroup{.Name = "Courier", .Bold = true, .Italic = true, .Size = 9, .CharSet = 2, .Color = 255};
    d.Labels.ShadowColor = 0x123456;
    d.Labels.ShadowDepth = -3;
    d.Free.Italic = true;
    d.Picture = "/pics/back.jpg";
    d.WhatOverlay = 1;
    d.UseThisSound = "/s.wav";
    d.Setup = PageLabel{.Caption = "Options", .Picture = "/p.bmp", .Left = 1, .Top = 2, .Width = 3, .Height = 4};
    d.Animation = "12";
    ASSERT_TRUE(SaveDefValues(GeneratorKind::ChaptersMenu, d, ini));
    EXPECT_EQ(LoadDefValues(GeneratorKind::ChaptersMenu, ini, "/prog", "x", 720, 576), d);

    const std::string text = ReadAll(ini);
    EXPECT_NE(text.find("[ChaptersMenu]"), std::string::npos);
    EXPECT_NE(text.find("FontBold=-1\r\n"), std::string::npos);
    EXPECT_NE(text.find("FontBold3=-1\r\n"), std::string::npos);
    EXPECT_NE(text.find("FontItalic2=0\r\n"), std::string::npos);
    EXPECT_NE(text.find("TextShadowDepth2=-3\r\n"), std::string::npos);

    // The title section has no setup label and no motion; the setup section has its columns
    // and no thumbnails.
    ASSERT_TRUE(SaveDefValues(GeneratorKind::TitleMenu, d, ini));
    PageDesign s = StartDesign(GeneratorKind::SetupMenu, 720, 576);
    s.AudioButtonLeft = 77;
    s.Subtitle.Picture = "/sub.bmp";
    ASSERT_TRUE(SaveDefValues(GeneratorKind::SetupMenu, s, ini));
    const std::string all = ReadAll(ini);
    const std::string titleSection = all.substr(all.find("[TitleMenu]"), all.find("[SetupMenu]") - all.find("[TitleMenu]"));
    EXPECT_EQ(titleSection.find("Setup"), std::string::npos);
    EXPECT_EQ(titleSection.find("Animation"), std::string::npos);
    EXPECT_NE(titleSection.find("PreviousText=<<"), std::string::npos);
    const std::string setupSection = all.substr(all.find("[SetupMenu]"));
    EXPECT_EQ(setupSection.find("ButtonPicture"), std::string::npos);
    EXPECT_EQ(setupSection.find("WhatOverlay"), std::string::npos);
    const PageDesign back = LoadDefValues(GeneratorKind::SetupMenu, ini, "/prog", "", 720, 576);
    EXPECT_EQ(back.AudioButtonLeft, 77);
    EXPECT_EQ(back.Subtitle.Picture, "/sub.bmp");
    EXPECT_EQ(back.Main, s.Main);
}

} // namespace
} // namespace mw
