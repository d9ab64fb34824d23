#include "ui/mainwindow/ToolbarIcons.h"

#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <QStyle>

#include <array>
#include <optional>

namespace mw {

namespace {

struct IconEntry {
    std::string_view Key;
    std::optional<QStyle::StandardPixmap> Standard;
    const char* Badge;   // the letters drawn when the style has no fitting icon
    QRgb Colour;
};

constexpr QRgb kBlue = 0xff3465a4;
constexpr QRgb kGreen = 0xff4e9a06;
constexpr QRgb kOrange = 0xffce5c00;
constexpr QRgb kPurple = 0xff75507b;
constexpr QRgb kGrey = 0xff555753;

const std::array kIcons{
    IconEntry{"newXml", QStyle::SP_FileIcon, "", kBlue},
    IconEntry{"openXml", QStyle::SP_DialogOpenButton, "", kBlue},
    IconEntry{"save", QStyle::SP_DialogSaveButton, "", kBlue},
    IconEntry{"saveAs", std::nullopt, "S+", kBlue},
    IconEntry{"addTitle", std::nullopt, "T", kGreen},
    IconEntry{"addLang", std::nullopt, "L", kGreen},
    IconEntry{"addMenu", std::nullopt, "M", kGreen},
    IconEntry{"DivX", std::nullopt, "Dx", kOrange},
    IconEntry{"NoCreateOverlays", std::nullopt, "Ov", kGrey},
    IconEntry{"options", std::nullopt, "Op", kGrey},
    IconEntry{"help", std::nullopt, "?", kBlue},
    IconEntry{"buttonAdd", std::nullopt, "B+", kGreen},
    IconEntry{"buttonDel", std::nullopt, "B-", kOrange},
    IconEntry{"shapeSelect", std::nullopt, "Sh", kPurple},
    IconEntry{"shapeName", std::nullopt, "Sn", kPurple},
    IconEntry{"shapeLineWidth", std::nullopt, "W", kPurple},
    IconEntry{"color1", std::nullopt, "1", kPurple},
    IconEntry{"color2", std::nullopt, "2", kPurple},
    IconEntry{"color3", std::nullopt, "3", kPurple},
    IconEntry{"lock", std::nullopt, "Lk", kGrey},
    IconEntry{"previous", QStyle::SP_MediaSeekBackward, "", kGrey},
    IconEntry{"next", QStyle::SP_MediaSeekForward, "", kGrey},
    IconEntry{"play", QStyle::SP_MediaPlay, "", kGrey},
    IconEntry{"stop", QStyle::SP_MediaStop, "", kGrey},
    IconEntry{"closemovie", QStyle::SP_DialogCloseButton, "", kGrey},
    IconEntry{"pause", QStyle::SP_MediaPause, "", kGrey},
};

QIcon Badge(const QString& letters, QColor colour)
{
    QPixmap picture(16, 16);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colour.darker(140));
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3, 3);
    QFont font = painter.font();
    font.setPixelSize(letters.size() > 1 ? 8 : 11);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(0, 0, 16, 16), Qt::AlignCenter, letters);
    painter.end();
    return QIcon(picture);
}

} // namespace

QIcon ToolbarIcon(const QStyle& style, std::string_view key)
{
    for (const IconEntry& entry : kIcons) {
        if (entry.Key != key)
            continue;
        if (entry.Standard)
            return style.standardIcon(*entry.Standard);
        return Badge(QString::fromLatin1(entry.Badge), QColor::fromRgba(entry.Colour));
    }
    return Badge(QString::fromLatin1(key.substr(0, 1)), QColor::fromRgba(kGrey));
}

} // namespace mw
