// Buttons found in a picture of highlight areas, kept in sets and pasted into the menu on the
// canvas with their overlays.
#include "menus/CanvasFixture.h"
#include "generators/SubEditPicture.h"

#include "media/AviFile.h"
#include "menus/MenuForms.h"
#include "menus/OverlayAttributes.h"
#include "generators/SubEditButtons.h"
#include "render/BmpFile.h"
#include "render/OverlayScheme.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using mw::SubEditButton;
using mw::test::kHighlights;

std::vector<QRect> Rects(const std::vector<SubEditButton>& buttons)
{
    std::vector<QRect> rects;
    for (const SubEditButton& b : buttons)
        rects.push_back(b.Rect);
    return rects;
}

TEST(SubEditScan, FindsEachHighlightOnceInRowOrderAndDropsSpecks)
{
    const QImage picture = mw::test::HighlightPicture();
    const mw::SubEditScan scan = mw::FindSubEditButtons(picture);
    EXPECT_EQ(scan.Background, qRgb(0, 0, 0));
    EXPECT_FALSE(scan.TooMany);
    // The 4-pixel wide bar is left out, the text inside the first area makes no button, the two
    // red areas stay two, and the one at the corner of the picture is whole.
    EXPECT_EQ(Rects(scan.Buttons), mw::test::ExpectedHighlights());
    EXPECT_EQ(scan.Buttons.front().Colour, kHighlights[0].Colour);

    // A picture of background only, and no picture at all, have no buttons.
    QImage plain(30, 30, QImage::Format_RGB32);
    plain.fill(Qt::gray);
    EXPECT_TRUE(mw::FindSubEditButtons(plain).Buttons.empty());
    EXPECT_TRUE(mw::FindSubEditButtons(QImage()).Buttons.empty());
}

TEST(SubEditScan, OverlayHoldsTheAreaOnEntryOneAndWhatIsInsideOnEntryTwo)
{
    const QImage picture = mw::test::HighlightPicture();
    const mw::SubEditScan scan = mw::FindSubEditButtons(picture);
    const mw::SubEditSet set{picture, scan.Buttons, scan.Background};
    const mw::cDIB overlay = mw::SubEditOverlay(set, scan.Buttons.front());
    ASSERT_EQ(overlay.BPP(), 4);
    EXPECT_EQ(overlay.Width(), 40);
    EXPECT_EQ(overlay.Height(), 20);
    EXPECT_EQ(overlay.GetColorTable(), mw::OverlayColorTable());
    EXPECT_EQ(overlay.Pixel(0, 0), 1u);
    EXPECT_EQ(overlay.Pixel(39, 19), 1u);
    EXPECT_EQ(overlay.Pixel(12, 8), 2u); // the white text
    // A button moved past the picture's edge keeps the outside transparent.
    SubEditButton past = scan.Buttons.back();
    past.Rect.translate(5, 5);
    const mw::cDIB clipped = mw::SubEditOverlay(set, past);
    EXPECT_EQ(clipped.Pixel(0, 0), 1u);
    EXPECT_EQ(clipped.Pixel(29, 29), 0u);
}

