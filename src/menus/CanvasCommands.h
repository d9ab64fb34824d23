#pragma once

#include "document/DocTree.h"
#include "document/MenuCanvas.h"
#include "document/TreeQueries.h"

#include <optional>

namespace mw {

class Project;
class Prompt;
class cDIB;

// A button of a menu as the canvas holds it: rectangle, shape and where its overlay stands.
CanvasButton ReadCanvasButton(const Project& project, const DocNode& button);
// The menu's three overlay colours, the settings' defaults where it has none of its own.
std::array<std::uint32_t, 3> MenuOverlayColors(const Project& project, const DocNode& menu);

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

// A rectangle of the button at index, dragged or resized, with its edges near a guide line
// caught by it: what the canvas shows while the mouse moves and what the gesture's end keeps.
ButtonShape SnapToGuideLines(const MenuCanvas& canvas, int index, ButtonShape rect);

// The release of the band drawn in add mode: a button with that rectangle and the default
// overlay, and add mode ends. A band without width or height adds nothing and stays in add mode.
// Returns the new button's identifier, empty when none was added.
std::string AddButtonFromBand(Project& project, long x1, long y1, long x2, long y2);

// A guide line is near a press on its ruler when the press, plus 2, is less than this away.
inline constexpr long kGuideLineReach = 4;
// A left press on a ruler at pos: the guide line near it is picked up, else a new one is made
// there. Returns its index in lines.
std::size_t PickGuideLine(std::vector<long>& lines, long pos);
// The release of a dragged guide line: it stays at pos inside the page of length extent, and
// goes away beyond its edges.
void DropGuideLine(std::vector<long>& lines, std::size_t index, long pos, long extent);

// The frame the canvas shows: the one stored for the menu, else the start of its background.
long ShownFrame(const MenuCanvas& canvas);
// The shown frame of the menu's background into picture, at the movie's size. False, with the
// picture as it was, when there is no file (ParceMenu has said so) or it cannot be read.
bool GrabMenuFrame(Project& project, cDIB& picture);
// Keeps the frame to show for the menu in its extra info; -1 for none, and below that too.
void SetMenuFrame(Project& project, long frame);
// "Type the frame to use", offering the shown frame: the leading number of the answer. Nothing
// when no menu is shown or the question is cancelled.
std::optional<long> AskMenuFrame(Project& project);

// The overlay picture of the button at index at the size of its overlay, in the menu's colours:
// painted for a special shape, read and fitted for a bitmap. Index 0 is transparent.
cDIB ButtonOverlayPicture(Project& project, int index);
// The same for a button read with ReadCanvasButton, for a menu the canvas does not show;
// the prompt hears of an overlay file that is missing or unreadable.
cDIB ButtonOverlayPicture(const Project& project, Prompt& prompt, const CanvasButton& button,
                          const std::array<std::uint32_t, 3>& colors);

// The menu that the button at index opens, when its action list moves to one; null otherwise.
DocNode* ButtonLinkMenu(Project& project, int index);

} // namespace mw
