#include "document/CheckForErrors.h"

#include "TreeTestKit.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using mw::test::Element;
using mw::test::RowOf;
using Texts = std::vector<std::string>;

const char* kNoErrors = "Checking complete with no errors";
const char* kErrors = "Checking complete with errors";

// A small valid project: one title whose file stands beside the project, one menu with one
// button, its overlay track and background video under MenuTracks.
class CheckForErrorsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        scratch_.Write("movie.avi", "RIFF");
        scratch_.Write("menus/menu.avi", "RIFF");
        doc_.ProjectFile = (dir_ / "project.xml").string();
        Build();
    }

    // Builds the tree afresh, so that each case of a table starts from the same project.
    void Build()
    {
        auto& t = doc_.Tree;
        t.Clear();
        root_ = &Element(t, nullptr, 1, "DivXMediaManager", {"menuVersion = 1"});
        auto& media = Element(t, root_, 2, "Media");
        title_ = &Element(t, &media, 3, "Title", {"translationLookupID = 20", "defaultAudioTrack = none"});
        titleSource_ = &Element(t, title_, 4, "MediaSource", {"location = movie.avi"});
        Element(t, title_, 5, "MediaTrack", {"mediaSourceID = 4", "trackID = 00dc", "type = video"});
        auto& menuTracks = Element(t, &media, 6, "MenuTracks");
        menuSource_ = &Element(t, &menuTracks, 7, "MediaSource", {"location = " + (dir_ / "menus/menu.avi").string()});
        videoTrack_ = &Element(t, &menuTracks, 8, "MediaTrack", {"mediaSourceID = 7", "sourceTrackID = none"});
        videoTrack_->Tag = "<Menuwright Buttons='1' menuID='11'/>";
        overlayTrack_ = &Element(t, &menuTracks, 9, "MediaTrack", {"mediaSourceID = 7", "trackID = 01sb"});
        overlayTrack_->Tag = "<Menuwright rectID='12'/>";
        auto& lookup = Element(t, &Element(t, root_, 19, "TranslationTable"), 20, "TranslationLookup");
        Element(t, &lookup, 21, "Translation", {"languageCode = en", "value = Main Feature"});
        language_ = &Element(t, root_, 10, "LanguageMenus", {"startingMenuID = 11", "rootMenuID = 11"});
        menu_ = &Element(t, language_, 11, "DivXMediaMenu",
                         {"backgroundVideoID = 8", "backgroundAudioID = none", "startingMenuItemID = 12",
                          "exitAction = 14"});
        menu_->Tag = "<Menuwright Color1='1' frame='0'/>";
        button_ = &Element(t, menu_, 12, "ButtonMenu", {"overlayID = 9", "upAction = 12", "selectAction = 13"});
        rectangle_ = &Element(t, button_, 15, "MenuRectangle", {"left = 0", "top = 0"});
        Element(t, &Element(t, button_, 13, "Action"), 16, "PlayAction", {"titleID = 3", "mediaObjectID = 3"});
        Element(t, menu_, 14, "Action");
    }

    Texts Check(bool showMessage = true)
    {
        prompt_.Log.clear();
        ok_ = mw::CheckForErrors(doc_, lang_, prompt_, showMessage);
        return prompt_.Texts();
    }

    mw::test::ScratchFolder scratch_;
    fs::path dir_ = scratch_.Path();
    mw::Document doc_;
    mw::LangDoc lang_;
    mw::ScriptedPrompt prompt_;
    bool ok_ = false;
    mw::DocNode *root_, *title_, *titleSource_, *menuSource_, *videoTrack_, *overlayTrack_;
    mw::DocNode *language_, *menu_, *button_, *rectangle_;
};

TEST_F(CheckForErrorsTest, ValidProjectPassesAndIsLeftAsItWas)
{
    const auto snapshot = [this] {
        std::vector<std::string> lines;
        for (const mw::DocNode* n : doc_.Tree.Flat())
            lines.push_back(n->Key() + "|" + n->Text + "|" + n->Tag + (n->Expanded ? "|+" : ""));
        return lines;
    };
    const auto before = snapshot();
    EXPECT_EQ(Check(), Texts{kNoErrors});
    EXPECT_TRUE(ok_);
    EXPECT_TRUE(Check(false).empty());
    EXPECT_EQ(snapshot(), before);

    doc_.Tree.Clear();
    EXPECT_TRUE(Check().empty());
    EXPECT_TRUE(ok_);
}

