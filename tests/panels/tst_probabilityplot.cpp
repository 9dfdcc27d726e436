// The statistics report and the goodness-of-fit plots of the stereo panel: the report's HTML as
// the panel writes it, the normal quantile table, the sample quantiles read from a rotated model
// (whole degrees for the longitude, n from the selection count), the expected quantiles at their
// table rows, and the slopes that estimate the dispersion.
#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <QCrossPlot.h>
#include <QDataStatisticSummary.h>
#include <QProbabilityPlot.h>
#include <QRelationshipItemModel.h>
#include <RowSetMetaType.h>

#include <QSignalSpy>
#include <QTextDocument>
#include <QTextEdit>

#include <memory>
#include <QtTest>

#include <cmath>
#include <memory>

using namespace rkBase;

namespace {

constexpr double kDeg = 3.14159265358979323846 / 180.0;

// A model whose rotated copy is planted, so that each plot reads exactly the colatitudes and
// longitudes a test gives. The points themselves only supply the rows: a NaN dip leaves its table
// row out of the load, so model rows and table rows part.
class PlantedModel : public QRelationshipItemModel
{
public:
    // rotated[i] belongs to the i-th loaded row; an invalid QPointF (NaN) leaves it blank.
    void load(const QVector<double>& dips, const QVector<QPointF>& rotated, const std::vector<int>& selectedRows = {},
              DisplayType type = HighlightSelected)
    {
        m_x.reset(new MatrixData(QStringLiteral("dip"), dips.size(), 1, QVariant::Double));
        m_y.reset(new MatrixData(QStringLiteral("azimuth"), dips.size(), 1, QVariant::Double));
        for (int r = 0; r < dips.size(); ++r) {
            if (!std::isnan(dips[r]))
                m_x->setValue(r, 0, dips[r]);
            m_y->setValue(r, 0, 100.0);
        }
        takeNewDataSet(1, type, m_x.get(), m_y.get(), selectedRows);
        delete m_rotatedData;
        m_rotatedData = new MatrixDataArray(QStringLiteral("dip"), data()->rowCount(), 1, QVariant::PointF);
        for (int r = 0; r < rotated.size(); ++r)
            if (!std::isnan(rotated[r].x()))
                m_rotatedData->setValue(r, 0, QVariant(rotated[r]));
    }

private:
    std::unique_ptr<MatrixData> m_x, m_y;
};

QVector<double> flatDips(int n) { return QVector<double>(n, 30.0); }

// The standard normal quantile to full precision, from the complementary error function.
double referenceQuantile(double p)
{
    double lo = -40.0, hi = 40.0;
    for (int i = 0; i < 200; ++i) {
        const double mid = 0.5 * (lo + hi);
        (0.5 * std::erfc(-mid / std::sqrt(2.0)) < p ? lo : hi) = mid;
    }
    return 0.5 * (lo + hi);
}

QVariant cell(MatrixData* column, int row) { return column->value(row, 0); }

const QString kTableOpen = QStringLiteral("<table border=\"0\" cellpadding=\"0\" cellspacing=\"6\" width=\"100%\">");
const QString kHeading = QStringLiteral("<tr><td colspan=\"2\"><h1 style=\"font-size: large\">Summary of the "
                                        "Statistical Investigations of Spherical Data</h1></td></tr>");
QString row(const QString& label, const QString& value)
{
    return QStringLiteral("<tr><td style=\"white-space: nowrap;\">") + label
           + QStringLiteral(":</td><td style=\"white-space: nowrap;\" align=\"right\">") + value
           + QStringLiteral("</td></tr>");
}

} // namespace

class TestProbabilityPlot : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { registerRowSetMetaType(); }

    void summaryHtml_data();
    void summaryHtml();

    void normalTable();
    void normalTableKnownQuantiles_data();
    void normalTableKnownQuantiles();

    void sampleValues_data();
    void sampleValues();
    void quantilesSkipBlankAndFilteredRowsAndSort();

    void expectedQuantiles_data();
    void expectedQuantiles();
    void normalReferenceIsTheTablesInterpolation();
    void countComesFromTheSelection();
    void moreSamplesThanTheCountLeaveBlanksNotNaN();

    void slopesEstimateTheDispersion_data();
    void slopesEstimateTheDispersion();
    void unknownTypePlotsAsUniform();
    void noDataGivesNoSlope();
    void lassoCarriesTheType();
};

