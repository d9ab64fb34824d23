#pragma once

// A project with one menu of three buttons shown on the canvas.

#include "document/ProjectFixture.h"
#include "menus/CanvasCommands.h"

namespace mw::test {

class CanvasFixture : public ProjectFixture {
protected:
    void SetUp() override
    {
        Open("canvas.xml", kCanvasProject);
        ParceMenu(project, project.Doc.Tree.Item("k12"));
        prompt.Log.clear();
    }
    const std::string& Tag(long id) { return project.Doc.Tree.Item("k" + std::to_string(id)).Tag; }
    CanvasButton& Button(int i) { return project.Canvas.Buttons.at(static_cast<std::size_t>(i)); }
};

} // namespace mw::test
