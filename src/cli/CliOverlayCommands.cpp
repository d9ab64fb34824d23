#include "cli/CliOverlayCommands.h"

#include "core/Version.h"
#include "document/ProgramStart.h"
#include "i18n/LanguageFiles.h"
#include "render/OverlayFont.h"
#include "render/OverlayFromPicture.h"
#include "render/TransPaint.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <iostream>
#include <optional>

namespace mw {

namespace {

constexpr const char* kOverlayOptions[] = {"--width",   "--colors", "--text",   "--font",
                                           "--font-size", "--outline", "--shadow", "--transparent"};

template <typename T>
std::optional<T> Number(std::string_view text)
{
    T value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || text.empty())
        return std::nullopt;
    return value;
}

// "A<sep>B" as two whole numbers.
std::optional<std::pair<int, int>> NumberPair(std::string_view text, char separator)
{
    const auto at = text.find(separator);
    if (at == std::string_view::npos)
        return std::nullopt;
    const auto a = Number<int>(text.substr(0, at));
    const auto b = Number<int>(text.substr(at + 1));
    if (!a || !b)
        return std::nullopt;
    return std::pair{*a, *b};
}

// A colour as the attributes keep it (red + 256 * green + 65536 * blue) or as "#RRGGBB".
std::optional<Colour> ColourValue(std::string_view text)
{
    if (text.size() == 7 && text[0] == '#') {
        std::uint32_t rgb = 0;
        const auto [end, error] = std::from_chars(text.data() + 1, text.data() + 7, rgb, 16);
        if (error != std::errc() || end != text.data() + 7)
            return std::nullopt;
        return Rgb(std::uint8_t(rgb >> 16), std::uint8_t(rgb >> 8), std::uint8_t(rgb));
    }
    const auto value = Number<std::uint32_t>(text);
    if (!value || *value > 0xFFFFFF)
        return std::nullopt;
    return *value;
}

struct Problem {
    std::string Text;
};

class OverlayArguments {
public:
    OverlayArguments(const CliOptions& options) : options_(options) {}

    std::optional<std::string> Value(const char* option) const { return options_.Value(option); }

    template <typename T>
    T NumberOr(const char* option, T fallback, T low, T high) const
    {
        const auto text = Value(option);
        if (!text)
            return fallback;
        const auto value = Number<T>(*text);
        if (!value || *value < low || *value > high)
            throw Problem{std::string(option) + " takes a number from " + std::to_string(low) + " to " +
                          std::to_string(high)};
        return *value;
    }

private:
    const CliOptions& options_;
};

// SHAPE as the library names it ("name" or "folder\name", without ".bmp"), or a file path.
std::string OverlayFile(const std::string& shape, const std::filesystem::path& programFolder)
{
    std::error_code ec;
    if (std::filesystem::is_regular_file(shape, ec))
        return shape;
    std::string name = shape;
    std::replace(name.begin(), name.end(), '\\', '/');
    if (!name.ends_with(".bmp"))
        name += ".bmp";
    return (programFolder / "overlays" / name).string();
}

int Save(const cDIB& dib, const std::string& file, CliContext& context)
{
    if (dib.Save(file))
        return kExitOk;
    context.Err << "menuwright-cli: could not save " << file << '\n';
    return kExitUnsaved;
}

} // namespace

bool IsOverlayOption(const std::string& option)
{
    return std::find(std::begin(kOverlayOptions), std::end(kOverlayOptions), option) != std::end(kOverlayOptions);
}

std::optional<std::pair<int, int>> TransparentPixel(const CliOptions& options)
{
    const auto at = options.Value("--transparent");
    return at ? NumberPair(*at, ',') : std::optional(std::pair{0, 0});
}

int RunOverlay(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 2 || !options.Output)
        return Refuse(context, options, "expected SHAPE WIDTHxHEIGHT -o OUT.bmp");
    const auto size = NumberPair(options.Arguments[1], 'x');
    if (!size || size->first <= 0 || size->second <= 0 || size->first > cDIB::kMaxSide ||
        size->second > cDIB::kMaxSide)
        return Refuse(context, options, "the size is WIDTHxHEIGHT in pixels, such as 720x576");

    const OverlayArguments args(options);
    const Settings& settings = context.Program.Values;
    std::vector<Colour> colours = {settings.defOverlayColor1, settings.defOverlayColor2, settings.defOverlayColor3};
    FontChoice font{"Arial", 18};
    int lineWidth = 3;
    int outline = 0;
    try {
        if (const auto list = args.Value("--colors")) {
            colours.clear();
            for (std::size_t start = 0; start <= list->size();) {
                const std::size_t end = std::min(list->find(',', start), list->size());
                const auto colour = ColourValue(std::string_view(*list).substr(start, end - start));
                if (!colour)
                    throw Problem{"--colors takes three colours, each a number or #RRGGBB"};
                colours.push_back(*colour);
                start = end + 1;
            }
            if (colours.size() != 3)
                throw Problem{"--colors takes three colours, each a number or #RRGGBB"};
        }
        lineWidth = args.NumberOr("--width", 3, 1, 100);
        outline = args.NumberOr("--outline", 0, 0, 20);
        font = FontFromAttribute(args.Value("--font").value_or("Arial"), args.NumberOr("--font-size", 18.0, 1.0, 500.0));
    } catch (const Problem& problem) {
        return Refuse(context, options, problem.Text);
    }

    NeedFontApplication();
    TransPaint paint(context.Ask, context.Lang.LangDoc());
    for (int i = 0; i < 3; ++i)
        paint.SetRGBColor(i + 1, std::uint8_t(colours[i]), std::uint8_t(colours[i] >> 8), std::uint8_t(colours[i] >> 16));
    paint.SetSize(size->first, size->second);
    const std::string& shape = options.Arguments[0];
    const std::string painter = shape.starts_with('*') ? GetFuncToCallFromSpecialOverlay(shape) : std::string();
    if (!painter.empty())
        paint.SetDIBFromFunc(painter, lineWidth, args.Value("--text").value_or(kAppTitle), outline,
                             args.Value("--shadow").value_or("4RB"), font);
    else if (shape.starts_with('*'))
        return Refuse(context, options, "unknown special overlay " + shape + " (*Rect, *Oval, *Shape1 or *Text)");
    else
        paint.SetFilename(OverlayFile(shape, context.Lang.ProgramFolder()));
    if (paint.GetDib().Empty())
        return kExitFaults; // the painter's message has been shown
    return Save(paint.GetDib(), *options.Output, context);
}

int RunOverlayFromPicture(const CliOptions& options, CliContext& context)
{
    if (options.Arguments.size() != 1 || !options.Output)
        return Refuse(context, options, "expected PICTURE -o OUT.bmp");
    const auto pixel = TransparentPixel(options);
    if (!pixel)
        return Refuse(context, options, "--transparent takes the pixel X,Y");
    OverlayFromPicture model;
    if (!model.LoadPicture(options.Arguments[0])) {
        context.Err << "menuwright-cli: cannot read the picture " << options.Arguments[0] << '\n';
        return kExitFaults;
    }
    if (!model.PickTransparent(pixel->first, pixel->second))
        return Refuse(context, options, "the pixel of --transparent is outside the picture");
    model.ShowWithDefaultColors();
    return Save(model.Result(), *options.Output, context);
}

} // namespace mw
