// Derived attributes written back into the sheet: where they land, what a reused column keeps,
// the fixed random sequence, and one undo action per call that gives the tree back exactly.
#include <MatrixData.h>
#include <QDataAnalyserDialog.h>
#include <QHistogramChartWidget.h>
#include <QRelationshipItemModel.h>
#include <QStereoChartWidget.h>
#include <TreeBytes.h>
#include <UnitRegistry.h>

#include <QtTest>

#include <functional>
#include <memory>

using namespace rkBase;

namespace {
constexpr int kRows = 8;

MatrixData* addColumn(MatrixData* group, const QString& name, QVariant::Type type,
                      const std::function<QVariant(int)>& value)
{
    auto* c = new MatrixData(name, kRows, 1, type, true);
    for (int r = 0; r < kRows; ++r)
        c->setValue(r, 0, value(r));
    group->appendChild(c, false);
    return c;
}

// One well of eight rows: dips and azimuths, depths, and the "$V" visibility column.
void fillWell(MatrixData* root)
{
    auto* well = new MatrixData(QStringLiteral("Well"), -1, -1, QVariant::String, true);
    root->appendChild(well, true);
    addColumn(well, QStringLiteral("dip"), QVariant::Double, [](int r) { return 10.0 + 5.0 * r; });
    addColumn(well, QStringLiteral("azimuth"), QVariant::Double, [](int r) { return 40.0 * r; });
    addColumn(well, QStringLiteral("depth"), QVariant::Double, [](int r) { return 100.0 + 10.0 * r; });
    addColumn(well, QStringLiteral("$V"), QVariant::Bool, [](int) { return true; });
}

MatrixData* group(MatrixData* root, const QString& name)
{
    for (MatrixData* c : root->children())
        if (c->name() == name)
            return c;
    return nullptr;
}

MatrixData* columnIn(MatrixData* root, const QString& groupName, const QString& name)
{
    MatrixData* g = group(root, groupName);
    if (!g)
        return nullptr;
    for (MatrixData* c : g->children())
        if (c->name() == name)
            return c;
    return nullptr;
}

MatrixData* node(MatrixData* root, const char* name)
{
    return root->getNodeFromName(QString::fromLatin1(name));
}
} // namespace

class TestDerivedAttributes : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();
    void rotatedTwiceOverwritesTheSameColumns();
    void filteredRowsKeepOldValues_data();
    void filteredRowsKeepOldValues();
    void randomOrientationsAreFixed();
    void resultsLandAtTableRows_data();
    void resultsLandAtTableRows();
    void decimationTargets_data();
    void decimationTargets();
    void undoRestoresTheTree_data();
    void undoRestoresTheTree();
    void fieldDataSheet();
    void badInput_data();
    void badInput();
    void panelsReachTheSlots_data();
    void panelsReachTheSlots();

private:
    // Loads a stand-alone model with dip against the given column, as a panel would.
    void load(QRelationshipItemModel& model, const char* y);
    void run(const QString& action);

    UnitRegistry m_registry;
    std::unique_ptr<QDataAnalyserDialog> m_dialog;
    QRelationshipItemModel m_model;
    MatrixData* m_root = nullptr;
};

// One window for all cases (building it is the slow part); every case starts from a new well.
void TestDerivedAttributes::initTestCase()
{
    m_dialog = std::make_unique<QDataAnalyserDialog>();
    m_root = m_dialog->dataRoot();
    m_root->setRegistry(&m_registry);
    fillWell(m_root);
    m_dialog->initialize(QStringLiteral("test"), nullptr, &m_registry, Qt::Horizontal, false, true, false, false, true,
                         false, 1, false, false);
}

void TestDerivedAttributes::init()
{
    m_root->clearUndoActions();
    while (m_root->childCount() > 0) {
        MatrixData* child = m_root->child(0);
        m_root->removeChild(child);
        delete child;
    }
    m_root->setSelected(true, false);
    fillWell(m_root);
    m_dialog->updateAllViews(false, false);
    m_dialog->stereoChart()->model()->takeNewDataSet(node(m_root, "dip"), node(m_root, "azimuth"),
                                                      QRelationshipItemModel::ShowAll);
}

void TestDerivedAttributes::cleanup()
{
    m_model.clearData();
    m_model.deleteIntervalBoundaries();
}

void TestDerivedAttributes::cleanupTestCase()
{
    m_dialog.reset();
}

void TestDerivedAttributes::load(QRelationshipItemModel& model, const char* y)
{
    model.setDataRoot(m_root);
    model.takeNewDataSet(node(m_root, "dip"), node(m_root, y), QRelationshipItemModel::ShowAll);
}

