#include "ui/mainwindow/StatusBar.h"

#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>
#include <QStyle>

namespace mw {

namespace {

QLabel* Panel(QStatusBar& bar, const char* key, const QString& text, int stretch)
{
    auto* panel = new QLabel(text, &bar);
    panel->setObjectName(key);
    panel->setFrameShape(QFrame::Panel);
    panel->setFrameShadow(QFrame::Sunken);
    bar.addPermanentWidget(panel, stretch);
    return panel;
}

} // namespace

StatusBar::StatusBar(QMainWindow& window)
{
    QStatusBar* bar = window.statusBar();
    bar->setObjectName("Status1");
    menu_ = Panel(*bar, "menu", {}, 1);
    Panel(*bar, "CAPS", "CAPS", 0);
    Panel(*bar, "NUM", "NUM", 0);
    // The panel's picture: the language file was made for another version.
    oldLang_ = new QLabel(bar);
    oldLang_->setObjectName("oldlang");
    oldLang_->setPixmap(bar->style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(16, 16));
    oldLang_->setToolTip("The language file was made for another version");
    oldLang_->hide();
    bar->addPermanentWidget(oldLang_);
    last_ = Panel(*bar, "last", {}, 1);
}

void StatusBar::ShowMenu(const std::string& text)
{
    menu_->setText(QString::fromStdString(text));
}

bool StatusBar::ShowInPanel(const std::string& key, const std::string& text)
{
    if (key.empty())
        return false;
    auto* panel = menu_->parentWidget()->findChild<QLabel*>(QString::fromStdString(key), Qt::FindDirectChildrenOnly);
    if (!panel)
        return false;
    panel->setText(QString::fromStdString(text));
    return true;
}

void StatusBar::ShowLast(const LanguagePanel& panel)
{
    last_->setText(QString::fromStdString(panel.Text));
    oldLang_->setVisible(panel.OldLanguage);
}

} // namespace mw
