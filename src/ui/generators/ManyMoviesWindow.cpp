#include "ui/generators/ManyMoviesWindow.h"

#include "document/Project.h"
#include "generators/PageModel.h"
#include "media/FrameGrabber.h"
#include "render/cDIB.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/generators/GeneratorWindow.h"
#include "ui/help/HelpWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <initializer_list>
#include <utility>

namespace mw {

namespace {

constexpr int kPreviewWidth = 240;

template <typename Control> Control* Named(Control* control, const char* name)
{
    control->setObjectName(name);
    return control;
}

QLineEdit* NumberEdit(const char* name, const std::string& text)
{
    auto* edit = Named(new QLineEdit(QString::fromStdString(text)), name);
    edit->setMaximumWidth(60);
    return edit;
}

} // namespace

ManyMoviesWindow::ManyMoviesWindow(Project& project, QWidget* parent)
    : QDialog(parent), project_(project), List1_(Named(new QListWidget, "List1")),
      Text1_(NumberEdit("Text1", form_.Text1)), Check1_(Named(new QCheckBox("Preview >>"), "Check1")),
      preview_(new QWidget), picFrame_(NamedLabel("picFrame", "")),
      chkCreateChap_(Named(new QCheckBox("Also create chapters for all movies"), "chkCreateChap")),
      optChapters_(Named(new QRadioButton("Exactly"), "optChapters")),
      optPerMin_(Named(new QRadioButton("Every minutes"), "optPerMin")),
      txtChapters_(NumberEdit("txtChapters", form_.txtChapters)),
      txtMinutes_(NumberEdit("txtMinutes", form_.txtMinutes)),
      txtColumns_(NumberEdit("txtColumns", form_.txtColumns)), txtRows_(NumberEdit("txtRows", form_.txtRows))
{
    setObjectName("frmManyMovies");
    setWindowTitle("Many movies with menu");

    auto* add = NamedButton("Command1", "Add");
    auto* remove = NamedButton("Command2", "Remove");
    auto* closeFile = NamedButton("Command3", "Close existing file");
    auto* up = NamedButton("Command4", "▲");
    auto* down = NamedButton("Command5", "▼");
    auto* editMenu = NamedButton("Command6", "Preview/Edit/Create menu");
    auto* close = NamedButton("OKButton", "Close");
    for (QPushButton* step : {up, down})
        step->setFixedWidth(32);

    auto* listButtons = new QHBoxLayout;
    listButtons->addWidget(add);
    listButtons->addWidget(remove);
    listButtons->addWidget(closeFile);
    listButtons->addStretch();

    auto* frame = new QHBoxLayout;
    frame->addWidget(Text1_);
    frame->addWidget(up);
    frame->addWidget(down);
    frame->addStretch();
    frame->addWidget(Check1_);

    auto* chapters = new QFormLayout;
    chapters->setContentsMargins(20, 0, 0, 0);
    chapters->addRow(optChapters_, txtChapters_);
    chapters->addRow(optPerMin_, txtMinutes_);
    optChapters_->setChecked(form_.Mode == ChapMode::Count);
    optPerMin_->setChecked(form_.Mode != ChapMode::Count);

    auto* grid = new QFormLayout;
    grid->addRow(NamedLabel("Label3", "Movie columns in menu"), txtColumns_);
    grid->addRow(NamedLabel("Label4", "Movie rows in menu"), txtRows_);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(HelpButton(*this));
    buttons->addWidget(editMenu);
    buttons->addStretch();
    buttons->addWidget(close);

    auto* main = new QVBoxLayout;
    main->addWidget(NamedLabel("Label1", "List of movies"));
    main->addWidget(List1_, 1);
    main->addLayout(listButtons);
    main->addWidget(NamedLabel("Label2", "Frame to get for selected movie"));
    main->addLayout(frame);
    main->addWidget(chkCreateChap_);
    main->addLayout(chapters);
    main->addLayout(grid);
    main->addLayout(buttons);
    auto* mainPanel = new QWidget;
    mainPanel->setLayout(main);
    mainPanel->setFixedWidth(400);

    auto* previewLayout = new QVBoxLayout(preview_);
    previewLayout->addWidget(NamedLabel("Label5", "Frame preview"));
    picFrame_->setFixedSize(kPreviewWidth, kPreviewWidth * 3 / 4);
    picFrame_->setAlignment(Qt::AlignCenter);
    picFrame_->setFrameShape(QFrame::Panel);
    picFrame_->setFrameShadow(QFrame::Sunken);
    previewLayout->addWidget(picFrame_);
    previewLayout->addStretch();
    preview_->hide();

    auto* layout = new QHBoxLayout(this);
    layout->addWidget(mainPanel);
    layout->addWidget(preview_);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    LoadManyMovies(project_, form_);
    ShowList();
    ShowChapterFields();

    connect(List1_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row == form_.ListIndex)
            return;
        SelectMovie(form_, row);
        ShowFrame();
    });
    connect(Text1_, &QLineEdit::textEdited, this, [this](const QString& text) {
        SetMovieFrame(form_, text.toStdString());
        ShowFrame();
    });
    for (auto [button, step] : {std::pair{up, 1}, std::pair{down, -1}}) {
        connect(button, &QPushButton::clicked, this, [this, step] {
            StepMovieFrame(form_, step);
            ShowFrame();
        });
    }
    // The window widens by the preview and narrows again.
    connect(Check1_, &QCheckBox::toggled, this, [this](bool on) {
        preview_->setVisible(on);
        ShowFrame();
    });
    connect(chkCreateChap_, &QCheckBox::toggled, this, &ManyMoviesWindow::ShowChapterFields);
    connect(add, &QPushButton::clicked, this, [this] {
        if (AddMovies(project_, form_))
            ShowList();
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        RemoveMovie(project_, form_);
        ShowList();
    });
    connect(closeFile, &QPushButton::clicked, this, [this] {
        if (CloseExistingFile(project_, form_))
            ShowList();
    });
    connect(editMenu, &QPushButton::clicked, this, &ManyMoviesWindow::EditMenu);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

