// The data tree: navigation, typed cells, row bookkeeping, summaries and legend classes.
#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <MatrixDataProxy.h>
#include <MatrixDataStrike.h>

#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>

using namespace rkBase;

namespace {
MatrixData* group(MatrixData* parent, const QString& name)
{
    auto* g = new MatrixData(name, -1, -1, QVariant::String, true);
    parent->appendChild(g, true);
    return g;
}

MatrixData* column(MatrixData* parent, const QString& name, QVariant::Type type, const QVariantList& values)
{
    auto* c = new MatrixData(name, values.size(), 1, type, true);
    for (int r = 0; r < values.size(); ++r)
        c->setValue(r, 0, values[r]);
    parent->appendChild(c, false);
    return c;
}
} // namespace

class TestMatrixData : public QObject
{
    Q_OBJECT
private slots:
    void emptyRoot();
    void navigation();
    void uniqueNames();
    void cellRoundTrip_data();
    void cellRoundTrip();
    void refusedWritesKeepTheCell();
    void writePastTheEnd();
    void rowInsertion_data();
    void rowInsertion();
    void rowRemovalAndItsUndo();
    void summariesSkipNonFinite();
    void summaryOverRowSubset();
    void pointSummary();
    void collections_data();
    void collections();
    void maxRows_data();
    void maxRows();
    void defaultFilterStep_data();
    void defaultFilterStep();
    void fixedFilterStep();
    void defaultColours();
    void hexaStrings_data();
    void hexaStrings();
    void symbolClasses();
    void colourMapClasses_data();
    void colourMapClasses();
    void measuredDepth();
    void arrayProxyStrike();
    void deepCopyIsIndependent();
};

void TestMatrixData::emptyRoot()
{
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    QVERIFY(root.isGroup());
    QVERIFY(root.leafs().isEmpty());
    QCOMPARE(root.numberOfSelectedItems(), 0);
    QCOMPARE(root.getNode(0), nullptr);
    QCOMPARE(root.getFirstChildWithData(), nullptr);
    QCOMPARE(root.maxNumbOfSelectedRows(1, 0), 0);
    QVERIFY(!root.hasOrientationData());
    QVERIFY(!root.value(0, 0).isValid());
    root.checkValidRowCount();
    QCOMPARE(root.validValueRowCount(), 0);
}

void TestMatrixData::navigation()
{
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* well = group(&root, QStringLiteral("Well A"));
    MatrixData* empty = column(well, QStringLiteral("empty"), QVariant::Double, {QVariant(), QVariant()});
    MatrixData* dip = column(well, QStringLiteral("dip"), QVariant::Double, {10.0, 20.0});
    MatrixData* hidden = column(well, QStringLiteral("hidden"), QVariant::Int, {1, 2});
    MatrixData* well2 = group(&root, QStringLiteral("Well B"));
    MatrixData* az = column(well2, QStringLiteral("azimuth"), QVariant::Double, {100.0});
    hidden->setSelected(false, false);

    QCOMPARE(root.leafs().size(), 4);
    QCOMPARE(root.numberOfSelectedItems(), 3);
    QCOMPARE(root.getNode(0), empty);
    QCOMPARE(root.getNode(1), dip);
    QCOMPARE(root.getNode(2), az); // the unticked column is skipped
    QCOMPARE(root.getNode(3), nullptr);
    QCOMPARE(root.getNodeFromName(QStringLiteral("Well B")), well2);
    QCOMPARE(root.getNodeFromName(QStringLiteral("azimuth")), az);
    QCOMPARE(root.getNodeFromName(QStringLiteral("nothing")), nullptr);
    QCOMPARE(root.getFirstChildWithData(), dip);
    QVERIFY(root.hasOrientationData());
    QVERIFY(!well->removeChild(az));
    QVERIFY(well2->removeChild(az));
    QCOMPARE(az->parent(), nullptr);
    well->insertChild(0, az);
    QCOMPARE(well->child(0), az);
    root.setSelected(false, true);
    QCOMPARE(root.numberOfSelectedItems(), 0);

    // A node built with rows that is given children acts as their group.
    MatrixData sheet(QStringLiteral("DataRoot"), 0, 1, QVariant::Double, true);
    column(&sheet, QStringLiteral("v"), QVariant::Int, {1, 2, 3});
    QVERIFY(sheet.isGroup());
    QCOMPARE(sheet.leafs().size(), 1);
    QCOMPARE(sheet.maxNumbOfSelectedRows(1, 0), 3);
}

