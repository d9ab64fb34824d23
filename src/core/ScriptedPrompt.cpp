#include "core/ScriptedPrompt.h"

namespace mw {

namespace {

template <typename T>
T TakeOr(std::deque<T>& queue, T fallback)
{
    if (queue.empty())
        return fallback;
    T value = std::move(queue.front());
    queue.pop_front();
    return value;
}

} // namespace

std::vector<std::string> ScriptedPrompt::Texts() const
{
    std::vector<std::string> texts;
    for (const auto& shown : Log) {
        if (shown.Kind == "message" || shown.Kind == "ask")
            texts.push_back(shown.Text);
    }
    return texts;
}

void ScriptedPrompt::Message(const std::string& text, const std::string& title, PromptIcon)
{
    Log.push_back({"message", text, title});
}

PromptAnswer ScriptedPrompt::Ask(const std::string& text, PromptButtons, PromptAnswer defaultAnswer,
                                 const std::string& title, PromptIcon)
{
    Log.push_back({"ask", text, title});
    return TakeOr(Answers, defaultAnswer);
}

std::optional<std::string> ScriptedPrompt::Input(const std::string& text, const std::string& title,
                                                 const std::string& defaultValue)
{
    Log.push_back({"input", text, title});
    return TakeOr(Inputs, std::optional<std::string>(defaultValue));
}

std::vector<std::string> ScriptedPrompt::OpenFiles(const FileDialogRequest& request)
{
    Log.push_back({"open", request.Filter, request.Title});
    return TakeOr(OpenedFiles, std::vector<std::string>{});
}

std::optional<std::string> ScriptedPrompt::SaveFile(const FileDialogRequest& request)
{
    Log.push_back({"save", request.Filter, request.Title});
    return TakeOr(SavedFiles, std::optional<std::string>{});
}

std::optional<std::string> ScriptedPrompt::PickFolder(const std::string& text)
{
    Log.push_back({"folder", text, {}});
    return TakeOr(Folders, std::optional<std::string>{});
}

std::optional<std::uint32_t> ScriptedPrompt::PickColor(std::uint32_t)
{
    Log.push_back({"color", {}, {}});
    return TakeOr(Colors, std::optional<std::uint32_t>{});
}

std::optional<FontChoice> ScriptedPrompt::PickFont(const FontChoice&)
{
    Log.push_back({"font", {}, {}});
    return TakeOr(Fonts, std::optional<FontChoice>{});
}

void ScriptedPrompt::Progress(const ProgressChannel& channel, const std::string& text)
{
    ProgressLog.emplace_back(channel.Name, text);
    if (OnProgress)
        OnProgress(text);
}

} // namespace mw
