#pragma once

#include "media/MovieSound.h"

namespace mw {

// Sinks on the default sound device through Qt Multimedia; each says no when there is none.
AudioSinkFactory DeviceSinks();

} // namespace mw