void TestMatrixData::uniqueNames()
{
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* well = group(&root, QStringLiteral("Well"));
    column(well, QStringLiteral("dip"), QVariant::Double, {});
    column(well, QStringLiteral("dip_1"), QVariant::Double, {});
    QString name = QStringLiteral("dip");
    root.createUniqueName(name);
    QCOMPARE(name, QStringLiteral("dip_2"));
    name = QStringLiteral("Well");
    root.createUniqueName(name);
    QCOMPARE(name, QStringLiteral("Well_1"));
    name = QStringLiteral("fresh");
    root.createUniqueName(name);
    QCOMPARE(name, QStringLiteral("fresh"));
}

void TestMatrixData::cellRoundTrip_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("in");
    QTest::addColumn<QVariant>("out");
    QTest::newRow("double") << int(QVariant::Double) << QVariant(2.5) << QVariant(2.5);
    QTest::newRow("double from text") << int(QVariant::Double) << QVariant(QStringLiteral(" 12.25 ")) << QVariant(12.25);
    QTest::newRow("double from comma text") << int(QVariant::Double) << QVariant(QStringLiteral("1,5")) << QVariant(1.5);
    QTest::newRow("double nan is kept") << int(QVariant::Double) << QVariant(std::nan("")) << QVariant(std::nan(""));
    QTest::newRow("int") << int(QVariant::Int) << QVariant(-7) << QVariant(-7);
    QTest::newRow("int rounds") << int(QVariant::Int) << QVariant(2.6) << QVariant(3);
    QTest::newRow("bool") << int(QVariant::Bool) << QVariant(true) << QVariant(true);
    QTest::newRow("bool from text") << int(QVariant::Bool) << QVariant(QStringLiteral("false")) << QVariant(false);
    QTest::newRow("string") << int(QVariant::String) << QVariant(QStringLiteral("Top Reservoir")) << QVariant(QStringLiteral("Top Reservoir"));
    QTest::newRow("string from number") << int(QVariant::String) << QVariant(42) << QVariant(QStringLiteral("42"));
    QTest::newRow("colour") << int(QVariant::Color) << QVariant(QColor(10, 20, 30)) << QVariant(QColor(10, 20, 30));
    QTest::newRow("colour from text") << int(QVariant::Color) << QVariant(QStringLiteral("#ff0000")) << QVariant(QColor(255, 0, 0));
    QTest::newRow("point") << int(QVariant::PointF) << QVariant(QPointF(1.5, -2)) << QVariant(QPointF(1.5, -2));
    QTest::newRow("lookup code") << int(QVariant::Icon) << QVariant(3) << QVariant(3);
    QTest::newRow("coded text") << int(QVariant::KeySequence) << QVariant(QStringLiteral("free")) << QVariant(QStringLiteral("free"));
}

void TestMatrixData::cellRoundTrip()
{
    QFETCH(int, type);
    QFETCH(QVariant, in);
    QFETCH(QVariant, out);
    MatrixData c(QStringLiteral("c"), 3, 1, static_cast<QVariant::Type>(type), true);
    QVERIFY(!c.isValueValid(1, 0));
    QVERIFY(c.setValue(1, 0, in));
    QVERIFY(c.isValueValid(1, 0));
    const QVariant got = c.value(1, 0);
    if (type == QVariant::Double && std::isnan(out.toDouble()))
        QVERIFY(std::isnan(got.toDouble()));
    else
        QCOMPARE(got, out);
    QVERIFY(c.setValue(1, 0, QVariant()));
    QVERIFY(!c.isValueValid(1, 0));
    QVERIFY(!c.value(1, 0).isValid());
}

