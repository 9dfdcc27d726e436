// The lines of a depth line field: ordered insert with its distance rule, picking with hidden
// types, the two kinds of erase, moves and renames of the selection; and the model's list of
// scenarios with its one active entry.
#include <DepthLineField.h>
#include <QRelationshipItemModel.h>

#include <QtTest>

#include <memory>

using namespace rkBase;
using DLF = DepthLineField;

Q_DECLARE_METATYPE(std::vector<double>)
Q_DECLARE_METATYPE(std::vector<int>)

namespace {
// A field filled in the given order, line i named "L<depth>".
std::unique_ptr<DLF> field(const std::vector<double>& depths, const std::vector<DLF::DataType>& types = {})
{
    std::unique_ptr<DLF> f(new DLF(QStringLiteral("S")));
    for (std::size_t i = 0; i < depths.size(); ++i)
        f->insertHorizontalLine(double(i), depths[i], QStringLiteral("L%1").arg(depths[i]), QColor(Qt::blue),
                                i < types.size() ? types[i] : DLF::Horizon, 0.5, QPointF(10.0, 20.0), int(i) + 100);
    return f;
}

// Every vector of a line stays parallel to the depths.
bool parallel(const DLF& f)
{
    const std::size_t n = f.lineDepths().size();
    return f.linesX().size() == n && f.lineNames().size() == n && f.lineColors().size() == n
           && f.lineTypes().size() == n && f.selected().size() == n && f.lineOrientations().size() == n
           && f.originalRowPos().size() == n && f.originalDepthChanged().size() == n;
}
} // namespace

class TestDepthLineField : public QObject
{
    Q_OBJECT
private slots:
    void typeTexts_data();
    void typeTexts();
    void insert_data();
    void insert();
    void insertKeepsRowsWithTheirDepth();
    void insertBeforeLeavesModified();
    void pick_data();
    void pick();
    void eraseWithinEps_data();
    void eraseWithinEps();
    void erasePickedLineTakesLowestIndex();
    void moveRenameRecolour();
    void clearOriginalRowPos();
    void scenarios();
    void structuralTopsFillsTheList();
    void intervalBoundariesSignal();
};

void TestDepthLineField::typeTexts_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("back"); // the type the text maps to
    QTest::addColumn<bool>("structural");
    QTest::newRow("crestal") << 0 << "Crestal_Plane" << 0 << true;
    QTest::newRow("axial") << 1 << "Axial_Plane" << 1 << true;
    QTest::newRow("inflection") << 2 << "Inflection_Plane" << 2 << true;
    QTest::newRow("horizon") << 3 << "Horizon" << 3 << false;
    QTest::newRow("fault") << 4 << "Fault" << 4 << false;
    QTest::newRow("boundary reads as horizon") << 5 << "Horizon" << 3 << false;
    QTest::newRow("top") << 6 << "Top" << 6 << true;
}

void TestDepthLineField::typeTexts()
{
    QFETCH(int, number);
    QFETCH(QString, text);
    QFETCH(int, back);
    QFETCH(bool, structural);
    QCOMPARE(DLF::type(DLF::DataType(number)), text);
    QCOMPARE(int(DLF::type(text)), back);
    QCOMPARE(DLF::isStructuralType(text), structural);
    QCOMPARE(int(DLF::type(text.toLower())), int(DLF::Horizon)); // exact match only
    QCOMPARE(DLF::isStructuralType(text + QLatin1Char(' ')), false);
}

void TestDepthLineField::insert_data()
{
    QTest::addColumn<std::vector<double>>("inserted"); // eps 0.5 each time
    QTest::addColumn<std::vector<double>>("expected");
    QTest::newRow("ascending") << std::vector<double>{1, 2, 3} << std::vector<double>{1, 2, 3};
    QTest::newRow("descending") << std::vector<double>{3, 2, 1} << std::vector<double>{1, 2, 3};
    QTest::newRow("middle") << std::vector<double>{1, 3, 2} << std::vector<double>{1, 2, 3};
    QTest::newRow("near the top refused") << std::vector<double>{1, 5, 0.6} << std::vector<double>{1, 5};
    QTest::newRow("near the middle refused") << std::vector<double>{1, 3, 5, 3.49} << std::vector<double>{1, 3, 5};
    QTest::newRow("near the end refused") << std::vector<double>{1, 5, 5.4} << std::vector<double>{1, 5};
    QTest::newRow("exactly eps apart kept") << std::vector<double>{1, 1.5} << std::vector<double>{1, 1.5};
    QTest::newRow("same depth refused") << std::vector<double>{2, 2} << std::vector<double>{2};
    QTest::newRow("not a number refused") << std::vector<double>{2, qQNaN(), 1} << std::vector<double>{1, 2};
}

