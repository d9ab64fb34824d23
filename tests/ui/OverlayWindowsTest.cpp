#include "../document/TestProjects.h"
#include "MainWindowFixture.h"

#include "menus/CanvasCommands.h"
#include "menus/OverlayAttributes.h"
#include "menus/OverlayDialogs.h"
#include "render/cDIB.h"
#include "ui/QtColor.h"
#include "ui/panels/frmPropText.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

using namespace mw;
using test::Child;
using test::Click;

namespace {

namespace fs = std::filesystem;

// The window with the menu on its canvas and a button selected.
struct Window : test::MainWindow {
    explicit Window(int button)
    {
        Write("overlays.xml", test::kCanvasProject);
        OpenByMenu((Folder() / "overlays.xml").string());
        ParceMenu(project(), project().Doc.Tree.Item("k12"));
        Label1_Click(project(), button);
        prompt.Log.clear();
    }
    const std::string& Tag(const char* id) const { return project().Doc.Tree.ObjectNode(id)->Tag; }
};

} // namespace

class OverlayWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void textPanelWritesEachChangeIntoTheButton();
    void pictureDialogPicksTheTransparentColour();
    void colourDialogGivesItsCustomColoursToTheMenu();
};

void OverlayWindowsTest::textPanelWritesEachChangeIntoTheButton()
{
    Window w(0);
    QVERIFY(CreateTextOverlay(w.project()));
    frmPropText panel(w.project());
    int repaints = 0;
    connect(&panel, &frmPropText::OverlayChanged, [&repaints] { ++repaints; });
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    QCOMPARE(panel.windowTitle(), QString(" Text Overlay Propepties"));

    // The text comes selected, so typing replaces it.
    QTest::keyClicks(Child<QPlainTextEdit>(panel, "Text1"), "Go");
    Child<QComboBox>(panel, "Combo1")->setCurrentIndex(2);
    auto* distance = Child<QLineEdit>(panel, "txt3D");
    distance->selectAll();
    QTest::keyClicks(distance, "6");
    Child<QCheckBox>(panel, "Check1_0")->click(); // Left-Top comes before the Right-Bottom box
    w.prompt.Fonts.push_back(FontChoice{"DejaVu Serif", 12.5, true, false});
    Click(panel, "Command1");

    QCOMPARE(w.Tag("13"), std::string("<Menuwright Shape='*Text' width='5' Position='0 0 0 0' Text='Go' Outline='2' "
                                      "Shadow='6LT' Font='DejaVu Serif,B' FontSize='12.5' FontCharset='0'/>"));
    QVERIFY(repaints >= 5);
    QCOMPARE(w.project().Undo.Count(), std::size_t{1}); // the panel's edits add no undo steps
}

void OverlayWindowsTest::pictureDialogPicksTheTransparentColour()
{
    Window w(1);
    fs::create_directories(w.Folder() / "overlays");
    QImage picture(12, 8, QImage::Format_RGB32);
    picture.fill(QColor(0, 160, 0));
    for (int x = 4; x < 8; ++x) {
        for (int y = 2; y < 6; ++y)
            picture.setPixelColor(x, y, QColor(250, 0, 0));
    }
    const std::string file = (w.Folder() / "badge.bmp").string();
    QVERIFY(picture.save(QString::fromStdString(file)));

    bool okBeforePick = true;
    w.prompt.OpenedFiles.push_back({file});
    test::OnNextDialog([&](QDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), QString("Create Overlay from picture"));
        okBeforePick = Child<QPushButton>(dialog, "OKButton")->isEnabled();
        QTest::mouseClick(Child<QLabel>(dialog, "Picture1"), Qt::LeftButton, {}, QPoint(5, 3)); // red
        QTest::mouseClick(Child<QLabel>(dialog, "Picture1"), Qt::LeftButton, {}, QPoint(1, 1)); // green
        Click(dialog, "Command2");
        Click(dialog, "OKButton");
    });
    QVERIFY(CreateOverlayFromPic(w.project()));
    QVERIFY(!okBeforePick);
    QCOMPARE(w.Tag("15"), std::string("<Menuwright Shape='badge' Position='6 6 -12 -12'/>"));
    cDIB saved;
    QVERIFY(saved.CreateFromBitmapFile((w.Folder() / "overlays" / "badge.bmp").string()));
    QCOMPARE(saved.BPP(), 4);
    QCOMPARE(saved.Pixel(0, 0), 0u);
    QVERIFY(saved.Pixel(5, 3) != 0u);

    // Replacing it is allowed, but the dialog is cancelled: nothing changes.
    const std::size_t steps = w.project().Undo.Count();
    w.prompt.OpenedFiles.push_back({file});
    test::OnNextDialog([](QDialog& dialog) { Click(dialog, "CancelButton"); });
    QVERIFY(!CreateOverlayFromPic(w.project()));
    QCOMPARE(w.project().Undo.Count(), steps);
}

void OverlayWindowsTest::colourDialogGivesItsCustomColoursToTheMenu()
{
    Window w(0);
    QColor shown;
    test::OnNextDialog([&shown](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("SelectColor"));
        shown = QColorDialog::customColor(2);
        QColorDialog::setCustomColor(1, QColor(0, 255, 0));
        Child<QDialogButtonBox>(dialog, nullptr)->button(QDialogButtonBox::Ok)->click();
    });
    QVERIFY(SelectColor(w.project()));
    QCOMPARE(shown, ToQColor(3));
    QCOMPARE(w.Tag("12"), std::string("<Menuwright Color1='1' Color2='65280' Color3='3' frame='7' lock='1'/>"));
}

QTEST_MAIN(OverlayWindowsTest)
#include "OverlayWindowsTest.moc"
