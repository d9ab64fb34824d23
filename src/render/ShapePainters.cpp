#include "core/NumberText.h"
#include "render/OverlayCanvas.h"
#include "render/OverlayPainters.h"
#include "render/OverlayScheme.h"

namespace mw {

namespace {

int Round(double value) { return int(RoundHalfEven(value)); }

} // namespace

cDIB CreateRect(int lineWidth, int width, int height)
{
    OverlayCanvas canvas(width, height);
    const int r = Round(lineWidth / 2.0 + 0.1);
    // An even pen puts its extra pixel outside, so its outline moves one pixel in.
    const int leftTop = r + (lineWidth % 2 == 0 ? 1 : 0);
    canvas.DrawRect(leftTop, leftTop, width - r, height - r, lineWidth, kOverlayRed);
    canvas.DrawRect(0, 0, width, height, 1, kOverlayYellow);
    return canvas.ToDib();
}

cDIB CreateOval(int lineWidth, int width, int height)
{
    OverlayCanvas canvas(width, height);
    canvas.DrawEllipse(lineWidth - 1, lineWidth - 1, width - lineWidth + 1, height - lineWidth + 1, lineWidth,
                       kOverlayRed);
    return canvas.ToDib();
}

cDIB CreateShape1(int lineWidth, int width, int height)
{
    OverlayCanvas canvas(width, height);
    const double w = width;
    const double h = height;
    const int y1 = Round(h / 5);
    const int y2 = Round(h - 2 * h / 10);
    const int y3 = Round(h - 2 * h / 10 + h / 5 - h / 10 + 1);
    const int x1 = Round(w / 5);
    const int x2 = Round(w - w / 5);
    const int x3 = Round(w / 5 + w / 20);
    const int x4 = Round(w - w / 5 - w / 20);
    const int x5 = Round(w / 5 / 2.5);
    const int x6 = Round(w - w / 5 / 2.5);
    const auto line = [&](int ax, int ay, int bx, int by) { canvas.DrawLine(ax, ay, bx, by, lineWidth, kOverlayRed); };
    canvas.DrawRect(x1, Round(2 * h / 10), x2, y2, lineWidth, kOverlayRed);
    line(0, y1, x1, y1);
    line(x2, y1, width, y1);
    line(0, y3, x3, y3);
    line(x3, y3, x1, y2);
    line(x4, y3, width, y3);
    line(x4, y3, x2, y2);
    line(0, y1, x5, y3);
    line(0, y3, x5, y3);
    line(x6, y3, width, y1);
    line(x6, y3, width, y3);
    return canvas.ToDib();
}

cDIB PaintByFunctionName(const std::string& functionName, int width, int height, const OverlayParams& params)
{
    if (functionName == "CreateRect")
        return CreateRect(params.LineWidth, width, height);
    if (functionName == "CreateOval")
        return CreateOval(params.LineWidth, width, height);
    if (functionName == "CreateShape1")
        return CreateShape1(params.LineWidth, width, height);
    if (functionName == "CreateText")
        return CreateText(width, height, params.Text, params.Outline, params.Shadow, params.Font);
    return {};
}

std::string GetFuncToCallFromSpecialOverlay(const std::string& name)
{
    std::string rest = name;
    if (rest.starts_with('*'))
        rest.erase(0, 1);
    if (rest.ends_with(".bmp"))
        rest.erase(rest.size() - 4);
    if (rest == "Shape1")
        return "CreateShape1";
    if (rest == "Oval")
        return "CreateOval";
    if (rest == "Rect")
        return "CreateRect";
    if (rest == "Text")
        return "CreateText";
    return {};
}

} // namespace mw
