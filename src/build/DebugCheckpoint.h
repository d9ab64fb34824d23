#pragma once

#include "core/Prompt.h"
#include "core/settings/Settings.h"

#include <string>

namespace mw {

// A named step of the build: a message box with only its text when ShowDebugMessage is on,
// nothing otherwise. The step goes on after it.
void DebugCheckpoint(const Settings& settings, Prompt& prompt, const std::string& text);

} // namespace mw
