// The menu canvas driven as a user drives it: mouse and keys on Picture1, its labels, the rulers
// and ToolbarPic. Each test ends by reading the document tree.
#include "../media/MovieFixtures.h"
#include "MainWindowFixture.h"

#include "document/TreeQueries.h"
#include "ui/QtAudioSinks.h"

#include <QMenu>
#include <QToolBar>
#include <QtTest>

using namespace mw;

namespace {

// Menu 12 with three buttons in a row, chained left to right, the first one linked to menu 30.
// Its background is missing, so the canvas is blank.
const char* kProject = R"(<DivXMediaManager objectID="1" defaultMenuLanguage="en">
<TranslationTable objectID="3"/>
<Media objectID="2">
<MenuTracks objectID="20">
<MediaSource objectID="21" mediaType="menuAvi" location="missing.avi"/>
<MediaTrack objectID="22" mediaSourceID="21" trackID="00dc" startFrame="0" endFrame="10" type="video"/>
</MenuTracks>
</Media>
<LanguageMenus objectID="9" languageCode="en" startingMenuID="12" rootMenuID="none">
<DivXMediaMenu objectID="12" backgroundVideoID="22" backgroundAudioID="none" menuType="title" menuName="Main">
<ButtonMenu objectID="13" rightAction="15">
<MenuRectangle objectID="14" left="10" top="20" width="100" height="30"/>
<Action objectID="40">
<MenuTransitionAction objectID="41" menuID="30"/>
</Action>
</ButtonMenu>
<ButtonMenu objectID="15" leftAction="13" rightAction="17">
<MenuRectangle objectID="16" left="200" top="40" width="50" height="50"/>
</ButtonMenu>
<ButtonMenu objectID="17" leftAction="15">
<MenuRectangle objectID="18" left="300" top="100" width="80" height="40"/>
</ButtonMenu>
</DivXMediaMenu>
<DivXMediaMenu objectID="30" backgroundVideoID="22" backgroundAudioID="none" menuType="title" menuName="Second"/>
</LanguageMenus>
</DivXMediaManager>
)";

struct Canvas : test::MainWindow {
    Canvas()
    {
        const std::string file = (Folder() / "canvas.xml").string();
        test::WriteFile(file, kProject);
        OpenByMenu(file);
        form->resize(1200, 800);
        form->show();
        Select("12");
        QCoreApplication::processEvents();
    }
    QWidget* Picture() const { return Widget<QWidget>("Picture1"); }
    QWidget* Label(int n) const { return Picture()->findChild<QWidget*>(QString("Label1_%1").arg(n)); }
    QAction* Tool(const char* key) const { return form->findChild<QToolBar*>("ToolbarPic")->findChild<QAction*>(key); }
    // The rectangle rows of a MenuRectangle, "left top width height".
    QString Rect(const char* id) const
    {
        const DocNode* node = project().Doc.Tree.ObjectNode(id);
        if (!node)
            return "<none>";
        std::string text;
        for (const char* row : {"left", "top", "width", "height"})
            text += (text.empty() ? "" : " ") + GetPropertyInNode(*node, row);
        return QString::fromStdString(text);
    }
    std::string Row(const char* id, const char* row) const
    {
        return GetPropertyInNode(*project().Doc.Tree.ObjectNode(id), row);
    }
    // A drag with the left button, in Picture1's coordinates. A dragged label moves under the
    // mouse, so each point is taken from where the label is by then.
    void Drag(QWidget* on, QPoint from, QPoint to) const
    {
        const auto at = [&](QPoint p) { return on->mapFromGlobal(Picture()->mapToGlobal(p)); };
        QTest::mousePress(on, Qt::LeftButton, {}, at(from));
        QTest::mouseMove(on, at((from + to) / 2));
        QTest::mouseMove(on, at(to));
        QTest::mouseRelease(on, Qt::LeftButton, {}, at(to));
    }
    // The popup of the canvas after a right click at a point of Picture1.
    QMenu* Popup(QPoint at) const
    {
        QTest::mouseClick(Picture(), Qt::RightButton, {}, at);
        return form->findChild<QMenu*>("mnuButtonMenu");
    }
};

} // namespace

