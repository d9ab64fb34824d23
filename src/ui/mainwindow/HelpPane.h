#pragma once

#include "ui/widgets/TextFormatWidget.h"

#include <string>

namespace mw {

// TextFormat1, the help text of the selected node kind.
class HelpPane : public TextFormatWidget {
    Q_OBJECT
public:
    explicit HelpPane(QWidget* parent = nullptr);

    // A block in the help pane's markup; an empty one clears the pane.
    void ShowBlock(const std::string& block);
};

} // namespace mw