void ManyMoviesWindow::ShowList()
{
    const QSignalBlocker quiet(List1_);
    List1_->clear();
    for (const ManyMoviesRow& row : form_.List1)
        List1_->addItem(QString::fromStdString(row.Movie));
    List1_->setCurrentRow(form_.ListIndex);
    ShowFrame();
}

void ManyMoviesWindow::ShowFrame()
{
    if (Text1_->text().toStdString() != form_.Text1)
        Text1_->setText(QString::fromStdString(form_.Text1));
    picFrame_->clear();
    if (!Check1_->isChecked() || form_.ListIndex < 0)
        return;
    const ManyMoviesRow& row = form_.List1[static_cast<std::size_t>(form_.ListIndex)];
    cDIB picture;
    long frame = row.Frame;
    if (!GrabFrameToPicture(row.Movie, picture, frame, true, project_.Ask(), project_.Lang()))
        return;
    picFrame_->setPixmap(QPixmap::fromImage(picture.ToImage().scaled(picFrame_->size(), Qt::KeepAspectRatio,
                                                                     Qt::SmoothTransformation)));
}

void ManyMoviesWindow::ShowChapterFields()
{
    for (QWidget* field : std::initializer_list<QWidget*>{optChapters_, optPerMin_, txtChapters_, txtMinutes_})
        field->setEnabled(chkCreateChap_->isChecked());
}

void ManyMoviesWindow::ReadFields()
{
    form_.chkCreateChap = chkCreateChap_->isChecked();
    form_.Mode = optPerMin_->isChecked() ? ChapMode::PerMinutes : ChapMode::Count;
    form_.txtChapters = txtChapters_->text().toStdString();
    form_.txtMinutes = txtMinutes_->text().toStdString();
    form_.txtColumns = txtColumns_->text().toStdString();
    form_.txtRows = txtRows_->text().toStdString();
}

void ManyMoviesWindow::EditMenu()
{
    ReadFields();
    MenuPage page{.Kind = GeneratorKind::TitleMenu};
    if (!OpenManyMoviesPage(project_, form_, page))
        return;
    PaintStartBackground(page);
    GeneratorWindow window(GeneratorKind::TitleMenu, project_, page, GeneratorWindow::PageUse::Create, {}, this);
    LoadTextForDesign(project_.Lang(), window);
    window.exec();
    made_.insert(made_.end(), window.MadeMenus().begin(), window.MadeMenus().end());
}

void mnuMoviesWithMenu(Project& project)
{
    ManyMoviesWindow window(project, QApplication::activeWindow());
    LoadTextForDesign(project.Lang(), window);
    window.exec();
    SelectFirstMenu(project, window.MadeMenus());
}

} // namespace mw