TEST(SubEditSets, TwentyOneAreasKeepTheFirstTwentyAndAnEleventhCaptureIsRefused)
{
    mw::ScriptedPrompt prompt;
    mw::SubEditSets sets;
    std::string status;
    const QImage many = mw::test::GridPicture(21);
    EXPECT_EQ(sets.Capture(many, prompt, status), 0);
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{mw::kSubEditTooMany});
    EXPECT_EQ(status, "20 buttons found");
    ASSERT_EQ(sets.Set(0).Buttons.size(), 20u);
    EXPECT_EQ(sets.Set(0).Buttons.back().Rect, QRect(10 + 19 * 10, 10, 6, 6)); // the 21st is the one left out

    prompt.Log.clear();
    EXPECT_EQ(sets.Capture(QImage(8, 8, QImage::Format_RGB32), prompt, status), std::nullopt);
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{mw::kSubEditNoButtons});
    for (int k = 1; k < mw::kSubEditSetCount; ++k)
        EXPECT_EQ(sets.Capture(mw::test::GridPicture(k), prompt, status), k);
    EXPECT_EQ(sets.ActiveIndex(), 9);
    EXPECT_TRUE(sets.Full());

    prompt.Log.clear();
    EXPECT_EQ(sets.Capture(mw::test::HighlightPicture(), prompt, status), std::nullopt);
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{mw::kSubEditSetsFull});
    EXPECT_EQ(sets.Set(9).Buttons.size(), 9u);

    // A cleared set is free again and the next capture fills it; a free set cannot be made active.
    sets.Clear(3);
    sets.Activate(3);
    EXPECT_EQ(sets.ActiveIndex(), 9);
    sets.Clear(9);
    EXPECT_EQ(sets.Active(), nullptr);
    EXPECT_EQ(sets.Capture(mw::test::HighlightPicture(), prompt, status), 3);
    EXPECT_EQ(Rects(sets.Active()->Buttons), mw::test::ExpectedHighlights());
    sets.ClearAll();
    EXPECT_EQ(sets.Active(), nullptr);
    EXPECT_TRUE(sets.Set(0).Empty());
    EXPECT_FALSE(sets.Full());
}

TEST(SubEditSets, ArrowsMoveAndResizeOnlyTheActiveSet)
{
    mw::ScriptedPrompt prompt;
    mw::SubEditSets sets;
    std::string status;
    sets.Capture(mw::test::HighlightPicture(), prompt, status);
    sets.Capture(mw::test::HighlightPicture(), prompt, status);
    sets.Activate(0);
    sets.MoveActive(1, -1);
    sets.ResizeActive(-1, 2);
    EXPECT_EQ(sets.Active()->Buttons.front().Rect, QRect(11, 9, 39, 22));
    EXPECT_EQ(Rects(sets.Set(1).Buttons), mw::test::ExpectedHighlights());
    for (int i = 0; i < 60; ++i)
        sets.ResizeActive(-1, -1);
    EXPECT_EQ(sets.Active()->Buttons.front().Rect.size(), QSize(1, 1));
}

class SubEditPasteTest : public mw::test::CanvasFixture {
protected:
    mw::SubEditSet Captured()
    {
        mw::SubEditSets sets;
        std::string status;
        sets.Capture(mw::test::HighlightPicture(), prompt, status);
        return *sets.Active();
    }
    fs::path Overlay(int n) { return mw::SubEditOverlayFile(project.ProgramFolder(), "12", n); }
};

TEST_F(SubEditPasteTest, PastesTheSetAsButtonsWithTheirOverlaysInOneUndoStep)
{
    const auto before = State();
    const mw::SubEditSet set = Captured();
    const std::vector<std::string> ids = mw::PasteSubEditButtons(project, &set, {});
    ASSERT_EQ(ids.size(), 4u);
    EXPECT_TRUE(prompt.Log.empty()) << ::testing::PrintToString(prompt.Texts());
    const std::vector<mw::CanvasButton>& buttons = project.Canvas.Buttons;
    ASSERT_EQ(buttons.size(), 7u);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const mw::CanvasButton& b = buttons[3 + i];
        const QRect expected = mw::test::ExpectedHighlights()[i];
        EXPECT_EQ(QRect(int(b.Label.Left), int(b.Label.Top), int(b.Label.Width), int(b.Label.Height)), expected);
        EXPECT_EQ(b.Label.Tag, ids[i]);
        EXPECT_EQ(b.Overlay.Left, expected.left() - 3);
        EXPECT_EQ(b.Overlay.Top, expected.top() - 4);
        EXPECT_EQ(fs::path(b.OverlayFile), Overlay(int(i) + 1));
        const mw::OverlayAttributes a = mw::ReadOverlayAttributes(Tag(std::stol(ids[i])));
        EXPECT_EQ(a.Shape, "DVDSubEdit\\12_" + std::to_string(i + 1));
        EXPECT_EQ(a.Position, "3 4 0 0");
        mw::cDIB written;
        ASSERT_TRUE(mw::LoadBmpFile(Overlay(int(i) + 1).string(), written));
        EXPECT_EQ(written, mw::SubEditOverlay(set, set.Buttons[i]));
    }
    // The library's menu now lists the folder.
    EXPECT_TRUE(std::any_of(project.Overlays.Folders.begin(), project.Overlays.Folders.end(),
                            [](const mw::OverlayFolderMenu& f) { return f.Caption == "DVDSubEdit"; }));
    EXPECT_EQ(project.Undo.Count(), before.UndoSteps + 1);
    project.UndoDo();
    EXPECT_EQ(Xml(), before.Xml);
}