void TestDepthLineField::insert()
{
    QFETCH(std::vector<double>, inserted);
    QFETCH(std::vector<double>, expected);
    auto f = field(inserted);
    QCOMPARE(f->lineDepths(), expected);
    QVERIFY(parallel(*f));
}

void TestDepthLineField::insertKeepsRowsWithTheirDepth()
{
    DLF f(QStringLiteral("S"));
    f.insertHorizontalLine(1.0, 30.0, QStringLiteral("c"), Qt::red, DLF::Fault, 0.1, QPointF(30, 300), 3);
    f.insertHorizontalLine(2.0, 10.0, QStringLiteral("a"), Qt::green, DLF::Top, 0.1, QPointF(10, 100), 1);
    f.insertHorizontalLine(3.0, 20.0, QStringLiteral("b"), Qt::blue, DLF::AxialPlane, 0.1, QPointF(20, 200), 2);
    QCOMPARE(f.lineNames(), (std::vector<QString>{"a", "b", "c"}));
    QCOMPARE(f.linesX(), (std::vector<double>{2, 3, 1}));
    QCOMPARE(f.lineColors(), (std::vector<QColor>{Qt::green, Qt::blue, Qt::red}));
    QCOMPARE(f.lineTypes(), (std::vector<DLF::DataType>{DLF::Top, DLF::AxialPlane, DLF::Fault}));
    QCOMPARE(f.lineOrientations(), (std::vector<QPointF>{{10, 100}, {20, 200}, {30, 300}}));
    QCOMPARE(f.originalRowPos(), (std::vector<int>{1, 2, 3}));
    QVERIFY(!f.isSomethingSelected());
}

void TestDepthLineField::insertBeforeLeavesModified()
{
    DLF f(QStringLiteral("S"));
    QVERIFY(!f.modified());
    f.insertHorizontalLine(0, 10, QString(), Qt::red, DLF::Top, 0.1, QPointF(), -1);
    QVERIFY(f.modified()); // appended
    f.setModified(false);
    f.insertHorizontalLine(0, 5, QString(), Qt::red, DLF::Top, 0.1, QPointF(), -1);
    QVERIFY(!f.modified()); // inserted before a line
    f.insertHorizontalLine(0, 50, QString(), Qt::red, DLF::Top, 0.1, QPointF(), -1);
    QVERIFY(f.modified()); // appended past the end
}

void TestDepthLineField::pick_data()
{
    QTest::addColumn<bool>("horizons");
    QTest::addColumn<bool>("planes");
    QTest::addColumn<bool>("faults");
    QTest::addColumn<double>("y");
    QTest::addColumn<std::vector<int>>("expected");
    // Lines at 10 (Horizon), 10.2 (Fault), 10.4 (Crestal_Plane), 10.6 (Top), 20 (Top); eps 1.
    QTest::newRow("all shown") << true << true << true << 10.3 << std::vector<int>{0, 1, 2, 3};
    QTest::newRow("faults hidden") << true << true << false << 10.3 << std::vector<int>{0, 2, 3};
    QTest::newRow("horizons hidden") << false << true << true << 10.3 << std::vector<int>{1, 2, 3};
    QTest::newRow("planes hidden") << true << false << true << 10.3 << std::vector<int>{0, 1, 3};
    QTest::newRow("all hidden, tops stay") << false << false << false << 10.3 << std::vector<int>{3};
    QTest::newRow("a horizon and a hidden fault") << true << true << false << 9.25 << std::vector<int>{0};
    QTest::newRow("distance eps is a miss") << true << true << true << 21.0 << std::vector<int>{};
    QTest::newRow("far below") << true << true << true << 19.5 << std::vector<int>{4};
}

void TestDepthLineField::pick()
{
    QFETCH(bool, horizons);
    QFETCH(bool, planes);
    QFETCH(bool, faults);
    QFETCH(double, y);
    QFETCH(std::vector<int>, expected);
    DLF f(QStringLiteral("S"));
    const std::vector<double> d{10, 10.2, 10.4, 10.6, 20};
    const std::vector<DLF::DataType> t{DLF::Horizon, DLF::Fault, DLF::CrestalPlane, DLF::Top, DLF::Top};
    for (std::size_t i = 0; i < d.size(); ++i)
        f.insertHorizontalLine(0, d[i], QString(), Qt::red, t[i], 0.01, QPointF(), -1);
    f.setShowHorizons(horizons);
    f.setShowStructuralPlanes(planes);
    f.setShowFaults(faults);
    const std::vector<int> hits = f.pickHorizontalLines(QPointF(0, y), 1.0);
    QCOMPARE(hits, expected);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(f.isSelected(i), std::find(expected.begin(), expected.end(), i) != expected.end());
    // A second pick adds to the selection.
    f.pickHorizontalLines(QPointF(0, 20.0), 0.1);
    QVERIFY(f.isSelected(4));
    for (int i : expected)
        QVERIFY(f.isSelected(i));
}

