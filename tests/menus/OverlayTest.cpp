#include "menus/CanvasFixture.h"
#include "menus/OverlayAttributes.h"
#include "menus/OverlayDialogs.h"
#include "menus/OverlayMenu.h"
#include "render/OverlayScheme.h"

#include "core/Paths.h"
#include "core/settings/OptionsModel.h"

#include <fstream>

namespace {

using mw::OverlayCheck;
using In = mw::OverlayCheck::In;
namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

TEST(ExtraInfoElement, KeepsTheOrderOfFirstSettingAndSingleQuotes)
{
    mw::ExtraInfoElement info("<Menuwright Shape='*Rect' width='3'/>");
    info.Set("Position", "0 0 0 0");
    info.Set("Shape", "a\"b");
    EXPECT_EQ(info.Text(), "<Menuwright Shape='a\"b' width='3' Position='0 0 0 0'/>");

    mw::ExtraInfoElement broken("<Menuwright Shape='x'");
    EXPECT_FALSE(broken.Parsed());
    EXPECT_FALSE(broken.Get("Shape"));
    broken.Set("Color1", "255");
    EXPECT_EQ(broken.Text(), "<Menuwright Color1='255'/>");
}

TEST(OverlayAttributes, MissingAttributesReadAsTheirDefaults)
{
    const mw::OverlayAttributes empty = mw::ReadOverlayAttributes("");
    EXPECT_EQ(empty.Shape, "*Rect");
    for (const char* tag : {"", "<Menuwright Shape='*Text'/>", "<Menuwright Shape='*Text'"}) {
        SCOPED_TRACE(tag);
        const mw::OverlayAttributes a = mw::ReadOverlayAttributes(tag);
        EXPECT_EQ(a.Position, "6 6 -12 -12");
        EXPECT_EQ(a.Width, 3);
        EXPECT_EQ(a.Text, "Menuwright");
        EXPECT_EQ(a.Outline, 0);
        EXPECT_EQ(a.Shadow, "4RB");
        EXPECT_EQ(a.Font, "Arial");
        EXPECT_EQ(a.FontSize, "18");
        EXPECT_EQ(a.FontCharset, 0);
    }
    EXPECT_EQ(mw::ReadOverlayAttributes("<Menuwright Shape='*Text'").Shape, ""); // broken, not empty
}

TEST(TextOverlayForm, ReadsTheAttributesWithTheirDefaults)
{
    const auto full = mw::TextOverlayFromTag(
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
    EXPECT_EQ(mw::TextOverlayShadow(*full), "6LT");

    const auto empty = mw::TextOverlayFromTag("<Menuwright Shape='*Text'/>");
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->Text, "Menuwright");
    EXPECT_EQ(mw::TextOverlayShadow(*empty), "4RB");
    EXPECT_EQ(empty->Font.Family, "Arial");
    EXPECT_FALSE(empty->Font.Bold || empty->Font.Italic);
    EXPECT_EQ(empty->Font.Size, 18);
    const auto italic = mw::TextOverlayFromTag("<M Font='Arial,I' Shadow='12LB'/>");
    EXPECT_TRUE(italic->Font.Italic && !italic->Font.Bold);
    EXPECT_EQ(italic->Corners, (std::array<bool, 4>{false, false, false, true}));

    for (const char* outline : {"-1", "11", "99"})
        EXPECT_EQ(mw::TextOverlayFromTag(std::string("<M Outline='") + outline + "'/>")->Outline, 1) << outline;
    // An unknown corner checks no box, and the panel then writes "LB", as the painter reads it.
    EXPECT_EQ(mw::TextOverlayShadow(*mw::TextOverlayFromTag("<M Shadow='3XY'/>")), "3LB");
    EXPECT_FALSE(mw::TextOverlayFromTag("not xml"));
    EXPECT_FALSE(mw::TextOverlayFromTag(""));
}

TEST(TextOverlayForm, WritesEveryAttributeKeepingTheOthersAndTheirOrder)
{
    mw::TextOverlayForm form;
    form.Text = "Play";
    form.Outline = 3;
    form.ShadowDistance = " 5 px";
    form.Corners = {false, true, true, false};
    form.Font = {"Arial", 12.5, true, false};
    EXPECT_EQ(mw::UpdateTextOverlayTag("<Menuwright Position='6 6 -12 -12' Shape='*Rect' width='3'/>", form),
              "<Menuwright Position='6 6 -12 -12' Shape='*Text' width='3' Text='Play' Outline='3' Shadow='5RT' "
              "Font='Arial,B' FontSize='12.5' FontCharset='0'/>");
    // What is written reads back the same.
    form.Corners = {};
    form.Font.Bold = false;
    form.Font.Italic = true;
    const auto back = mw::TextOverlayFromTag(mw::UpdateTextOverlayTag("", form));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->Text, form.Text);
    EXPECT_EQ(back->Outline, form.Outline);
    EXPECT_EQ(mw::TextOverlayShadow(*back), "5LB");
    EXPECT_TRUE(back->Font.Italic && !back->Font.Bold);
    EXPECT_EQ(back->Font.Size, 12.5);
}

