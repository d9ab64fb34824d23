#include "ui/widgets/TextFormatWidget.h"

#include "ui/QtColor.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace mw {

namespace {

QString ToQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QRect ToQRect(const TextRect& box)
{
    return QRect(box.Left, box.Top, box.Width, box.Height);
}

} // namespace

TextFormatWidget::TextFormatWidget(QWidget* parent)
    : QAbstractScrollArea(parent), menu_(new QMenu(this)), copy_(menu_->addAction("Copy")),
      copyFormated_(menu_->addAction("Copy Formated")), hiddenLink_(new QMenu(this)),
      opener_([](const std::string& target) { QDesktopServices::openUrl(QUrl::fromUserInput(ToQString(target))); })
{
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setObjectName("VScroll1");
    viewport()->setMouseTracking(true);
    copy_->setObjectName("mnuCopy");
    copyFormated_->setObjectName("mnuCopyFormated");
    hiddenLink_->setObjectName("mnuHiddenLink");
    QAction* copyLink = hiddenLink_->addAction("Copy link");
    copyLink->setObjectName("mnuCopyLink");
    connect(copy_, &QAction::triggered, this, [this] { ToClipboard(SelectedText()); });
    connect(copyFormated_, &QAction::triggered, this, [this] { ToClipboard(SelectedFormated()); });
    connect(copyLink, &QAction::triggered, this, [this] { ToClipboard(menuLink_); });
    Reformat();
}

TextFormatWidget::~TextFormatWidget() = default;

QString TextFormatWidget::Text() const
{
    return QString::fromStdString(text_);
}

void TextFormatWidget::SetText(const QString& text)
{
    text_ = text.toStdString();
    Reformat();
}

void TextFormatWidget::SetFormatMethod(int method)
{
    method_ = method == 1 ? mw::FormatMethod::Slash : mw::FormatMethod::Brackets;
    Reformat();
}

void TextFormatWidget::SetBackColor(const QColor& color)
{
    back_ = color;
    viewport()->update();
}

void TextFormatWidget::SetRightMargin(int margin)
{
    rightMargin_ = margin;
    Relayout();
}

void TextFormatWidget::SetEnableSelectText(bool enable)
{
    enableSelect_ = enable;
    anchor_ = caret_ = 0;
    viewport()->update();
}

bool TextFormatWidget::MenuCopyVisible() const
{
    return copy_->isVisible();
}

void TextFormatWidget::SetMenuCopyVisible(bool visible)
{
    copy_->setVisible(visible);
}

bool TextFormatWidget::MenuCopyFormatedVisible() const
{
    return copyFormated_->isVisible();
}

void TextFormatWidget::SetMenuCopyFormatedVisible(bool visible)
{
    copyFormated_->setVisible(visible);
}

void TextFormatWidget::SetFonts(const QStringList& fonts)
{
    fonts_ = fonts;
    Relayout();
}

void TextFormatWidget::SetProgramFolder(const QString& folder)
{
    programFolder_ = folder;
    Relayout();
}

void TextFormatWidget::SetLinkOpener(LinkOpener opener)
{
    opener_ = std::move(opener);
}

std::string TextFormatWidget::PlainText() const
{
    return CopyText(parsed_, 0, parsed_.Source.size());
}

std::string TextFormatWidget::SelectedText() const
{
    return CopyText(parsed_, std::min(anchor_, caret_), std::max(anchor_, caret_));
}

std::string TextFormatWidget::SelectedFormated() const
{
    return CopyFormated(parsed_, std::min(anchor_, caret_), std::max(anchor_, caret_));
}

std::optional<TextHit> TextFormatWidget::LocateTextAtXY(int x, int y) const
{
    return mw::LocateTextAtXY(layout_, *measurer_, x, y + verticalScrollBar()->value());
}

void TextFormatWidget::Reformat()
{
    parsed_ = ParseTextFormat(text_, method_);
    anchor_ = caret_ = 0;
    dragging_ = false;
    Relayout();
    verticalScrollBar()->setValue(0);
}

void TextFormatWidget::Relayout()
{
    measurer_ = std::make_unique<QtTextMeasurer>(font(), fonts_);
    TextFormatOptions options;
    options.Width = viewport()->width();
    options.RightMargin = rightMargin_;
    options.Font.Size = font().pointSize() > 0 ? font().pointSize() : options.Font.Size;
    options.Color = FromQColor(palette().color(QPalette::Text));
    options.FontCount = static_cast<int>(fonts_.size());
    options.ProgramFolder = programFolder_.toStdString();
    layout_ = LayoutTextFormat(parsed_, options, *measurer_);
    laidWidth_ = options.Width;
    UpdateScrollRange();
    viewport()->update();
}

