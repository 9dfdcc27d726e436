// The typed cell store against a plain list of QVariant: random writes, blanks, bulk row
// insertion and removal, growth and type changes must leave both holding the same cells.
#include <CellColumn.h>

#include <QtTest>

#include <QRandomGenerator>

#include <algorithm>
#include <set>

using rkBase::CellColumn;

class TestCellColumn : public QObject
{
    Q_OBJECT
private slots:
    void matchesAReferenceList_data();
    void matchesAReferenceList();
    void typeChangeKeepsWhatConverts();
    void memoryPerCell_data();
    void memoryPerCell();
    void fillIsSetOnEveryRow_data();
    void fillIsSetOnEveryRow();
};

namespace {
QVariant sample(QVariant::Type type, QRandomGenerator& rng)
{
    switch (type) {
    case QVariant::Double: return rng.bounded(1000) / 8.0 - 60.0;
    case QVariant::Int: return int(rng.bounded(2000)) - 1000;
    case QVariant::Bool: return rng.bounded(2) == 1;
    case QVariant::Color: return QColor(rng.bounded(256), rng.bounded(256), rng.bounded(256));
    case QVariant::PointF: return QPointF(rng.bounded(100), rng.bounded(100) - 50.0);
    default: return QStringLiteral("s%1").arg(rng.bounded(1000));
    }
}
} // namespace

void TestCellColumn::matchesAReferenceList_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<quint32>("seed");
    for (QVariant::Type t : {QVariant::Double, QVariant::Int, QVariant::Bool, QVariant::Color, QVariant::PointF,
                             QVariant::String, QVariant::KeySequence})
        for (quint32 seed : {1u, 2u, 3u})
            QTest::addRow("%s %u", QVariant::typeToName(t), seed) << int(t) << seed;
}

void TestCellColumn::matchesAReferenceList()
{
    QFETCH(int, type);
    QFETCH(quint32, seed);
    const auto t = static_cast<QVariant::Type>(type);
    QRandomGenerator rng(seed);
    CellColumn column(t, 20);
    QVector<QVariant> reference(20);
    for (int step = 0; step < 400; ++step) {
        const int n = reference.size();
        switch (rng.bounded(6)) {
        case 0:
        case 1: { // write or blank a cell
            if (n == 0)
                break;
            const int row = rng.bounded(n);
            const QVariant v = rng.bounded(5) == 0 ? QVariant() : sample(t, rng);
            QVERIFY(column.set(row, v));
            reference[row] = v.isValid() ? column.get(row) : QVariant(); // the stored form
            QCOMPARE(column.isValid(row), v.isValid());
            break;
        }
        case 2: { // remove scattered rows in one pass
            std::set<int> rows;
            for (int i = 0, k = rng.bounded(4); i < k && n > 0; ++i)
                rows.insert(rng.bounded(n));
            column.eraseRows(std::vector<int>(rows.begin(), rows.end()));
            for (auto it = rows.rbegin(); it != rows.rend(); ++it)
                reference.remove(*it);
            break;
        }
        case 3: { // insert blank rows that land at given places
            std::set<int> places;
            const int k = 1 + rng.bounded(3);
            while (static_cast<int>(places.size()) < k)
                places.insert(rng.bounded(n + k));
            column.insertBlankRows(std::vector<int>(places.begin(), places.end()));
            for (int p : places)
                reference.insert(p, QVariant());
            break;
        }
        case 4: { // single insert and erase
            const int at = rng.bounded(n + 1);
            column.insertBlank(at, 2);
            reference.insert(at, 2, QVariant());
            if (reference.size() > 3) {
                const int e = rng.bounded(reference.size() - 1);
                column.erase(e, 2);
                reference.remove(e, 2);
            }
            break;
        }
        case 5: { // grow or shrink
            const int size = std::max(0, n + int(rng.bounded(9)) - 4);
            column.resize(size);
            reference.resize(size);
            break;
        }
        }
        QCOMPARE(column.size(), reference.size());
    }
    for (int r = 0; r < reference.size(); ++r)
        QCOMPARE(column.get(r), reference[r]);
    int last = 0;
    for (int r = 0; r < reference.size(); ++r)
        if (reference[r].isValid())
            last = r + 1;
    QCOMPARE(column.lastValidRowPlusOne(), last);
    QVERIFY(!column.get(-1).isValid());
    QVERIFY(!column.get(reference.size()).isValid());
    QVERIFY(!column.set(reference.size(), sample(t, rng)));
}

void TestCellColumn::typeChangeKeepsWhatConverts()
{
    CellColumn column(QVariant::String, 4);
    column.set(0, QStringLiteral("12.5"));
    column.set(1, QStringLiteral("granite"));
    column.set(3, QStringLiteral("-3"));
    column.setType(QVariant::Double);
    QCOMPARE(column.get(0), QVariant(12.5));
    QVERIFY(!column.isValid(1)); // text that is no number becomes blank
    QVERIFY(!column.isValid(2));
    QCOMPARE(column.get(3), QVariant(-3.0));
    column.setType(QVariant::Int);
    QCOMPARE(column.get(0), QVariant(13)); // rounded, as typed integers are
    QCOMPARE(column.toDouble(3), -3.0);
}

void TestCellColumn::memoryPerCell_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("bytes");
    QTest::newRow("double") << int(QVariant::Double) << 9;
    QTest::newRow("int") << int(QVariant::Int) << 5;
    QTest::newRow("colour") << int(QVariant::Color) << 5;
}

void TestCellColumn::memoryPerCell()
{
    QFETCH(int, type);
    QFETCH(int, bytes);
    CellColumn column(static_cast<QVariant::Type>(type), 100000);
    QCOMPARE(column.memoryBytes(), std::size_t(bytes) * 100000);
}

// fill(v) must leave every row as set(row, v) does, including a value the column refuses (the
// rows keep what they held) and one that blanks.
void TestCellColumn::fillIsSetOnEveryRow_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    for (int type : {int(QVariant::Double), int(QVariant::Int), int(QVariant::Bool), int(QVariant::Color),
                     int(QVariant::PointF), int(QVariant::String)}) {
        const QByteArray name = QVariant::typeToName(type);
        QTest::newRow((name + " <- 0.0").constData()) << type << QVariant(0.0);
        QTest::newRow((name + " <- text").constData()) << type << QVariant(QStringLiteral("7"));
        QTest::newRow((name + " <- invalid").constData()) << type << QVariant();
        QTest::newRow((name + " <- point").constData()) << type << QVariant(QPointF(1.5, 2.0));
    }
}

void TestCellColumn::fillIsSetOnEveryRow()
{
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QRandomGenerator rng(5);
    CellColumn filled(static_cast<QVariant::Type>(type), 40);
    for (int r = 0; r < 40; r += 3)
        filled.set(r, sample(static_cast<QVariant::Type>(type), rng));
    CellColumn bySet = filled;
    filled.fill(value);
    for (int r = 0; r < bySet.size(); ++r)
        bySet.set(r, value);
    for (int r = 0; r < bySet.size(); ++r) {
        QCOMPARE(filled.isValid(r), bySet.isValid(r));
        QCOMPARE(filled.get(r), bySet.get(r));
    }
}

QTEST_GUILESS_MAIN(TestCellColumn)
#include "tst_cellcolumn.moc"
