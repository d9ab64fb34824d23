#pragma once

#include <functional>

namespace mw {

class Prompt;

// Runs one command of the user so that nothing it throws ends the program: what escapes is
// told through the prompt, and the program goes on. False when the command stopped that way.
bool RunCommandCaught(Prompt& prompt, const std::function<void()>& command);

} // namespace mw
