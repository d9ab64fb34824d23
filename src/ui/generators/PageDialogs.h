#pragma once

#include "generators/PageModel.h"

class QWidget;

namespace mw {

class Prompt;

// frmSelectOverlay: whether the made buttons' overlay has the button's shape (0) or highlights
// the caption (1). Cancel leaves the choice as it was; the answer says whether it was taken.
bool SelectOverlay(int& whatOverlay, QWidget* parent);

// frmSelectColor: the page's background, a picture or a gradient of 4 or 5 colours. With "Auto
// size window to fit picture" the page takes the picture's size. Cancel changes nothing.
bool SelectBackground(MenuPage& page, Prompt& prompt, QWidget* parent);

} // namespace mw
