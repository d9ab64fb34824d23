#include "../document/TestProjects.h"
#include "../media/MediaFixtures.h"
#include "MainWindowFixture.h"

#include "media/ChapForm.h"
#include "media/ChapterNodes.h"
#include "media/Chapters.h"
#include "media/NewTitleForm.h"
#include "ui/dialogs/frmChap.h"
#include "ui/dialogs/frmNewTitle.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QTreeWidget>

using namespace mw;
using mw::test::Child;
using mw::test::Click;

namespace {

namespace fs = std::filesystem;

// Four seconds at 25 fps, a key frame every 25 frames, two named MP2 streams.
fs::path Movie()
{
    return test::FfmpegFixture("dialogs.avi", "-f lavfi -i testsrc=size=64x48:rate=25 -f lavfi -i sine=sample_rate=22050 "
                                              "-t 4 -map 0 -map 1 -map 1 -c:v mpeg4 -vtag DX50 -g 25 "
                                              "-sc_threshold 1000000000 -c:a mp2 -metadata:s:a:0 'title=Audio - en-US;02' "
                                              "-metadata:s:a:1 'title=Audio - fr-FR;02'");
}

struct Window : test::MainWindow {
    // The menu project, its title's movie the one of these tests.
    void Open(const fs::path& movie)
    {
        fs::copy_file(movie, Folder() / "movie.avi");
        Write("titles.xml", test::kMenuProject);
        OpenByMenu((Folder() / "titles.xml").string());
    }
    // The chapter form as the command opens it, title 6 chosen.
    ChapForm ChapFormOfFirstTitle()
    {
        ChapForm chap;
        LoadChapForm(chap, project().Doc, ChapSettingsFile(project()), prompt);
        chap.Combo1.ListIndex = 0;
        Combo1_Click(chap, project().Doc, prompt);
        return chap;
    }
};

void Type(QWidget& parent, const char* field, const QString& text, Qt::KeyboardModifiers keys = Qt::NoModifier)
{
    auto* edit = Child<QLineEdit>(parent, field);
    edit->clear();
    QTest::keyClicks(edit, text);
    if (keys != Qt::NoModifier)
        QTest::keyClick(edit, Qt::Key_Return, keys);
}

} // namespace

class TitleDialogsTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void newTitleListsTracksAndAnswers();
    void updateWritesTheNameIntoListAndFile();
    void chapterDialogCountsAndTakesAHandMadeList();
    void applyCreatesAtOnceAndClosingAddsNoMore();

private:
    fs::path movie_;
};

void TitleDialogsTest::init()
{
    movie_ = Movie();
    if (movie_.empty() && mw::test::InCi())
        QFAIL("ffmpeg could not make the movie");
    if (movie_.empty())
        QSKIP("ffmpeg could not make the movie");
}

void TitleDialogsTest::newTitleListsTracksAndAnswers()
{
    Window w;
    for (const char* button : {"Command3", "Command1"}) {
        NewTitleForm form;
        double fps = 0;
        QVERIFY(FillNewTitleForm(form, movie_.string(), fps, w.prompt));
        int rows = 0;
        QString firstAudio;
        QString combo;
        test::OnNextDialog([&](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QString("Add new Title"));
            auto* tracks = Child<QTreeWidget>(dialog, "lstTracks");
            rows = tracks->topLevelItemCount();
            QCOMPARE(tracks->headerItem()->text(5), QString("endFrame"));
            firstAudio = tracks->topLevelItem(1)->text(1);
            combo = Child<QComboBox>(dialog, "Combo1")->currentText();
            Click(dialog, button);
        });
        const bool accepted = w.forms.ShowNewTitle(form);
        QCOMPARE(accepted, QString(button) == "Command1");
        QCOMPARE(form.Accepted, accepted);
        QCOMPARE(rows, 3);
        QCOMPARE(firstAudio, QString("Audio - en-US;02"));
        QCOMPARE(combo, QString("Audio - en-US;02 | 1"));
    }
}

void TitleDialogsTest::updateWritesTheNameIntoListAndFile()
{
    Window w;
    QTemporaryDir folder;
    const fs::path copy = fs::path(folder.path().toStdString()) / "named.avi";
    fs::copy_file(movie_, copy);
    NewTitleForm form;
    double fps = 0;
    QVERIFY(FillNewTitleForm(form, copy.string(), fps, w.prompt));
    frmNewTitle dialog(form, w.prompt, w.project().Lang());
    auto* tracks = Child<QTreeWidget>(dialog, "lstTracks");
    auto* Text1 = Child<QLineEdit>(dialog, "Text1");
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTest::mouseClick(tracks->viewport(), Qt::LeftButton, {}, tracks->visualItemRect(tracks->topLevelItem(2)).center());
    QCOMPARE(Text1->text(), QString("Audio - fr-FR;02"));
    Type(dialog, "Text1", "Audio - de-DE;02");
    Click(dialog, "Command2");
    QCOMPARE(tracks->topLevelItem(2)->text(1), QString("Audio - de-DE;02"));
    QCOMPARE(QString::fromStdString(form.Tracks[2].NameLanguage), QString("Audio - de-DE;02"));
    QVERIFY(w.prompt.Texts().empty());
}

