#include "ui/dialogs/Form2.h"

#include "core/Text.h"
#include "document/Project.h"
#include "menus/Actions.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/NamedControls.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace mw {

namespace {

QString Q(const std::string& text)
{
    return QString::fromStdString(text);
}

QTreeWidget* NamedList(const char* name, const QStringList& columns)
{
    auto* list = new QTreeWidget;
    list->setObjectName(name);
    list->setRootIsDecorated(false);
    list->setAllColumnsShowFocus(true);
    list->setHeaderLabels(columns);
    return list;
}

void AddRow(QTreeWidget& list, const std::vector<std::string>& cells)
{
    QStringList texts;
    for (const std::string& cell : cells)
        texts << Q(cell);
    list.addTopLevelItem(new QTreeWidgetItem(texts));
}

std::string Cell(const QTreeWidget& list, int column)
{
    const QTreeWidgetItem* item = list.currentItem();
    return item ? item->text(column).toStdString() : "";
}

// Makes the row whose column holds the text the current one; none when no row does.
void SelectRow(QTreeWidget& list, int column, const std::string& text)
{
    const QList<QTreeWidgetItem*> found = list.findItems(Q(text), Qt::MatchExactly, column);
    list.setCurrentItem(found.isEmpty() ? nullptr : found.front());
}

std::string TypeKey(const std::string& type)
{
    return Lower(type);
}

} // namespace

Form2::Form2(ActionForm& form, Project& project, QWidget* parent)
    : QDialog(parent), form_(form), project_(project), List1_(new QListWidget), Label3_(NamedLabel("Label3", "")),
      Label2_(NamedLabel("Label2", "")), lstTitles_(NamedList("lstTitles", {"Title", "File"})),
      lstTracks_(TrackList()), lstChapters_(NamedList("lstChapters", {"Chapter", "Start Frame", "End Frame", "Name"})),
      lstMenus_(NamedList("lstMenus", {"Menu", "Type", "Name", "Language"})),
      lstButtons_(NamedList("lstButtons", {"Button", "Action"})),
      lstActions_(NamedList("lstActions", {"Action", "Target", "Track or chapter"}))
{
    setObjectName("Form2");
    setWindowTitle(Q(form.Caption));
    List1_->setObjectName("List1");
    for (const char* type : kActionTypes)
        List1_->addItem(type);
    // The type names are the choice; none is cut.
    List1_->setFixedWidth(List1_->sizeHintForColumn(0) + 2 * List1_->frameWidth() + 4);
    for (const TitleListRow& title : form.Lists.lstTitles)
        AddRow(*lstTitles_, {title.TitleID, title.Path});
    for (const MenuListRow& menu : form.Lists.lstMenus)
        AddRow(*lstMenus_, {menu.MenuID, menu.MenuType, menu.MenuName, menu.LanguageCode});

    auto* Command1 = NamedButton("Command1", "Add or update");
    auto* Command2 = NamedButton("Command2", "Delete");
    auto* Command3 = NamedButton("Command3", "New");
    auto* ok = NamedButton("OKButton", "OK");
    auto* cancel = NamedButton("CancelButton", "Cancel");

    auto* targets = new QGridLayout;
    targets->addWidget(Label3_, 0, 0, 1, 2);
    targets->addWidget(lstTitles_, 1, 0);
    targets->addWidget(lstTracks_, 1, 1);
    targets->addWidget(lstChapters_, 2, 0, 1, 2);
    targets->addWidget(Label2_, 3, 0, 1, 2);
    targets->addWidget(lstMenus_, 4, 0);
    targets->addWidget(lstButtons_, 4, 1);
    auto* top = new QHBoxLayout;
    top->addWidget(List1_);
    top->addLayout(targets, 1);
    auto* listButtons = new QHBoxLayout;
    for (QPushButton* button : {Command1, Command3, Command2})
        listButtons->addWidget(button);
    listButtons->addStretch();
    listButtons->addWidget(ok);
    listButtons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 3);
    layout->addWidget(lstActions_, 2);
    layout->addLayout(listButtons);

    const auto chose = [this] { pending_ = true; };
    connect(List1_, &QListWidget::itemClicked, this, [this, chose] {
        List1_Click();
        chose();
    });
    connect(lstTitles_, &QTreeWidget::itemClicked, this, [this, chose] {
        lstTitles_ItemClick();
        chose();
    });
    connect(lstMenus_, &QTreeWidget::itemClicked, this, [this, chose] {
        lstMenus_ItemClick();
        chose();
    });
    for (QTreeWidget* list : {lstTracks_, lstChapters_, lstButtons_})
        connect(list, &QTreeWidget::itemClicked, this, chose);
    connect(lstActions_, &QTreeWidget::itemClicked, this, &Form2::lstActions_ItemClick);
    connect(Command1, &QPushButton::clicked, this, &Form2::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, [this] {
        form_.Selected = lstActions_->indexOfTopLevelItem(lstActions_->currentItem());
        RemoveActionRow(form_);
        ShowActions();
    });
    connect(Command3, &QPushButton::clicked, this, [this] {
        form_.Selected = -1;
        ShowActions();
    });
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    resize(760, 480);
    List1_->setCurrentRow(0);
    List1_Click();
    ShowActions();
    if (form_.Selected >= 0)
        lstActions_ItemClick();
    LoadTextForDesign(project_.Lang(), *this);
}

void Form2::done(int result)
{
    if (result == Accepted && pending_) {
        const PromptAnswer answer =
            project_.Ask().Ask("Add changes to list ofActions?", PromptButtons::YesNo, PromptAnswer::Yes);
        if (answer == PromptAnswer::Yes && !Command1_Click())
            return;
    }
    QDialog::done(result);
}

