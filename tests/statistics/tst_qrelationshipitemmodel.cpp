// The point set behind the charts: which rows a load accepts and where they land, the selection
// kept by table row, the colour and symbol classes, and loads of broken or mismatched columns.
#include <MatrixDataProxy.h>
#include <QRelationshipItemModel.h>

#include <QtTest>

#include <QRandomGenerator>

#include <cmath>
#include <limits>
#include <memory>

using namespace rkBase;
using Model = QRelationshipItemModel;

Q_DECLARE_METATYPE(std::vector<int>)

namespace {
const QVariant blank;
const QVariant nanCell(std::numeric_limits<double>::quiet_NaN());
const QVariant infCell(std::numeric_limits<double>::infinity());

// A Double (or given type) column; invalid entries stay blank.
MatrixData* column(const QString& name, const QVariantList& cells, QVariant::Type type = QVariant::Double)
{
    auto* c = new MatrixData(name, cells.size(), 1, type, true);
    for (int r = 0; r < cells.size(); ++r)
        c->setValue(r, 0, cells[r]);
    return c;
}

QVariantList numbers(std::initializer_list<double> values)
{
    QVariantList l;
    for (double v : values)
        l << v;
    return l;
}

QList<QPointF> points(const Model& m)
{
    QList<QPointF> out;
    for (int r = 0; r < m.rowCount(); ++r)
        out << m.data(m.index(r, 0), Qt::DisplayRole).toPointF();
    return out;
}

QList<int> tableRows(const Model& m)
{
    QList<int> out;
    for (int r = 0; r < m.rowCount(); ++r)
        out << m.tableRow(r);
    return out;
}

QList<int> selectedBits(const Model& m)
{
    QList<int> out;
    for (std::size_t b = m.selection().find_first(); b != m.selection().npos; b = m.selection().find_next(b))
        out << int(b);
    return out;
}
} // namespace

class TestRelationshipItemModel : public QObject
{
    Q_OBJECT
private slots:
    void load_data();
    void load();
    void emptyInputKeepsThePreviousPoints_data();
    void emptyInputKeepsThePreviousPoints();
    void scatRowsLeaveUnlessTaken_data();
    void scatRowsLeaveUnlessTaken();
    void undefinedAttributes_data();
    void undefinedAttributes();
    void labelsMatchTheLegend_data();
    void labelsMatchTheLegend();
    void computedColumnsLoadLikePlainOnes();
    void randomBadCellsNeverEnter();
    void selectionRules();
    void rowFilters_data();
    void rowFilters();
    void classSelectionAndColours();
    void itemModelSurface();
    void outlineStyles();
    void clusterLookups();
};

