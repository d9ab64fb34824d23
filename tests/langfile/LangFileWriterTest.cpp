#include "langfile/LangFileWriter.h"
#include "langfile/NumberedTexts.h"

#include "core/ScratchFolder.h"
#include "i18n/LoadTextForDesign.h"

#include <gtest/gtest.h>

#include <filesystem>

using mw::ControlDesign;
using mw::FormDesign;
using mw::LangFileContents;
using mw::ModuleTexts;
using mw::ScanNumberedTexts;
using mw::SourceFile;

namespace {

FormDesign OptionsWindow()
{
    FormDesign form;
    form.FormName = "frmOptions";
    form.Caption = "Options";
    form.Controls = {
        {.Name = "lblTitle", .TypeName = "QLabel", .Caption = "Title", .ToolTipText = "The title"},
        {.Name = "optDoubleClick", .Index = 0, .TypeName = "QRadioButton", .Caption = "Do nothing"},
        {.Name = "optDoubleClick", .Index = 2, .TypeName = "QRadioButton", .Caption = "Always", .ToolTipText = "Two"},
        {.Name = "txtFolder", .TypeName = "QLineEdit", .ToolTipText = "Where \"DivX\" files go & stay"},
        {.Name = "TabStrip1", .TypeName = "TabStrip", .Tabs = {{"General", "General tip"}, {"Creating DivX", ""}}},
        {.Name = "lstTracks", .TypeName = "ListView", .Columns = {"Track", "Name-Language"}},
        {.Name = "Toolbar1", .TypeName = "Toolbar", .Buttons = {{"newXml", "New xml"}, {"", ""}, {"save", "Save"}}},
        {.Name = "lblRuntime", .TypeName = "QLabel", .Caption = ""},
    };
    return form;
}

// The same window with every text gone, as a window would be before a language file labels it.
FormDesign Blanked(FormDesign form)
{
    form.Caption.clear();
    for (ControlDesign& c : form.Controls) {
        if (c.Caption)
            c.Caption = "";
        c.ToolTipText.clear();
        for (auto& tab : c.Tabs)
            tab = {};
        for (auto& column : c.Columns)
            column.clear();
        for (auto& button : c.Buttons)
            button = {};
    }
    return form;
}

LangFileContents Contents()
{
    FormDesign about{.FormName = "frmAbout", .Caption = "About Menuwright", .Controls = {}};
    return {.RootName = "Menuwright",
            .Creator = "Menuwright",
            .ProgramVersion = "1.2.3",
            .Designs = {OptionsWindow(), about},
            .Modules = {{"frmOptions", {{3, "Line one\r\nline two <&> \"three\""}, {12, "Twelve"}}},
                        {"mAVIDecs", {{4, "Frame not found"}}}}};
}

TEST(LangFileWriter, LoadingTheWrittenFileGivesEveryTextBack)
{
    const mw::test::ScratchFolder folder;
    const std::string path = (folder.Path() / "English.Menuwright.exe.xml").string();
    std::vector<std::string> errors;
    ASSERT_TRUE(mw::WriteLangFile(path, Contents(), errors));
    EXPECT_TRUE(errors.empty());

    mw::LangDoc lang;
    ASSERT_TRUE(lang.LoadFile(path));
    FormDesign labelled = Blanked(OptionsWindow());
    mw::FormDesignTarget target(labelled);
    mw::LoadTextForDesign(lang, target);
    EXPECT_EQ(labelled, OptionsWindow());

    EXPECT_EQ(lang.LoadResText("frmOptions", 3, "?"), "Line one\r\nline two <&> \"three\"");
    EXPECT_EQ(lang.LoadResText("frmOptions", 12, "?"), "Twelve");
    EXPECT_EQ(lang.LoadResText("mAVIDecs", 4, "?"), "Frame not found");
    EXPECT_EQ(lang.DesignText("frmAbout", "frmAbout"), "About Menuwright");
    EXPECT_EQ(lang.PrivateAttribute("Creator"), "Menuwright");
    EXPECT_EQ(lang.PrivateAttribute("ProgramVersion"), "1.2.3");
    // Nothing to translate is no attribute: a translator's empty one would blank the text.
    EXPECT_FALSE(lang.DesignText("frmOptions", "lblRuntime"));
    EXPECT_FALSE(lang.DesignText("frmOptions", "Toolbar1_2_ToolTipText"));
    EXPECT_FALSE(lang.DesignText("frmOptions", "optDoubleClick_0_ToolTipText"));
}

TEST(LangFileWriter, SameContentsInAnyOrderGiveTheSameBytes)
{
    LangFileContents reversed = Contents();
    std::swap(reversed.Designs.front(), reversed.Designs.back());
    std::vector<std::string> errors;
    const std::string text = mw::LangFileText(Contents(), errors);
    EXPECT_EQ(mw::LangFileText(reversed, errors), text);
    EXPECT_TRUE(errors.empty());
    EXPECT_LT(text.find("<frmAbout_Design"), text.find("<frmOptions_Design"));
    EXPECT_LT(text.find("<frmOptions_Design"), text.find("<frmOptions_Module"));
    EXPECT_LT(text.find("<frmOptions_Module"), text.find("<mAVIDecs_Module"));
}

TEST(LangFileWriter, TwoTextsForOneAttributeAreRefusedAndNothingIsWritten)
{
    LangFileContents contents = Contents();
    contents.Designs.front().Controls.push_back({.Name = "lblTitle", .TypeName = "QAction", .Caption = "Other"});
    contents.Designs.front().Controls.push_back({.Name = "lblTitle", .TypeName = "QLabel", .Caption = "Title"});
    const mw::test::ScratchFolder folder;
    const std::filesystem::path path = folder.Path() / "English.Menuwright.exe.xml";
    std::vector<std::string> errors;
    EXPECT_FALSE(mw::WriteLangFile(path.string(), contents, errors));
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(errors.front(), "frmOptions_Design lblTitle: \"Title\" and \"Other\"");
    EXPECT_FALSE(std::filesystem::exists(path));
}

// What every project file of the program has: the window whose texts Texts() returns.
const SourceFile kProjectHeader{"Project.h", R"(
class Project {
public:
    FormTexts Texts() const { return FormTexts(program_.Lang.LangDoc(), "Form1"); }
};
)"};

struct ScanCase {
    const char* Name;
    std::vector<SourceFile> Sources;
    std::map<std::string, ModuleTexts> Forms;
    std::vector<std::string> Errors; // a part of each error, in order
};

TEST(NumberedTexts, FindsEachCallFormInItsWindow)
{
    const std::vector<ScanCase> cases = {
        {"an object of the file's constant, a call over three lines, escapes",
         {{"Check.cpp", R"(
constexpr const char* kForm = "frmCheck";
void Check(const LangDoc& lang, Prompt& prompt) {
    const FormTexts text(lang, kForm);
    prompt.Message(text(26,
                        "Error \"at\"\tnode "
                        "\101\x42\u00e9\n") + name);
})"}},
         {{"frmCheck", {{26, "Error \"at\"\tnode AB\xc3\xa9\n"}}}},
         {}},
        {"a temporary names its window whatever the file's constant",
         {{"Chap.cpp", R"(
constexpr const char* kForm = "frmOther";
void Apply() { prompt.Message(FormTexts(lang, "frmChap")(9, "Can not find any chapter")); }
void Other() { prompt.Message(FormTexts(lang, kForm)(2, "Other")); })"}},
         {{"frmChap", {{9, "Can not find any chapter"}}}, {"frmOther", {{2, "Other"}}}},
         {}},
        {"the window of a function returning texts, called or kept",
         {kProjectHeader, {"Remove.cpp", R"(
bool Remove(Project& project) {
    project.Ask().Ask(project.Texts()(1, "File is not saved. Save it now?"));
    const FormTexts texts = project.Texts();
    project.Ask().Message(texts(38, "Please select a Title node"));
})"}},
         {{"Form1", {{1, "File is not saved. Save it now?"}, {38, "Please select a Title node"}}}},
         {}},
        {"a parameter belongs to the file's constant, else to the default window",
         {{"Nodes.cpp", "void Add(int i, const FormTexts& texts, Prompt& p) {\n"
                        "    p.Message(texts(5, \"Can not detect\")); }"},
          {"Grab.cpp", "constexpr const char* kForm = \"mAVIDecs\";\n"
                       "void Grab(FormTexts& text) { m(text(4, \"Frame not found\")); }"}},
         {{"Form1", {{5, "Can not detect"}}}, {"mAVIDecs", {{4, "Frame not found"}}}},
         {}},
        {"look-alikes in comments, strings, raw strings and other calls are no texts",
         {{"Other.cpp", R"__(
// const FormTexts text(lang, "frmX"); text(3, "comment")
/* text(4, "block") */
const FormTexts text(lang, "frmX");
const char* s = "text(5, \"string\")";
const char* r = R"(text(6, "raw"))";
list.setColumnWidth(0, "x");
other(7, "not a texts object");
#define T text(8, "directive")
)__"}},
         {},
         {}},
        {"the same default twice is one text; two defaults are an error naming both places",
         {{"a.cpp", "void a() { FormTexts(l, \"Form1\")(22, \"Checking complete with \"); }"},
          {"b.cpp", "void b() { FormTexts(l, \"Form1\")(22, \"Checking complete with \"); }"},
          {"c.cpp", "void c() {\n FormTexts(l, \"Form1\")(22, \"Check complete\"); }"}},
         {{"Form1", {{22, "Checking complete with "}}}},
         {"c.cpp:2: Form1 text 22 has two defaults: \"Checking complete with \" (a.cpp:1) and \"Check complete\""}},
        {"a window that cannot be told and a default that is no literal are errors",
         {{"d.cpp", "void d(const std::string& form) {\n const FormTexts t(lang, form);\n"
                    " m(t(3, \"x\"));\n m(FormTexts(lang, form)(4, \"y\"));\n"
                    " const FormTexts u(lang, \"frmD\");\n m(u(5, someText)); }"}},
         {},
         {"d.cpp:2: can not tell the window of t", "d.cpp:4: can not tell the window of text 4",
          "d.cpp:6: text 5 of frmD has no literal default"}},
    };
    for (const ScanCase& c : cases) {
        SCOPED_TRACE(c.Name);
        const mw::NumberedTextScan scan = ScanNumberedTexts(c.Sources, "Form1");
        EXPECT_EQ(scan.Forms, c.Forms);
        ASSERT_EQ(scan.Errors.size(), c.Errors.size()) << (scan.Errors.empty() ? "" : scan.Errors.front());
        for (std::size_t i = 0; i < c.Errors.size(); ++i)
            EXPECT_NE(scan.Errors[i].find(c.Errors[i]), std::string::npos) << scan.Errors[i];
    }
}

} // namespace
