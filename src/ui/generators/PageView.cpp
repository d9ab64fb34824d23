#include "ui/generators/PageView.h"

#include "core/Prompt.h"
#include "core/Text.h"
#include "generators/PageComposer.h"
#include "ui/canvas/Rulers.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

namespace mw {

namespace {

constexpr int kGrip = 8;     // how near the lower right corner a press resizes
constexpr int kSmallest = 8; // a rectangle is never dragged smaller than this


// What the mouse took hold of on the page.
struct PagePick {
    enum class Kind { None, Item, Label, Free };
    Kind What = Kind::None;
    std::size_t Index = 0;      // of the item or the free item
    PageLabel* Label = nullptr; // the navigation label
};

// The navigation labels the page shows, in the order they are painted.
std::vector<PageLabel*> ShownLabels(PageDesign& d)
{
    std::vector<PageLabel*> shown;
    for (PageLabel* label : {&d.Title, &d.Previous, &d.Next, &d.Main, &d.Setup, &d.Audio, &d.Subtitle}) {
        if (label->Visible && label->Width > 0 && label->Height > 0)
            shown.push_back(label);
    }
    return shown;
}

QRect LabelRect(const PageLabel& label) { return {label.Left, label.Top, label.Width, label.Height}; }

void SetRect(PageLabel& label, const QRect& rect)
{
    label.Left = rect.left();
    label.Top = rect.top();
    label.Width = rect.width();
    label.Height = rect.height();
}

} // namespace

FileDialogRequest PictureRequest(const char* title)
{
    FileDialogRequest request;
    request.Title = title;
    request.Filter = "*.bmp;*.jpg;*.gif|*.bmp;*.jpg;*.gif";
    return request;
}

// The page itself, one screen pixel to a pixel of the menu.
class PageSurface : public QWidget {
public:
    PageSurface(MenuPage& page, Prompt& prompt, QMenu* pageMenu, PageExtras extras)
        : page_(page), prompt_(prompt), pageMenu_(pageMenu), extras_(std::move(extras))
    {
        setObjectName("PicCon");
        setMouseTracking(true);
    }

    std::function<void()> Changed;

    void Compose()
    {
        setFixedSize(page_.Width, page_.Height);
        if (extras_.Compose)
            picture_ = extras_.Compose();
        else
            picture_ = page_.Items.empty() ? QImage() : ComposePage(page_, LoadPageArt(page_));
        if (!Exists(picked_))
            picked_ = {};
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        if (picture_.isNull())
            p.fillRect(rect(), Qt::darkGray);
        else
            p.drawImage(0, 0, picture_);
        p.setPen(QPen(QColor(0, 200, 255), 1, Qt::DashLine));
        for (long y : page_.LinesH)
            p.drawLine(0, int(y), width(), int(y));
        for (long x : page_.LinesV)
            p.drawLine(int(x), 0, int(x), height());
        if (picked_.What == PagePick::Kind::None)
            return;
        const QRect frame = dragging_ ? dragged_ : RectOf(picked_);
        p.setPen(QPen(Qt::white, 1, Qt::DashLine));
        p.setBrush(Qt::NoBrush);
        p.drawRect(frame.adjusted(0, 0, -1, -1));
        p.fillRect(QRect(frame.bottomRight() - QPoint(kGrip - 2, kGrip - 2), QSize(kGrip - 1, kGrip - 1)), Qt::white);
    }

    void mousePressEvent(QMouseEvent* event) override
    {
        const QPoint at = event->position().toPoint();
        picked_ = PickAt(at);
        update();
        if (event->button() == Qt::RightButton) {
            PopUp(event->globalPosition().toPoint());
            return;
        }
        if (event->button() != Qt::LeftButton || picked_.What == PagePick::Kind::None)
            return;
        pressedAt_ = at;
        dragged_ = RectOf(picked_);
        resizing_ = (dragged_.bottomRight() - at).manhattanLength() < kGrip * 2;
        dragging_ = true;
    }

    void mouseMoveEvent(QMouseEvent* event) override
    {
        const QPoint at = event->position().toPoint();
        if (!dragging_) {
            const PagePick under = PickAt(at);
            const bool corner =
                under.What != PagePick::Kind::None && (RectOf(under).bottomRight() - at).manhattanLength() < kGrip * 2;
            setCursor(corner ? Qt::SizeFDiagCursor : under.What != PagePick::Kind::None ? Qt::SizeAllCursor : Qt::ArrowCursor);
            return;
        }
        const QRect start = RectOf(picked_);
        const QPoint by = at - pressedAt_;
        dragged_ = resizing_ ? QRect(start.topLeft(), QSize(std::max(kSmallest, start.width() + by.x()),
                                                            std::max(kSmallest, start.height() + by.y())))
                             : start.translated(by);
        update();
    }

    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (!dragging_ || event->button() != Qt::LeftButton)
            return;
        dragging_ = false;
        if (dragged_ != RectOf(picked_))
            Apply(dragged_);
        update();
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        picked_ = PickAt(event->position().toPoint());
        if (picked_.What != PagePick::Kind::None)
            EditCaption();
    }

private:
    std::vector<PageLabel*> Labels()
    {
        std::vector<PageLabel*> labels = ShownLabels(page_.Design);
        if (extras_.Labels) {
            const std::vector<PageLabel*> more = extras_.Labels();
            labels.insert(labels.end(), more.begin(), more.end());
        }
        return labels;
    }

