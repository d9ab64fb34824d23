#include "ui/QtDesignTarget.h"

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>

using namespace mw;

class QtDesignTargetTest : public QObject {
    Q_OBJECT
private slots:
    void partsAreNumberedFromOneAndArraysByIndex();
};

void QtDesignTargetTest::partsAreNumberedFromOneAndArraysByIndex()
{
    QWidget form;
    form.setObjectName("frmTest");
    auto* tabs = new QTabWidget(&form);
    tabs->setObjectName("TabStrip1");
    tabs->addTab(new QWidget, "General");
    tabs->addTab(new QWidget, "Colors");
    auto* tree = new QTreeWidget(&form);
    tree->setObjectName("ListView1");
    tree->setHeaderLabels({"Name", "Value"});
    auto* table = new QTableWidget(0, 2, &form);
    table->setObjectName("lvFiles");
    auto* label = new QLabel("three", &form);
    label->setObjectName("Label1_3");
    auto* ok = new QPushButton("OK", &form);
    ok->setObjectName("cmdOk");

    LangDoc lang;
    QVERIFY(lang.LoadString(R"(<Lang><frmTest_Design frmTest="Test window" TabStrip1_2="Farben"
 TabStrip1_2_ToolTipText="Farbtipp" ListView1_2="Wert" lvFiles_2="Datei" Label1_3="Drei"
 cmdOk_ToolTipText="Anwenden" Label1="wrong"/></Lang>)"));
    LoadTextForDesign(lang, form);

    QCOMPARE(form.windowTitle(), QString("Test window"));
    QCOMPARE(tabs->tabText(0), QString("General"));
    QCOMPARE(tabs->tabText(1), QString("Farben"));
    QCOMPARE(tabs->tabToolTip(1), QString("Farbtipp"));
    QCOMPARE(tree->headerItem()->text(0), QString("Name"));
    QCOMPARE(tree->headerItem()->text(1), QString("Wert"));
    QCOMPARE(table->horizontalHeaderItem(1)->text(), QString("Datei"));
    QCOMPARE(label->text(), QString("Drei"));
    QCOMPARE(ok->text(), QString("OK"));
    QCOMPARE(ok->toolTip(), QString("Anwenden"));
}

QTEST_MAIN(QtDesignTargetTest)
#include "QtDesignTargetTest.moc"
