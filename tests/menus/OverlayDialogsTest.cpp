#include "menus/CanvasFixture.h"
#include "menus/OverlayAttributes.h"
#include "menus/OverlayDialogs.h"
#include "render/OverlayScheme.h"

#include "core/Paths.h"
#include "core/settings/OptionsModel.h"

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

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
