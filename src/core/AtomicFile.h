#pragma once

#include <string>
#include <string_view>

namespace mw {

// Replaces a file's contents so that, at any moment, it holds either the old or the new bytes:
// a temporary file in the same folder is written, synced and renamed over the target. On failure
// the temporary is removed, the old file stays as it was and `error` says why. A target marked
// read-only is refused, although the rename itself would pass over it.
bool WriteFileAtomically(const std::string& path, std::string_view content, std::string& error);

} // namespace mw
