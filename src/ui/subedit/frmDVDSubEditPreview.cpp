#include "ui/subedit/frmDVDSubEditPreview.h"

#include "ui/dialogs/NamedControls.h"
#include "ui/help/HelpWindow.h"

#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace mw {

QImage SubEditPreviewPicture(const SubEditSet& set)
{
    QImage picture = set.Picture.convertToFormat(QImage::Format_RGB32);
    QPainter p(&picture);
    QFont font = p.font();
    font.setPixelSize(11);
    font.setBold(true);
    p.setFont(font);
    for (std::size_t i = 0; i < set.Buttons.size(); ++i) {
        const QRect r = set.Buttons[i].Rect;
        // White with a black edge shows on any highlight colour.
        p.setPen(QPen(Qt::black, 3));
        p.drawRect(r.adjusted(0, 0, -1, -1));
        p.setPen(QPen(Qt::white, 1));
        p.drawRect(r.adjusted(0, 0, -1, -1));
        const QRect label(r.topLeft() + QPoint(2, 2), QSize(18, 14));
        p.fillRect(label, Qt::black);
        p.drawText(label, Qt::AlignCenter, QString::number(i + 1));
    }
    return picture;
}

frmDVDSubEditPreview::frmDVDSubEditPreview(const SubEditSet& set, QWidget* parent) : QDialog(parent)
{
    setObjectName("frmDVDSubEditPreview");
    setWindowTitle("Preview active buttons");
    auto* picture = NamedLabel("Picture1", "");
    picture->setPixmap(QPixmap::fromImage(SubEditPreviewPicture(set)));
    picture->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* area = new QScrollArea;
    area->setWidget(picture);
    area->setWidgetResizable(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(area);
    layout->addWidget(HelpButton(*this), 0, Qt::AlignRight);
    const QSize size = set.Picture.size() + QSize(40, 40);
    resize((size + QSize(0, 40)).boundedTo({1000, 760}).expandedTo({240, 160}));
}

} // namespace mw