void TestDepthLineField::eraseWithinEps_data()
{
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("eps");
    QTest::addColumn<std::vector<double>>("left");
    QTest::newRow("one") << 2.1 << 0.5 << std::vector<double>{1, 3, 4};
    QTest::newRow("two, restarting") << 2.5 << 0.6 << std::vector<double>{1, 4};
    QTest::newRow("exactly eps stays") << 2.5 << 0.5 << std::vector<double>{1, 2, 3, 4};
    QTest::newRow("none") << 10.0 << 1.0 << std::vector<double>{1, 2, 3, 4};
    QTest::newRow("all") << 2.5 << 5.0 << std::vector<double>{};
}

void TestDepthLineField::eraseWithinEps()
{
    QFETCH(double, y);
    QFETCH(double, eps);
    QFETCH(std::vector<double>, left);
    auto f = field({1, 2, 3, 4});
    f->setModified(false);
    const bool erased = f->eraseHorizontalLines(QPointF(0, y), eps);
    QCOMPARE(erased, left.size() != 4);
    QCOMPARE(f->modified(), erased);
    QCOMPARE(f->lineDepths(), left);
    QCOMPARE(f->lineNames().size(), left.size());
    QCOMPARE(f->lineColors().size(), left.size());
    for (std::size_t i = 0; i < left.size(); ++i)
        QCOMPARE(f->lineNames()[i], QStringLiteral("L%1").arg(left[i]));
    // The vectors an interval filter does not use keep their length.
    QCOMPARE(f->linesX().size(), std::size_t(4));
    QCOMPARE(f->originalRowPos().size(), std::size_t(4));
}

void TestDepthLineField::erasePickedLineTakesLowestIndex()
{
    auto f = field({1, 2, 3});
    f->setModified(false);
    f->setSelected({2, 1, 7, -1});
    f->erasePickedLine();
    QCOMPARE(f->lineDepths(), (std::vector<double>{1, 3}));
    QCOMPARE(f->originalRowPos(), (std::vector<int>{100, 102}));
    QCOMPARE(f->deletedOriginalRowPos(), (std::vector<int>{101}));
    QVERIFY(f->modified());
    QVERIFY(!f->isSomethingSelected());
    QVERIFY(parallel(*f));
    // Nothing selected: nothing goes.
    f->erasePickedLine();
    QCOMPARE(f->lineDepths().size(), std::size_t(2));
}

void TestDepthLineField::moveRenameRecolour()
{
    auto f = field({1, 2, 3});
    QCOMPARE(f->getNameOfSelectedLine(), QString());
    QVERIFY(!f->getColourOfSelectedLine().isValid());
    f->setSelected({0, 2});
    QCOMPARE(f->getNameOfSelectedLine(), QStringLiteral("L1"));
    f->moveSelectedLines(QPointF(0.5, 10.0));
    QCOMPARE(f->lineDepths(), (std::vector<double>{11, 2, 13}));
    QCOMPARE(f->linesX(), (std::vector<double>{0.5, 1, 2.5}));
    QCOMPARE(f->originalDepthChanged(), (std::vector<bool>{true, false, true}));
    f->changePickedOrientation(QPointF(5, 6));
    QVERIFY(f->isSelected(0) && f->isSelected(2)); // selection stays
    QCOMPARE(f->lineOrientations()[2], QPointF(5, 6));
    QCOMPARE(f->lineOrientations()[1], QPointF(10, 20));
    f->changePickedLineColor(Qt::yellow);
    QVERIFY(!f->isSomethingSelected()); // selection cleared
    QCOMPARE(f->lineColors(), (std::vector<QColor>{Qt::yellow, Qt::blue, Qt::yellow}));
    f->setSelected({1});
    QCOMPARE(f->getColourOfSelectedLine(), QColor(Qt::blue));
    f->changePickedLineName(QStringLiteral("renamed"));
    QCOMPARE(f->lineNames()[1], QStringLiteral("renamed"));
    QVERIFY(!f->isSomethingSelected());
    f->updatePickedHorizon(1, 7.0);
    f->updatePickedHorizon(3, 9.0);
    f->updatePickedHorizon(-1, 9.0);
    QCOMPARE(f->lineDepths(), (std::vector<double>{11, 7, 13}));
}

