#include "ProjectFixture.h"

#include "document/RecentFiles.h"

namespace {

using Texts = std::vector<std::string>;

TEST(RecentFilesTest, NewestFirstCaseIgnoredAtMostTen)
{
    struct Case {
        const char* Name;
        Texts Before;
        const char* Added;
        Texts After;
    };
    const Texts ten = {"f0", "f1", "f2", "f3", "f4", "f5", "f6", "f7", "f8", "f9"};
    const std::vector<Case> cases = {
        {"first", {}, "/p/a.xml", {"/p/a.xml"}},
        {"new on top", {"/p/a.xml"}, "/p/b.xml", {"/p/b.xml", "/p/a.xml"}},
        {"again moves up", {"/p/a.xml", "/p/b.xml", "/p/c.xml"}, "/p/c.xml", {"/p/c.xml", "/p/a.xml", "/p/b.xml"}},
        {"other case counts as the same", {"/p/a.xml", "/P/B.XML"}, "/p/b.xml", {"/p/b.xml", "/p/a.xml"}},
        {"eleventh pushes the oldest out", ten, "new",
         {"new", "f0", "f1", "f2", "f3", "f4", "f5", "f6", "f7", "f8"}},
        {"a known one of ten drops none", ten, "F9", {"F9", "f0", "f1", "f2", "f3", "f4", "f5", "f6", "f7", "f8"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        Texts files = c.Before;
        mw::AddFileToRecent(files, c.Added);
        EXPECT_EQ(files, c.After);
    }
}

class RecentProjectTest : public mw::test::ProjectFixture {};

TEST_F(RecentProjectTest, ARecentFileOpensAndMovesUpAVanishedOneIsToldAndStays)
{
    const std::string a = WriteProject("a.xml");
    const std::string b = WriteProject("b.xml");
    ASSERT_TRUE(project.OpenFile(a));
    ASSERT_TRUE(project.OpenFile(b));
    ASSERT_TRUE(project.OpenRecentFile(1));
    EXPECT_EQ(project.Doc.ProjectFile, a);
    EXPECT_EQ(program.Values.RecentFiles, (Texts{a, b})); // what SaveValues writes

    std::filesystem::remove(b);
    EXPECT_FALSE(project.OpenRecentFile(1));
    EXPECT_EQ(prompt.Texts(), Texts{"File not found"});
    EXPECT_EQ(project.RecentFiles(), (Texts{a, b}));
    EXPECT_EQ(project.Doc.ProjectFile, a);
}

} // namespace