    bool Exists(const PagePick& pick)
    {
        switch (pick.What) {
        case PagePick::Kind::Item:
            return pick.Index < page_.Items.size() && page_.Items[pick.Index].Visible;
        case PagePick::Kind::Free:
            return pick.Index < page_.FreeItems.size();
        case PagePick::Kind::Label: {
            const std::vector<PageLabel*> shown = Labels();
            return std::find(shown.begin(), shown.end(), pick.Label) != shown.end();
        }
        case PagePick::Kind::None:
            break;
        }
        return true;
    }

    // What was painted last lies on top: the free items over the labels, the labels over the
    // thumbnails, and a label over those before it.
    PagePick PickAt(QPoint at)
    {
        for (std::size_t i = page_.FreeItems.size(); i-- > 0;) {
            if (LabelRect(page_.FreeItems[i].Label).contains(at))
                return {PagePick::Kind::Free, i};
        }
        const std::vector<PageLabel*> labels = Labels();
        for (auto label = labels.rbegin(); label != labels.rend(); ++label) {
            if (LabelRect(**label).contains(at))
                return {PagePick::Kind::Label, 0, *label};
        }
        for (std::size_t i = 0; i < page_.Items.size(); ++i) {
            if (page_.Items[i].Visible && ItemRect(page_, page_.Items[i]).contains(at))
                return {PagePick::Kind::Item, i};
        }
        return {};
    }

    QRect RectOf(const PagePick& pick) const
    {
        switch (pick.What) {
        case PagePick::Kind::Item:
            return ItemRect(page_, page_.Items[pick.Index]);
        case PagePick::Kind::Label:
            return LabelRect(*pick.Label);
        case PagePick::Kind::Free:
            return LabelRect(page_.FreeItems[pick.Index].Label);
        case PagePick::Kind::None:
            break;
        }
        return {};
    }

    // A thumbnail keeps the size all of them share: a new size lays the whole grid out again,
    // a move keeps the other thumbnails where they were put.
    void Apply(const QRect& rect)
    {
        switch (picked_.What) {
        case PagePick::Kind::Item: {
            PageItem& item = page_.Items[picked_.Index];
            item.Left = float(rect.left());
            item.Top = float(rect.top());
            const bool resized = rect.size() != ItemRect(page_, item).size();
            page_.ItemWidth = float(rect.width());
            page_.ItemHeight = float(rect.height());
            PlacePictures(page_, resized);
            break;
        }
        case PagePick::Kind::Label:
            SetRect(*picked_.Label, rect);
            break;
        case PagePick::Kind::Free:
            SetRect(page_.FreeItems[picked_.Index].Label, rect);
            break;
        case PagePick::Kind::None:
            return;
        }
        Changed();
    }

    std::string* CaptionOf(const PagePick& pick)
    {
        switch (pick.What) {
        case PagePick::Kind::Item:
            return &page_.Items[pick.Index].Caption;
        case PagePick::Kind::Label:
            return &pick.Label->Caption;
        case PagePick::Kind::Free:
            return &page_.FreeItems[pick.Index].Label.Caption;
        case PagePick::Kind::None:
            break;
        }
        return nullptr;
    }

    // Thumbnail captions print in the first group, navigation labels in the second, and each
    // free item in its own.
    FontGroup& FontOf(const PagePick& pick)
    {
        if (pick.What == PagePick::Kind::Item)
            return page_.Design.Captions;
        if (pick.What == PagePick::Kind::Free)
            return page_.FreeItems[pick.Index].Font;
        return page_.Design.Labels;
    }

    void EditCaption()
    {
        std::string* caption = CaptionOf(picked_);
        if (const auto typed = prompt_.Input("Type anything you want", "", *caption)) {
            *caption = *typed;
            Changed();
        }
    }

    void EditFont()
    {
        FontGroup& group = FontOf(picked_);
        const auto chosen = prompt_.PickFont(FontChoice{group.Name, double(group.Size), group.Bold, group.Italic});
        if (!chosen)
            return;
        group.Name = chosen->Family;
        group.Size = int(chosen->Size);
        group.Bold = chosen->Bold;
        group.Italic = chosen->Italic;
        Changed();
    }

    void EditColor(std::uint32_t& color)
    {
        if (const auto chosen = prompt_.PickColor(color)) {
            color = *chosen;
            Changed();
        }
    }

    void EditShadowDepth()
    {
        FontGroup& group = FontOf(picked_);
        const auto typed =
            prompt_.Input("Set the depth in pixels. use posotive or negative values", "", std::to_string(group.ShadowDepth));
        if (!typed)
            return;
        group.ShadowDepth = int(LeadingNumber(*typed));
        Changed();
    }