void TestMatrixData::refusedWritesKeepTheCell()
{
    MatrixData c(QStringLiteral("c"), 2, 1, QVariant::Double, true);
    c.setValue(0, 0, 5.0);
    QVERIFY(!c.setValue(0, 0, QStringLiteral("abc")));
    QCOMPARE(c.value(0, 0), QVariant(5.0));
    QVERIFY(!c.setValue(-1, 0, 1.0));
    QVERIFY(!c.setValue(0, 7, 1.0));
    QVERIFY(!c.value(-1, 0).isValid());
    QVERIFY(!c.value(1000000, 0).isValid());
    QVERIFY(!c.value(0, 3).isValid());
    QCOMPARE(c.toDouble(99, 0), 0.0);
    MatrixData p(QStringLiteral("p"), 1, 1, QVariant::PointF, true);
    QVERIFY(!p.setValue(0, 0, 3.0));
    MatrixData colour(QStringLiteral("k"), 1, 1, QVariant::Color, true);
    QVERIFY(!colour.setValue(0, 0, QStringLiteral("not a colour")));
}

void TestMatrixData::writePastTheEnd()
{
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* well = group(&root, QStringLiteral("Well"));
    MatrixData* a = column(well, QStringLiteral("a"), QVariant::Double, {1.0, 2.0});
    MatrixData* b = column(well, QStringLiteral("b"), QVariant::Double, {1.0, 2.0});
    QVERIFY(a->setValue(5, 0, 9.0)); // grows the column
    QCOMPARE(a->rowCount(), 6);
    QCOMPARE(a->validValueRowCount(), 2);
    root.checkValidRowCount();
    QCOMPARE(a->validValueRowCount(), 6);
    QCOMPARE(b->validValueRowCount(), 6); // the record exists in every column of the sheet
    QVERIFY(!b->isValueValid(5, 0));
    QCOMPARE(root.maxNumbOfSelectedRows(1, 0), 6);
}

void TestMatrixData::rowInsertion_data()
{
    QTest::addColumn<QList<int>>("anchors");
    QTest::addColumn<bool>("before");
    QTest::addColumn<QString>("expected"); // column a afterwards, '_' for a blank
    QTest::addColumn<int>("first");
    QTest::newRow("append") << QList<int>{} << false << QStringLiteral("0123_") << 4;
    QTest::newRow("after one") << QList<int>{1} << false << QStringLiteral("01_23") << 2;
    QTest::newRow("before one") << QList<int>{1} << true << QStringLiteral("0_123") << 1;
    QTest::newRow("after several, unordered") << QList<int>{3, 0} << false << QStringLiteral("0_123_") << 1;
    QTest::newRow("before several with duplicates") << QList<int>{2, 0, 2} << true << QStringLiteral("_01_23") << 0;
}

void TestMatrixData::rowInsertion()
{
    QFETCH(QList<int>, anchors);
    QFETCH(bool, before);
    QFETCH(QString, expected);
    QFETCH(int, first);
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* well = group(&root, QStringLiteral("Well"));
    MatrixData* a = column(well, QStringLiteral("a"), QVariant::Int, {0, 1, 2, 3});
    MatrixData* b = column(well, QStringLiteral("b"), QVariant::Int, {0, 1, 2, 3});
    QCOMPARE(root.insertRowsAtPos(anchors, before, false), first);
    for (MatrixData* c : {a, b}) {
        QString got;
        for (int r = 0; r < c->validValueRowCount(); ++r)
            got += c->isValueValid(r, 0) ? QString::number(c->toInt(r, 0)) : QStringLiteral("_");
        QCOMPARE(got, expected);
    }
}

void TestMatrixData::rowRemovalAndItsUndo()
{
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* well = group(&root, QStringLiteral("Well"));
    MatrixData* a = column(well, QStringLiteral("a"), QVariant::Int, {0, 1, 2, 3, 4});
    MatrixData* s = column(well, QStringLiteral("s"), QVariant::String, {"a", "b", "c", "d", "e"});
    const QList<int> rows{3, 0, 3, 99, -1};
    QVERIFY(root.removeRowsFromEachColumn(rows, true));
    QCOMPARE(a->validValueRowCount(), 3);
    QCOMPARE(s->value(0, 0).toString(), QStringLiteral("b"));
    QCOMPARE(s->value(2, 0).toString(), QStringLiteral("e"));
    root.unRemoveRowsFromEachColumn({0, 3}, {0, 3, QStringLiteral("a"), QStringLiteral("d")}, true);
    for (int r = 0; r < 5; ++r) {
        QCOMPARE(a->toInt(r, 0), r);
        QCOMPARE(s->value(r, 0).toString(), QString(QChar('a' + r)));
    }
    QVERIFY(root.removeRowFromEachColumn(4));
    QVERIFY(!root.removeRowFromEachColumn(4));
    root.removeRowsFromEachColumn();
    QCOMPARE(a->rowCount(), 0);
    QCOMPARE(root.maxNumbOfSelectedRows(1, 0), 0);
}

