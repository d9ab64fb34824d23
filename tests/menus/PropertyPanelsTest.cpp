#include "document/ProjectFixture.h"
#include "menus/Actions.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/MenuBarCommands.h"
#include "menus/PropertyPanels.h"

namespace {

using mw::GetPropertyInNode;

// A menu after its comment line, with buttons 13 and 15; its video track 22 and an audio track 23.
const char* kPanelProject = R"(<DivXMediaManager objectID="1" defaultMenuLanguage="en">
<TranslationTable objectID="3"/>
<Media objectID="2">
<MenuTracks objectID="20">
<MediaSource objectID="21" mediaType="menuAvi" location="menu.avi"/>
<MediaTrack objectID="22" mediaSourceID="21" trackID="00dc" startFrame="5" endFrame="10" type="video"/>
<MediaTrack objectID="23" mediaSourceID="21" trackID="01wb" type="audio"/>
</MenuTracks>
</Media>
<LanguageMenus objectID="9" languageCode="en" startingMenuID="12" rootMenuID="none">
<!-- -> Menu Main (title) -->
<DivXMediaMenu objectID="12" backgroundVideoID="22" backgroundAudioID="none" menuType="title" menuName="Main">
<ButtonMenu objectID="13" upAction="15" selectAction="30">
<MenuRectangle objectID="14" left="10" top="20" width="100" height="30"/>
<Action objectID="30">
<MenuTransitionAction objectID="31" menuID="12"/>
<PlayAction objectID="32" titleID="6" mediaObjectID="6"/>
</Action>
</ButtonMenu>
<ButtonMenu objectID="15">
<MenuRectangle objectID="16" left="200" top="20" width="50" height="50"/>
</ButtonMenu>
</DivXMediaMenu>
</LanguageMenus>
</DivXMediaManager>
)";

class PropertyPanelsTest : public mw::test::ProjectFixture {
protected:
    void SetUp() override
    {
        Open("panels.xml", kPanelProject);
        mw::ParceMenu(project, Node(12));
        prompt.Log.clear();
    }
    mw::DocNode& Node(long id) { return project.Doc.Tree.Item("k" + std::to_string(id)); }
    std::string Row(long id, const char* name) { return GetPropertyInNode(Node(id), name); }
};

TEST_F(PropertyPanelsTest, MenuRowsRefuseATrackOfTheWrongKindAndRenamingRewritesTheComment)
{
    const std::vector<mw::PanelRow> rows = mw::MenuPanelRows(project);
    ASSERT_EQ(rows.size(), 9u);
    EXPECT_EQ(rows[0].Value, "22|21(menu.avi)-video 00dc");
    EXPECT_EQ(rows[0].Choices, (std::vector<std::string>{"22|21(menu.avi)-video 00dc", "23|21(menu.avi)-audio 01wb"}));
    EXPECT_EQ(rows[2].Choices, (std::vector<std::string>{"<none>", "13", "15"}));
    EXPECT_EQ(rows[7].Value, "5");

    // An audio track as the background video is refused and leaves the tree alone.
    const std::string before = Xml();
    EXPECT_FALSE(mw::PropMenu_ValueChanged(project, 1, "23|21(menu.avi)-audio 01wb"));
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{mw::kNotValidType});
    EXPECT_EQ(Xml(), before);
    EXPECT_FALSE(project.FileIsDirty);
    EXPECT_TRUE(mw::PropMenu_ValueChanged(project, 2, "23|21(menu.avi)-audio 01wb"));
    EXPECT_EQ(Row(12, "backgroundAudioID"), "23");

    EXPECT_TRUE(mw::PropMenu_ValueChanged(project, 7, "Intro"));
    EXPECT_TRUE(mw::PropMenu_ValueChanged(project, 6, "other"));
    const mw::DocNode* comment = Node(12).Previous();
    ASSERT_NE(comment, nullptr);
    EXPECT_EQ(comment->Text, " -> Menu Intro (other)");
    EXPECT_EQ(comment->Tag, comment->Text);
    EXPECT_TRUE(mw::PropMenu_ValueChanged(project, 7, ""));
    EXPECT_EQ(comment->Text, " -> Menu (other)");
    EXPECT_EQ(project.Canvas.Menu.MenuType, "other");

    // The frames go into the background track; a cleared action row changes nothing.
    EXPECT_TRUE(mw::PropMenu_ValueChanged(project, 9, "40"));
    EXPECT_EQ(Row(22, "startFrame"), "5");
    EXPECT_EQ(Row(22, "endFrame"), "40");
    const std::string edited = Xml();
    EXPECT_TRUE(mw::PropMenu_ValueChanged(project, 4, ""));
    EXPECT_EQ(Xml(), edited);
    EXPECT_TRUE(project.FileIsDirty);
}

