#include "dvd/DvdExport.h"

#include "build/MuxScripts.h"
#include "core/ScriptedPrompt.h"
#include "document/Project.h"
#include "dvd/DvdAuthorXml.h"
#include "dvd/DvdTools.h"
#include "dvd/DvdTranscode.h"
#include "dvd/Subpicture.h"
#include "media/TitleNodes.h"
#include "media/mAVIDecs.h"
#include "menuplayer/ButtonOverlay.h"

#include <QImageReader>

#include <chrono>
#include <fstream>
#include <random>

namespace mw {

namespace fs = std::filesystem;

namespace {

std::string UniqueName(const std::string& stem)
{
    std::random_device random;
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    return stem + "-" + std::to_string(now) + "-" + std::to_string(random() % 100000);
}

bool WriteText(const fs::path& file, const std::string& text, std::string& error)
{
    std::ofstream out(file, std::ios::binary);
    out << text;
    out.close();
    if (out)
        return true;
    error = file.string() + ": cannot be written";
    return false;
}

// Removes what a run made and leaves nothing else changed; errors are of no use by then.
void RemoveAll(const fs::path& path)
{
    std::error_code ec;
    if (!path.empty())
        fs::remove_all(path, ec);
}

// The parts of one step on the progress bar, for the frames of a transcode.
constexpr int kStepParts = 1000;

class Export {
public:
    Export(Project& project, const DvdExportRequest& request, ToolRunner& runner, BuildLog& log)
        : project_(project), request_(request), runner_(runner), log_(log)
    {
    }

    ~Export()
    {
        RemoveAll(work_);
        RemoveAll(fresh_);
        if (request_.Iso)
            RemoveAll(isoPart_);
    }

    bool Run(std::string& error)
    {
        if (!HaveDvdTools({DvdTool::Ffmpeg, DvdTool::Spumux, DvdTool::Dvdauthor}, error) ||
            (request_.Iso && !HaveDvdTools({DvdTool::Genisoimage}, error)))
            return false;
        plan_ = PlanDvdExport(project_, request_);
        for (const std::string& left : plan_.Unsupported)
            log_.Line("Not on the disc: " + left);
        if (plan_.Titles.empty()) {
            error = "The project has no title to put on a DVD";
            return false;
        }
        if (!Prepare(error))
            return false;
        fs::path target = fs::absolute(request_.Target).lexically_normal();
        if (target.filename().empty()) // "disc/"
            target = target.parent_path();
        fresh_ = target.parent_path() / ("." + target.filename().string() + UniqueName(".new"));
        files_.Folder = work_;
        return Transcodes(error) && Buttons(error) && Author(error) && Image(error) && Replace(target, error);
    }

private:
    bool Prepare(std::string& error)
    {
        steps_ = int(plan_.Titles.size()) + 1 + (request_.Iso ? 1 : 0);
        for (const DvdLanguage& language : plan_.Languages) {
            for (const DvdMenu& menu : language.Menus)
                steps_ += menu.Buttons.empty() ? 1 : 2;
        }
        work_ = project_.ProgramFolder() / "tmp" / UniqueName("dvd");
        std::error_code ec;
        fs::create_directories(work_, ec);
        if (ec)
            error = work_.string() + ": " + ec.message();
        return !ec;
    }

    void Next(const std::string& step)
    {
        log_.Step(step);
        log_.Progress(done_++ * kStepParts, steps_ * kStepParts);
    }

    bool Tool(DvdTool tool, const std::vector<std::string>& arguments, std::string& error,
              const ToolStreams& streams = {})
    {
        return RunDvdTool(runner_, tool, arguments, work_, Lines(), error, streams);
    }

    ToolRunner::LineSink Lines()
    {
        return [this](const std::string& line) { log_.Line(line); };
    }

    bool Transcode(const DvdTranscodeJob& job, std::string& error)
    {
        // The bar moves with the frames of the step under way.
        const DvdProgress frames = [this](int done, int total) {
            if (total > 0)
                log_.Progress((done_ - 1) * kStepParts + int(long(done) * kStepParts / total), steps_ * kStepParts);
        };
        return TranscodeForDvd(runner_, job, frames, Lines(), error);
    }

    bool Transcodes(std::string& error)
    {
        for (std::size_t l = 0; l < plan_.Languages.size(); ++l) {
            for (const DvdMenu& menu : plan_.Languages[l].Menus) {
                Next("Transcoding " + Label(menu));
                DvdTranscodeJob job{menu.Video, menu.Frames.Start, menu.Frames.End, menu.AudioFile,
                                    menu.AudioStreams, plan_.Standard, files_.MenuVideo(int(l), menu.Number), {}};
                if (!Transcode(job, error))
                    return false;
            }
        }
        for (const DvdTitle& title : plan_.Titles) {
            Next("Transcoding title " + title.ID);
            DvdTranscodeJob job{title.Movie, title.Frames.Start, title.Frames.End, {}, title.AudioStreams,
                                plan_.Standard, files_.Title(title.Number), DvdChapterFrames(title, plan_.Standard)};
            if (!Transcode(job, error))
                return false;
        }
        return true;
    }

    std::string Label(const DvdMenu& menu) const
    {
        return "menu " + menu.ID + (menu.Name.empty() ? "" : " \"" + menu.Name + "\"");
    }