void TestRelationshipItemModel::load_data()
{
    QTest::addColumn<QString>("nameX");
    QTest::addColumn<QString>("nameY");
    QTest::addColumn<QVariantList>("x");
    QTest::addColumn<QVariantList>("y");
    QTest::addColumn<int>("step");
    QTest::addColumn<std::vector<int>>("selected");
    QTest::addColumn<QList<QPointF>>("points");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<QList<int>>("bits");
    QTest::addColumn<int>("tableRows");
    QTest::addColumn<QPointF>("min");
    QTest::addColumn<QPointF>("max");
    QTest::addColumn<bool>("horizontalDip");

    const QString x = QStringLiteral("x"), y = QStringLiteral("y");
    QTest::newRow("plain") << x << y << numbers({1, 2, 3}) << numbers({4, 5, 6}) << 1 << std::vector<int>()
                           << QList<QPointF>{{1, 4}, {2, 5}, {3, 6}} << QList<int>{0, 1, 2} << QList<int>{} << 3
                           << QPointF(1, 4) << QPointF(3, 6) << false;
    QTest::newRow("blank, NaN and inf rows skipped")
        << x << y << (QVariantList() << 1 << blank << nanCell << 4 << infCell << 6)
        << (QVariantList() << 1 << 2 << 3 << blank << 5 << -nanCell.toDouble()) << 1 << std::vector<int>()
        << QList<QPointF>{{1, 1}} << QList<int>{0} << QList<int>{} << 6 << QPointF(1, 1) << QPointF(1, 1) << false;
    QTest::newRow("y longer: table rows follow y, only x rows read")
        << x << y << numbers({1, 2}) << numbers({1, 2, 3, 4}) << 1 << std::vector<int>{3}
        << QList<QPointF>{{1, 1}, {2, 2}} << QList<int>{0, 1} << QList<int>{3} << 4 << QPointF(1, 1)
        << QPointF(2, 2) << false;
    QTest::newRow("x longer: rows past y rejected, their bits cleared")
        << x << y << numbers({1, 2, 3, 4}) << numbers({1, 2}) << 1 << std::vector<int>{0, 3}
        << QList<QPointF>{{1, 1}, {2, 2}} << QList<int>{0, 1} << QList<int>{0} << 4 << QPointF(1, 1)
        << QPointF(2, 2) << false;
    QTest::newRow("nothing accepted: range is zero")
        << x << y << (QVariantList() << blank << nanCell) << numbers({1, 2}) << 1 << std::vector<int>()
        << QList<QPointF>{} << QList<int>{} << QList<int>{} << 2 << QPointF(0, 0) << QPointF(0, 0) << false;
    QTest::newRow("step 3 loads every third row")
        << x << y << numbers({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}) << numbers({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}) << 3
        << std::vector<int>() << QList<QPointF>{{0, 0}, {3, 3}, {6, 6}, {9, 9}} << QList<int>{0, 3, 6, 9}
        << QList<int>{} << 10 << QPointF(0, 0) << QPointF(9, 9) << false;
    QTest::newRow("step 3 with a row list thins the selection only")
        << x << y << numbers({0, 1, 2, 3, 4, 5, 6, 7}) << numbers({0, 1, 2, 3, 4, 5, 6, 7}) << 3
        << std::vector<int>{0, 1, 2, 3, 4, 5, 6}
        << QList<QPointF>{{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}}
        << QList<int>{0, 1, 2, 3, 4, 5, 6, 7} << QList<int>{0, 3, 6} << 8 << QPointF(0, 0) << QPointF(7, 7)
        << false;
    QTest::newRow("selected rows out of range ignored")
        << x << y << numbers({1, 2}) << numbers({1, 2}) << 1 << std::vector<int>{-4, 1, 99}
        << QList<QPointF>{{1, 1}, {2, 2}} << QList<int>{0, 1} << QList<int>{1} << 2 << QPointF(1, 1)
        << QPointF(2, 2) << false;
    QTest::newRow("negative dips fold, range as read")
        << QStringLiteral("dip") << QStringLiteral("azimuth") << numbers({-30, -30, 40}) << numbers({200, 100, 359})
        << 1 << std::vector<int>() << QList<QPointF>{{30, 20}, {30, 280}, {40, 359}} << QList<int>{0, 1, 2}
        << QList<int>{} << 3 << QPointF(-30, 100) << QPointF(40, 359) << true;
    QTest::newRow("Dip folds but is not horizontal dip data")
        << QStringLiteral("Dip") << QStringLiteral("Azimuth") << numbers({-30}) << numbers({200}) << 1
        << std::vector<int>() << QList<QPointF>{{30, 20}} << QList<int>{0} << QList<int>{} << 1
        << QPointF(-30, 200) << QPointF(-30, 200) << false;
    QTest::newRow("no fold without an azimuth column")
        << QStringLiteral("dip") << QStringLiteral("depth") << numbers({-30}) << numbers({200}) << 1
        << std::vector<int>() << QList<QPointF>{{-30, 200}} << QList<int>{0} << QList<int>{} << 1
        << QPointF(-30, 200) << QPointF(-30, 200) << true;
}

void TestRelationshipItemModel::load()
{
    QFETCH(QString, nameX);
    QFETCH(QString, nameY);
    QFETCH(QVariantList, x);
    QFETCH(QVariantList, y);
    QFETCH(int, step);
    QFETCH(std::vector<int>, selected);
    std::unique_ptr<MatrixData> nx(column(nameX, x)), ny(column(nameY, y));
    Model m;
    QSignalSpy reset(&m, &QAbstractItemModel::modelReset);
    const quint64 revision = m.dataRevision();
    m.takeNewDataSet(step, Model::HighlightSelected, nx.get(), ny.get(), selected);

    QTEST(points(m), "points");
    QTEST(tableRows(m), "rows");
    QTEST(selectedBits(m), "bits");
    QTEST(m.numberOfTableRows(), "tableRows");
    QTEST(m.minValue(), "min");
    QTEST(m.maxValue(), "max");
    QTEST(m.horizontalDipDataSelected(), "horizontalDip");
    QCOMPARE(m.pointCount(), m.rowCount());
    QCOMPARE(m.partSelection(), !selected.empty());
    QCOMPARE(reset.count(), 1);
    QVERIFY(m.dataRevision() != revision);
}