TEST_F(SubEditPasteTest, NothingChangesWithoutActiveButtonsOrWhenAnOverlayCannotBeWritten)
{
    const auto before = State();
    EXPECT_TRUE(mw::PasteSubEditButtons(project, nullptr, {}).empty());
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{mw::kSubEditNoActive});

    // An overlay of an earlier paste is in place, and the second one cannot be written: the first
    // file keeps its bytes, nothing half-written is left, and the project is as it was.
    const fs::path folder = Overlay(1).parent_path();
    fs::create_directories(folder);
    std::ofstream(Overlay(1)) << "earlier";
    fs::create_directories(fs::path(Overlay(2).string() + ".part"));
    prompt.Log.clear();
    const mw::SubEditSet set = Captured();
    EXPECT_TRUE(mw::PasteSubEditButtons(project, &set, {}).empty());
    ASSERT_EQ(prompt.Log.size(), 1u);
    EXPECT_EQ(prompt.Texts().front(), "Can not write the overlays in " + folder.string());
    EXPECT_EQ(State(), before);
    EXPECT_EQ(project.Canvas.Buttons.size(), 3u);
    EXPECT_EQ(mw::test::ReadAll(Overlay(1)), "earlier");
    EXPECT_FALSE(fs::exists(Overlay(1).string() + ".part"));

    // Without a menu on the canvas there is nowhere to paste.
    project.ForgetCanvas();
    prompt.Log.clear();
    EXPECT_TRUE(mw::PasteSubEditButtons(project, &set, {std::nullopt, false}).empty());
    EXPECT_EQ(prompt.Log.size(), 1u);
    EXPECT_EQ(Xml(), before.Xml);
}

TEST_F(SubEditPasteTest, ANewMenuOfTheCapturedSizeIsShownReadyForThePaste)
{
    const fs::path video = work.Path() / "sub.avi";
    std::ofstream(video) << "the user's file";
    prompt.SavedFiles = {std::nullopt, video.string()};
    const auto before = State();
    EXPECT_EQ(mw::NewMenuOfSize(project, {64, 48}), "");
    EXPECT_EQ(State(), before);

    forms.NewMenu.push_back([](mw::NewMenuForm& form) {
        form.txtMenuName = "Captured";
        return true;
    });
    const std::string id = mw::NewMenuOfSize(project, {64, 48});
    ASSERT_FALSE(id.empty()) << ::testing::PrintToString(prompt.Texts());
    EXPECT_EQ(project.Canvas.CurrentMenuID, id);
    EXPECT_TRUE(project.Canvas.Buttons.empty());
    const auto avi = mw::AviFile::Open(video.string());
    ASSERT_TRUE(avi);
    EXPECT_EQ(avi->FileInfo().dwWidth, 64u);
    EXPECT_EQ(avi->FileInfo().dwHeight, 48u);
    for (const auto& entry : fs::directory_iterator(work.Path()))
        EXPECT_EQ(entry.path().string().find(".part"), std::string::npos) << entry.path();
}

} // namespace
