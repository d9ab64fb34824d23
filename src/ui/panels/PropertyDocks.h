#pragma once

#include "ui/panels/PropertyPanel.h"

class QMainWindow;

namespace mw {

class LangDoc;
class MenuBar;
class PanelDock;
class frmProp;
class frmPropMenu;

// The property panels of the main window in their docks, shown while their View entries are
// ticked and a menu is on the canvas.
class PropertyDocks {
public:
    PropertyDocks(QMainWindow& window, Project& project, MenuBar& menus, PropertyPanel::EditRunner edit);
    // The panels go first, while the project they edit is still there.
    ~PropertyDocks();
    PropertyDocks(const PropertyDocks&) = delete;
    PropertyDocks& operator=(const PropertyDocks&) = delete;

    // After a command: the panels show the project again and follow their entries.
    void Refresh();
    // The panels' texts from the language file.
    void Relabel(const LangDoc& lang);
    // At exit: places, sizes, pins and splits into the settings.
    void Keep() const;

private:
    MenuBar& menus_;
    frmProp* frmProp_;
    frmPropMenu* frmPropMenu_;
    PanelDock* propDock_;
    PanelDock* propMenuDock_;
};

} // namespace mw
