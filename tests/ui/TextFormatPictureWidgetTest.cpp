#include "ui/widgets/TextFormatWidget.h"

#include <QImage>
#include <QTemporaryDir>
#include <QTest>

using namespace mw;

class TextFormatPictureWidgetTest : public QObject {
    Q_OBJECT
private slots:
    // The picture is read in the window layer and painted scaled into the box the layout gave.
    void pictureBelowTheProgramFolderIsPainted()
    {
        QTemporaryDir folder;
        QImage red(4, 2, QImage::Format_RGB32);
        red.fill(Qt::red);
        QVERIFY(red.save(folder.filePath("red.png")));

        TextFormatWidget widget;
        widget.resize(200, 100);
        widget.show();
        widget.SetProgramFolder(folder.path());
        widget.SetText("ab[g<APP.PATH>\\red.png|40]cd");
        QCOMPARE(widget.Layout().Pictures.size(), std::size_t(1));
        const TextRect box = widget.Layout().Pictures[0].Box;
        QCOMPARE(box.Width, 40);
        QCOMPARE(box.Height, 20);
        const QImage shown = widget.viewport()->grab().toImage();
        QCOMPARE(shown.pixelColor(box.Left + 20, box.Top + 10), QColor(Qt::red));
        QCOMPARE(shown.pixelColor(box.Right() + 30, box.Top + 1), widget.BackColor());
    }
};

QTEST_MAIN(TextFormatPictureWidgetTest)
#include "TextFormatPictureWidgetTest.moc"
