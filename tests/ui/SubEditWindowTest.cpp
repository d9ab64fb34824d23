#include "../document/TestProjects.h"
#include "../generators/SubEditPicture.h"
#include "MainWindowFixture.h"

#include "ui/subedit/frmButtonsFromDVDSubEdit.h"
#include "ui/subedit/frmDVDSubEditPreview.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

using namespace mw;

namespace {

QWidget* CanvasLabel(test::MainWindow& window, int n)
{
    return window.Widget<QWidget>("Picture1")->findChild<QWidget*>(QString("Label1_%1").arg(n));
}

} // namespace

class SubEditWindowTest : public QObject {
    Q_OBJECT
private slots:
    void aPictureFromAFileIsPastedOntoTheCanvas();
    void setsAreChosenAndClearedByTheirNumbers();
};

// Where no window can be read, dropping the icon asks for the picture; the areas found are pasted
// as buttons of the menu on the canvas, with the main window hidden and shown again meanwhile.
void SubEditWindowTest::aPictureFromAFileIsPastedOntoTheCanvas()
{
    test::MainWindow window;
    const std::string file = (window.Folder() / "canvas.xml").string();
    test::WriteFile(file, test::kCanvasProject);
    window.OpenByMenu(file);
    window.form->resize(1000, 700);
    window.form->show();
    window.Select("12");
    QCoreApplication::processEvents();
    QVERIFY(CanvasLabel(window, 3) && !CanvasLabel(window, 4));
    QVERIFY(window.Action("mnuButtonsFromDVDSubEdit")->isEnabled());

    const QString picture = QString::fromStdString((window.Folder() / "menu.png").string());
    QVERIFY(test::HighlightPicture().save(picture));
    window.prompt.Log.clear();
    window.prompt.OpenedFiles.push_back({picture.toStdString()});
    // What the window shows along the way, checked once it is closed.
    QString found, pasted, restore;
    bool labelsShown = false, hidden = false, stayed = false, shownAgain = false;
    test::OnNextDialog([&](QDialog& dialog) {
        auto* icon = test::Child<QLabel>(dialog, "Picture1");
        QTest::mousePress(icon, Qt::LeftButton, {}, {5, 5});
        QTest::mouseRelease(icon, Qt::LeftButton, {}, {5, 5});
        found = test::Child<QLabel>(dialog, "status")->text();
        labelsShown = test::Child<QLabel>(dialog, "Label2_1")->isEnabled() &&
                      !test::Child<QLabel>(dialog, "Label2_2")->isEnabled();

        test::Click(dialog, "Command5");
        hidden = window.form->isHidden();
        stayed = dialog.isVisible();
        restore = test::Child<QPushButton>(dialog, "Command5")->text();
        test::Click(dialog, "Command5");
        shownAgain = window.form->isVisible();

        // Moved one pixel right, forced to 16 by 16.
        test::Click(dialog, "Command13");
        test::Child<QCheckBox>(dialog, "chkForce")->setChecked(true);
        test::Child<QLineEdit>(dialog, "Text1")->setText("16");
        test::Click(dialog, "Command3");
        pasted = test::Child<QLabel>(dialog, "status")->text();
        test::Click(dialog, "Command5");
        dialog.reject();
    });
    window.Action("mnuButtonsFromDVDSubEdit")->trigger();
    QCOMPARE(found, QString("4 buttons found"));
    QVERIFY(labelsShown);
    QVERIFY(hidden && stayed && shownAgain);
    QCOMPARE(restore, QString("Show Main window"));
    QCOMPARE(pasted, QString("4 buttons pasted"));
    QVERIFY(window.form->isVisible()); // closing the tool brings the main window back
    // Only the canvas, shown again, tells of the menu's missing video.
    const std::string missing = "File not found \"" + (window.Folder() / "menu.avi").string() + "\"\r\n";
    QCOMPARE(window.prompt.Texts().size(), std::size_t(1));
    QVERIFY(window.prompt.Texts().front().starts_with(missing));

    const std::vector<CanvasButton>& buttons = window.project().Canvas.Buttons;
    QCOMPARE(buttons.size(), std::size_t(7));
    QCOMPARE(buttons.back().Label.Left, 171L);
    QCOMPARE(buttons.back().Label.Width, 16L);
    for (int n = 4; n <= 7; ++n) {
        QWidget* label = CanvasLabel(window, n);
        QVERIFY(label && label->isVisible());
    }
    QCOMPARE(CanvasLabel(window, 7)->geometry().topLeft(), QPoint(171, 90));
    QVERIFY(std::filesystem::exists(SubEditOverlayFile(window.Folder(), "12", 4)));
}

// A click makes a set active, a right click clears it, a right click on the heading clears all;
// the preview draws the active set's rectangles over its picture.
void SubEditWindowTest::setsAreChosenAndClearedByTheirNumbers()
{
    test::MainWindow window;
    frmButtonsFromDVDSubEdit dialog(window.project(), window.form.get());
    dialog.Captured(test::HighlightPicture());
    dialog.Captured(test::GridPicture(3));
    QCOMPARE(dialog.Sets().ActiveIndex(), 1);
    QTest::mouseClick(test::Child<QLabel>(dialog, "Label2_1"), Qt::LeftButton);
    QCOMPARE(dialog.Sets().ActiveIndex(), 0);
    QTest::mouseClick(test::Child<QLabel>(dialog, "Label2_2"), Qt::RightButton);
    QVERIFY(dialog.Sets().Set(1).Empty());
    QVERIFY(!test::Child<QLabel>(dialog, "Label2_2")->isEnabled());

    const QImage preview = SubEditPreviewPicture(*dialog.Sets().Active());
    const QRect first = test::ExpectedHighlights().front();
    QCOMPARE(preview.pixel(first.topLeft()), qRgb(255, 255, 255));
    QCOMPARE(preview.pixel(45, 20), qRgb(255, 0, 0));

    QTest::mouseClick(test::Child<QLabel>(dialog, "Label3"), Qt::RightButton);
    QCOMPARE(dialog.Sets().ActiveIndex(), -1);
    QVERIFY(dialog.Sets().Set(0).Empty());
    test::Click(dialog, "Command3");
    QCOMPARE(window.prompt.Texts(), std::vector<std::string>{kSubEditNoActive});
}

QTEST_MAIN(SubEditWindowTest)
#include "SubEditWindowTest.moc"