void TestDepthLineField::clearOriginalRowPos()
{
    auto f = field({1, 2, 3});
    f->setSelected({0});
    f->moveSelectedLines(QPointF(0, 0.1));
    f->setSelected({0});
    f->erasePickedLine();
    f->setSelected({0});
    f->moveSelectedLines(QPointF(0, 0.1));
    f->clearOriginalRowPos();
    QCOMPARE(f->originalRowPos(), (std::vector<int>{-1, -1}));
    QCOMPARE(f->originalDepthChanged(), (std::vector<bool>{false, false}));
    QVERIFY(f->deletedOriginalRowPos().empty());
    f->clearAll();
    QVERIFY(f->lineDepths().empty() && parallel(*f) && !f->modified());
}

void TestDepthLineField::scenarios()
{
    QRelationshipItemModel model;
    QVERIFY(!model.hasStructuralTopsScenarios());
    model.addStructuralTopsSenario(QStringLiteral("A"));
    model.addStructuralTopsSenario(QStringLiteral("B"));
    model.addStructuralTopsSenario(QStringLiteral("A")); // uniqueness is the caller's matter
    QCOMPARE(model.activeScenario(), 2);
    QCOMPARE(model.structuralTopsSenarios().size(), std::size_t(3));
    model.activateStructuralTopsSenario(QStringLiteral("A"));
    QCOMPARE(model.activeScenario(), 0); // the first of that name
    model.activateStructuralTopsSenario(QStringLiteral("B"));
    QCOMPARE(model.structuralTops()->name(), QStringLiteral("B"));
    model.activateStructuralTopsSenario(QStringLiteral("C"));
    QCOMPARE(model.activeScenario(), 3);
    QCOMPARE(model.structuralTops()->name(), QStringLiteral("C"));

    model.activateStructuralTopsSenario(QStringLiteral("B"));
    std::unique_ptr<DepthLineField> taken(model.eraseActiveStructuralTopsSenario());
    QVERIFY(taken);
    QCOMPARE(taken->name(), QStringLiteral("B"));
    QCOMPARE(model.activeScenario(), 0);
    QCOMPARE(model.structuralTopsSenarios().size(), std::size_t(3));
    QCOMPARE(model.structuralTops()->name(), QStringLiteral("A"));
    while (model.hasStructuralTopsScenarios())
        std::unique_ptr<DepthLineField>(model.eraseActiveStructuralTopsSenario());
    QVERIFY(!model.eraseActiveStructuralTopsSenario());
    QCOMPARE(model.activeScenario(), 0);
}

void TestDepthLineField::structuralTopsFillsTheList()
{
    QRelationshipItemModel model;
    QCOMPARE(model.structuralTops()->name(), QStringLiteral("Scenario_0"));
    QCOMPARE(model.structuralTopsSenarios().size(), std::size_t(1));
    model.setActiveScenario(3);
    QCOMPARE(model.structuralTops()->name(), QStringLiteral("Scenario_3"));
    QCOMPARE(model.structuralTopsSenarios().size(), std::size_t(4));
    QCOMPARE(model.structuralTopsSenarios()[2]->name(), QStringLiteral("Scenario_2"));
    QCOMPARE(model.structuralTops(), model.structuralTops()); // no new entry on a second call
}

void TestDepthLineField::intervalBoundariesSignal()
{
    QRelationshipItemModel model;
    QSignalSpy spy(&model, &QRelationshipItemModel::manuellBinInserted);
    model.insertIntervalBoundary(10.0, 0.5);
    model.insertIntervalBoundary(5.0, 0.5);
    model.insertIntervalBoundary(5.2, 0.5); // refused
    QVERIFY(model.intervalFilter());
    QCOMPARE(model.intervalFilter()->name(), QStringLiteral("Interval Filter"));
    QCOMPARE(model.intervalFilter()->lineDepths(), (std::vector<double>{5, 10}));
    QCOMPARE(model.intervalFilter()->lineNames()[0], QStringLiteral("Boundary"));
    QCOMPARE(model.intervalFilter()->lineTypes()[0], DLF::IntervalBoundary);
    QCOMPARE(model.intervalFilter()->lineColors()[0], QColor(Qt::red));
    QCOMPARE(model.intervalFilter()->lineOrientations()[0], QPointF(-1, 0));
    model.eraseIntervalBoundary(QPointF(0, 5.1), 0.5);
    model.eraseIntervalBoundary(QPointF(0, 9.9), 0.5);
    QCOMPARE(spy.size(), 5);
    QList<bool> flags;
    for (const auto& args : spy)
        flags << args.at(0).toBool();
    QCOMPARE(flags, (QList<bool>{true, true, true, true, false}));
    model.deleteIntervalBoundaries();
    QVERIFY(model.intervalFilter()->lineDepths().empty());
    QVERIFY(!model.decimationData() && !model.decimationCount());
}

QTEST_GUILESS_MAIN(TestDepthLineField)
#include "tst_depthlinefield.moc"
