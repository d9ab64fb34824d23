// Menus written to template files and read back as new menus.
#include "document/ProjectFixture.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/MenuTemplates.h"

namespace {

namespace fs = std::filesystem;

class MenuTemplatesTest : public mw::test::ProjectFixture {
protected:
    void SetUp() override
    {
        std::error_code ec;
        if (!fs::copy_file(mw::test::ShortMovie(), work.Path() / "menu.avi", ec))
            GTEST_SKIP() << "ffmpeg could not make the movie";
        Open("menus.xml");
        // Two buttons of menu 12 that lead to each other.
        mw::ParceMenu(project, Tree().Item("k12"));
        first = mw::AddButtonToMenu(project, {"", 10, 10, 100, 30}, "");
        second = mw::AddButtonToMenu(project, {"", 10, 50, 100, 30}, "");
        mw::UpdatePropertyInNode(Tree(), Tree().Item("k" + first), "downAction", second, true);
        mw::UpdatePropertyInNode(Tree(), Tree().Item("k" + second), "upAction", first, true);
        templateFile = (work.Path() / "main.xml").string();
        ASSERT_TRUE(mw::mnuExportToTemplate(project, "12", templateFile));
        project.Undo.Clear();
        prompt.Log.clear();
    }
    mw::DocTree& Tree() { return project.Doc.Tree; }
    mw::DocNode& German() { return Tree().Item("k30"); }

    std::string first, second, templateFile;
};

TEST_F(MenuTemplatesTest, AMissingOrDamagedTemplateIsSaidAndChangesNothing)
{
    const std::vector<std::pair<const char*, std::string>> cases = {
        {"missing", ""},
        {"no XML", "<DivXMediaMenu objectID=\"1\""},
        {"no menu", "<Title objectID=\"5\"/>"},
        {"no name", "<DivXMediaMenu objectID=\"1\" startFrame=\"0\" endFrame=\"5\" backgroundVideoID=\"" +
                        (work.Path() / "menu.avi").string() + "\" menuType=\"other\"/>"},
        {"video gone", "<DivXMediaMenu objectID=\"1\" startFrame=\"0\" endFrame=\"5\" backgroundVideoID=\"" +
                           (work.Path() / "gone.avi").string() + "\" menuType=\"other\" menuName=\"\"/>"},
        {"button without rectangle",
         "<DivXMediaMenu objectID=\"1\" startFrame=\"0\" endFrame=\"5\" backgroundVideoID=\"" +
             (work.Path() / "menu.avi").string() + "\" menuType=\"other\" menuName=\"\"><ButtonMenu objectID=\"2\">"
             "<MenuRectangle objectID=\"3\" left=\"1\" top=\"1\" width=\"5\"/></ButtonMenu></DivXMediaMenu>"},
    };
    for (const auto& [name, xml] : cases) {
        SCOPED_TRACE(name);
        const std::string file = xml.empty() ? (work.Path() / "none.xml").string() : work.Write("bad.xml", xml).string();
        const mw::test::ProjectState before = State();
        prompt.Log.clear();
        EXPECT_EQ(mw::LoadXmlTemplate(project, file, German()), "");
        EXPECT_EQ(State(), before);
        ASSERT_EQ(prompt.Texts().size(), 1u);
        const std::string said = prompt.Texts().front();
        const char* expected = std::string(name) == "missing" ? "Cannot open the file"
                               : std::string(name) == "no XML" ? "Error occured when parsing the XML file"
                                                               : "The file ";
        EXPECT_TRUE(said.starts_with(expected)) << said;
    }
}

TEST_F(MenuTemplatesTest, AnInsertionIsOneUndoStepAndItsButtonsLeadToEachOther)
{
    const std::string before = Xml();
    const std::string menu = mw::LoadXmlTemplate(project, templateFile, German());
    ASSERT_FALSE(menu.empty());
    EXPECT_TRUE(prompt.Log.empty());
    EXPECT_EQ(project.Undo.Count(), 1u);
    EXPECT_EQ(project.Canvas.CurrentMenuID, menu);
    EXPECT_EQ(mw::GetPropertyInNode(German(), "startingmenuid"), menu);

    // The copy's buttons are new and name each other, not the template's.
    ASSERT_EQ(project.Canvas.Buttons.size(), 2u);
    const std::string copyFirst = project.Canvas.Buttons[0].Label.Tag;
    const std::string copySecond = project.Canvas.Buttons[1].Label.Tag;
    EXPECT_NE(copyFirst, first);
    EXPECT_EQ(mw::GetPropertyInNode(Tree().Item("k" + copyFirst), "downAction"), copySecond);
    EXPECT_EQ(mw::GetPropertyInNode(Tree().Item("k" + copySecond), "upAction"), copyFirst);
    EXPECT_EQ(mw::GetPropertyInNode(Tree().Item("k" + menu), "startingMenuItemID"), copyFirst);

    // A button command on the copy is a step of its own; each undo brings back what stood before.
    const std::string inserted = Xml();
    mw::DeleteButton(project, 0);
    project.UndoDo();
    EXPECT_EQ(Xml(), inserted);
    project.UndoDo();
    EXPECT_EQ(Xml(), before);
    EXPECT_EQ(project.Canvas.CurrentMenuID, "12"); // the menu that was on the canvas
    EXPECT_TRUE(prompt.Log.empty());
}

} // namespace