void TestRelationshipItemModel::emptyInputKeepsThePreviousPoints_data()
{
    QTest::addColumn<bool>("nullX");
    QTest::addColumn<bool>("nullY");
    QTest::addColumn<bool>("emptyX");
    QTest::newRow("null x") << true << false << false;
    QTest::newRow("null y") << false << true << false;
    QTest::newRow("zero rows") << false << false << true;
}

void TestRelationshipItemModel::emptyInputKeepsThePreviousPoints()
{
    QFETCH(bool, nullX);
    QFETCH(bool, nullY);
    QFETCH(bool, emptyX);
    std::unique_ptr<MatrixData> x(column("x", numbers({1, 2}))), y(column("y", numbers({3, 4})));
    std::unique_ptr<MatrixData> empty(column("e", {}));
    Model m;
    m.takeNewDataSet(1, Model::HighlightSelected, x.get(), y.get(), {1});
    MatrixData* nx = nullX ? nullptr : (emptyX ? empty.get() : x.get());
    MatrixData* ny = nullY ? nullptr : y.get();
    m.takeNewDataSet(nx, ny, Model::ShowAll);
    QCOMPARE(m.nodeX(), nx);
    QCOMPARE(m.nodeY(), ny);
    QCOMPARE(points(m), (QList<QPointF>{{1, 3}, {2, 4}}));
    QCOMPARE(selectedBits(m), QList<int>{1});
    QVERIFY(m.partSelection());
}

void TestRelationshipItemModel::scatRowsLeaveUnlessTaken_data()
{
    QTest::addColumn<QString>("nameX");
    QTest::addColumn<bool>("withRoot");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<QList<int>>("rows");
    QTest::newRow("dip, flagged rows leave") << "True Dip" << true << false << QList<int>{0, 2};
    QTest::newRow("AZIMUTH matches too") << "AZIMUTH" << true << false << QList<int>{0, 2};
    QTest::newRow("taken") << "dip" << true << true << QList<int>{0, 1, 2, 3};
    QTest::newRow("not orientation data") << "depth" << true << false << QList<int>{0, 1, 2, 3};
    QTest::newRow("no data root") << "dip" << false << false << QList<int>{0, 1, 2, 3};
}

void TestRelationshipItemModel::scatRowsLeaveUnlessTaken()
{
    QFETCH(QString, nameX);
    QFETCH(bool, withRoot);
    QFETCH(bool, taken);
    MatrixData root("root", -1, -1, QVariant::String, true);
    auto* well = new MatrixData("well", -1, -1, QVariant::String, true);
    root.appendChild(well, true);
    MatrixData* x = column(nameX, numbers({10, 20, 30, 40}));
    well->appendChild(x, false);
    well->appendChild(column("y", numbers({1, 2, 3, 4})), false);
    well->appendChild(column("SCAT", QVariantList() << false << true << blank << true, QVariant::Bool), false);
    Model m;
    if (withRoot)
        m.setDataRoot(&root);
    m.takeSCATData(taken);
    m.takeNewDataSet(1, Model::HighlightSelected, x, root.getNodeFromName("y"), {0, 1, 2, 3});
    QTEST(tableRows(m), "rows");
    QTEST(selectedBits(m), "rows");
}