// ---- the report ----

void TestProbabilityPlot::summaryHtml_data()
{
    QTest::addColumn<QString>("script"); // lines: "doc name", "table title", "row label|value"
    QTest::addColumn<QString>("html");
    QTest::newRow("heading only") << QStringLiteral("doc Dips") << kTableOpen + kHeading + row("Observation Data", "Dips") + "</table>";
    QTest::newRow("sections")
        << QStringLiteral("doc Dips\ntable General Statistics\nrow Number of Points|12\ntable Fisher Distribution\n"
                          "row Dispersion (k value)|-----")
        << kTableOpen + kHeading + row("Observation Data", "Dips")
               + "<tr><th colspan=\"3\" align=\"left\"><br/>General Statistics</th></tr>" + row("Number of Points", "12")
               + "<tr><th colspan=\"3\" align=\"left\"><br/>Fisher Distribution</th></tr>"
               + row("Dispersion (k value)", "-----") + "</table>";
    // Substitution happens once: a label that looks like a placeholder stays as written.
    QTest::newRow("placeholders in the texts") << QStringLiteral("doc %1\nrow a %2|b %1")
                                               << kTableOpen + kHeading + row("Observation Data", "%1")
                                                      + row("a %2", "b %1") + "</table>";
}

void TestProbabilityPlot::summaryHtml()
{
    QFETCH(QString, script);
    QFETCH(QString, html);
    QDataStatisticSummary summary;
    for (const QString& line : script.split(QLatin1Char('\n'))) {
        const QString verb = line.section(QLatin1Char(' '), 0, 0);
        const QString rest = line.section(QLatin1Char(' '), 1);
        if (verb == QLatin1String("doc"))
            summary.newDocument(rest);
        else if (verb == QLatin1String("table"))
            summary.newTable(rest);
        else
            summary.appendRow(rest.section(QLatin1Char('|'), 0, 0), rest.section(QLatin1Char('|'), 1));
    }
    QCOMPARE(summary.pendingHtml() + QStringLiteral("</table>"), html);
    summary.updateDocument();
    QCOMPARE(summary.documentHtml(), html);
    QVERIFY(summary.pendingHtml().isEmpty());
    // The edit shows that document, read-only.
    QCOMPARE(summary.textEdit()->document(), summary.document());
    QVERIFY(summary.textEdit()->isReadOnly());
    QVERIFY(summary.document()->toPlainText().contains(QStringLiteral("Observation Data:")));
    // The next report starts from nothing.
    summary.newDocument(QStringLiteral("next"));
    summary.updateDocument();
    QCOMPARE(summary.documentHtml(), kTableOpen + kHeading + row("Observation Data", "next") + "</table>");
}

// ---- the normal quantile table ----

void TestProbabilityPlot::normalTable()
{
    QProbabilityPlot plot(nullptr, nullptr, QStringLiteral("NORMAL"));
    MatrixData* table = nullptr;
    plot.inverse_normal_distribution(table);
    QVERIFY(table);
    std::unique_ptr<MatrixData> owner(table); // the caller's
    QCOMPARE(table->name(), QStringLiteral("inverse_normal_distribution"));
    QCOMPARE(table->rowCount(), 201);
    QCOMPARE(table->columnCount(), 2);
    // Every row but the last, through the three ranges of the approximation (relative error
    // 1.15e-9): a wrong coefficient shows here.
    for (int r = 0; r < 200; ++r) {
        const double p = table->value(r, 0).toDouble();
        QVERIFY(std::abs(p - (1e-05 + 0.005 * r)) < 1e-12);
        const double want = referenceQuantile(p), got = table->value(r, 1).toDouble();
        QVERIFY2(std::abs(got - want) <= 2e-9 * std::abs(want) + 1e-12,
                 qPrintable(QStringLiteral("p %1: %2, wanted %3").arg(p).arg(got, 0, 'g', 12).arg(want, 0, 'g', 12)));
    }
    // The step past 1 stops at 1, where none of the ranges applies: the quantile repeats.
    QCOMPARE(table->value(200, 0).toDouble(), 1.0);
    QCOMPARE(table->value(200, 1).toDouble(), table->value(199, 1).toDouble());
}

