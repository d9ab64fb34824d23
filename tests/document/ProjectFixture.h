#pragma once

// An open project for the project-life tests: a program folder of its own, a scripted prompt,
// scripted dialogs and a clock that the test sets.

#include "core/ScratchFolder.h"
#include "document/TestProjects.h"
#include "core/ScriptedPrompt.h"
#include "document/ProgramStart.h"
#include "document/Project.h"
#include "document/TreeViewToXml.h"
#include "media/TitleTestKit.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <ostream>

namespace mw::test {

// A local time as the clock gives it.
inline std::chrono::system_clock::time_point LocalTime(int year, int month, int day, int hour, int minute,
                                                       int second)
{
    std::tm tm{};
    tm.tm_year = year - 1900;
    tm.tm_mon = month - 1;
    tm.tm_mday = day;
    tm.tm_hour = hour;
    tm.tm_min = minute;
    tm.tm_sec = second;
    tm.tm_isdst = -1;
    return std::chrono::system_clock::from_time_t(std::mktime(&tm));
}

// What a failed or cancelled step must leave as it was: the tree, the flags, the name and the
// caption, the recent files, the undo steps and the bytes of the project's file.
struct ProjectState {
    std::string Xml;
    bool Dirty = false;
    bool New = false;
    std::string File;
    std::string Title;
    std::vector<std::string> Recent;
    std::size_t UndoSteps = 0;
    std::string Bytes;

    bool operator==(const ProjectState&) const = default;
};

inline void PrintTo(const ProjectState& s, std::ostream* out)
{
    *out << "dirty " << s.Dirty << ", new " << s.New << ", file " << s.File << ", title " << s.Title << ", "
         << s.Recent.size() << " recent, " << s.UndoSteps << " undo steps, " << s.Bytes.size() << " bytes on disk\n"
         << s.Xml;
}

class ProjectFixture : public ::testing::Test {
protected:
    // Writes a project file into the work folder and returns its path.
    std::string WriteProject(const std::string& name, const std::string& xml = kMenuProject)
    {
        return work.Write(name, xml).string();
    }
    // Opens a file of the work folder, which must succeed.
    void Open(const std::string& name, const std::string& xml = kMenuProject)
    {
        ASSERT_TRUE(project.OpenFile(WriteProject(name, xml))) << ::testing::PrintToString(prompt.Texts());
        prompt.Log.clear();
    }
    std::string Xml() { return project.Doc.Tree.Empty() ? "" : NodeToXmlString(*project.Doc.Tree.Root()); }
    ProjectState State()
    {
        std::error_code ec;
        const std::string& file = project.Doc.ProjectFile;
        return {Xml(), project.FileIsDirty, project.FileIsNew, file, project.WindowTitle, project.RecentFiles(),
                project.Undo.Count(), std::filesystem::is_regular_file(file, ec) ? ReadAll(file) : "<no file>"};
    }

    ScratchFolder home; // the program folder
    ScratchFolder work; // where the user keeps projects and movies
    ProgramState program{home.Path()};
    ScriptedPrompt prompt;
    ScriptedForms forms;
    std::chrono::system_clock::time_point now = LocalTime(2004, 3, 5, 18, 22, 1);
    Project project{program, prompt, forms, [this] { return now; }};
};

} // namespace mw::test
