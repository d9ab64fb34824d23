#include "../media/MovieFixtures.h"
#include "MainWindowFixture.h"

#include "build/DemoProject.h"
#include "core/settings/Settings.h"
#include "document/TreeQueries.h"
#include "document/TreeViewToXml.h"
#include "generators/ChapterMenu.h"
#include "generators/PageComposer.h"
#include "generators/PageSettings.h"
#include "media/AviCache.h"
#include "media/ChapterNodes.h"
#include "media/FrameGrabber.h"
#include "media/TitleNodes.h"
#include "menus/Actions.h"
#include "ui/generators/GeneratorWindow.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include <array>

using namespace mw;

namespace {

namespace fs = std::filesystem;

// The rectangle of the shown menu's button `i`, as the canvas has it.
QRect ButtonRect(const Project& project, std::size_t i)
{
    const ButtonShape& shape = project.Canvas.Buttons.at(i).Label;
    return {int(shape.Left), int(shape.Top), int(shape.Width), int(shape.Height)};
}

long FrameCount(const std::string& video)
{
    const auto avi = OpenAvi(video, AviRead::Headers);
    const auto stream = avi ? FirstVideoStream(*avi) : std::nullopt;
    return stream ? static_cast<long>(avi->Stream(*stream).Info.dwLength) : -1;
}

std::string ButtonProperty(Project& project, std::size_t i, const char* key)
{
    const DocNode* button = project.Doc.Tree.ObjectNode(project.Canvas.Buttons.at(i).Label.Tag);
    return button ? GetPropertyInNode(*button, key) : "";
}

void Drag(QWidget* page, QPoint from, QPoint to)
{
    QTest::mousePress(page, Qt::LeftButton, {}, from);
    QTest::mouseMove(page, to);
    QTest::mouseRelease(page, Qt::LeftButton, {}, to);
}

// Runs `act` on the modal dialog of that name once it shows, whatever windows come and go before.
void OnDialog(const QString& name, const std::function<void(QDialog&)>& act)
{
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, [poll, name, act] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || dialog->objectName() != name)
            return;
        poll->deleteLater();
        poll->stop();
        act(*dialog);
    });
    poll->start(5);
}

} // namespace

class GeneratorWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void chapterAndTitleMenusFromTheirWindows();
    void manyMoviesHandTheirPageToTheTitleWindow();
};

