#pragma once

#include "ui/panels/PropertyPanel.h"

class QMainWindow;
class QPoint;

namespace mw {

class LangDoc;
class MenuBar;
class PanelDock;
class frmProp;
class frmPropMenu;
class frmPropText;

// The property panels of the main window in their docks, shown while their View entries are
// ticked and a menu is on the canvas; the text overlay panel while the selection has a text overlay.
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
    // Floats the panels one under the other with their right edges at `topRight` (screen
    // coordinates), the text panel beside the button panel.
    void LineUpAt(const QPoint& topRight);
    // The text overlay panel, whose edits repaint the canvas.
    frmPropText& TextPanel() const { return *frmPropText_; }

private:
    Project& project_;
    MenuBar& menus_;
    // Only its place is a setting; its size and pin last for the session.
    int textWidth_ = 240;
    int textHeight_ = 260;
    bool textPinned_ = false;
    frmProp* frmProp_;
    frmPropMenu* frmPropMenu_;
    PanelDock* propDock_;
    PanelDock* propMenuDock_;
    frmPropText* frmPropText_;
    PanelDock* propTextDock_;
};

} // namespace mw
