#include "build/DemoProject.h"
#include "build/StarterLibrary.h"
#include "cli/ConsolePrompt.h"
#include "render/OverlayFont.h"

#include <iostream>
#include <optional>

// Makes the demo movie and project and the starter overlay library below the folder given; the
// build runs it beside the program.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: menuwright-demo OUTPUT_FOLDER\n";
        return 2;
    }
    mw::NeedFontApplication();
    mw::ConsolePrompt prompt(std::cerr, std::cerr, std::nullopt);
    return mw::MakeDemoProject(argv[1], {}, prompt) && mw::MakeStarterLibrary(argv[1], prompt) ? 0 : 1;
}
