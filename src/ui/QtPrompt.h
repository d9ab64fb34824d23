#pragma once

#include "core/Prompt.h"

#include <QString>

#include <functional>

class QWidget;

namespace mw {

// A file filter as the dialogs of the documents write it, "Movies|*.avi;*.divx|All|*.*", in
// Qt's form, "Movies (*.avi *.divx);;All (*.*)".
QString QtFileFilter(const std::string& filter);

// The window's answers to the core: Qt's standard dialogs over the given parent.
class QtPrompt : public Prompt {
public:
    using ProgressSink = std::function<void(const ProgressChannel&, const std::string&)>;

    explicit QtPrompt(QWidget* parent = nullptr) : parent_(parent) {}
    void SetParent(QWidget* parent) { parent_ = parent; }
    // Where progress text goes; without a sink it is dropped.
    void SetProgressSink(ProgressSink sink) { progress_ = std::move(sink); }

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

private:
    QWidget* parent_;
    ProgressSink progress_;
};

} // namespace mw