void TestRelationshipItemModel::undefinedAttributes_data()
{
    QTest::addColumn<bool>("useColour");
    QTest::addColumn<bool>("keepUndefined");
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<QList<int>>("ids");
    QTest::addColumn<QList<int>>("bits");
    // The attribute is blank at row 1; the coordinates are blank at row 3. Rows 0 to 3 selected.
    QTest::newRow("colour dropped") << true << false << QList<int>{0, 2} << QList<int>{0, 1} << QList<int>{0, 1, 2};
    QTest::newRow("colour kept as -1") << true << true << QList<int>{0, 1, 2} << QList<int>{0, -1, 1}
                                       << QList<int>{0, 1, 2};
    QTest::newRow("symbol dropped") << false << false << QList<int>{0, 2} << QList<int>{0, 1} << QList<int>{0, 1, 2};
    // A kept undefined symbol writes nothing: its class cell stays blank (-1).
    QTest::newRow("symbol kept, unwritten") << false << true << QList<int>{0, 1, 2} << QList<int>{0, -1, 1}
                                            << QList<int>{0, 1, 2};
}

void TestRelationshipItemModel::undefinedAttributes()
{
    QFETCH(bool, useColour);
    QFETCH(bool, keepUndefined);
    std::unique_ptr<MatrixData> x(column("x", QVariantList() << 1 << 2 << 3 << blank));
    std::unique_ptr<MatrixData> y(column("y", numbers({1, 2, 3, 4})));
    std::unique_ptr<MatrixData> attr(column("lith", QVariantList() << "sand" << blank << "shale" << "sand",
                                            QVariant::String));
    QMap<int, QVariant> cn, sn;
    QMap<int, QColor> cc, sc;
    Model m;
    m.takeNewDataSet(1, Model::HighlightSelected, x.get(), y.get(), useColour ? attr.get() : nullptr,
                     useColour ? nullptr : attr.get(), keepUndefined, {0, 1, 2, 3}, cn, cc, sn, sc);
    QTEST(tableRows(m), "rows");
    QTEST(selectedBits(m), "bits");
    QFETCH(QList<int>, ids);
    QList<int> got;
    QColor colour;
    for (int r = 0; r < m.rowCount(); ++r) {
        int colourClass = -1;
        const int symbolClass = m.getColorAndSymbolInfo(r, colour, colourClass);
        got << (useColour ? colourClass : symbolClass);
    }
    QCOMPARE(got, ids);
    QMap<int, QVariant>& names = useColour ? cn : sn;
    QCOMPARE(names.size(), 2);
    QCOMPARE(names.value(ids[0]).toString(), QStringLiteral("sand"));
    QCOMPARE(useColour ? sn.size() : cn.size(), 0);
    QVERIFY(m.drawSymbols());
    if (useColour)
        QCOMPARE(m.getColorName(0).toString(), QStringLiteral("sand"));
    // The point's colour is the legend colour of its class.
    QColor first;
    m.getColor(0, first);
    QCOMPARE(first.name(), (useColour ? cc : sc).value(ids[0]).name());
}

void TestRelationshipItemModel::labelsMatchTheLegend_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariantList>("cells");
    QTest::addColumn<bool>("labelled");
    QTest::newRow("text") << int(QVariant::String) << QVariantList{"sand", "shale", "sand"} << true;
    QTest::newRow("colour") << int(QVariant::Color)
                            << QVariantList{QColor(Qt::red), QColor(Qt::blue), QColor(Qt::red)} << true;
    QTest::newRow("coded with lookup") << int(QVariant::Icon) << QVariantList{3, 5, 3} << true;
    // Numbers are classes of a colour map: no label, colour of the class range.
    QTest::newRow("colour map") << int(QVariant::Double) << QVariantList{1.0, 5.0, 9.0} << false;
}

void TestRelationshipItemModel::labelsMatchTheLegend()
{
    QFETCH(int, type);
    QFETCH(QVariantList, cells);
    QFETCH(bool, labelled);
    std::unique_ptr<MatrixData> x(column("x", numbers({1, 2, 3}))), y(column("y", numbers({1, 2, 3})));
    std::unique_ptr<MatrixData> attr(column("attr", cells, QVariant::Type(type)));
    attr->addLookupValue(3, QStringLiteral("limestone"));
    attr->addLookupValue(5, QStringLiteral("marl"));
    QMap<int, QVariant> cn, sn;
    QMap<int, QColor> cc, sc;
    Model m;
    m.takeNewDataSet(1, Model::ShowAll, x.get(), y.get(), attr.get(), nullptr, false, {}, cn, cc, sn, sc);
    QCOMPARE(m.rowCount(), 3);
    QVERIFY(!cn.isEmpty());
    for (int r = 0; r < 3; ++r) {
        int id = -1;
        QColor colour;
        m.getColorAndSymbolInfo(r, colour, id);
        QVERIFY(cn.contains(id));
        QCOMPARE(m.getColorName(r).toString(), labelled ? cn.value(id).toString() : QString());
        QCOMPARE(colour.name(), type == QVariant::Color ? cells[r].value<QColor>().name() : cc.value(id).name());
    }
}

