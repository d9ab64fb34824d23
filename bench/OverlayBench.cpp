// Painting a 720x576 overlay as the canvas does at every move of a button: each painter from
// scratch, a nine-slice file overlay fitted again, and a text with outline 3 and a shadow. The
// text is also timed as a whole process, side by side with ImageMagick's convert drawing the
// same text into a 4-colour BMP.
#include "BenchFixtures.h"

#include "core/ScriptedPrompt.h"
#include "i18n/LangDoc.h"
#include "render/OverlayFont.h"
#include "render/OverlayPainters.h"
#include "render/TransPaint.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

namespace {

namespace fs = std::filesystem;
using mw::bench::Quoted;

constexpr int kWidth = 720;
constexpr int kHeight = 576;
constexpr const char* kText = "Play the movie";

const fs::path& Folder()
{
    static const fs::path folder = mw::bench::BenchFolder("menuwright-bench-overlay");
    return folder;
}

// Moves alternate between two sizes, so that every repaint starts from nothing.
void Repaint(benchmark::State& state, const std::function<void(mw::TransPaint&)>& setUp)
{
    mw::NeedFontApplication();
    mw::ScriptedPrompt prompt;
    const mw::LangDoc lang;
    mw::TransPaint paint(prompt, lang);
    paint.SetSize(kWidth, kHeight);
    setUp(paint);
    int step = 0;
    for (auto _ : state) {
        paint.SetSize(kWidth, kHeight - (++step & 1));
        benchmark::DoNotOptimize(paint.GetDib().lpBits());
    }
    if (!prompt.Log.empty() || paint.GetDib().Empty())
        state.SkipWithError("the overlay did not paint");
}

void BM_Overlay_Rect(benchmark::State& state)
{
    Repaint(state, [](mw::TransPaint& p) { p.SetDIBFromFunc("CreateRect", 3, "", 0, "", {"Arial", 18}); });
}

void BM_Overlay_Oval(benchmark::State& state)
{
    Repaint(state, [](mw::TransPaint& p) { p.SetDIBFromFunc("CreateOval", 3, "", 0, "", {"Arial", 18}); });
}

void BM_Overlay_Shape1(benchmark::State& state)
{
    Repaint(state, [](mw::TransPaint& p) { p.SetDIBFromFunc("CreateShape1", 3, "", 0, "", {"Arial", 18}); });
}

void BM_Overlay_NineSliceFile(benchmark::State& state)
{
    const fs::path file = Folder() / "Rectangle_.bmp";
    mw::CreateRect(3, 48, 48).Save(file.string());
    Repaint(state, [&](mw::TransPaint& p) { p.SetFilename(file.string()); });
}

void BM_Overlay_TextOutline3Shadow(benchmark::State& state)
{
    Repaint(state, [](mw::TransPaint& p) { p.SetDIBFromFunc("CreateText", 3, kText, 3, "4RB", {"Arial", 36}); });
}

void BM_OverlayText_Process_Cli(benchmark::State& state)
{
    mw::bench::TimeCommand(state, std::string("'") + MENUWRIGHT_CLI_PATH + "' overlay '*Text' 720x576 --text '" +
                                      kText + "' --font-size 36 --outline 3 --shadow 4RB -o " +
                                      Quoted(Folder() / "cli.bmp") + " >/dev/null 2>&1");
}

// The same layers: the shadow 4 pixels down and right, then the body with a 3-pixel outline
// (a stroke of 6 centred on the glyph edges), no anti-aliasing, reduced to 4 colours.
void BM_OverlayText_Process_ImageMagick(benchmark::State& state)
{
    if (std::system("test -x /usr/bin/convert") != 0) {
        state.SkipWithError("ImageMagick's convert is not installed (Debian package imagemagick)");
        return;
    }
    const std::string text = std::string("'") + kText + "'";
    mw::bench::TimeCommand(state, "/usr/bin/convert -size 720x576 xc:'#0000FF' +antialias -font Liberation-Sans "
                                  "-pointsize 27 -gravity center -strokewidth 6 "
                                  "-fill white -stroke white -annotate +4+4 " + text +
                                  " -fill red -stroke yellow -annotate +0+0 " + text +
                                  " -stroke none -annotate +0+0 " + text + " -colors 4 -type Palette BMP3:" +
                                  Quoted(Folder() / "magick.bmp") + " >/dev/null 2>&1");
}

} // namespace

BENCHMARK(BM_Overlay_Rect)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Overlay_Oval)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Overlay_Shape1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Overlay_NineSliceFile)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Overlay_TextOutline3Shadow)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OverlayText_Process_Cli)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_OverlayText_Process_ImageMagick)->Unit(benchmark::kMillisecond);
