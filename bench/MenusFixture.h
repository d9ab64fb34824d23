#pragma once

// The generated project of 50 menus with 36 buttons each, with a 720x576 DivX movie behind
// every menu, opened for the menu and canvas benchmarks.

#include "BenchFixtures.h"
#include "ProjectGenerator.h"

#include "core/FormHost.h"
#include "core/ScriptedPrompt.h"
#include "document/ProgramStart.h"
#include "document/Project.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace mw::bench {

namespace fs = std::filesystem;

class NoForms : public mw::FormHost {
public:
    bool ShowNewTitle(mw::NewTitleForm&) override { return true; }
    bool ShowChap(mw::ChapForm&) override { return true; }
};

// The generated project with a real movie behind every menu, so that counting streams reads a file.
inline const fs::path& MenusProject()
{
    static const fs::path file = [] {
        const fs::path folder = BenchFolder("menuwright-bench-menus");
        const fs::path project = WriteGeneratedProject(folder, {1, 1, 50, 36});
        const fs::path movie = FfmpegOnce(
            BenchFolder("menuwright-bench-media") / "menu-5s.avi",
            "-f lavfi -i testsrc=size=720x576:rate=25 -f lavfi -i sine -t 5 -c:v mpeg4 -vtag DX50 -c:a mp2");
        for (int m = 0; m < 50; ++m)
            fs::copy_file(movie, folder / ("menu" + std::to_string(m) + ".avi"), fs::copy_options::overwrite_existing);
        return project;
    }();
    return file;
}

// The generated project opened, with its menus in tree order.
struct OpenMenus {
    mw::ProgramState program{BenchFolder("menuwright-bench-home")};
    mw::ScriptedPrompt prompt;
    NoForms forms;
    mw::Project project{program, prompt, forms};
    std::vector<mw::DocNode*> menus;

    OpenMenus()
    {
        if (!project.OpenFile(MenusProject().string()))
            throw std::runtime_error("the generated project does not open");
        prompt.Log.clear(); // the title's movie is an empty file
        project.Doc.Tree.ForEach([&](mw::DocNode& node) {
            if (node.Text == "DivXMediaMenu")
                menus.push_back(&node);
        });
    }
};

} // namespace mw::bench