void Form2::List1_Click()
{
    const std::string type = TypeKey(List1_->currentItem() ? List1_->currentItem()->text().toStdString() : "");
    const bool select = type == "audioselectaction" || type == "subtitleselectaction";
    const bool play = type == "playaction" || type == "playfromcurrentoffsetaction";
    const bool menu = type == "menutransitionaction";
    const bool button = type == "buttontransitionaction";
    lstTitles_->setVisible(select || play);
    lstTracks_->setVisible(select);
    lstChapters_->setVisible(play);
    lstMenus_->setVisible(menu);
    lstButtons_->setVisible(button);
    Label3_->setVisible(select || play);
    Label2_->setVisible(menu || button);
    if (select)
        Label3_->setText(QString("Select Title and %1 Track").arg(type == "audioselectaction" ? "Audio" : "Subtitle"));
    else if (play)
        Label3_->setText("Select Title and Chapter");
    if (menu)
        Label2_->setText("Select Menu");
    if (!button)
        return;
    // The buttons of the menu the list moves to last, else of the menu on the canvas.
    const std::size_t before =
        form_.Selected >= 0 ? static_cast<std::size_t>(form_.Selected) : form_.lstActions.size();
    const std::vector<ActionRow> rows(form_.lstActions.begin(),
                                      form_.lstActions.begin() + static_cast<std::ptrdiff_t>(before));
    const bool fromLatest = std::any_of(rows.begin(), rows.end(), [](const ActionRow& row) {
        return TypeKey(row.Type) == "menutransitionaction";
    });
    Label2_->setText(fromLatest ? "Select Button from menu in latest MenuTransitionAction" : "Select Button");
    lstButtons_->clear();
    for (const std::string& choice : ButtonChoices(project_.Doc.Tree, rows, project_.Canvas.CurrentMenuID)) {
        const std::size_t blank = choice == kNoButtonsInMenu ? std::string::npos : choice.find(' ');
        AddRow(*lstButtons_, {choice.substr(0, blank), blank == std::string::npos ? "" : choice.substr(blank + 1)});
    }
}

void Form2::lstTitles_ItemClick()
{
    lstTracks_->clear();
    lstChapters_->clear();
    const int row = lstTitles_->indexOfTopLevelItem(lstTitles_->currentItem());
    if (row < 0)
        return;
    const TitleTargets targets = LoadTitleTargets(project_, form_.Lists.lstTitles[static_cast<std::size_t>(row)]);
    FillTrackList(*lstTracks_, targets.Tracks);
    for (const ChapterChoiceRow& chapter : targets.Chapters)
        AddRow(*lstChapters_, {chapter.ID, chapter.StartFrame, chapter.EndFrame, chapter.Name});
}

void Form2::lstMenus_ItemClick()
{
    lstButtons_->clear();
    for (const std::string& choice : ButtonChoices(project_.Doc.Tree, {}, Cell(*lstMenus_, 0))) {
        const std::size_t blank = choice == kNoButtonsInMenu ? std::string::npos : choice.find(' ');
        AddRow(*lstButtons_, {choice.substr(0, blank), blank == std::string::npos ? "" : choice.substr(blank + 1)});
    }
}

void Form2::lstActions_ItemClick()
{
    form_.Selected = lstActions_->indexOfTopLevelItem(lstActions_->currentItem());
    if (form_.Selected < 0)
        return;
    const ActionRow row = form_.lstActions[static_cast<std::size_t>(form_.Selected)];
    const QList<QListWidgetItem*> types = List1_->findItems(Q(row.Type), Qt::MatchFixedString);
    List1_->setCurrentItem(types.isEmpty() ? nullptr : types.front());
    List1_Click();
    const std::string type = TypeKey(row.Type);
    if (type == "menutransitionaction") {
        SelectRow(*lstMenus_, 0, row.Target1);
        lstMenus_ItemClick();
    } else if (type == "buttontransitionaction") {
        SelectRow(*lstButtons_, 0, row.Target1);
    } else {
        SelectRow(*lstTitles_, 0, row.Target1);
        lstTitles_ItemClick();
        if (type == "audioselectaction" || type == "subtitleselectaction")
            SelectRow(*lstTracks_, 3, row.Target2);
        else
            SelectRow(*lstChapters_, 0, row.Target2);
    }
    pending_ = false;
}

ActionChoice Form2::Choice() const
{
    ActionChoice choice;
    choice.Type = List1_->currentItem() ? List1_->currentItem()->text().toStdString() : "";
    choice.TitleID = Cell(*lstTitles_, 0);
    choice.TrackID = Cell(*lstTracks_, 3);
    choice.TrackKind = Cell(*lstTracks_, 0);
    choice.ChapterID = Cell(*lstChapters_, 0);
    choice.MenuID = Cell(*lstMenus_, 0);
    choice.ButtonID = Cell(*lstButtons_, 0);
    return choice;
}

bool Form2::Command1_Click()
{
    if (!AddActionRow(project_.Ask(), form_, Choice()))
        return false;
    pending_ = false;
    ShowActions();
    return true;
}

void Form2::ShowActions()
{
    lstActions_->clear();
    for (const ActionRow& row : form_.lstActions)
        AddRow(*lstActions_, {row.Type, row.Target1, row.Target2});
    if (form_.Selected >= 0)
        lstActions_->setCurrentItem(lstActions_->topLevelItem(form_.Selected));
}

} // namespace mw
