// Binary node streams, the HTML clipboard table and CSV export, including hostile input.
#include <MatrixData.h>
#include <TreeBytes.h>

#include <QtTest>

#include <QMimeData>
#include <QTemporaryDir>

#include <cmath>

using namespace rkBase;

namespace {
// A sheet with every cell type, blanks, non-finite numbers, a lookup table and odd text.
std::unique_ptr<MatrixData> sampleTree()
{
    auto root = std::make_unique<MatrixData>(QStringLiteral("root"), -1, -1, QVariant::String, true);
    auto* well = new MatrixData(QStringLiteral("Well \"7\", north"), -1, -1, QVariant::String, true);
    root->appendChild(well, true);
    auto add = [well](const QString& name, QVariant::Type type, const QVariantList& values) {
        auto* c = new MatrixData(name, values.size(), 1, type, true);
        for (int r = 0; r < values.size(); ++r)
            c->setValue(r, 0, values[r]);
        c->setColor(QColor(10, 20, 30));
        well->appendChild(c, false);
        return c;
    };
    add(QStringLiteral("depth"), QVariant::Double, {1.5, QVariant(), std::nan(""), -1e300});
    add(QStringLiteral("count"), QVariant::Int, {1, 2, QVariant(), -4});
    add(QStringLiteral("flag"), QVariant::Bool, {true, false, QVariant(), true});
    add(QStringLiteral("Name"), QVariant::String, {"a,b", "say \"hi\"", "line\nbreak", QString::fromUtf8("Øresund")});
    add(QStringLiteral("colour"), QVariant::Color, {QColor(Qt::red), QVariant(), QColor(1, 2, 3), QColor(Qt::blue)});
    add(QStringLiteral("xy"), QVariant::PointF, {QPointF(1, 2), QVariant(), QPointF(-3, 4), QPointF()});
    MatrixData* lith = add(QStringLiteral("lith"), QVariant::KeySequence, {1, QStringLiteral("free text"), QVariant(), 2});
    lith->addLookupValue(1, QStringLiteral("Sand"));
    lith->addLookupValue(2, QColor(Qt::green));
    lith->setCheckStateActive(true);
    lith->setValue(0, 1, true);
    lith->setSelected(false, false);
    lith->setVertex(true);
    return root;
}
} // namespace

class TestStream : public QObject
{
    Q_OBJECT
private slots:
    void roundTrip();
    void singleRow();
    void badStreamsLeaveTheNodeAlone_data();
    void badStreamsLeaveTheNodeAlone();
    void everyTruncationFails();
    void kindMismatchIsRefused();
    void html();
    void csv_data();
    void csv();
    void csvToUnwritablePlace();
};

void TestStream::roundTrip()
{
    auto tree = sampleTree();
    const QByteArray bytes = treeBytes(*tree);
    MatrixData copy(QStringLiteral("other"), -1, -1, QVariant::String, true);
    copy.appendChild(new MatrixData(QStringLiteral("old"), 1, 1, QVariant::Double, true), true);
    QDataStream in(bytes);
    QVERIFY(copy.getDataFromStream(in));
    QCOMPARE(treeBytes(copy), bytes);
    QVERIFY(!copy.getNodeFromName(QStringLiteral("old")));
    MatrixData* lith = copy.getNodeFromName(QStringLiteral("lith"));
    QVERIFY(lith && !lith->isSelected() && lith->isVertex() && lith->checkStateActive());
    QCOMPARE(lith->rawValue(0), QVariant(QStringLiteral("Sand")));
    QCOMPARE(lith->value(0, 1), QVariant(true));
    QVERIFY(std::isnan(copy.getNodeFromName(QStringLiteral("depth"))->toDouble(2, 0)));
    QCOMPARE(lith->parent()->parent(), &copy);
}

void TestStream::singleRow()
{
    auto tree = sampleTree();
    MatrixData* name = tree->getNodeFromName(QStringLiteral("Name"));
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    name->putDataOnStream(2, out, false);
    MatrixData target(QStringLiteral("t"), 5, 1, QVariant::Double, true);
    QDataStream in(bytes);
    QVERIFY(target.getDataFromStream(in));
    QCOMPARE(target.rowCount(), 1);
    QCOMPARE(target.value(0, 0).toString(), QStringLiteral("line\nbreak"));
    QCOMPARE(target.cellType(), QVariant::String);
}

