#include "document/ProjectFixture.h"

#include "document/SchemaNodes.h"
#include "menus/Buttons.h"
#include "menus/CanvasCommands.h"
#include "menus/MenuCommands.h"
#include "menus/MenuTemplates.h"
#include "document/TreeQueries.h"

namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

// Menus A and B of "en" and C of "DE" share the video of source 21; A also has background audio
// and a button with an overlay of its own source.
const char* kMenus = R"(<DivXMediaManager objectID="1" defaultMenuLanguage="en">
<TranslationTable objectID="3"/>
<Media objectID="2">
<MenuTracks objectID="20">
<MediaSource objectID="21" mediaType="menuAvi" location="shared.avi"/>
<MediaTrack objectID="22" mediaSourceID="21" trackID="00dc" type="video"/>
<MediaTrack objectID="23" mediaSourceID="21" trackID="01wb" type="audio"/>
<MediaSource objectID="24" mediaType="menuAvi" location="overlay.avi"/>
<MediaTrack objectID="25" mediaSourceID="24" trackID="00dc" type="video"/>
<MediaTrack objectID="26" mediaSourceID="21" trackID="00dc" type="video"/>
<MediaTrack objectID="27" mediaSourceID="21" trackID="00dc" type="video"/>
</MenuTracks>
</Media>
<LanguageMenus objectID="9" languageCode="en" startingMenuID="12" rootMenuID="none">
<!-- -> Menu A (title) -->
<DivXMediaMenu objectID="12" backgroundVideoID="22" backgroundAudioID="23" menuType="title" menuName="A">
<ButtonMenu objectID="13" overlayID="25"/>
</DivXMediaMenu>
<!-- -> Menu B (other) -->
<DivXMediaMenu objectID="14" backgroundVideoID="26" backgroundAudioID="none" menuName="B"/>
</LanguageMenus>
<LanguageMenus objectID="30" languageCode="DE" startingMenuID="31" rootMenuID="none">
<DivXMediaMenu objectID="31" backgroundVideoID="27" backgroundAudioID="none"/>
</LanguageMenus>
</DivXMediaManager>
)";

class MenuCommandsTest : public mw::test::ProjectFixture {
protected:
    void SetUp() override { Open("menus.xml", kMenus); }
    bool Has(long id) { return project.Doc.Tree.ObjectNode(std::to_string(id)) != nullptr; }
    Texts ListedTracks()
    {
        Texts keys;
        for (const auto& entry : project.Doc.MenuTracks)
            keys.push_back(entry.Key);
        return keys;
    }
    Texts Comments(long language)
    {
        Texts texts;
        for (const auto& child : project.Doc.Tree.Item("k" + std::to_string(language))) {
            if (child->Image == "comment")
                texts.push_back(child->Text);
        }
        return texts;
    }
    std::string Starting(long language)
    {
        return mw::GetPropertyInNode(project.Doc.Tree.Item("k" + std::to_string(language)), "startingmenuid");
    }
};

TEST_F(MenuCommandsTest, LanguagesAndTheirMenus)
{
    const mw::DocTree& tree = project.Doc.Tree;
    EXPECT_EQ(mw::LoadAllMenus(tree, "en"), (Texts{"12", "14"}));
    EXPECT_EQ(mw::LoadAllMenus(tree, "de"), Texts{"31"}); // the stored code is lowered
    EXPECT_EQ(mw::LoadAllMenus(tree, "DE"), Texts{});     // the asked one is not
    EXPECT_EQ(mw::LoadAllMenus(tree, "fr"), Texts{});
    EXPECT_EQ(mw::IsLanguageMenusThere(tree, "en"), &tree.Item("k9"));
    EXPECT_EQ(mw::IsLanguageMenusThere(tree, "de"), &tree.Item("k30"));
    EXPECT_EQ(mw::IsLanguageMenusThere(tree, "fr"), nullptr);

    const mw::DocTree empty;
    EXPECT_EQ(mw::IsLanguageMenusThere(empty, "en"), nullptr);
    EXPECT_EQ(mw::LoadAllMenus(empty, "en"), Texts{});
}