void TestRelationshipItemModel::computedColumnsLoadLikePlainOnes()
{
    // A proxy reads its cells through other columns: the load must not take the typed fast path.
    std::unique_ptr<MatrixData> a(column("a", QVariantList() << 1 << blank << 3));
    std::unique_ptr<MatrixData> b(column("b", numbers({4, 5})));
    std::unique_ptr<MatrixData> y(column("y", numbers({10, 20, 30, 40, 50})));
    MatrixDataProxy proxy("x", QVariant::Double);
    proxy.addNode(a.get());
    proxy.addNode(b.get());
    Model m;
    m.takeNewDataSet(&proxy, y.get(), Model::ShowAll);
    QCOMPARE(points(m), (QList<QPointF>{{1, 10}, {3, 30}, {4, 40}, {5, 50}}));
    QCOMPARE(tableRows(m), (QList<int>{0, 2, 3, 4}));
}

void TestRelationshipItemModel::randomBadCellsNeverEnter()
{
    QRandomGenerator rng(7);
    const QVariant pool[] = {blank, nanCell, infCell, -infCell.toDouble(), 0.0, -12.5, 1e300, QStringLiteral("3.5")};
    for (int round = 0; round < 30; ++round) {
        const int nx = int(rng.bounded(40)), ny = int(rng.bounded(40));
        QVariantList xs, ys;
        for (int r = 0; r < nx; ++r)
            xs << pool[rng.bounded(8)];
        for (int r = 0; r < ny; ++r)
            ys << pool[rng.bounded(8)];
        std::unique_ptr<MatrixData> x(column("x", xs)), y(column("y", ys));
        const int step = 1 + int(rng.bounded(3));
        Model m;
        m.takeNewDataSet(step, Model::HighlightSelected, x.get(), y.get(), {});
        QList<int> expected;
        for (int r = 0; r < nx; r += step)
            if (r < ny && std::isfinite(x->value(r, 0).toDouble()) && x->isValueValid(r, 0)
                && y->isValueValid(r, 0) && std::isfinite(y->value(r, 0).toDouble()))
                expected << r;
        QCOMPARE(tableRows(m), expected);
        for (const QPointF& p : points(m))
            QVERIFY(std::isfinite(p.x()) && std::isfinite(p.y()));
        QVERIFY(std::isfinite(m.minValue().x()) && std::isfinite(m.maxValue().y()));
    }
}

void TestRelationshipItemModel::selectionRules()
{
    std::unique_ptr<MatrixData> x(column("x", QVariantList() << 1 << blank << 3 << 4));
    std::unique_ptr<MatrixData> y(column("y", numbers({1, 2, 3, 4})));
    Model m;
    m.takeNewDataSet(1, Model::HighlightSelected, x.get(), y.get(), {});
    QCOMPARE(m.numberOfSelectedPoints(), 3);
    QVERIFY(!m.isSelected(-1));
    // Model row 1 is table row 2: the bit goes by table row.
    m.setSelected(1, true);
    QVERIFY(m.partSelection());
    QCOMPARE(selectedBits(m), QList<int>{2});
    QCOMPARE(m.numberOfSelectedPoints(), 1);
    m.setSelected(1, false);
    QVERIFY(m.partSelection());
    QCOMPARE(m.numberOfSelectedPoints(), 0);
    m.setDisplayType(Model::ShowAll);
    QCOMPARE(m.numberOfSelectedPoints(), 3);
    m.clearSelection();
    QVERIFY(!m.partSelection());
    m.setSelected2(3, true);
    QVERIFY(!m.partSelection());
    QVERIFY(m.isSelected(2));

    m.initSelection(x.get(), {});
    QVERIFY(!m.data());
    QCOMPARE(m.rowCount(), 0);
    QCOMPARE(m.numberOfTableRows(), 4);
    QCOMPARE(m.tableRow(0), -1);
    QVERIFY(!m.isSelected(0));
    m.initSelection(x.get(), {1, 7});
    QVERIFY(m.partSelection());
    m.setTableRowID(0, 1);
    QVERIFY(m.isSelected(0));
    m.initSelection(nullptr, {});
    QCOMPARE(m.numberOfTableRows(), 0);
}

