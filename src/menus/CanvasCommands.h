#pragma once

#include "document/DocTree.h"
#include "document/TreeQueries.h"

namespace mw {

class Project;

// Shows a menu on the canvas: reads its colours, lock and frame, one entry per button with its
// rectangle and overlay, the rows of its background, and where its overlay stream will stand
// in the background file. A missing background file is said and counted as two streams.
void ParceMenu(Project& project, DocNode& menu);

// The rows of a menu that the canvas and its panels read, again after one of them changed.
void LoadCanvasMenuRows(Project& project, DocNode& menu);

// Selects the button at index: the handles go on it, its node is selected and the tools that
// need a button are enabled (the line width only for a drawn shape).
void Label1_Click(Project& project, int index);

// A release of the rubber band drawn from one corner to the other, in any direction: the
// buttons fully inside are selected, one as by a click, several as the multi-selection.
void SelectInBand(Project& project, long x1, long y1, long x2, long y2);

// Guide lines catch an edge that comes closer than this.
inline constexpr long kSnapDistance = 7;

// The end of a drag, a resize or an arrow key on the button at index: the edges near a guide
// line snap to it, the rectangle goes into the tree, the overlay follows, and the other buttons
// of a multi-selection move by the same distance. Nothing moves while the menu is locked, and
// then false is returned.
bool EndButtonGesture(Project& project, int index, ButtonShape rect);

} // namespace mw
