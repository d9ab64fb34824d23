#include "document/NodeKindsHelp.h"
#include "ui/mainwindow/HelpPane.h"
#include "ui/widgets/TextFormatWidget.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QImage>
#include <QMouseEvent>
#include <QPixmap>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include <string>
#include <vector>

using namespace mw;

namespace {

const char* kLongText = "[b]Menus[/b] hold buttons that lead to titles, chapters and other menus.[l]"
                        "[m10]Each button has a shape, a colour and an action of its own.[l]"
                        "[m0][a100f]objectID [a100]The Object ID for this node[a0]"
                        "A last line that closes the text.";

void SendMouse(QWidget* target, QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held)
{
    QMouseEvent event(type, at, target->mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(target, &event);
}

void Drag(QWidget* target, QPoint from, QPoint to)
{
    SendMouse(target, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    SendMouse(target, QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    SendMouse(target, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
}

QPoint Center(const TextRect& box)
{
    return {box.Left + box.Width / 2, box.Top + box.Height / 2};
}

// A widget of a fixed size that records the links it is asked to open.
struct View {
    TextFormatWidget widget;
    std::vector<std::string> opened;

    explicit View(const char* text, int width = 300, int height = 60)
    {
        widget.SetLinkOpener([this](const std::string& target) { opened.push_back(target); });
        widget.resize(width, height);
        widget.show(); // a hidden widget holds its resize back
        widget.SetText(text);
    }
    QWidget* Surface() { return widget.viewport(); }
    QScrollBar* Scroll() { return widget.findChild<QScrollBar*>("VScroll1"); }
    void Trigger(const char* action) { widget.findChild<QAction*>(action)->trigger(); }
};

QString Clipboard()
{
    return QApplication::clipboard()->text();
}

} // namespace

class TextFormatWidgetTest : public QObject {
    Q_OBJECT
private slots:
    void layoutFollowsWidthAndScrollsOverItsHeight();
    void dragSelectsAndCopiesWithAndWithoutTags();
    void clickOnLinkOpensItDragAndHiddenMenuDoNot();
    void helpPaneShowsBlockOfNodeKind();
    void pictureBelowTheProgramFolderIsPainted();
};

void TextFormatWidgetTest::layoutFollowsWidthAndScrollsOverItsHeight()
{
    View view(kLongText, 400, 40);
    const int wide = view.widget.Layout().Height;
    QVERIFY(wide > view.Surface()->height());
    QCOMPARE(view.Scroll()->maximum(), wide - view.Surface()->height());
    const auto top = view.widget.LocateTextAtXY(5, 2);
    view.Scroll()->setValue(view.Scroll()->maximum());
    const auto scrolled = view.widget.LocateTextAtXY(5, 2);
    QVERIFY(top && scrolled);
    QVERIFY(scrolled->Position > top->Position);

    view.widget.resize(200, 40);
    const int narrow = view.widget.Layout().Height;
    QVERIFY2(narrow > wide, qPrintable(QString("%1 <= %2").arg(narrow).arg(wide)));
    QCOMPARE(view.Scroll()->maximum(), narrow - view.Surface()->height());
    for (const TextPiece& piece : view.widget.Layout().Pieces)
        QVERIFY2(piece.Box.Right() <= view.Surface()->width(), piece.Text.c_str());
    // A right margin takes room from every line too.
    view.widget.SetRightMargin(80);
    QVERIFY(view.widget.Layout().Height > narrow);

    // A text that fits needs no scrolling; a new text starts at the top again.
    view.widget.SetText("short");
    QCOMPARE(view.Scroll()->maximum(), 0);
    QCOMPARE(view.Scroll()->value(), 0);
    QCOMPARE(view.widget.PlainText(), std::string("short"));
}

void TextFormatWidgetTest::dragSelectsAndCopiesWithAndWithoutTags()
{
    View view("[b]Hello[/b] world[l]second line", 300, 100);
    const std::vector<TextPiece>& pieces = view.widget.Layout().Pieces;
    QVERIFY(pieces.size() >= 2);
    const TextPiece& first = pieces.front();
    const TextPiece& last = pieces.back();
    QCOMPARE(first.Text, std::string("Hello"));
    const QPoint corner(first.Box.Left + 1, first.Box.Top);
    QCOMPARE(view.Surface()->grab().toImage().pixelColor(corner), view.widget.BackColor());
    Drag(view.Surface(), {first.Box.Left + 1, first.Box.Top + 1}, {last.Box.Right() + 50, Center(last.Box).y()});
    // Marked text shows in swapped colours.
    QCOMPARE(view.Surface()->grab().toImage().pixelColor(corner), view.widget.palette().color(QPalette::Text));

    view.Trigger("mnuCopy");
    QCOMPARE(Clipboard(), QString("Hello world\nsecond line"));
    view.Trigger("mnuCopyFormated");
    QCOMPARE(Clipboard(), QString("Hello[/b] world[l]second line"));

    // Dragging backwards marks the same text.
    Drag(view.Surface(), {last.Box.Right() + 50, Center(last.Box).y()}, {first.Box.Left + 1, first.Box.Top + 1});
    view.Trigger("mnuCopy");
    QCOMPARE(Clipboard(), QString("Hello world\nsecond line"));

    // Without selection enabled a drag marks nothing.
    view.widget.SetEnableSelectText(false);
    Drag(view.Surface(), {first.Box.Left + 1, first.Box.Top + 1}, {last.Box.Right(), Center(last.Box).y()});
    QCOMPARE(view.widget.SelectedText(), std::string());
}

void TextFormatWidgetTest::clickOnLinkOpensItDragAndHiddenMenuDoNot()
{
    View view("Visit [w]http://example.com/menus[w] for more.", 400, 100);
    QCOMPARE(view.widget.Layout().Links.size(), std::size_t{1});
    const TextRect rect = view.widget.Layout().Links.front().Rects.front();

    Drag(view.Surface(), Center(rect), Center(rect));
    QCOMPARE(view.opened, std::vector<std::string>{"http://example.com/menus"});
    Drag(view.Surface(), {rect.Left + 1, Center(rect).y()}, {rect.Right() - 2, Center(rect).y()});
    // Beside the link nothing opens.
    Drag(view.Surface(), {rect.Right() + 40, Center(rect).y()}, {rect.Right() + 40, Center(rect).y()});

    QContextMenuEvent event(QContextMenuEvent::Mouse, Center(rect), view.Surface()->mapToGlobal(Center(rect)));
    QApplication::sendEvent(view.Surface(), &event);
    auto* menu = view.widget.findChild<QMenu*>("mnuHiddenLink");
    QVERIFY(menu && menu->isVisible());
    menu->close();
    view.Trigger("mnuCopyLink");
    QCOMPARE(Clipboard(), QString("http://example.com/menus"));
    QCOMPARE(view.opened.size(), std::size_t{1});
}

void TextFormatWidgetTest::helpPaneShowsBlockOfNodeKind()
{
    HelpPane pane("/opt/menuwright");
    QCOMPARE(pane.ProgramFolder(), QString("/opt/menuwright")); // pictures of <APP.PATH>
    pane.resize(300, 200);
    pane.show();
    pane.ShowBlock(HelpBlockFor("DivXMediaMenu"));
    QVERIFY(pane.PlainText().find("objectID") != std::string::npos);
    QVERIFY(!pane.Layout().Shapes.empty()); // the pane's prefix gives the property tables their borders
    QVERIFY(pane.Layout().UnknownTags.empty());

    pane.ShowBlock({});
    QCOMPARE(pane.PlainText(), std::string());
}

// The picture is read in the window layer and painted scaled into the box the layout gave.
void TextFormatWidgetTest::pictureBelowTheProgramFolderIsPainted()
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

QTEST_MAIN(TextFormatWidgetTest)
#include "TextFormatWidgetTest.moc"
