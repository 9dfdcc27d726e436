// Cell editors: what each kind of cell is edited with, and what reaches the model.
#include <CategoryUnitItemDelegate.h>
#include <DisplayUnitManager.h>
#include <MatrixData.h>
#include <PropertyCategoryItemDelegate.h>
#include <QComboBoxItemDelegate.h>
#include <QSortFilterProxyVertexItemModel.h>
#include <QUnitComboBox.h>
#include <QVertexItemDelegate.h>
#include <QVertexItemModel.h>
#include <UnitItemUnitDelegateImpl.h>
#include <UnitRegistry.h>

#include <QtTest>

#include <QComboBox>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>

#include <memory>

using namespace rkBase;

class TestDelegates : public QObject
{
    Q_OBJECT
private slots:
    void editorsByCellType_data();
    void editorsByCellType();
    void numbersInDisplayUnits();
    void lookupThroughCombo();
    void returnMovesDown();
    void comboDelegate();
    void unitDelegates();
};

namespace {
struct Sheet {
    UnitRegistry registry;
    MatrixData root{QStringLiteral("root"), -1, -1, QVariant::String, true};
    std::unique_ptr<QVertexItemModel> model;
    QSortFilterProxyVertexItemModel proxy;
    Sheet()
    {
        root.setRegistry(&registry);
        auto* g = new MatrixData(QStringLiteral("g"), -1, -1, QVariant::String, true);
        root.appendChild(g, true);
        const QVariant::Type types[] = {QVariant::Double, QVariant::Int, QVariant::String, QVariant::Bool,
                                        QVariant::Color, QVariant::KeySequence};
        for (QVariant::Type t : types) {
            auto* c = new MatrixData(MatrixData::systemTypeName(t), 3, 1, t, true);
            g->appendChild(c, false);
        }
        MatrixData* depth = root.getNodeFromName(QStringLiteral("Double"));
        depth->setUnitManager(UnitRegistry::CATEGORY_ELEVATION);
        depth->setValue(0, 0, 30.48);
        MatrixData* lith = root.getNodeFromName(QStringLiteral("KeySequence"));
        lith->addLookupValue(1, QStringLiteral("Sand"));
        lith->addLookupValue(2, QStringLiteral("Shale"));
        lith->setValue(0, 0, 2);
        model = std::make_unique<QVertexItemModel>(nullptr, &root, -1, false, nullptr);
        proxy.setSourceModel(model.get());
    }
};
} // namespace

void TestDelegates::editorsByCellType_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("editorClass");
    QTest::newRow("number") << 0 << "rkBase::UnitItemUnitDelegateImpl";
    QTest::newRow("integer") << 1 << "QLineEdit";
    QTest::newRow("text") << 2 << "QLineEdit";
    QTest::newRow("check box") << 3 << "";
    QTest::newRow("colour") << 4 << "";
    QTest::newRow("coded text") << 5 << "QComboBox";
}

void TestDelegates::editorsByCellType()
{
    QFETCH(int, column);
    QFETCH(QString, editorClass);
    Sheet s;
    QVertexItemDelegate delegate;
    QWidget parent;
    QWidget* editor = delegate.createEditor(&parent, QStyleOptionViewItem(), s.proxy.index(0, column));
    if (editorClass.isEmpty()) {
        QCOMPARE(editor, nullptr);
        return;
    }
    QVERIFY(editor);
    QCOMPARE(QString::fromLatin1(editor->metaObject()->className()), editorClass);
    QCOMPARE(QVertexItemDelegate::nodeOf(s.proxy.index(0, column)), s.model->getNode(column));
}

void TestDelegates::numbersInDisplayUnits()
{
    Sheet s;
    s.registry.displayUnitManager()->setDisplayUnit(UnitRegistry::CATEGORY_ELEVATION, 1); // feet
    QVertexItemDelegate delegate;
    QWidget parent;
    const QModelIndex cell = s.proxy.index(0, 0);
    auto* editor = qobject_cast<UnitItemUnitDelegateImpl*>(delegate.createEditor(&parent, QStyleOptionViewItem(), cell));
    QVERIFY(editor);
    QCOMPARE(editor->unitTag(), QStringLiteral("ft"));
    delegate.setEditorData(editor, cell);
    QCOMPARE(editor->text(), QStringLiteral("100.00"));
    editor->setText(QStringLiteral("10"));
    delegate.setModelData(editor, &s.proxy, cell);
    QVERIFY(qFuzzyCompare(s.root.getNodeFromName(QStringLiteral("Double"))->toDouble(0, 0), 3.048));
}

