// Many cells at once: the modify dialog's methods on the cell model, their undo actions, the
// interpolation between selected cells in view order, and the dialog's own form.
#include <MatrixData.h>
#include <MatrixDataRestore.h>
#include <QModifyCellsDialog.h>
#include <QSelectCellsDialog.h>
#include <QSortFilterProxyVertexItemModel.h>
#include <QVertexItemModel.h>
#include <QVertexModelTableView.h>

#include <QtTest>

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include <cmath>
#include <limits>
#include <memory>

using namespace rkBase;

using Cells = QList<QPoint>; // x: column, y: model row
using Method = QModifyCellsDialog::ModifyMethod;
Q_DECLARE_METATYPE(Method)

namespace {
const double kBlank = std::nan("");

// Columns "A" and "B" (Double) and "Label" (String); NaN in a list stands for a blank cell.
struct Sheet {
    MatrixData root{QStringLiteral("root"), -1, -1, QVariant::String, true};
    std::unique_ptr<QVertexItemModel> model;
    MatrixData* a = nullptr;
    MatrixData* b = nullptr;
    MatrixData* label = nullptr;

    Sheet(const QList<double>& av, const QList<double>& bv, const QStringList& labels)
    {
        auto* g = new MatrixData(QStringLiteral("g"), -1, -1, QVariant::String, true);
        root.appendChild(g, true);
        auto add = [&](const QString& name, QVariant::Type type, int rows) {
            auto* c = new MatrixData(name, rows, 1, type, true);
            g->appendChild(c, false);
            return c;
        };
        a = add(QStringLiteral("A"), QVariant::Double, av.size());
        b = add(QStringLiteral("B"), QVariant::Double, bv.size());
        label = add(QStringLiteral("Label"), QVariant::String, labels.size());
        for (int r = 0; r < av.size(); ++r)
            a->setValue(r, 0, std::isnan(av[r]) ? QVariant() : QVariant(av[r]));
        for (int r = 0; r < bv.size(); ++r)
            b->setValue(r, 0, std::isnan(bv[r]) ? QVariant() : QVariant(bv[r]));
        for (int r = 0; r < labels.size(); ++r)
            label->setValue(r, 0, labels[r].isEmpty() ? QVariant() : QVariant(labels[r]));
        root.checkValidRowCount();
        model = std::make_unique<QVertexItemModel>(nullptr, &root, -1, false, nullptr);
        model->enableUndoRedo(true);
    }
    // The column's cells, numbers to six digits, blanks empty.
    static QString dump(const MatrixData* node, int rows)
    {
        QStringList out;
        for (int r = 0; r < rows; ++r) {
            const QVariant v = node->value(r, 0);
            out << (!v.isValid() ? QString()
                                 : node->cellType() == QVariant::String ? v.toString() : QString::number(v.toDouble(), 'g', 6));
        }
        return out.join(QLatin1Char(','));
    }
    QString dump() const
    {
        const int rows = model->rowCount();
        return dump(a, rows) + QLatin1String(" | ") + dump(b, rows) + QLatin1String(" | ") + dump(label, rows);
    }
    QModelIndexList indexes(const Cells& cells) const
    {
        QModelIndexList out;
        for (const QPoint& p : cells)
            out << model->index(p.y(), p.x());
        return out;
    }
};

Cells column(int c, int rows)
{
    Cells out;
    for (int r = 0; r < rows; ++r)
        out << QPoint(c, r);
    return out;
}

// Undoes every action after the first `from` and tells whether the sheet is back where it was.
bool undoesBackTo(Sheet& s, int from, const QString& before)
{
    while (s.root.sizeUndoActions() > from && s.root.undoPosition() > from)
        if (!s.root.undoLastAction())
            return false;
    return s.dump() == before;
}
} // namespace

class TestModifyCells : public QObject
{
    Q_OBJECT
private slots:
    void modify_data();
    void modify();
    void interpolate_data();
    void interpolate();
    void interpolatesInSortedViewOrder();
    void viewModifiesHeldRows();
    void clear_data();
    void clear();
    void dialogMethods_data();
    void dialogMethods();
    void dialogForm();
    void selectDialogTitle_data();
    void selectDialogTitle();
};

