#include "build/StarterLibrary.h"

#include "build/GifFile.h"
#include "build/PicToMenuSteps.h"
#include "build/SubEditSettingsPicture.h"
#include "build/cAVICreator.h"
#include "render/OverlayCanvas.h"
#include "render/OverlayPainters.h"
#include "render/OverlayScheme.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>

#include <functional>

namespace fs = std::filesystem;

namespace mw {

namespace {

// Library frames are small: the nine-slice ones only need their 15-pixel borders and a little
// edge to stretch.
constexpr int kFrame = 48;

// Corner radius and border of the thumbnail border, and its size.
constexpr int kButtonWidth = 160;
constexpr int kButtonHeight = 120;
constexpr int kButtonRadius = 18;
constexpr int kButtonBorder = 10;

using Drawing = std::function<void(OverlayCanvas&)>;

struct LibraryOverlay {
    const char* Name; // below overlays/
    int Width;
    int Height;
    Drawing Draw;
};

void TwoFrames(OverlayCanvas& c)
{
    c.DrawRect(0, 0, kFrame, kFrame, 2, kOverlayRed);
    c.DrawRect(5, 5, kFrame - 5, kFrame - 5, 1, kOverlayYellow);
}

void GlowFrame(OverlayCanvas& c)
{
    c.DrawRect(0, 0, kFrame, kFrame, 1, kOverlayWhite);
    c.DrawRect(2, 2, kFrame - 1, kFrame - 1, 2, kOverlayRed);
    c.DrawRect(3, 3, kFrame - 3, kFrame - 3, 1, kOverlayYellow);
}

// Two L marks in the lower 15 by 15 corners.
void LowerCorners(OverlayCanvas& c)
{
    const int bottom = kFrame - 2;
    c.DrawLine(1, kFrame - 14, 1, bottom, 3, kOverlayRed);
    c.DrawLine(1, bottom, 13, bottom, 3, kOverlayRed);
    c.DrawLine(kFrame - 2, kFrame - 14, kFrame - 2, bottom, 3, kOverlayRed);
    c.DrawLine(kFrame - 14, bottom, kFrame - 2, bottom, 3, kOverlayRed);
}

void Underline(OverlayCanvas& c)
{
    c.DrawLine(4, 33, 115, 33, 4, kOverlayRed);
    c.DrawLine(4, 37, 115, 37, 1, kOverlayYellow);
}

void Bracket(OverlayCanvas& c)
{
    for (const int side : {0, 1}) {
        const int x = side == 0 ? 3 : 116;
        const int tip = side == 0 ? 12 : 107;
        c.DrawLine(tip, 3, x, 3, 3, kOverlayRed);
        c.DrawLine(x, 3, x, 36, 3, kOverlayRed);
        c.DrawLine(x, 36, tip, 36, 3, kOverlayRed);
    }
}

// A chevron left of the caption, pointing at it.
void Arrow(OverlayCanvas& c)
{
    c.DrawLine(4, 6, 20, 20, 4, kOverlayRed);
    c.DrawLine(20, 20, 4, 34, 4, kOverlayRed);
    c.DrawLine(11, 6, 27, 20, 1, kOverlayYellow);
    c.DrawLine(27, 20, 11, 34, 1, kOverlayYellow);
}

// The outline of the thumbnail border, so that the overlay of a chapter button follows it; its
// round corners are cut straight.
void ButtonOutline(OverlayCanvas& c)
{
    const int r = kButtonRadius / 2;
    const int right = kButtonWidth - 3;
    const int bottom = kButtonHeight - 3;
    const QPoint corners[] = {{2 + r, 2},          {right - r, 2}, {right, 2 + r},  {right, bottom - r},
                              {right - r, bottom}, {2 + r, bottom}, {2, bottom - r}, {2, 2 + r}};
    for (std::size_t i = 0; i < std::size(corners); ++i) {
        const QPoint& a = corners[i];
        const QPoint& b = corners[(i + 1) % std::size(corners)];
        c.DrawLine(a.x(), a.y(), b.x(), b.y(), 4, kOverlayRed);
    }
}

const LibraryOverlay kLibrary[] = {
    {"Rectangle_.bmp", kFrame, kFrame, nullptr},
    {"Double_.bmp", kFrame, kFrame, TwoFrames},
    {"Glow_.bmp", kFrame, kFrame, GlowFrame},
    {"Corners}.bmp", kFrame, kFrame, LowerCorners},
    {"Underline.bmp", 120, 40, Underline},
    {"Bracket.bmp", 120, 40, Bracket},
    {"Arrow.bmp", 120, 40, Arrow},
    {"frames/DVD_Button_2.bmp", kButtonWidth, kButtonHeight, ButtonOutline},
};

// The thumbnail border: pure red outside the rounded shape, pure green where the thumbnail
// shows, a silver band between.
QImage ButtonBorder()
{
    QImage image(kButtonWidth, kButtonHeight, QImage::Format_RGB32);
    image.fill(QColor(255, 0, 0));
    QPainter p(&image);
    QPainterPath outer;
    outer.addRoundedRect(QRectF(0, 0, kButtonWidth, kButtonHeight), kButtonRadius, kButtonRadius);
    QLinearGradient silver(0, 0, 0, kButtonHeight);
    silver.setColorAt(0, QColor(235, 235, 240));
    silver.setColorAt(1, QColor(120, 122, 130));
    p.fillPath(outer, silver);
    const QRect window(kButtonBorder, kButtonBorder, kButtonWidth - 2 * kButtonBorder,
                       kButtonHeight - 2 * kButtonBorder);
    p.fillRect(window.adjusted(-1, -1, 1, 1), QColor(60, 60, 70));
    p.fillRect(window, QColor(0, 255, 0));
    return image;
}

// A summer sky: blue growing paler towards the horizon, with soft clouds.
QImage Sky()
{
    QImage image(720, 576, QImage::Format_RGB32);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, image.height());
    sky.setColorAt(0, QColor(40, 90, 180));
    sky.setColorAt(1, QColor(170, 205, 235));
    p.fillRect(image.rect(), sky);
    QRandomGenerator random(20260101); // the same clouds at every build
    p.setPen(Qt::NoPen);
    for (int cloud = 0; cloud < 9; ++cloud) {
        const double cx = random.bounded(720.0);
        const double cy = 60 + random.bounded(360.0);
        const double size = 30 + random.bounded(50.0);
        for (int puff = 0; puff < 7; ++puff) {
            p.setBrush(QColor(255, 255, 255, 50 + random.bounded(60)));
            const double px = cx + (random.bounded(2.0) - 1) * size * 1.6;
            const double py = cy + (random.bounded(2.0) - 1) * size * 0.35;
            p.drawEllipse(QPointF(px, py), size * (0.6 + random.bounded(0.5)), size * (0.35 + random.bounded(0.25)));
        }
    }
    return image;
}

bool WriteBlackClip(const fs::path& file, Prompt& prompt)
{
    const Settings settings;
    cAVICreator avi(settings, prompt);
    avi.Filename = file.string();
    avi.VideoHandlerFourCC = FourCC("divx");
    avi.bitsPerPixel = 24;
    avi.FrameDuration = 1;
    avi.dwRate = MenuVideoRate(25);
    cDIB black;
    bool ok = black.Create(720, 576, 24) && avi.StreamCreate(black);
    for (int frame = 1; ok && frame < 25; ++frame)
        ok = avi.StreamAdd(black);
    ok = avi.StreamClose() && ok;
    if (!ok)
        ShowAviCreationError(avi.LastError() ? avi.LastError()->Description() : "no frames", prompt);
    return ok;
}

bool Fail(Prompt& prompt, const fs::path& file, const std::string& why)
{
    prompt.Message("Could not write " + file.string() + (why.empty() ? "" : ": " + why));
    return false;
}

} // namespace

