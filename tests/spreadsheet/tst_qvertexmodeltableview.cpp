// The sheet's view as the store of the row selection: rows in, rows out, through sorting.
#include <MatrixData.h>
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
};

namespace {
struct Sheet {
    MatrixData root{QStringLiteral("root"), -1, -1, QVariant::String, true};
    std::unique_ptr<QVertexItemModel> model;
    QSortFilterProxyVertexItemModel proxy;
    QVertexModelTableView view{nullptr, nullptr, false, false, false};
    Sheet()
    {
        auto* g = new MatrixData(QStringLiteral("g"), -1, -1, QVariant::String, true);
        root.appendChild(g, true);
        for (int c = 0; c < 3; ++c) {
            auto* col = new MatrixData(QStringLiteral("c%1").arg(c), 10, 1, QVariant::Double, true);
            for (int r = 0; r < 10; ++r)
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

QTEST_MAIN(TestVertexModelTableView)
#include "tst_qvertexmodeltableview.moc"
