#pragma once

#include "ui/widgets/TextFormatWidget.h"

#include <filesystem>
#include <string>

namespace mw {

// TextFormat1, the help text of the selected node kind.
class HelpPane : public TextFormatWidget {
    Q_OBJECT
public:
    // Pictures of "<APP.PATH>" are found in the program folder.
    explicit HelpPane(const std::filesystem::path& programFolder, QWidget* parent = nullptr);

    // A block in the help pane's markup; an empty one clears the pane.
    void ShowBlock(const std::string& block);
};

} // namespace mw