void TestModifyCells::modify_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QString>("value");
    QTest::addColumn<Cells>("cells");
    QTest::addColumn<int>("attribute");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("undoActions");
    QTest::addColumn<QString>("firstAction");
    // Sheet: A = 1,2,_,4,-1   B = 10,_,30,40,0   Label = a,b,_,d,e
    const QString same = QStringLiteral("1,2,,4,-1 | 10,,30,40,0 | a,b,,d,e");
    QTest::newRow("shift leaves blanks") << 0 << "1.5" << column(0, 5) << -1
                                         << "2.5,3.5,,5.5,0.5 | 10,,30,40,0 | a,b,,d,e" << 1
                                         << "Modify Cell(s):Shift by Value: column=A";
    QTest::newRow("replace leaves blanks") << 8 << "7" << column(0, 5) << -1 << "7,7,,7,7 | 10,,30,40,0 | a,b,,d,e" << 1
                                           << "Modify Cell(s):Replace by Value: column=A";
    QTest::newRow("replace empty fills blanks only") << 10 << "7" << (column(0, 5) + column(2, 5)) << -1
                                                     << "1,2,7,4,-1 | 10,,30,40,0 | a,b,7,d,e" << 2
                                                     << "Modify Cell(s):Replace Empty Cell(s): column=A";
    QTest::newRow("text first: numbers untouched")
        << 0 << "zz" << Cells{{2, 0}, {2, 1}, {0, 0}, {0, 1}} << -1 << "1,2,,4,-1 | 10,,30,40,0 | zz,zz,,d,e" << 2
        << "Modify Cell(s):Shift by Value: column=Label";
    QTest::newRow("numbers first: text takes the value as text")
        << 8 << "5" << Cells{{0, 0}, {2, 0}} << -1 << "5,2,,4,-1 | 10,,30,40,0 | 5,b,,d,e" << 2
        << "Modify Cell(s):Replace by Value: column=A";
    QTest::newRow("divide") << 4 << "2" << column(1, 5) << -1 << "1,2,,4,-1 | 5,,15,20,0 | a,b,,d,e" << 1
                            << "Modify Cell(s):Divide by Value: column=B";
    QTest::newRow("divide by zero cancels") << 4 << "0" << column(1, 5) << -1 << same << 0 << "";
    QTest::newRow("ln leaves non-positive cells") << 5 << "" << column(0, 5) << -1
                                                  << "0,0.693147,,1.38629,-1 | 10,,30,40,0 | a,b,,d,e" << 1
                                                  << "Modify Cell(s):ln: column=A";
    QTest::newRow("clear over three columns") << 9 << "" << Cells{{0, 0}, {1, 0}, {2, 0}} << -1
                                              << ",2,,4,-1 | ,,30,40,0 | ,b,,d,e" << 3
                                              << "Modify Cell(s):Clear Cell(s): column=A";
    QTest::newRow("attribute column only") << 1 << "3" << Cells{{0, 0}, {1, 0}, {0, 1}} << 1
                                           << "1,2,,4,-1 | 30,,30,40,0 | a,b,,d,e" << 1
                                           << "Modify Cell(s):Multiply by Value: column=B";
    QTest::newRow("garbage for a number cancels") << 1 << "abc" << column(0, 5) << -1 << same << 0 << "";
    QTest::newRow("infinity for a number cancels") << 8 << "inf" << column(0, 5) << -1 << same << 0 << "";
    QTest::newRow("interpolation is not a cell method") << 11 << "1" << column(0, 5) << -1 << same << 0 << "";
    QTest::newRow("cells past the columns") << 8 << "1" << Cells{{7, 0}, {-1, 2}} << -1 << same << 0 << "";
}

void TestModifyCells::modify()
{
    QFETCH(int, method);
    QFETCH(QString, value);
    QFETCH(Cells, cells);
    QFETCH(int, attribute);
    QFETCH(QString, expected);
    QFETCH(int, undoActions);
    QFETCH(QString, firstAction);
    Sheet s({1, 2, kBlank, 4, -1}, {10, kBlank, 30, 40, 0}, {"a", "b", "", "d", "e"});
    const QString before = s.dump();
    s.model->modifySelectedCells(s.indexes(cells), value, Method(method), attribute);
    QCOMPARE(s.dump(), expected);
    QCOMPARE(s.root.sizeUndoActions(), undoActions);
    if (undoActions > 0)
        QCOMPARE(s.root.undoAction(0)->name(), firstAction);
    QVERIFY(undoesBackTo(s, 0, before));
}

