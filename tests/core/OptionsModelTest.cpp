#include "core/settings/OptionsModel.h"

#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "core/settings/DefOverlays.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
using mw::OptionsModel;
using mw::ScriptedPrompt;
using mw::Settings;
using mw::test::ScratchFolder;

namespace {

constexpr const char* kBlueRefused =
    "Please do not use the Blue color. It's reserved for transparency. Select a similar color.";

struct Options : ::testing::Test {
    ScratchFolder scratch;
    ScriptedPrompt prompt;
    Settings settings;

    OptionsModel Load() { return OptionsModel::Load(settings, scratch.Path()); }
    Settings Applied(const OptionsModel& model)
    {
        Settings out = settings;
        model.Apply(out);
        return out;
    }
};

TEST_F(Options, LoadThenApplyKeepsEverySetting)
{
    settings.AutoSaveMin = 7;
    settings.NewDivXSaveToFolder = scratch.Path().string();
    settings.DefOverlay = "|Oval";
    settings.defLang = "xx";
    settings.MethodForPicToMenu = mw::kPicToMenuBuiltIn;
    settings.deleteTemp = false;
    settings.defOverlayColor2 = 123;
    settings.DoubleClickInButtonsAction = 2;
    EXPECT_EQ(Applied(Load()), settings);
}

TEST_F(Options, AutoSaveMinutesCountOnlyWhenTicked)
{
    struct Case {
        bool ticked;
        const char* text;
        int minutes;
    };
    for (const Case c : {Case{true, "15", 15}, Case{false, "15", 0}, Case{true, "5min", 5}, Case{true, "abc", 0},
                         Case{true, "-3", 0}}) {
        OptionsModel model = Load();
        model.chkAutoSave = c.ticked;
        model.txtAutoSaveMin = c.text;
        EXPECT_EQ(Applied(model).AutoSaveMin, c.minutes) << c.ticked << " " << c.text;
    }
    settings.AutoSaveMin = 0;
    EXPECT_FALSE(Load().AutoSaveMinEnabled());
}

TEST_F(Options, DefOverlayIsTheChosenRowButNotTheSeparator)
{
    scratch.Write("overlays/star.bmp", "x");
    settings.DefOverlay = "star.bmp";
    EXPECT_EQ(Load().List1Index, 4);
    settings.DefOverlay = "|Oval";
    OptionsModel model = Load();
    ASSERT_EQ(model.List1Index, 1);
    model.List1Index = 3;
    EXPECT_EQ(Applied(model).DefOverlay, "|Oval");
    model.List1Index = 0;
    EXPECT_EQ(Applied(model).DefOverlay, "|Shape1");
}

TEST_F(Options, BlueIsRefusedOtherColoursTaken)
{
    OptionsModel model = Load();
    prompt.Colors = {mw::kTransparentBlue, 0xFE0000u, std::nullopt};
    model.PickOverlayColor(0, prompt);
    EXPECT_EQ(model.lblColor[0], 255u);
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>{kBlueRefused});
    model.PickOverlayColor(0, prompt);
    EXPECT_EQ(model.lblColor[0], 0xFE0000u);
    model.PickOverlayColor(0, prompt); // cancelled
    EXPECT_EQ(model.lblColor[0], 0xFE0000u);

    // The button and guide colours have no transparent key.
    prompt.Colors = {mw::kTransparentBlue, mw::kTransparentBlue};
    model.PickButtonColor(prompt);
    model.PickGuideColor(prompt);
    EXPECT_EQ(model.lblButtonColor, mw::kTransparentBlue);
    EXPECT_EQ(model.lblGuideColor, mw::kTransparentBlue);
    EXPECT_EQ(prompt.Texts().size(), 1u);
}

TEST_F(Options, ConfirmRefusesAMissingFolderAndWritesOtherwise)
{
    EXPECT_EQ(Load().SaveToOption, 1);
    const fs::path file = mw::SettingsFilePath(scratch.Path());
    mw::clsIniFile ini(file.string());
    const auto confirm = [&](int option, const std::string& folder) {
        OptionsModel model = Load();
        model.SaveToOption = option;
        model.txtFolder = folder;
        model.chkAutoSave = true;
        model.txtAutoSaveMin = "4";
        model.Combo1Index = 1;
        return mw::ConfirmOptions(model, settings, ini, prompt);
    };
    for (const std::string& folder : {std::string(), (scratch.Path() / "gone").string(),
                                     scratch.Write("plain.txt", "x").string()})
        EXPECT_FALSE(confirm(3, folder)) << folder;
    EXPECT_EQ(prompt.Texts(), std::vector<std::string>(3, "Error in folder where to save new DivXFile"));
    EXPECT_EQ(settings.AutoSaveMin, 0);
    EXPECT_FALSE(fs::exists(file));

    for (const auto& [option, saved] : {std::pair{2, std::string("2")}, std::pair{3, scratch.Path().string()}}) {
        ASSERT_TRUE(confirm(option, scratch.Path().string()));
        EXPECT_EQ(settings.defLang, "de");
        Settings reread;
        mw::LoadValues(reread, ini, scratch.Path());
        EXPECT_EQ(reread.NewDivXSaveToFolder, saved);
        EXPECT_EQ(reread.AutoSaveMin, 4);
        EXPECT_EQ(reread.defLang, "de");
    }
}

TEST(DefOverlays, ShapesSeparatorThenPicturesByNameAndNoOtherFiles)
{
    ScratchFolder scratch;
    using Rows = std::vector<std::string>;
    const Rows shapes = {"|Shape1", "|Oval", "|Rectangle", "================="};
    EXPECT_EQ(mw::LoadDefOverlays(scratch.Path()), shapes); // no overlays folder
    for (const char* file : {"star.bmp", "Arrow.BMP", "ball.bmp", "notes.txt", "inner.bmp/keep.bmp"})
        scratch.Write(std::string("overlays/") + file, "x"); // the last is a folder named like a picture
    Rows expected = shapes;
    expected.insert(expected.end(), {"Arrow.BMP", "ball.bmp", "star.bmp"});
    EXPECT_EQ(mw::LoadDefOverlays(scratch.Path()), expected);
}

} // namespace