class OverlayCommands : public mw::test::CanvasFixture {};

TEST_F(OverlayCommands, AFileOverlayOnABrokenTagKeepsThePositionOfTheControl)
{
    project.Doc.Tree.Item("k15").Tag = "<Menuwright Shape=";
    Button(1).Position = "1 2 3 4";
    mw::Label1_Click(project, 0);
    mw::SelectInBand(project, 0, 0, 260, 80); // buttons 13 and 15
    mw::SetThisOverlay(project, "frames\\Star");
    EXPECT_EQ(Tag(13), "<Menuwright Shape='frames\\Star' width='5' Position='0 0 0 0'/>");
    EXPECT_EQ(Tag(15), "<Menuwright Shape='frames\\Star' Position='1 2 3 4'/>");
    EXPECT_EQ(Button(1).OverlayFile, (home.Path() / "overlays" / "frames" / "Star.bmp").string());
    EXPECT_EQ(Tag(17).find("frames"), std::string::npos); // not in the selection
    EXPECT_FALSE(project.Canvas.shapeLineWidth);
    EXPECT_EQ(project.Undo.Count(), 1u);
    EXPECT_TRUE(project.FileIsDirty);
}

TEST_F(OverlayCommands, SpecialOverlaysAndTheTextPanel)
{
    mw::Label1_Click(project, 2);
    mw::SetSpecialOverlay(project, "*Text");
    const mw::TextOverlayForm& panel = project.Overlays.TextPanel;
    EXPECT_TRUE(project.Overlays.TextPanelVisible);
    EXPECT_EQ(panel.Text, "Play");
    EXPECT_EQ(panel.Font.Family, "Times New Roman");
    EXPECT_TRUE(panel.Font.Bold && panel.Font.Italic);
    EXPECT_DOUBLE_EQ(panel.Font.Size, 20.5);
    EXPECT_EQ(panel.Outline, 2);
    EXPECT_EQ(mw::TextOverlayShadow(panel), "3LT");
    EXPECT_FALSE(project.Canvas.shapeLineWidth);
    EXPECT_EQ(project.Overlays.Checked, (OverlayCheck{In::Special, -1, 0}));

    // The width of a text overlay is kept but draws nothing.
    mw::mnuOverlayWidthValue_Click(project, 6);
    EXPECT_EQ(mw::ReadOverlayAttributes(Tag(17)).Width, 7);
    EXPECT_EQ(Button(2).LineWidth, 3);
    EXPECT_EQ(project.Overlays.CheckedWidth, 7);

    project.Doc.Tree.Item("k17").Tag = "<broken";
    Button(2).Position = "0 0 0 0";
    mw::SetSpecialOverlay(project, "*Oval");
    EXPECT_EQ(Tag(17), "<Menuwright Shape='*Oval' width='3' Position='0 0 0 0'/>");
    EXPECT_FALSE(project.Overlays.TextPanelVisible);
    EXPECT_TRUE(project.Canvas.shapeLineWidth);
    mw::mnuOverlayWidthValue_Click(project, 1);
    EXPECT_EQ(Button(2).LineWidth, 2);

    project.Doc.Tree.Item("k17").Tag = "<broken";
    mw::mnuOverlayWidthValue_Click(project, 0);
    EXPECT_EQ(Tag(17), "<Menuwright Shape='*Shape1' Position='0 0 0 0' width='1'/>");
}

TEST_F(OverlayCommands, TheSelectionFallsBackToTheLastSelectedButton)
{
    mw::SetSpecialOverlay(project, "*Oval"); // nothing selected: nothing changes
    EXPECT_EQ(mw::ReadOverlayAttributes(Tag(13)).Shape, "*Rect");
    mw::Label1_Click(project, 0);
    mw::SelectInBand(project, 500, 500, 600, 600); // selects nothing
    mw::SetSpecialOverlay(project, "*Oval");
    EXPECT_EQ(Tag(13), "<Menuwright Shape='*Oval' width='5' Position='0 0 0 0'/>");
    EXPECT_EQ(Button(0).LineWidth, 5);
}