void TestModifyCells::interpolate_data()
{
    QTest::addColumn<QList<double>>("a");
    QTest::addColumn<Cells>("cells");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("undo");
    const double _ = kBlank;
    QTest::newRow("10 to 50 over rows 2..6") << QList<double>{0, 10, 0, _, 0, 50, 0} << Cells{{0, 1}, {0, 5}}
                                             << "0,10,20,30,40,50,0" << true;
    QTest::newRow("three anchors") << QList<double>{0, 9, 10, 9, 9, 9, 30} << Cells{{0, 0}, {0, 2}, {0, 6}}
                                   << "0,5,10,15,20,25,30" << true;
    QTest::newRow("given bottom up") << QList<double>{0, 10, 0, 0, 0, 50, 0} << Cells{{0, 5}, {0, 1}}
                                     << "0,10,20,30,40,50,0" << true;
    QTest::newRow("blank anchor is skipped") << QList<double>{0, 10, 0, _, 0, 50, 0} << Cells{{0, 1}, {0, 3}, {0, 5}}
                                             << "0,10,20,30,40,50,0" << true;
    QTest::newRow("other column is ignored") << QList<double>{0, 10, 0, 0, 0, 50, 0} << Cells{{0, 1}, {1, 3}, {2, 2}, {0, 5}}
                                             << "0,10,20,30,40,50,0" << true;
    QTest::newRow("neighbours: nothing between") << QList<double>{0, 10, 50, 0, 0, 0, 0} << Cells{{0, 1}, {0, 2}}
                                                 << "0,10,50,0,0,0,0" << false;
    QTest::newRow("the same cell twice") << QList<double>{0, 10, 0, 0, 0, 0, 0} << Cells{{0, 1}, {0, 1}}
                                         << "0,10,0,0,0,0,0" << false;
    const double inf = std::numeric_limits<double>::infinity();
    QTest::newRow("infinite anchor is no value") << QList<double>{0, 10, 0, 0, inf, 0, 0} << Cells{{0, 1}, {0, 4}}
                                                 << "0,10,0,0,inf,0,0" << false;
}

void TestModifyCells::interpolate()
{
    QFETCH(QList<double>, a);
    QFETCH(Cells, cells);
    QFETCH(QString, expected);
    QFETCH(bool, undo);
    Sheet s(a, QVector<double>(a.size(), 1.0).toList(), QVector<QString>(a.size(), QStringLiteral("x")).toList());
    const QString before = s.dump();
    s.model->interpolate(s.indexes(cells));
    QCOMPARE(Sheet::dump(s.a, a.size()), expected);
    QCOMPARE(s.root.sizeUndoActions(), undo ? 1 : 0);
    if (undo) {
        QCOMPARE(s.root.undoAction(0)->name(),
                 QStringLiteral("Modify Cell(s): Attribute Interpol. between selected Cells: column=A"));
        QVERIFY(undoesBackTo(s, 0, before));
    }
}

void TestModifyCells::interpolatesInSortedViewOrder()
{
    // B sorts the rows as 3, 0, 2, 1 (descending); A holds 100 at the top of the view, 400 at
    // its bottom.
    Sheet s({1, 100, 7, 400}, {5, 1, 3, 9}, {"w", "x", "y", "z"});
    QSortFilterProxyVertexItemModel proxy;
    proxy.setSourceModel(s.model.get());
    QVertexModelTableView view(nullptr, nullptr, false, false, false);
    view.setModel(&proxy);
    view.setSortingEnabled(true);
    view.sortByColumn(1, Qt::DescendingOrder);
    QCOMPARE(view.validCellRows(), (std::vector<int>{3, 0, 2, 1}));
    // A at view rows 0 and 3 (source rows 3 and 1): 400 and 100.
    view.selectionModel()->select(proxy.index(0, 0), QItemSelectionModel::Select);
    view.selectionModel()->select(proxy.index(3, 0), QItemSelectionModel::Select);
    view.modifySelectedCells(QVariant(), QModifyCellsDialog::AttributeInterpolation, -1);
    // View rows 1 and 2 are source rows 0 and 2: 300 and 200.
    QCOMPARE(Sheet::dump(s.a, 4), QStringLiteral("300,100,200,400"));
}

