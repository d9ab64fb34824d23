#pragma once

#include <QWidget>

#include <functional>
#include <string>

class QBoxLayout;
class QListWidget;

namespace mw {

class Project;
class PropertiesGrid;

// What a panel shares with its sisters: the grid on top, the action lists below, and the way
// an edit reaches the document (through the main window, so that the tree follows).
class PropertyPanel : public QWidget {
    Q_OBJECT
public:
    using EditRunner = std::function<void(const std::function<void()>&)>;

    // `middle` is the setting that keeps the split of the grid.
    PropertyPanel(Project& project, int& middle, EditRunner edit);

    PropertiesGrid& Grid() { return *grid_; }
    // Shows the project again once the current event is done, as an edit may have come from
    // one of the editors that a reload replaces.
    void Refresh();
    // The split of the grid into its setting.
    void KeepSplit() const;

protected:
    virtual void Reload() = 0;
    void Edit(const std::function<void()>& change) { edit_(change); }
    // An action list with its two buttons, editing the list `listName` through the action dialog.
    QListWidget* AddActionList(QBoxLayout& layout, const char* list, const char* add, const char* remove,
                               std::string listName, bool isButton);
    void ShowActionNames(QListWidget& list, const std::vector<std::string>& names);

    Project& project_;

private:
    int& middle_;
    EditRunner edit_;
    PropertiesGrid* grid_;
    bool reloadPending_ = false;
};

} // namespace mw
