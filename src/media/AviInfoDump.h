#pragma once

#include "media/AviFile.h"

#include <string>

namespace mw {

// The file record and every stream record as "name = value" lines between START and END
// marks: a diagnostic aid, no command shows it.
std::string DumpAviInfo(const AviFile& file);

} // namespace mw
