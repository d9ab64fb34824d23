#include "ui/dialogs/frmAbout.h"

#include "core/Version.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace mw {

frmAbout::frmAbout(QWidget* parent) : QDialog(parent)
{
    setObjectName("frmAbout");
    setWindowTitle(QString("About %1").arg(kAppTitle));
    auto* title = new QLabel(QString("%1 %2").arg(kAppTitle, kVersionText));
    title->setObjectName("lblTitle");
    auto* text = new QLabel("Authoring of interactive DivX media files: menus, titles, chapters and languages.");
    text->setObjectName("lblDescription");
    text->setWordWrap(true);
    auto* ok = new QPushButton("OK");
    ok->setObjectName("OKButton");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(text);
    layout->addWidget(ok, 0, Qt::AlignRight);
}

} // namespace mw
