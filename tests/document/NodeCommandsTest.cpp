#include "document/NodeSelection.h"

#include "ProjectFixture.h"

namespace mw::test {
namespace {

using NodeCommandsTest = ProjectFixture;

TEST_F(NodeCommandsTest, StepsFollowTheSelectionAndMenuEditsCanBeUndone)
{
    Open("p.xml");
    EXPECT_FALSE(StepSibling(project, true)); // nothing selected
    EXPECT_FALSE(project.Commands.mnuNextNode);

    TreeView1_NodeClick(project, project.Doc.Tree.ObjectNode("6"));
    EXPECT_TRUE(project.Commands.mnuNextNode && project.Commands.mnuPreviusNode && project.PanesShown);
    EditPropertyRow(project, *project.Doc.Tree.ObjectNode("6"), "objectID", "6");
    EXPECT_EQ(project.Undo.Count(), 0u); // a title is no menu
    EXPECT_TRUE(project.FileIsDirty);

    TreeView1_NodeClick(project, project.Doc.Tree.ObjectNode("12"));
    EXPECT_EQ(project.CurrentMenuID, "12");
    EditPropertyRow(project, *project.Doc.Tree.ObjectNode("12"), "menuName", "Other");
    EXPECT_EQ(project.Undo.Count(), 1u);
    project.UndoDo();
    EXPECT_EQ(GetPropertyInNode(*project.Doc.Tree.ObjectNode("12"), "menuName"), "Main");

    // The language set 9 has no next sibling but the set 30.
    TreeView1_NodeClick(project, project.Doc.Tree.ObjectNode("9"));
    EXPECT_TRUE(StepSibling(project, true));
    EXPECT_EQ(project.Doc.Tree.Selected()->Key(), "k30");
    EXPECT_FALSE(StepSibling(project, true));
    EXPECT_EQ(project.Doc.Tree.Selected()->Key(), "k30");
}

} // namespace
} // namespace mw::test