TEST_F(OverlayCommands, TheTextPanelWritesEveryTextAttribute)
{
    mw::Label1_Click(project, 1);
    project.Doc.Tree.Item("k15").Tag = "<broken";
    project.Overlays.TextPanel = {"Go", 2, "3", {false, true, false, false}, {"Times New Roman", 12.5, true, false}, 1};
    mw::UpdateTextOverlay(project);
    EXPECT_EQ(Tag(15), "<Menuwright Shape='*Text' Text='Go' Outline='2' Shadow='3RT' Font='Times New Roman,B' "
                       "FontSize='12.5' FontCharset='1'/>");
    EXPECT_EQ(Button(1).Shape, "*Text");
}

TEST_F(OverlayCommands, ColoursAndTheLockGoToTheMenu)
{
    mw::SelectColor(project, {255 + 256 * 128, 4, 5});
    EXPECT_EQ(Tag(12), "<Menuwright Color1='33023' Color2='4' Color3='5' frame='7' lock='1'/>");
    EXPECT_EQ(mw::ColorButtonToolTip(0, 33023), "2nd color in palette RGB = (255, 128, 0)");
    EXPECT_EQ(mw::ColorButtonToolTip(2, 0xFF0000), "4th color in palette RGB = (0, 0, 255)");
    mw::ToggleLock(project);
    EXPECT_FALSE(project.Canvas.Lock);
    EXPECT_NE(Tag(12).find("lock='0'"), std::string::npos);
}

TEST_F(OverlayCommands, AnOverlayMovedOnTheCanvasOrResetKeepsItsPositionAgainstTheButton)
{
    mw::ResetOverlayPos(project);
    EXPECT_TRUE(project.Undo.Empty()); // no button selected
    for (auto [setting, position] : {std::pair{0, "6 6 -12 -12"}, {1, "0 0 0 0"}}) {
        program.Values.DefOverlayPos = setting;
        mw::Label1_Click(project, 1);
        mw::ResetOverlayPos(project);
        EXPECT_EQ(Tag(15), std::string("<Menuwright Shape='*Rect' Position='") + position + "'/>");
        EXPECT_EQ(Button(1).Overlay.Width, setting == 0 ? 62 : 50);
    }
    // The button at 200, 20 sized 50 by 50; its overlay dragged to 190, 25 and sized 70 by 40.
    mw::PlaceShapeToPos(project, 1, {"", 190, 25, 70, 40});
    EXPECT_EQ(Tag(15), "<Menuwright Shape='*Rect' Position='10 -5 -20 10'/>");
    EXPECT_EQ(Button(1).Overlay.Left, 190);
    EXPECT_EQ(Button(1).Label.Left, 200);
    EXPECT_EQ(project.Undo.Count(), 3u);
}

class OverlayMenus : public ::testing::Test {
protected:
    void Bitmap(const std::string& relative) { folder.Write(relative, "BM"); }
    mw::test::ScratchFolder folder;
    mw::ScriptedPrompt prompt;
    mw::OverlayMenus menus;
};

TEST_F(OverlayMenus, SevenFoldersAtMostAndEmptyOnesSayNoOverlays)
{
    Bitmap("Heart.bmp");
    Bitmap("arrow.BMP");
    Bitmap("notes.txt");
    for (char c = 'a'; c <= 'h'; ++c)
        Bitmap(std::string("f") + c + "/one.bmp");
    std::filesystem::create_directories(folder.Path() / "fb" / "empty");
    std::filesystem::remove(folder.Path() / "fb" / "one.bmp");

    mw::LoadOverlaysToMenu(folder.Path(), menus, prompt);
    EXPECT_EQ(prompt.Texts(), Texts{"Only 7 sub folders are supported inside overlays folder. Others will be ignored"});
    EXPECT_EQ(menus.Top.size(), 2u);
    EXPECT_EQ(menus.Top[0].Caption, "Heart");
    EXPECT_EQ(menus.Top[1].Caption, "arrow");
    EXPECT_EQ(menus.Folders[0].Caption, "fa");
    EXPECT_EQ(menus.Folders[6].Caption, "fg"); // fh is left out
    EXPECT_TRUE(menus.Folders[6].Visible);
    ASSERT_EQ(menus.Folders[1].Items.size(), 1u);
    EXPECT_EQ(menus.Folders[1].Items[0].Caption, "No overlays");
    EXPECT_FALSE(menus.Folders[1].Items[0].Enabled);

    struct Case {
        const char* name;
        OverlayCheck check;
    };
    for (const Case& c : {Case{"FC\\ONE.bmp", {In::Folder, 2, 0}}, Case{"fc\\one", {In::Folder, 2, 0}},
                          Case{"heart", {In::Top, -1, 0}}, Case{"Arrow.bmp", {In::Top, -1, 1}},
                          Case{"*Shape1", {In::Special, -1, 1}}, Case{"fb\\No overlays", {}},
                          Case{"fh\\one", {}}, Case{"missing", {}}})
        EXPECT_EQ(mw::SetOverlayCheckItem(menus, c.name), c.check) << c.name;

    // Fewer folders later: the others are hidden again, and an empty top level says so.
    mw::test::ScratchFolder few;
    std::filesystem::create_directories(few.Path() / "only");
    prompt.Log.clear();
    mw::LoadOverlaysToMenu(few.Path(), menus, prompt);
    EXPECT_TRUE(prompt.Log.empty());
    EXPECT_TRUE(menus.Folders[0].Visible);
    EXPECT_FALSE(menus.Folders[1].Visible);
    EXPECT_EQ(menus.Top.front().Caption, "No overlays");
}

