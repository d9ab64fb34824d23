#pragma once

#include <QImage>

namespace mw {

// The picture the buttons-from-editor window shows to explain how the subtitle editor must show
// a menu before its highlight areas can be read: a sketch of its window with numbered notes.
QImage SubEditSettingsPicture();

} // namespace mw