    bool Buttons(std::string& error)
    {
        for (std::size_t l = 0; l < plan_.Languages.size(); ++l) {
            for (const DvdMenu& menu : plan_.Languages[l].Menus) {
                if (menu.Buttons.empty())
                    continue;
                Next("Putting the buttons into " + Label(menu));
                const int language = int(l);
                std::vector<SubpictureButton> buttons;
                for (const DvdButton& button : menu.Buttons) {
                    PlayerOverlay overlay;
                    if (!PaintButtonOverlay(project_, menu.ID, button.ID, overlay))
                        continue;
                    const DvdArea where = ToDvdFrame({int(overlay.Where.Left), int(overlay.Where.Top),
                                                      int(overlay.Where.Width), int(overlay.Where.Height)},
                                                     menu.Picture.Width, menu.Picture.Height, plan_.Standard);
                    buttons.push_back({where.Left, where.Top, where.Width, where.Height, overlay.Picture});
                }
                const fs::path highlight = files_.Highlight(language, menu.Number);
                const fs::path select = files_.Select(language, menu.Number);
                const fs::path xml = files_.SpumuxXml(language, menu.Number);
                if (!WriteSubpictures(buttons, kDvdFrameWidth, DvdFrameHeight(plan_.Standard), menu.Colours,
                                      menu.Colours, highlight, select, error) ||
                    !WriteText(xml, SpumuxXml(plan_, menu, highlight, select), error) ||
                    !Tool(DvdTool::Spumux, {"-m", "dvd", "-s", "0", xml.string()}, error,
                          {files_.MenuVideo(language, menu.Number), files_.MenuButtons(language, menu.Number)}))
                    return false;
            }
        }
        return true;
    }

    bool Author(std::string& error)
    {
        Next("Authoring the DVD-Video");
        return WriteText(files_.AuthorXml(), DvdAuthorXml(plan_, files_, fresh_), error) &&
               Tool(DvdTool::Dvdauthor, {"-x", files_.AuthorXml().string()}, error);
    }

    bool Image(std::string& error)
    {
        if (!request_.Iso)
            return true;
        Next("Writing the ISO image");
        isoPart_ = *request_.Iso;
        isoPart_ += ".part";
        // UDF, through which players read a DVD-Video.
        return Tool(DvdTool::Genisoimage,
                    {"-dvd-video", "-udf", "-V", "MENUWRIGHT", "-o", fs::absolute(isoPart_).string(), fresh_.string()},
                    error);
    }

    // The new disc takes the old one's place; should that fail, the old one comes back.
    bool Replace(const fs::path& target, std::string& error)
    {
        std::error_code ec;
        const fs::path old = target.parent_path() / ("." + target.filename().string() + UniqueName(".old"));
        const bool hadTarget = fs::exists(target, ec);
        if (hadTarget)
            fs::rename(target, old, ec);
        if (!ec)
            fs::rename(fresh_, target, ec);
        if (ec) {
            error = target.string() + ": " + ec.message();
            if (hadTarget && !fs::exists(target))
                fs::rename(old, target, ec);
            return false;
        }
        fresh_.clear();
        RemoveAll(old);
        if (request_.Iso) {
            fs::rename(isoPart_, *request_.Iso, ec);
            if (ec) {
                error = request_.Iso->string() + ": " + ec.message();
                return false;
            }
        }
        log_.Progress(steps_ * kStepParts, steps_ * kStepParts);
        log_.Line("The DVD-Video is in " + target.string());
        return true;
    }

    Project& project_;
    const DvdExportRequest& request_;
    ToolRunner& runner_;
    BuildLog& log_;
    DvdPlan plan_;
    DvdFiles files_;
    fs::path work_;
    fs::path fresh_;
    fs::path isoPart_;
    int steps_ = 0;
    int done_ = 0;
};

} // namespace

DvdPlan PlanDvdExport(Project& project, const DvdExportRequest& request)
{
    // Read quietly, as the export runs beside the window: a movie that cannot be read fails its
    // transcode, which tells why.
    ScriptedPrompt quiet;
    const DvdProbe probe = [&quiet](const std::string& file) {
        DvdSource source;
        if (IsPictureMenu(file)) {
            const QSize size = QImageReader(QString::fromStdString(file)).size();
            return DvdSource{std::max(0, size.width()), std::max(0, size.height()), 0};
        }
        long start = 0, length = 0, width = 0, height = 0;
        float fps = 0;
        if (GetStreamByType(file, "video", start, length, fps, width, height, quiet) >= 0)
            source = {int(width), int(height), fps};
        return source;
    };
    // By default the standard of the first title's rate, which is what most of the disc plays.
    const std::vector<DocNode*> titles = TitleNodes(project.Doc);
    const double fps = titles.empty() ? project.MovieFps : probe(TitleFile(project.Doc, *titles.front())).Fps;
    const TvStandard standard = request.Standard.value_or(StandardForRate(fps));
    return PlanDvd(project.Doc, project.Canvas.Colors, standard, request.Language, probe);
}

bool ExportDvd(Project& project, const DvdExportRequest& request, ToolRunner& runner, BuildLog& log,
               std::string& error)
{
    Export run(project, request, runner, log);
    if (run.Run(error))
        return true;
    if (runner.Cancelled())
        error = "The DVD-Video export was cancelled";
    log.Line(error);
    return false;
}

} // namespace mw