// The user opens the chapter window on the demo, drags a thumbnail and a label and creates
// motion menus; the canvas then shows the first page with its buttons wired. The setup window does the same.
void GeneratorWindowsTest::chapterAndTitleMenusFromTheirWindows()
{
    test::MainWindow window;
    window.form->show();
    Project& project = window.project();
    QAction* chapters = window.Action("mnuCreateVisualMenuForChapters");
    QVERIFY(!chapters->isEnabled());

    const fs::path made = window.Folder() / "made";
    QVERIFY(MakeDemoProject(made, {{176, 144, 25, 100}, 9}, window.prompt));
    window.OpenByMenu((made / "Demo" / "Demo.xml").string());
    QVERIFY(chapters->isEnabled());
    project.Values().MethodForPicToMenu = kPicToMenuBuiltIn;

    // Where the window lays out the first chapter, as the core computes it.
    MenuPage expected;
    QVERIFY(OpenChapterPage(project, ObjectIdOf(*TitleNodes(project.Doc).front()), 8, expected));
    const QRect first = ItemRect(expected, expected.Items[0]);
    const QRect second = ItemRect(expected, expected.Items[1]);
    const QPoint by(5, 3);
    const PageLabel& label = expected.Design.Main;
    const QRect main(label.Left, label.Top, label.Width, label.Height);

    const std::string name = (made / "chapters").string();
    window.prompt.SavedFiles.push_back(name);
    test::OnNextDialog([&](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("frmVisualMenuForChapters"));
        auto* page = test::Child<QWidget>(dialog, "PicCon");
        QCOMPARE(page->size(), QSize(expected.Width, expected.Height));
        Drag(page, first.center(), first.center() + by);
        // The main label grows by its lower right corner.
        Drag(page, main.bottomRight(), main.bottomRight() + by);

        // A background of five colours: the page's corners show the corner colours.
        const std::array<std::uint32_t, 5> colors{0x0000FF, 0x00FF00, 0xFF0000, 0xFFFFFF, 0x808080};
        test::OnNextDialog([&](QDialog& background) {
            QCOMPARE(background.objectName(), QString("frmSelectColor"));
            test::Child<QRadioButton>(background, "Option4")->click();
            auto* middle = test::Child<QLabel>(background, "lblColor_4");
            QVERIFY(!middle->isEnabled());
            test::Child<QRadioButton>(background, "Option2")->click();
            QVERIFY(middle->isEnabled());
            for (std::size_t i = 0; i < colors.size(); ++i) {
                window.prompt.Colors.push_back(colors[i]);
                const std::string box = "lblColor_" + std::to_string(i);
                QTest::mouseClick(test::Child<QLabel>(background, box.c_str()), Qt::LeftButton);
            }
            QVERIFY(window.prompt.Colors.empty());
            test::Click(background, "OKButton");
        });
        test::Child<QAction>(dialog, "mnuBackground")->trigger();
        const QImage shown = page->grab().toImage();
        const int right = shown.width() - 1;
        const int bottom = shown.height() - 1;
        QCOMPARE(shown.pixel(0, 0), qRgb(255, 0, 0));
        QCOMPARE(shown.pixel(right, 0), qRgb(0, 255, 0));
        QCOMPARE(shown.pixel(0, bottom), qRgb(0, 0, 255));
        QCOMPARE(shown.pixel(right, bottom), qRgb(255, 255, 255));
        // The middle of the page, between the thumbnails, has the fifth colour.
        const QRgb centre = shown.pixel(right / 2, bottom / 2);
        for (int channel : {qRed(centre), qGreen(centre), qBlue(centre)})
            QVERIFY(std::abs(channel - 0x80) <= 2);

        // The caption overlay, kept in the settings the window saves.
        test::OnNextDialog([](QDialog& overlay) {
            QCOMPARE(overlay.windowTitle(), QString("Select overlay"));
            test::Child<QRadioButton>(overlay, "Option2")->click();
            test::Click(overlay, "OKButton");
        });
        test::Click(dialog, "cmdOverlay");
        test::Child<QAction>(dialog, "mnuSetSettings")->trigger();
        // A motion menu of one second: each thumbnail plays 25 frames of its chapter.
        auto* seconds = test::Child<QLineEdit>(dialog, "Text1");
        seconds->clear();
        QTest::keyClicks(seconds, "1");
        test::Click(dialog, "Command1");
        test::Click(dialog, "Command4");
    });
    chapters->trigger();
    const fs::path settings = SettingsFilePath(project.ProgramFolder());
    QCOMPARE(LoadDefValues(GeneratorKind::ChaptersMenu, settings, project.ProgramFolder(), "", 720, 576).WhatOverlay, 1);
    QCOMPARE(FrameCount(name + ".avi"), 25L);
    QCOMPARE(FrameCount(name + "_2.avi"), 25L);

    // The first page is on the canvas: eight chapters, next, main and setup.
    QVERIFY(!project.Canvas.CurrentMenuID.empty());
    const DocNode* menu = project.Doc.Tree.ObjectNode(project.Canvas.CurrentMenuID);
    QCOMPARE(GetPropertyInNode(*menu, "menuName"), std::string("Chapters 1"));
    QCOMPARE(project.Canvas.Buttons.size(), std::size_t{11});
    QCOMPARE(ButtonRect(project, 0), first.translated(by));
    QCOMPARE(ButtonRect(project, 1), second);
    QCOMPARE(ButtonRect(project, 9), main.adjusted(0, 0, by.x(), by.y()));
    const std::vector<ActionRow> plays = LoadActionRows(project.Doc.Tree, ButtonProperty(project, 0, "selectAction"));
    QCOMPARE(plays.size(), std::size_t{1});
    QCOMPARE(plays[0].Type, std::string("PlayAction"));
    // The first chapter of a first page of two steps left to the next page's button.
    QCOMPARE(ButtonProperty(project, 0, "leftAction"), project.Canvas.Buttons[8].Label.Tag);
    QCOMPARE(ButtonProperty(project, 0, "rightAction"), project.Canvas.Buttons[1].Label.Tag);

    // Cancel in the middle of a motion run leaves the project and the folder as they were.
    const std::string before = NodeToXmlString(*project.Doc.Tree.Root());
    const std::string shownMenu = project.Canvas.CurrentMenuID;
    const std::string cancelled = (made / "cancelled").string();
    window.prompt.SavedFiles.push_back(cancelled);
    bool pressed = false;
    window.prompt.OnProgress = [&pressed](const std::string& text) {
        if (pressed || text.find(" 5/24") == std::string::npos)
            return;
        pressed = true;
        auto* running = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        QVERIFY(running);
        test::Click(*running, "cmdCancel");
    };
    test::OnNextDialog([](QDialog& dialog) {
        auto* seconds = test::Child<QLineEdit>(dialog, "Text1");
        seconds->clear();
        QTest::keyClicks(seconds, "1");
        test::Click(dialog, "Command1");
        QVERIFY(dialog.isVisible());
        test::Click(dialog, "Command4");
    });
    chapters->trigger();
    window.prompt.OnProgress = nullptr;
    QVERIFY(pressed);
    QVERIFY(!fs::exists(cancelled + ".avi") && !fs::exists(cancelled + "_2.avi"));
    QCOMPARE(NodeToXmlString(*project.Doc.Tree.Root()), before);
    QCOMPARE(project.Canvas.CurrentMenuID, shownMenu);

    // The setup window: the demo's streams, "None" and the main button, the last subtitle
    // button switching subtitles off.
    QAction* setup = window.Action("mnuSetup");
    QVERIFY(setup->isEnabled());
    window.prompt.SavedFiles.push_back((made / "setup").string());
    test::OnNextDialog([](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("frmSetup"));
        test::Click(dialog, "Command1");
        test::Click(dialog, "Command4");
    });
    setup->trigger();
    const std::size_t buttons = project.Canvas.Buttons.size();
    QVERIFY(buttons >= 2);
    const std::vector<ActionRow> none =
        LoadActionRows(project.Doc.Tree, ButtonProperty(project, buttons - 2, "selectAction"));
    QCOMPARE(none.size(), std::size_t{1});
    QCOMPARE(none[0].Type, std::string("SubtitleSelectAction"));

    // A caller's page, edited in place with Create hidden: the edits reach the caller's page and
    // nothing is made.
    const std::string title = ObjectIdOf(*TitleNodes(project.Doc).front());
    MenuPage handed;
    QVERIFY(OpenChapterPage(project, title, 8, handed));
    const QRect thumb = ItemRect(handed, handed.Items[0]);
    const std::string unchanged = NodeToXmlString(*project.Doc.Tree.Root());
    {
        GeneratorWindow editor(GeneratorKind::ChaptersMenu, project, handed, GeneratorWindow::PageUse::EditOnly, title);
        editor.show();
        QVERIFY(!test::Child<QWidget>(editor, "Command1")->isVisible());
        QVERIFY(!test::Child<QAction>(editor, "mnuCreate")->isVisible());
        QVERIFY(!test::Child<QWidget>(editor, "Combo1")->isEnabled());
        Drag(test::Child<QWidget>(editor, "PicCon"), thumb.center(), thumb.center() + by);
        test::Child<QLineEdit>(editor, "MenuName")->setText("Extras");
        test::Click(editor, "Command4");
    }
    QCOMPARE(ItemRect(handed, handed.Items[0]), thumb.translated(by));
    QCOMPARE(handed.Design.MenuName, std::string("Extras "));
    QCOMPARE(NodeToXmlString(*project.Doc.Tree.Root()), unchanged);

    window.prompt.Answers.push_back(PromptAnswer::No);
    window.Action("mnuClose")->trigger();
    QVERIFY(!chapters->isEnabled() && !setup->isEnabled());
}