void TestProbabilityPlot::normalTableKnownQuantiles_data()
{
    QTest::addColumn<double>("p");
    QTest::addColumn<double>("quantile");
    QTest::addColumn<double>("tolerance");
    QTest::newRow("first row") << 1e-05 << -4.264891 << 1e-6;
    QTest::newRow("lower tail") << 0.025 << -1.959964 << 1e-4;
    QTest::newRow("median") << 0.5 << 0.0 << 1e-5;
    QTest::newRow("one sigma") << 0.841345 << 1.0 << 2e-4;
    QTest::newRow("upper tail") << 0.975 << 1.959964 << 1e-4;
}

void TestProbabilityPlot::normalTableKnownQuantiles()
{
    QFETCH(double, p);
    QFETCH(double, quantile);
    QFETCH(double, tolerance);
    QProbabilityPlot plot(nullptr, nullptr, QStringLiteral("NORMAL"));
    MatrixData* table = nullptr;
    plot.inverse_normal_distribution(table);
    std::unique_ptr<MatrixData> owner(table);
    const double got = table->getInterpolationValue(p, 0, 1);
    QVERIFY2(std::abs(got - quantile) <= tolerance, qPrintable(QString::number(got, 'g', 10)));
}

// ---- sample quantiles ----

void TestProbabilityPlot::sampleValues_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QPointF>("rotated"); // colatitude, longitude
    QTest::addColumn<double>("x");
    // The longitude is read in whole degrees.
    QTest::newRow("uniform 359.6 reads 360") << "UNIFORM" << QPointF(10, 359.6) << 1.0;
    QTest::newRow("uniform 180.5 reads 181") << "UNIFORM" << QPointF(10, 180.5) << 181.0 / 360.0;
    QTest::newRow("exponential 60") << "EXPONENTIAL" << QPointF(60, 359.6) << 0.5;
    QTest::newRow("normal") << "NORMAL" << QPointF(30, -45) << std::sqrt(0.5) * -45 * kDeg;
    QTest::newRow("normal unfolded") << "NORMAL" << QPointF(150, 10) << std::sqrt(0.5) * 10 * kDeg;
}

void TestProbabilityPlot::sampleValues()
{
    QFETCH(QString, type);
    QFETCH(QPointF, rotated);
    QFETCH(double, x);
    PlantedModel model;
    model.load(flatDips(1), {rotated});
    QProbabilityPlot plot(nullptr, nullptr, type);
    std::vector<gdfVertex> out;
    plot.createQuantile(&model, type, out);
    QCOMPARE(int(out.size()), 1);
    QVERIFY2(std::abs(out[0].x() - x) < 1e-12, qPrintable(QString::number(out[0].x(), 'g', 15)));
    QCOMPARE(out[0].y(), 0.0);
}

void TestProbabilityPlot::quantilesSkipBlankAndFilteredRowsAndSort()
{
    // Table rows 0..5; row 2 has no dip and is not loaded, so model rows 2.. sit one table row on.
    // Model row 3 (table row 4) has no rotated value; table row 5 is not selected.
    const QVector<double> dips = {30, 30, NAN, 30, 30, 30};
    const QVector<QPointF> rotated = {{40, 0}, {20, 0}, {30, 0}, {NAN, NAN}, {10, 0}};
    PlantedModel model;
    model.load(dips, rotated, {0, 1, 3, 4});
    QProbabilityPlot plot(nullptr, nullptr, QStringLiteral("EXPONENTIAL"));
    std::vector<gdfVertex> out;
    plot.createQuantile(&model, QStringLiteral("EXPONENTIAL"), out);
    QCOMPARE(int(out.size()), 3);
    // Ascending by value, each with the table row it came from.
    const double want[][2] = {{20, 1}, {30, 3}, {40, 0}};
    for (int i = 0; i < 3; ++i) {
        QVERIFY(std::abs(out[i].x() - (1 - std::cos(want[i][0] * kDeg))) < 1e-12);
        QCOMPARE(out[i].y(), want[i][1]);
    }
}