class OverlayDialogs : public mw::test::CanvasFixture {
protected:
    // A green picture with a red square in the middle.
    std::string Picture(const std::string& name)
    {
        mw::cDIB picture;
        picture.Create(12, 8, 24);
        picture.Cls(mw::Rgb(0, 160, 0));
        for (int x = 4; x < 8; ++x) {
            for (int y = 2; y < 6; ++y)
                picture.SetPixel(x, y, mw::Rgb(250, 0, 0));
        }
        const fs::path file = work.Path() / name;
        picture.Save(file.string());
        return file.string();
    }
    fs::path Overlays() const { return home.Path() / "overlays"; }
};

TEST_F(OverlayDialogs, ATextOverlayStartsFromTheButtonsOwnAttributes)
{
    EXPECT_FALSE(mw::CreateTextOverlay(project)); // no button selected
    mw::Label1_Click(project, 1);                 // its extra info is no element
    const mw::test::ProjectState before = State();
    EXPECT_FALSE(mw::CreateTextOverlay(project));
    EXPECT_EQ(prompt.Texts(), Texts{"Error in Text overlay"});
    EXPECT_EQ(State(), before);

    mw::Label1_Click(project, 0);
    ASSERT_TRUE(mw::CreateTextOverlay(project));
    EXPECT_EQ(Tag(13), "<Menuwright Shape='*Text' width='5' Position='0 0 0 0' Text='Menuwright' Outline='0' "
                       "Shadow='4RB' Font='Arial' FontSize='18' FontCharset='0'/>");
    EXPECT_TRUE(project.Overlays.TextPanelVisible);
    EXPECT_EQ(project.Overlays.TextPanel.Text, "Menuwright");
    EXPECT_EQ(project.Overlays.Checked, (mw::OverlayCheck{mw::OverlayCheck::In::Special, -1, 0}));
    EXPECT_EQ(Button(0).Shape, "*Text");
    EXPECT_EQ(project.Undo.Count(), 1u);
    project.UndoDo();
    EXPECT_EQ(Tag(13), "<Menuwright Shape='*Rect' width='5' Position='0 0 0 0'/>");
}

TEST_F(OverlayDialogs, APictureBecomesAnOverlayOfTheLibraryOnTheSelection)
{
    fs::create_directories(Overlays() / "frames");
    const std::string logo = Picture("logo.jpg.bmp"); // the name loses only its last extension
    mw::Label1_Click(project, 0);
    mw::SelectInBand(project, 0, 0, 260, 80); // buttons 13 and 15
    prompt.OpenedFiles.push_back({logo});
    std::string target;
    forms.CreateOverFromPic.push_back([&](mw::CreateOverFromPicForm& form) {
        target = form.Target;
        return form.Overlay.PickTransparent(11, 7);
    });
    ASSERT_TRUE(mw::CreateOverlayFromPic(project));
    EXPECT_EQ(target, (Overlays() / "logo.jpg.bmp").string());
    EXPECT_EQ(program.Values.LastFolderUsed, mw::FolderOf(logo));
    EXPECT_TRUE(prompt.Texts().empty());

    mw::cDIB saved;
    ASSERT_TRUE(saved.CreateFromBitmapFile(target));
    EXPECT_EQ(saved.BPP(), 4);
    const std::vector<mw::Colour> table = saved.GetColorTable();
    EXPECT_EQ(std::vector<mw::Colour>(table.begin(), table.begin() + 4),
              std::vector<mw::Colour>(mw::kOverlayPaintColours.begin(), mw::kOverlayPaintColours.end()));
    EXPECT_EQ(saved.Pixel(0, 0), 0u);
    EXPECT_NE(saved.Pixel(5, 3), 0u);

    ASSERT_EQ(project.Overlays.Top.size(), 1u); // the menus were filled again
    EXPECT_EQ(project.Overlays.Top[0].Caption, "logo.jpg");
    EXPECT_TRUE(project.Overlays.Folders[0].Visible);
    EXPECT_EQ(project.Overlays.Checked, (mw::OverlayCheck{mw::OverlayCheck::In::Top, -1, 0}));
    EXPECT_EQ(Tag(13), "<Menuwright Shape='logo.jpg' width='5' Position='0 0 0 0'/>");
    EXPECT_EQ(mw::ReadOverlayAttributes(Tag(15)).Shape, "logo.jpg");
    EXPECT_EQ(mw::ReadOverlayAttributes(Tag(17)).Shape, "*Text");
    EXPECT_EQ(project.Undo.Count(), 1u);
}

