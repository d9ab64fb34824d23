#include "dvd/DvdExport.h"
#include "dvd/DvdTools.h"
#include "dvd/GeneratedDvdProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>

namespace mw::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::HasSubstr;

// What an export tells its log window.
class RecordedLog : public BuildLog {
public:
    void Step(const std::string& text) override { Steps.push_back(text); }
    void Progress(int done, int total) override { Moves.emplace_back(done, total); }
    void Line(const std::string& text) override
    {
        Lines.push_back(text);
        if (OnLine)
            OnLine(text);
    }
    void ShowTextFile(const fs::path&) override {}
    void OpenResult(const fs::path&) override {}

    std::vector<std::string> Steps;
    std::vector<std::string> Lines;
    std::vector<std::pair<int, int>> Moves;
    std::function<void(const std::string&)> OnLine;
};

// Whatever the export made for itself beside the target or in the program's tmp folder.
std::vector<std::string> Leftovers(const fs::path& target, const fs::path& programFolder)
{
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(target.parent_path())) {
        if (entry.path().filename().string().starts_with("." + target.filename().string()))
            found.push_back(entry.path().string());
    }
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(programFolder / "tmp", ec)) {
        if (entry.path().filename().string().starts_with("dvd"))
            found.push_back(entry.path().string());
    }
    return found;
}

class DvdExport : public GeneratedDvdProject {
protected:
    void SetUp() override
    {
        for (const char* tool : {"ffmpeg", "spumux", "dvdauthor", "genisoimage", "lsdvd", "dvdunauthor", "spuunmux"})
            Require(tool);
    }

    // Titles and the starts of their chapters in seconds, as lsdvd reads them.
    std::vector<std::vector<double>> Chapters(const fs::path& disc) const
    {
        pugi::xml_document doc;
        const std::string xml = RunCommand("lsdvd -q -c -Ox " + Quoted(disc) + " 2>/dev/null").Out;
        EXPECT_TRUE(doc.load_string(xml.c_str())) << xml;
        std::vector<std::vector<double>> titles;
        for (pugi::xml_node track : doc.child("lsdvd").children("track")) {
            double at = 0;
            std::vector<double>& starts = titles.emplace_back();
            for (pugi::xml_node chapter : track.children("chapter")) {
                starts.push_back(at);
                at += chapter.child("length").text().as_double();
            }
        }
        return titles;
    }

    // Per menu language, per menu (a program chain that plays a video; dvdauthor adds others
    // for its jumps) the button rectangles in its subpicture, read back with dvdunauthor and
    // spuunmux.
    std::vector<std::vector<std::vector<DvdArea>>> Menus(const fs::path& disc) const
    {
        const fs::path back = folder.Path() / "back";
        fs::create_directories(back);
        EXPECT_EQ(RunCommand("cd " + Quoted(back) + " && dvdunauthor " + Quoted(disc) + " >/dev/null 2>&1").Exit, 0);
        pugi::xml_document doc;
        EXPECT_TRUE(doc.load_file((back / "dvdauthor.xml").c_str()));
        std::vector<std::vector<std::vector<DvdArea>>> languages;
        int n = 0;
        for (pugi::xml_node menus : doc.child("dvdauthor").child("titleset").children("menus")) {
            auto& menusRead = languages.emplace_back();
            for (pugi::xml_node pgc : menus.children("pgc")) {
                const std::string vob = pgc.child("vob").attribute("file").value();
                if (vob.empty())
                    continue;
                const std::string stem = "sp" + std::to_string(n++);
                RunCommand("cd " + Quoted(back) + " && spuunmux -o " + stem + " " + vob + " >/dev/null 2>&1");
                pugi::xml_document spu;
                std::vector<DvdArea>& buttons = menusRead.emplace_back();
                if (!spu.load_file((back / (stem + ".xml")).c_str()))
                    continue;
                for (pugi::xml_node b : spu.child("subpictures").child("stream").child("spu").children("button")) {
                    const int x0 = b.attribute("x0").as_int(), y0 = b.attribute("y0").as_int();
                    buttons.push_back({x0, y0, b.attribute("x1").as_int() - x0, b.attribute("y1").as_int() - y0});
                }
            }
        }
        return languages;
    }
};