// ---- expected quantiles at their table rows ----

void TestProbabilityPlot::expectedQuantiles_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QVector<double>>("reference"); // by table row; NaN: blank
    QTest::addColumn<QVector<double>>("sample");
    // Four points; table row 1 has no dip. Colatitudes 40, 10, 30, 20 by model row, longitudes
    // 90, 270, 180, 0.
    const double nan = NAN;
    auto e = [](double i) { return std::log(4.0 / (4.0 - i + 0.5)); };
    auto c = [](double deg) { return 1.0 - std::cos(deg * kDeg); };
    QTest::newRow("uniform") << "UNIFORM" << QVector<double>{0.375, nan, 0.875, 0.625, 0.125}
                             << QVector<double>{0.25, nan, 0.75, 0.5, 0.0};
    QTest::newRow("exponential") << "EXPONENTIAL" << QVector<double>{e(4), nan, e(1), e(3), e(2)}
                                 << QVector<double>{c(40), nan, c(10), c(30), c(20)};
    // The normal reads its expected quantiles off the table: (i - 0.5) / n is 0.125, 0.375, ...
    auto s = [](double colat, double lon) { return std::sqrt(std::sin(colat * kDeg)) * lon * kDeg; };
    QTest::newRow("normal") << "NORMAL" << QVector<double>{0.3186, nan, -1.1503, 1.1503, -0.3186}
                            << QVector<double>{s(40, 90), nan, s(10, -90), s(30, 180), s(20, 0)};
}

void TestProbabilityPlot::expectedQuantiles()
{
    QFETCH(QString, type);
    QFETCH(QVector<double>, reference);
    QFETCH(QVector<double>, sample);
    PlantedModel model;
    const bool normal = type == QLatin1String("NORMAL");
    model.load({30, NAN, 30, 30, 30},
               {{40, 90}, {10, normal ? -90.0 : 270.0}, {30, 180}, {20, 0}}, {}, QRelationshipItemModel::ShowAll);
    QProbabilityPlot plot(nullptr, nullptr, type);
    plot.updateProbabilityPlot(&model);
    MatrixData* ref = plot.referenceQuantiles();
    MatrixData* smp = plot.sampleQuantiles();
    QVERIFY(ref && smp);
    const QString name = type.left(1) + type.mid(1).toLower() + QStringLiteral(" Distribution");
    QCOMPARE(ref->name(), name);
    QCOMPARE(ref->rowCount(), model.numberOfTableRows());
    QCOMPARE(ref->columnCount(), 1);
    for (int r = 0; r < reference.size(); ++r) {
        if (std::isnan(reference[r])) {
            QVERIFY(!cell(ref, r).isValid() && !cell(smp, r).isValid());
            continue;
        }
        const double tol = normal ? 1e-3 : 1e-12;
        QVERIFY2(std::abs(cell(ref, r).toDouble() - reference[r]) <= tol,
                 qPrintable(QStringLiteral("reference row %1: %2").arg(r).arg(cell(ref, r).toDouble())));
        QVERIFY2(std::abs(cell(smp, r).toDouble() - sample[r]) <= 1e-12,
                 qPrintable(QStringLiteral("sample row %1: %2").arg(r).arg(cell(smp, r).toDouble())));
    }
    // The chart shows the pairs: reference across, sample up.
    QCOMPARE(plot.horizontalDataSet(), ref);
    QCOMPARE(plot.verticalDataSet(), smp);
    QCOMPARE(plot.model()->numberOfSelectedPoints(), 4);
}

