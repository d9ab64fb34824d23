// A five-second still menu of 720x576 at 25 fps: our own route (the pic2avi process, and the
// call itself) side by side with ffmpeg's MPEG-4 encoder looping the same picture, in one run.
#include "build/PicturesToMenuVideo.h"
#include "core/ScriptedPrompt.h"
#include "i18n/LangDoc.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

const fs::path& Folder()
{
    static const fs::path folder = [] {
        const fs::path f = fs::temp_directory_path() / "menuwright-bench-pic2avi";
        fs::create_directories(f);
        return f;
    }();
    return folder;
}

// A busy picture, so that the encoders have real work in their key frames.
const fs::path& Picture()
{
    static const fs::path file = [] {
        const fs::path picture = Folder() / "menu.png";
        const std::string command = "ffmpeg -nostdin -y -loglevel error -f lavfi -i testsrc2=s=720x576 -frames:v 1 '" +
                                    picture.string() + "'";
        if (std::system(command.c_str()) != 0)
            throw std::runtime_error("ffmpeg could not make the picture");
        return picture;
    }();
    return file;
}

std::string Quoted(const fs::path& path) { return "'" + path.string() + "'"; }

void RunCommand(benchmark::State& state, const std::string& command)
{
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0)
            state.SkipWithError(("failed: " + command).c_str());
    }
    std::error_code missing;
    state.counters["bytes"] = static_cast<double>(fs::file_size(Folder() / "out.avi", missing));
}

void BM_PicToAvi_Process_Ffmpeg(benchmark::State& state)
{
    RunCommand(state, "ffmpeg -nostdin -y -loglevel error -loop 1 -t 5 -i " + Quoted(Picture()) +
                          " -c:v mpeg4 -vtag DX50 " + Quoted(Folder() / "out.avi"));
}

void BM_PicToAvi_Process_CliPic2Avi(benchmark::State& state)
{
    RunCommand(state, std::string("'") + MENUWRIGHT_CLI_PATH + "' pic2avi " + Quoted(Picture()) + " -o " +
                          Quoted(Folder() / "out.avi") + " --fps 25 >/dev/null 2>&1");
}

void BM_PicToAvi_CreateAviFromaPic(benchmark::State& state)
{
    const mw::Settings settings;
    const mw::LangDoc lang;
    for (auto _ : state) {
        mw::ScriptedPrompt prompt;
        if (!mw::CreateAviFromaPic(Picture().string(), (Folder() / "out.avi").string(), 25, "",
                                   mw::kPicToMenuBuiltIn, settings, lang, prompt))
            state.SkipWithError("the menu video was not made");
    }
}

} // namespace

BENCHMARK(BM_PicToAvi_Process_Ffmpeg)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PicToAvi_Process_CliPic2Avi)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PicToAvi_CreateAviFromaPic)->Unit(benchmark::kMillisecond);
