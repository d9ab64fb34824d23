#include "i18n/LanguageEditor.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "core/Version.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace fs = std::filesystem;
using mw::LangDoc;
using mw::LangItem;
using mw::LanguageEditor;
using mw::PromptAnswer;
using mw::ScriptedPrompt;
using mw::test::ScratchFolder;

namespace {

constexpr const char* kEnglish = R"(<Menuwright><Private Creator="Ann" ProgramVersion="1.2.3"/>
<Form1_Design Form1="Main" mnuOpen="Open..." mnuSave="Save"/>
<frmAbout_Design frmAbout="About"/></Menuwright>)";

std::string Read(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

LangItem Row(const char* section, const char* attribute) { return {{section}, attribute}; }

struct Editor {
    ScratchFolder folder;
    LangDoc lang;
    ScriptedPrompt prompt;
    LanguageEditor editor{folder.Path(), lang, prompt};

    explicit Editor(const std::string& german = {})
    {
        folder.Write("English.Menuwright.exe.xml", kEnglish);
        if (!german.empty())
            folder.Write("German.Menuwright.exe.xml", german);
        EXPECT_TRUE(editor.ChooseOriginal("English.Menuwright.exe.xml"));
    }

    // Walks Tree1 row by row from the first row, as Enter after Enter does.
    void WalkAllRows()
    {
        std::optional<LangItem> next = Row("Private", "Creator");
        while (next)
            next = editor.Update(editor.SelectOriginal(*next).Text2);
    }
};

TEST(LanguageEditor, NewFileWalkedWithAutoCreateGetsEveryItemWithTheOriginalText)
{
    Editor e;
    EXPECT_EQ(e.editor.OriginalVersion(), "1.2.3");
    e.prompt.Inputs = {"German", "English", "Ger.man"};
    ASSERT_TRUE(e.editor.ChooseNew(LanguageEditor::kCreateNew));
    EXPECT_EQ(e.editor.NewFile(), "German.Menuwright.exe.xml");
    EXPECT_EQ(e.editor.VersionEdit(), LanguageEditor::RunningVersion());
    EXPECT_EQ(e.editor.NewFiles(), (std::vector<std::string>{"English.Menuwright.exe.xml", "German.Menuwright.exe.xml",
                                                             LanguageEditor::kCreateNew}));
    // At first the new file holds Private only.
    ASSERT_EQ(e.editor.NewTree()->Children.size(), 1u);
    EXPECT_EQ(e.editor.NewTree()->Children[0].Text, "Private");
    // A name that is taken, or one that would not make a file of its own, is refused.
    EXPECT_FALSE(e.editor.ChooseNew(LanguageEditor::kCreateNew));
    EXPECT_FALSE(e.editor.ChooseNew(LanguageEditor::kCreateNew));
    EXPECT_EQ(e.prompt.Texts(), (std::vector<std::string>{"This name exist, just select it from list",
                                                          "A language name can not hold the characters . / \\"}));
    EXPECT_EQ(e.editor.NewFile(), "German.Menuwright.exe.xml");

    e.prompt.Log.clear();
    e.editor.AutoCreate = true;
    e.WalkAllRows();
    EXPECT_TRUE(e.prompt.Log.empty());
    e.editor.SetCreator("Bernd");
    ASSERT_TRUE(e.editor.Save());
    EXPECT_FALSE(e.editor.Modified());

    LangDoc saved;
    ASSERT_TRUE(saved.LoadFile(e.folder.Path() / "German.Menuwright.exe.xml"));
    EXPECT_EQ(saved.DesignText("Form1", "mnuOpen"), "Open...");
    EXPECT_EQ(saved.DesignText("Form1", "Form1"), "Main");
    EXPECT_EQ(saved.DesignText("frmAbout", "frmAbout"), "About");
    EXPECT_EQ(saved.PrivateAttribute("Creator"), "Bernd");
    EXPECT_EQ(saved.PrivateAttribute("ProgramVersion"), LanguageEditor::RunningVersion());
}

TEST(LanguageEditor, WithoutAutoCreateEachMissingSectionAsksOnceAndNewValuesTakeTheOriginal)
{
    Editor e(R"(<Lang><Private Creator="Bernd"/><Form1_Design mnuOpen="Oeffnen"/></Lang>)");
    ASSERT_TRUE(e.editor.ChooseNew("German.Menuwright.exe.xml"));
    EXPECT_EQ(e.editor.Creator(), "Bernd");
    EXPECT_EQ(e.editor.VersionEdit(), LanguageEditor::kNoVersion);

    // Form1 exists; mnuSave is missing in it. frmAbout is missing and declined, and then left alone.
    e.prompt.Answers = {PromptAnswer::Yes, PromptAnswer::No};
    const LanguageEditor::Shown open = e.editor.SelectOriginal(Row("Form1_Design", "mnuOpen"));
    EXPECT_EQ(open.Text1, "Open...");
    EXPECT_EQ(open.Text2, "Oeffnen");
    const LanguageEditor::Shown save = e.editor.SelectOriginal(Row("Form1_Design", "mnuSave"));
    EXPECT_TRUE(save.NewTreeChanged);
    EXPECT_EQ(save.Text2, "Save");
    EXPECT_EQ(save.New, Row("Form1_Design", "mnuSave"));
    for (int i = 0; i < 2; ++i) {
        const LanguageEditor::Shown about = e.editor.SelectOriginal(Row("frmAbout_Design", "frmAbout"));
        EXPECT_FALSE(about.New);
        EXPECT_EQ(about.Text2, "");
    }
    e.editor.SelectOriginal({{"frmAbout_Design"}, std::nullopt});
    EXPECT_EQ(e.prompt.Texts(), (std::vector<std::string>{"Value/Node \"mnuSave\" not found. Create it?",
                                                          "Section/Node frmAbout_Design not found. Create it?"}));

    // Ticking auto-create makes what was declined.
    e.editor.AutoCreate = true;
    EXPECT_EQ(e.editor.SelectOriginal(Row("frmAbout_Design", "frmAbout")).Text2, "About");
}

TEST(LanguageEditor, UpdateWritesTheRowAndMovesOnThroughTheSections)
{
    Editor e(R"(<Lang><Private/><Form1_Design mnuOpen="Oeffnen" mnuSave="Sichern" mnuGone="x"/>
<frmAbout_Design frmAbout="Ueber"/></Lang>)");
    ASSERT_TRUE(e.editor.ChooseNew("German.Menuwright.exe.xml"));

    // Nothing is selected in the new file yet.
    EXPECT_FALSE(e.editor.Update("x"));
    e.editor.SelectOriginal(Row("Form1_Design", "mnuOpen"));
    EXPECT_EQ(e.editor.Update("Auf"), Row("Form1_Design", "mnuSave"));
    e.editor.SelectOriginal(Row("Form1_Design", "mnuSave"));
    // An empty Text2 empties the value; the next row is the first of the next section.
    EXPECT_EQ(e.editor.Update(""), Row("frmAbout_Design", "frmAbout"));
    e.editor.SelectOriginal(Row("frmAbout_Design", "frmAbout"));
    EXPECT_EQ(e.editor.Update("Info"), std::nullopt);
    const auto tree = e.editor.NewTree();
    EXPECT_EQ(tree->Children[1].Children[0].Text, "mnuOpen = Auf");
    EXPECT_EQ(tree->Children[1].Children[1].Text, "mnuSave = ");

    // A section is no row to update.
    e.editor.SelectOriginal({{"Form1_Design"}, std::nullopt});
    EXPECT_FALSE(e.editor.Update("y"));
    EXPECT_EQ(e.editor.NewTree()->Children[1].Text, "Form1_Design");

    // From the new file back to the original.
    const LanguageEditor::Shown back = e.editor.SelectNew(Row("Form1_Design", "mnuSave"));
    EXPECT_EQ(back.Original, Row("Form1_Design", "mnuSave"));
    EXPECT_EQ(back.Text1, "Save");
    EXPECT_TRUE(e.prompt.Log.empty());
    const LanguageEditor::Shown gone = e.editor.SelectNew(Row("Form1_Design", "mnuGone"));
    EXPECT_FALSE(gone.Original);
    EXPECT_EQ(gone.Text2, "x");
    EXPECT_EQ(e.prompt.Texts(), std::vector<std::string>{"Original item not found"});
}

TEST(LanguageEditor, RefusesWhatWouldLoseOrMixWorkAndKeepsFilesOnFailure)
{
    Editor e(R"(<Lang><Private/><Form1_Design mnuOpen="Oeffnen"/></Lang>)");
    const fs::path german = e.folder.Path() / "German.Menuwright.exe.xml";
    const std::string before = Read(german);
    e.folder.Write("Broken.Menuwright.exe.xml", "<Lang><unclosed>");

    EXPECT_FALSE(e.editor.Save());
    EXPECT_FALSE(e.editor.ChooseNew("English.Menuwright.exe.xml"));
    EXPECT_FALSE(e.editor.ChooseNew("Broken.Menuwright.exe.xml"));
    EXPECT_FALSE(e.editor.ChooseOriginal("Broken.Menuwright.exe.xml"));
    EXPECT_EQ(e.editor.OriginalFile(), "English.Menuwright.exe.xml");
    EXPECT_FALSE(e.editor.NewTree());
    const std::string broken = "Error loading xml file " + (e.folder.Path() / "Broken.Menuwright.exe.xml").string();
    EXPECT_EQ(e.prompt.Texts(), (std::vector<std::string>{"Select or create a new language file first",
                                                          "Can not load the same file as the original one",
                                                          broken, broken}));

    // A save that cannot replace the file leaves it as it was, and the work unsaved.
    ASSERT_TRUE(e.editor.ChooseNew("German.Menuwright.exe.xml"));
    e.editor.SelectOriginal(Row("Form1_Design", "mnuOpen"));
    e.editor.Update("Auf");
    fs::permissions(german, fs::perms::owner_read);
    e.prompt.Log.clear();
    e.prompt.Answers = {PromptAnswer::Yes};
    EXPECT_FALSE(e.editor.AskToSave());
    EXPECT_EQ(Read(german), before);
    EXPECT_TRUE(e.editor.Modified());
    ASSERT_EQ(e.prompt.Texts().size(), 2u);
    EXPECT_EQ(e.prompt.Texts()[0], "Language file German.Menuwright.exe.xml is not saved. Save it now?");
    // The unsaved work is not dropped for another new file either.
    e.prompt.Answers = {PromptAnswer::Yes};
    EXPECT_FALSE(e.editor.ChooseNew("Broken.Menuwright.exe.xml"));
    EXPECT_EQ(e.editor.NewFile(), "German.Menuwright.exe.xml");

    fs::permissions(german, fs::perms::owner_read | fs::perms::owner_write);
    e.prompt.Answers = {PromptAnswer::Yes};
    EXPECT_TRUE(e.editor.AskToSave());
    LangDoc saved;
    ASSERT_TRUE(saved.LoadFile(german));
    EXPECT_EQ(saved.DesignText("Form1", "mnuOpen"), "Auf");
    EXPECT_EQ(saved.PrivateAttribute("ProgramVersion"), LanguageEditor::kNoVersion);
}

TEST(LanguageEditor, CreatingNeedsAnOriginal)
{
    ScratchFolder folder;
    LangDoc lang;
    ScriptedPrompt prompt;
    LanguageEditor editor(folder.Path(), lang, prompt);
    prompt.Inputs = {"German"};
    EXPECT_FALSE(editor.ChooseNew(LanguageEditor::kCreateNew));
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{"Can not find original/source language. Select one from combo box"});
    EXPECT_EQ(prompt.Log[0].Text, "Type the new language name\n(New file will be created at program's folder)");
    EXPECT_EQ(editor.NewFiles(), std::vector<std::string>{LanguageEditor::kCreateNew});
    EXPECT_EQ(editor.Title(), std::string("Create new language for program Menuwright ver. ") + mw::kVersionText);
}

} // namespace
