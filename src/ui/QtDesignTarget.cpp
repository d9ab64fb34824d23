#include "ui/QtDesignTarget.h"

#include "i18n/LoadTextForDesign.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolBar>
#include <QTreeWidget>

namespace mw {

namespace {

QString Q(const std::string& text)
{
    return QString::fromStdString(text);
}

// One named object of the window. Parts (tabs, columns, buttons) are numbered from 1 here and
// from 0 in Qt.
class QtControl final : public DesignControl {
public:
    explicit QtControl(QObject& object) : object_(object)
    {
        const QString name = object.objectName();
        const qsizetype cut = name.lastIndexOf('_');
        bool numeric = false;
        const int index = cut > 0 ? name.mid(cut + 1).toInt(&numeric) : 0;
        if (numeric) {
            name_ = name.left(cut).toStdString();
            index_ = index;
        } else {
            name_ = name.toStdString();
        }
    }

    std::string Name() const override { return name_; }
    std::optional<int> Index() const override { return index_; }

    std::string TypeName() const override
    {
        if (Tabs())
            return "TabStrip";
        if (qobject_cast<QTreeWidget*>(&object_) || qobject_cast<QTableWidget*>(&object_))
            return "ListView";
        if (qobject_cast<QToolBar*>(&object_))
            return "Toolbar";
        return object_.metaObject()->className();
    }

    bool HasCaption() const override
    {
        return qobject_cast<QAction*>(&object_) || qobject_cast<QAbstractButton*>(&object_) ||
               qobject_cast<QLabel*>(&object_) || qobject_cast<QGroupBox*>(&object_);
    }

    void SetCaption(const std::string& text) override
    {
        if (auto* action = qobject_cast<QAction*>(&object_))
            action->setText(Q(text));
        else if (auto* button = qobject_cast<QAbstractButton*>(&object_))
            button->setText(Q(text));
        else if (auto* label = qobject_cast<QLabel*>(&object_))
            label->setText(Q(text));
        else if (auto* group = qobject_cast<QGroupBox*>(&object_))
            group->setTitle(Q(text));
    }

    void SetToolTipText(const std::string& text) override
    {
        if (auto* action = qobject_cast<QAction*>(&object_))
            action->setToolTip(Q(text));
        else if (auto* widget = qobject_cast<QWidget*>(&object_))
            widget->setToolTip(Q(text));
    }

    int TabCount() const override { return Tabs() ? Tabs()->count() : 0; }
    void SetTabCaption(int i, const std::string& text) override { Tabs()->setTabText(i - 1, Q(text)); }
    void SetTabToolTipText(int i, const std::string& text) override { Tabs()->setTabToolTip(i - 1, Q(text)); }

    int ColumnCount() const override
    {
        if (auto* tree = qobject_cast<QTreeWidget*>(&object_))
            return tree->columnCount();
        if (auto* table = qobject_cast<QTableWidget*>(&object_))
            return table->columnCount();
        return 0;
    }
    void SetColumnText(int i, const std::string& text) override
    {
        if (auto* tree = qobject_cast<QTreeWidget*>(&object_)) {
            tree->headerItem()->setText(i - 1, Q(text));
            return;
        }
        auto* table = qobject_cast<QTableWidget*>(&object_);
        if (QTableWidgetItem* item = table->horizontalHeaderItem(i - 1))
            item->setText(Q(text));
        else
            table->setHorizontalHeaderItem(i - 1, new QTableWidgetItem(Q(text)));
    }

    int ButtonCount() const override { return static_cast<int>(Buttons().size()); }
    void SetButtonCaption(int i, const std::string& text) override { Buttons()[i - 1]->setText(Q(text)); }
    void SetButtonToolTipText(int i, const std::string& text) override { Buttons()[i - 1]->setToolTip(Q(text)); }

    // What the control shows now, in the terms of the setters above.
    ControlDesign Design() const
    {
        ControlDesign design{.Name = name_, .Index = index_, .TypeName = TypeName()};
        if (HasCaption())
            design.Caption = CaptionText().toStdString();
        design.ToolTipText = ToolTipText().toStdString();
        if (QTabBar* tabs = Tabs()) {
            for (int i = 0; i < tabs->count(); ++i)
                design.Tabs.push_back({tabs->tabText(i).toStdString(), tabs->tabToolTip(i).toStdString()});
        }
        for (int i = 1; i <= ColumnCount(); ++i)
            design.Columns.push_back(HeaderShown() ? ColumnText(i).toStdString() : std::string());
        // Tool bar buttons show pictures: their tool tip is the text a user reads.
        for (QAction* button : Buttons())
            design.Buttons.push_back({std::string(), button->toolTip().toStdString()});
        return design;
    }

private:
    QString CaptionText() const
    {
        if (auto* action = qobject_cast<QAction*>(&object_))
            return action->text();
        if (auto* button = qobject_cast<QAbstractButton*>(&object_))
            return button->text();
        if (auto* label = qobject_cast<QLabel*>(&object_))
            return label->text();
        if (auto* group = qobject_cast<QGroupBox*>(&object_))
            return group->title();
        return {};
    }

