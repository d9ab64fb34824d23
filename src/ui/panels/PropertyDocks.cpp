#include "ui/panels/PropertyDocks.h"

#include "document/Project.h"
#include "ui/QtDesignTarget.h"
#include "ui/mainwindow/MenuBar.h"
#include "ui/panels/PanelDock.h"
#include "ui/panels/frmProp.h"
#include "ui/panels/frmPropMenu.h"
#include "ui/panels/frmPropText.h"

#include <QAction>
#include <QPoint>

namespace mw {

namespace {

// Ties a dock to its View entry: the entry shows and hides it, the close mark clears the entry.
void Bind(PanelDock& dock, QAction& entry)
{
    entry.setChecked(true);
    QObject::connect(&entry, &QAction::toggled, &dock, [&dock, &entry](bool on) { dock.setVisible(on && entry.isEnabled()); });
    QObject::connect(&dock, &PanelDock::Closed, &entry, [&entry] { entry.setChecked(false); });
}

} // namespace

PropertyDocks::PropertyDocks(QMainWindow& window, Project& project, MenuBar& menus, PropertyPanel::EditRunner edit)
    : project_(project), menus_(menus), frmProp_(new frmProp(project, edit)),
      frmPropMenu_(new frmPropMenu(project, edit)), frmPropText_(new frmPropText(project))
{
    Settings& values = project.Values();
    propDock_ = new PanelDock(
        "frmProp", "Button properties", frmProp_, {values.PropX, values.PropY, values.PropWidth, values.PropHeight, values.PropPined}, window);
    propMenuDock_ = new PanelDock("frmPropMenu", "Menu properties", frmPropMenu_,
                                  {values.PropMenuX, values.PropMenuY, values.PropMenuWidth, values.PropMenuHeight,
                                   values.PropMenuPined},
                                  window);
    propTextDock_ = new PanelDock("frmPropText", " Text Overlay Propepties", frmPropText_,
                                  {values.PropTextX, values.PropTextY, textWidth_, textHeight_, textPinned_}, window);
    Relabel(project.Lang());
    Bind(*propDock_, *menus.Action("mnuShowButtonProp"));
    Bind(*propMenuDock_, *menus.Action("mnuShowMenuProp"));
    propDock_->hide();
    propMenuDock_->hide();
    propTextDock_->hide();
}

PropertyDocks::~PropertyDocks()
{
    delete propDock_;
    delete propMenuDock_;
    delete propTextDock_;
}

void PropertyDocks::Refresh()
{
    frmProp_->Refresh();
    frmPropMenu_->Refresh();
    for (auto [dock, name] : {std::pair{propDock_, "mnuShowButtonProp"}, {propMenuDock_, "mnuShowMenuProp"}}) {
        const QAction* entry = menus_.Action(name);
        dock->setVisible(entry->isEnabled() && entry->isChecked());
    }
    const bool text = project_.Overlays.TextPanelVisible && !project_.Canvas.CurrentMenuID.empty();
    if (text)
        frmPropText_->LoadFromProject();
    propTextDock_->setVisible(text);
}

void PropertyDocks::LineUpAt(const QPoint& topRight)
{
    const QPoint menuAt(topRight.x() - propMenuDock_->width(), topRight.y());
    propMenuDock_->move(menuAt);
    // A pinned panel is mostly its strip: the next one stands right under that.
    const int menuHeight = propMenuDock_->AutoHide() ? propMenuDock_->titleBarWidget()->height() : propMenuDock_->height();
    const QPoint buttonAt(topRight.x() - propDock_->width(), menuAt.y() + menuHeight);
    propDock_->move(buttonAt);
    propTextDock_->move(buttonAt.x() - propTextDock_->width(), buttonAt.y());
}

void PropertyDocks::Relabel(const LangDoc& lang)
{
    LoadTextForDesign(lang, *propDock_);
    LoadTextForDesign(lang, *propMenuDock_);
    LoadTextForDesign(lang, *propTextDock_);
}

void PropertyDocks::Keep() const
{
    propDock_->KeepPlace();
    propMenuDock_->KeepPlace();
    propTextDock_->KeepPlace();
    frmProp_->KeepSplit();
    frmPropMenu_->KeepSplit();
}

} // namespace mw