bool MakeStarterLibrary(const fs::path& folder, Prompt& prompt)
{
    std::error_code ec;
    for (const char* sub : {"overlays/frames", "frames", "Templates/Pictures"}) {
        if (fs::create_directories(folder / sub, ec); ec)
            return Fail(prompt, folder / sub, ec.message());
    }
    for (const LibraryOverlay& overlay : kLibrary) {
        cDIB dib;
        if (overlay.Draw) {
            OverlayCanvas canvas(overlay.Width, overlay.Height);
            overlay.Draw(canvas);
            dib = canvas.ToDib();
        } else {
            dib = CreateRect(3, overlay.Width, overlay.Height);
        }
        const fs::path file = folder / "overlays" / overlay.Name;
        if (!dib.Save(file.string()))
            return Fail(prompt, file, {});
    }
    std::string error;
    const fs::path border = folder / "frames" / "DVD_Button_2.gif";
    if (!WriteGifFile(ButtonBorder(), border.string(), error))
        return Fail(prompt, border, error);
    const fs::path sky = folder / "Templates" / "Pictures" / "sky.jpg";
    if (!Sky().save(QString::fromStdString(sky.string()), "JPG", 90))
        return Fail(prompt, sky, {});
    const fs::path settings = folder / "DVDSubEditSettings.jpg";
    if (!SubEditSettingsPicture().save(QString::fromStdString(settings.string()), "JPG", 92))
        return Fail(prompt, settings, {});
    return WriteBlackClip(folder / "black.avi", prompt);
}

} // namespace mw
