#pragma once

#include "core/FormHost.h"
#include "core/ProgramStart.h"
#include "core/Prompt.h"
#include "document/Document.h"
#include "i18n/LangDoc.h"

#include <chrono>
#include <functional>
#include <string>

namespace mw {

// The open project of one main window, and everything the window owned about it that is not a
// widget: the document, its flags, the undo list, the auto-save state, the canvas state and the
// settings in memory. Commands are its methods or free functions over it; the window, the
// command line and the tests drive the same calls.
class Project {
public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    Project(ProgramState& program, Prompt& prompt, FormHost& forms,
            Clock clock = [] { return std::chrono::system_clock::now(); });

    Document Doc;
    bool FileIsDirty = false;
    bool FileIsNew = false;
    double MovieFps = 23.976;

    ProgramState& Program() { return program_; }
    Settings& Values() { return program_.Values; }
    const LangDoc& Lang() const { return program_.Lang.LangDoc(); }
    FormTexts Texts() const { return FormTexts(program_.Lang.LangDoc(), "Form1"); }
    Prompt& Ask() { return prompt_; }
    FormHost& Forms() { return forms_; }
    std::chrono::system_clock::time_point Now() const { return clock_(); }

    // Every change by a user command marks the project dirty.
    void MarkDirty() { FileIsDirty = true; }

private:
    ProgramState& program_;
    Prompt& prompt_;
    FormHost& forms_;
    Clock clock_;
};

} // namespace mw