// The calls under test by name, each with the inputs a panel would hand over.
void TestDerivedAttributes::run(const QString& action)
{
    if (action == QLatin1String("rotated")) {
        m_dialog->createRotatedAttributes();
    } else if (action == QLatin1String("random")) {
        m_dialog->createRandomOrientationAttributes();
    } else if (action == QLatin1String("cluster")) {
        load(m_model, "depth");
        QVERIFY(m_model.buildClusters_KML(QStringLiteral("k2"), 2));
        m_dialog->createClusterAttribute(QStringLiteral("k2"), &m_model);
    } else if (action == QLatin1String("bias")) {
        load(m_model, "azimuth");
        m_model.setScanline(10.0, 90.0, 5.0);
        m_dialog->createBiasWeightAttribute(QStringLiteral("Bias Weights"), &m_model);
    } else if (action.startsWith(QLatin1String("decimation"))) {
        load(m_model, "depth");
        m_model.generateAquidistantIntervalFilter(25.0, 100.0, 170.0);
        m_model.generateDataDecimation();
        m_dialog->createDataDecimationAttribute(&m_model, true, action.endsWith(QLatin1String("original")), false,
                                                node(m_root, "dip"));
    } else if (action == QLatin1String("counts")) {
        load(m_model, "depth");
        m_model.generateAquidistantIntervalFilter(25.0, 100.0, 170.0);
        m_model.generateDataDecimation();
        m_dialog->createDataDecimationAttribute(&m_model, false, false, true, node(m_root, "dip"));
    } else if (action == QLatin1String("field data")) {
        m_dialog->initializeFieldDataSheet(true);
    } else {
        QFAIL(qPrintable(action));
    }
}

void TestDerivedAttributes::rotatedTwiceOverwritesTheSameColumns()
{
    QRelationshipItemModel* model = m_dialog->stereoChart()->model();
    m_dialog->createRotatedAttributes();
    const int leafs = m_root->leafs().size();
    for (int r = 0; r < kRows; ++r)
        model->data()->setValue(r, 0, QPointF(r + 0.5, 300.0 - r));
    model->touchData();
    m_dialog->createRotatedAttributes();

    QCOMPARE(m_root->leafs().size(), leafs);
    QCOMPARE(group(m_root, QStringLiteral("Orientation Data"))->childCount(), 2);
    MatrixData* dip = columnIn(m_root, QStringLiteral("Orientation Data"), QStringLiteral("Rotated:Dip"));
    MatrixData* azimuth = columnIn(m_root, QStringLiteral("Orientation Data"), QStringLiteral("Rotated:Dip Azimuth"));
    QVERIFY(dip && azimuth);
    QCOMPARE(dip->unitCategory(), QString::fromStdString(UnitRegistry::CATEGORY_ORIENTATION));
    for (int r = 0; r < kRows; ++r) {
        QCOMPARE(dip->value(r, 0).toDouble(), r + 0.5);
        QCOMPARE(azimuth->value(r, 0).toDouble(), 300.0 - r);
    }
    QCOMPARE(dip->maxValue().toDouble(), kRows - 0.5);
}

void TestDerivedAttributes::filteredRowsKeepOldValues_data()
{
    QTest::addColumn<int>("displayType");
    QTest::addColumn<QList<int>>("selected");
    QTest::addColumn<QList<int>>("rewritten");
    const int highlight = QRelationshipItemModel::HighlightSelected;
    const int showAll = QRelationshipItemModel::ShowAll;
    QTest::newRow("highlight, two selected") << highlight << QList<int>{1, 6} << QList<int>{1, 6};
    QTest::newRow("highlight, none selected") << highlight << QList<int>{} << QList<int>{};
    // Only highlighting filters: with every point shown the selection does not matter.
    QTest::newRow("show all, two selected") << showAll << QList<int>{1, 6} << QList<int>{0, 1, 2, 3, 4, 5, 6, 7};
}

