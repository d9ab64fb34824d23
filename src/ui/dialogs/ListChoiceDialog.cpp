#include "ui/dialogs/ListChoiceDialog.h"

#include "media/NewTitleForm.h"
#include "ui/QtDesignTarget.h"
#include "ui/dialogs/ComboBoxView.h"
#include "ui/dialogs/NamedControls.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace mw {

namespace {

QListWidget* ListView(ComboList& list, QWidget* parent)
{
    auto* view = new QListWidget(parent);
    view->setObjectName("List1");
    for (const ComboItem& item : list.Items)
        view->addItem(QString::fromStdString(item.Text));
    view->setCurrentRow(list.ListIndex);
    QObject::connect(view, &QListWidget::currentRowChanged, view, [&list](int row) { list.ListIndex = row; });
    return view;
}

} // namespace

ListChoiceDialog::ListChoiceDialog(const char* name, const std::string& caption, const std::string& label,
                                   ComboList& list, Look look, const LangDoc& lang, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(name);
    setWindowTitle(QString::fromStdString(caption));
    auto* ok = NamedButton("OKButton", "OK");
    auto* cancel = NamedButton("CancelButton", "Cancel");
    ok->setDefault(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(NamedLabel("Label1", label.c_str()));
    QWidget* choice = look == Look::Combo ? static_cast<QWidget*>(ComboBoxView(list, "Combo1", this)) : ListView(list, this);
    layout->addWidget(choice, 1);
    layout->addLayout(buttons);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    if (auto* view = qobject_cast<QListWidget*>(choice))
        connect(view, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    LoadTextForDesign(lang, *this);
}

} // namespace mw
