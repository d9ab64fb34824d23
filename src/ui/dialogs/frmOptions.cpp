#include "ui/dialogs/frmOptions.h"

#include "core/Prompt.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/help/HelpWindow.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace mw {

namespace {

// A radio button that sets `field` to `value` when it is chosen.
QRadioButton* Choice(const char* name, const char* caption, int& field, int value, QButtonGroup* group)
{
    auto* button = new QRadioButton(caption);
    button->setObjectName(name);
    button->setChecked(field == value);
    group->addButton(button);
    QObject::connect(button, &QRadioButton::toggled, [&field, value](bool on) {
        if (on)
            field = value;
    });
    return button;
}

} // namespace

frmOptions::frmOptions(Settings& settings, clsIniFile& ini, Prompt& prompt,
                       const std::filesystem::path& programFolder, QWidget* parent)
    : QDialog(parent), settings_(settings), ini_(ini), prompt_(prompt),
      model_(OptionsModel::Load(settings, programFolder))
{
    setObjectName("frmOptions");
    setWindowTitle("Options");

    auto* tabs = new QTabWidget;
    tabs->setObjectName("TabStrip1");
    tabs->addTab(GeneralPage(), "General");
    tabs->addTab(BuildPage(), "Creating DivX");
    tabs->addTab(OverlaysPage(), "Overlays and buttons");

    auto* buttons = new QDialogButtonBox;
    QPushButton* ok = buttons->addButton("OK", QDialogButtonBox::AcceptRole);
    ok->setObjectName("OKButton");
    ok->setDefault(true);
    QPushButton* cancel = buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    cancel->setObjectName("CancelButton");
    buttons->addButton(HelpButton(*this), QDialogButtonBox::HelpRole);
    connect(ok, &QPushButton::clicked, this, &frmOptions::OKButton_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(buttons);
    RefreshEnabled();
}

QCheckBox* frmOptions::Check(const char* name, const char* caption, bool& field)
{
    auto* box = new QCheckBox(caption);
    box->setObjectName(name);
    box->setChecked(field);
    connect(box, &QCheckBox::toggled, this, [this, &field](bool on) {
        field = on;
        RefreshEnabled();
    });
    return box;
}

QWidget* frmOptions::GeneralPage()
{
    auto* page = new QWidget;
    page->setObjectName("fmOptions_0");
    auto* layout = new QVBoxLayout(page);

    auto* autoSave = new QHBoxLayout;
    autoSave->addWidget(Check("chkAutoSave", "Auto save every (minutes):", model_.chkAutoSave));
    txtAutoSaveMin_ = new QLineEdit(QString::fromStdString(model_.txtAutoSaveMin));
    txtAutoSaveMin_->setObjectName("txtAutoSaveMin");
    connect(txtAutoSaveMin_, &QLineEdit::textChanged, this,
            [this](const QString& text) { model_.txtAutoSaveMin = text.toStdString(); });
    autoSave->addWidget(txtAutoSaveMin_);
    layout->addLayout(autoSave);

    layout->addWidget(new QLabel("Double clicking in buttons"));
    auto* doubleClick = new QButtonGroup(page);
    int& action = model_.DoubleClickInButtonsAction;
    layout->addWidget(Choice("optDoubleClick_0", "Do nothing", action, 0, doubleClick));
    layout->addWidget(Choice("optDoubleClick_1",
                             "If a menu transition exists, go to that menu. If not, open the Add Action dialog",
                             action, 1, doubleClick));
    layout->addWidget(Choice("optDoubleClick_2", "Always open the Add Action dialog", action, 2, doubleClick));

    // Shift and a left click on this label is the hidden switch of the debug boxes.
    auto* label12 = new QLabel("Default language for new menus:");
    label12->setObjectName("Label12");
    label12->installEventFilter(this);
    layout->addWidget(label12);
    auto* combo = new QComboBox;
    combo->setObjectName("Combo1");
    for (const std::string& row : model_.Combo1)
        combo->addItem(QString::fromStdString(row));
    combo->setCurrentIndex(model_.Combo1Index);
    connect(combo, &QComboBox::currentIndexChanged, this, [this](int index) { model_.Combo1Index = index; });
    layout->addWidget(combo);

    auto* guide = new QHBoxLayout;
    guide->addWidget(new QLabel("Color of the guide lines:"));
    QLabel* guideColor = ColorLabel("lblGuideColor", model_.lblGuideColor);
    guideColor->installEventFilter(this);
    guide->addWidget(guideColor);
    guide->addStretch();
    layout->addLayout(guide);
    layout->addStretch();
    return page;
}

QWidget* frmOptions::BuildPage()
{
    auto* page = new QWidget;
    page->setObjectName("fmOptions_1");
    auto* layout = new QVBoxLayout(page);

    auto* method = new QButtonGroup(page);
    int& chosen = model_.MethodForPicToMenu;
    auto* useVd = Choice("optUseVirtualDubMod", "Use VirtualDubMod", chosen, kPicToMenuVirtualDub, method);
    auto* useCli = Choice("optUseCli", "Use cli.exe", chosen, kPicToMenuCli, method);
    auto* useBuiltIn = Choice("optUseBuiltIn", "Use the built-in encoder", chosen, kPicToMenuBuiltIn, method);
    for (QRadioButton* button : {useVd, useCli, useBuiltIn})
        connect(button, &QRadioButton::toggled, this, [this] { RefreshEnabled(); });
    layout->addWidget(useVd);
    chkOnlyVD_ = Check("chkOnlyVD", "Use only VirtualDubMod", model_.chkOnlyVD);
    layout->addWidget(chkOnlyVD_);
    layout->addWidget(useCli);
    auto* cliRow = new QHBoxLayout;
    chkDonNotInvolveCliExe_ = Check("chkDonNotInvolveCliExe", "Do not involve cli.exe when creating menu from picture",
                                    model_.chkDonNotInvolveCliExe);
    cliRow->addWidget(chkDonNotInvolveCliExe_);
    Command2_ = new QPushButton("?");
    Command2_->setObjectName("Command2");
    connect(Command2_, &QPushButton::clicked, this, [this] {
        prompt_.Message("Program will not invlolve file cli.exe when creating a menu from picture. "
                        "At this case program will create an avi file/menu that is playable at "
                        "hardware players, but DivX player will not show correctly the avi file/menu.");
    });
    cliRow->addWidget(Command2_);
    layout->addLayout(cliRow);
    chkShowDOScli_ = Check("chkShowDOScli", "Show the DOS window when involving cli.exe and add a pause",
                           model_.chkShowDOScli);
    layout->addWidget(chkShowDOScli_);
    layout->addWidget(useBuiltIn);

    layout->addWidget(Check("chkRunDivX", "Run the DivX file when it is created", model_.chkRunDivX));
    layout->addWidget(Check("chkErrors", "Check for errors first", model_.chkErrors));
    layout->addWidget(Check("chkDeleteTemp", "Delete the temporary folder", model_.chkDeleteTemp));
    chkDeleteBmp_ = Check("chkDeleteBmp", "Delete the created overlay bitmaps", model_.chkDeleteBmp);
    chkDeleteDivX_ = Check("chkDeleteDivX", "Delete the intermediate DivX files", model_.chkDeleteDivX);
    connect(chkDeleteDivX_, &QCheckBox::clicked, this, [this](bool on) {
        if (!on)
            prompt_.Message("I don't recommend to uncheck this");
    });
    layout->addWidget(chkDeleteBmp_);
    layout->addWidget(chkDeleteDivX_);
    layout->addWidget(Check("chkAddPauseDivX", "Add a pause to the batch file", model_.chkAddPauseDivX));
    layout->addWidget(
        Check("chkAddPauseOverlays", "Add a pause to the overlays batch file", model_.chkAddPauseOverlays));
    layout->addWidget(
        Check("chkReplaceExistDivX", "Replace an existing DivX file", model_.chkReplaceExistDivX));

    layout->addWidget(new QLabel("Where to save a new DivX file:"));
    auto* folder = new QButtonGroup(page);
    layout->addWidget(Choice("Option1", "Same folder as the xml file", model_.SaveToOption, 1, folder));
    layout->addWidget(Choice("Option2", "Ask were (show dialog)", model_.SaveToOption, 2, folder));
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(Choice("Option3", "Always to this folder", model_.SaveToOption, 3, folder));
    txtFolder_ = new QLineEdit(QString::fromStdString(model_.txtFolder));
    txtFolder_->setObjectName("txtFolder");
    connect(txtFolder_, &QLineEdit::textChanged, this,
            [this](const QString& text) { model_.txtFolder = text.toStdString(); });
    folderRow->addWidget(txtFolder_);
    auto* command1 = new QPushButton("...");
    command1->setObjectName("Command1");
    connect(command1, &QPushButton::clicked, this, [this] {
        if (const std::optional<std::string> picked = prompt_.PickFolder("Please select a folder"))
            txtFolder_->setText(QString::fromStdString(*picked));
    });
    folderRow->addWidget(command1);
    layout->addLayout(folderRow);
    layout->addStretch();
    return page;
}

QWidget* frmOptions::OverlaysPage()
{
    auto* page = new QWidget;
    page->setObjectName("fmOptions_2");
    auto* layout = new QVBoxLayout(page);

    layout->addWidget(new QLabel("Default overlay for new buttons:"));
    auto* list = new QListWidget;
    list->setObjectName("List1");
    for (const std::string& row : model_.List1)
        list->addItem(QString::fromStdString(row));
    list->setCurrentRow(model_.List1Index);
    connect(list, &QListWidget::currentRowChanged, this, [this](int row) { model_.List1Index = row; });
    layout->addWidget(list);

    auto* position = new QButtonGroup(page);
    layout->addWidget(Choice("optOverlayPos6", "At 6 pixels around the button", model_.DefOverlayPos, 0, position));
    layout->addWidget(Choice("optOverlayPosSame", "Same position/size as button", model_.DefOverlayPos, 1, position));

    auto* colors = new QFormLayout;
    for (int i = 0; i < 3; ++i) {
        QLabel* color = ColorLabel(QString("lblColor_%1").arg(i), model_.lblColor[static_cast<std::size_t>(i)]);
        color->installEventFilter(this);
        colors->addRow(QString("Default overlay color %1:").arg(i + 1), color);
    }
    QLabel* buttonColor = ColorLabel("lblButtonColor", model_.lblButtonColor);
    buttonColor->installEventFilter(this);
    colors->addRow("Color of the button text:", buttonColor);
    layout->addLayout(colors);
    layout->addStretch();
    return page;
}

bool frmOptions::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::MouseButtonRelease)
        return QDialog::eventFilter(watched, event);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() != Qt::LeftButton)
        return false;
    auto* label = static_cast<QLabel*>(watched);
    const QString name = watched->objectName();
    if (name == "Label12") {
        if (mouse->modifiers() & Qt::ShiftModifier)
            ToggleShowDebugMessage(settings_, ini_, prompt_);
    } else if (name == "lblGuideColor") {
        model_.PickGuideColor(prompt_);
        ShowColor(label, model_.lblGuideColor);
    } else if (name == "lblButtonColor") {
        model_.PickButtonColor(prompt_);
        ShowColor(label, model_.lblButtonColor);
    } else if (name.startsWith("lblColor_")) {
        const int index = name.mid(9).toInt();
        model_.PickOverlayColor(index, prompt_);
        ShowColor(label, model_.lblColor[static_cast<std::size_t>(index)]);
    }
    return false;
}

void frmOptions::RefreshEnabled()
{
    txtAutoSaveMin_->setEnabled(model_.AutoSaveMinEnabled());
    chkOnlyVD_->setEnabled(model_.OnlyVDEnabled());
    for (QWidget* cli : std::initializer_list<QWidget*>{chkDonNotInvolveCliExe_, chkShowDOScli_, Command2_})
        cli->setEnabled(model_.CliControlsEnabled());
    chkDeleteBmp_->setEnabled(model_.DeleteDetailsEnabled());
    chkDeleteDivX_->setEnabled(model_.DeleteDetailsEnabled());
}

void frmOptions::OKButton_Click()
{
    if (ConfirmOptions(model_, settings_, ini_, prompt_))
        accept();
}

} // namespace mw
