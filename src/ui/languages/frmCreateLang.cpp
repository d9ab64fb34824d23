#include "ui/languages/frmCreateLang.h"

#include "core/ProgramFolder.h"
#include "core/Prompt.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/NamedControls.h"
#include "ui/help/HelpWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace mw {

namespace {

constexpr int kSectionsRole = Qt::UserRole;
constexpr int kAttributeRole = Qt::UserRole + 1;

LangItem ItemOf(const QTreeWidgetItem& row)
{
    LangItem item;
    for (const QString& section : row.data(0, kSectionsRole).toStringList())
        item.Sections.push_back(section.toStdString());
    const QVariant attribute = row.data(0, kAttributeRole);
    if (attribute.isValid())
        item.Attribute = attribute.toString().toStdString();
    return item;
}

// A key that tells the rows apart, for keeping what was expanded.
QString KeyOf(const QTreeWidgetItem& row)
{
    return row.data(0, kSectionsRole).toStringList().join('\n') + '\t' + row.data(0, kAttributeRole).toString();
}

QTreeWidgetItem* AddRow(const LangTreeNode& node)
{
    auto* row = new QTreeWidgetItem({QString::fromStdString(node.Text)});
    QStringList sections;
    for (const std::string& section : node.Item.Sections)
        sections << QString::fromStdString(section);
    row->setData(0, kSectionsRole, sections);
    if (node.Item.Attribute)
        row->setData(0, kAttributeRole, QString::fromStdString(*node.Item.Attribute));
    for (const LangTreeNode& child : node.Children)
        row->addChild(AddRow(child));
    return row;
}

QTreeWidgetItem* FindRow(QTreeWidgetItem* row, const LangItem& item)
{
    if (ItemOf(*row) == item)
        return row;
    for (int i = 0; i < row->childCount(); ++i) {
        if (QTreeWidgetItem* found = FindRow(row->child(i), item))
            return found;
    }
    return nullptr;
}

QTreeWidget* LangTree(const char* name)
{
    auto* tree = new QTreeWidget;
    tree->setObjectName(name);
    tree->setHeaderHidden(true);
    return tree;
}

QPushButton* PlainButton(const char* name, const char* text)
{
    // Enter belongs to Text2, so no button is the dialog's default.
    QPushButton* button = NamedButton(name, text);
    button->setAutoDefault(false);
    return button;
}

} // namespace

