// The canvas following the mouse, and a menu shown with its frame, on a menu of 36 buttons over a
// 720x576 DivX movie.
#include "MenusFixture.h"

#include "menus/CanvasCommands.h"
#include "menus/OverlayAttributes.h"
#include "render/cDIB.h"

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>

namespace {

// One step of a drag: the rectangle snapped to the guide lines, the overlay placed by it and
// painted again, and the picture repainted with the frame and every overlay over it.
void BM_Canvas_DragStep(benchmark::State& state)
{
    mw::bench::OpenMenus open;
    mw::Project& project = open.project;
    mw::ParceMenu(project, *open.menus.front());
    // The generated buttons stand in a row far wider than the frame, with tiny overlays: here
    // they stand in a grid over the frame with overlays 6 pixels larger than each rectangle.
    for (std::size_t i = 0; i < project.Canvas.Buttons.size(); ++i) {
        mw::CanvasButton& b = project.Canvas.Buttons[i];
        b.Label = {b.Label.Tag, 20 + long(i % 6) * 115, 20 + long(i / 6) * 90, 100, 40};
        b.Position = mw::kDefaultOverlayPosition;
        mw::PlaceShapeFromTag(b);
    }
    mw::Label1_Click(project, 0);
    project.Canvas.LinesV = {100, 200, 300, 400, 500, 600};
    project.Canvas.LinesH = {100, 200, 300, 400, 500};
    mw::cDIB frame;
    if (!mw::GrabMenuFrame(project, frame))
        state.SkipWithError("no frame");
    const QImage background = frame.ToImage();
    std::vector<QImage> overlays;
    for (std::size_t i = 0; i < project.Canvas.Buttons.size(); ++i)
        overlays.push_back(mw::ButtonOverlayPicture(project, int(i)).ToImage(true));
    QImage screen(background.size(), QImage::Format_ARGB32_Premultiplied);

    long step = 0;
    for (auto _ : state) {
        mw::CanvasButton moved = project.Canvas.Buttons.front();
        moved.Label.Left += step % 40;
        moved.Label.Top += step % 30;
        ++step;
        moved.Label = mw::SnapToGuideLines(project.Canvas, 0, moved.Label);
        mw::PlaceShapeFromTag(moved);
        overlays.front() = mw::ButtonOverlayPicture(project, 0).ToImage(true);
        QPainter p(&screen);
        p.drawImage(0, 0, background);
        for (std::size_t i = 0; i < overlays.size(); ++i) {
            const mw::ButtonShape& o = i == 0 ? moved.Overlay : project.Canvas.Buttons[i].Overlay;
            p.drawImage(QRect(int(o.Left), int(o.Top), int(o.Width), int(o.Height)), overlays[i]);
        }
        benchmark::DoNotOptimize(screen.constBits());
    }
    state.counters["buttons"] = double(project.Canvas.Buttons.size());
}

// A menu shown: ParceMenu and the grab of its frame.
void BM_Canvas_ParceMenuWithFrame(benchmark::State& state)
{
    mw::bench::OpenMenus open;
    std::size_t i = 0;
    mw::cDIB frame;
    for (auto _ : state) {
        mw::ParceMenu(open.project, *open.menus[i++ % open.menus.size()]);
        if (!mw::GrabMenuFrame(open.project, frame))
            state.SkipWithError("no frame");
    }
    state.counters["width"] = frame.Width();
    state.counters["height"] = frame.Height();
    if (!open.prompt.Log.empty())
        state.SkipWithError(open.prompt.Log.front().Text.c_str());
}

BENCHMARK(BM_Canvas_DragStep)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Canvas_ParceMenuWithFrame)->Unit(benchmark::kMillisecond);

} // namespace
