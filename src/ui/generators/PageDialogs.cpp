#include "ui/generators/PageDialogs.h"

#include "core/Prompt.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/generators/PageView.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QEvent>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <array>

namespace mw {

namespace {

QRadioButton* NamedOption(const char* name, const char* text, QButtonGroup& group)
{
    auto* option = new QRadioButton(text);
    option->setObjectName(name);
    group.addButton(option);
    return option;
}

QString PictureCaption(const std::string& path)
{
    return path.empty() ? QString("(no picture)") : QFileInfo(QString::fromStdString(path)).fileName();
}

class frmSelectColor : public QDialog {
public:
    frmSelectColor(const MenuPage& page, Prompt& prompt, QWidget* parent)
        : QDialog(parent), prompt_(prompt), picture_(page.Design.Picture),
          colors_{page.Gradient.TopLeft, page.Gradient.TopRight, page.Gradient.BottomLeft,
                  page.Gradient.BottomRight, page.Gradient.Middle.value_or(page.Gradient.TopLeft)}
    {
        setObjectName("frmSelectColor");
        setWindowTitle("Select background image");
        auto* kind = new QButtonGroup(this);
        auto* count = new QButtonGroup(this);
        Option3_ = NamedOption("Option3", "Use picture", *kind);
        Option4_ = NamedOption("Option4", "Use colors", *kind);
        Option1_ = NamedOption("Option1", "4 colors", *count);
        Option2_ = NamedOption("Option2", "5 colors", *count);
        Command1_ = NamedButton("Command1", "Select picture");
        Check1_ = new QCheckBox("Auto size window to fit picture");
        Check1_->setObjectName("Check1");
        Check1_->setChecked(page.FitPicture);
        lblPicture_ = NamedLabel("lblPicture", "");
        lblPicture_->setText(PictureCaption(picture_));

        auto* pictureBox = new QVBoxLayout;
        auto* pick = new QHBoxLayout;
        pick->addWidget(Command1_);
        pick->addWidget(lblPicture_, 1);
        pictureBox->addLayout(pick);
        pictureBox->addWidget(Check1_);
        auto* counts = new QHBoxLayout;
        counts->addWidget(Option1_);
        counts->addWidget(Option2_);
        auto* boxes = new QFormLayout;
        static constexpr std::array<const char*, 5> kNames{"Top-Left", "Top-Right", "Bottom-Left", "Bottom-Right", "Middle"};
        for (std::size_t i = 0; i < boxes_.size(); ++i) {
            boxes_[i] = ColorLabel(QString("lblColor_%1").arg(i), colors_[i]);
            boxes_[i]->installEventFilter(this);
            boxes_[i]->setMinimumWidth(80);
            boxes_[i]->setCursor(Qt::PointingHandCursor);
            boxes_[i]->setToolTip(kNames[i]);
            boxes->addRow(kNames[i], boxes_[i]);
        }
        auto* colorsBox = new QVBoxLayout;
        colorsBox->addLayout(counts);
        colorsBox->addLayout(boxes);
        pictureSide_ = new QWidget;
        pictureSide_->setLayout(pictureBox);
        colorSide_ = new QWidget;
        colorSide_->setLayout(colorsBox);

        auto* layout = new QVBoxLayout(this);
        layout->addWidget(Option3_);
        layout->addWidget(pictureSide_);
        layout->addWidget(Option4_);
        layout->addWidget(colorSide_);
        layout->addLayout(OkCancelRow(*this, NamedButton("OKButton", "OK"), NamedButton("CancelButton", "Cancel"), accepted_));

        (picture_.empty() ? Option4_ : Option3_)->setChecked(true);
        (page.Gradient.Middle ? Option2_ : Option1_)->setChecked(true);
        Enable();
        connect(kind, &QButtonGroup::buttonToggled, this, [this] { Enable(); });
        connect(count, &QButtonGroup::buttonToggled, this, [this] { Enable(); });
        connect(Command1_, &QPushButton::clicked, this, [this] {
            const std::vector<std::string> chosen = prompt_.OpenFiles(PictureRequest("Select picture"));
            if (chosen.empty())
                return;
            picture_ = chosen.front();
            lblPicture_->setText(PictureCaption(picture_));
        });
    }

    bool Accepted() const { return accepted_; }

    // The page as the dialog was left.
    void Apply(MenuPage& page) const
    {
        page.FitPicture = Check1_->isChecked();
        if (Option3_->isChecked()) {
            page.Design.Picture = picture_;
            const QSize size = QImageReader(QString::fromStdString(picture_)).size();
            if (page.FitPicture && size.isValid())
                FitPageToPicture(page, size);
            return;
        }
        page.Design.Picture.clear();
        page.Gradient = GradientColors{colors_[0], colors_[1], colors_[2], colors_[3], std::nullopt};
        if (Option2_->isChecked())
            page.Gradient.Middle = colors_[4];
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::MouseButtonRelease || static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton)
            return QDialog::eventFilter(watched, event);
        for (std::size_t i = 0; i < boxes_.size(); ++i) {
            if (watched == boxes_[i] && boxes_[i]->isEnabled()) {
                if (const auto chosen = prompt_.PickColor(colors_[i])) {
                    colors_[i] = *chosen;
                    ShowColor(boxes_[i], colors_[i]);
                }
            }
        }
        return false;
    }

private:
    void Enable()
    {
        pictureSide_->setEnabled(Option3_->isChecked());
        colorSide_->setEnabled(Option4_->isChecked());
        boxes_[4]->setEnabled(Option2_->isChecked());
    }

    Prompt& prompt_;
    std::string picture_;
    std::array<std::uint32_t, 5> colors_;
    std::array<QLabel*, 5> boxes_{};
    QRadioButton* Option1_;
    QRadioButton* Option2_;
    QRadioButton* Option3_;
    QRadioButton* Option4_;
    QPushButton* Command1_;
    QCheckBox* Check1_;
    QLabel* lblPicture_;
    QWidget* pictureSide_;
    QWidget* colorSide_;
    bool accepted_ = false;
};

} // namespace

bool SelectOverlay(int& whatOverlay, QWidget* parent)
{
    QDialog dialog(parent);
    dialog.setObjectName("frmSelectOverlay");
    dialog.setWindowTitle("Select overlay");
    QButtonGroup group;
    auto* shape = NamedOption("Option1", "Same shape as the button", group);
    auto* text = NamedOption("Option2", "The overlay will highlight the text (name) of the chapter or title", group);
    (whatOverlay == 0 ? shape : text)->setChecked(true);
    bool accepted = false;
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(shape);
    layout->addWidget(text);
    layout->addLayout(OkCancelRow(dialog, NamedButton("OKButton", "OK"), NamedButton("CancelButton", "Cancel"), accepted));
    dialog.exec();
    if (accepted)
        whatOverlay = shape->isChecked() ? 0 : 1;
    return accepted;
}

bool SelectBackground(MenuPage& page, Prompt& prompt, QWidget* parent)
{
    frmSelectColor dialog(page, prompt, parent);
    dialog.exec();
    if (dialog.Accepted())
        dialog.Apply(page);
    return dialog.Accepted();
}

} // namespace mw