frmCreateLang::frmCreateLang(const std::filesystem::path& programFolder, const LangDoc& lang, Prompt& prompt,
                             QWidget* parent)
    : QDialog(parent), editor_(programFolder, lang, prompt), prompt_(prompt), combo1_(new QComboBox),
      combo2_(new QComboBox), lblVersion_(NamedLabel("lblVersion", LanguageEditor::kNoVersion)),
      lblVersionEdit_(NamedLabel("lblVersionEdit", LanguageEditor::kNoVersion)), txtCreator_(new QLineEdit),
      chkAutoCreate_(new QCheckBox("Auto create missing items")), tree1_(LangTree("Tree1")), tree2_(LangTree("Tree2")),
      text1_(new QLineEdit), text2_(new QLineEdit)
{
    setObjectName("frmCreateLang");
    combo1_->setObjectName("Combo1");
    combo2_->setObjectName("Combo2");
    txtCreator_->setObjectName("txtCreator");
    chkAutoCreate_->setObjectName("chkAutoCreate");
    text1_->setObjectName("Text1");
    text1_->setReadOnly(true);
    text2_->setObjectName("Text2");
    for (QLabel* label : {lblVersion_, lblVersionEdit_}) {
        label->setToolTip("Click to take the version of this program");
        label->setCursor(Qt::PointingHandCursor);
        label->installEventFilter(this);
    }
    QPushButton* command1 = PlainButton("Command1", "Save new Language file");
    QPushButton* command2 = PlainButton("Command2", "Update <Enter>");
    QPushButton* command3 = PlainButton("Command3", "If you want to update an existing language file");

    auto* files = new QGridLayout;
    files->addWidget(NamedLabel("Label1", "Original language file"), 0, 0);
    files->addWidget(combo1_, 0, 1);
    files->addWidget(NamedLabel("Label3", "Version"), 0, 2);
    files->addWidget(lblVersion_, 0, 3);
    files->addWidget(NamedLabel("Label2", "New language file"), 1, 0);
    files->addWidget(combo2_, 1, 1);
    files->addWidget(NamedLabel("Label4", "Version"), 1, 2);
    files->addWidget(lblVersionEdit_, 1, 3);
    files->addWidget(NamedLabel("Label5", "Creator"), 2, 0);
    files->addWidget(txtCreator_, 2, 1);
    files->addWidget(chkAutoCreate_, 2, 2, 1, 2);
    files->setColumnStretch(1, 1);

    // The two trees share the width evenly.
    auto* trees = new QHBoxLayout;
    trees->addWidget(tree1_, 1);
    trees->addWidget(tree2_, 1);

    auto* texts = new QGridLayout;
    texts->addWidget(NamedLabel("Label6", "Original text"), 0, 0);
    texts->addWidget(text1_, 0, 1, 1, 2);
    texts->addWidget(NamedLabel("Label7", "New text"), 1, 0);
    texts->addWidget(text2_, 1, 1);
    texts->addWidget(command2, 1, 2);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(HelpButton(*this));
    buttons->addWidget(command3);
    buttons->addStretch(1);
    buttons->addWidget(command1);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(files);
    layout->addLayout(trees, 1);
    layout->addLayout(texts);
    layout->addLayout(buttons);
    resize(820, 560);

    connect(combo1_, &QComboBox::textActivated, this, &frmCreateLang::Combo1_Click);
    connect(combo2_, &QComboBox::textActivated, this, &frmCreateLang::Combo2_Click);
    connect(txtCreator_, &QLineEdit::textEdited, this,
            [this](const QString& text) { editor_.SetCreator(text.toStdString()); });
    connect(chkAutoCreate_, &QCheckBox::toggled, this, [this](bool on) { editor_.AutoCreate = on; });
    connect(tree1_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* row) {
        if (row && !selecting_)
            Show(editor_.SelectOriginal(ItemOf(*row)));
    });
    connect(tree2_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* row) {
        if (row && !selecting_)
            Show(editor_.SelectNew(ItemOf(*row)));
    });
    connect(text2_, &QLineEdit::returnPressed, this, &frmCreateLang::Command2_Click);
    connect(command2, &QPushButton::clicked, this, &frmCreateLang::Command2_Click);
    connect(command1, &QPushButton::clicked, this, &frmCreateLang::Command1_Click);
    connect(command3, &QPushButton::clicked, this, [this] { prompt_.Message(editor_.UpdateHelp()); });

    LoadTextForDesign(lang, *this);
    // The caption carries the running version, which no language file can know.
    setWindowTitle(QString::fromStdString(editor_.Title()));
    FillCombos();
    const QString english = QString("%1.xml").arg(kDefaultLangFileStem);
    if (combo1_->findText(english) >= 0)
        Combo1_Click(english);
}

void frmCreateLang::FillCombos()
{
    combo1_->clear();
    for (const std::string& name : editor_.OriginalFiles())
        combo1_->addItem(QString::fromStdString(name));
    combo1_->setCurrentIndex(combo1_->findText(QString::fromStdString(editor_.OriginalFile())));
    combo2_->clear();
    for (const std::string& name : editor_.NewFiles())
        combo2_->addItem(QString::fromStdString(name));
    combo2_->setCurrentIndex(combo2_->findText(QString::fromStdString(editor_.NewFile())));
}

void frmCreateLang::Combo1_Click(const QString& entry)
{
    const bool unsaved = editor_.Modified();
    if (editor_.ChooseOriginal(entry.toStdString())) {
        FillTree(*tree1_, editor_.OriginalTree(), true);
        lblVersion_->setText(QString::fromStdString(editor_.OriginalVersion()));
    }
    combo1_->setCurrentIndex(combo1_->findText(QString::fromStdString(editor_.OriginalFile())));
    TellIfSaved(unsaved);
}

