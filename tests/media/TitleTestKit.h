#pragma once

// An open project for the title and chapter tests: a program folder of its own, a scripted
// prompt and scripted dialogs.

#include "core/FormHost.h"
#include "core/ScratchFolder.h"
#include "core/ScriptedPrompt.h"
#include "document/ProgramStart.h"
#include "media/NewProject.h"
#include "document/Project.h"
#include "document/SchemaNodes.h"
#include "document/TreeViewToXml.h"
#include "media/ChapForm.h"
#include "media/Chapters.h"
#include "media/MovieFixtures.h"
#include "media/NewTitleForm.h"
#include "media/mAVIDecs.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>

#define REQUIRE_MOVIE(movie) REQUIRE_MEDIA(!(movie).empty(), "ffmpeg could not make the movie")

namespace mw::test {

// Dialogs answered from queues; an empty queue accepts the form as it stands.
class ScriptedForms : public FormHost {
public:
    std::deque<std::function<bool(NewTitleForm&)>> NewTitle;
    std::deque<std::function<bool(ChapForm&)>> Chap;
    std::deque<std::function<bool(NewMenuForm&)>> NewMenu;
    std::deque<std::function<bool(CreateOverFromPicForm&)>> CreateOverFromPic;
    std::deque<std::function<bool(std::array<std::uint32_t, 3>&)>> OverlayColors;
    std::vector<NewTitleForm> ShownNewTitles;

    bool ShowNewTitle(NewTitleForm& form) override
    {
        ShownNewTitles.push_back(form);
        return form.Accepted = Take(NewTitle, form);
    }
    bool ShowChap(ChapForm& form) override { return form.Accepted = Take(Chap, form); }
    bool ShowNewMenu(NewMenuForm& form) override { return Take(NewMenu, form); }
    bool ShowCreateOverFromPic(CreateOverFromPicForm& form) override { return Take(CreateOverFromPic, form); }
    bool ShowOverlayColors(std::array<std::uint32_t, 3>& colors) override { return Take(OverlayColors, colors); }

private:
    template <typename Form>
    static bool Take(std::deque<std::function<bool(Form&)>>& queue, Form& form)
    {
        if (queue.empty())
            return true;
        auto answer = std::move(queue.front());
        queue.pop_front();
        return answer(form);
    }
};

inline bool Cancel(NewTitleForm&) { return false; }

// A project of its own in a scratch folder, about to be given a first movie.
class TitleProject {
public:
    TitleProject() : program(folder.Path()), project(program, prompt, forms)
    {
        project.Doc.ProjectFile = (folder.Path() / "project.xml").string();
    }

    // The tree of a new project around the movie, with its first audio stream as the default.
    void StartWith(const std::filesystem::path& movie)
    {
        TrackRows rows;
        double fps = 0;
        LoadStreamsToListView(movie.string(), rows, true, fps, prompt);
        BuildNewProjectTree(project.Doc, movie.string(), rows, program.Values.defLang, rows.size() > 1 ? 1 : -1, -1);
        prompt.Log.clear();
    }

    // The chapter dialog as it opens, with a title chosen.
    ChapForm OpenChapForm(int title = 0)
    {
        ChapForm form;
        LoadChapForm(form, project.Doc, ChapSettingsFile(project), prompt);
        form.Combo1.ListIndex = title;
        Combo1_Click(form, project.Doc, prompt);
        return form;
    }

    // The whole project, or one object, as the file would hold it (without comment rows).
    std::string Xml() { return NodeToXmlString(*project.Doc.Tree.Root()); }
    std::string Xml(long id) { return NodeToXmlString(Node(id)); }

    DocNode& Node(long id) { return project.Doc.Tree.Item("k" + std::to_string(id)); }

    ScratchFolder folder;
    ProgramState program;
    ScriptedPrompt prompt;
    ScriptedForms forms;
    Project project;
};

// The chapter dialog answered with a number of chapters of equal length.
inline std::function<bool(ChapForm&)> EqualChapters(TitleProject& t, int count)
{
    return [&t, count](ChapForm& form) {
        form.Mode = ChapMode::Count;
        form.txtChapters = std::to_string(count);
        CalcChapters(form, t.prompt);
        return AcceptChapForm(form, ChapSettingsFile(t.project), t.project.Lang(), t.prompt);
    };
}

// A test on a project started on one of the shared movies, skipped when ffmpeg could not make it.
template <std::filesystem::path (*MakeMovie)()>
class StartedProjectTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        REQUIRE_MOVIE(movie);
        p.StartWith(movie);
    }

    const std::filesystem::path movie = MakeMovie();
    TitleProject p;
};

// A menu of a language whose one button plays a title (and a chapter of it, when given).
inline DocNode& AddPlayMenu(Document& doc, DocNode& language, const std::string& name, const std::string& titleId,
                            const std::string& chapterId)
{
    DocTree& tree = doc.Tree;
    DocNode& menu = AddNextObjectNode(doc, language, "DivXMediaMenu", "menu");
    AddPropRow(tree, menu, "menuType", "title");
    AddPropRow(tree, menu, "menuName", name);
    DocNode& button = AddNextObjectNode(doc, menu, "ButtonMenu", "button");
    DocNode& list = AddNextObjectNode(doc, button, "Action", "action");
    DocNode& play = AddNextObjectNode(doc, list, "PlayAction", "action");
    AddPropRow(tree, play, "titleID", titleId);
    AddPropRow(tree, play, "mediaObjectID", chapterId.empty() ? titleId : chapterId);
    return menu;
}

} // namespace mw::test
