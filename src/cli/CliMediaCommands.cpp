#include "cli/CliCommands.h"

#include "core/NumberText.h"
#include "i18n/LanguageFiles.h"
#include "media/FrameGrabber.h"
#include "media/mAVIDecs.h"
#include "render/cDIB.h"

#include <charconv>
#include <iostream>
#include <optional>

namespace mw {

namespace {

bool HasArguments(const CliOptions& options, std::size_t count, const char* expected, CliContext& context)
{
    if (options.Arguments.size() == count)
        return true;
    context.Err << "menuwright-cli " << options.Command << ": expected " << expected << '\n';
    return false;
}

std::optional<long> NumberArgument(const CliOptions& options, std::size_t index, CliContext& context)
{
    const std::string& text = options.Arguments[index];
    long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc() && end == text.data() + text.size())
        return value;
    context.Err << "menuwright-cli " << options.Command << ": not a number: " << text << '\n';
    return std::nullopt;
}

} // namespace

int RunTracks(const CliOptions& options, CliContext& context)
{
    if (!HasArguments(options, 1, "one movie file", context))
        return kExitUnreadable;
    TrackRows rows;
    double fps = 0;
    if (!LoadStreamsToListView(options.Arguments[0], rows, true, fps, context.Ask))
        return kExitFaults;
    for (const TrackRow& row : rows) {
        std::cout << row.Kind << '\t' << row.NameLanguage << '\t' << row.Info << '\t' << row.TrackID << '\t'
                  << row.StartFrame << '\t' << row.EndFrame << '\n';
    }
    std::cout << "fps\t" << NumberText(fps) << '\n';
    return kExitOk;
}

int RunKeyframe(const CliOptions& options, CliContext& context)
{
    if (!HasArguments(options, 2, "a movie file and a frame number", context))
        return kExitUnreadable;
    const auto frame = NumberArgument(options, 1, context);
    if (!frame)
        return kExitUnreadable;
    bool found = false;
    const std::string& file = options.Arguments[0];
    const long key = options.Next ? FindNextKeyFrame(file, *frame, context.Ask, &found)
                                  : FindNearestKeyFrame(file, *frame, true, context.Ask, &found);
    if (!found)
        return kExitFaults;
    std::cout << key << '\n';
    return kExitOk;
}

int RunGrab(const CliOptions& options, CliContext& context)
{
    if (!HasArguments(options, 2, "a movie file and a frame number", context))
        return kExitUnreadable;
    auto frame = NumberArgument(options, 1, context);
    if (!frame)
        return kExitUnreadable;
    if (!options.Output) {
        context.Err << "menuwright-cli grab: -o OUT.bmp is needed\n";
        return kExitUnreadable;
    }
    cDIB picture;
    if (!GrabFrameToPicture(options.Arguments[0], picture, *frame, true, context.Ask, context.Lang.LangDoc()))
        return kExitFaults;
    if (!picture.Save(*options.Output)) {
        context.Err << "menuwright-cli: could not save " << *options.Output << '\n';
        return kExitUnsaved;
    }
    return kExitOk;
}

int RunStreamName(const CliOptions& options, CliContext& context)
{
    if (!HasArguments(options, 3, "a movie file, a stream index and a name", context))
        return kExitUnreadable;
    const auto index = NumberArgument(options, 1, context);
    if (!index || *index < 0)
        return kExitUnreadable;
    return SetStreamName(options.Arguments[0], static_cast<std::size_t>(*index), options.Arguments[2], context.Ask)
               ? kExitOk
               : kExitFaults;
}

} // namespace mw