void TestRelationshipItemModel::rowFilters_data()
{
    QTest::addColumn<bool>("part");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("statistics");
    QTest::addColumn<bool>("density");
    const int all = Model::ShowAll, selectedOnly = Model::ShowSelectedOnly, highlight = Model::HighlightSelected;
    // Without a part selection every row counts, selected or not.
    QTest::newRow("no part selection, show all, unselected") << false << false << all << true << true;
    QTest::newRow("no part selection, show all, selected") << false << true << all << true << true;
    QTest::newRow("no part selection, selected only, unselected") << false << false << selectedOnly << true << true;
    QTest::newRow("no part selection, selected only, selected") << false << true << selectedOnly << true << true;
    QTest::newRow("no part selection, highlight, unselected") << false << false << highlight << true << true;
    QTest::newRow("no part selection, highlight, selected") << false << true << highlight << true << true;
    // With one, a selected row always counts.
    QTest::newRow("part selection, show all, selected") << true << true << all << true << true;
    QTest::newRow("part selection, selected only, selected") << true << true << selectedOnly << true << true;
    QTest::newRow("part selection, highlight, selected") << true << true << highlight << true << true;
    // An unselected row: statistics drop it only under highlighting, density counting unless
    // everything is shown.
    QTest::newRow("part selection, show all, unselected") << true << false << all << true << true;
    QTest::newRow("part selection, selected only, unselected") << true << false << selectedOnly << true << false;
    QTest::newRow("part selection, highlight, unselected") << true << false << highlight << false << false;
}

void TestRelationshipItemModel::rowFilters()
{
    QFETCH(bool, part);
    QFETCH(bool, selected);
    QFETCH(int, type);
    std::unique_ptr<MatrixData> x(column("x", numbers({1, 2}))), y(column("y", numbers({1, 2})));
    Model m;
    m.takeNewDataSet(1, Model::DisplayType(type), x.get(), y.get(), {});
    m.setSelected2(1, selected);
    m.setPartSelection(part);
    QTEST(m.passesRowFilter(1), "statistics");
    QTEST(m.passesDensityFilter(1), "density");
}

void TestRelationshipItemModel::classSelectionAndColours()
{
    std::unique_ptr<MatrixData> x(column("x", numbers({1, 2, 3, 4}))), y(column("y", numbers({1, 2, 3, 4})));
    std::unique_ptr<MatrixData> lith(column("lith", {"sand", "shale", "sand", "coal"}, QVariant::String));
    std::unique_ptr<MatrixData> tint(column("tint", {QColor(Qt::red), QColor(Qt::blue), QColor(Qt::red), blank},
                                            QVariant::Color));
    QMap<int, QVariant> cn, sn;
    QMap<int, QColor> cc, sc;
    Model m;
    m.takeNewDataSet(1, Model::HighlightSelected, x.get(), y.get(), tint.get(), lith.get(), true, {}, cn, cc, sn, sc);
    QCOMPARE(m.rowCount(), 4);
    QCOMPARE(sn.size(), 3);
    QCOMPARE(cn.size(), 2);
    QColor c;
    const int sand = m.getSymbolColor(0, c);
    // Symbol id from the symbol classes, colour from the colour classes.
    QCOMPARE(m.getColor(2, c), sand);
    QCOMPARE(c, QColor(Qt::red));
    QCOMPARE(m.getColorName(1).toString(), QColor(Qt::blue).name());
    QCOMPARE(m.setSelectedSymbol(sand, true), 2);
    QCOMPARE(selectedBits(m), (QList<int>{0, 2}));
    QCOMPARE(m.setSelectedSymbol(99, true), -1);
    m.clearSelection();
    int blueClass = -1;
    m.getColorAndSymbolInfo(1, c, blueClass);
    m.setSelectedColorClass(blueClass, true);
    QCOMPARE(selectedBits(m), QList<int>{1});
    QVERIFY(m.partSelection());
    m.changeColorClass(blueClass, Qt::green);
    m.getColor(1, c);
    QCOMPARE(c, QColor(Qt::green));
    m.getColor(0, c);
    QCOMPARE(c, QColor(Qt::red));
    // Row 3 has no colour class but is kept.
    int none = 0;
    m.getColorAndSymbolInfo(3, c, none);
    QCOMPARE(none, -1);
}