class CanvasViewTest : public QObject {
    Q_OBJECT
private slots:
    void playsTheBackgroundVideoAndClosesIt()
    {
        Canvas w;
        auto* timer = w.form->findChild<QTimer*>("Timer1");
        QVERIFY(w.Tool("play")->isEnabled());
        QVERIFY(!w.Tool("closemovie")->isEnabled());
        w.Tool("play")->trigger();
        using Said = std::vector<std::pair<std::string, std::string>>;
        QCOMPARE(w.prompt.ProgressLog, (Said{{"lblMovieInfo", "Opening movie..."},
                                             {"lblMovieInfo", "Error loading file for playing"}}));
        QVERIFY(!w.Tool("closemovie")->isEnabled());

        const auto movie = test::ShortMovie();
        if (movie.empty())
            QSKIP("ffmpeg is not installed");
        std::filesystem::copy_file(movie, w.Folder() / "missing.avi");
        w.prompt.ProgressLog.clear();
        w.Tool("play")->trigger();
        QCOMPARE(w.Tool("play")->toolTip(), QString("Pause"));
        QVERIFY(w.Tool("closemovie")->isEnabled());
        QVERIFY(timer->isActive());
        w.Tool("play")->trigger();
        QCOMPARE(w.Tool("play")->toolTip(), QString("Resume play"));
        QVERIFY(!timer->isActive());
        w.Tool("closemovie")->trigger();
        // The movie has sound: where no device can play it, the canvas says so once.
        const bool device = DeviceSinks()()->Open();
        QCOMPARE(w.prompt.ProgressLog,
                 (Said{{"lblMovieInfo", "Opening movie..."},
                       {"lblMovieInfo", device ? "" : "No sound device: the movie plays without sound"},
                       {"lblMovieInfo", "Closing movie..."},
                       {"lblMovieInfo", "Closing movie... Done"},
                       {"lblMovieInfo", ""}}));
        QCOMPARE(w.Tool("play")->toolTip(), QString("Play"));
        QVERIFY(!w.Tool("closemovie")->isEnabled());
    }

    void drawsAButtonInAddMode()
    {
        Canvas w;
        QVERIFY(w.Label(3) && !w.Label(4));
        w.Tool("buttonAdd")->trigger();
        w.Drag(w.Picture(), {500, 300}, {400, 240}); // drawn from right to left
        QVERIFY(!w.Tool("buttonAdd")->isChecked());
        QVERIFY(w.Label(4));
        const DocNode& menu = w.project().Doc.Tree.Item("k12");
        const DocNode* button = ChildNamed(&menu, "ButtonMenu", true);
        QCOMPARE(GetPropertyInNode(*ChildNamed(button, "MenuRectangle"), "left") + " " +
                     GetPropertyInNode(*ChildNamed(button, "MenuRectangle"), "width"),
                 std::string("400 100"));
    }