TEST_F(DvdExport, TheDiscReadsBackWithItsTitlesChaptersMenusAndButtons)
{
    ASSERT_NO_FATAL_FAILURE(Generate());
    const std::string projectBytes = ReadAll(ProjectFile());
    DvdExportRequest request;
    request.Target = folder.Path() / "disc";
    request.Iso = folder.Path() / "disc.iso";
    request.Standard = TvStandard::Ntsc; // the 25 frames a second of the movies made 29.97
    ToolRunner runner;
    RecordedLog log;
    std::string error;
    ASSERT_TRUE(ExportDvd(project, request, runner, log, error)) << error << "\n"
                                                                 << ::testing::PrintToString(log.Lines);
    const DvdPlan plan = PlanDvdExport(project, request);

    // Each chapter starts at its own frame, not at the group of pictures it falls in.
    const auto chapters = Chapters(request.Target);
    ASSERT_EQ(chapters.size(), plan.Titles.size());
    for (std::size_t t = 0; t < chapters.size(); ++t) {
        const std::vector<long> frames = DvdChapterFrames(plan.Titles[t], plan.Standard);
        ASSERT_EQ(chapters[t].size(), frames.size()) << "title " << t + 1;
        for (std::size_t c = 0; c < frames.size(); ++c)
            EXPECT_NEAR(chapters[t][c], double(frames[c]) * 1001 / 30000, 0.034)
                << "title " << t + 1 << " chapter " << c + 1;
    }
    EXPECT_GE(chapters.front().size(), 7u);
    EXPECT_EQ(Chapters(*request.Iso), chapters);

    const auto menus = Menus(request.Target);
    ASSERT_EQ(menus.size(), plan.Languages.size());
    std::size_t buttons = 0;
    for (std::size_t l = 0; l < menus.size(); ++l) {
        const std::vector<DvdMenu>& planned = plan.Languages[l].Menus;
        ASSERT_EQ(menus[l].size(), planned.size()) << plan.Languages[l].Code;
        for (std::size_t m = 0; m < planned.size(); ++m) {
            std::vector<DvdArea> areas;
            for (const DvdButton& button : planned[m].Buttons)
                areas.push_back(button.Area);
            buttons += areas.size();
            EXPECT_EQ(menus[l][m], areas) << "menu " << planned[m].ID;
        }
    }
    EXPECT_GE(buttons, 20u); // the seven chapters alone have a button each

    // One step each for the transcodes, the menus' buttons, dvdauthor and the image.
    std::size_t steps = plan.Titles.size() + 2;
    for (const DvdLanguage& language : plan.Languages) {
        for (const DvdMenu& menu : language.Menus)
            steps += menu.Buttons.empty() ? 1 : 2;
    }
    EXPECT_EQ(log.Steps.size(), steps);
    // The bar moves with the frames within a transcode, never back, and ends full.
    ASSERT_FALSE(log.Moves.empty());
    const int total = log.Moves.back().second;
    EXPECT_EQ(log.Moves.back().first, total);
    EXPECT_TRUE(std::ranges::is_sorted(log.Moves));
    EXPECT_TRUE(std::ranges::all_of(log.Moves, [total](const auto& move) { return move.second == total; }));
    EXPECT_TRUE(std::ranges::any_of(log.Moves,
                                    [&](const auto& move) { return move.first * long(steps) % total != 0; }));
    EXPECT_EQ(ReadAll(ProjectFile()), projectBytes);
    EXPECT_FALSE(project.FileIsDirty);
    EXPECT_THAT(Leftovers(request.Target, project.ProgramFolder()), ::testing::IsEmpty());
}

TEST_F(DvdExport, AMissingToolOrACancelLeavesTheProjectAndTheOldDiscAsTheyWere)
{
    ASSERT_NO_FATAL_FAILURE(Generate());
    const std::string projectBytes = ReadAll(ProjectFile());
    DvdExportRequest request;
    request.Target = folder.Path() / "disc";
    request.Iso = folder.Path() / "disc.iso";
    fs::create_directories(request.Target);
    { std::ofstream(request.Target / "old.txt") << "the disc before"; }
    { std::ofstream(*request.Iso) << "the image before"; }
    ToolRunner runner;
    RecordedLog log;
    std::string error;

    const std::string path = std::getenv("PATH");
    ::setenv("PATH", (folder.Path() / "nothing").c_str(), 1);
    EXPECT_FALSE(ExportDvd(project, request, runner, log, error));
    ::setenv("PATH", path.c_str(), 1);
    EXPECT_EQ(error, MissingToolMessage(DvdTool::Ffmpeg));
    EXPECT_THAT(log.Steps, ::testing::IsEmpty());

    // Cancel while dvdauthor writes the disc: everything is made but the last steps.
    log.OnLine = [&](const std::string&) {
        if (!log.Steps.empty() && log.Steps.back().starts_with("Authoring"))
            runner.Cancel();
    };
    EXPECT_FALSE(ExportDvd(project, request, runner, log, error));
    EXPECT_EQ(error, "The DVD-Video export was cancelled");
    ASSERT_FALSE(log.Steps.empty());
    EXPECT_EQ(log.Steps.back(), "Authoring the DVD-Video");
    EXPECT_THAT(log.Lines, Contains(HasSubstr("dvdauthor")));

    EXPECT_EQ(ReadAll(request.Target / "old.txt"), "the disc before");
    EXPECT_FALSE(fs::exists(request.Target / "VIDEO_TS"));
    EXPECT_EQ(ReadAll(*request.Iso), "the image before");
    EXPECT_EQ(ReadAll(ProjectFile()), projectBytes);
    EXPECT_THAT(Leftovers(request.Target, project.ProgramFolder()), ::testing::IsEmpty());
}

} // namespace
} // namespace mw::test
