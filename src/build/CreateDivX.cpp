#include "build/CreateDivX.h"

#include "build/CreateOverlays.h"
#include "build/DebugCheckpoint.h"
#include "build/ProjectCopy.h"
#include "build/ToolCommands.h"
#include "build/ToolFiles.h"
#include "document/CheckForErrors.h"
#include "document/Project.h"
#include "media/AviCache.h"

namespace mw {

namespace fs = std::filesystem;

namespace {

constexpr const char* kMuxer = "DivXMux.exe";

// The muxer in the build folder, copied there from the program's folder when missing.
bool MuxerInBuildFolder(const DivXBuild& build, Prompt& prompt)
{
    const fs::path tmp = BuildFolder(build.ProgramFolder);
    if (FileThere(tmp / kMuxer))
        return true;
    std::error_code error;
    if (FileThere(build.ProgramFolder / kMuxer)) {
        if (fs::copy_file(build.ProgramFolder / kMuxer, tmp / kMuxer, error))
            return true;
        prompt.Message((tmp / kMuxer).string() + ": " + error.message(), {}, PromptIcon::Critical);
        return false;
    }
    MuxerMissing(build.ProgramFolder, build.Lang, prompt);
    return false;
}

} // namespace

DivXBuild BuildOfProject(Project& project)
{
    return {project.Doc,
            project.Values(),
            project.Lang(),
            project.ProgramFolder(),
            project.Canvas.Colors,
            project.ItemsEnabled && project.NoCreateOverlays,
            project.MovieFps,
            {},
            false,
            {}};
}

BuildEnd mnuCreateDivX_Click(const DivXBuild& build, Prompt& prompt, ToolRunner& runner, BuildLog& log)
{
    AviCacheScope movies; // each movie is read once, also in a thread of its own
    const Settings& options = build.Options;
    const auto checkpoint = [&](const char* text) {
        log.Step(text);
        DebugCheckpoint(options, prompt, text);
    };
    // Cancel stops a running tool at once and the painting at its next picture; the other
    // steps are short, so it is looked at between them.

    if (options.checkFirst) {
        checkpoint("Befor check for errors");
        if (!CheckForErrors(build.Doc, build.Lang, prompt, false) &&
            prompt.Ask("There was errors while checking. Continue to create DivX?", PromptButtons::YesNo,
                       PromptAnswer::No, {}, PromptIcon::Question) != PromptAnswer::Yes)
            return BuildEnd::Cancelled;
        checkpoint("After check for errors");
    }
    const fs::path tmp = BuildFolder(build.ProgramFolder);
    std::error_code error;
    fs::create_directories(tmp, error);
    if (error) {
        prompt.Message(tmp.string() + ": " + error.message(), {}, PromptIcon::Critical);
        return BuildEnd::Failed;
    }
    checkpoint("Before DivXMux");
    if (!MuxerInBuildFolder(build, prompt))
        return BuildEnd::Failed;
    if (runner.Cancelled())
        return BuildEnd::Cancelled;

    checkpoint("Before create overlays");
    OverlayRects rects;
    if (!build.NoCreateOverlays &&
        !CreateOverlays(build.Doc, build.ProgramFolder, build.Colours, build.Lang, prompt, log, runner, rects))
        return runner.Cancelled() ? BuildEnd::Cancelled : BuildEnd::Failed;

    checkpoint("Before replace");
    const auto declined = [](int) { return ToolAnswer{}; };
    MenuVideoTools tools{runner, log, build.ProgramFolder,
                         build.LocateTool ? build.LocateTool : std::function<ToolAnswer(int)>(declined)};
    if (!ReplaceAviNamesForOverlaysSaveAndReverse(build.Doc, build.ProgramFolder, build.Fps, options, build.Lang,
                                                  prompt, build.PrepareOnly ? nullptr : &tools))
        return BuildEnd::Failed;
    if (runner.Cancelled())
        return BuildEnd::Cancelled;

    checkpoint("Before create");
    const MuxJob job{build.Doc,     options,       build.Lang,    build.ProgramFolder, rects,
                     build.Colours, build.NoCreateOverlays, build.Output, build.PrepareOnly};
    return CreateDivXwithOverlays(job, prompt, runner, log);
}

} // namespace mw