TEST_F(CheckForErrorsTest, EachFaultHasItsOwnBoxInTheOrderOfTheWalkAndUnfoldsItsElement)
{
    RowOf(*button_, "overlayID")->Text = "overlayID = 0040";
    RowOf(*button_, "upAction")->Text = "upAction = 41";
    RowOf(*menu_, "exitAction")->Text = "exitAction = none";
    videoTrack_->Tag = "<Menuwright Buttons='1' menuID='98'/>";
    overlayTrack_->Tag = "<Menuwright rectID='99'/>";
    menu_->Tag = "<Menuwright menuID='none'/>";
    button_->Tag = "menuID = 97, no XML";
    Texts faults = {"Error while checking at ID 98 in extra info used by MediaTrack",
                    "Error while checking at ID 99 in extra info used by MediaTrack",
                    "Error while checking at node ButtonMenu (12). ID not found 40",
                    "Error while checking at node ButtonMenu (12). ID not found 41",
                    "Missing exitAction in menu 11"}; // the menu checks follow the walk
    EXPECT_EQ(Check(false), faults);
    EXPECT_FALSE(ok_);
    for (const mw::DocNode* n : {button_, menu_, language_, root_})
        EXPECT_TRUE(n->Expanded) << n->Text;
    EXPECT_FALSE(rectangle_->Expanded);
    faults.push_back(kErrors);
    EXPECT_EQ(Check(), faults);
}

TEST_F(CheckForErrorsTest, MenuTargetsMustExistAndHaveTheirType)
{
    // A target of the wrong type is told but is no fault.
    struct Case {
        int Owner; // 0 language, 1 menu, 2 button
        const char* Row;
        const char* Message;
        bool Ok;
    };
    const Case cases[] = {
        {0, "startingMenuID = none", "Missing startingMenuID in Language Menu 10", false},
        {0, "startingMenuID = 12",
         "Type of startingMenuID in Language Menu 10 is not valid. Required DivXMediaMenu, current ButtonMenu", true},
        {1, "exitAction = ", "Missing exitAction in menu 11", false},
        {1, "exitAction = 15", "Type of exitAction in menu 11 is not valid. Required Action, current MenuRectangle",
         true},
        {2, "selectAction = none", "Missing selectAction in button 12", false},
        {2, "selectAction = 11",
         "Type of selectAction in button 12 is not valid. Required Action, current DivXMediaMenu", true},
    };
    for (const Case& c : cases) {
        Build();
        mw::DocNode* owner = c.Owner == 0 ? language_ : c.Owner == 1 ? menu_ : button_;
        const std::string row = c.Row;
        RowOf(*owner, row.substr(0, row.find(' ')))->Text = row;
        EXPECT_EQ(Check(), (Texts{c.Message, c.Ok ? kNoErrors : kErrors})) << c.Message;
        EXPECT_EQ(ok_, c.Ok);
    }
    Build();
    doc_.Tree.Remove(*RowOf(*language_, "startingMenuID"));
    EXPECT_EQ(Check(), (Texts{"Missing startingMenuID in Language Menu 10", kErrors}));
    EXPECT_TRUE(root_->Expanded);
}

TEST_F(CheckForErrorsTest, MediaFilesAreResolvedAgainstTheProjectFolderAndNamed)
{
    const std::string folder = dir_.string();
    const std::string title = "\nIs used as MediaSource in title Main Feature (3)";
    const std::pair<std::string, std::string> cases[] = {
        {"movie.avi", ""},
        {"menus\\menu.avi", ""},
        {folder + "/movie.avi", ""},
        {"gone.avi", "Can not find file " + folder + "/gone.avi" + title},
        {"/no/such/movie.avi", "Can not find file /no/such/movie.avi" + title},
        {"menus", "Can not find file " + folder + "/menus" + title},
        {"", "Can not find file " + folder + "/" + title},
    };
    for (const auto& [location, message] : cases) {
        RowOf(*titleSource_, "location")->Text = "location = " + location;
        const Texts expected = message.empty() ? Texts{kNoErrors} : Texts{message, kErrors};
        EXPECT_EQ(Check(), expected) << location;
    }

    RowOf(*title_, "translationLookupID")->Text = "translationLookupID = none";
    EXPECT_EQ(Check()[0], "Can not find file " + folder + "/\nIs used as MediaSource in title Title (3)");

    // A menu's source is named by the menu of its extra info.
    Build();
    RowOf(*menuSource_, "location")->Text = "location = lost.avi";
    const std::string missing = "Can not find file " + folder + "/lost.avi\nIs used as MediaSource in menu ";
    EXPECT_EQ(Check(), (Texts{missing + "???", kErrors}));
    menuSource_->Tag = "<Menuwright Buttons='1' menuID='11'/>";
    EXPECT_EQ(Check(), (Texts{missing + "11", kErrors}));
}

TEST_F(CheckForErrorsTest, TextsComeFromTheLanguageFile)
{
    ASSERT_TRUE(lang_.LoadString("<L><Form1_Module s26='Fehler bei ' s27=') fehlt ' s22='Fertig mit ' "
                                 "s24='Fehlern'/></L>"));
    RowOf(*button_, "overlayID")->Text = "overlayID = 40";
    EXPECT_EQ(Check(), (Texts{"Fehler bei ButtonMenu (12) fehlt 40", "Fertig mit Fehlern"}));
}

} // namespace
