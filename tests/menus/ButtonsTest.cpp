#include "menus/Buttons.h"
#include "menus/CanvasFixture.h"
#include "menus/OverlayAttributes.h"

namespace {

using Texts = std::vector<std::string>;

class ButtonsTest : public mw::test::CanvasFixture {
protected:
    std::string Row(long id, const char* name)
    {
        return mw::GetPropertyInNode(project.Doc.Tree.Item("k" + std::to_string(id)), name);
    }
    std::string Row(const std::string& id, const char* name) { return Row(std::stol(id), name); }
    Texts ButtonIds()
    {
        Texts ids;
        for (const auto& b : project.Canvas.Buttons)
            ids.push_back(b.Label.Tag);
        return ids;
    }
    void Link(long button, const char* direction, const std::string& target)
    {
        mw::UpdatePropertyInNode(project.Doc.Tree, project.Doc.Tree.Item("k" + std::to_string(button)), direction,
                                 target, true);
    }
};

TEST_F(ButtonsTest, AddingPutsThreeObjectsAfterTheLastButton)
{
    program.Values.DefOverlayPos = 0;
    const long b = project.Doc.NextObjectID;
    const std::string id = mw::AddButtonToMenu(project, {"", 20, 30, 100, 50}, "|Oval");
    ASSERT_EQ(id, std::to_string(b));
    const mw::DocNode& button = project.Doc.Tree.Item("k" + id);
    EXPECT_EQ(button.Previous(), &project.Doc.Tree.Item("k17"));
    EXPECT_EQ(Row(id, "overlayID"), std::to_string(b + 2));
    EXPECT_EQ(button.Tag, "<Menuwright Shape='*Oval' width='3' Position='6 6 -12 -12'/>");
    EXPECT_EQ(Row(b + 1, "left") + Row(b + 1, "top") + Row(b + 1, "width") + Row(b + 1, "height"), "203010050");
    EXPECT_EQ(Row(b + 2, "mediaSourceID"), "21");
    EXPECT_EQ(Row(b + 2, "trackID"), "02sb"); // the missing background counts as two streams
    EXPECT_EQ(Row(b + 2, "startFrame"), "3");
    EXPECT_EQ(project.Doc.Tree.Item("k" + std::to_string(b + 2)).Tag,
              "<Menuwright rectID='" + std::to_string(b + 1) + "'/>");
    EXPECT_EQ(mw::ReadOverlayAttributes(Tag(22)).Shape, ""); // only the counter, moved from 3 to 4
    EXPECT_NE(Tag(22).find("Buttons='4'"), std::string::npos);
    ASSERT_NE(project.Doc.MenuTracks.Find(std::to_string(b + 2)), nullptr);
    EXPECT_EQ(project.Doc.MenuTracks.Find(std::to_string(b + 2))->Text,
              std::to_string(b + 2) + "|21(menu.avi)-subtitle 02sb");
    const mw::CanvasButton& shown = project.Canvas.Buttons.back();
    EXPECT_EQ(shown.Overlay.Left, 14);
    EXPECT_EQ(shown.Overlay.Top, 24);
    EXPECT_EQ(shown.Overlay.Width, 112);
    EXPECT_EQ(shown.Overlay.Height, 62);
    EXPECT_EQ(project.Canvas.Selected, 3);
    EXPECT_EQ(Row(12, "startingMenuItemID"), ""); // not the first button

    EXPECT_EQ(mw::FindRectForOverlayID(project.Doc.Tree, std::to_string(b + 2)), button.Child(3));
    long start = -1, end = -1;
    EXPECT_EQ(mw::GetStartFrameForButtonByID(project.Doc.Tree, id, start, end), 3);
    mw::SetStartEndFrameForButton(project.Doc.Tree, std::to_string(b + 2), 7, 9);
    start = -1, end = 12;
    EXPECT_EQ(mw::GetStartFrameForButton(project.Doc.Tree, std::to_string(b + 2), start, end), 7);
    EXPECT_EQ(Row(b + 2, "endFrame"), "12");
    EXPECT_EQ(mw::GetStartFrameForButtonByID(project.Doc.Tree, "13", start, end), -1); // no overlay track
}

TEST_F(ButtonsTest, DeletingRoutesNeighboursPastTheButtonAndMovesTheStart)
{
    Link(13, "rightAction", "15");
    Link(15, "leftAction", "13");
    Link(15, "rightAction", "17");
    Link(17, "leftAction", "15");
    Link(17, "downAction", "15");
    mw::UpdatePropertyInNode(project.Doc.Tree, project.Doc.Tree.Item("k12"), "startingMenuItemID", "15", true);
    mw::DeleteButton(project, 1);
    EXPECT_EQ(ButtonIds(), (Texts{"13", "17"}));
    EXPECT_EQ(Row(13, "rightAction"), "17");
    EXPECT_EQ(Row(17, "leftAction"), "13");
    EXPECT_EQ(Row(17, "downAction"), ""); // 15 had no way down: the row goes
    EXPECT_EQ(Row(12, "startingMenuItemID"), "17");
    EXPECT_NE(Tag(22).find("Buttons='2'"), std::string::npos);

    // A new button takes the reduced count as its frame.
    const std::string added = mw::AddButtonToMenu(project, {"", 0, 0, 10, 10}, "");
    EXPECT_EQ(Row(Row(added, "overlayID"), "startFrame"), "2");
}

TEST_F(ButtonsTest, AMultipleDeletionIsOneUndoStepAndEmptiesTheStart)
{
    mw::UpdatePropertyInNode(project.Doc.Tree, project.Doc.Tree.Item("k12"), "startingMenuItemID", "13", true);
    mw::DeleteButton(project, mw::kSelectedButtons); // nothing selected
    EXPECT_EQ(ButtonIds().size(), 3u);
    mw::SelectInBand(project, 0, 0, 400, 400);
    mw::DeleteButton(project, mw::kSelectedButtons);
    EXPECT_EQ(ButtonIds(), Texts{});
    EXPECT_EQ(project.Undo.Count(), 1u);
    EXPECT_EQ(project.Doc.Tree.Find("k14"), nullptr);
    EXPECT_EQ(Row(12, "startingMenuItemID"), "");

    // Without a background track the overlay rows say "<error>"; the first button is the start.
    mw::UpdatePropertyInNode(project.Doc.Tree, project.Doc.Tree.Item("k12"), "backgroundVideoID", "none", false);
    mw::ParceMenu(project, project.Doc.Tree.Item("k12"));
    const std::string id = mw::AddButtonToMenu(project, {"", 1, 2, 3, 4}, "frames\\Star");
    EXPECT_EQ(Row(Row(id, "overlayID"), "mediaSourceID"), "<error>");
    EXPECT_EQ(Row(12, "startingMenuItemID"), id);
    EXPECT_EQ(project.Doc.Tree.Item("k" + id).Tag, "<Menuwright Shape='frames\\Star' Position='0 0 0 0'/>");
}

TEST_F(ButtonsTest, AlignAndSizeOnTheLastClickedButton)
{
    struct Case {
        void (*command)(mw::Project&, int);
        int mode;
        const char* first;
        const char* second;
    };
    for (const Case& c : {Case{mw::DoAlign, 1, "10 20 100 30", "10 20 50 50"},
                          Case{mw::DoAlign, 2, "10 100 100 30", "200 100 50 50"},
                          Case{mw::DoAlign, 3, "210 20 100 30", "260 20 50 50"},
                          Case{mw::DoAlign, 4, "10 110 100 30", "200 90 50 50"},
                          Case{mw::DoSameSize, 1, "10 20 300 30", "200 20 300 50"},
                          Case{mw::DoSameSize, 3, "10 20 300 40", "200 20 300 40"}}) {
        project.FileIsDirty = false; // opened afresh, without the question
        SetUp();
        mw::Label1_Click(project, 2);
        mw::SelectInBand(project, 0, 0, 260, 80);
        c.command(project, c.mode);
        const auto rect = [this](long id) {
            return Row(id, "left") + " " + Row(id, "top") + " " + Row(id, "width") + " " + Row(id, "height");
        };
        EXPECT_EQ(rect(14), c.first) << c.mode;
        EXPECT_EQ(rect(16), c.second) << c.mode;
        EXPECT_EQ(rect(18), "10 100 300 40");
        EXPECT_EQ(project.Canvas.Selected, -1);
        EXPECT_EQ(project.Undo.Count(), 1u);
    }
}

TEST_F(ButtonsTest, CopiedButtonsAndSizesArePastedWithNewIdentifiers)
{
    mw::SelectInBand(project, 0, 0, 260, 80);
    mw::mnuCopyButtons(project);
    mw::ParceMenu(project, project.Doc.Tree.Item("k12")); // the copy outlives the menu shown
    const long b = project.Doc.NextObjectID;
    mw::mnuPasteButtons(project);
    EXPECT_EQ(ButtonIds(), (Texts{"13", "15", "17", std::to_string(b), std::to_string(b + 3)}));
    EXPECT_EQ(Row(b + 1, "left"), "10");
    EXPECT_EQ(Row(b + 4, "left"), "200");
    EXPECT_EQ(mw::ReadOverlayAttributes(project.Doc.Tree.Item("k" + std::to_string(b)).Tag).Width, 5);
    EXPECT_EQ(project.Undo.Count(), 1u);

    mw::Label1_Click(project, 2);
    mw::mnuCopySize(project);
    mw::Label1_Click(project, 0);
    mw::mnuPasteSize(project);
    EXPECT_EQ(Row(14, "width") + "x" + Row(14, "height"), "300x40");
}

} // namespace
