#pragma once

#include "document/DocTree.h"
#include "document/TreeQueries.h"

#include <string>

namespace mw {

class Project;

// Deletes every button of the multi-selection instead of one.
inline constexpr int kSelectedButtons = -1;

// Adds a button to the menu on the canvas with the drawn rectangle: the ButtonMenu after the
// last button, its MenuRectangle and its overlay track, identifiers B, B+1 and B+2. The overlay
// is "|Rectangle", "|Oval", "|Shape1" or a bitmap's Shape value (empty is the rectangle). The
// new button is selected. Returns its identifier, empty when no menu is shown.
std::string AddButtonToMenu(Project& project, const ButtonShape& rect, const std::string& overlay);

// Deletes the button at a canvas index, or every selected one with kSelectedButtons: its
// overlay track, the references to it, and its neighbours are routed past it.
void DeleteButton(Project& project, int index);

// Cuts every reference to the button from the rows of the menu, three levels down; a starting
// button that goes hands the start to the last remaining button.
void ParceMenuToRemoveButtonRef(DocTree& tree, DocNode& menu, const std::string& buttonID);

// The frames of an overlay track: each value of -1 is read from the track, any other is written
// to it. Returns the start frame, -1 when there is no such track.
long GetStartFrameForButton(DocTree& tree, const std::string& overlayID, long& startFrame, long& endFrame);
void SetStartEndFrameForButton(DocTree& tree, const std::string& overlayID, long startFrame, long endFrame);
// The frames of a button's overlay track; -1 when the button has none.
long GetStartFrameForButtonByID(DocTree& tree, const std::string& buttonID, long& startFrame, long& endFrame);
// The MenuRectangle of the button whose overlay is this track, in any menu; nullptr when none.
DocNode* FindRectForOverlayID(const DocTree& tree, const std::string& overlayID);

// The selected buttons lined up on the last clicked one: 1 left, 2 top, 3 right, 4 bottom.
void DoAlign(Project& project, int mode);
// The selected buttons sized as the last clicked one: 1 width, 2 height, 3 both.
void DoSameSize(Project& project, int mode);

void mnuCopyButtons(Project& project);
// New buttons at the copied places with the copied extra info, in the menu on the canvas.
void mnuPasteButtons(Project& project);
void mnuCopySize(Project& project);
void mnuPasteSize(Project& project);

} // namespace mw