// The normal plot reads the expected quantile off the table once per point: every value must be
// the table's own interpolation, bit for bit, at (i - 0.5) / n.
void TestProbabilityPlot::normalReferenceIsTheTablesInterpolation()
{
    const int n = 1001;
    QVector<QPointF> rotated;
    for (int i = 0; i < n; ++i)
        rotated << QPointF(5.0 + (i * 37) % 170, -170.0 + (i * 53) % 340);
    PlantedModel model;
    model.load(flatDips(n), rotated, {}, QRelationshipItemModel::ShowAll);
    QProbabilityPlot plot(nullptr, nullptr, QStringLiteral("NORMAL"));
    plot.updateProbabilityPlot(&model);
    std::vector<gdfVertex> sorted;
    plot.createQuantile(&model, QStringLiteral("NORMAL"), sorted);
    QCOMPARE(int(sorted.size()), n);
    MatrixData* table = nullptr;
    plot.inverse_normal_distribution(table);
    const std::unique_ptr<MatrixData> keep(table);
    for (int i = 1; i <= n; ++i) {
        const int row = int(sorted[std::size_t(i - 1)].y());
        const double expected = table->getInterpolationValue((i - 0.5) / n, 0, 1);
        QCOMPARE(cell(plot.referenceQuantiles(), row).toDouble(), expected);
    }
}

void TestProbabilityPlot::countComesFromTheSelection()
{
    // Three selected rows, one without a rotated value: two samples, yet n is 3.
    PlantedModel model;
    model.load(flatDips(4), {{10, 0}, {20, 0}, {NAN, NAN}, {30, 0}}, {0, 1, 2});
    QCOMPARE(model.numberOfSelectedPoints(), 3);
    QProbabilityPlot plot(nullptr, nullptr, QStringLiteral("UNIFORM"));
    plot.updateProbabilityPlot(&model);
    MatrixData* ref = plot.referenceQuantiles();
    QCOMPARE(cell(ref, 0).toDouble(), 0.5 / 3);
    QCOMPARE(cell(ref, 1).toDouble(), 1.5 / 3);
    QVERIFY(!cell(ref, 2).isValid());
    QVERIFY(!cell(ref, 3).isValid()); // not selected
}

void TestProbabilityPlot::moreSamplesThanTheCountLeaveBlanksNotNaN()
{
    // Showing the selected rows only, every loaded row passes the filter, but n counts the
    // selection: drop a row from it after the load and three samples face n = 2.
    PlantedModel model;
    model.load(flatDips(3), {{10, 0}, {20, 0}, {30, 0}}, {0, 1, 2}, QRelationshipItemModel::ShowSelectedOnly);
    model.setSelected2(2, false);
    QCOMPARE(model.numberOfSelectedPoints(), 2);
    QProbabilityPlot plot(nullptr, nullptr, QStringLiteral("EXPONENTIAL"));
    const double slope = plot.updateProbabilityPlot(&model);
    MatrixData* ref = plot.referenceQuantiles();
    QCOMPARE(cell(ref, 0).toDouble(), std::log(2.0 / 1.5));
    QCOMPARE(cell(ref, 1).toDouble(), std::log(2.0 / 0.5));
    // The third has no expected quantile (ln of a negative number): blank, not NaN.
    QVERIFY(!cell(ref, 2).isValid());
    QVERIFY(std::isfinite(slope));
}

// ---- slopes ----

void TestProbabilityPlot::slopesEstimateTheDispersion_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<double>("slope");
    QTest::addColumn<double>("tolerance");
    // Fisher colatitudes for kappa 40: 1 - cos(theta) is exponential with mean 1/40.
    QTest::newRow("colatitude") << "EXPONENTIAL" << 1.0 / 40 << 1e-9;
    // Longitudes spread evenly round the circle: slope 1.
    QTest::newRow("longitude") << "UNIFORM" << 1.0 << 0.01;
    // The two-variable values normal with deviation 1/sqrt(kappa).
    QTest::newRow("two-variable") << "NORMAL" << 1.0 / std::sqrt(40.0) << 2e-3;
}

