#include "menus/Actions.h"
#include "menus/CanvasFixture.h"

namespace {

using mw::ActionRow;
using Rows = std::vector<ActionRow>;

TEST(ActionChoice, EachTypeChecksItsTargetsAndAsksAboutTheTrackKind)
{
    struct Case {
        mw::ActionChoice choice;
        std::vector<mw::PromptAnswer> answers;
        bool accepted;
        ActionRow row;
        std::vector<std::string> texts;
    };
    const std::string notSubtitle = "Seems that the track you selected is not a subtitle track. Ok to continue, "
                                    "No to set to <none>, Cancel to exit.";
    const std::string notAudio = "Seems that the track you selected is not an audio track. Ok to continue?";
    const Case cases[] = {
        {{"SubtitleSelectAction", "6", "", "", "", "", ""}, {}, false, {}, {"Please, select a Title and a Track"}},
        {{"SubtitleSelectAction", "6", "02sb", "Subtitle", "", "", ""}, {}, true,
         {"SubtitleSelectAction", "6", "02sb", ""}, {}},
        {{"SubtitleSelectAction", "6", "01wb", "Audio", "", "", ""}, {mw::PromptAnswer::No}, true,
         {"SubtitleSelectAction", "6", "<none>", ""}, {notSubtitle}},
        {{"SubtitleSelectAction", "6", "01wb", "Audio", "", "", ""}, {mw::PromptAnswer::Cancel}, false, {},
         {notSubtitle}},
        {{"AudioSelectAction", "6", "00dc", "Video", "", "", ""}, {mw::PromptAnswer::No}, false, {}, {notAudio}},
        {{"AudioSelectAction", "6", "00dc", "Video", "", "", ""}, {}, true, {"AudioSelectAction", "6", "00dc", ""},
         {notAudio}},
        {{"PlayAction", "6", "", "", "", "", ""}, {}, false, {}, {"Please, select a Title and a Chapter"}},
        {{"PlayFromCurrentOffsetAction", "6", "", "", "6", "", ""}, {}, true,
         {"PlayFromCurrentOffsetAction", "6", "6", ""}, {}},
        {{"MenuTransitionAction", "", "", "", "", "", ""}, {}, false, {}, {"Please, select a Menu"}},
        {{"ButtonTransitionAction", "", "", "", "", "", ""}, {}, false, {}, {"Please,  select a button"}},
        {{"ButtonTransitionAction", "", "", "", "", "", "No buttons in menu"}, {}, false, {}, {"No buttons in menu"}},
        {{"ButtonTransitionAction", "", "", "", "", "", "15"}, {}, true, {"ButtonTransitionAction", "15", "", ""}, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.choice.Type + " " + c.choice.TrackID + c.choice.ButtonID);
        mw::ScriptedPrompt prompt;
        prompt.Answers.assign(c.answers.begin(), c.answers.end());
        ActionRow row;
        EXPECT_EQ(mw::AcceptActionChoice(prompt, c.choice, row), c.accepted);
        if (c.accepted) {
            EXPECT_EQ(row, c.row);
        }
        EXPECT_EQ(prompt.Texts(), c.texts);
    }
}

class ActionsTest : public mw::test::CanvasFixture {
protected:
    Rows Select(long button)
    {
        const mw::DocNode& node = project.Doc.Tree.Item("k" + std::to_string(button));
        return mw::LoadActionRows(project.Doc.Tree, mw::GetPropertyInNode(node, "selectAction"));
    }
};

TEST_F(ActionsTest, AListIsWrittenInOrderKeepingIdentifiersAndClearedEmpty)
{
    mw::Label1_Click(project, 0);
    const long next = project.Doc.NextObjectID;
    const Rows rows = {{"MenuTransitionAction", "12", "", ""}, {"ButtonTransitionAction", "15", "", ""},
                       {"MenuTransitionAction", "12", "", ""}};
    mw::ApplyActionList(project, "selectAction", true, rows);
    const std::string list = std::to_string(next);
    EXPECT_EQ(mw::GetPropertyInNode(project.Doc.Tree.Item("k13"), "selectAction"), list);
    Rows read = Select(13);
    ASSERT_EQ(read.size(), 3u); // the same type twice stays twice
    EXPECT_EQ(read[1], (ActionRow{"ButtonTransitionAction", "15", "", std::to_string(next + 2)}));

    // Edited: the kept row keeps its identifier and moves to the front; the others are new.
    Rows edited = {read[1], {"PlayAction", "6", "7", ""}};
    mw::ApplyActionList(project, "selectAction", true, edited);
    read = Select(13);
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].Tag, std::to_string(next + 2));
    EXPECT_EQ(read[1], (ActionRow{"PlayAction", "6", "7", std::to_string(next + 4)}));
    EXPECT_EQ(project.Doc.Tree.Find("k" + std::to_string(next + 1)), nullptr);

    mw::ApplyActionList(project, "selectAction", true, {});
    EXPECT_EQ(mw::GetPropertyInNode(project.Doc.Tree.Item("k13"), "selectAction"), "");
    EXPECT_NE(project.Doc.Tree.Find("k" + list), nullptr); // the old list stays in the tree
}

TEST_F(ActionsTest, MenuListsButtonChoicesAndTheDoubleClick)
{
    mw::ApplyActionList(project, "exitAction", false, {{"MenuTransitionAction", "12", "", ""}});
    mw::ApplyActionList(project, "enterAction", false, {{"AudioSelectAction", "6", "01wb", ""}});
    const mw::MenuActionLists lists = mw::LoadActionsFromMenu(project);
    EXPECT_EQ(lists.Enter, std::vector<std::string>{"AudioSelectAction"});
    EXPECT_EQ(lists.Exit, std::vector<std::string>{"MenuTransitionAction"});

    mw::ActionFromButtonToMenu(project, "15", "12");
    EXPECT_EQ(Select(15), (Rows{{"MenuTransitionAction", "12", "", Select(15).front().Tag}}));
    const std::vector<std::string> offered = mw::ButtonChoices(project.Doc.Tree, {}, "12");
    EXPECT_EQ(offered, (std::vector<std::string>{"13 ", "15 MenuTransitionAction", "17 "}));
    EXPECT_EQ(mw::ButtonChoices(project.Doc.Tree, {{"MenuTransitionAction", "9", "", ""}}, "12"),
              std::vector<std::string>{"No buttons in menu"});

    for (int setting : {0, 1}) {
        project.Canvas.Selected = -1;
        program.Values.DoubleClickInButtonsAction = setting;
        mw::Label1_DblClick(project, 1);
        EXPECT_EQ(project.Doc.Tree.Selected() == &project.Doc.Tree.Item("k12"), setting == 1);
    }
    program.Values.DoubleClickInButtonsAction = 2;
    mw::Label1_DblClick(project, 2); // the dialog, accepted as it was filled
    EXPECT_EQ(project.Canvas.Selected, 2);
}

} // namespace
