// The sheet's view as the store of the row selection: rows in, rows out, through sorting.
#include <MatrixData.h>
#include <QCheckBoxHeader.h>
#include <QSortFilterProxyVertexItemModel.h>
#include <QVertexItemModel.h>
#include <QVertexModelTableView.h>

#include <QtTest>

#include <memory>

using namespace rkBase;

class TestVertexModelTableView : public QObject
{
    Q_OBJECT
private slots:
    void rowSelection_data();
    void rowSelection();
    void selectionSurvivesSorting();
    void inverse();
    void cellSelectionAndScrolling();
    void heldRowsOfABigSheet();
    void userEditsOfHeldRows();
    void selectCells_data();
    void selectCells();
    void selectColumnCells_data();
    void selectColumnCells();
    void fillHandle_data();
    void fillHandle();
    void deleteKeyBlanksSelection();
    void checkBoxHeader();
};

namespace {
struct Sheet {
    MatrixData root{QStringLiteral("root"), -1, -1, QVariant::String, true};
    std::unique_ptr<QVertexItemModel> model;
    QSortFilterProxyVertexItemModel proxy;
    QVertexModelTableView view{nullptr, nullptr, false, false, false};
    explicit Sheet(int rows = 10, int columns = 3)
    {
        auto* g = new MatrixData(QStringLiteral("g"), -1, -1, QVariant::String, true);
        root.appendChild(g, true);
        for (int c = 0; c < columns; ++c) {
            auto* col = new MatrixData(QStringLiteral("c%1").arg(c), rows, 1, QVariant::Double, true);
            for (int r = 0; r < rows; ++r)
                col->setValue(r, 0, double((r * 7 + c) % 10)); // a shuffled order to sort by
            g->appendChild(col, false);
        }
        model = std::make_unique<QVertexItemModel>(nullptr, &root, -1, false, nullptr);
        proxy.setSourceModel(model.get());
        view.setModel(&proxy);
    }
};

boost::dynamic_bitset<> bits(std::size_t size, std::initializer_list<int> rows)
{
    boost::dynamic_bitset<> b(size);
    for (int r : rows)
        b.set(static_cast<std::size_t>(r));
    return b;
}
} // namespace

void TestVertexModelTableView::rowSelection_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<int>("ranges");
    QTest::newRow("runs merge into ranges") << 10 << QList<int>{1, 2, 3, 7, 8} << 2;
    QTest::newRow("single rows") << 10 << QList<int>{0, 5, 9} << 3;
    QTest::newRow("bits past the sheet are ignored") << 1000 << QList<int>{4, 5, 999} << 1;
    QTest::newRow("nothing") << 0 << QList<int>{} << 0;
}

void TestVertexModelTableView::rowSelection()
{
    QFETCH(int, size);
    QFETCH(QList<int>, rows);
    QFETCH(int, ranges);
    Sheet s;
    boost::dynamic_bitset<> b(static_cast<std::size_t>(size));
    for (int r : rows)
        b.set(static_cast<std::size_t>(r));
    s.view.setNewRowSelection(b);
    QCOMPARE(s.view.selectionModel()->selection().size(), ranges);
    std::vector<int> expected;
    for (int r : rows)
        if (r < 10)
            expected.push_back(r);
    QCOMPARE(s.view.selectedRows(0), expected);
}

void TestVertexModelTableView::selectionSurvivesSorting()
{
    Sheet s;
    s.proxy.sort(0);
    s.view.setNewRowSelection(bits(10, {2, 3}));
    QCOMPARE(s.view.selectedRows(0), (std::vector<int>{2, 3})); // the same records, at other view rows
    s.proxy.sort(1, Qt::DescendingOrder);
    QCOMPARE(s.view.selectedRows(0), (std::vector<int>{2, 3}));
    QCOMPARE(s.view.validCellRows().size(), std::size_t(10));
}

void TestVertexModelTableView::inverse()
{
    Sheet s;
    QSignalSpy spy(&s.view, SIGNAL(verteciesSelected(std::vector<int>)));
    s.view.setNewRowSelection(bits(10, {0, 1, 2, 3, 4, 5, 6}));
    s.view.selectInverse();
    QCOMPARE(s.view.selectedRows(0), (std::vector<int>{7, 8, 9}));
    QCOMPARE(spy.count(), 1);
    s.view.aboutToClose(true); // while closing, chart selections are ignored
    s.view.setNewRowSelection(bits(10, {1}));
    QVERIFY(s.view.selectedRows(0).empty());
}

