#include "ui/QtDesignTarget.h"

#include <QLabel>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>

using namespace mw;

// Tabs, tool bar buttons and captions are checked through the main window's language switch.
class QtDesignTargetTest : public QObject {
    Q_OBJECT
private slots:
    void columnsAreNumberedFromOneAndArraysByIndex();
};

void QtDesignTargetTest::columnsAreNumberedFromOneAndArraysByIndex()
{
    QWidget form;
    form.setObjectName("frmTest");
    auto* tree = new QTreeWidget(&form);
    tree->setObjectName("ListView1");
    tree->setHeaderLabels({"Name", "Value"});
    auto* table = new QTableWidget(0, 2, &form);
    table->setObjectName("lvFiles");
    auto* label = new QLabel("three", &form);
    label->setObjectName("Label1_3");

    LangDoc lang;
    QVERIFY(lang.LoadString(R"(<Lang><frmTest_Design ListView1_2="Wert" lvFiles_2="Datei" Label1_3="Drei" Label1="wrong"/></Lang>)"));
    LoadTextForDesign(lang, form);

    QCOMPARE(tree->headerItem()->text(0), QString("Name"));
    QCOMPARE(tree->headerItem()->text(1), QString("Wert"));
    QCOMPARE(table->horizontalHeaderItem(1)->text(), QString("Datei"));
    QCOMPARE(label->text(), QString("Drei"));
}

QTEST_MAIN(QtDesignTargetTest)
#include "QtDesignTargetTest.moc"
