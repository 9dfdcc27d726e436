// The rows a chart selects travel as a boost::dynamic_bitset<> in dataPointsSelection: a spy
// records them, and a queued connection (by signature, or to a receiver in another thread)
// delivers a copy taken when the signal was sent.
#include "ScatterTestChart.h"

#include <QMutex>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QThread>
#include <QtTest>

using rkBase::QChartDrawingArea;
using RowSet = boost::dynamic_bitset<>;

namespace {

RowSet rowSet(std::size_t size, std::initializer_list<std::size_t> rows)
{
    RowSet bits(size);
    for (std::size_t r : rows)
        bits.set(r);
    return bits;
}

class Receiver : public QObject
{
    Q_OBJECT
public:
    QList<RowSet> received() const
    {
        QMutexLocker lock(&m_mutex);
        return m_received;
    }
public slots:
    void take(const boost::dynamic_bitset<>& rows)
    {
        QMutexLocker lock(&m_mutex);
        m_received << rows;
    }

private:
    mutable QMutex m_mutex;
    QList<RowSet> m_received;
};

} // namespace

class TestRowSetSignal : public QObject
{
    Q_OBJECT
private slots:
    // First: nothing in this test may have made the type known before the chart does.
    void queuedConnectionDelivers_data();
    void queuedConnectionDelivers();
    void spyRecordsTheRows_data();
    void spyRecordsTheRows();
};

void TestRowSetSignal::spyRecordsTheRows_data()
{
    QTest::addColumn<RowSet>("rows");
    QTest::newRow("nothing selected") << RowSet();
    QTest::newRow("a few rows") << rowSet(10, {0, 3, 9});
    // Past one block of bits, with the last row set.
    QTest::newRow("a long sheet") << rowSet(1000, {1, 63, 64, 65, 500, 999});
}

void TestRowSetSignal::spyRecordsTheRows()
{
    QFETCH(RowSet, rows);
    ScatterTestChart chart;
    QSignalSpy byPointer(&chart, &QChartDrawingArea::dataPointsSelection);
    QSignalSpy bySignature(&chart, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)));
    QVERIFY(byPointer.isValid());
    QVERIFY(bySignature.isValid());
    emit chart.dataPointsSelection(rows);
    QCOMPARE(byPointer.count(), 1);
    QCOMPARE(bySignature.count(), 1);
    const RowSet recorded = byPointer.at(0).at(0).value<RowSet>();
    QCOMPARE(recorded.size(), rows.size());
    QVERIFY(recorded == rows);
    QVERIFY(bySignature.at(0).at(0).value<RowSet>() == rows);
}

void TestRowSetSignal::queuedConnectionDelivers_data()
{
    QTest::addColumn<bool>("otherThread");
    QTest::newRow("queued by signature") << false;
    QTest::newRow("receiver in another thread") << true;
}

void TestRowSetSignal::queuedConnectionDelivers()
{
    QFETCH(bool, otherThread);
    ScatterTestChart chart;
    Receiver receiver;
    QThread thread;
    const auto stop = qScopeGuard([&] {
        thread.quit();
        thread.wait();
    });
    if (otherThread) {
        receiver.moveToThread(&thread);
        thread.start();
        QVERIFY(connect(&chart, &QChartDrawingArea::dataPointsSelection, &receiver, &Receiver::take));
    } else {
        QVERIFY(connect(&chart, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)), &receiver,
                        SLOT(take(boost::dynamic_bitset<>)), Qt::QueuedConnection));
    }
    RowSet rows = rowSet(200, {2, 150, 199});
    emit chart.dataPointsSelection(rows);
    // The receiver gets the rows as they were sent, not as the sender left them afterwards.
    const RowSet sent = rows;
    rows.reset();
    if (!otherThread)
        QVERIFY(receiver.received().isEmpty()); // queued: nothing before the event loop runs
    QTRY_COMPARE(receiver.received().size(), 1);
    QVERIFY(receiver.received().first() == sent);
}

QTEST_MAIN(TestRowSetSignal)
#include "tst_rowsetsignal.moc"
