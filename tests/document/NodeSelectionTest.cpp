#include "document/NodeSelection.h"

#include "ProjectFixture.h"

#include <string>

namespace mw::test {
namespace {

// The menu project with one button in the "en" menu.
std::string ProjectWithButton()
{
    std::string xml = kMenuProject;
    const std::string menuEnd = R"(menuName="Main"/>)";
    xml.replace(xml.find(menuEnd), menuEnd.size(),
                R"(menuName="Main">
<ButtonMenu objectID="13" selectActionID="none"/>
</DivXMediaMenu>)");
    return xml;
}

class NodeSelectionTest : public ProjectFixture {
protected:
    void SetUp() override { Open("menus.xml", ProjectWithButton()); }
    DocNode* Node(const std::string& id) { return project.Doc.Tree.ObjectNode(id); }
    DocNode* Row(const std::string& id, const std::string& name)
    {
        for (const auto& child : *Node(id)) {
            if (RowMatches(*child, name))
                return child.get();
        }
        return nullptr;
    }
};

TEST_F(NodeSelectionTest, CommandsAndMenuPanelFollowTheSelectedKind)
{
    struct Case {
        const char* What;
        DocNode* Clicked;
        bool Title, Lang, Menu, Button;
        std::optional<std::string> Panel;
    };
    const Case cases[] = {
        {"title", Node("6"), true, false, false, false, std::nullopt},
        {"a row of the title's source", Row("7", "location"), false, false, false, false, std::nullopt},
        {"language set", Node("9"), false, true, false, false, std::nullopt},
        {"menu", Node("12"), false, false, true, false, "Menu Main (title)"},
        {"row of the menu", Row("12", "menuName"), false, false, true, false, "Menu Main (title)"},
        {"button", Node("13"), false, false, true, true, "Menu Main (title)"},
        {"row of the button", Row("13", "objectID"), false, false, true, true, "Menu Main (title)"},
        {"nothing", nullptr, false, false, false, false, std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.What);
        project.Commands = CommandStates{.mnuRefreshTitle = true, .mnuRemoveTitle = true, .mnuRemoveButton = true,
                                         .mnuRemoveLang = true, .mnuRemoveMenu = true};
        EXPECT_EQ(TreeView1_NodeClick(project, c.Clicked), c.Panel);
        EXPECT_EQ(project.Doc.Tree.Selected(), c.Clicked);
        EXPECT_EQ(project.Commands.mnuRemoveTitle, c.Title);
        EXPECT_EQ(project.Commands.mnuRefreshTitle, c.Title);
        EXPECT_EQ(project.Commands.mnuRemoveLang, c.Lang);
        EXPECT_EQ(project.Commands.mnuRemoveMenu, c.Menu);
        EXPECT_EQ(project.Commands.mnuRemoveButton, c.Button);
    }
}

} // namespace
} // namespace mw::test