    void EditPicture()
    {
        const std::vector<std::string> chosen = prompt_.OpenFiles(PictureRequest("Select the shape for the buttons"));
        if (chosen.empty())
            return;
        (picked_.What == PagePick::Kind::Free ? page_.FreeItems[picked_.Index].Label : *picked_.Label).Picture =
            chosen.front();
        Changed();
    }

    void PopUp(QPoint at)
    {
        if (picked_.What == PagePick::Kind::None) {
            if (pageMenu_)
                pageMenu_->exec(at);
            return;
        }
        QMenu menu(this);
        const bool item = picked_.What == PagePick::Kind::Item;
        menu.setObjectName(item ? "mnuButton" : "mnuOtherButtons");
        const auto add = [&menu](const char* name, const char* text, auto run) {
            QAction* action = menu.addAction(text);
            action->setObjectName(name);
            QObject::connect(action, &QAction::triggered, &menu, run);
        };
        add(item ? "mnuButtonText" : "mnuOtherText", "Set text...", [this] { EditCaption(); });
        add("mnuFont", "Font...", [this] { EditFont(); });
        add("mnuFontColor", "Color...", [this] { EditColor(FontOf(picked_).Color); });
        if (!item) {
            add("mnuOtherPicture", "Picture...", [this] { EditPicture(); });
            add("mnuTextShadowColor", "Shadow color...", [this] { EditColor(FontOf(picked_).ShadowColor); });
            add("mnuTextShadowDepth", "Shadow depth...", [this] { EditShadowDepth(); });
        }
        if (picked_.What == PagePick::Kind::Free) {
            add("mnuRemoveText", "Remove text", [this] {
                page_.FreeItems.erase(page_.FreeItems.begin() + std::ptrdiff_t(picked_.Index));
                picked_ = {};
                Changed();
            });
        }
        menu.exec(at);
    }

    MenuPage& page_;
    Prompt& prompt_;
    QMenu* pageMenu_;
    PageExtras extras_;
    QImage picture_;
    PagePick picked_;
    bool dragging_ = false;
    bool resizing_ = false;
    QPoint pressedAt_;
    QRect dragged_;
};


PageView::PageView(MenuPage& page, Prompt& prompt, QMenu* pageMenu, PageExtras extras, QWidget* parent)
    : QWidget(parent), page_(page), surface_(new PageSurface(page, prompt, pageMenu, std::move(extras))),
      cmdBef_(new QPushButton("<")), cmdNext_(new QPushButton(">")), Label8_(new QLabel), lblSize_(new QLabel)
{
    const auto linesMoved = [this] {
        surface_->update();
        rulerLeft_->update();
        rulerTop_->update();
    };
    rulerTop_ = new Ruler(Qt::Horizontal, page_.LinesV, *surface_, linesMoved);
    rulerLeft_ = new Ruler(Qt::Vertical, page_.LinesH, *surface_, linesMoved);
    auto* corner = new RulerCorner([this, linesMoved] {
        page_.LinesH.clear();
        page_.LinesV.clear();
        linesMoved();
    });
    cmdBef_->setObjectName("cmdBef");
    cmdBef_->setToolTip("Previous page");
    cmdNext_->setObjectName("cmdNext");
    cmdNext_->setToolTip("Next page");
    Label8_->setObjectName("Label8");
    lblSize_->setObjectName("lblSize");
    for (QPushButton* button : {cmdBef_, cmdNext_})
        button->setAutoDefault(false);

    auto* grid = new QGridLayout;
    grid->setSpacing(0);
    grid->addWidget(corner, 0, 0);
    grid->addWidget(rulerTop_, 0, 1);
    grid->addWidget(rulerLeft_, 1, 0);
    grid->addWidget(surface_, 1, 1, Qt::AlignLeft | Qt::AlignTop);
    auto* paging = new QHBoxLayout;
    paging->addWidget(cmdBef_);
    paging->addWidget(Label8_);
    paging->addWidget(cmdNext_);
    paging->addStretch();
    paging->addWidget(lblSize_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(grid);
    layout->addLayout(paging);

    surface_->Changed = [this] { Refresh(); };
    connect(cmdBef_, &QPushButton::clicked, this, [this] { StepPage(-1); });
    connect(cmdNext_, &QPushButton::clicked, this, [this] { StepPage(1); });
    Refresh();
}

void PageView::StepPage(int step)
{
    page_.Page += step;
    PlacePictures(page_, false);
    Refresh();
}

void PageView::Refresh()
{
    const int pages = PageCount(static_cast<int>(page_.Items.size()), page_.PerPage);
    // The setup menu is one page.
    for (QWidget* paging : std::initializer_list<QWidget*>{cmdBef_, cmdNext_, Label8_})
        paging->setVisible(page_.Kind != GeneratorKind::SetupMenu);
    cmdBef_->setEnabled(page_.Page > 1);
    cmdNext_->setEnabled(page_.Page < pages);
    Label8_->setText(QString("%1/%2").arg(page_.Page).arg(pages));
    lblSize_->setText(QString("%1 x %2").arg(page_.Width).arg(page_.Height));
    surface_->Compose();
    rulerLeft_->update();
    rulerTop_->update();
}

} // namespace mw