void TestVertexModelTableView::cellSelectionAndScrolling()
{
    Sheet s;
    s.view.setCellSelection({s.proxy.index(3, 1), s.proxy.index(1, 1), s.proxy.index(2, 1), s.proxy.index(5, 0)});
    QCOMPARE(s.view.selectionModel()->selection().size(), 2); // rows 1-3 of column 1 are one range
    QVERIFY(s.view.selectedRows(0).empty());                   // no whole row
    const QModelIndexList sorted = s.view.sortedSelectedIndexes();
    QCOMPARE(sorted.size(), 4);
    QCOMPARE(sorted.first(), s.proxy.index(5, 0));
    QCOMPARE(s.view.scrollToNextSelectedItem(false), QStringLiteral("6, 1")); // currentItem -1 -> 0
    s.view.scrollToNextSelectedItem(false);
    s.view.scrollToNextSelectedItem(false);
    QCOMPARE(s.view.scrollToNextSelectedItem(false), QStringLiteral("4, 2"));
    QCOMPARE(s.view.scrollToNextSelectedItem(false), QStringLiteral("6, 1")); // wraps to the first
    const std::size_t inColumn = s.view.selectedRowsInColumn().size();
    QVERIFY(inColumn == 1 || inColumn == 3); // the column of whichever cell the selection lists first
}

void TestVertexModelTableView::heldRowsOfABigSheet()
{
    Sheet s(20000, 2);
    s.view.resize(400, 300);
    boost::dynamic_bitset<> every(20000);
    std::vector<int> expected;
    for (int r = 0; r < 20000; r += 2) {
        every.set(static_cast<std::size_t>(r));
        expected.push_back(r);
    }
    s.view.setNewRowSelection(every);
    QCOMPARE(s.view.selectedRows(0), expected);
    // Qt's selection model only holds what is near the viewport: it would otherwise scan ten
    // thousand ranges for every painted cell.
    QVERIFY(s.view.selectionModel()->selection().size() < 500);
    QVERIFY(s.view.hasSelectedCells());
    QCOMPARE(s.view.allSelectedIndexes().size(), 20000);
    // Far down the sheet the rows are selected for Qt too once they come into view.
    s.view.scrollTo(s.proxy.index(19000, 0));
    QVERIFY(s.view.selectionModel()->isRowSelected(19000, QModelIndex()));
    QVERIFY(!s.view.selectionModel()->isRowSelected(19001, QModelIndex()));
    QVERIFY(!s.view.selectionModel()->isRowSelected(2, QModelIndex()));
    // A sort keeps the records, and what is in view follows them.
    s.proxy.sort(0);
    QCOMPARE(s.view.selectedRows(0), expected);
    const int top = s.view.rowAt(0) < 0 ? 0 : s.view.rowAt(0);
    const int source = s.proxy.mapToSource(s.proxy.index(top, 0)).row();
    QCOMPARE(s.view.selectionModel()->isRowSelected(top, QModelIndex()), source % 2 == 0);
    s.view.selectInverse();
    QCOMPARE(s.view.selectedRows(0).size(), std::size_t(10000));
    QCOMPARE(s.view.selectedRows(0).front(), 1);
    // Rows a filter hides lose their selection, as Qt's own ranges do.
    QList<bool> mask;
    for (int r = 0; r < 20000; ++r)
        mask << (r >= 100);
    s.proxy.setFilterRows(mask);
    QCOMPARE(s.view.selectedRows(0).size(), std::size_t(10000 - 50));
    QCOMPARE(s.view.selectedRows(0).front(), 101);
    s.proxy.clearFilterRows();
    QCOMPARE(s.view.selectedRows(0).size(), std::size_t(10000 - 50));
    s.view.clearSelection();
    QVERIFY(s.view.selectedRows(0).empty());
    QVERIFY(!s.view.hasSelectedCells());
}