void TestMatrixData::summariesSkipNonFinite()
{
    const double inf = std::numeric_limits<double>::infinity();
    MatrixData c(QStringLiteral("c"), 6, 1, QVariant::Double, true);
    const QVariantList values{1.0, std::nan(""), inf, -inf, 3.0, QVariant()};
    for (int r = 0; r < values.size(); ++r)
        c.setValue(r, 0, values[r]);
    c.setMinMax(0, boost::dynamic_bitset<>());
    QCOMPARE(c.minValue().toDouble(), 1.0);
    QCOMPARE(c.maxValue().toDouble(), 3.0);
    QCOMPARE(c.meanValue().toDouble(), 2.0);
    QCOMPARE(c.standardDeviation(), std::sqrt(2.0));
    double mn, mx, mean;
    int count;
    QVERIFY(c.getMinMaxForColumn(0, mn, mx, mean, count, boost::dynamic_bitset<>()));
    QCOMPARE(count, 2);
    MatrixData blank(QStringLiteral("b"), 3, 1, QVariant::Double, true);
    QVERIFY(!blank.getMinMaxForColumn(0, mn, mx, mean, count, boost::dynamic_bitset<>()));
    QCOMPARE(mn, 1e27);
    QCOMPARE(mx, -1e27);
    blank.setMinMax(0, boost::dynamic_bitset<>());
    QVERIFY(!blank.minValue().isValid());
}

void TestMatrixData::summaryOverRowSubset()
{
    MatrixData c(QStringLiteral("c"), 4, 1, QVariant::Double, true);
    for (int r = 0; r < 4; ++r)
        c.setValue(r, 0, double(r * 10));
    boost::dynamic_bitset<> rows(100); // longer than the column: the extra bits are ignored
    rows.set(1);
    rows.set(3);
    rows.set(50);
    c.setMinMax(0, rows);
    QCOMPARE(c.minValue().toDouble(), 10.0);
    QCOMPARE(c.maxValue().toDouble(), 30.0);
    c.setMinMax(0, std::vector<int>{2});
    QCOMPARE(c.meanValue().toDouble(), 20.0);
    c.setMinMax(0, std::vector<int>{});
    QCOMPARE(c.meanValue().toDouble(), 15.0);
}

void TestMatrixData::pointSummary()
{
    MatrixData p(QStringLiteral("p"), 3, 1, QVariant::PointF, true);
    p.setValue(0, 0, QPointF(1, 5));
    p.setValue(1, 0, QPointF(3, -1));
    p.setMinMax(0, boost::dynamic_bitset<>());
    QCOMPARE(p.minValue().toPointF(), QPointF(1, -1));
    QCOMPARE(p.maxValue().toPointF(), QPointF(3, 5));
}

void TestMatrixData::collections_data()
{
    QTest::addColumn<int>("collection");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QList<int>>("ids");
    QTest::newRow("all") << 0 << QStringList{"dip", "azimuth", "porosity", "code", "lith", "colour", "flag", "Name"} << QList<int>{0, 1, 2, 3, 4, 5, 7, 8};
    QTest::newRow("numeric") << 1 << QStringList{"dip", "azimuth", "porosity", "code"} << QList<int>{0, 1, 2, 3};
    QTest::newRow("colour") << 2 << QStringList{"dip", "azimuth", "porosity", "code", "lith", "colour", "Name"} << QList<int>{0, 1, 2, 3, 4, 5, 8};
    QTest::newRow("symbol") << 3 << QStringList{"code", "lith", "flag", "Name"} << QList<int>{3, 4, 7, 8};
    QTest::newRow("orientation") << 4 << QStringList{"dip", "azimuth"} << QList<int>{0, 1};
    QTest::newRow("pitch and group") << 5 << QStringList{"dip", "azimuth", "code", "lith", "Name"} << QList<int>{0, 1, 3, 4, 8};
}

