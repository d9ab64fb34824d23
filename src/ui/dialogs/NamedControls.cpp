#include "ui/dialogs/NamedControls.h"

#include <QDialog>
#include <QHBoxLayout>
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

QHBoxLayout* OkCancelRow(QDialog& dialog, QPushButton* ok, QPushButton* cancel, bool& accepted)
{
    accepted = false;
    QObject::connect(ok, &QPushButton::clicked, &dialog, [&dialog, &accepted] {
        accepted = true;
        dialog.accept();
    });
    QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    QObject::connect(&dialog, &QDialog::rejected, &dialog, [&accepted] { accepted = false; });
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
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
