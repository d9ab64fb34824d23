#include "ui/mainwindow/NodeIcons.h"

#include <QColor>
#include <QHash>
#include <QPainter>
#include <QPixmap>

namespace mw {

QIcon NodeIcon(const std::string& kind)
{
    static QHash<QString, QIcon> icons;
    const QString key = QString::fromStdString(kind);
    if (const auto found = icons.constFind(key); found != icons.constEnd())
        return *found;
    // The kind's hash picks the hue, so the colours stay put from run to run.
    const QColor color = QColor::fromHsv(static_cast<int>(qHash(key, 0) % 360), 160, 210);
    QPixmap square(16, 16);
    square.fill(Qt::transparent);
    QPainter painter(&square);
    painter.setPen(color.darker(160));
    painter.setBrush(color);
    painter.drawRect(3, 3, 9, 9);
    painter.end();
    return *icons.insert(key, QIcon(square));
}

} // namespace mw