void TestDerivedAttributes::filteredRowsKeepOldValues()
{
    QFETCH(int, displayType);
    QFETCH(QList<int>, selected);
    QFETCH(QList<int>, rewritten);
    QRelationshipItemModel* model = m_dialog->stereoChart()->model();
    m_dialog->createRotatedAttributes();
    for (int r = 0; r < kRows; ++r)
        model->data()->setValue(r, 0, QPointF(80.0, 1.0 + r));
    model->touchData();
    model->setDisplayType(QRelationshipItemModel::DisplayType(displayType));
    model->clearSelection();
    model->setPartSelection(true);
    for (int r : selected)
        model->setSelected(r, true);
    m_dialog->createRotatedAttributes();

    MatrixData* dip = columnIn(m_root, QStringLiteral("Orientation Data"), QStringLiteral("Rotated:Dip"));
    MatrixData* azimuth = columnIn(m_root, QStringLiteral("Orientation Data"), QStringLiteral("Rotated:Dip Azimuth"));
    for (int r = 0; r < kRows; ++r) {
        const bool fresh = rewritten.contains(r);
        QCOMPARE(dip->value(r, 0).toDouble(), fresh ? 80.0 : 10.0 + 5.0 * r);
        QCOMPARE(azimuth->value(r, 0).toDouble(), fresh ? 1.0 + r : 40.0 * r);
    }
}

void TestDerivedAttributes::randomOrientationsAreFixed()
{
    // The first three pairs of the generator, computed apart from this code.
    const double dips[] = {0.32493517091578245, 69.6556948380256, 73.91280629404513};
    const double azimuths[] = {39.86093380485217, 150.0832535675921, 355.30641795026753};
    for (int pass = 0; pass < 2; ++pass) {
        m_dialog->createRandomOrientationAttributes();
        MatrixData* dip = columnIn(m_root, QStringLiteral("Orientation Data"), QStringLiteral("Random:Dip"));
        MatrixData* azimuth = columnIn(m_root, QStringLiteral("Orientation Data"), QStringLiteral("Random:Dip Azimuth"));
        QVERIFY(dip && azimuth);
        QCOMPARE(dip->rowCount(), kRows);
        for (int r = 0; r < 3; ++r) {
            QCOMPARE(dip->value(r, 0).toDouble(), dips[r]);
            QCOMPARE(azimuth->value(r, 0).toDouble(), azimuths[r]);
        }
    }
    QCOMPARE(group(m_root, QStringLiteral("Orientation Data"))->childCount(), 2);
}

void TestDerivedAttributes::resultsLandAtTableRows_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("column");
    QTest::newRow("cluster") << "cluster" << "Cluster Distributions" << "k2";
    QTest::newRow("bias") << "bias" << "Orientation Data" << "Bias Weights";
}

// Model rows come from the table rows that held both values: a blank dip drops row 2, so every
// later model row lands one row further down the sheet.
void TestDerivedAttributes::resultsLandAtTableRows()
{
    QFETCH(QString, action);
    QFETCH(QString, group);
    QFETCH(QString, column);
    node(m_root, "dip")->setValue(2, 0, QVariant());
    run(action);
    MatrixData* c = columnIn(m_root, group, column);
    QVERIFY(c);
    QVERIFY(!c->isValueValid(2, 0));
    double total = 0.0;
    const int count = m_model.totalBiasWeight(total);
    for (int r = 0; r < m_model.rowCount(); ++r) {
        const int row = m_model.tableRow(r);
        QCOMPARE(row, r < 2 ? r : r + 1);
        const double expected = action == QLatin1String("cluster") ? m_model.clusterID(r)
                                                                   : m_model.biasCorrection(r, count, total);
        QCOMPARE(c->value(row, 0).toDouble(), expected);
    }
}

void TestDerivedAttributes::decimationTargets_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("withGroup");
    QTest::addColumn<QStringList>("columns");
    QTest::addColumn<QString>("written");
    QTest::newRow("averages") << "decimation" << true << QStringList{"Decimated:dip", "Decimated:azimuth"}
                              << "Decimated:dip";
    QTest::newRow("counts") << "counts" << true << QStringList{"Decimated:dip_Count"} << "Decimated:dip_Count";
    QTest::newRow("averages replace the original") << "decimation original" << false << QStringList{} << "dip";
}

void TestDerivedAttributes::decimationTargets()
{
    QFETCH(QString, action);
    QFETCH(bool, withGroup);
    QFETCH(QStringList, columns);
    QFETCH(QString, written);
    const int leafs = m_root->leafs().size();
    run(action);
    MatrixData* g = group(m_root, QStringLiteral("Data Decimation"));
    QCOMPARE(g != nullptr, withGroup);
    QCOMPARE(m_root->leafs().size(), leafs + columns.size());
    for (const QString& name : columns)
        QVERIFY2(columnIn(m_root, QStringLiteral("Data Decimation"), name), qPrintable(name));
    // One value per interval with points, at the table row nearest to the interval's mean depth.
    MatrixData* target = m_root->getNodeFromName(written);
    const bool counts = action == QLatin1String("counts");
    const MatrixData* results = counts ? m_model.decimationCount() : m_model.decimationData();
    QCOMPARE(int(m_model.decimationTableRows().size()), 3);
    for (int k = 0; k < 3; ++k) {
        const int row = m_model.decimationTableRows()[std::size_t(k)];
        QCOMPARE(target->value(row, 0).toDouble(), results->value(k, 0).toPointF().x());
    }
    QVERIFY(!m_root->isSelected());
}