TEST_F(PropertyPanelsTest, ButtonRowsNeedASelectionAndWriteLinksAndTheRectangle)
{
    EXPECT_TRUE(mw::ButtonPanelRows(project).empty());
    const std::string before = Xml();
    mw::PropButton_ValueChanged(project, 7, "99");
    EXPECT_EQ(Xml(), before);

    mw::Label1_Click(project, 0);
    const std::vector<mw::PanelRow> rows = mw::ButtonPanelRows(project);
    ASSERT_EQ(rows.size(), 10u);
    EXPECT_FALSE(rows[0].Enabled);
    EXPECT_EQ(rows[1].Label, "MenuTransitionAction PlayAction");
    EXPECT_EQ(rows[1].Choices, std::vector<std::string>{"30"});
    EXPECT_EQ(rows[2].Value, "15");
    EXPECT_EQ(rows[2].LabelToolTip, "Click to select the button to get focus when up key pressed");
    EXPECT_EQ(rows[9].Value, "30");

    mw::PropButton_ValueChanged(project, 4, "15");
    EXPECT_EQ(Row(13, "downAction"), "15");
    mw::PropButton_ValueChanged(project, 3, "<none>"); // the no-choice row removes the link
    EXPECT_EQ(Row(13, "upAction"), "");

    mw::PropButton_ValueChanged(project, 7, "25");
    mw::PropButton_ValueChanged(project, 10, "0"); // not above 0: ignored
    mw::PropButton_ValueChanged(project, 9, "60");
    EXPECT_EQ(Row(14, "left"), "25");
    EXPECT_EQ(Row(14, "width"), "60");
    EXPECT_EQ(Row(14, "height"), "30");
}

TEST_F(PropertyPanelsTest, RemovingTheLastActionOfAListRemovesItsRow)
{
    mw::Label1_Click(project, 0);
    mw::RemoveActionAt(project, "selectAction", true, 0);
    std::vector<mw::ActionRow> rows = mw::LoadActionRows(project.Doc.Tree, "30");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].Type, "PlayAction");
    EXPECT_EQ(Row(13, "selectAction"), "30");
    mw::RemoveActionAt(project, "selectAction", true, 0);
    EXPECT_EQ(Row(13, "selectAction"), "");
    EXPECT_EQ(project.Undo.Count(), 2u);
}

TEST_F(PropertyPanelsTest, MenuEntriesFollowTheCanvas)
{
    EXPECT_TRUE(mw::MenuOnCanvas(project));
    EXPECT_FALSE(mw::CanCopyButtons(project));
    EXPECT_FALSE(mw::CanPasteButtons(project));
    mw::Label1_Click(project, 1);
    EXPECT_TRUE(mw::CanCopySize(project));
    EXPECT_FALSE(mw::CanPasteSize(project));
    project.Canvas.Buttons[1].Selected = true;
    EXPECT_TRUE(mw::CanCopyButtons(project));
    mw::mnuCopySize(project);
    mw::mnuCopyButtons(project);
    EXPECT_TRUE(mw::CanPasteSize(project));
    EXPECT_TRUE(mw::CanPasteButtons(project));
    EXPECT_TRUE(mw::CanInsertTemplate(project));

    // Remove Button takes the button selected in the tree.
    project.Canvas.Selected = -1;
    project.Canvas.Buttons[1].Selected = false;
    project.Doc.Tree.Select(&Node(16));
    mw::mnuRemoveButton(project);
    EXPECT_EQ(project.Doc.Tree.Find("k15"), nullptr);
    EXPECT_NE(project.Doc.Tree.Find("k13"), nullptr);

    project.FileIsDirty = false;
    ASSERT_TRUE(project.CloseOpenFile());
    EXPECT_FALSE(mw::MenuOnCanvas(project));
    EXPECT_FALSE(mw::CanInsertTemplate(project));
}

} // namespace