void TestProbabilityPlot::slopesEstimateTheDispersion()
{
    QFETCH(QString, type);
    QFETCH(double, slope);
    QFETCH(double, tolerance);
    const int n = 60;
    const double kappa = 40.0;
    QVector<QPointF> rotated;
    for (int k = n; k >= 1; --k) { // in no particular order of value
        const double u = (k - 0.5) / n;
        QPointF p;
        if (type == QLatin1String("EXPONENTIAL"))
            p = QPointF(std::acos(1.0 + std::log(1.0 - u) / kappa) / kDeg, 0.0);
        else if (type == QLatin1String("UNIFORM"))
            p = QPointF(10.0, 360.0 * u);
        else // sin(90) = 1: the value is the longitude in radians
            p = QPointF(90.0, referenceQuantile(u) / std::sqrt(kappa) / kDeg);
        rotated << p;
    }
    PlantedModel model;
    model.load(flatDips(n), rotated);
    QProbabilityPlot plot(nullptr, nullptr, type);
    const double got = plot.updateProbabilityPlot(&model);
    QVERIFY2(std::abs(got - slope) <= tolerance * std::abs(slope) || std::abs(got - slope) <= tolerance,
             qPrintable(QString::number(got, 'g', 12)));
}

void TestProbabilityPlot::unknownTypePlotsAsUniform()
{
    PlantedModel model;
    model.load(flatDips(3), {{10, 300}, {20, 100.6}, {30, 200}});
    QProbabilityPlot odd(nullptr, nullptr, QStringLiteral("weibull"));
    QProbabilityPlot uniform(nullptr, nullptr, QStringLiteral("UNIFORM"));
    QCOMPARE(odd.updateProbabilityPlot(&model), uniform.updateProbabilityPlot(&model));
    QCOMPARE(odd.referenceQuantiles()->name(), QStringLiteral("Uniform Distribution"));
    QCOMPARE(odd.sampleQuantiles()->name(), QStringLiteral("Sample Quantile"));
    for (int r = 0; r < 3; ++r)
        QCOMPARE(cell(odd.sampleQuantiles(), r), cell(uniform.sampleQuantiles(), r));
}

void TestProbabilityPlot::noDataGivesNoSlope()
{
    QProbabilityPlot plot(nullptr, nullptr, QStringLiteral("EXPONENTIAL"));
    PlantedModel full;
    full.load(flatDips(3), {{10, 0}, {20, 0}, {30, 0}});
    QVERIFY(plot.updateProbabilityPlot(&full) > 0.0);
    // A model with no rows must not hand back the slope of the data before it.
    QRelationshipItemModel empty;
    QCOMPARE(plot.updateProbabilityPlot(&empty), 99999.0);
    QCOMPARE(plot.referenceQuantiles()->rowCount(), 0);
    QCOMPARE(plot.updateProbabilityPlot(nullptr), 99999.0);
    // Rows whose rotated values are all blank: nothing to plot.
    PlantedModel unrotated;
    unrotated.load(flatDips(2), {});
    QCOMPARE(plot.updateProbabilityPlot(&unrotated), 99999.0);
    plot.resize(400, 300);
    plot.grab(); // paints over whatever is left
}

void TestProbabilityPlot::lassoCarriesTheType()
{
    QProbabilityPlot plot(nullptr, nullptr, QStringLiteral("UNIFORM"));
    QSignalSpy typed(&plot, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>, QString)));
    QSignalSpy plain(&plot, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)));
    boost::dynamic_bitset<> rows(5);
    rows.set(1);
    rows.set(3);
    emit plot.drawingArea()->dataPointsSelection(rows);
    QCOMPARE(typed.count(), 1);
    QCOMPARE(typed.at(0).at(0).value<boost::dynamic_bitset<>>(), rows);
    QCOMPARE(typed.at(0).at(1).toString(), QStringLiteral("UNIFORM"));
    // Once, by the typed signal only.
    QCOMPARE(plain.count(), 0);
}

QTEST_MAIN(TestProbabilityPlot)
#include "tst_probabilityplot.moc"