void TextFormatWidget::UpdateScrollRange()
{
    const int page = viewport()->height();
    verticalScrollBar()->setRange(0, std::max(0, layout_.Height - page));
    verticalScrollBar()->setPageStep(std::max(1, page));
    verticalScrollBar()->setSingleStep(std::max(1, QFontMetrics(font()).height()));
}

void TextFormatWidget::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    if (viewport()->width() != laidWidth_)
        Relayout();
    else
        UpdateScrollRange();
}

void TextFormatWidget::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        Relayout();
}

void TextFormatWidget::scrollContentsBy(int, int)
{
    viewport()->update();
}

void TextFormatWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), back_);
    painter.translate(0, -verticalScrollBar()->value());
    for (const FilledShape& shape : layout_.Shapes) {
        const QColor color = ToQColor(shape.Color);
        if (shape.Round) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            painter.drawEllipse(ToQRect(shape.Box));
        } else {
            painter.fillRect(ToQRect(shape.Box), color);
        }
    }
    for (const TextPicture& picture : layout_.Pictures)
        painter.drawImage(ToQRect(picture.Box), measurer_->Picture(picture.File));
    for (const TextPiece& piece : layout_.Pieces)
        PaintPiece(painter, piece);
}

void TextFormatWidget::PaintPiece(QPainter& painter, const TextPiece& piece) const
{
    const QFont font = measurer_->FontFor(piece.Font);
    const int baseline = piece.Y + QFontMetrics(font).ascent();
    const QColor color = ToQColor(piece.Color);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(piece.Box.Left, baseline, ToQString(piece.Text));

    // The marked part is drawn again over a block of the text colour, in the back colour.
    const std::size_t from = std::min(anchor_, caret_);
    const std::size_t to = std::max(anchor_, caret_);
    if (from == to || piece.Text.empty())
        return;
    const auto first = std::lower_bound(piece.Positions.begin(), piece.Positions.end() - 1, from);
    const auto last = std::lower_bound(first, piece.Positions.end() - 1, to);
    if (first == last)
        return;
    const std::string_view text = piece.Text;
    const auto begin = static_cast<std::size_t>(first - piece.Positions.begin());
    const auto end = static_cast<std::size_t>(last - piece.Positions.begin());
    const int left = piece.Box.Left + measurer_->TextWidth(piece.Font, text.substr(0, begin));
    const int right = piece.Box.Left + measurer_->TextWidth(piece.Font, text.substr(0, end));
    painter.fillRect(QRect(left, piece.Box.Top, right - left, piece.Box.Height), color);
    painter.setPen(back_);
    painter.drawText(left, baseline, ToQString(text.substr(begin, end - begin)));
}

const TextLink* TextFormatWidget::LinkAt(const QPoint& point) const
{
    return LinkAtXY(layout_, point.x(), point.y() + verticalScrollBar()->value());
}

std::optional<std::size_t> TextFormatWidget::PositionAt(const QPoint& point) const
{
    const auto hit = LocateTextAtXY(point.x(), point.y());
    return hit ? std::optional<std::size_t>(hit->Position) : std::nullopt;
}

void TextFormatWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !enableSelect_)
        return;
    const auto at = PositionAt(event->position().toPoint());
    anchor_ = caret_ = at.value_or(0);
    dragging_ = at.has_value();
    viewport()->update();
}

void TextFormatWidget::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    viewport()->setCursor(LinkAt(point) ? Qt::PointingHandCursor : Qt::ArrowCursor);
    if (!dragging_ || !(event->buttons() & Qt::LeftButton))
        return;
    if (const auto at = PositionAt(point)) {
        caret_ = *at;
        viewport()->update();
    }
}

void TextFormatWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    dragging_ = false;
    // A drag that marked text over a link is a selection, not a click on it.
    if (anchor_ != caret_)
        return;
    if (const TextLink* link = LinkAt(event->position().toPoint()))
        opener_(link->Target);
}

void TextFormatWidget::contextMenuEvent(QContextMenuEvent* event)
{
    if (const TextLink* link = LinkAt(event->pos())) {
        menuLink_ = link->Target;
        hiddenLink_->popup(event->globalPos());
    } else if (copy_->isVisible() || copyFormated_->isVisible()) {
        menu_->popup(event->globalPos());
    }
}

void TextFormatWidget::ToClipboard(const std::string& text) const
{
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

} // namespace mw
