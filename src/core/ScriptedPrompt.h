#pragma once

#include "core/Prompt.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace mw {

// A Prompt that records every text it is shown and answers from queues; when a queue is empty
// it takes the default answer, or cancels a dialog. Tests drive the core with it.
class ScriptedPrompt : public Prompt {
public:
    struct Shown {
        std::string Kind; // "message", "ask", "input", "open", "save", "folder", "color", "font"
        std::string Text;
        std::string Title;
    };

    std::vector<Shown> Log;
    std::vector<std::pair<std::string, std::string>> ProgressLog;

    std::deque<PromptAnswer> Answers;
    std::deque<std::optional<std::string>> Inputs;
    std::deque<std::vector<std::string>> OpenedFiles;
    std::deque<std::optional<std::string>> SavedFiles;
    std::deque<std::optional<std::string>> Folders;
    std::deque<std::optional<std::uint32_t>> Colors;
    std::deque<std::optional<FontChoice>> Fonts;
    // Runs after each progress line is logged, where a window would answer its user: a test
    // presses Cancel here in the middle of a run.
    std::function<void(const std::string& text)> OnProgress;

    // The texts of message boxes and questions, in order.
    std::vector<std::string> Texts() const;

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
};

} // namespace mw