void TestVertexModelTableView::userEditsOfHeldRows()
{
    Sheet s(1000, 3);
    s.view.resize(400, 300);
    s.view.setNewRowSelection(bits(1000, {1, 2, 900}));
    // Ctrl-clicking one cell of a selected row leaves the rest of that row as plain cells.
    s.view.selectionModel()->select(s.proxy.index(1, 2), QItemSelectionModel::Deselect);
    QCOMPARE(s.view.selectedRows(0), (std::vector<int>{2, 900}));
    QCOMPARE(s.view.allSelectedIndexes().size(), 2 + 3 + 3);
    QVERIFY(s.view.deSelectRow(900));
    QCOMPARE(s.view.selectedRows(0), (std::vector<int>{2}));
    // A new row selected by hand joins the held ones; a plain click clears all.
    s.view.selectionModel()->select(QItemSelection(s.proxy.index(5, 0), s.proxy.index(5, 2)), QItemSelectionModel::Select);
    QCOMPARE(s.view.selectedRows(0), (std::vector<int>{2, 5}));
    s.view.selectionModel()->select(s.proxy.index(7, 0), QItemSelectionModel::ClearAndSelect);
    QVERIFY(s.view.selectedRows(0).empty());
    // A model reset forgets the selection, as Qt's own selection does.
    s.view.setNewRowSelection(bits(1000, {3}));
    s.model->updateModel(-1, {});
    QVERIFY(s.view.selectedRows(0).empty());
}

void TestVertexModelTableView::selectCells_data()
{
    // Column c holds (7 r + c) mod 10, so each value stands once in each column.
    QTest::addColumn<int>("method");
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<bool>("rows");
    QTest::addColumn<bool>("show");
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<int>>("selectedRows");
    QTest::addColumn<int>("shownRows");
    QTest::newRow("equal, cells") << int(QSelectCellsDialog::EqualThan) << 4.0 << 0.0 << false << false << 3
                                  << QList<int>{} << 10;
    QTest::newRow("equal, rows") << int(QSelectCellsDialog::EqualThan) << 4.0 << 0.0 << true << false << 3
                                 << QList<int>{2, 6, 9} << 10;
    QTest::newRow("between excludes the ends") << int(QSelectCellsDialog::Between) << 2.0 << 5.0 << false << false << 6
                                               << QList<int>{} << 10;
    // Rows 6 (2, 3, 4) and 9 (3, 4, 5) lie wholly inside: found cell by cell, they are whole rows.
    QTest::newRow("between or equal") << int(QSelectCellsDialog::BetweenEqual) << 2.0 << 5.0 << false << false << 12
                                      << QList<int>{6, 9} << 10;
    QTest::newRow("greater or equal, rows") << int(QSelectCellsDialog::GreaterEqualThan) << 9.0 << 0.0 << true << false
                                            << 3 << QList<int>{1, 4, 7} << 10;
    QTest::newRow("less than, nothing") << int(QSelectCellsDialog::LessThan) << 0.0 << 0.0 << false << false << 0
                                        << QList<int>{} << 10;
    QTest::newRow("shown through the row mask: count 0") << int(QSelectCellsDialog::EqualThan) << 4.0 << 0.0 << false
                                                         << true << 0 << QList<int>{} << 3;
    QTest::newRow("rows shown through the mask") << int(QSelectCellsDialog::LessEqualThan) << 0.0 << 0.0 << true << true
                                                 << 0 << QList<int>{} << 3;
}

void TestVertexModelTableView::selectCells()
{
    QFETCH(int, method);
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(bool, rows);
    QFETCH(bool, show);
    QFETCH(int, count);
    QFETCH(QList<int>, selectedRows);
    QFETCH(int, shownRows);
    Sheet s;
    s.view.setNewRowSelection(bits(10, {0}));
    QCOMPARE(s.view.selectCells(a, b, static_cast<QSelectCellsDialog::SelectMethod>(method), rows, false, show), count);
    QCOMPARE(s.view.rowSelectionMode(), rows);
    QCOMPARE(s.view.selectedRows(0), std::vector<int>(selectedRows.begin(), selectedRows.end()));
    if (!rows && !show)
        QCOMPARE(s.view.allSelectedIndexes().size(), count);
    QCOMPARE(s.proxy.rowCount(), shownRows);
    s.view.slotClearFilterSelectedRows();
    QCOMPARE(s.proxy.rowCount(), 10);
}

void TestVertexModelTableView::selectColumnCells_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<bool>("keep");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("cells");
    QTest::newRow("one column") << 1 << 1 << false << 1 << 10;
    QTest::newRow("clamped to the sheet") << -4 << 99 << false << 3 << 30;
    QTest::newRow("within the earlier selection") << 1 << 2 << true << 2 << 4;
}

void TestVertexModelTableView::selectColumnCells()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(bool, keep);
    QFETCH(int, count);
    QFETCH(int, cells);
    Sheet s;
    s.view.setNewRowSelection(bits(10, {4, 5}));
    QCOMPARE(s.view.selectColumnCells(from, to, keep, false), count);
    QCOMPARE(s.view.allSelectedIndexes().size(), cells);
}

