// The sheet's proxy: numeric and text sorting with blanks last, the valid-cells filter and the
// row mask.
#include <MatrixData.h>
#include <QSortFilterProxyVertexItemModel.h>
#include <QVertexItemModel.h>

#include <QtTest>

#include <cmath>
#include <memory>

using namespace rkBase;

class TestProxy : public QObject
{
    Q_OBJECT
private slots:
    void sorting_data();
    void sorting();
    void keysFollowEdits();
    void filters();
};

namespace {
struct Sheet {
    MatrixData root{QStringLiteral("root"), -1, -1, QVariant::String, true};
    std::unique_ptr<QVertexItemModel> model;
    QSortFilterProxyVertexItemModel proxy;
    Sheet()
    {
        auto* g = new MatrixData(QStringLiteral("g"), -1, -1, QVariant::String, true);
        root.appendChild(g, true);
        auto* num = new MatrixData(QStringLiteral("num"), 6, 1, QVariant::Double, true);
        auto* text = new MatrixData(QStringLiteral("text"), 6, 1, QVariant::String, true);
        auto* flag = new MatrixData(QStringLiteral("flag"), 6, 1, QVariant::Bool, true);
        g->appendChild(num, false);
        g->appendChild(text, false);
        g->appendChild(flag, false);
        const QVariantList numbers{3.0, QVariant(), -1.0, std::nan(""), 10.0, 3.0};
        const QStringList words{"b", "a10", "", "a9", "C", "a"};
        for (int r = 0; r < 6; ++r) {
            num->setValue(r, 0, numbers[r]);
            if (!words[r].isEmpty())
                text->setValue(r, 0, words[r]);
            flag->setValue(r, 0, r % 2 == 0);
        }
        model = std::make_unique<QVertexItemModel>(nullptr, &root, -1, false, nullptr);
        proxy.setSourceModel(model.get());
    }
    QList<int> order() const
    {
        QList<int> rows;
        for (int r = 0; r < proxy.rowCount(); ++r)
            rows << proxy.mapToSource(proxy.index(r, 0)).row();
        return rows;
    }
};
} // namespace

void TestProxy::sorting_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("descending");
    QTest::addColumn<QList<int>>("order");
    QTest::newRow("numbers up, blanks and NaN last") << 0 << false << QList<int>{2, 0, 5, 4, 1, 3};
    QTest::newRow("numbers down, blanks and NaN last") << 0 << true << QList<int>{4, 0, 5, 2, 1, 3};
    QTest::newRow("text up, natural order") << 1 << false << QList<int>{5, 3, 1, 0, 4, 2};
    QTest::newRow("text down") << 1 << true << QList<int>{4, 0, 1, 3, 5, 2};
}

void TestProxy::sorting()
{
    QFETCH(int, column);
    QFETCH(bool, descending);
    QFETCH(QList<int>, order);
    Sheet s;
    s.proxy.sort(column, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    QCOMPARE(s.order(), order);
}

void TestProxy::keysFollowEdits()
{
    Sheet s;
    s.proxy.setDynamicSortFilter(true);
    s.proxy.sort(0);
    QVERIFY(s.model->setData(s.model->index(4, 0), QStringLiteral("-5")));
    QCOMPARE(s.order().first(), 4); // the edited row moves to the top
}

void TestProxy::filters()
{
    Sheet s;
    s.proxy.setFilterKeyColumn(0);
    s.proxy.setFilterEmptyCells(true);
    QCOMPARE(s.proxy.rowCount(), 5); // NaN is a value; only the blank goes
    s.proxy.setFilterKeyColumn(2);
    s.proxy.invalidate();
    QCOMPARE(s.proxy.rowCount(), 3); // Bool: only the ticked rows
    s.proxy.setFilterEmptyCells(false);
    s.proxy.setFilterRows({true, false, true, false, false, true});
    QCOMPARE(s.order(), (QList<int>{0, 2, 5}));
    s.proxy.setFilterRows({true}); // shorter than the sheet: the rest are hidden
    QCOMPARE(s.proxy.rowCount(), 1);
    s.proxy.clearFilterRows();
    QCOMPARE(s.proxy.rowCount(), 6);
}

QTEST_MAIN(TestProxy)
#include "tst_proxy.moc"