void TestMatrixData::collections()
{
    QFETCH(int, collection);
    QFETCH(QStringList, names);
    QFETCH(QList<int>, ids);
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* well = group(&root, QStringLiteral("Well"));
    column(well, QStringLiteral("dip"), QVariant::Double, {1.0});
    column(well, QStringLiteral("azimuth"), QVariant::Double, {1.0});
    column(well, QStringLiteral("porosity"), QVariant::Double, {0.2});
    column(well, QStringLiteral("code"), QVariant::Int, {3});
    column(well, QStringLiteral("lith"), QVariant::Icon, {1});
    column(well, QStringLiteral("colour"), QVariant::Color, {QColor(Qt::red)});
    column(well, QStringLiteral("empty"), QVariant::Double, {QVariant()})->setValidValueRowCount(0);
    column(well, QStringLiteral("flag"), QVariant::Bool, {true});
    column(well, QStringLiteral("Name"), QVariant::String, {"x"});
    column(well, QStringLiteral("unticked"), QVariant::Double, {1.0})->setSelected(false, false);
    QList<QString> gotNames;
    QList<int> gotIds;
    QList<QColor> colours;
    root.getDataSetSelectionBoxItems(gotNames, gotIds, colours, static_cast<MatrixData::AttributeCollection>(collection), false);
    QCOMPARE(QStringList(gotNames), names);
    QCOMPARE(gotIds, ids);
    QCOMPARE(colours.size(), names.size());
    for (int i = 0; i < ids.size(); ++i)
        QCOMPARE(root.getNode(ids[i])->name(), names[i]); // ids are getNode positions
}

void TestMatrixData::maxRows_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("listSize");
    QTest::addColumn<int>("expected");
    QTest::newRow("all rows") << 10 << -1 << 0 << 10;
    QTest::newRow("step 1") << 10 << 1 << 0 << 10;
    QTest::newRow("step 5 of 10: rows 0, 4, 9") << 10 << 5 << 0 << 3;
    QTest::newRow("step 5 of 9: rows 0, 4") << 9 << 5 << 0 << 2;
    QTest::newRow("list") << 10 << 1 << 4 << 4;
    QTest::newRow("stepped list") << 10 << 3 << 7 << 3;
}

void TestMatrixData::maxRows()
{
    QFETCH(int, rows);
    QFETCH(int, step);
    QFETCH(int, listSize);
    QFETCH(int, expected);
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* well = group(&root, QStringLiteral("Well"));
    well->appendChild(new MatrixData(QStringLiteral("a"), rows, 1, QVariant::Double, true), false);
    well->appendChild(new MatrixData(QStringLiteral("b"), rows / 2, 1, QVariant::Double, true), false);
    QCOMPARE(root.maxNumbOfSelectedRows(step, listSize), expected);
}

void TestMatrixData::defaultFilterStep_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("validRows"); // of the node itself, for rows <= 0
    QTest::addColumn<int>("step");
    QTest::newRow("nothing") << 0 << 0 << 1;
    QTest::newRow("a bar a row up to the limit") << MatrixData::kDefaultFilterBars << 0 << 1;
    QTest::newRow("one row more") << MatrixData::kDefaultFilterBars + 1 << 0 << 2;
    QTest::newRow("twice the limit") << 2 * MatrixData::kDefaultFilterBars << 0 << 2;
    QTest::newRow("then 5") << 2 * MatrixData::kDefaultFilterBars + 1 << 0 << 5;
    QTest::newRow("the sample well") << 3000 << 0 << 50;
    QTest::newRow("a million") << 1000000 << 0 << 10000;
    QTest::newRow("the most rows") << std::numeric_limits<int>::max() << 0 << 50000000;
    QTest::newRow("no count given: the node's own rows") << 0 << 450 << 5;
    QTest::newRow("a negative count: the same") << -7 << 450 << 5;
}

