#include "build/DebugCheckpoint.h"

namespace mw {

void DebugCheckpoint(const Settings& settings, Prompt& prompt, const std::string& text)
{
    if (settings.ShowDebugMessage)
        prompt.Message(text, {}, PromptIcon::None);
}

} // namespace mw
