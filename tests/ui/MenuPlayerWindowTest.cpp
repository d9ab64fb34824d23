#include "MainWindowFixture.h"

#include "build/DemoProject.h"
#include "ui/menuplayer/MenuPlayerWindow.h"

#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QToolButton>

using namespace mw;

// The demo's menu played from the Tools menu: its picture, the remote, the keyboard and a dead
// end shown as it happens, with the canvas and the project left as they were.
class MenuPlayerWindowTest : public QObject {
    Q_OBJECT
private slots:
    void remoteAndKeysPlayTheDemoAndShowDeadEnds();
};

void MenuPlayerWindowTest::remoteAndKeysPlayTheDemoAndShowDeadEnds()
{
    test::MainWindow w;
    QVERIFY(MakeDemoProject(w.Folder(), {{176, 144, 25, 90}, 4}, w.prompt));
    w.OpenByMenu((w.Folder() / "Demo" / "Demo.xml").string());
    QVERIFY(w.Action("mnuMenuPlayer")->isEnabled());
    w.Select(GetPropertyInNode(*w.project().Doc.Tree.Root()->LastChild(), "startingMenuID").c_str());
    const std::string shownMenu = w.project().Canvas.CurrentMenuID;
    QVERIFY(!shownMenu.empty());

    bool ran = false;
    test::OnNextDialog([&](QDialog& dialog) {
        auto* player = dynamic_cast<MenuPlayerWindow*>(&dialog);
        QVERIFY(player);
        auto* events = test::Child<QListWidget>(dialog, "lstEvents");
        auto* status = test::Child<QLabel>(dialog, "lblStatus");
        const auto lines = [events] {
            QStringList all;
            for (int i = 0; i < events->count(); ++i)
                all << events->item(i)->text();
            return all;
        };
        QVERIFY(lines().value(0).startsWith("menu "));
        const std::string first = player->Session().ButtonID();
        QVERIFY(!first.empty());

        // The menu's movie is on the picture.
        auto* picture = test::Child<QWidget>(dialog, "picPlayer");
        const QImage shown = picture->grab().toImage();
        QVERIFY(shown.pixelColor(shown.rect().center()) != QColor(Qt::black));

        // The demo's buttons have no arrows set; OK plays the title; the keyboard's menu key
        // finds no root menu and says so in red.
        QTest::mouseClick(test::Child<QToolButton>(dialog, "cmdDown"), Qt::LeftButton);
        QCOMPARE(status->text(), QString("no button below"));
        QTest::mouseClick(test::Child<QToolButton>(dialog, "cmdOk"), Qt::LeftButton);
        QVERIFY(player->Session().PlayingTitle());
        QVERIFY(lines().last().startsWith("play title "));
        QTest::keyClick(&dialog, Qt::Key_M);
        QVERIFY(status->text().startsWith("dead end: the menu key leads nowhere"));
        QCOMPARE(events->item(events->count() - 1)->foreground().color(), QColor(200, 0, 0));

        // The title plays to its end by the timer and the menu comes back on the same button.
        QTRY_VERIFY_WITH_TIMEOUT(!player->Session().PlayingTitle(), 15000);
        QCOMPARE(player->Session().ButtonID(), first);
        ran = true;
        dialog.reject();
    });
    w.Action("mnuMenuPlayer")->trigger();
    QVERIFY(ran);
    QCOMPARE(w.project().Canvas.CurrentMenuID, shownMenu);
    QVERIFY(!w.project().FileIsDirty);
}

QTEST_MAIN(MenuPlayerWindowTest)
#include "MenuPlayerWindowTest.moc"