void TestDerivedAttributes::undoRestoresTheTree_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<bool>("again");
    for (const char* a : {"rotated", "random", "cluster", "bias", "decimation", "decimation original", "counts"}) {
        QTest::newRow(a) << a << false;
        QTest::newRow(qPrintable(QStringLiteral("%1, columns reused").arg(a))) << a << true;
    }
    QTest::newRow("field data") << "field data" << false;
}

// Undo takes a call back to the last bit, a column or group it made included, and redo brings
// the call's result back just as exactly.
void TestDerivedAttributes::undoRestoresTheTree()
{
    QFETCH(QString, action);
    QFETCH(bool, again);
    if (again) {
        run(action);
        // Make the reused cells differ from what the second call writes.
        for (MatrixData* leaf : m_root->leafs())
            if (leaf->parent()->name() != QLatin1String("Well"))
                for (int r = 0; r < leaf->rowCount(); ++r)
                    leaf->setValue(r, 0, 12345.0);
    }
    const QByteArray before = treeBytes(*m_root);
    const int actions = m_root->sizeUndoActions();
    run(action);
    const QByteArray after = treeBytes(*m_root);
    QVERIFY(after != before);
    QCOMPARE(m_root->sizeUndoActions(), actions + 1);

    QVERIFY(m_root->undoLastAction());
    QCOMPARE(treeBytes(*m_root), before);
    QVERIFY(m_root->redoNextAction());
    QCOMPARE(treeBytes(*m_root), after);
    QVERIFY(m_root->undoLastAction());
    QCOMPARE(treeBytes(*m_root), before);
}

void TestDerivedAttributes::fieldDataSheet()
{
    m_dialog->initializeFieldDataSheet(true);
    m_dialog->initializeFieldDataSheet(true);
    MatrixData* sheet = group(m_root, QStringLiteral("Field Data"));
    QVERIFY(sheet && sheet->isSelected());
    QVERIFY(group(m_root, QStringLiteral("Well")));
    QCOMPARE(m_root->name(), QStringLiteral("Data Root"));
    QStringList names;
    for (MatrixData* c : sheet->children()) {
        names << c->name();
        QCOMPARE(c->rowCount(), 1);
    }
    QCOMPARE(names, (QStringList{"X", "Y", "Z", "dip", "azimuth", "strike", "Name", "Day", "color", "pitch",
                                 "lineation direction", "Type"}));
    QCOMPARE(sheet->child(8)->cellType(), QVariant::Color);
    QCOMPARE(sheet->child(8)->interfaceName(), QStringLiteral("Colour"));
    QCOMPARE(sheet->child(10)->interfaceName(), QStringLiteral("Lineation Direction"));
    QCOMPARE(sheet->child(3)->unitCategory(), QString::fromStdString(UnitRegistry::CATEGORY_ORIENTATION));
}

void TestDerivedAttributes::badInput_data()
{
    QTest::addColumn<QString>("input");
    QTest::newRow("no data in the tree") << "no data";
    QTest::newRow("model without a data set") << "empty model";
    QTest::newRow("reused column of another type") << "text column";
    QTest::newRow("name used in another group") << "name elsewhere";
    QTest::newRow("group name held by a column") << "group name elsewhere";
}

