#include "cli/ConsolePrompt.h"

#include <ostream>

namespace mw {

namespace {

// Does the question offer this answer at all? A Yes/No question cannot be cancelled.
bool Offers(PromptButtons buttons, PromptAnswer answer)
{
    switch (buttons) {
    case PromptButtons::Ok: return answer == PromptAnswer::Ok;
    case PromptButtons::OkCancel: return answer == PromptAnswer::Ok || answer == PromptAnswer::Cancel;
    case PromptButtons::YesNo: return answer == PromptAnswer::Yes || answer == PromptAnswer::No;
    case PromptButtons::YesNoCancel: return answer != PromptAnswer::Ok;
    }
    return false;
}

} // namespace

void ConsolePrompt::Message(const std::string& text, const std::string&, PromptIcon)
{
    out_ << text << '\n';
}

PromptAnswer ConsolePrompt::Ask(const std::string& text, PromptButtons buttons, PromptAnswer defaultAnswer,
                                const std::string&, PromptIcon)
{
    out_ << text << '\n';
    if (forcedAnswer_ == PromptAnswer::Cancel) {
        for (const PromptAnswer declined : {PromptAnswer::Cancel, PromptAnswer::No}) {
            if (Offers(buttons, declined)) {
                cancelled_ = true;
                return declined;
            }
        }
    }
    if (forcedAnswer_ && Offers(buttons, *forcedAnswer_))
        return *forcedAnswer_;
    return defaultAnswer;
}

std::optional<std::string> ConsolePrompt::Input(const std::string& text, const std::string&,
                                                const std::string& defaultValue)
{
    out_ << text << '\n';
    return defaultValue;
}

std::vector<std::string> ConsolePrompt::OpenFiles(const FileDialogRequest&) { return {}; }

std::optional<std::string> ConsolePrompt::SaveFile(const FileDialogRequest&) { return std::nullopt; }

std::optional<std::string> ConsolePrompt::PickFolder(const std::string&) { return std::nullopt; }

std::optional<std::uint32_t> ConsolePrompt::PickColor(std::uint32_t) { return std::nullopt; }

std::optional<FontChoice> ConsolePrompt::PickFont(const FontChoice&) { return std::nullopt; }

void ConsolePrompt::Progress(const ProgressChannel&, const std::string& text)
{
    progress_ << text << '\n';
}

} // namespace mw