TEST_F(MenuCommandsTest, DeletingMenusOfALanguageOneAfterTheOther)
{
    project.Canvas.CurrentMenuID = "12";
    mw::DeleteMenu(project, "12");

    EXPECT_FALSE(Has(12));
    EXPECT_FALSE(Has(13));
    EXPECT_EQ(Comments(9), Texts{"-> Menu B (other)"});
    EXPECT_FALSE(Has(22));
    EXPECT_FALSE(Has(23));
    EXPECT_FALSE(Has(25));
    EXPECT_TRUE(Has(21)); // menu B still plays it
    EXPECT_TRUE(Has(24)); // an overlay's source is left alone
    EXPECT_EQ(ListedTracks(), (Texts{"26", "27"}));
    EXPECT_EQ(Starting(9), "14");
    EXPECT_TRUE(project.FileIsDirty);
    EXPECT_EQ(project.Canvas.CurrentMenuID, "");
    EXPECT_EQ(project.Undo.Count(), 1u);

    mw::DeleteMenu(project, "14");

    EXPECT_FALSE(Has(14));
    EXPECT_FALSE(Has(26));
    EXPECT_FALSE(Has(21)); // menu C of another language does not keep it
    EXPECT_TRUE(Has(27));
    EXPECT_EQ(Comments(9), Texts{});
    EXPECT_EQ(Starting(9), "none");
    EXPECT_EQ(Starting(30), "31");
    EXPECT_EQ(mw::LoadAllMenus(project.Doc.Tree, "en"), Texts{});
    EXPECT_TRUE(prompt.Log.empty());
}

TEST_F(MenuCommandsTest, AnUnknownMenuChangesNothingAndAnotherLeavesTheStartAlone)
{
    const std::string before = Xml();
    mw::DeleteMenu(project, "99");
    EXPECT_EQ(Xml(), before);
    EXPECT_FALSE(project.FileIsDirty);
    EXPECT_TRUE(project.Undo.Empty());

    mw::DeleteMenu(project, "14");
    EXPECT_EQ(Starting(9), "12");
    EXPECT_TRUE(Has(21));
    EXPECT_EQ(Comments(9), Texts{"-> Menu A (title)"});
}

TEST_F(MenuCommandsTest, ReferencesToOtherKindsOrToTheMenusOwnBranchRemoveOnlyTheMenu)
{
    mw::Document& doc = project.Doc;
    mw::DocTree& tree = doc.Tree;
    const std::string before = Xml();
    mw::DeleteMenu(project, "9"); // a language, not a menu
    EXPECT_EQ(Xml(), before);

    mw::UpdatePropertyInNode(tree, tree.Item("k14"), "backgroundVideoID", "9", false);
    mw::UpdatePropertyInNode(tree, tree.Item("k14"), "backgroundAudioID", "2", false);
    // A menu that stands inside the very track its background names.
    mw::DocNode& holder = mw::AddNextObjectNode(doc, tree.Item("k20"), "MediaTrack", "movielink");
    mw::DocNode& inside = mw::AddNextObjectNode(doc, holder, "DivXMediaMenu", "menu");
    const std::string holderID = mw::GetPropertyInNode(holder, "objectid");
    const std::string insideID = mw::GetPropertyInNode(inside, "objectid");
    mw::AddPropRow(tree, inside, "backgroundVideoID", holderID);

    mw::DeleteMenu(project, "14");
    mw::DeleteMenu(project, insideID);

    EXPECT_FALSE(Has(14) || Has(std::stol(insideID)));
    EXPECT_TRUE(Has(9) && Has(2) && Has(std::stol(holderID)));
}

// Menus written to template files and read back as new menus.
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
