#include "../media/MovieFixtures.h"
#include "MainWindowFixture.h"

#include "core/settings/Settings.h"
#include "media/TitleNodes.h"
#include "ui/wizard/WizardWindow.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTest>
#include <QTreeWidget>

using namespace mw;

namespace {

namespace fs = std::filesystem;

// Accepts the next new-title dialogs as they come, one per movie.
void AcceptNewTitles(int count)
{
    if (count == 0)
        return;
    test::OnNextDialog([count](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("frmNewTitle"));
        AcceptNewTitles(count - 1);
        test::Click(dialog, "Command1");
    });
}

void ClickRow(QTreeWidget* tree, QTreeWidgetItem* item, bool twice = false)
{
    const QPoint at = tree->visualItemRect(item).center();
    if (twice)
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, at);
    else
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, at);
}

} // namespace

class WizardWindowTest : public QObject {
    Q_OBJECT
private slots:
    void twoMoviesToLinkedMenus();
};

// From an empty window through the four panels over two movies: chapters for the second, which
// also has two audio streams; its chapter page edited to six a page; then the menus made and the
// title menu on the canvas.
void WizardWindowTest::twoMoviesToLinkedMenus()
{
    const fs::path shortMovie = test::ShortMovie();
    const fs::path twoAudio = test::PalMovieWithTwoMp3();
    if (shortMovie.empty() || twoAudio.empty())
        QSKIP("ffmpeg could not make the movies");
    test::MainWindow window;
    window.form->show();
    Project& project = window.project();
    project.Values().MethodForPicToMenu = kPicToMenuBuiltIn;
    const fs::path a = window.Folder() / "a.avi";
    const fs::path b = window.Folder() / "b.avi";
    fs::copy_file(shortMovie, a);
    fs::copy_file(twoAudio, b);
    QAction* wizard = window.Action("mnuNewWizard");
    QVERIFY(wizard->isEnabled());
    QCOMPARE(wizard->shortcut(), QKeySequence("Ctrl+W"));

    bool finished = false;
    test::OnNextDialog([&](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("frmWizard"));
        QCOMPARE(dialog.windowTitle(), QString("New project wizard"));
        auto* panels = dialog.findChild<QStackedWidget*>();
        auto* next = test::Child<QPushButton>(dialog, "btnNext");
        QVERIFY(!next->isEnabled());

        window.prompt.OpenedFiles.push_back({a.string(), b.string()});
        AcceptNewTitles(2);
        test::Click(dialog, "Command1");
        auto* titles = test::Child<QListWidget>(dialog, "List1");
        QCOMPARE(titles->count(), 2);
        QCOMPARE(titles->item(1)->text(), QString::fromStdString(b.string()));
        titles->setCurrentRow(1);
        QCOMPARE(test::Child<QListWidget>(dialog, "Info2")->count(), 2);
        test::OnNextDialog([](QDialog& chapters) {
            QCOMPARE(chapters.objectName(), QString("frmChap"));
            auto* count = test::Child<QLineEdit>(chapters, "txtChapters");
            count->clear();
            QTest::keyClicks(count, "2");
            test::Click(chapters, "Command2");
        });
        test::Click(dialog, "Command3");

        QVERIFY(next->isEnabled());
        test::Click(dialog, "btnNext");
        QCOMPARE(panels->currentIndex(), 1);
        QVERIFY(test::Child<QCheckBox>(dialog, "chkCreateTitleMenu")->isChecked());
        auto* chapterBox = test::Child<QCheckBox>(dialog, "chkCreateChapterMenu");
        QVERIFY(chapterBox->isChecked());
        test::Child<QCheckBox>(dialog, "chkCreateSetupMenu")->click();
        chapterBox->click();
        QVERIFY(chapterBox->isChecked());
        QCOMPARE(window.prompt.Texts().back(), std::string("You can not have a setup menu without a chapter menu"));

        test::Click(dialog, "btnNext");
        QCOMPARE(panels->currentIndex(), 2);
        QCOMPARE(next->text(), QString("Create >"));
        auto* tree = test::Child<QTreeWidget>(dialog, "TreeView1");
        QCOMPARE(tree->topLevelItemCount(), 3);
        QCOMPARE(tree->topLevelItem(0)->childCount(), 1);
        QCOMPARE(tree->topLevelItem(2)->childCount(), 1);
        QTreeWidgetItem* chapterRow = tree->topLevelItem(1)->child(0);
        QCOMPARE(chapterRow->text(0), QString("b_Chapter.avi 1/1"));
        ClickRow(tree, chapterRow);
        QCOMPARE(test::Child<QLineEdit>(dialog, "Text1")->text(),
                 QString::fromStdString((window.Folder() / "b_Chapter.avi").string()));
        QVERIFY(!test::Child<QLabel>(dialog, "picMenuPreview")->pixmap().isNull());

        // Edited in the generator window: six a page; the page stays the wizard's.
        test::OnNextDialog([](QDialog& generator) {
            QCOMPARE(generator.objectName(), QString("frmVisualMenuForChapters"));
            QVERIFY(!test::Child<QPushButton>(generator, "Command1")->isVisible());
            test::Child<QRadioButton>(generator, "Option1")->click();
            test::Click(generator, "Command4");
        });
        ClickRow(tree, chapterRow, true);
        auto* shown = dynamic_cast<WizardWindow*>(&dialog);
        QVERIFY(shown);
        QCOMPARE(shown->Model().List1[1].Chapters->PerPage, 6);
        QCOMPARE(tree->topLevelItem(1)->child(0)->text(0), QString("b_Chapter.avi 1/1"));

        // Cancel while the last menu is made: nothing is made and the pages stay for another try.
        bool pressed = false;
        window.prompt.OnProgress = [&](const std::string& text) {
            if (pressed || text != "Creating menu for setup... b.avi")
                return;
            pressed = true;
            QVERIFY(!panels->isEnabled());
            test::Click(dialog, "CancelButton");
        };
        test::Click(dialog, "btnNext");
        window.prompt.OnProgress = nullptr;
        QVERIFY(pressed);
        QCOMPARE(panels->currentIndex(), 2);
        QVERIFY(panels->isEnabled());
        QVERIFY(!fs::exists(window.Folder() / "a_Title.avi"));
        QVERIFY(!fs::exists(window.Folder() / "b_Setup.avi"));

        test::Click(dialog, "btnNext");
        QCOMPARE(panels->currentIndex(), 3);
        QCOMPARE(test::Child<QListWidget>(dialog, "List3")->count(), 3);
        QVERIFY(!test::Child<QPushButton>(dialog, "btnBack")->isEnabled());
        QVERIFY(!next->isEnabled());
        QCOMPARE(window.prompt.Texts().back(), std::string("Menu creation finished"));
        QCOMPARE(test::Child<QPushButton>(dialog, "CancelButton")->text(), QString("Close"));
        finished = true;
        test::Click(dialog, "CancelButton");
    });
    wizard->trigger();
    QVERIFY(finished);

    QCOMPARE(TitleNodes(project.Doc).size(), std::size_t{2});
    for (const char* made : {"a_Title.avi", "b_Chapter.avi", "b_Setup.avi"})
        QVERIFY2(fs::is_regular_file(window.Folder() / made), made);
    // The canvas shows the title menu: a button per title.
    QVERIFY(!project.Canvas.CurrentMenuID.empty());
    QCOMPARE(project.Canvas.Buttons.size(), std::size_t{2});
    QVERIFY(project.FileIsDirty);
    QVERIFY(project.Check(false));
}

QTEST_MAIN(WizardWindowTest)
#include "WizardWindowTest.moc"
