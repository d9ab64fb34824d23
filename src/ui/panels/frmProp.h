#pragma once

#include "ui/panels/PropertyPanel.h"

namespace mw {

// The body of "Button properties" (frmProp): the rows of the button selected on the canvas and its action list.
class frmProp : public PropertyPanel {
    Q_OBJECT
public:
    frmProp(Project& project, EditRunner edit);

protected:
    void Reload() override;

private:
    QListWidget* lstButtonActions_;
};

} // namespace mw