    void snapsAMovedButtonToAGuideLineMovesAnOverlayAloneAndResizesWithShiftArrows()
    {
        Canvas w;
        auto* ruler = w.Widget<QWidget>("rullerT");
        QCOMPARE(ruler->toolTip(), QString("Left click and drag on the ruler to create/move vertical guide lines"));
        const QPoint onRuler = ruler->mapFromGlobal(w.Picture()->mapToGlobal(QPoint(150, 0))) + QPoint(0, 10);
        QTest::mouseClick(ruler, Qt::LeftButton, {}, onRuler);
        QCOMPARE(w.project().Canvas.LinesV, std::vector<long>{150});

        // The right edge comes to 147, 3 short of the line, and snaps onto it.
        w.Drag(w.Label(1), {20, 30}, {57, 35});
        QCOMPARE(w.Rect("14"), QString("50 25 100 30"));

        // Beside the rectangle of 17, on its overlay: the overlay moves, the button stays.
        w.Drag(w.Picture(), {297, 97}, {287, 97});
        QCOMPARE(QString::fromStdString(w.project().Doc.Tree.Item("k17").Tag),
                 QString("<Menuwright Shape='*Rect' Position='16 6 -12 -12'/>"));
        QCOMPARE(w.Rect("18"), QString("300 100 80 40"));

        QTest::mouseClick(w.Label(3), Qt::LeftButton, {}, {5, 5});
        QTest::keyClick(w.Picture(), Qt::Key_Right, Qt::ShiftModifier);
        QTest::keyClick(w.Picture(), Qt::Key_Right, Qt::ShiftModifier);
        QTest::keyClick(w.Picture(), Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(w.Picture(), Qt::Key_Up);
        QCOMPARE(w.Rect("18"), QString("300 99 82 41"));
        QCOMPARE(w.Rect("14"), QString("50 25 100 30"));
    }

    void aLockedMenuKeepsItsButtonsInPlace()
    {
        Canvas w;
        w.Tool("lock")->trigger();
        QVERIFY(w.Tool("lock")->isChecked());
        w.Drag(w.Label(2), {210, 50}, {260, 90});
        QTest::keyClick(w.Picture(), Qt::Key_Left);
        QCOMPARE(w.SelectedKey(), std::string("k15")); // selected all the same
        QVERIFY(!w.Widget<QWidget>("ResizeBorder1_8")->isVisible());
        QCOMPARE(w.Rect("16"), QString("200 40 50 50"));
        QCOMPARE(w.project().Doc.Tree.Item("k12").Tag, std::string("<Menuwright lock='1'/>"));
    }

    void selectsWithABandFromRightToLeftThenAlignsAndSizes()
    {
        Canvas w;
        w.Drag(w.Picture(), {260, 95}, {5, 5}); // buttons 13 and 15, not 17
        QVERIFY(!w.Tool("buttonDel")->isEnabled());
        QTest::mouseClick(w.Label(2), Qt::LeftButton, {}, {5, 5}); // the one the others line up on
        QMenu* popup = w.Popup({600, 500});
        QVERIFY(w.Action("mnuAlign")->isEnabled());
        QVERIFY(!w.Action("mnuOverlays")->isEnabled());
        w.Action("mnuAlignTop")->trigger();
        popup->close();
        w.Popup({600, 500});
        w.Action("mnuSizeBoth")->trigger();
        popup->close();
        QCOMPARE(w.Rect("14"), QString("10 40 50 50"));
        QCOMPARE(w.Rect("16"), QString("200 40 50 50"));
        QCOMPARE(w.Rect("18"), QString("300 100 80 40"));
    }

    void deletesAButtonAndStitchesItsNeighbours()
    {
        Canvas w;
        QTest::mouseClick(w.Label(2), Qt::LeftButton, {}, {5, 5});
        QTest::keyClick(w.Picture(), Qt::Key_Delete);
        QVERIFY(!w.project().Doc.Tree.ObjectNode("15"));
        QCOMPARE(w.Row("13", "rightaction"), std::string("17"));
        QCOMPARE(w.Row("17", "leftaction"), std::string("13"));
        QVERIFY(!w.Label(3));
    }

    void followsALinkOnDoubleClick()
    {
        Canvas w;
        QTest::mouseDClick(w.Label(1), Qt::LeftButton, {}, {5, 5});
        QCOMPARE(w.SelectedKey(), std::string("k30"));
        QCOMPARE(w.project().Canvas.CurrentMenuID, std::string("30"));
        QVERIFY(!w.Label(1));
        QCOMPARE(w.Rect("14"), QString("10 20 100 30")); // the double click moved nothing
    }
};

QTEST_MAIN(CanvasViewTest)
#include "CanvasViewTest.moc"