void TestMatrixData::defaultFilterStep()
{
    QFETCH(int, rows);
    QFETCH(int, validRows);
    QFETCH(int, step);
    MatrixData column(QStringLiteral("a"), validRows, 1, QVariant::Double, true);
    column.setValidValueRowCount(validRows);
    QCOMPARE(column.defaultFilterStepSize(rows), step);
    // The result leaves at most the limit of bars.
    const long long n = rows > 0 ? rows : validRows;
    QVERIFY((n + step - 1) / step <= MatrixData::kDefaultFilterBars);
    // Asking again with other rows is not answered from the first question.
    QCOMPARE(column.defaultFilterStepSize(1), 1);
}

void TestMatrixData::fixedFilterStep()
{
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    QVERIFY(!root.setDefaultFilterStepSize(0));
    QVERIFY(!root.setDefaultFilterStepSize(-3));
    QCOMPARE(root.defaultFilterStepSize(3000), 50);
    QVERIFY(root.setDefaultFilterStepSize(7));
    QCOMPARE(root.defaultFilterStepSize(3000), 7);
    QCOMPARE(root.defaultFilterStepSize(1), 7);
    // A fixed step travels with the node.
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        root.putDataOnStream(out, true);
    }
    MatrixData copy(QStringLiteral("copy"), -1, -1, QVariant::String, true);
    QDataStream in(bytes);
    QVERIFY(copy.getDataFromStream(in));
    QCOMPARE(copy.defaultFilterStepSize(3000), 7);
    root.resetDefaultFilterStepSize();
    QCOMPARE(root.defaultFilterStepSize(3000), 50);
}

void TestMatrixData::defaultColours()
{
    const QColor first = MatrixData::getDefaultColor(true);
    QSet<QRgb> seen{first.rgb()};
    for (int i = 0; i < 9; ++i)
        seen.insert(MatrixData::getDefaultColor(false).rgb());
    QCOMPARE(seen.size(), 10);
    QCOMPARE(MatrixData::getDefaultColor(true), first);
}

void TestMatrixData::hexaStrings_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("upper") << QStringLiteral("#FF8000") << QColor(255, 128, 0);
    QTest::newRow("lower, no hash") << QStringLiteral("00ff7f") << QColor(0, 255, 127);
    QTest::newRow("short") << QStringLiteral("#FFF") << QColor();
    QTest::newRow("garbage") << QStringLiteral("#GG0000") << QColor();
    QTest::newRow("empty") << QString() << QColor();
}

void TestMatrixData::hexaStrings()
{
    QFETCH(QString, text);
    QFETCH(QColor, colour);
    QCOMPARE(MatrixData::colorFromHexaString(text), colour);
    if (colour.isValid()) {
        MatrixData c(QStringLiteral("c"), 0, 1, QVariant::Double, true);
        c.setColor(colour);
        QCOMPARE(c.colorHexaString(), colour.name().toUpper());
        QCOMPARE(MatrixData::colorFromHexaString(c.colorHexaString()), colour);
    }
}

void TestMatrixData::symbolClasses()
{
    MatrixData lith(QStringLiteral("lith"), 4, 1, QVariant::KeySequence, true);
    lith.addLookupValue(1, QStringLiteral("Sand"));
    lith.addLookupValue(2, QColor(Qt::blue));
    lith.setValue(0, 0, 1);
    lith.setValue(1, 0, 2);
    lith.setValue(2, 0, QStringLiteral("Shale"));
    QCOMPARE(lith.rawValue(QVariant(QStringLiteral("Sand"))), QVariant(1));
    QVERIFY(!lith.rawValue(QVariant(QStringLiteral("Granite"))).isValid());
    QCOMPARE(lith.rawValue(0), QVariant(QStringLiteral("Sand")));
    QCOMPARE(lith.cellColor(1), QColor(Qt::blue));
    QMap<int, QString> names;
    QMap<int, QColor> colours;
    lith.createSymbolIDs(names, colours);
    QCOMPARE(names.value(1), QStringLiteral("Sand"));
    QCOMPARE(colours.value(2), QColor(Qt::blue));
    QCOMPARE(lith.symbolID(0), 1);
    QCOMPARE(lith.symbolID(3), -1);

    MatrixData por(QStringLiteral("porosity"), 3, 1, QVariant::Double, true);
    por.setValue(0, 0, 0.0);
    por.setValue(1, 0, 0.5);
    por.setValue(2, 0, 1.0);
    por.setColorMapStepSize(0.25);
    names.clear();
    colours.clear();
    por.createColorMapSymbolIDs(names, colours);
    QCOMPARE(names.size(), 4);
    QCOMPARE(por.colorMapSymbolID(0), 0);
    QCOMPARE(por.colorMapSymbolID(2), 3); // the maximum falls in the last class
    QVERIFY(colours.value(0) != colours.value(3));
}

