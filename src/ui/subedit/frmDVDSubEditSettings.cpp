#include "ui/subedit/frmDVDSubEditSettings.h"

#include "ui/QtDesignTarget.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/help/HelpWindow.h"

#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace mw {

frmDVDSubEditSettings::frmDVDSubEditSettings(const std::filesystem::path& programFolder, QWidget* parent)
    : QDialog(parent)
{
    setObjectName("frmDVDSubEditSettings");
    setWindowTitle("DVDSubEdit settings");
    const QString file = QString::fromStdString((programFolder / "DVDSubEditSettings.jpg").string());
    const QPixmap picture(file);
    auto* Image1 = NamedLabel("Image1", "");
    MarkAsOutput(*Image1);
    if (picture.isNull())
        Image1->setText("The picture " + file + " is missing.");
    else
        Image1->setPixmap(picture);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Image1);
    layout->addWidget(HelpButton(*this), 0, Qt::AlignRight);
}

} // namespace mw
