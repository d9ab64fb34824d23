#include "menus/CanvasFixture.h"

#include "media/TitleTestKit.h"
#include "render/cDIB.h"

#include <filesystem>

namespace {

using mw::ButtonShape;

class CanvasTest : public mw::test::CanvasFixture {};

bool SameRect(const ButtonShape& a, const ButtonShape& b)
{
    return a.Left == b.Left && a.Top == b.Top && a.Width == b.Width && a.Height == b.Height;
}

TEST_F(CanvasTest, ParceMenuReadsTheMenuItsButtonsAndTheirOverlays)
{
    const mw::MenuCanvas& canvas = project.Canvas;
    EXPECT_EQ(canvas.CurrentMenuID, "12");
    EXPECT_EQ(canvas.Colors, (std::array<std::uint32_t, 3>{1, 2, 3}));
    EXPECT_TRUE(canvas.Lock);
    EXPECT_EQ(canvas.Frame, 7);
    EXPECT_EQ(canvas.Menu.StartFrame, "5");
    EXPECT_EQ(canvas.Menu.MenuName, "Main");
    ASSERT_EQ(canvas.Buttons.size(), 3u);

    struct Expected {
        const char* id;
        ButtonShape rect, overlay;
        const char* shape;
        long width;
    };
    const Expected expected[] = {
        {"13", {"", 10, 20, 100, 30}, {"", 10, 20, 100, 30}, "*Rect", 5},
        {"15", {"", 200, 20, 50, 50}, {"", 194, 14, 62, 62}, "*Rect", 3}, // no extra info: the defaults
        {"17", {"", 10, 100, 300, 40}, {"", 4, 94, 312, 52}, "*Text", 3},
    };
    for (std::size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(expected[i].id);
        EXPECT_EQ(canvas.Buttons[i].Label.Tag, expected[i].id);
        EXPECT_TRUE(SameRect(canvas.Buttons[i].Label, expected[i].rect));
        EXPECT_TRUE(SameRect(canvas.Buttons[i].Overlay, expected[i].overlay));
        EXPECT_EQ(canvas.Buttons[i].Shape, expected[i].shape);
        EXPECT_EQ(canvas.Buttons[i].LineWidth, expected[i].width);
    }
    EXPECT_EQ(canvas.Buttons[0].OverlayFile, (home.Path() / "overlays" / "rectangle_.bmp").string());
    EXPECT_EQ(canvas.Buttons[2].OverlayFile, "*Text.bmp");
    // An older file keeps the button count on the source; the track takes it over.
    EXPECT_EQ(Tag(22), "<Menuwright Buttons='3' menuID='12'/>");
}

TEST_F(CanvasTest, AMissingBackgroundIsSaidAndCountsAsTwoStreams)
{
    ParceMenu(project, project.Doc.Tree.Item("k12"));
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{"File not found \"" + (work.Path() / "menu.avi").string() +
                                                       "\"\r\nIs used for menu background. Assume that streams in "
                                                       "file is 2"});
    EXPECT_EQ(project.Canvas.OverlayStream, 2);
    EXPECT_FALSE(project.Canvas.buttonDel); // nothing selected yet
}

TEST_F(CanvasTest, ClickingAButtonSelectsItAndItsTools)
{
    struct Case {
        int index;
        bool lineWidth;
        mw::OverlayCheck check;
    };
    using In = mw::OverlayCheck::In;
    for (const Case& c : {Case{0, true, {In::Special, -1, 3}}, Case{1, true, {In::Special, -1, 3}},
                          Case{2, false, {In::Special, -1, 0}}}) {
        mw::Label1_Click(project, c.index);
        EXPECT_EQ(project.Canvas.Selected, c.index);
        EXPECT_EQ(project.Doc.Tree.Selected(), project.Doc.Tree.ObjectNode(Button(c.index).Label.Tag));
        EXPECT_TRUE(project.Canvas.shapeSelect && project.Canvas.buttonDel);
        EXPECT_EQ(project.Canvas.shapeLineWidth, c.lineWidth) << c.index;
        EXPECT_EQ(project.Overlays.Checked, c.check) << c.index;
    }
    EXPECT_EQ(project.Overlays.CheckedWidth, 0); // a text overlay has no line width
}