void TestDelegates::lookupThroughCombo()
{
    Sheet s;
    QVertexItemDelegate delegate;
    QWidget parent;
    const QModelIndex cell = s.proxy.index(0, 5);
    auto* box = qobject_cast<QComboBox*>(delegate.createEditor(&parent, QStyleOptionViewItem(), cell));
    QVERIFY(box);
    QCOMPARE(box->count(), 2);
    delegate.setEditorData(box, cell);
    QCOMPARE(box->currentText(), QStringLiteral("Shale"));
    box->setCurrentIndex(box->findText(QStringLiteral("Sand")));
    delegate.setModelData(box, &s.proxy, cell);
    QCOMPARE(s.root.getNodeFromName(QStringLiteral("KeySequence"))->value(0, 0).toString(), QStringLiteral("Sand"));
}

void TestDelegates::returnMovesDown()
{
    Sheet s;
    QVertexItemDelegate delegate;
    QSignalSpy next(&delegate, SIGNAL(setNextInColumn(QWidget*)));
    QSignalSpy commit(&delegate, SIGNAL(commitData(QWidget*)));
    QWidget parent;
    QWidget* editor = delegate.createEditor(&parent, QStyleOptionViewItem(), s.proxy.index(1, 2));
    auto* line = qobject_cast<QLineEdit*>(editor);
    QVERIFY(line);
    QTest::keyClick(line, Qt::Key_A);
    QCOMPARE(next.count(), 0);
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(commit.count(), 1);
    QCOMPARE(next.count(), 1);
}

void TestDelegates::comboDelegate()
{
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), QStringLiteral("b"));
    QComboBoxItemDelegate delegate({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    QWidget parent;
    auto* box = qobject_cast<QComboBox*>(delegate.createEditor(&parent, QStyleOptionViewItem(), model.index(0, 0)));
    QVERIFY(box);
    delegate.setEditorData(box, model.index(0, 0));
    QCOMPARE(box->currentIndex(), 1);
    box->setCurrentIndex(2);
    delegate.setModelData(box, &model, model.index(0, 0));
    QCOMPARE(model.data(model.index(0, 0)).toString(), QStringLiteral("c"));
}

void TestDelegates::unitDelegates()
{
    UnitRegistry registry;
    QStandardItemModel model(1, 2);
    model.setData(model.index(0, 0), QStringLiteral("Elevation"));
    model.setData(model.index(0, 1), QStringLiteral("Elevation"), Qt::UserRole);
    QWidget parent;

    CategoryUnitItemDelegate units(QUnitComboBox::SelectUnit, &registry);
    auto* unitBox = qobject_cast<QUnitComboBox*>(units.createEditor(&parent, QStyleOptionViewItem(), model.index(0, 1)));
    QVERIFY(unitBox);
    QCOMPARE(unitBox->count(), 2); // metres and feet
    unitBox->setCurrentIndex(1);
    units.setModelData(unitBox, &model, model.index(0, 1));
    QCOMPARE(model.data(model.index(0, 1)).toString(), QStringLiteral("feet (ft)"));
    QCOMPARE(model.data(model.index(0, 1), Qt::UserRole).toInt(), 1);

    CategoryUnitItemDelegate categories(QUnitComboBox::SelectCategory, &registry);
    auto* categoryBox = qobject_cast<QUnitComboBox*>(categories.createEditor(&parent, QStyleOptionViewItem(), model.index(0, 0)));
    QCOMPARE(categoryBox->count(), registry.displayUnitManager()->categories().size());
    categories.setEditorData(categoryBox, model.index(0, 0));
    QCOMPARE(categoryBox->currentText(), QStringLiteral("Elevation"));

    PropertyCategoryItemDelegate property(&registry);
    auto* propertyBox = qobject_cast<QComboBox*>(property.createEditor(&parent, QStyleOptionViewItem(), model.index(0, 0)));
    propertyBox->setCurrentIndex(propertyBox->findText(QStringLiteral("Orientation")));
    property.setModelData(propertyBox, &model, model.index(0, 0));
    QCOMPARE(model.data(model.index(0, 0)).toString(), QStringLiteral("Orientation"));
}

QTEST_MAIN(TestDelegates)
#include "tst_delegates.moc"