TEST_F(OverlayDialogs, ACancelOrAFailedSaveLeavesProjectAndLibraryAlone)
{
    const std::string star = Picture("star.gif");
    const fs::path existing = Overlays() / "star.bmp";
    fs::create_directories(Overlays());
    ASSERT_TRUE(mw::NewOverlayDib(4, 4).Save(existing.string()));
    const std::string bytes = mw::test::ReadAll(existing);
    mw::Label1_Click(project, 0);
    const mw::test::ProjectState before = State();

    EXPECT_FALSE(mw::CreateOverlayFromPic(project)); // the file dialog cancelled
    prompt.OpenedFiles.push_back({star});
    prompt.Answers.push_back(mw::PromptAnswer::No);
    EXPECT_FALSE(mw::CreateOverlayFromPic(project));
    EXPECT_EQ(prompt.Texts(), Texts{"File\r\n\r\n" + existing.string() + "\r\n\r\nexist. Replace it?"});
    prompt.OpenedFiles.push_back({star});
    bool shown = false;
    forms.CreateOverFromPic.push_back([&](mw::CreateOverFromPicForm& form) {
        shown = !form.Overlay.Picture().Empty();
        return false;
    });
    EXPECT_FALSE(mw::CreateOverlayFromPic(project)); // Yes, then Cancel in the dialog
    EXPECT_TRUE(shown);
    EXPECT_EQ(mw::test::ReadAll(existing), bytes);

    // A folder where the bitmap would go cannot be replaced.
    fs::create_directories(Overlays() / "box.bmp");
    prompt.OpenedFiles.push_back({Picture("box.jpg")});
    prompt.Log.clear();
    EXPECT_FALSE(mw::CreateOverlayFromPic(project));
    ASSERT_EQ(prompt.Texts().size(), 2u);
    EXPECT_EQ(prompt.Texts()[1], "Can not write " + (Overlays() / "box.bmp").string());
    EXPECT_TRUE(project.Overlays.Top.empty()); // the menus were not filled
    EXPECT_EQ(State(), before);
}

TEST_F(OverlayDialogs, TheColourDialogStartsFromTheMenuAndRefusesBlue)
{
    const std::string menu = Tag(12);
    std::array<std::uint32_t, 3> shown{};
    forms.OverlayColors.push_back([&](std::array<std::uint32_t, 3>& colors) {
        shown = colors;
        colors[2] = mw::kOverlayBlue;
        return true;
    });
    forms.OverlayColors.push_back([](std::array<std::uint32_t, 3>& colors) {
        colors = {7, 8, 9};
        return false;
    });
    forms.OverlayColors.push_back([](std::array<std::uint32_t, 3>& colors) {
        colors = {0x0000FF, 0x00FF00, 0xFEFEFE};
        return true;
    });
    EXPECT_FALSE(mw::SelectColor(project));
    EXPECT_EQ(shown, (std::array<std::uint32_t, 3>{1, 2, 3}));
    EXPECT_EQ(prompt.Texts(), Texts{mw::kBlueIsReserved});
    EXPECT_FALSE(mw::SelectColor(project)); // cancelled
    EXPECT_EQ(Tag(12), menu);
    EXPECT_FALSE(project.FileIsDirty);

    EXPECT_TRUE(mw::SelectColor(project));
    EXPECT_EQ(Tag(12), "<Menuwright Color1='255' Color2='65280' Color3='16711422' frame='7' lock='1'/>");
    EXPECT_EQ(project.Canvas.Colors, (std::array<std::uint32_t, 3>{0x0000FF, 0x00FF00, 0xFEFEFE}));
}

} // namespace