void TestMatrixData::colourMapClasses_data()
{
    QTest::addColumn<QVariantList>("values");
    QTest::addColumn<double>("step");
    QTest::addColumn<bool>("flip");
    QTest::addColumn<QVariant>("summaryMin");
    QTest::addColumn<QVariant>("summaryMax");
    QTest::addColumn<int>("classes");
    QTest::addColumn<double>("probe");
    QTest::addColumn<int>("probeClass");
    const QVariantList ramp{0.0, 2.5, 5.0, 7.5, 10.0};
    QTest::newRow("no step: ten classes from blue to red") << ramp << 0.0 << false << QVariant() << QVariant() << 10 << 2.5 << 2;
    QTest::newRow("99999 is no step either") << ramp << 99999.0 << false << QVariant() << QVariant() << 10 << 10.0 << 9;
    QTest::newRow("flipped") << ramp << 0.0 << true << QVariant() << QVariant() << 10 << 0.0 << 0;
    QTest::newRow("0.3 over 2.1: no sliver class at the top")
        << QVariantList{0.0, 1.0, 2.1} << 0.3 << false << QVariant() << QVariant() << 7 << 2.1 << 6;
    QTest::newRow("range from the summary, not the data")
        << QVariantList{40.0, 45.0, 60.0} << 10.0 << false << QVariant(0.0) << QVariant(100.0) << 10 << 45.0 << 4;
    QTest::newRow("step finer than the cap") << ramp << 1e-9 << false << QVariant() << QVariant()
                                             << MatrixData::kMaxColorMapClasses << 10.0 << MatrixData::kMaxColorMapClasses - 1;
    QTest::newRow("one value") << QVariantList{3.0, 3.0} << 0.0 << false << QVariant() << QVariant() << 1 << 3.0 << 0;
}

void TestMatrixData::colourMapClasses()
{
    QFETCH(QVariantList, values);
    QFETCH(double, step);
    QFETCH(bool, flip);
    QFETCH(QVariant, summaryMin);
    QFETCH(QVariant, summaryMax);
    QFETCH(int, classes);
    QFETCH(double, probe);
    QFETCH(int, probeClass);
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* node = column(&root, QStringLiteral("porosity"), QVariant::Double, values);
    node->setColorMapStepSize(step);
    node->setFlipColorMap(flip);
    node->setMinValue(summaryMin);
    node->setMaxValue(summaryMax);
    QMap<int, QString> names;
    QMap<int, QColor> colours;
    node->createColorMapSymbolIDs(names, colours);
    QCOMPARE(names.size(), classes);
    QCOMPARE(colours.size(), classes);
    QCOMPARE(node->colorMapSymbolIDOfValue(probe), probeClass);
    if (classes > 1) {
        // The ends of the spectrum are the ends of the legend.
        QCOMPARE(colours.first(), flip ? QColor(255, 0, 0) : QColor(0, 0, 255));
        QCOMPARE(colours.last(), flip ? QColor(0, 0, 255) : QColor(255, 0, 0));
    }
    // A cell in the table, or its value as text, looks as its point in a chart.
    for (int r = 0; r < values.size(); ++r) {
        QCOMPARE(node->cellColor(r), colours.value(node->colorMapSymbolID(r)));
        QCOMPARE(node->color(values[r].toString()), node->cellColor(r));
    }
}

