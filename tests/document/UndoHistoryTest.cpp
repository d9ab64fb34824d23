#include "ProjectFixture.h"

#include "document/SchemaNodes.h"
#include "document/TreeQueries.h"

namespace {

using Texts = std::vector<std::string>;

class UndoHistoryTest : public mw::test::ProjectFixture {
protected:
    void SetUp() override
    {
        Open("menus.xml");
        project.Canvas.CurrentMenuID = "12";
    }
    mw::DocNode& Menu() { return project.Doc.Tree.Item("k12"); }
    std::string MenuName() { return mw::GetPropertyInNode(Menu(), "menuname"); }
    // One edit of the menu, as a command makes it: the undo step, then a new name and a new
    // track for the menu.
    void Edit(int step)
    {
        project.UndoAdd();
        mw::UpdatePropertyInNode(project.Doc.Tree, Menu(), "menuName", "step " + std::to_string(step), false);
        mw::DocNode& tracks = mw::GetMenuTracksOrCreate(project.Doc);
        mw::AddNextObjectNode(project.Doc, tracks, "MediaTrack", "movielink");
    }
    std::size_t TrackCount()
    {
        std::size_t count = 0;
        for (const auto& child : mw::GetMenuTracksOrCreate(project.Doc))
            count += child->Text == "MediaTrack" ? 1 : 0;
        return count;
    }
};

TEST_F(UndoHistoryTest, EightStepsComeBackInOrderAndTheNinthPushesTheOldestOut)
{
    const std::size_t tracksAtStart = TrackCount();
    for (int step = 1; step <= 9; ++step)
        Edit(step);
    EXPECT_EQ(project.Undo.Count(), 8u);
    EXPECT_TRUE(project.Commands.mnuUndo);

    // Undo k restores the name that stood before edit 10 - k, with its tracks.
    for (int k = 1; k <= 8; ++k) {
        SCOPED_TRACE(k);
        project.UndoDo();
        EXPECT_EQ(MenuName(), "step " + std::to_string(9 - k));
        EXPECT_EQ(TrackCount(), tracksAtStart + static_cast<std::size_t>(9 - k));
        EXPECT_EQ(project.Doc.MenuTracks.Count(), TrackCount());
        EXPECT_EQ(project.Commands.mnuUndo, k < 8);
        EXPECT_EQ(project.Canvas.CurrentMenuID, "12");
    }
    project.UndoDo(); // the first edit is beyond reach
    EXPECT_EQ(MenuName(), "step 1");
    EXPECT_TRUE(prompt.Texts().empty());
}

TEST_F(UndoHistoryTest, UndoBringsBackTheSelectionTheExtraInfoAndThePlaces)
{
    const std::string tag = "<Menuwright Color1='255' Color2='65535' Color3='16777215' frame='4'/>";
    Menu().Tag = tag;
    mw::DocNode& later = mw::AddNextObjectNode(project.Doc, project.Doc.Tree.Item("k9"), "DivXMediaMenu", "menu");
    mw::AddNextObjectNode(project.Doc, project.Doc.Tree.Item("k2"), "Title", "movie");
    const std::size_t menuAt = Menu().PositionInParent();
    const std::size_t tracksAt = project.Doc.Tree.Item("k20").PositionInParent();
    // A track of another menu behind the menu's own: they come back in front of it.
    const mw::DocNode& other = mw::AddNextObjectNode(project.Doc, project.Doc.Tree.Item("k20"), "MediaTrack", "movielink");
    const std::size_t videoAt = project.Doc.Tree.Item("k22").PositionInParent();
    project.Doc.Tree.Select(Menu().Child(1)); // a row has no key: the menu stands for it
    Edit(1);
    project.Doc.Tree.Select(nullptr);
    project.UndoDo();
    EXPECT_EQ(project.Doc.Tree.Selected(), &Menu());
    EXPECT_EQ(Menu().Tag, tag);
    EXPECT_EQ(Menu().Parent(), &project.Doc.Tree.Item("k9"));
    EXPECT_EQ(Menu().PositionInParent(), menuAt);
    EXPECT_EQ(later.PositionInParent(), menuAt + 1);
    EXPECT_EQ(project.Doc.Tree.Item("k20").PositionInParent(), tracksAt); // MenuTracks, before the new title
    EXPECT_EQ(project.Doc.Tree.Item("k22").PositionInParent(), videoAt);
    EXPECT_EQ(other.PositionInParent(), videoAt + 1);
    EXPECT_TRUE(project.FileIsDirty);
    EXPECT_TRUE(prompt.Texts().empty());
}

TEST_F(UndoHistoryTest, AMissingMenuOrParentEndsTheHistory)
{
    project.Canvas.CurrentMenuID.clear(); // nothing on the canvas: nothing to keep
    project.UndoAdd();
    EXPECT_TRUE(prompt.Log.empty());
    project.Canvas.CurrentMenuID = "77";
    project.UndoAdd();
    EXPECT_EQ(prompt.Texts(), Texts{"Error in undo"});
    EXPECT_TRUE(project.Undo.Empty());

    prompt.Log.clear();
    project.Canvas.CurrentMenuID = "12";
    Edit(1);
    Edit(2);
    project.Doc.Tree.Remove(project.Doc.Tree.Item("k9"));
    project.UndoDo();
    EXPECT_EQ(prompt.Texts(), Texts{"Error trying to undo"});
    EXPECT_TRUE(project.Undo.Empty());
    EXPECT_FALSE(project.Commands.mnuUndo);
}

TEST_F(UndoHistoryTest, ASnapshotThatCannotBeReadBackRemovesNothing)
{
    mw::UndoSnapshot good;
    ASSERT_TRUE(mw::TakeUndoSnapshot(project.Doc, "12", "12", good));
    const std::vector<std::pair<const char*, std::function<void(mw::UndoSnapshot&)>>> cases = {
        {"tracks do not parse", [](mw::UndoSnapshot& s) { s.Tracks.back().Xml = "<MediaTrack objectID=\"22\""; }},
        {"menu takes the title's id", [](mw::UndoSnapshot& s) {
             s.MenuXml = "<DivXMediaMenu objectID=\"12\"><ButtonMenu objectID=\"6\" /></DivXMediaMenu>";
         }},
        {"both take one id", [](mw::UndoSnapshot& s) {
             s.MenuXml = "<DivXMediaMenu objectID=\"12\"><ButtonMenu objectID=\"21\" /></DivXMediaMenu>";
             s.Tracks.back().Xml = "<MediaTrack objectID=\"21\" />";
         }},
    };
    for (const auto& [name, spoil] : cases) {
        SCOPED_TRACE(name);
        Edit(1);
        mw::UndoSnapshot snapshot = good;
        spoil(snapshot);
        project.Undo.Push(snapshot);
        const std::string before = Xml();
        prompt.Log.clear();
        project.UndoDo();
        EXPECT_EQ(Xml(), before);
        ASSERT_FALSE(prompt.Texts().empty());
        EXPECT_EQ(prompt.Texts().back(), "Error trying to undo");
        EXPECT_TRUE(project.Undo.Empty());
    }
}

} // namespace
