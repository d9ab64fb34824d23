#include "ui/panels/frmPropText.h"

#include "document/Project.h"
#include "menus/OverlayAttributes.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/NamedControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>

namespace mw {

namespace {

constexpr const char* kCorners[] = {"Shadow Position: Left-Top", "Shadow Position: Right-Top",
                                    "Shadow Position: Right-Bottom", "Shadow Position: Left-Bottom"};

} // namespace

frmPropText::frmPropText(Project& project, QWidget* parent)
    : QWidget(parent), project_(project), Text1_(new QPlainTextEdit), Combo1_(new QComboBox), txt3D_(new QLineEdit),
      lblFont_(NamedLabel("lblFont", ""))
{
    setObjectName("frmPropText");
    setWindowTitle(" Text Overlay Propepties");
    Text1_->setObjectName("Text1");
    Combo1_->setObjectName("Combo1");
    for (int width = 0; width < TextOverlayForm::kOutlineChoices; ++width)
        Combo1_->addItem(QString::number(width));
    txt3D_->setObjectName("txt3D");
    lblFont_->setFrameShape(QFrame::StyledPanel);
    auto* Command1 = NamedButton("Command1", "Font...");

    auto* grid = new QGridLayout(this);
    grid->addWidget(Text1_, 0, 0, 1, 2);
    grid->addWidget(NamedLabel("Label1", "Outline width"), 1, 0);
    grid->addWidget(Combo1_, 1, 1);
    grid->addWidget(NamedLabel("Label2", "Shadow bevel"), 2, 0);
    grid->addWidget(txt3D_, 2, 1);
    for (std::size_t i = 0; i < Check1_.size(); ++i) {
        Check1_[i] = new QCheckBox(kCorners[i]);
        Check1_[i]->setObjectName(QString("Check1_%1").arg(i));
        grid->addWidget(Check1_[i], 3 + int(i), 0, 1, 2);
        connect(Check1_[i], &QCheckBox::toggled, this, [this, i](bool checked) {
            project_.Overlays.TextPanel.Corners[i] = checked;
            UpdateTextOverlay();
        });
    }
    grid->addWidget(lblFont_, 7, 0);
    grid->addWidget(Command1, 7, 1);
    grid->setRowStretch(0, 1);

    connect(Text1_, &QPlainTextEdit::textChanged, this, [this] {
        project_.Overlays.TextPanel.Text = Text1_->toPlainText().toStdString();
        UpdateTextOverlay();
    });
    connect(Combo1_, &QComboBox::currentIndexChanged, this, [this](int index) {
        project_.Overlays.TextPanel.Outline = index;
        UpdateTextOverlay();
    });
    connect(txt3D_, &QLineEdit::textChanged, this, [this](const QString& text) {
        project_.Overlays.TextPanel.ShadowDistance = text.toStdString();
        UpdateTextOverlay();
    });
    connect(Command1, &QPushButton::clicked, this, &frmPropText::Command1_Click);

    LoadFromProject();
    LoadTextForDesign(project.Lang(), *this);
}

void frmPropText::LoadFromProject()
{
    const TextOverlayForm& form = project_.Overlays.TextPanel;
    const QSignalBlocker text(Text1_), outline(Combo1_), shadow(txt3D_);
    Text1_->setPlainText(QString::fromStdString(form.Text));
    Text1_->selectAll();
    Combo1_->setCurrentIndex(form.Outline);
    txt3D_->setText(QString::fromStdString(form.ShadowDistance));
    for (std::size_t i = 0; i < Check1_.size(); ++i) {
        const QSignalBlocker box(Check1_[i]);
        Check1_[i]->setChecked(form.Corners[i]);
    }
    ShowFont();
}

void frmPropText::UpdateTextOverlay()
{
    mw::UpdateTextOverlay(project_);
    emit OverlayChanged();
}

void frmPropText::Command1_Click()
{
    TextOverlayForm& form = project_.Overlays.TextPanel;
    const std::optional<FontChoice> font = project_.Ask().PickFont(form.Font);
    if (!font)
        return;
    form.Font = *font;
    ShowFont();
    UpdateTextOverlay();
}

void frmPropText::ShowFont()
{
    const FontChoice& choice = project_.Overlays.TextPanel.Font;
    QFont font(QString::fromStdString(choice.Family));
    font.setPointSizeF(choice.Size > 0 ? choice.Size : 18);
    font.setBold(choice.Bold);
    font.setItalic(choice.Italic);
    lblFont_->setFont(font);
    lblFont_->setText(QString("%1, %2").arg(QString::fromStdString(choice.Family)).arg(choice.Size));
}

} // namespace mw