// Two movies make a new project, the second's thumbnail shows another frame, both get chapters,
// and the title window opened on their page makes the menu, which the canvas then shows.
void GeneratorWindowsTest::manyMoviesHandTheirPageToTheTitleWindow()
{
    const fs::path movie = test::ShortMovie();
    if (movie.empty() && test::InCi())
        QFAIL("ffmpeg could not make the movie");
    if (movie.empty())
        QSKIP("ffmpeg could not make the movie");
    test::MainWindow window;
    window.form->show();
    Project& project = window.project();
    project.Values().MethodForPicToMenu = kPicToMenuBuiltIn;
    QAction* many = window.Action("mnuMoviesWithMenu");
    QVERIFY(many->isEnabled());
    QCOMPARE(many->shortcut(), QKeySequence("Ctrl+M"));

    std::vector<std::string> movies;
    for (const char* name : {"a.avi", "b.avi"}) {
        fs::copy_file(movie, window.Folder() / name);
        movies.push_back((window.Folder() / name).string());
    }
    window.prompt.OpenedFiles.push_back(movies);
    window.prompt.SavedFiles.push_back((window.Folder() / "movies").string());
    const auto acceptTitle = [](QDialog& title) { test::Click(title, "Command1"); };
    bool created = false;
    OnDialog("frmManyMovies", [&](QDialog& dialog) {
        auto* list = test::Child<QListWidget>(dialog, "List1");
        QCOMPARE(list->count(), 0);
        OnDialog("frmNewTitle", [&](QDialog& first) {
            acceptTitle(first);
            OnDialog("frmNewTitle", acceptTitle);
        });
        test::Click(dialog, "Command1");
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->item(1)->text(), QString::fromStdString(movies[1]));

        // The second movie's frame: typed, stepped up, kept when another row was shown between.
        auto* frame = test::Child<QLineEdit>(dialog, "Text1");
        list->setCurrentRow(1);
        frame->clear();
        QTest::keyClicks(frame, "12");
        test::Click(dialog, "Command4");
        list->setCurrentRow(0);
        QCOMPARE(frame->text(), QString("0"));
        list->setCurrentRow(1);
        QCOMPARE(frame->text(), QString("13"));

        // The preview widens the window by the frame.
        const int narrow = dialog.width();
        test::Child<QCheckBox>(dialog, "Check1")->click();
        QTRY_VERIFY(dialog.width() > narrow);
        QVERIFY(!test::Child<QLabel>(dialog, "picFrame")->pixmap().isNull());

        auto* chapters = test::Child<QLineEdit>(dialog, "txtChapters");
        QVERIFY(!chapters->isEnabled());
        test::Child<QCheckBox>(dialog, "chkCreateChap")->click();
        QVERIFY(chapters->isEnabled());
        chapters->setText("2");
        test::Child<QLineEdit>(dialog, "txtColumns")->setText("2");
        test::Child<QLineEdit>(dialog, "txtRows")->setText("1");

        OnDialog("frmPreviewMenu", [&](QDialog& titles) {
            QVERIFY(test::Child<QWidget>(titles, "Command1")->isVisible());
            test::Click(titles, "Command1");
            created = true;
            test::Click(titles, "Command4");
        });
        test::Click(dialog, "Command6");
        test::Click(dialog, "OKButton");
    });
    many->trigger();
    QVERIFY(created);

    const std::vector<DocNode*> titles = TitleNodes(project.Doc);
    QCOMPARE(titles.size(), std::size_t{2});
    for (const DocNode* title : titles)
        QCOMPARE(ChapterNodesOf(*title).size(), std::size_t{2});
    // Both titles and the main button, on the page the canvas shows.
    const DocNode* menu = project.Doc.Tree.ObjectNode(project.Canvas.CurrentMenuID);
    QVERIFY(menu);
    QCOMPARE(GetPropertyInNode(*menu, "menuName"), std::string("Titles 1"));
    QCOMPARE(project.Canvas.Buttons.size(), std::size_t{3});
    const std::vector<ActionRow> plays = LoadActionRows(project.Doc.Tree, ButtonProperty(project, 1, "selectAction"));
    QCOMPARE(plays.size(), std::size_t{1});
    QCOMPARE(plays[0].Type, std::string("PlayAction"));
}

QTEST_MAIN(GeneratorWindowsTest)
#include "GeneratorWindowsTest.moc"
