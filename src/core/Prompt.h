#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mw {

enum class PromptIcon { None, Information, Warning, Critical, Question };
enum class PromptButtons { Ok, OkCancel, YesNo, YesNoCancel };
enum class PromptAnswer { Ok, Cancel, Yes, No };

struct FileDialogRequest {
    std::string Title;
    std::string Filter;       // "Description|*.ext|..." as the original dialogs take it
    std::string DefaultExt;
    std::string InitialDir;
    std::string FileName;
    bool MultiSelect = false;
    bool OverwritePrompt = false;
};

struct FontChoice {
    std::string Family;
    double Size = 0;
    bool Bold = false;
    bool Italic = false;
};

// Where progress text goes: the message label, the movie label, or a status panel by key.
struct ProgressChannel {
    std::string Name;
};

// Every message box, question, input box and dialog that the core needs from the user goes
// through this, so that windows, the command line and tests can each answer in their own way.
class Prompt {
public:
    virtual ~Prompt() = default;

    virtual void Message(const std::string& text, const std::string& title = {},
                         PromptIcon icon = PromptIcon::Information) = 0;
    virtual PromptAnswer Ask(const std::string& text, PromptButtons buttons, PromptAnswer defaultAnswer,
                             const std::string& title = {}, PromptIcon icon = PromptIcon::Question) = 0;
    virtual std::optional<std::string> Input(const std::string& text, const std::string& title,
                                             const std::string& defaultValue) = 0;
    virtual std::vector<std::string> OpenFiles(const FileDialogRequest& request) = 0;
    virtual std::optional<std::string> SaveFile(const FileDialogRequest& request) = 0;
    virtual std::optional<std::string> PickFolder(const std::string& text) = 0;
    virtual std::optional<std::uint32_t> PickColor(std::uint32_t initial) = 0;
    virtual std::optional<FontChoice> PickFont(const FontChoice& initial) = 0;
    virtual void Progress(const ProgressChannel& channel, const std::string& text) = 0;
};

} // namespace mw
