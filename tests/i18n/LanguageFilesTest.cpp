#include "i18n/LanguageFiles.h"

#include "core/ScratchFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
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

} // namespace
