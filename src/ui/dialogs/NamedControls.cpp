#include "ui/dialogs/NamedControls.h"

#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

namespace mw {

QLabel* NamedLabel(const char* name, const char* text)
{
    auto* label = new QLabel(QString::fromUtf8(text));
    label->setObjectName(name);
    return label;
}

QPushButton* NamedButton(const char* name, const char* text)
{
    auto* button = new QPushButton(QString::fromUtf8(text));
    button->setObjectName(name);
    // Enter in the frame fields adds a chapter; no button may take it first.
    button->setAutoDefault(false);
    return button;
}

QTreeWidget* TrackList()
{
    auto* list = new QTreeWidget;
    list->setObjectName("lstTracks");
    list->setRootIsDecorated(false);
    list->setAllColumnsShowFocus(true);
    list->setHeaderLabels({"Track", "Name-Language", "Info", "TrackID", "startFrame", "endFrame"});
    return list;
}

void FillTrackList(QTreeWidget& list, const TrackRows& rows)
{
    list.clear();
    for (const TrackRow& row : rows) {
        list.addTopLevelItem(new QTreeWidgetItem(
            {QString::fromStdString(row.Kind), QString::fromStdString(row.NameLanguage),
             QString::fromStdString(row.Info), QString::fromStdString(row.TrackID),
             QString::fromStdString(row.StartFrame), QString::fromStdString(row.EndFrame)}));
    }
}

} // namespace mw