void TestStream::badStreamsLeaveTheNodeAlone_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = treeBytes(*sampleTree());
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("magic only") << good.left(4);
    QTest::newRow("garbage") << QByteArray("this is not a data tree at all, just some text", 46);
    QByteArray flipped = good;
    flipped[flipped.size() / 2] = char(flipped[flipped.size() / 2] ^ 0x40);
    QTest::newRow("flipped payload byte") << flipped;
    QByteArray version = good;
    version[5] = char(9);
    QTest::newRow("unknown version") << version;
    QByteArray huge;
    {
        // A payload whose header claims four gigabytes.
        QDataStream s(&huge, QIODevice::WriteOnly);
        s << quint32(0x524B4D44) << quint16(1) << quint8(0) << quint32(0xFFFFFFF0);
    }
    QTest::newRow("oversized payload") << huge;
}

void TestStream::badStreamsLeaveTheNodeAlone()
{
    QFETCH(QByteArray, bytes);
    auto tree = sampleTree();
    MatrixData* well = tree->child(0);
    const QByteArray before = treeBytes(*tree);
    QDataStream in(bytes);
    QVERIFY(!well->getDataFromStream(in));
    QCOMPARE(treeBytes(*tree), before);
}

void TestStream::everyTruncationFails()
{
    auto tree = sampleTree();
    const QByteArray good = treeBytes(*tree->child(0));
    MatrixData target(QStringLiteral("target"), -1, -1, QVariant::String, true);
    const QByteArray before = treeBytes(target);
    for (int n = 0; n < good.size(); ++n) {
        QDataStream in(good.left(n));
        QVERIFY2(!target.getDataFromStream(in), qPrintable(QString::number(n)));
    }
    QCOMPARE(treeBytes(target), before);
    QDataStream in(good);
    QVERIFY(target.getDataFromStream(in));
}

void TestStream::kindMismatchIsRefused()
{
    auto tree = sampleTree();
    const QByteArray groupBytes = treeBytes(*tree->child(0));
    MatrixData column(QStringLiteral("c"), 2, 1, QVariant::Double, true);
    QDataStream in(groupBytes);
    QVERIFY(!column.getDataFromStream(in));
    QVERIFY(!column.isGroup());
}

void TestStream::html()
{
    auto tree = sampleTree();
    std::vector<MatrixData*> columns{tree->getNodeFromName(QStringLiteral("Name")), tree->getNodeFromName(QStringLiteral("count"))};
    QMimeData mime;
    MatrixData::setHTML_MimeData(&mime, columns, {1, 3});
    const QString html = mime.html();
    QVERIFY(html.contains(QStringLiteral("<th>Name</th><th>count</th>")));
    QVERIFY(html.contains(QStringLiteral("say &quot;hi&quot;")));
    QVERIFY(html.contains(QStringLiteral("<td>-4</td>")));
    QVERIFY(!html.contains(QStringLiteral("a,b"))); // row 0 was not asked for
}

void TestStream::csv_data()
{
    QTest::addColumn<QList<bool>>("mask");
    QTest::addColumn<QString>("expected");
    const QString header = QStringLiteral("depth,count,flag,Name,colour,xy\r\n");
    const QString r0 = QStringLiteral("1.5,1,true,\"a,b\",#FF0000,1;2\r\n");
    const QString r1 = QStringLiteral(",2,false,\"say \"\"hi\"\"\",,\r\n");
    const QString r2 = QStringLiteral("nan,,,\"line\nbreak\",#010203,-3;4\r\n");
    const QString r3 = QString::fromUtf8("-1e+300,-4,true,Øresund,#0000FF,0;0\r\n");
    QTest::newRow("all rows") << QList<bool>() << header + r0 + r1 + r2 + r3;
    QTest::newRow("masked") << QList<bool>{false, true, false, true} << header + r1 + r3;
    QTest::newRow("nothing") << QList<bool>{false, false, false, false} << header;
}

void TestStream::csv()
{
    QFETCH(QList<bool>, mask);
    QFETCH(QString, expected);
    auto tree = sampleTree();
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("out.csv"));
    std::unique_ptr<bool[]> rows;
    if (!mask.isEmpty()) {
        rows.reset(new bool[mask.size()]);
        for (int i = 0; i < mask.size(); ++i)
            rows[i] = mask[i];
    }
    QVERIFY(tree->writeCSV(file, rows.get(), false, false, false, true, nullptr));
    QFile f(file);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(f.readAll()), expected);
}

void TestStream::csvToUnwritablePlace()
{
    auto tree = sampleTree();
    QVERIFY(!tree->writeCSV(QStringLiteral("/nonexistent-dir/sub/out.csv"), nullptr, false, false, false, true, nullptr));
}

QTEST_MAIN(TestStream)
#include "tst_stream.moc"
