#include "i18n/LoadTextForDesign.h"

#include "i18n/FormDesign.h"

#include <gtest/gtest.h>

using mw::ControlDesign;
using mw::FormDesign;

namespace {

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
