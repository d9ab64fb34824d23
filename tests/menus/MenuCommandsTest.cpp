#include "document/ProjectFixture.h"

#include "document/SchemaNodes.h"
#include "menus/MenuCommands.h"
#include "document/TreeQueries.h"

namespace {

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

} // namespace
