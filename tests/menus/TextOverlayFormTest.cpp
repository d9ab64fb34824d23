#include "menus/TextOverlayForm.h"

#include <gtest/gtest.h>

namespace mw::test {

TEST(TextOverlayForm, ReadsTheAttributesWithTheirDefaults)
{
    const auto full = TextOverlayFromTag(
        "<Menuwright Shape='*Text' Text='Go' Outline='2' Shadow='6LT' Font='Times New Roman,B,I' FontSize='14.5' "
        "FontCharset='161'/>");
    ASSERT_TRUE(full);
    EXPECT_EQ(full->Text, "Go");
    EXPECT_EQ(full->Outline, 2);
    EXPECT_EQ(full->ShadowDistance, "6");
    EXPECT_EQ(full->Corners, (std::array<bool, 4>{true, false, false, false}));
    EXPECT_EQ(full->Font.Family, "Times New Roman");
    EXPECT_TRUE(full->Font.Bold && full->Font.Italic);
    EXPECT_EQ(full->Font.Size, 14.5);
    EXPECT_EQ(full->Charset, 161);
    EXPECT_EQ(full->Shadow(), "6LT");

    const auto empty = TextOverlayFromTag("<Menuwright Shape='*Text'/>");
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->Text, "Menuwright");
    EXPECT_EQ(empty->Shadow(), "4RB");
    EXPECT_EQ(empty->Font.Family, "Arial");
    EXPECT_EQ(empty->Font.Size, 18);

    for (const char* outline : {"-1", "11", "99"})
        EXPECT_EQ(TextOverlayFromTag(std::string("<M Outline='") + outline + "'/>")->Outline, 1) << outline;
    // An unknown corner checks no box, and the panel then writes "LB".
    EXPECT_EQ(TextOverlayFromTag("<M Shadow='3XY'/>")->Shadow(), "3LB");
    EXPECT_FALSE(TextOverlayFromTag("not xml"));
    EXPECT_FALSE(TextOverlayFromTag(""));
}

TEST(TextOverlayForm, WritesEveryAttributeKeepingTheOthersAndTheirOrder)
{
    TextOverlayForm form;
    form.Text = "Play";
    form.Outline = 3;
    form.ShadowDistance = " 5 px";
    form.Corners = {false, true, true, false};
    form.Font = {"Arial", 12.5, true, false};
    EXPECT_EQ(UpdateTextOverlayTag("<Menuwright Position='6 6 -12 -12' Shape='*Rect' width='3'/>", form),
              "<Menuwright Position='6 6 -12 -12' Shape='*Text' width='3' Text='Play' Outline='3' Shadow='5RT' "
              "Font='Arial,B' FontSize='12.5' FontCharset='0'/>");
    form.Corners = {};
    form.Font.Bold = false;
    form.Font.Italic = true;
    EXPECT_EQ(UpdateTextOverlayTag("broken <", form),
              "<Menuwright Shape='*Text' Text='Play' Outline='3' Shadow='5LB' Font='Arial,I' FontSize='12.5' "
              "FontCharset='0'/>");
    // What is written reads back the same.
    const auto back = TextOverlayFromTag(UpdateTextOverlayTag("", form));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->Text, form.Text);
    EXPECT_EQ(back->Outline, form.Outline);
    EXPECT_EQ(back->Font.Italic, true);
    EXPECT_EQ(back->Font.Size, 12.5);
}

} // namespace mw::test
