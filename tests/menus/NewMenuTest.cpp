#include "document/ProjectFixture.h"

#include "core/settings/clsIniFile.h"
#include "document/TreeQueries.h"
#include "menus/AddNewMenu.h"
#include "menus/LanguageCommands.h"
#include "menus/LanguageList.h"
#include "menus/MenuCommands.h"
#include "menus/MenuForms.h"

namespace {

using Texts = std::vector<std::string>;

Texts Rows(const mw::ComboList& combo)
{
    Texts rows;
    for (const auto& item : combo.Items)
        rows.push_back(item.Text);
    return rows;
}

// kMenuProject with the movie of the tests as the background of its menu 12.
class NewMenuTest : public mw::test::ProjectFixture {
protected:
    void SetUp() override
    {
        if (mw::test::ShortMovie().empty())
            GTEST_SKIP() << "ffmpeg could not make the movie";
        std::filesystem::copy_file(mw::test::ShortMovie(), work.Path() / "menu.avi");
        Open("menus.xml");
    }
    mw::clsIniFile Settings() { return mw::clsIniFile((home.Path() / "Menuwright.ini").string()); }
    // The form as a user fills it: a language, a movie, the frames and an exit choice.
    mw::NewMenuForm Form(const std::string& language, int exit = 1)
    {
        mw::NewMenuForm form;
        mw::LoadNewMenuForm(form, Settings());
        mw::FillLanguageCombo(form, project.Doc.Tree);
        for (std::size_t i = 0; i < form.Combo2.Items.size(); ++i) {
            if (form.Combo2.Items[i].Text == language)
                form.Combo2.ListIndex = static_cast<int>(i);
        }
        mw::Combo2_Click(form, project.Doc.Tree);
        mw::LoadMovieForMenu(project, form, (work.Path() / "menu.avi").string());
        form.Combo3.ListIndex = exit;
        return form;
    }
    std::string Row(const std::string& id, const char* name)
    {
        return mw::GetPropertyInNode(project.Doc.Tree.Item("k" + id), name);
    }
};

TEST_F(NewMenuTest, TheFormOpensWithItsDefaultsAndKeepsTheUsersFps)
{
    mw::NewMenuForm form;
    mw::clsIniFile ini = Settings();
    ini.PutString("pic2aviFPS1", "12,5");
    mw::LoadNewMenuForm(form, ini);
    EXPECT_EQ(Rows(form.cmbfps), (Texts{"23.976", "25", "29.97", "12,5"}));
    EXPECT_EQ(form.cmbfpsText, "12.5");
    EXPECT_EQ(mw::ComboText(form.Combo1), "other");
    EXPECT_EQ(mw::ComboText(form.Combo3), "Play this menu again");
    EXPECT_EQ(mw::Combo3ToolTip(form), "Use this if the menu will have buttons");

    for (auto [typed, added] : {std::pair{"50", false}, {"0.5", false}, {"25", false}, {"x", false}, {"49.9", true}}) {
        form.cmbfpsText = typed;
        EXPECT_EQ(mw::cmbfps_Enter(form, ini), added) << typed;
    }
    EXPECT_EQ(ini.GetString("pic2aviFPS2", ""), "49.9");
    EXPECT_EQ(form.cmbfps.Items.size(), 5u);
}

TEST_F(NewMenuTest, LanguagesAndExitChoicesFollowTheTree)
{
    mw::DocTree& tree = project.Doc.Tree;
    mw::NewMenuForm form;
    tree.Select(tree.Find("k30"));
    mw::FillLanguageCombo(form, tree);
    EXPECT_EQ(Rows(form.Combo2), (Texts{"en", "de"}));
    EXPECT_EQ(mw::ComboText(form.Combo2), "de");
    tree.Select(tree.Item("k12").Child(0)); // a row of menu 12
    mw::FillLanguageCombo(form, tree);
    EXPECT_EQ(mw::ComboText(form.Combo2), "en");
    form.lblVideo = "<Menu 12>";
    form.cmdOKEnabled = true;
    mw::Combo2_Click(form, tree);
    EXPECT_EQ(Rows(form.Combo3), (Texts{"<create after>", "Play this menu again", "to Menu Main 12"}));
    EXPECT_EQ(form.lblVideo, "");
    EXPECT_FALSE(form.cmdOKEnabled);

    mw::SelectMenuForm select;
    form.Combo2.ListIndex = 1; // de has no menus
    EXPECT_FALSE(mw::LoadMenusToSelect(project, form, select));
    EXPECT_EQ(prompt.Texts(), Texts{"No menus inside this Laguage menu"});

    tree.Remove(tree.Item("k9"));
    tree.Remove(tree.Item("k30"));
    mw::FillLanguageCombo(form, tree);
    EXPECT_EQ(Rows(form.Combo2), Texts{"<new>"});
}

TEST_F(NewMenuTest, AMenuFromAMovieThenOneSharingItsVideo)
{
    mw::NewMenuForm form = Form("de");
    EXPECT_EQ(form.txtStartFrame, "0");
    EXPECT_EQ(form.txtEndFrame, "50");
    form.txtMenuName = "Intro";
    form.Combo1.ListIndex = 4;
    const long next = project.Doc.NextObjectID;
    const std::string first = mw::AddNewMenu(project, form, false);
    EXPECT_EQ(first, std::to_string(next));
    const std::string source = std::to_string(next + 1), video = std::to_string(next + 2),
                      audio = std::to_string(next + 3), action = std::to_string(next + 4);
    EXPECT_EQ(Row("30", "startingMenuID"), first); // the first menu of its language
    EXPECT_EQ(project.Doc.Tree.Item("k" + first).Previous()->Text, " -> Menu Intro (title)");
    EXPECT_EQ(Row(first, "backgroundVideoID"), video);
    EXPECT_EQ(Row(first, "backgroundAudioID"), audio);
    EXPECT_EQ(Row(first, "exitAction"), action);
    EXPECT_EQ(Row(video, "mediaSourceID"), source);
    EXPECT_EQ(Row(video, "trackID"), "00dc");
    EXPECT_EQ(Row(audio, "trackID"), "01wb");
    EXPECT_EQ(Row(source, "location"), (work.Path() / "menu.avi").string());
    EXPECT_EQ(project.Doc.Tree.Item("k" + video).Tag, "<Menuwright Buttons='0' menuID='" + first + "'/>");
    EXPECT_EQ(project.Doc.Tree.Item("k" + first).Tag,
              "<Menuwright Color1='255' Color2='65535' Color3='16777215' frame='0'/>");
    EXPECT_EQ(mw::GetPropertyInNode(*project.Doc.Tree.Item("k" + action).Child(1), "menuID"), first);
    ASSERT_NE(project.Doc.MenuTracks.Find(audio), nullptr);
    EXPECT_EQ(project.Doc.MenuTracks.Find(audio)->Text, audio + "|" + source + "(menu.avi)-video 01wb");

    // From menu, with "<create after>": a track of its own on the same source, no exit action.
    form = Form("de", 0);
    mw::SelectMenuForm select;
    ASSERT_TRUE(mw::LoadMenusToSelect(project, form, select));
    EXPECT_EQ(Rows(select.List), Texts{"to Menu Intro " + first});
    mw::AcceptSelectedMenu(project, form, select);
    EXPECT_EQ(form.lblVideo, "<Menu " + first + ">");
    form.txtStartFrame = "20";
    ASSERT_TRUE(mw::cmdOK_Click(project, form));
    const std::string second = mw::AddNewMenu(project, form, false);
    const std::string secondVideo = Row(second, "backgroundVideoID");
    EXPECT_EQ(Row(secondVideo, "mediaSourceID"), source);
    EXPECT_EQ(Row(secondVideo, "startFrame"), "20");
    EXPECT_EQ(Row(second, "exitAction"), "");
    EXPECT_EQ(Row("30", "startingMenuID"), first);
    EXPECT_EQ(project.Doc.NextObjectID, next + 9); // menu, video and audio track
}

TEST_F(NewMenuTest, NewUsesTheDefaultLanguageAndBadFramesAreRefused)
{
    mw::NewMenuForm form = Form("en");
    form.Combo2.Items = {{"<new>", 0}};
    form.Combo2.ListIndex = 0;
    const std::string id = mw::AddNewMenu(project, form, false);
    EXPECT_EQ(project.Doc.Tree.Item("k" + id).Parent(), &project.Doc.Tree.Item("k9"));
    EXPECT_EQ(Row("9", "startingMenuID"), "12"); // not the first menu

    form.txtStartFrame = "51";
    form.Accepted = false;
    EXPECT_FALSE(mw::cmdOK_Click(project, form));
    EXPECT_FALSE(form.Accepted);
    EXPECT_EQ(prompt.Texts(), Texts{"Error in frame ranges"});

    forms.NewMenu.push_back([](mw::NewMenuForm&) { return false; });
    const std::string before = Xml();
    EXPECT_EQ(mw::AddNewMenu(project, form, true), "");
    EXPECT_EQ(Xml(), before);
    // Shown, the dialog lists the project's languages again; accepted, it makes the menu.
    form.txtStartFrame = "0";
    project.Doc.Tree.Select(project.Doc.Tree.Find("k30"));
    const std::string shown = mw::AddNewMenu(project, form, true);
    EXPECT_EQ(project.Doc.Tree.Item("k" + shown).Parent(), &project.Doc.Tree.Item("k30"));
}

TEST_F(NewMenuTest, LanguageSetsAreAddedOnceAndRemovedWithTheirMenus)
{
    EXPECT_EQ(mw::kLanguageRows.size(), 136u);
    EXPECT_EQ(mw::kLanguageRows.front(), "ab ABKHAZIAN");
    EXPECT_EQ(mw::kLanguageRows[13], "bn BENGALI,BANGLA");
    EXPECT_EQ(mw::kLanguageRows.back(), "zu ZULU");
    mw::NewLangForm form;
    mw::LoadNewLangForm(form, "fr");
    EXPECT_EQ(mw::ComboText(form.Combo1), "fr FRENCH");
    ASSERT_TRUE(mw::AddLanguage(project, form));
    const mw::DocNode* added = mw::IsLanguageMenusThere(project.Doc.Tree, "fr");
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added, project.Doc.Tree.Root()->LastChild());
    EXPECT_EQ(mw::GetPropertyInNode(*added, "startingMenuID"), "none");
    project.FileIsDirty = false;
    EXPECT_FALSE(mw::AddLanguage(project, form));
    EXPECT_FALSE(project.FileIsDirty);
    EXPECT_EQ(prompt.Texts(), Texts{"This language exist"});

    prompt.Log.clear();
    mw::DocTree& tree = project.Doc.Tree;
    tree.Select(tree.Find("k6"));
    mw::mnuRemoveLang(project);
    EXPECT_EQ(prompt.Texts(), Texts{"Please select a Language Menu node"});
    prompt.Log.clear();
    tree.Select(tree.Item("k12").Child(0));
    prompt.Answers.push_back(mw::PromptAnswer::No);
    mw::mnuRemoveLang(project);
    EXPECT_NE(tree.Find("k9"), nullptr);
    mw::mnuRemoveLang(project);
    EXPECT_EQ(prompt.Texts(), (Texts{"Are you sure you want to delete the Language Menu?",
                                     "Are you sure you want to delete the Language Menu?"}));
    EXPECT_EQ(tree.Find("k9"), nullptr);
    EXPECT_EQ(tree.Find("k22"), nullptr); // the menu's track
    EXPECT_EQ(tree.Find("k21"), nullptr); // and its source
}

} // namespace
