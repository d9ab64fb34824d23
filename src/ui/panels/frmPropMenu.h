#pragma once

#include "ui/panels/PropertyPanel.h"

namespace mw {

// The body of "Menu properties" (frmPropMenu): the rows of the menu on the canvas and its enter and exit lists.
class frmPropMenu : public PropertyPanel {
    Q_OBJECT
public:
    frmPropMenu(Project& project, EditRunner edit);

protected:
    void Reload() override;

private:
    QListWidget* lstEnter_;
    QListWidget* lstExit_;
};

} // namespace mw
