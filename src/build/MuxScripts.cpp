#include "build/MuxScripts.h"

#include "build/ToolFiles.h"
#include "core/NumberText.h"
#include "core/Paths.h"
#include "core/Text.h"
#include "core/Version.h"
#include "document/ExtraInfo.h"
#include "document/TreeQueries.h"
#include "media/AviFile.h"
#include "media/StreamTexts.h"


namespace mw {

namespace fs = std::filesystem;

namespace {

constexpr const char* kDoOverlays = "DoOverlays.bat";
constexpr const char* kFinalDivX = "FinalDivX.bat";

std::string CrLfLines(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

// "the drive" of the batch files: that of the program's path as the tools see it.
std::string Drive(const fs::path& programFolder)
{
    return ToToolPath(programFolder.string()).substr(0, 2);
}

std::string ToolTmp(const fs::path& programFolder)
{
    return ToToolPath(BuildFolder(programFolder).string());
}

std::optional<pugi::xml_node> ExtraInfoOf(const DocNode* node, pugi::xml_document& doc)
{
    if (node && !node->Tag.empty() && ParseExtraInfo(node->Tag, doc) && doc.first_child())
        return doc.first_child();
    return std::nullopt;
}

long ButtonsOf(const DocNode* node, std::string& menu)
{
    pugi::xml_document doc;
    const auto info = ExtraInfoOf(node, doc);
    if (!info || !info->attribute("Buttons"))
        return 0;
    menu = Trim(info->attribute("menuID").value());
    return static_cast<long>(LeadingNumber(info->attribute("Buttons").value()));
}

std::string EchoBanner(const std::string& title, char rule, std::size_t width)
{
    return CrLfLines({"ECHO OFF", "ECHO " + std::string(width, rule), "ECHO " + title, "ECHO " + std::string(width, rule),
                      "ECHO ON"});
}

std::string IntermediateName(const MenuVideo& video)
{
    return Quoted(video.ID + "_" + video.File + ".divx");
}

std::string MenuBlock(const std::string& title, const std::string& command, const fs::path& programFolder)
{
    return EchoBanner(title, '*', 31) +
           CrLfLines({Drive(programFolder), "cd " + Quoted(ToolTmp(programFolder)), command, "", ""});
}

std::string BlockA(const MenuVideo& video, const fs::path& programFolder)
{
    std::string command = "DivXMux.exe -v " + Quoted(video.Video);
    if (const std::optional<AviFile> avi = AviFile::Open(video.VideoFile.string())) {
        std::string audio;
        std::string subtitles;
        int audioCount = 0;
        int subtitleCount = 0;
        for (std::size_t i = 0; i < avi->StreamCount(); ++i) {
            const std::string kind = Lower(KindWord(KindOfStream(avi->Stream(i).Info)));
            if (kind == "audio")
                audio += " -a #" + std::to_string(++audioCount) + " " + Quoted(video.Video);
            else if (kind == "subtitle")
                subtitles += " -s #" + std::to_string(++subtitleCount) + " " + Quoted(video.Video);
        }
        command += audio + subtitles;
    }
    command += " -o " + IntermediateName(video);
    return MenuBlock("Creating menu avi for ID " + video.TrackID, command, programFolder);
}

std::string LinkerFileName(const MenuVideo& video)
{
    return "linkerfile" + video.Obj + ".txt";
}

std::string BlockB(const MuxJob& job, const MenuVideo& video)
{
    std::string command = "DivXMux.exe -s " + LinkerFileName(video) + " -m -v " + Quoted(video.Video);
    const DocTree& tree = job.Doc.Tree;
    if (const DocNode* menu = tree.ObjectNode(video.Menu)) {
        const std::string audioID = GetPropertyInNode(*menu, "backgroundaudioid");
        const DocNode* track = Lower(audioID) == "none" ? nullptr : tree.ObjectNode(audioID);
        const DocNode* source = track ? tree.ObjectNode(GetPropertyInNode(*track, "mediasourceid")) : nullptr;
        const std::string location = source ? GetPropertyInNode(*source, "location") : std::string();
        const std::string file = location.empty() ? location : ResolveLocation(job.Doc.ProjectFile, location);
        if (!file.empty() && FileThere(file))
            command += " -a " + Quoted(ToToolPath(file));
    }
    command += " -o " + IntermediateName(video);
    return MenuBlock("Creating overlays for ID " + video.TrackID, command, job.ProgramFolder);
}

std::string ColourLine(int index, Colour colour)
{
    return std::to_string(index) + " = (" + std::to_string(colour & 0xFF) + ", " + std::to_string(colour >> 8 & 0xFF) +
           ", " + std::to_string(colour >> 16 & 0xFF) + ")";
}

std::string SecondsTime(long seconds)
{
    return PadZeros(seconds / 3600, 2) + ":" + PadZeros(seconds / 60 % 60, 2) + ":" + PadZeros(seconds % 60, 2) + ".000";
}

bool RemoveIfThere(const fs::path& file)
{
    std::error_code error;
    return !FileThere(file) || (fs::remove(file, error) && !error);
}

// Moves the progress bar on at each menu that the overlay script announces.
class ProgressByMenu : public BuildLog {
public:
    ProgressByMenu(BuildLog& log, int done, int total) : log_(log), done_(done), total_(total) {}
    void Step(const std::string& text) override { log_.Step(text); }
    void Progress(int done, int total) override { log_.Progress(done, total); }
    void Line(const std::string& text) override
    {
        log_.Line(text);
        if (text.starts_with("Creating menu avi for ID ") || text.starts_with("Creating overlays for ID "))
            log_.Progress(++done_, total_);
    }
    void ShowTextFile(const fs::path& file) override { log_.ShowTextFile(file); }
    void OpenResult(const fs::path& file) override { log_.OpenResult(file); }

private:
    BuildLog& log_;
    int done_;
    int total_;
};

} // namespace

const DocNode* MenuTracksOf(const Document& doc)
{
    return ChildNamed(ChildNamed(doc.Tree.Root(), "Media"), "MenuTracks");
}

bool IsPictureMenu(const std::string& location)
{
    return EndsWithNoCase(location, ".jpg");
}

std::string OverlayBitmapName(const std::string& menuFile, const std::string& menuID, const std::string& sourceID,
                              const std::string& startFrame)
{
    return std::string(kAppTitle) + "_" + menuFile + menuID + "_" + sourceID + "_" + startFrame + ".bmp";
}

fs::path BuildFolder(const fs::path& programFolder)
{
    return programFolder / "tmp";
}

std::vector<MenuVideo> MenuVideosWithButtons(const Document& doc, const fs::path& programFolder)
{
    std::vector<MenuVideo> videos;
    const DocNode* tracks = MenuTracksOf(doc);
    if (!tracks)
        return videos;
    for (const auto& track : *tracks) {
        if (track->Text != "MediaTrack" || GetPropertyInNode(*track, "type") != "video")
            continue;
        MenuVideo video;
        video.TrackID = GetPropertyInNode(*track, "objectid");
        video.ID = GetPropertyInNode(*track, "mediasourceid");
        const DocNode* source = doc.Tree.ObjectNode(video.ID);
        video.Buttons = ButtonsOf(track.get(), video.Menu);
        if (video.Buttons <= 0)
            video.Buttons = ButtonsOf(source, video.Menu);
        if (video.Buttons <= 0)
            continue;
        const std::string location = source ? GetPropertyInNode(*source, "location") : std::string();
        video.File = LocationFileName(location);
        video.Obj = source ? GetPropertyInNode(*source, "objectid") : std::string();
        video.VideoFile = IsPictureMenu(location)
                              ? BuildFolder(programFolder) / (video.ID + "_" + video.File + ".avi")
                              : fs::path(ResolveLocation(doc.ProjectFile, location));
        video.Video = ToToolPath(video.VideoFile.string());
        videos.push_back(std::move(video));
    }
    return videos;
}

void TakeMenuColours(const DocNode* menu, std::array<Colour, 3>& colours)
{
    pugi::xml_document doc;
    if (const auto info = ExtraInfoOf(menu, doc)) {
        for (std::size_t i = 0; i < colours.size(); ++i) {
            if (const pugi::xml_attribute colour = info->attribute(("Color" + std::to_string(i + 1)).c_str()))
                colours[i] = static_cast<Colour>(LeadingNumber(colour.value()));
        }
    }
}

std::string LinkerFileText(const MuxJob& job, const MenuVideo& video)
{
    std::array<Colour, 3> colours = job.Colours;
    TakeMenuColours(job.Doc.Tree.ObjectNode(video.Menu), colours);
    std::vector<std::string> lines{"0 = (0, 0, 0)", ColourLine(1, colours[0]), ColourLine(2, colours[1]),
                                   ColourLine(3, colours[2]), "", "SUBPALETTE (0 1 2 3)"};
    const fs::path tmp = BuildFolder(job.ProgramFolder);
    for (long n = 0; n < video.Buttons; ++n) {
        const std::string picture = OverlayBitmapName(video.File, video.Menu, video.Obj, std::to_string(n));
        if (!FileThere(tmp / picture))
            break;
        const auto rect = job.Rects.find(video.Menu + "_" + video.Obj + "_" + std::to_string(n));
        const std::string time = SecondsTime(n);
        lines.push_back(time + "\t" + time + "\t" + Quoted(picture) + "\t" +
                        (rect == job.Rects.end() ? std::string() : rect->second));
    }
    return CrLfLines(lines);
}

bool WriteOverlayScripts(const MuxJob& job, std::string& error)
{
    const fs::path tmp = BuildFolder(job.ProgramFolder);
    const std::vector<MenuVideo> videos = MenuVideosWithButtons(job.Doc, job.ProgramFolder);
    std::string script = EchoBanner("** Creating OVERLAYS **", '*', 23) + "\r\n";
    for (const MenuVideo& video : videos)
        script += BlockA(video, job.ProgramFolder);
    for (const MenuVideo& video : videos) {
        if (!WriteToolFile(tmp / LinkerFileName(video), LinkerFileText(job, video), error))
            return false;
        script += BlockB(job, video);
    }
    if (job.Options.addPauseOverlays)
        script += "pause\r\n";
    return WriteToolFile(tmp / kDoOverlays, script, error);
}

std::string FinalDivXText(const MuxJob& job, const fs::path& output)
{
    const std::string projectFolder = FolderOf(job.Doc.ProjectFile);
    const std::string program = ToToolPath(job.ProgramFolder.string());
    const std::string tmp = ToolTmp(job.ProgramFolder);
    const std::string command = Quoted(program + "\\tmp\\divxmux.exe") + " -x " +
                                Quoted(tmp + "\\" + fs::path(job.Doc.ProjectFile).filename().string()) + " -t " +
                                Quoted(tmp) + " -o " + Quoted(ToToolPath(output.string()));
    std::string text = EchoBanner("** Creating final DivX **", '*', 25) +
                       CrLfLines({Drive(job.ProgramFolder),
                                  "cd " + Quoted(projectFolder.empty() ? program : ToToolPath(projectFolder)), command});
    if (job.Options.addPauseDivX)
        text += "pause\r\n";
    return text;
}

std::optional<fs::path> DivXOutputPath(const std::string& projectFile, const Settings& options, const LangDoc& lang,
                                       Prompt& prompt, bool keepExisting)
{
    std::string path;
    if (options.NewDivXSaveToFolder == "1") {
        path = projectFile;
    } else if (options.NewDivXSaveToFolder == "2") {
        FileDialogRequest request;
        request.Title = "Select the output DivX file";
        request.Filter = "*.divx|*.divx";
        request.DefaultExt = "divx";
        request.OverwritePrompt = true;
        const std::optional<std::string> chosen = prompt.SaveFile(request);
        if (!chosen || chosen->empty())
            return std::nullopt;
        return fs::path(*chosen);
    } else {
        path = (fs::path(options.NewDivXSaveToFolder) / fs::path(projectFile).filename()).string();
    }
    // The extension is cut within the file name only, never at a dot of a folder.
    const std::size_t name = path.find_last_of('/') + 1;
    if (const std::size_t dot = path.rfind('.'); dot != std::string::npos && dot >= name)
        path.resize(dot);
    if (options.replaceExistDivX) {
        if (!keepExisting && !RemoveIfThere(path + ".divx"))
            prompt.Message(FormTexts(lang, "Form1")(47, "Failed to delete existing DivX file"), {},
                           PromptIcon::Critical);
        return fs::path(path + ".divx");
    }
    std::string candidate = path;
    for (long k = 1; FileThere(candidate + ".divx"); ++k)
        candidate = path + "_" + std::to_string(k);
    return fs::path(candidate + ".divx");
}

fs::path MuxLogPath(const fs::path& output)
{
    std::string text = output.string();
    text.resize(text.size() >= 5 ? text.size() - 5 : 0);
    return text + ".log";
}

void CleanBuildFolder(const fs::path& programFolder, const Settings& options, bool logShown)
{
    const fs::path tmp = BuildFolder(programFolder);
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(tmp, error)) {
        if (!entry.is_regular_file(error))
            continue;
        const std::string name = Lower(entry.path().filename().string());
        const bool remove = (options.deleteTemp && !(logShown && name == "divxmux.log")) ||
                            (options.deleteBmp && name.ends_with(".bmp")) ||
                            (options.deleteDivX && name.ends_with(".divx"));
        if (remove)
            fs::remove(entry.path(), error);
    }
}

BuildEnd CreateDivXwithOverlays(const MuxJob& job, Prompt& prompt, ToolRunner& runner, BuildLog& log)
{
    const fs::path tmp = BuildFolder(job.ProgramFolder);
    const int menus = static_cast<int>(MenuVideosWithButtons(job.Doc, job.ProgramFolder).size());
    const int total = 2 * menus + 1;
    ProgressByMenu progress(log, 0, total);
    const auto failed = [&runner] { return runner.Cancelled() ? BuildEnd::Cancelled : BuildEnd::Failed; };
    // Without Wine every file is still written, so that the user can run the scripts by hand.
    const bool run = !job.PrepareOnly && runner.HaveWine();
    std::string error;
    if (!job.NoCreateOverlays) {
        log.Step("Creating overlays");
        if (!WriteOverlayScripts(job, error)) {
            prompt.Message(error, {}, PromptIcon::Critical);
            return BuildEnd::Failed;
        }
        if (run && !RunTool(runner, tmp / kDoOverlays, {}, tmp, progress, prompt))
            return failed();
    }

    const std::optional<fs::path> output = job.Output.empty()
                                               ? DivXOutputPath(job.Doc.ProjectFile, job.Options, job.Lang, prompt, job.PrepareOnly)
                                               : std::optional(job.Output);
    if (!output)
        return BuildEnd::Cancelled;
    const fs::path muxLog = MuxLogPath(*output);
    log.Step("Creating the final DivX");
    log.Progress(total - 1, total);
    if (!WriteToolFile(tmp / kFinalDivX, FinalDivXText(job, *output), error)) {
        prompt.Message(error, {}, PromptIcon::Critical);
        return BuildEnd::Failed;
    }
    if (job.PrepareOnly)
        return BuildEnd::Prepared;
    if (!run) {
        log.Line(kByHandLine);
        if (!job.NoCreateOverlays)
            log.Line(HandCommand(tmp / kDoOverlays, {}, tmp));
        log.Line(HandCommand(tmp / kFinalDivX, {}, tmp));
        prompt.Message(NoWineMessage(), {}, PromptIcon::Warning);
        return BuildEnd::Failed;
    }
    RemoveFile(muxLog);
    if (!RunTool(runner, tmp / kFinalDivX, {}, tmp, log, prompt))
        return failed();
    log.Progress(total, total);

    bool logShown = false;
    std::error_code ignored;
    if (FileThere(muxLog)) {
        if (fs::file_size(muxLog, ignored) > 0) {
            log.ShowTextFile(muxLog);
            logShown = true;
        } else {
            RemoveFile(muxLog);
        }
    }
    if (job.Options.RunDivX && !logShown && FileThere(*output))
        log.OpenResult(*output);
    CleanBuildFolder(job.ProgramFolder, job.Options, logShown);
    return logShown ? BuildEnd::Failed : BuildEnd::Done;
}

} // namespace mw
