#include "cli/CliFixture.h"
#include "generators/WholeProject.h"
#include "media/ChapterNodes.h"
#include "media/TitleNodes.h"
#include "media/TitleTestKit.h"
#include "render/OverlayFont.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

namespace fs = std::filesystem;

namespace mw::test {
namespace {

bool Said(const ScriptedPrompt& prompt, const std::string& text)
{
    const std::vector<std::string> texts = prompt.Texts();
    return std::any_of(texts.begin(), texts.end(), [&](const std::string& t) { return t.find(text) != std::string::npos; });
}

class MovieWithChaps : public StartedProjectTest<ShortMovie> {};

TEST_F(MovieWithChaps, StopsWithTheOpenProjectUntouchedThenMakesTheIntroThatPlaysTheTitle)
{
    const std::string before = p.Xml();
    // Without the intro nothing happens, not even the question for the movie.
    EXPECT_EQ(mnuMovieWithChaps(p.project, movie.string()), MovieWithChapsEnd::Stopped);
    EXPECT_TRUE(Said(p.prompt, "black.avi\r\nFile not found. Is used as intro menu for one movie with chapters."));
    EXPECT_EQ(p.Xml(), before);

    // A cancel at the question for the movie or at the title's dialog changes nothing either.
    fs::copy_file(movie, p.folder.Path() / kIntroFile);
    EXPECT_EQ(mnuMovieWithChaps(p.project), MovieWithChapsEnd::Stopped);
    ASSERT_FALSE(p.prompt.Log.empty());
    EXPECT_EQ(p.prompt.Log.back().Title, "Select the movie you want to create chapters for it");
    p.forms.NewTitle.push_back(Cancel);
    EXPECT_EQ(mnuMovieWithChaps(p.project, movie.string()), MovieWithChapsEnd::Stopped);
    EXPECT_EQ(p.Xml(), before);

    // No chapters, and no to going on: the new project stays with its title and no menu.
    p.forms.Chap.push_back([](ChapForm&) { return false; });
    p.prompt.Answers = {PromptAnswer::No};
    EXPECT_EQ(mnuMovieWithChaps(p.project, movie.string()), MovieWithChapsEnd::Stopped);
    EXPECT_TRUE(Said(p.prompt, "You dont create the chapters. You want to continue?"));
    ASSERT_EQ(TitleNodes(p.project.Doc).size(), 1u);
    EXPECT_EQ(p.Xml().find("DivXMediaMenu"), std::string::npos);

    p.project.FileIsDirty = false;
    p.prompt.Log.clear();
    p.forms.Chap.push_back(EqualChapters(p, 3));
    p.prompt.Answers = {PromptAnswer::No};
    EXPECT_EQ(mnuMovieWithChaps(p.project, movie.string()), MovieWithChapsEnd::Ready);
    EXPECT_TRUE(Said(p.prompt, "Movie with chapters is ready.\r\nUse the menu Features - \"Create DivX\""));
    EXPECT_TRUE(Said(p.prompt, "You want to create the movie now?"));

    // What the intro's exit list holds is read back through the command line below.
    const std::vector<DocNode*> titles = TitleNodes(p.project.Doc);
    ASSERT_EQ(titles.size(), 1u);
    EXPECT_EQ(ChapterNodesOf(*titles.front()).size(), 3u);
    EXPECT_NE(p.Xml().find("<DivXMediaMenu"), std::string::npos);
    EXPECT_EQ(p.Xml().find("<ButtonMenu"), std::string::npos);
    EXPECT_TRUE(p.project.Check(false));
}

TEST(ManyMovies, ListsFramesAndTitlesAndOpensTheTitlePageWithChaptersForAll)
{
    const fs::path movie = ShortMovie();
    REQUIRE_MOVIE(movie);
    NeedFontApplication();
    TitleProject t;
    ManyMoviesForm form;
    MenuPage page;
    EXPECT_FALSE(OpenManyMoviesPage(t.project, form, page));
    EXPECT_TRUE(Said(t.prompt, "Please add some titles"));

    // With nothing open the first movie makes the project.
    ASSERT_TRUE(AddMovies(t.project, form, {movie.string(), movie.string(), movie.string()}));
    ASSERT_EQ(form.List1.size(), 3u);
    EXPECT_EQ(TitleNodes(t.project.Doc).size(), 3u);
    ManyMoviesForm loaded;
    LoadManyMovies(t.project, loaded);
    ASSERT_EQ(loaded.List1.size(), 3u);
    EXPECT_EQ(loaded.List1[2].TitleID, form.List1[2].TitleID);
    EXPECT_EQ(loaded.List1[2].Movie, movie.string());

    SelectMovie(form, 1);
    SetMovieFrame(form, "abc");
    EXPECT_EQ(form.List1[1].Frame, 0);
    SetMovieFrame(form, "12");
    StepMovieFrame(form, 1);
    EXPECT_EQ(form.List1[1].Frame, 13);
    StepMovieFrame(form, -20);
    EXPECT_EQ(form.List1[1].Frame, 0);
    SetMovieFrame(form, "7");
    SelectMovie(form, 0);
    EXPECT_EQ(form.Text1, "0");

    const std::string removed = form.List1[0].TitleID;
    RemoveMovie(t.project, form);
    ASSERT_EQ(form.List1.size(), 2u);
    EXPECT_EQ(t.project.Doc.Tree.ObjectNode(removed), nullptr);

    form.chkCreateChap = true;
    form.txtChapters = "2";
    form.txtColumns = "3";
    ASSERT_TRUE(OpenManyMoviesPage(t.project, form, page));
    EXPECT_EQ(page.PerPage, 6);
    ASSERT_EQ(page.Items.size(), 2u);
    EXPECT_EQ(page.Items[0].Frame, 7);
    for (const DocNode* title : TitleNodes(t.project.Doc))
        EXPECT_EQ(ChapterNodesOf(*title).size(), 2u);
}

class WholeProjectCli : public CliFixture {};

TEST_F(WholeProjectCli, BothCommandsMakeProjectsThatCheckCleanAndWriteNothingWhenTheyFail)
{
    const fs::path movie = CopyMovie(ShortMovie(), "a.avi");
    REQUIRE_MOVIE(movie);
    NeedFontApplication();
    const std::string one = Quoted(folder.Path() / "one.xml");

    // The program folder has no intro yet.
    EXPECT_NE(Run("movie-with-chapters a.avi -o " + one + " --chapters 3").Exit, 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "one.xml"));
    fs::copy_file(movie, folder.Path() / kIntroFile);
    EXPECT_EQ(Run("movie-with-chapters a.avi -o " + one + " --chapters 0").Exit, 2);
    EXPECT_FALSE(fs::exists(folder.Path() / "one.xml"));