void TestModifyCells::viewModifiesHeldRows()
{
    // Rows selected by a chart are held beside Qt's selection model; a modify must reach them.
    Sheet s({1, 2, 3, 4}, {1, 2, 3, 4}, {"w", "x", "y", "z"});
    QSortFilterProxyVertexItemModel proxy;
    proxy.setSourceModel(s.model.get());
    QVertexModelTableView view(nullptr, nullptr, false, false, false);
    view.setModel(&proxy);
    boost::dynamic_bitset<> rows(4);
    rows.set(1);
    rows.set(3);
    view.setNewRowSelection(rows);
    view.modifySelectedCells(QStringLiteral("10"), QModifyCellsDialog::MultiplyByValue, -1);
    // The first cell is a number, so the text column of the same rows takes the value as text.
    QCOMPARE(s.dump(), QStringLiteral("1,20,3,40 | 1,20,3,40 | w,10,y,10"));
    QCOMPARE(s.root.sizeUndoActions(), 3);
}

void TestModifyCells::clear_data()
{
    QTest::addColumn<Cells>("cells");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("throughProxy"); // the cells as indexes of a proxy over the model
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("action"); // empty: nothing changed, no record
    // Sheet: A = 1,2,_   B = 10,_,30   Label = a,b,_
    const QString same = QStringLiteral("1,2, | 10,,30 | a,b,");
    QTest::newRow("blanks, one record each") << Cells{{0, 0}, {1, 0}} << QVariant() << false << ",2, | ,,30 | a,b,"
                                             << "Clear Cells";
    QTest::newRow("a blank cell is skipped") << Cells{{0, 2}, {1, 0}} << QVariant() << false << "1,2, | ,,30 | a,b,"
                                             << "Clear Cell: value=10.000, row=1, column=B";
    QTest::newRow("only blank cells: nothing") << Cells{{0, 2}, {2, 2}} << QVariant() << false << same << "";
    QTest::newRow("a value is recorded too") << Cells{{0, 1}} << QVariant(9.0) << false << "1,9, | 10,,30 | a,b,"
                                             << "Clear Cell: value=2.000, row=2, column=A";
    QTest::newRow("a value into a blank cell") << Cells{{1, 1}} << QVariant(9.0) << false << "1,2, | 10,9,30 | a,b,"
                                               << "Clear Cell: value=, row=2, column=B";
    QTest::newRow("proxy indexes are refused") << Cells{{0, 0}, {2, 1}} << QVariant() << true << same << "";
}

void TestModifyCells::clear()
{
    QFETCH(Cells, cells);
    QFETCH(QVariant, value);
    QFETCH(bool, throughProxy);
    QFETCH(QString, expected);
    QFETCH(QString, action);
    Sheet s({1, 2, kBlank}, {10, kBlank, 30}, {"a", "b", ""});
    QSortFilterProxyVertexItemModel proxy;
    proxy.setSourceModel(s.model.get());
    QModelIndexList indexes;
    for (const QPoint& p : cells)
        indexes << (throughProxy ? proxy.index(p.y(), p.x()) : s.model->index(p.y(), p.x()));
    const QString before = s.dump();
    QCOMPARE(s.model->clearData(indexes, value), !action.isEmpty());
    QCOMPARE(s.dump(), expected);
    QCOMPARE(s.root.sizeUndoActions(), action.isEmpty() ? 0 : 1);
    if (action.isEmpty())
        return;
    QCOMPARE(s.root.undoAction(0)->name(), action);
    QVERIFY(undoesBackTo(s, 0, before));
}

void TestModifyCells::dialogMethods_data()
{
    QTest::addColumn<int>("method");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("valueEnabled");
    QTest::newRow("0") << 0 << "Shift by Value" << true;
    QTest::newRow("1") << 1 << "Multiply by Value" << true;
    QTest::newRow("2") << 2 << "Sines" << false;
    QTest::newRow("3") << 3 << "Cosines" << false;
    QTest::newRow("4") << 4 << "Divide by Value" << true;
    QTest::newRow("5") << 5 << "ln" << false;
    QTest::newRow("6") << 6 << "log10" << false;
    QTest::newRow("7") << 7 << "exp" << false;
    QTest::newRow("8") << 8 << "Replace by Value" << true;
    QTest::newRow("9") << 9 << "Clear Cell(s)" << false;
    QTest::newRow("10") << 10 << "Replace Empty Cell(s)" << true;
    QTest::newRow("11") << 11 << "Attribute Interpol. between selected Cells" << false;
    QTest::newRow("12") << 12 << "Replace by Name" << true; // carries 8
    QTest::newRow("-1") << -1 << "" << false;
    QTest::newRow("13") << 13 << "" << false;
}

