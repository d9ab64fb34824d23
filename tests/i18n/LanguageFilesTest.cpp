#include "i18n/LanguageFiles.h"

#include "core/ScratchFolder.h"
#include "i18n/FormDesign.h"
#include "i18n/LoadTextForDesign.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using mw::ControlDesign;
using mw::FormDesign;
using mw::Language;
using mw::test::ScratchFolder;

namespace {

std::string LangFile(const std::string& creator, const std::string& greeting)
{
    return "<Lang><Private Creator=\"" + creator + "\" ProgramVersion=\"" + mw::kVersionText +
           "\"/><Form1_Module s1=\"" + greeting + "\"/></Lang>";
}

TEST(StartLanguage, PicksTheNewFileFirstAndNeedsNone)
{
    const struct {
        const char* name;
        bool xml;
        bool xmlNew;
        const char* creator;
    } cases[] = {{"none", false, false, ""}, {"only .xml", true, false, "Plain"},
                 {"only .xml.New", false, true, "Fresh"}, {"both", true, true, "Fresh"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const ScratchFolder folder;
        if (c.xml)
            folder.Write("English.Menuwright.exe.xml", LangFile("Plain", "Hello"));
        if (c.xmlNew)
            folder.Write("English.Menuwright.exe.xml.New", LangFile("Fresh", "Hi"));
        Language lang(folder.Path());
        lang.StartLanguage();
        EXPECT_EQ(lang.LangDoc().PrivateAttribute("Creator").value_or(""), c.creator);
        EXPECT_EQ(lang.LangDoc().LoadResText("Form1", 5, "x"), "x");
        EXPECT_EQ(lang.LangFileStem(), "English.Menuwright.exe");
        EXPECT_EQ(lang.LangName(), "English");
    }
}

TEST(LoadNewLang, LoadsTheLanguageOfAStemOrChangesNothing)
{
    const ScratchFolder folder;
    folder.Write("English.Menuwright.exe.xml", LangFile("Ann", "Hello"));
    folder.Write("German.Menuwright.exe.xml", LangFile("Old", "Hallo"));
    folder.Write("German.Menuwright.exe.xml.New", LangFile("Bernd", "Guten Tag"));
    folder.Write("French.Menuwright.exe", "not a language file: its name lacks .xml");
    Language lang(folder.Path());
    lang.StartLanguage();

    EXPECT_FALSE(lang.LoadNewLang("French.Menuwright.exe"));
    EXPECT_EQ(lang.LangFileStem(), "English.Menuwright.exe");
    EXPECT_EQ(lang.LangDoc().LoadResText("Form1", 1, "default"), "Hello");

    ASSERT_TRUE(lang.LoadNewLang(mw::LangFileStemOf("German")));
    EXPECT_EQ(lang.LangFileStem(), "German.Menuwright.exe");
    EXPECT_EQ(lang.LangName(), "German");
    EXPECT_EQ(lang.LangDoc().LoadResText("Form1", 1, "Hello"), "Guten Tag");
    EXPECT_EQ(mw::LastPanelAfterChange(lang.LangDoc()).Text,
              "Language by Bernd (" + std::string(mw::kVersionText) + ")");
}

TEST(ListLanguageFiles, CaptionsOfTheLanguageFilesSorted)
{
    const ScratchFolder folder;
    for (const char* name : {"German.Menuwright.exe.xml", "English.Menuwright.exe.xml", "Czech.Menuwright.exe.xml",
                             "Polish.Menuwright.exe.xml.New", "Menuwright.exe.xml", "Menuwright.ini", "nick.xml",
                             "Dutch.menuwright.exe.xml"})
        folder.Write(name, "<Lang/>");
    fs::create_directories(folder.Path() / "Folder.Menuwright.exe.xml");

    const auto entries = mw::ListLanguageFiles(folder.Path());

    std::vector<std::string> captions;
    for (const auto& entry : entries) {
        captions.push_back(entry.Caption);
        EXPECT_EQ(entry.File, folder.Path() / (mw::LangFileStemOf(entry.Caption) + ".xml"));
    }
    EXPECT_EQ(captions, (std::vector<std::string>{"Czech", "English", "German"}));
}

TEST(LastPanel, ShowsCreatorAndVersion)
{
    struct Case {
        const char* privateElement;
        std::string atStart;
        std::string afterChange;
        bool old;
    };
    const std::string running = "1.4.2";
    const Case cases[] = {
        {R"(<Private Creator="Ann" ProgramVersion="1.4.2"/>)", "Language by Ann (1.4.2)", "Language by Ann (1.4.2)",
         false},
        {R"(<Private Creator="Ann" ProgramVersion="1.3.0"/>)", "Language by Ann (1.3.0)", "Language by Ann (1.3.0)",
         true},
        {R"(<Private Creator="Ann"/>)", "Language by Ann", "Language by Ann", false},
        {R"(<Private Creator=""/>)", "Language by ", "Language by ", false},
        {R"(<Private ProgramVersion="1.3.0"/>)", " (1.3.0)", "", true},
        {R"(<Private/>)", "", "", false},
        {"", "", "", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.privateElement);
        mw::LangDoc doc;
        ASSERT_TRUE(doc.LoadString(std::string("<Lang>") + c.privateElement + "</Lang>"));
        const mw::LanguagePanel start = mw::LastPanelAtStart(doc, running);
        EXPECT_EQ(start.Text, c.atStart);
        EXPECT_EQ(start.OldLanguage, c.old);
        const mw::LanguagePanel change = mw::LastPanelAfterChange(doc, running);
        EXPECT_EQ(change.Text, c.afterChange);
        EXPECT_EQ(change.OldLanguage, c.old && !c.afterChange.empty());
    }
}

// A window labelled by a language file.
FormDesign PropertyWindow()
{
    FormDesign form;
    form.FormName = "frmProp";
    form.Caption = "Properties";
    form.Controls = {
        {.Name = "lblTitle", .TypeName = "Label", .Caption = "Title", .ToolTipText = "The title"},
        {.Name = "Label1", .Index = 0, .TypeName = "Label", .Caption = "Zero", .ToolTipText = "Tip zero"},
        {.Name = "Label1", .Index = 3, .TypeName = "Label", .Caption = "Three", .ToolTipText = "Tip three"},
        {.Name = "txtName", .TypeName = "TextBox", .ToolTipText = "Name"},
        {.Name = "cmdOk", .TypeName = "CommandButton", .Caption = "OK", .ToolTipText = "Apply"},
        {.Name = "TabStrip1",
         .TypeName = "TabStrip",
         .Caption = "strip",
         .Tabs = {{"General", "General tip"}, {"Colours", "Colours tip"}}},
        {.Name = "ListView1", .TypeName = "ListView", .Columns = {"Name", "Value"}},
        {.Name = "Toolbar1", .TypeName = "Toolbar", .ToolTipText = "bar", .Buttons = {{"", "Open"}, {"", "Save"}}},
    };
    return form;
}

FormDesign Labelled(const std::string& languageFile)
{
    mw::LangDoc lang;
    if (!languageFile.empty()) {
        EXPECT_TRUE(lang.LoadString(languageFile));
    }
    FormDesign form = PropertyWindow();
    mw::FormDesignTarget target(form);
    mw::LoadTextForDesign(lang, target);
    return form;
}

const ControlDesign& Control(const FormDesign& form, const std::string& name, std::optional<int> index = {})
{
    for (const ControlDesign& c : form.Controls) {
        if (c.Name == name && c.Index == index)
            return c;
    }
    throw std::runtime_error("no control " + name);
}

TEST(LoadTextForDesign, WithoutTheWindowsSectionEverythingStays)
{
    const char* files[] = {
        "",
        R"(<Lang><frmMain_Design frmMain="Haupt" lblTitle="Titel"/><frmProp_Module s1="x"/></Lang>)",
        R"(<Lang><frmProp_Design/></Lang>)",
    };
    for (const char* file : files) {
        SCOPED_TRACE(file);
        EXPECT_EQ(Labelled(file), PropertyWindow());
    }
}

TEST(LoadTextForDesign, CaptionsToolTipsAndItemsCountingFromOne)
{
    const FormDesign form = Labelled(R"(<Lang><frmProp_Design
        frmProp="Eigenschaften"
        lblTitle="Titel"
        Label1="not for array members" Label1_ToolTipText="not for array members"
        Label1_3="Drei" Label1_3_ToolTipText="Tipp drei"
        txtName="no caption to take" txtName_ToolTipText="Der Name"
        cmdOk=""
        TabStrip1="strip caption is not set" TabStrip1_0="no tab 0" TabStrip1_3="no tab 3"
        TabStrip1_1="Allgemein" TabStrip1_2_ToolTipText="Farben-Tipp"
        ListView1_0="no column 0" ListView1_2="Wert"
        Toolbar1_ToolTipText="bar tip is not set"
        Toolbar1_1_ToolTipText="Oeffnen" Toolbar1_2="Sichern"/></Lang>)");

    EXPECT_EQ(form.Caption, "Eigenschaften");
    EXPECT_EQ(Control(form, "lblTitle").Caption, "Titel");
    EXPECT_EQ(Control(form, "lblTitle").ToolTipText, "The title");
    EXPECT_EQ(Control(form, "Label1", 0), PropertyWindow().Controls[1]);
    EXPECT_EQ(Control(form, "Label1", 3).Caption, "Drei");
    EXPECT_EQ(Control(form, "Label1", 3).ToolTipText, "Tipp drei");
    EXPECT_EQ(Control(form, "txtName").Caption, std::nullopt);
    EXPECT_EQ(Control(form, "txtName").ToolTipText, "Der Name");
    // An empty value is a translation too: the English caption does not come back.
    EXPECT_EQ(Control(form, "cmdOk").Caption, "");
    EXPECT_EQ(Control(form, "cmdOk").ToolTipText, "Apply");

    const ControlDesign& strip = Control(form, "TabStrip1");
    EXPECT_EQ(strip.Caption, "strip");
    EXPECT_EQ(strip.Tabs, (std::vector<mw::TabTexts>{{"Allgemein", "General tip"}, {"Colours", "Farben-Tipp"}}));
    EXPECT_EQ(Control(form, "ListView1").Columns, (std::vector<std::string>{"Name", "Wert"}));
    const ControlDesign& bar = Control(form, "Toolbar1");
    EXPECT_EQ(bar.ToolTipText, "bar");
    EXPECT_EQ(bar.Buttons, (std::vector<mw::ButtonTexts>{{"", "Oeffnen"}, {"Sichern", "Save"}}));
}

} // namespace
