#include "langfile/LangFileWriter.h"

#include "core/ScratchFolder.h"
#include "i18n/LoadTextForDesign.h"

#include <gtest/gtest.h>

#include <filesystem>

using mw::ControlDesign;
using mw::FormDesign;
using mw::LangFileContents;

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

} // namespace