void TestVertexModelTableView::fillHandle_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("computed");
    QTest::addColumn<bool>("editable");
    QTest::addColumn<bool>("ticks");
    QTest::addColumn<bool>("allowed");
    QTest::newRow("plain column") << "depth" << false << true << false << true;
    QTest::newRow("Type column") << "Type" << false << true << false << false;
    QTest::newRow("computed column") << "depth" << true << true << false << false;
    QTest::newRow("locked column") << "depth" << false << false << false << false;
    QTest::newRow("column with ticks") << "depth" << false << true << true << false;
}

void TestVertexModelTableView::fillHandle()
{
    QFETCH(QString, name);
    QFETCH(bool, computed);
    QFETCH(bool, editable);
    QFETCH(bool, ticks);
    QFETCH(bool, allowed);
    Sheet s;
    MatrixData* node = s.model->getNode(1);
    node->setName(name);
    node->setNodeComputed(computed);
    node->setNodeEditable(editable);
    if (ticks)
        node->setCheckStateActive(true);
    s.view.resize(400, 300);
    s.view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&s.view));
    const QModelIndex top = s.proxy.index(2, 1);
    s.view.setCurrentIndex(top);
    s.view.selectionModel()->select(QItemSelection(top, s.proxy.index(4, 1)), QItemSelectionModel::ClearAndSelect);
    QCOMPARE(s.view.fillAllowed(), allowed);
    const QRect cell = s.view.visualRect(top);
    QCOMPARE(s.view.isCursorOnDragPoint(top, cell.bottomRight() - QPoint(2, 2)), allowed);
    QVERIFY(!s.view.isCursorOnDragPoint(top, cell.center()));
    // A block of two rows and two columns has no fill handle at all.
    s.view.selectionModel()->select(QItemSelection(top, s.proxy.index(3, 2)), QItemSelectionModel::ClearAndSelect);
    QVERIFY(!s.view.fillAllowed());
}

void TestVertexModelTableView::deleteKeyBlanksSelection()
{
    Sheet s;
    s.model->enableUndoRedo(true);
    s.view.resize(400, 300);
    s.view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&s.view));
    s.view.selectionModel()->select(QItemSelection(s.proxy.index(0, 0), s.proxy.index(1, 1)), QItemSelectionModel::Select);
    QTest::keyClick(&s.view, Qt::Key_Delete);
    MatrixData* c0 = s.model->getNode(0);
    QVERIFY(!c0->isValueValid(0, 0));
    QVERIFY(!c0->isValueValid(1, 0));
    QVERIFY(c0->isValueValid(2, 0));
    QCOMPARE(s.root.sizeUndoActions(), 1); // four cells, one action
    QVERIFY(s.root.undoLastAction());
    QVERIFY(c0->isValueValid(0, 0));
    s.view.setIgnoreDelKey(true);
    QTest::keyClick(&s.view, Qt::Key_Delete);
    QVERIFY(c0->isValueValid(0, 0));
    // Return adds a record only where the host lets rows grow.
    QTest::keyClick(&s.view, Qt::Key_Return);
    QCOMPARE(s.view.rowCount(), 10);
    s.model->setRowsCanBeExtended(true);
    QTest::keyClick(&s.view, Qt::Key_Return);
    QCOMPARE(s.view.rowCount(), 11);
    // Ctrl+A selects every row and tells the host at once.
    QSignalSpy spy(&s.view, SIGNAL(verteciesSelected(std::vector<int>)));
    QTest::keyClick(&s.view, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().value<std::vector<int>>().size(), std::size_t(11));
}

void TestVertexModelTableView::checkBoxHeader()
{
    QVertexModelTableView view(nullptr, nullptr, false, true, false);
    auto* header = qobject_cast<QCheckBoxHeader*>(view.horizontalHeader());
    QVERIFY(header);
    Sheet s;
    view.setModel(&s.proxy);
    view.resize(400, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QSignalSpy spy(&view, SIGNAL(headerCheckBoxClicked()));
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(10, header->height() / 2));
    QCOMPARE(spy.count(), 1);
    QVERIFY(header->isChecked());
    QCOMPARE(header->checkState(), Qt::Checked);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(header->sectionPosition(1) + 10, header->height() / 2));
    QCOMPARE(spy.count(), 1); // only the first section carries the box
    header->setCheckState(Qt::PartiallyChecked);
    QVERIFY(!header->isChecked());
}

QTEST_MAIN(TestVertexModelTableView)
#include "tst_qvertexmodeltableview.moc"
