#include "ui/dialogs/frmCreateOverFromPic.h"

#include "document/Project.h"
#include "menus/OverlayDialogs.h"
#include "ui/QtColor.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/NamedControls.h"

#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <optional>

namespace mw {

namespace {

QLabel* PictureBox(const char* name)
{
    auto* box = NamedLabel(name, "");
    box->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    box->setMouseTracking(true);
    return box;
}

QScrollArea* Scrolled(QLabel* picture)
{
    auto* area = new QScrollArea;
    area->setWidget(picture);
    area->setWidgetResizable(true);
    area->setMinimumSize(240, 180);
    return area;
}

// A colour label: filled with the colour and saying its number, or "none".
void ShowColour(QLabel& label, std::optional<Colour> colour)
{
    label.setAutoFillBackground(colour.has_value());
    label.setText(colour ? QString::number(*colour) : QString("none"));
    label.setToolTip(colour ? QString("Color = %1").arg(*colour) : QString());
    if (colour) {
        QPalette palette = label.palette();
        palette.setColor(QPalette::Window, ToQColor(*colour));
        label.setPalette(palette);
    }
}

// The colour of a pixel of a picture, through its table when it has one.
std::optional<Colour> ColourAt(const cDIB& picture, QPoint at)
{
    if (picture.Empty() || at.x() < 0 || at.y() < 0 || at.x() >= picture.Width() || at.y() >= picture.Height())
        return std::nullopt;
    const std::uint32_t value = picture.Pixel(at.x(), at.y());
    return picture.BPP() <= 8 ? picture.GetColorTable().at(value) : value;
}

} // namespace

frmCreateOverFromPic::frmCreateOverFromPic(CreateOverFromPicForm& form, Project& project, QWidget* parent)
    : QDialog(parent), form_(form), project_(project), Picture1_(PictureBox("Picture1")),
      Picture2_(PictureBox("Picture2")), lblTrans_(NamedLabel("lblTrans", "")), lblTrans2_(NamedLabel("lblTrans2", "")),
      lblFileName_(NamedLabel("lblFileName", "")), Command2_(NamedButton("Command2", "Show with default colors")),
      Command3_(NamedButton("Command3", "Set from pic")), OKButton_(NamedButton("OKButton", "OK"))
{
    setObjectName("frmCreateOverFromPic");
    setWindowTitle("Create Overlay from picture");
    Command2_->setToolTip("It's not the best you can see");
    Command3_->setToolTip("Set as transparent color, picture's back color");
    auto* Command1 = NamedButton("Command1", "Select picture...");
    auto* CancelButton = NamedButton("CancelButton", "Cancel");
    auto* lblSaveIn = NamedLabel("lblSaveIn", "");
    lblSaveIn->setText(QString::fromStdString(form.Target));
    Picture1_->installEventFilter(this);
    Picture2_->installEventFilter(this);

    auto* grid = new QGridLayout;
    grid->addWidget(Command1, 0, 0);
    grid->addWidget(lblFileName_, 0, 1, 1, 3);
    grid->addWidget(Scrolled(Picture1_), 1, 0, 1, 2);
    grid->addWidget(Scrolled(Picture2_), 1, 2, 1, 2);
    grid->addWidget(lblTrans_, 2, 0);
    grid->addWidget(lblTrans2_, 2, 1);
    grid->addWidget(Command2_, 2, 2);
    grid->addWidget(Command3_, 2, 3);
    grid->addWidget(NamedLabel("Label1", "New overlay picture will be saved in "), 3, 0);
    grid->addWidget(lblSaveIn, 3, 1, 1, 3);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addLayout(OkCancelRow(*this, OKButton_, CancelButton, form_.Accepted));

    connect(Command1, &QPushButton::clicked, this, &frmCreateOverFromPic::Command1_Click);
    connect(Command2_, &QPushButton::clicked, this, [this] {
        form_.Overlay.ShowWithDefaultColors();
        ShowForm();
    });
    connect(Command3_, &QPushButton::clicked, this, [this] {
        form_.Overlay.SetFromPic();
        ShowForm();
    });
    ShowForm();
    resize(720, 480);
    LoadTextForDesign(project.Lang(), *this);
}

bool frmCreateOverFromPic::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseMove)
        return QDialog::eventFilter(watched, event);
    const QPoint at = static_cast<QMouseEvent*>(event)->position().toPoint();
    if (watched == Picture1_ && event->type() == QEvent::MouseButtonPress) {
        if (form_.Overlay.PickTransparent(at.x(), at.y()))
            ShowForm();
        return true;
    }
    auto* picture = static_cast<QLabel*>(watched);
    const std::optional<Colour> colour =
        ColourAt(watched == Picture1_ ? form_.Overlay.Picture() : form_.Overlay.Result(), at);
    picture->setToolTip(colour ? QString("Color = %1").arg(*colour) : QString());
    return false;
}

void frmCreateOverFromPic::Command1_Click()
{
    const std::string picture = AskForOverlayPicture(project_);
    if (picture.empty())
        return;
    form_.Picture = picture;
    form_.Overlay.LoadPicture(picture);
    ShowForm();
}

void frmCreateOverFromPic::ShowForm()
{
    const cDIB& picture = form_.Overlay.Picture();
    const cDIB& result = form_.Overlay.Result();
    lblFileName_->setText(QString::fromStdString(form_.Picture));
    Picture1_->setPixmap(picture.Empty() ? QPixmap() : QPixmap::fromImage(picture.ToImage()));
    Picture2_->setPixmap(result.Empty() ? QPixmap() : QPixmap::fromImage(result.ToImage()));
    ShowColour(*lblTrans_, form_.Overlay.Transparent());
    ShowColour(*lblTrans2_, form_.Overlay.ResultEntry0());
    for (QPushButton* button : {OKButton_, Command2_, Command3_})
        button->setEnabled(!result.Empty());
}

} // namespace mw