TEST_F(CanvasTest, ABandSelectsTheButtonsFullyInsideWhicheverWayItIsDrawn)
{
    const auto selected = [this] {
        std::vector<bool> flags;
        for (const auto& b : project.Canvas.Buttons)
            flags.push_back(b.Selected);
        return flags;
    };
    mw::SelectInBand(project, 0, 0, 260, 80);
    EXPECT_EQ(selected(), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(project.Canvas.Selected, -1);
    mw::SelectInBand(project, 260, 80, 0, 0);
    EXPECT_EQ(selected(), (std::vector<bool>{true, true, false}));

    // One button inside is an ordinary selection; a band that cuts a button leaves it out.
    mw::SelectInBand(project, 320, 150, 5, 90);
    EXPECT_EQ(selected(), (std::vector<bool>{false, false, false}));
    EXPECT_EQ(project.Canvas.Selected, 2);
    mw::SelectInBand(project, 0, 0, 100, 100);
    EXPECT_EQ(project.Canvas.Selected, -1);
    EXPECT_EQ(project.Canvas.LastSelected, 2);
    EXPECT_FALSE(project.Canvas.buttonDel);
}

TEST_F(CanvasTest, TheEndOfAGestureSnapsWritesTheTreeAndCarriesTheSelection)
{
    const auto rows = [this](long rect) {
        const mw::DocNode& node = project.Doc.Tree.Item("k" + std::to_string(rect));
        return mw::GetPropertyInNode(node, "left") + " " + mw::GetPropertyInNode(node, "top") + " " +
               mw::GetPropertyInNode(node, "width") + " " + mw::GetPropertyInNode(node, "height");
    };
    EXPECT_FALSE(mw::EndButtonGesture(project, 0, {"13", 50, 50, 100, 30})); // the menu is locked
    EXPECT_EQ(rows(14), "10 20 100 30");
    EXPECT_FALSE(project.FileIsDirty);

    project.Canvas.Lock = false;
    project.Canvas.LinesV = {115};
    project.Canvas.LinesH = {60};
    mw::SelectInBand(project, 0, 0, 260, 80); // buttons 13 and 15
    // Moved: the right edge comes within 3 of 115, the bottom within 6 of 60, and both snap.
    ASSERT_TRUE(mw::EndButtonGesture(project, 0, {"13", 12, 24, 100, 30}));
    EXPECT_EQ(rows(14), "15 30 100 30");
    EXPECT_EQ(rows(16), "205 30 50 50"); // carried along by the same distance
    EXPECT_TRUE(SameRect(Button(0).Overlay, {"", 15, 30, 100, 30}));
    EXPECT_TRUE(SameRect(Button(1).Overlay, {"", 199, 24, 62, 62}));
    EXPECT_EQ(rows(18), "10 100 300 40"); // not selected
    EXPECT_EQ(project.Undo.Count(), 1u);

    // Resized: the dragged edge snaps, the other one stays.
    mw::Label1_Click(project, 2);
    project.Canvas.LinesV = {115, 9};
    ASSERT_TRUE(mw::EndButtonGesture(project, 2, {"17", 13, 100, 297, 40}));
    EXPECT_EQ(rows(18), "9 100 301 40");
    ASSERT_TRUE(mw::EndButtonGesture(project, 2, {"17", 9, 100, 103, 40}));
    EXPECT_EQ(rows(18), "9 100 106 40");
    ASSERT_TRUE(mw::EndButtonGesture(project, 2, {"17", 9, 100, 106, 45}));
    EXPECT_EQ(rows(18), "9 100 106 45"); // 145 is 85 from the line
    EXPECT_TRUE(project.FileIsDirty);
}

TEST_F(CanvasTest, TheShownFrameIsStoredWithTheMenuAndGrabbedFromItsBackground)
{
    mw::cDIB picture;
    EXPECT_FALSE(mw::GrabMenuFrame(project, picture)); // the file is missing: the canvas stays blank
    EXPECT_TRUE(picture.Empty());
    EXPECT_TRUE(prompt.Texts().empty());

    mw::SetMenuFrame(project, -1);
    EXPECT_EQ(mw::ShownFrame(project.Canvas), 5); // none stored: the start of the background
    EXPECT_EQ(Tag(12), "<Menuwright Color1='1' Color2='2' Color3='3' frame='-1' lock='1'/>");

    std::filesystem::copy_file(mw::test::ShortMovie(), work.Path() / "menu.avi");
    ParceMenu(project, project.Doc.Tree.Item("k12"));
    mw::SetMenuFrame(project, 40);
    ASSERT_TRUE(mw::GrabMenuFrame(project, picture));
    EXPECT_EQ(picture.Width(), 64);
    EXPECT_EQ(picture.Height(), 48);
    const mw::cDIB at40 = picture;
    mw::SetMenuFrame(project, 5);
    ASSERT_TRUE(mw::GrabMenuFrame(project, picture));
    EXPECT_FALSE(picture == at40);
    EXPECT_EQ(mw::ShownFrame(project.Canvas), 5);
    EXPECT_TRUE(prompt.Texts().empty());

    // Asked for, the shown frame is offered and the answer's leading number taken.
    EXPECT_EQ(mw::AskMenuFrame(project), 5);
    EXPECT_EQ(prompt.Log.back().Text, "Type the frame to use");
    prompt.Inputs = {"12 frames", std::nullopt};
    EXPECT_EQ(mw::AskMenuFrame(project), 12);
    EXPECT_EQ(mw::AskMenuFrame(project), std::nullopt);
    project.Canvas.CurrentMenuID.clear();
    prompt.Log.clear();
    EXPECT_EQ(mw::AskMenuFrame(project), std::nullopt);
    EXPECT_TRUE(prompt.Log.empty());
}

TEST_F(CanvasTest, GuideLinesArePickedUpNearThePressAndDroppedOffThePage)
{
    std::vector<long> lines;
    EXPECT_EQ(mw::PickGuideLine(lines, 100), 0u);
    EXPECT_EQ(mw::PickGuideLine(lines, 101), 0u); // 103 is 3 from 100: the same line
    EXPECT_EQ(mw::PickGuideLine(lines, 102), 1u); // 104 is 4 away: a new one
    mw::DropGuideLine(lines, 1, 300, 576);
    EXPECT_EQ(lines, (std::vector<long>{100, 300}));
    mw::DropGuideLine(lines, 0, 576, 576);
    EXPECT_EQ(lines, std::vector<long>{300});
    mw::DropGuideLine(lines, 0, -1, 576);
    EXPECT_TRUE(lines.empty());
}

TEST_F(CanvasTest, AButtonLinksToTheMenuItsActionMovesTo)
{
    mw::DocTree& tree = project.Doc.Tree;
    EXPECT_EQ(mw::ButtonLinkMenu(project, 0), nullptr);
    mw::DocNode& action = tree.AddChild(tree.Item("k13"), "k40", "Action", "action");
    mw::DocNode& move = tree.AddChild(action, "k41", "MenuTransitionAction", "action");
    tree.AddChild(move, "", "menuID = 12", "prop");
    EXPECT_EQ(mw::ButtonLinkMenu(project, 0), &tree.Item("k12"));
    tree.AddChild(tree.Item("k15"), "k42", "Action", "action");
    EXPECT_EQ(mw::ButtonLinkMenu(project, 1), nullptr);
}

} // namespace
