#pragma once

#include <string>
#include <vector>

namespace mw {

class Project;

inline constexpr const char* kNotValidType = "Not valid type. Try again";
inline constexpr const char* kMenuTracksToolTip =
    "Infos here are: \"ID|mediaSourceID(fileName)-type trackID\" and can't change";

// One line of a property panel: the row's name, what its label shows, its value and, for a
// combo, what it offers. Rows count from 1 as the panels number them.
struct PanelRow {
    std::string Name;
    std::string Label;
    std::string Value;
    std::vector<std::string> Choices; // empty for a text row
    bool Enabled = true;
    std::string LabelToolTip;
    std::string TextToolTip;
};

// The rows of the menu on the canvas (frmPropMenu); none without a menu.
std::vector<PanelRow> MenuPanelRows(Project& project);
// The rows of the selected button (frmProp, AddPropertiesButton); none without a selection.
std::vector<PanelRow> ButtonPanelRows(Project& project);

// A value confirmed in a row of frmPropMenu. Returns false, after "Not valid type. Try again",
// when a background row is given a track of the wrong kind; the tree is then unchanged.
bool PropMenu_ValueChanged(Project& project, int row, const std::string& value);
// A value confirmed in a row of frmProp. The rectangle rows act only on a selected button.
void PropButton_ValueChanged(Project& project, int row, const std::string& value);

} // namespace mw