    const CommandResult made = Run("movie-with-chapters a.avi -o " + one + " --chapters 3");
    ASSERT_EQ(made.Exit, 0) << made.Out;
    EXPECT_EQ(Run("check " + one).Exit, 0);
    const std::string menus = Run("menus " + one).Out;
    EXPECT_TRUE(std::regex_search(menus, std::regex(R"(exit \d+: PlayAction titleID=(\d+) mediaObjectID=\1;\n)")))
        << menus;
    EXPECT_EQ(menus.find("\n    button"), std::string::npos) << menus;

    fs::copy_file(movie, folder.Path() / "b.avi");
    const std::string many = Quoted(folder.Path() / "many.xml");
    const CommandResult titles = Run("movies-with-menu a.avi b.avi a.avi -o " + many + " --every 1");
    ASSERT_EQ(titles.Exit, 0) << titles.Out;
    EXPECT_TRUE(std::regex_match(titles.Out, std::regex(R"(\d+\n)"))) << titles.Out;
    EXPECT_TRUE(fs::is_regular_file(folder.Path() / "many_menu.avi"));
    EXPECT_EQ(Run("check " + many).Exit, 0);
    const std::string listing = Run("menus " + many).Out;
    const std::regex play(R"(select \d+: PlayAction titleID=(\d+) mediaObjectID=\1;)");
    const auto plays = std::distance(std::sregex_iterator(listing.begin(), listing.end(), play), std::sregex_iterator());
    EXPECT_EQ(plays, 3) << listing;
}

} // namespace
} // namespace mw::test