void TestMatrixData::measuredDepth()
{
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* well = group(&root, QStringLiteral("Well"));
    column(well, QStringLiteral("X(East)"), QVariant::Double, {0.0, 3.0, QVariant(), 3.0})->setVertex(true);
    column(well, QStringLiteral("Y(North)"), QVariant::Double, {0.0, 4.0, 0.0, 4.0})->setVertex(true);
    column(well, QStringLiteral("Z"), QVariant::Double, {0.0, 0.0, 0.0, 10.0})->setVertex(true);
    QCOMPARE(root.createMeasuredDepth(), 1);
    MatrixData* md = root.getNodeFromName(QStringLiteral("Measured Depth"));
    QVERIFY(md);
    QCOMPARE(md->toDouble(1, 0), 5.0);
    QVERIFY(!md->isValueValid(2, 0)); // a row without coordinates has no depth
    QCOMPARE(md->toDouble(3, 0), 15.0);
    QCOMPARE(root.createMeasuredDepth(), 0); // never twice
}

void TestMatrixData::arrayProxyStrike()
{
    MatrixDataArray grid(QStringLiteral("grid"), 3, 4, QVariant::Double);
    QCOMPARE(grid.columnCount(), 4);
    grid.addValue(2, 3, 1.5);
    grid.addValue(2, 3, 1.0);
    grid.addValue(3, 3, 1.0); // outside: ignored
    QCOMPARE(grid.toDouble(2, 3), 2.5);
    QVERIFY(!grid.setValue(5, 0, 1.0));
    MatrixDataArray copy(grid);
    grid.clearData();
    QCOMPARE(grid.toDouble(2, 3), 0.0);
    QCOMPARE(copy.toDouble(2, 3), 2.5);
    double mn, mx, mean;
    QVERIFY(copy.getMinMax(mn, mx, mean, boost::dynamic_bitset<>()));
    QCOMPARE(mx, 2.5);
    copy.reserve(5, 2);
    QCOMPARE(copy.rowCount(), 5);
    QCOMPARE(copy.toDouble(4, 1), 0.0);

    MatrixData a(QStringLiteral("a"), 2, 1, QVariant::Double, true), b(QStringLiteral("b"), 3, 1, QVariant::Double, true);
    b.setValue(1, 0, 7.0);
    MatrixDataProxy proxy(QStringLiteral("p"), QVariant::Double);
    proxy.addNode(&a);
    proxy.addNode(&b);
    int local = -1;
    QCOMPARE(proxy.row(3, local), &b);
    QCOMPARE(local, 1);
    QCOMPARE(proxy.value(3, 0), QVariant(7.0));
    QCOMPARE(proxy.row(5, local), nullptr);
    QVERIFY(proxy.setValue(0, 0, 1.0));
    QCOMPARE(a.value(0, 0), QVariant(1.0));

    MatrixData az(QStringLiteral("azimuth"), 3, 1, QVariant::Double, true), dip(QStringLiteral("dip"), 3, 1, QVariant::Double, true);
    az.setValue(0, 0, 30.0);
    az.setValue(1, 0, 99999.0);
    MatrixDataStrike strike(QStringLiteral("strike"), &az, &dip);
    QCOMPARE(strike.value(0, 0), QVariant(300.0));
    QVERIFY(!strike.isValueValid(1, 0));
    QCOMPARE(strike.azimuthNode(), &az);
    QVERIFY(!strike.isValueEditable(0, 0));
    strike.setAzimuthNode(nullptr); // its source goes away: the last values stay
    QCOMPARE(strike.value(0, 0), QVariant(300.0));
}

void TestMatrixData::deepCopyIsIndependent()
{
    MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    MatrixData* well = group(&root, QStringLiteral("Well"));
    MatrixData* a = column(well, QStringLiteral("a"), QVariant::Double, {1.0, 2.0});
    MatrixData copy(root, true);
    a->setValue(0, 0, 100.0);
    a->setName(QStringLiteral("renamed"));
    MatrixData* ca = copy.getNodeFromName(QStringLiteral("a"));
    QVERIFY(ca);
    QCOMPARE(ca->value(0, 0), QVariant(1.0));
    QCOMPARE(ca->parent()->parent(), &copy);
    MatrixData assigned(QStringLiteral("x"), -1, -1, QVariant::String, true);
    assigned = root;
    QVERIFY(assigned.getNodeFromName(QStringLiteral("renamed")));
}

QTEST_MAIN(TestMatrixData)
#include "tst_matrixdata.moc"
