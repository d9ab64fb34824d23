#pragma once

#include "i18n/TextFormatHitTest.h"
#include "i18n/TextFormatLayout.h"
#include "i18n/TextFormatParser.h"
#include "ui/widgets/QtTextMeasurer.h"

#include <QAbstractScrollArea>
#include <QColor>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QAction;
class QMenu;

namespace mw {

// A small rich text view of the program's own markup: it lays the text out with the core's
// layout, paints it, scrolls it with VScroll1, lets the user select and copy, and follows links.
class TextFormatWidget : public QAbstractScrollArea {
    Q_OBJECT
    Q_PROPERTY(QString Text READ Text WRITE SetText)
    Q_PROPERTY(int FormatMethod READ Method WRITE SetFormatMethod)
    Q_PROPERTY(QColor BackColor READ BackColor WRITE SetBackColor)
    Q_PROPERTY(int RightMargin READ RightMargin WRITE SetRightMargin)
    Q_PROPERTY(bool EnableSelectText READ EnableSelectText WRITE SetEnableSelectText)
    Q_PROPERTY(bool MenuCopyVisible READ MenuCopyVisible WRITE SetMenuCopyVisible)
    Q_PROPERTY(bool MenuCopyFormatedVisible READ MenuCopyFormatedVisible WRITE SetMenuCopyFormatedVisible)
    Q_PROPERTY(QStringList Fonts READ Fonts WRITE SetFonts)
    Q_PROPERTY(QString ProgramFolder READ ProgramFolder WRITE SetProgramFolder)
public:
    // Opens a link's target; the default hands it to the desktop.
    using LinkOpener = std::function<void(const std::string& target)>;

    explicit TextFormatWidget(QWidget* parent = nullptr);
    ~TextFormatWidget() override;

    QString Text() const;
    void SetText(const QString& text);
    int Method() const { return static_cast<int>(method_); }
    void SetFormatMethod(int method);
    QColor BackColor() const { return back_; }
    void SetBackColor(const QColor& color);
    int RightMargin() const { return rightMargin_; }
    void SetRightMargin(int margin);
    bool EnableSelectText() const { return enableSelect_; }
    void SetEnableSelectText(bool enable);
    bool MenuCopyVisible() const;
    void SetMenuCopyVisible(bool visible);
    bool MenuCopyFormatedVisible() const;
    void SetMenuCopyFormatedVisible(bool visible);
    QStringList Fonts() const { return fonts_; }
    void SetFonts(const QStringList& fonts);
    // What the picture source "<APP.PATH>" stands for.
    QString ProgramFolder() const { return programFolder_; }
    void SetProgramFolder(const QString& folder);

    void SetLinkOpener(LinkOpener opener);

    const TextLayout& Layout() const { return layout_; }
    // The whole text as it shows, without tags.
    std::string PlainText() const;
    // The marked text, without tags and with them.
    std::string SelectedText() const;
    std::string SelectedFormated() const;

    // The character under a point of the viewport, the scrolled part taken into account.
    std::optional<TextHit> LocateTextAtXY(int x, int y) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void Reformat();
    void Relayout();
    void UpdateScrollRange();
    const TextLink* LinkAt(const QPoint& point) const;
    std::optional<std::size_t> PositionAt(const QPoint& point) const;
    void PaintPiece(QPainter& painter, const TextPiece& piece) const;
    void ToClipboard(const std::string& text) const;

    std::string text_;
    mw::FormatMethod method_ = mw::FormatMethod::Brackets;
    QColor back_ = Qt::white;
    int rightMargin_ = 0;
    bool enableSelect_ = true;
    QStringList fonts_;
    QString programFolder_;

    ParsedText parsed_;
    TextLayout layout_;
    std::unique_ptr<QtTextMeasurer> measurer_;
    int laidWidth_ = -1;

    // The marked source positions run from the smaller of the two to the larger, the larger
    // excluded.
    std::size_t anchor_ = 0;
    std::size_t caret_ = 0;
    bool dragging_ = false;

    QMenu* menu_;
    QAction* copy_;
    QAction* copyFormated_;
    QMenu* hiddenLink_;
    std::string menuLink_;
    LinkOpener opener_;
};

} // namespace mw