void TestRelationshipItemModel::itemModelSurface()
{
    std::unique_ptr<MatrixData> x(column("x", numbers({1, 2}))), y(column("y", numbers({3, 4})));
    std::unique_ptr<MatrixData> lith(column("lith", {"sand", "shale"}, QVariant::String));
    QMap<int, QVariant> cn, sn;
    QMap<int, QColor> cc, sc;
    Model m;
    QCOMPARE(m.rowCount(), 0);
    m.takeNewDataSet(1, Model::ShowAll, x.get(), y.get(), lith.get(), nullptr, false, {}, cn, cc, sn, sc);
    QCOMPARE(m.columnCount(), 4);
    QCOMPARE(m.data(m.index(1, 0), Qt::TextAlignmentRole).toInt(), 130);
    QVERIFY(!m.data(m.index(1, 0), Qt::EditRole).isValid());
    QVERIFY(!m.data(m.index(1, 1)).isValid());
    QCOMPARE(m.data(m.index(1, 2)).toString(), QStringLiteral("shale"));
    QCOMPARE(m.data(m.index(0, 3)).toString(), cc.value(0).name());
    QVERIFY(!m.data(QModelIndex()).isValid());
    QCOMPARE(m.headerData(0, Qt::Vertical).toString(), QStringLiteral("Ve"));
    QCOMPARE(m.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Ho"));
    QVERIFY(m.flags(m.index(0, 0)) & Qt::ItemIsEditable);

    QSignalSpy changed(&m, &QAbstractItemModel::dataChanged);
    const quint64 revision = m.dataRevision();
    QVERIFY(!m.setData(m.index(0, 0), QPointF(9, 9), Qt::DisplayRole));
    QVERIFY(m.setData(m.index(0, 0), QPointF(9, 9)));
    QVERIFY(m.dataRevision() != revision);
    QCOMPARE(m.data(m.index(0, 0)).toPointF(), QPointF(9, 9));
    QVERIFY(m.setData(m.index(0, 2), QStringLiteral("clay")));
    QCOMPARE(m.getColorName(0).toString(), QStringLiteral("clay"));
    QCOMPARE(changed.count(), 2);
    QVERIFY(!m.index(0, 0).parent().isValid());
    QCOMPARE(m.rowCount(m.index(0, 0)), 0);
}

void TestRelationshipItemModel::outlineStyles()
{
    Model m;
    QCOMPARE(m.pointStyle(), Model::Cross);
    for (int s = 0; s < 16; ++s) {
        m.setPointStyle(Model::PointStyle(s));
        QCOMPARE(m.outLinePointStyle(), s == 1 || s >= 8);
    }
}

void TestRelationshipItemModel::clusterLookups()
{
    Model m;
    QCOMPARE(m.clusterID(0), -1);
    QVERIFY(!m.clusterCentroids());
    std::unique_ptr<MatrixDataArray> fresh(m.findClusterCentroids("dip"));
    QCOMPARE(fresh->name(), QStringLiteral("dip"));
    QVERIFY(m.clusterCentroidSets().empty());
    QCOMPARE(m.tadpoleAttributeName(), QStringLiteral("None"));
    QCOMPARE(m.azimuth(0, nullptr), 99999.0);
    double out = 5.0;
    QVERIFY(!m.getTriangleAreaValue(0, out));
    QCOMPARE(out, 5.0);
    // The stress hooks give harmless values.
    double a = 1, b = 1, s = 1, n = 1;
    QColor c(Qt::red);
    m.slipDirection(10, 20, a, b, s, n, c, true);
    QVERIFY(a == 0 && b == 0 && s == 0 && n == 0 && !c.isValid());
    QVERIFY(!m.stressValueNode());
}

QTEST_GUILESS_MAIN(TestRelationshipItemModel)
#include "tst_qrelationshipitemmodel.moc"
