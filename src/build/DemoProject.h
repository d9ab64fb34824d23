#pragma once

#include "build/DemoMovie.h"
#include "core/FormHost.h"
#include "core/Prompt.h"
#include "media/NewTitleForm.h"

#include <filesystem>

namespace mw {

struct ProgramState;

// The dialogs as the demo answers them (and the benchmarks, which make projects the same way):
// the new title as proposed, the chapter dialog with a number of chapters of equal length.
class DemoForms : public FormHost {
public:
    DemoForms(const ProgramState& program, int chapters, Prompt& prompt)
        : program_(program), chapters_(chapters), prompt_(prompt)
    {
    }

    bool ShowNewTitle(NewTitleForm& form) override { return form.Accepted = true; }
    bool ShowChap(ChapForm& form) override;

private:
    const ProgramState& program_;
    int chapters_;
    Prompt& prompt_;
};

struct DemoProjectSpec {
    DemoMovieSpec Movie;
    int Chapters = 4;
};

// Makes the demo that a new user sees at the first start: the movie Demo/Demo.avi below the
// folder and the project Demo/Demo.xml around it, made as a user would make it (a new project
// from the movie, then chapters of equal length). The project names its movie relative to
// itself, so the Demo folder still works wherever it is copied. On failure the message has
// been shown and false is returned.
bool MakeDemoProject(const std::filesystem::path& folder, const DemoProjectSpec& spec, Prompt& prompt);

} // namespace mw