void frmCreateLang::Combo2_Click(const QString& entry)
{
    const bool unsaved = editor_.Modified();
    if (editor_.ChooseNew(entry.toStdString()))
        ShowNewFile();
    FillCombos();
    TellIfSaved(unsaved);
}

// Choosing another file or closing may save the new one first, when the user says so.
void frmCreateLang::TellIfSaved(bool unsaved)
{
    if (unsaved && !editor_.Modified())
        emit Saved();
}

void frmCreateLang::ShowNewFile()
{
    FillTree(*tree2_, editor_.NewTree(), true);
    txtCreator_->setText(QString::fromStdString(editor_.Creator()));
    lblVersionEdit_->setText(QString::fromStdString(editor_.VersionEdit()));
    text2_->clear();
}

void frmCreateLang::FillTree(QTreeWidget& tree, const std::optional<LangTreeNode>& root, bool otherFile)
{
    // The rows of the same file come back as the user left them: open, closed, selected.
    if (otherFile) {
        selecting_ = true;
        tree.clear();
        selecting_ = false;
    }
    QSet<QString> expanded;
    for (QTreeWidgetItemIterator it(&tree); *it; ++it) {
        if ((*it)->isExpanded())
            expanded.insert(KeyOf(**it));
    }
    const std::optional<LangItem> current =
        tree.currentItem() ? std::optional(ItemOf(*tree.currentItem())) : std::nullopt;
    selecting_ = true;
    tree.clear();
    if (root) {
        tree.addTopLevelItem(AddRow(*root));
        tree.topLevelItem(0)->setExpanded(true);
        for (QTreeWidgetItemIterator it(&tree); *it; ++it) {
            if (expanded.contains(KeyOf(**it)))
                (*it)->setExpanded(true);
        }
    }
    selecting_ = false;
    Select(tree, current);
}

void frmCreateLang::Select(QTreeWidget& tree, const std::optional<LangItem>& item)
{
    QTreeWidgetItem* row = item && tree.topLevelItemCount() ? FindRow(tree.topLevelItem(0), *item) : nullptr;
    selecting_ = true;
    tree.setCurrentItem(row);
    selecting_ = false;
    if (row)
        tree.scrollToItem(row);
}

void frmCreateLang::Show(const LanguageEditor::Shown& shown)
{
    text1_->setText(QString::fromStdString(shown.Text1));
    text2_->setText(QString::fromStdString(shown.Text2));
    if (shown.NewTreeChanged)
        FillTree(*tree2_, editor_.NewTree());
    if (shown.Original)
        Select(*tree1_, shown.Original);
    Select(*tree2_, shown.New);
}

void frmCreateLang::Command2_Click()
{
    const std::optional<LangItem> next = editor_.Update(text2_->text().toStdString());
    FillTree(*tree2_, editor_.NewTree());
    // Selecting the next original row matches it in the new file, as a click does.
    if (QTreeWidgetItem* row = next ? FindRow(tree1_->topLevelItem(0), *next) : nullptr)
        tree1_->setCurrentItem(row);
    text2_->setFocus();
    text2_->selectAll();
}

void frmCreateLang::Command1_Click()
{
    if (!editor_.Save())
        return;
    FillTree(*tree2_, editor_.NewTree());
    FillCombos();
    emit Saved();
}

void frmCreateLang::reject()
{
    const bool unsaved = editor_.Modified();
    if (!editor_.AskToSave())
        return;
    TellIfSaved(unsaved);
    QDialog::reject();
}

bool frmCreateLang::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && (watched == lblVersion_ || watched == lblVersionEdit_)) {
        const std::string version = LanguageEditor::RunningVersion();
        static_cast<QLabel*>(watched)->setText(QString::fromStdString(version));
        if (watched == lblVersion_)
            editor_.SetOriginalVersion(version);
        else
            editor_.SetVersionEdit(version);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace mw
