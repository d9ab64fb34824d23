#pragma once

#include <QPlainTextEdit>

#include <string>

namespace mw {

// TextFormat1, the help text of the selected node kind. It shows the block's plain text until
// the formatted text painter takes its place.
class HelpPane : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit HelpPane(QWidget* parent = nullptr);

    // A block in the help pane's markup.
    void ShowBlock(const std::string& block);
};

} // namespace mw