void TestModifyCells::dialogMethods()
{
    QFETCH(int, method);
    QFETCH(QString, name);
    QFETCH(bool, valueEnabled);
    QCOMPARE(QModifyCellsDialog::methodName(Method(method)), name);
    QModifyCellsDialog dialog(QString(), method != 12, nullptr);
    const bool offered = dialog.setMethod(Method(method));
    QCOMPARE(offered, !name.isEmpty());
    if (offered) {
        QCOMPARE(dialog.findChild<QComboBox*>("m_pqMethodComboBox")->currentText(), name);
        QCOMPARE(dialog.findChild<QComboBox*>("m_pqValueComboBox")->isEnabled(), valueEnabled);
    }
}

void TestModifyCells::dialogForm()
{
    QModifyCellsDialog dialog(QString(), true, nullptr);
    QCOMPARE(int(dialog.windowFlags()), 0xA003003);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Modify Selected Cell(s)"));
    auto* methods = dialog.findChild<QComboBox*>("m_pqMethodComboBox");
    auto* values = dialog.findChild<QComboBox*>("m_pqValueComboBox");
    auto* attributeBox = dialog.findChild<QComboBox*>("m_pqAttributeComboBox");
    auto* attributeCheck = dialog.findChild<QCheckBox*>("m_pqAttributeCheckBox");
    QVERIFY(methods && values && attributeBox && attributeCheck);
    QCOMPARE(methods->count(), 12);
    QCOMPARE(methods->maxVisibleItems(), 12);
    QCOMPARE(methods->itemText(0), QStringLiteral("Multiply by Value"));
    QCOMPARE(methods->itemText(11), QStringLiteral("Clear Cell(s)"));
    QVERIFY(attributeBox->isHidden() && attributeCheck->isHidden());
    QCOMPARE(dialog.getAttribute(), -1);

    // Typed numbers are listed once, six significant digits; text that is no number is not.
    values->setEditText(QStringLiteral("2.50"));
    dialog.updateValueComboBox();
    values->setEditText(QStringLiteral("2.5"));
    dialog.updateValueComboBox();
    values->setEditText(QStringLiteral("abc"));
    dialog.updateValueComboBox();
    QCOMPARE(values->count(), 1);
    QCOMPARE(values->itemText(0), QStringLiteral("2.5"));

    // A text attribute (negative id) turns the form to names and keeps the current method.
    dialog.setMethod(QModifyCellsDialog::ClearCells);
    dialog.updateDataSetSelectionBox({"Depth", "Zone"}, {3, -5}, {Qt::red, Qt::blue}, QStringLiteral("Zone"));
    QVERIFY(attributeCheck->isChecked());
    QCOMPARE(dialog.getAttribute(), 5);
    QVERIFY(!dialog.isNumeric());
    QCOMPARE(methods->count(), 3);
    QCOMPARE(dialog.method(), QModifyCellsDialog::ClearCells);
    QCOMPARE(values->count(), 0);
    attributeBox->setCurrentIndex(0);
    QVERIFY(dialog.isNumeric());
    QCOMPARE(dialog.getAttribute(), 3);
    QCOMPARE(values->itemText(0), QStringLiteral("2.5")); // the numbers come back
    attributeCheck->setChecked(false);
    QCOMPARE(dialog.getAttribute(), -1);
    QVERIFY(!attributeBox->isEnabled());

    QSignalSpy clicked(&dialog, SIGNAL(clicked()));
    dialog.findChild<QPushButton*>("m_pqApplyPushButton")->click();
    dialog.findChild<QPushButton*>("m_pqApplyClosePushButton")->click();
    QCOMPARE(clicked.count(), 2);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(!dialog.applyTo3DView());
}

void TestModifyCells::selectDialogTitle_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("shown");
    QTest::newRow("none: the form's own") << QString() << "Select Value(s)";
    QTest::newRow("given") << "Select Cell(s)" << "Select Cell(s)";
}

void TestModifyCells::selectDialogTitle()
{
    QFETCH(QString, title);
    QFETCH(QString, shown);
    QSelectCellsDialog dialog(title, false, nullptr);
    QCOMPARE(dialog.windowTitle(), shown);
}

QTEST_MAIN(TestModifyCells)
#include "tst_modifycells.moc"