void TitleDialogsTest::chapterDialogCountsAndTakesAHandMadeList()
{
    Window w;
    w.Open(movie_);
    ChapForm form = w.ChapFormOfFirstTitle();
    frmChap dialog(form, w.project());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialog.windowTitle(), QString("Create Chapters for Title"));
    QCOMPARE(Child<QLabel>(dialog, "lblRuntime")->text(), QString("00:00:04.000"));
    QCOMPARE(Child<QLabel>(dialog, "lblEndFrame")->text(), QString("99"));
    QCOMPARE(Child<QTreeWidget>(dialog, "lstTracks")->topLevelItemCount(), 3);

    Type(dialog, "txtChapters", "3");
    QCOMPARE(Child<QLabel>(dialog, "lblCountTime")->text(), QString("every 34 frames")); // 33.3 rounds up
    Child<QRadioButton>(dialog, "optPerMin")->click();
    QCOMPARE(form.Mode, ChapMode::PerMinutes);
    Type(dialog, "txtMinutes", "0.02");
    QCOMPARE(Child<QLabel>(dialog, "lblCountChapters")->text(), QString("3 chapter(s) every 30 frames"));
    QVERIFY(!Child<QLineEdit>(dialog, "txtChapters")->isEnabled());
    QVERIFY(!Child<QPushButton>(dialog, "Command3")->isEnabled()); // the movie plays for the hand-made list

    auto* list = Child<QTreeWidget>(dialog, "ListView1");
    QVERIFY(!list->isEnabled());
    Child<QRadioButton>(dialog, "Option1")->click();
    QVERIFY(list->isEnabled());

    // The preview: play and pause, stop, Ctrl+Enter to a frame, a step of txtStepFrames.
    auto* play = Child<QPushButton>(dialog, "Command3");
    auto* frame = Child<QLabel>(dialog, "lblFrame");
    QVERIFY(play->isEnabled());
    QCOMPARE(play->toolTip(), QString("Play"));
    Click(dialog, "Command3");
    QCOMPARE(play->toolTip(), QString("Pause"));
    QTRY_VERIFY(frame->text().toInt() > 2);
    QVERIFY(!Child<QLabel>(dialog, "picPreview")->pixmap().isNull());
    Click(dialog, "Command3");
    QCOMPARE(play->toolTip(), QString("Resume play"));
    Click(dialog, "Command4");
    QCOMPARE(frame->text(), QString("0"));
    QCOMPARE(play->toolTip(), QString("Play"));
    Type(dialog, "txtStartFrame", "37", Qt::ControlModifier);
    QCOMPARE(frame->text(), QString("37"));
    QCOMPARE(Child<QLabel>(dialog, "lblTime")->text(), QString("0:00:01"));
    QCOMPARE(Child<QPushButton>(dialog, "Command6")->toolTip(), QString("Move forward 30 frames"));
    Click(dialog, "Command6");
    QCOMPARE(frame->text(), QString("67"));
    QCOMPARE(Child<QSlider>(dialog, "Slider1")->value(), 67);

    // Enter adds; Shift+Enter moves the end to the frame before the next key frame.
    Type(dialog, "txtStartFrame", "0");
    Type(dialog, "txtEndFrame", "30", Qt::ShiftModifier);
    QCOMPARE(Child<QLineEdit>(dialog, "txtEndFrame")->text(), QString("49"));
    Type(dialog, "txtEndFrame", "49", Qt::NoModifier);
    QTest::keyClick(Child<QLineEdit>(dialog, "txtEndFrame"), Qt::Key_Return);
    QCOMPARE(list->topLevelItemCount(), 1);
    QCOMPARE(Child<QLineEdit>(dialog, "txtStartFrame")->text(), QString("50"));
    Type(dialog, "txtEndFrame", "99");
    Click(dialog, "Command7");
    QCOMPARE(list->topLevelItemCount(), 2);

    // Insert after the first row: its end moves before the new start.
    list->setCurrentItem(list->topLevelItem(0));
    Type(dialog, "txtStartFrame", "20");
    Type(dialog, "txtEndFrame", "40");
    Click(dialog, "Command8");
    QCOMPARE(list->topLevelItemCount(), 3);
    QCOMPARE(list->topLevelItem(0)->text(2), QString("19"));

    // A name typed into the list goes into the form.
    list->topLevelItem(1)->setText(3, "Middle");
    QCOMPARE(QString::fromStdString(form.ListView1[1].Name), QString("Middle"));

    Click(dialog, "cmdDelete");
    QCOMPARE(list->topLevelItemCount(), 2);
    QVERIFY(w.prompt.Texts().empty());

    // Leaving the dialog closes the movie.
    dialog.reject();
    QVERIFY(!play->isEnabled());
    QCOMPARE(Child<QLabel>(dialog, "lblMovieInfo")->text(), QString());
}

void TitleDialogsTest::applyCreatesAtOnceAndClosingAddsNoMore()
{
    Window w;
    w.Open(movie_);
    QVERIFY(w.Action("mnuCreateChapters")->isEnabled());
    int listed = 0;
    test::OnNextDialog([&listed](QDialog& dialog) {
        Type(dialog, "txtChapters", "2");
        Click(dialog, "Command10");
        listed = Child<QTreeWidget>(dialog, "ListView1")->topLevelItemCount();
        dialog.reject();
    });
    w.Action("mnuCreateChapters")->trigger();
    QCOMPARE(listed, 2); // the new chapters of the title, shown while the dialog stays open
    QCOMPARE(ChapterNodesOf(*w.project().Doc.Tree.ObjectNode("6")).size(), std::size_t{2});
    QVERIFY(w.project().FileIsDirty);
}

QTEST_MAIN(TitleDialogsTest)
#include "TitleDialogsTest.moc"
