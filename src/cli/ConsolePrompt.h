#pragma once

#include "core/Prompt.h"

#include <iosfwd>
#include <optional>

namespace mw {

// The command line's Prompt: messages and questions go to standard output as plain text, in
// order; a question takes its default button unless the user fixed the answer with --answer.
// "--answer cancel" declines a question without Cancel (No), and the command counts as
// cancelled. Dialogs that would pick a file, folder, colour or font are cancelled.
class ConsolePrompt : public Prompt {
public:
    ConsolePrompt(std::ostream& out, std::ostream& progress, std::optional<PromptAnswer> forcedAnswer)
        : out_(out), progress_(progress), forcedAnswer_(forcedAnswer)
    {
    }

    void Message(const std::string& text, const std::string& title, PromptIcon icon) override;
    PromptAnswer Ask(const std::string& text, PromptButtons buttons, PromptAnswer defaultAnswer,
                     const std::string& title, PromptIcon icon) override;
    std::optional<std::string> Input(const std::string& text, const std::string& title,
                                     const std::string& defaultValue) override;
    std::vector<std::string> OpenFiles(const FileDialogRequest& request) override;
    std::optional<std::string> SaveFile(const FileDialogRequest& request) override;
    std::optional<std::string> PickFolder(const std::string& text) override;
    std::optional<std::uint32_t> PickColor(std::uint32_t initial) override;
    std::optional<FontChoice> PickFont(const FontChoice& initial) override;
    void Progress(const ProgressChannel& channel, const std::string& text) override;

    // The user's forced Cancel answered a question: the command must not be saved.
    bool Cancelled() const { return cancelled_; }

private:
    std::ostream& out_;
    std::ostream& progress_;
    std::optional<PromptAnswer> forcedAnswer_;
    bool cancelled_ = false;
};

} // namespace mw