    QString ToolTipText() const
    {
        if (auto* action = qobject_cast<QAction*>(&object_))
            return OwnToolTip(*action);
        if (auto* widget = qobject_cast<QWidget*>(&object_))
            return widget->toolTip();
        return {};
    }

    // An action without a tool tip of its own shows one made from its text; that one follows
    // the caption and is no text of its own.
    static QString OwnToolTip(const QAction& action)
    {
        const QAction madeFromText(action.text());
        return action.toolTip() == madeFromText.toolTip() ? QString() : action.toolTip();
    }

    // A hidden header has only Qt's own numbers, nothing of the window's.
    bool HeaderShown() const
    {
        if (auto* tree = qobject_cast<QTreeWidget*>(&object_))
            return !tree->header()->isHidden();
        auto* table = qobject_cast<QTableWidget*>(&object_);
        return table && !table->horizontalHeader()->isHidden();
    }

    QString ColumnText(int i) const
    {
        if (auto* tree = qobject_cast<QTreeWidget*>(&object_))
            return tree->headerItem()->text(i - 1);
        const QTableWidgetItem* item = qobject_cast<QTableWidget*>(&object_)->horizontalHeaderItem(i - 1);
        return item ? item->text() : QString();
    }

    QTabBar* Tabs() const
    {
        if (auto* tabs = qobject_cast<QTabWidget*>(&object_))
            return tabs->tabBar();
        return qobject_cast<QTabBar*>(&object_);
    }

    // Separators count as buttons, so that the numbers follow the bar's order.
    QList<QAction*> Buttons() const
    {
        auto* bar = qobject_cast<QToolBar*>(&object_);
        return bar ? bar->actions() : QList<QAction*>{};
    }

    QObject& object_;
    std::string name_;
    std::optional<int> index_;
};

constexpr const char* kOutput = "menuwrightOutput";

// Objects that are not controls of their own: Qt's inner parts, the menus (their entry, the
// menu's action, carries the caption), the buttons of a tool bar (labelled through the bar) and
// the labels that show the program's output.
bool IsControl(const QObject& object)
{
    const QString name = object.objectName();
    if (name.isEmpty() || name.startsWith("qt_") || qobject_cast<const QMenu*>(&object) ||
        object.property(kOutput).toBool())
        return false;
    if (qobject_cast<const QAction*>(&object) && qobject_cast<const QToolBar*>(object.parent()))
        return false;
    if (qobject_cast<const QTabBar*>(&object) && qobject_cast<const QTabWidget*>(object.parent()))
        return false;
    return true;
}

constexpr const char* kOwnForm = "menuwrightOwnForm";

bool InNestedForm(const QObject& object, const QWidget& form)
{
    for (const QObject* at = &object; at && at != &form; at = at->parent()) {
        if (at->property(kOwnForm).toBool())
            return true;
    }
    return false;
}

template <typename Visit>
void ForEachQtControl(QWidget& form, const Visit& visit)
{
    for (QObject* object : form.findChildren<QObject*>()) {
        if (!IsControl(*object) || InNestedForm(*object, form))
            continue;
        QtControl control(*object);
        visit(control);
    }
}

} // namespace

void MarkAsOwnForm(QWidget& panel)
{
    panel.setProperty(kOwnForm, true);
}

void MarkAsOutput(QWidget& label)
{
    label.setProperty(kOutput, true);
}

std::string QtDesignTarget::FormName() const
{
    return form_.objectName().toStdString();
}

void QtDesignTarget::SetCaption(const std::string& text)
{
    form_.setWindowTitle(Q(text));
}

void QtDesignTarget::ForEachControl(const std::function<void(DesignControl&)>& visit)
{
    ForEachQtControl(form_, visit);
}

void LoadTextForDesign(const LangDoc& lang, QWidget& form)
{
    QtDesignTarget target(form);
    LoadTextForDesign(lang, target);
}

FormDesign ReadFormDesign(QWidget& form)
{
    FormDesign design{
        .FormName = form.objectName().toStdString(), .Caption = form.windowTitle().toStdString(), .Controls = {}};
    ForEachQtControl(form, [&](const QtControl& control) { design.Controls.push_back(control.Design()); });
    return design;
}

} // namespace mw
