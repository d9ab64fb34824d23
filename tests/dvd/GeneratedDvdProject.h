#pragma once

#include "build/DemoProject.h"
#include "cli/CliFixture.h"
#include "media/TitleTestKit.h"
#include "render/OverlayFont.h"

#include <gtest/gtest.h>

#include <regex>

namespace mw::test {

// A project made as a user makes one with the generators, on the demo's small movie: the movie
// twice as titles, the first with seven chapters; in English the demo's main menu, a title menu,
// a chapter menu on two pages and a setup menu, all back to the main menu; in German a title
// menu. Opened as the window opens it.
class GeneratedDvdProject : public CliFixture {
protected:
    void Generate()
    {
        NeedFontApplication();
        ASSERT_TRUE(MakeDemoProject(folder.Path(), {{176, 144, 25, 250}, 7}, prompt));
        const std::string demo = ReadAll(ProjectFile());
        std::smatch found;
        ASSERT_TRUE(std::regex_search(demo, found, std::regex(R"re(<DivXMediaMenu[^>]*objectID="(\d+)")re")));
        mainMenuID = found[1];
        ASSERT_TRUE(std::regex_search(demo, found, std::regex(R"re(<Title[^>]*objectID="(\d+)")re")));
        titleID = found[1];
        const std::string p = Quoted(ProjectFile());
        const std::string movie = Quoted(ProjectFile().parent_path() / "Demo.avi");
        for (const std::string& command :
             {"add-title " + p + " " + movie, "title-menu " + p + " -o titles --motion -1",
              "chapter-menu " + p + " " + titleID + " -o chapters --per-page 6 --motion -1 --main " + mainMenuID,
              "setup-menu " + p + " " + titleID + " -o setup --main " + mainMenuID, "add-lang " + p + " de",
              "title-menu " + p + " -o titles-de --motion -1 --lang de"}) {
            const CommandResult made = Run(command);
            ASSERT_EQ(made.Exit, 0) << command << "\n" << made.Out;
        }
        ASSERT_TRUE(project.OpenFile(ProjectFile().string())) << ::testing::PrintToString(prompt.Texts());
    }

    std::filesystem::path ProjectFile() const { return folder.Path() / "Demo" / "Demo.xml"; }

    std::string mainMenuID;
    std::string titleID;
    ProgramState program{folder.Path()};
    ScriptedPrompt prompt;
    ScriptedForms forms;
    Project project{program, prompt, forms};
};

} // namespace mw::test
