#include "MainWindowFixture.h"

#include "core/ScriptedPrompt.h"
#include "core/Version.h"
#include "i18n/LanguageEditor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTreeWidget>

#include <fstream>
#include <sstream>

using namespace mw;

namespace {

std::string ShippedEnglish()
{
    std::ifstream in(MENUWRIGHT_LANG_FILE, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

QTreeWidgetItem* RowOf(QTreeWidget& tree, const QString& section, const QString& attribute)
{
    for (QTreeWidgetItemIterator it(&tree); *it; ++it) {
        QTreeWidgetItem* row = *it;
        if (row->parent() && row->parent()->text(0) == section && row->text(0).startsWith(attribute + " = "))
            return row;
    }
    return nullptr;
}

QAction* LanguageEntry(const test::MainWindow& w, const QString& caption)
{
    for (QAction* item : w.form->findChildren<QAction*>(QRegularExpression("^mnuLangDef_\\d+$"))) {
        if (item->text() == caption)
            return item;
    }
    return nullptr;
}

} // namespace

class LanguageEditorTest : public QObject {
    Q_OBJECT
private slots:
    void newLanguageFromEnglishRelabelsTheMainWindow();
};

// Make a language from the shipped English file, translate three entries, save it, and switch to
// it from Help > Languages without a restart.
void LanguageEditorTest::newLanguageFromEnglishRelabelsTheMainWindow()
{
    const std::string english = ShippedEnglish();
    QVERIFY(!english.empty());
    test::MainWindow w({{"English.Menuwright.exe.xml", english}});
    QVERIFY(w.Action("mnuCreateLangNick")->isEnabled());
    const std::vector<std::pair<QString, QString>> translations = {
        {"mnuOpen", "Jach..."}, {"mnuSave", "Pol"}, {"mnuAbout", "Qon..."}};

    bool offeredWhileOpen = false;
    QString title;
    test::OnNextDialog([&](QDialog& dialog) {
        title = dialog.windowTitle();
        auto* combo1 = test::Child<QComboBox>(dialog, "Combo1");
        auto* combo2 = test::Child<QComboBox>(dialog, "Combo2");
        auto* tree1 = test::Child<QTreeWidget>(dialog, "Tree1");
        auto* tree2 = test::Child<QTreeWidget>(dialog, "Tree2");
        auto* text1 = test::Child<QLineEdit>(dialog, "Text1");
        auto* text2 = test::Child<QLineEdit>(dialog, "Text2");
        QCOMPARE(combo1->currentText(), QString("English.Menuwright.exe.xml"));

        w.prompt.Inputs.push_back("Klingon");
        emit combo2->textActivated(QString(LanguageEditor::kCreateNew));
        QCOMPARE(combo2->currentText(), QString("Klingon.Menuwright.exe.xml"));
        QCOMPARE(tree2->topLevelItem(0)->childCount(), 1);
        test::Child<QCheckBox>(dialog, "chkAutoCreate")->click();

        for (const auto& [name, text] : translations) {
            QTreeWidgetItem* row = RowOf(*tree1, "Form1_Design", name);
            QVERIFY(row);
            tree1->setCurrentItem(row);
            QCOMPARE(text1->text(), row->text(0).section(" = ", 1));
            // The new row starts from the original text.
            QCOMPARE(text2->text(), text1->text());
            text2->clear();
            QTest::keyClicks(text2, text);
            QTest::keyClick(text2, Qt::Key_Return);
            // Enter moved both trees on to the next row.
            QVERIFY(tree1->currentItem() != row && tree2->currentItem());
            QCOMPARE(tree2->currentItem()->text(0), tree1->currentItem()->text(0));
            QVERIFY(RowOf(*tree2, "Form1_Design", name));
            QCOMPARE(RowOf(*tree2, "Form1_Design", name)->text(0), name + " = " + text);
        }
        QTest::keyClicks(test::Child<QLineEdit>(dialog, "txtCreator"), "Worf");
        test::Click(dialog, "Command1");
        offeredWhileOpen = LanguageEntry(w, "Klingon") != nullptr;
        dialog.reject();
    });
    w.Action("mnuCreateLangNick")->trigger();

    QCOMPARE(title, QString("Create new language for program Menuwright ver. ") + kVersionText);
    QVERIFY(w.prompt.Texts().empty());
    QVERIFY(offeredWhileOpen);
    LangDoc saved;
    QVERIFY(saved.LoadFile(w.Folder() / "Klingon.Menuwright.exe.xml"));
    QCOMPARE(saved.PrivateAttribute("Creator"), std::optional<std::string>("Worf"));

    QCOMPARE(w.Action("mnuOpen")->text(), QString("Open..."));
    QAction* klingon = LanguageEntry(w, "Klingon");
    QVERIFY(klingon);
    klingon->trigger();
    QVERIFY(klingon->isChecked());
    QVERIFY(!LanguageEntry(w, "English")->isChecked());
    for (const auto& [name, text] : translations)
        QCOMPARE(w.Action(name.toUtf8().constData())->text(), text);
    // What was not translated keeps its English text.
    QCOMPARE(w.Action("mnuSaveAs")->text(), QString("Save As..."));
}

QTEST_MAIN(LanguageEditorTest)
#include "LanguageEditorTest.moc"
