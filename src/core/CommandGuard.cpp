#include "core/CommandGuard.h"

#include "core/Prompt.h"

#include <exception>
#include <string>

namespace mw {

bool RunCommandCaught(Prompt& prompt, const std::function<void()>& command)
{
    std::string what;
    try {
        command();
        return true;
    } catch (const std::exception& error) {
        what = error.what();
    } catch (...) {
        what = "an error of unknown kind";
    }
    prompt.Message("The command stopped on an unexpected error: " + what, "", PromptIcon::Critical);
    return false;
}

} // namespace mw