void TestDerivedAttributes::badInput()
{
    QFETCH(QString, input);
    MatrixData* well = group(m_root, QStringLiteral("Well"));
    if (input == QLatin1String("no data")) {
        for (MatrixData* leaf : m_root->leafs())
            leaf->removeRowsFromEachColumn();
        const QByteArray before = treeBytes(*m_root);
        for (const char* a : {"rotated", "random", "decimation", "counts"})
            run(QString::fromLatin1(a));
        m_dialog->createClusterAttribute(QStringLiteral("k2"), m_dialog->stereoChart()->model());
        m_dialog->createBiasWeightAttribute(QStringLiteral("Bias Weights"), m_dialog->stereoChart()->model());
        m_dialog->createMeasuredDepth();
        QCOMPARE(treeBytes(*m_root), before);
        QCOMPARE(m_root->sizeUndoActions(), 0);
    } else if (input == QLatin1String("empty model")) {
        const QByteArray before = treeBytes(*m_root);
        QRelationshipItemModel empty;
        m_dialog->createClusterAttribute(QStringLiteral("k2"), &empty);
        m_dialog->createBiasWeightAttribute(QStringLiteral("Bias Weights"), &empty);
        m_dialog->createDataDecimationAttribute(&empty, true, false, false, node(m_root, "dip"));
        m_dialog->createClusterAttribute(QStringLiteral("k2"), nullptr);
        m_dialog->createDataDecimationAttribute(nullptr, true, false, false, nullptr);
        QCOMPARE(treeBytes(*m_root), before);
        QCOMPARE(m_root->sizeUndoActions(), 0);
    } else if (input == QLatin1String("text column")) {
        // A text column takes the numbers as text; a colour column takes none and keeps its
        // colours. Either way undo brings the user's cells back.
        auto* g = new MatrixData(QStringLiteral("Orientation Data"), -1, -1, QVariant::String, true);
        m_root->appendChild(g, true);
        addColumn(g, QStringLiteral("Rotated:Dip"), QVariant::String, [](int r) { return QStringLiteral("t%1").arg(r); });
        addColumn(g, QStringLiteral("Rotated:Dip Azimuth"), QVariant::Color, [](int) { return QColor(Qt::red); });
        const QByteArray before = treeBytes(*m_root);
        m_dialog->createRotatedAttributes();
        QCOMPARE(g->childCount(), 2);
        QCOMPARE(g->child(0)->value(3, 0).toString(), QStringLiteral("25"));
        QCOMPARE(g->child(1)->value(3, 0).value<QColor>(), QColor(Qt::red));
        QVERIFY(m_root->undoLastAction());
        QCOMPARE(treeBytes(*m_root), before);
    } else if (input == QLatin1String("name elsewhere")) {
        MatrixData* users = addColumn(well, QStringLiteral("Rotated:Dip"), QVariant::Double, [](int) { return 7.0; });
        m_dialog->updateAllViews(false, false);
        const QByteArray mine = treeBytes(*users);
        m_dialog->createRotatedAttributes();
        m_dialog->createRotatedAttributes();
        QCOMPARE(treeBytes(*users), mine);
        QVERIFY(columnIn(m_root, QStringLiteral("Orientation Data"), QStringLiteral("Rotated:Dip_1")));
        QCOMPARE(group(m_root, QStringLiteral("Orientation Data"))->childCount(), 2);
    } else if (input == QLatin1String("group name held by a column")) {
        addColumn(well, QStringLiteral("Orientation Data"), QVariant::Double, [](int) { return 7.0; });
        m_dialog->createRandomOrientationAttributes();
        m_dialog->createRandomOrientationAttributes();
        QVERIFY(columnIn(m_root, QStringLiteral("Orientation Data_1"), QStringLiteral("Random:Dip")));
        QCOMPARE(well->childCount(), 5);
        QCOMPARE(m_root->childCount(), 2);
    }
}

void TestDerivedAttributes::panelsReachTheSlots_data()
{
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<QString>("column");
    QTest::newRow("stereo rotation") << "stereo" << "createRotatedAttributes" << "Rotated:Dip";
    QTest::newRow("stereo bias") << "stereo" << "createBiasWeightAttribute" << "w";
    QTest::newRow("stereo cluster") << "stereo" << "createClusterAttribute" << "w";
    QTest::newRow("histogram random") << "histogram" << "createRandomOrientation" << "Random:Dip";
}

void TestDerivedAttributes::panelsReachTheSlots()
{
    QFETCH(QString, panel);
    QFETCH(QString, signal);
    QFETCH(QString, column);
    QObject* source = panel == QLatin1String("stereo") ? static_cast<QObject*>(m_dialog->stereoChart())
                                                       : static_cast<QObject*>(m_dialog->histogramChart());
    QRelationshipItemModel* model = m_dialog->stereoChart()->model();
    if (signal == QLatin1String("createClusterAttribute"))
        QVERIFY(model->buildClusters_KML_ForStereoProjection(column, 2));
    const QByteArray name = signal.toLatin1();
    if (column == QLatin1String("w"))
        QVERIFY(QMetaObject::invokeMethod(source, name.constData(), Q_ARG(QString, column),
                                          Q_ARG(QRelationshipItemModel*, model)));
    else
        QVERIFY(QMetaObject::invokeMethod(source, name.constData()));
    QVERIFY(m_root->getNodeFromName(column));
    QCOMPARE(m_root->sizeUndoActions(), 1);
}

QTEST_MAIN(TestDerivedAttributes)
#include "tst_derivedattributes.moc"
