#include "QProbabilityPlot.h"

#include "QCrossPlot.h"

#include <CellColumn.h>
#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <QRelationshipItemModel.h>
#include <FastTrig.h>
#include <StableValueOrder.h>

#include <QCoreApplication>
#include <QPoint>
#include <QPointF>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <typeinfo>

namespace rkBase {

namespace {

const char* const kExponential = "EXPONENTIAL";
const char* const kUniform = "UNIFORM";
const char* const kNormal = "NORMAL";
constexpr double kNoValue = 99999.0;
constexpr double kDegToRad = 3.14159265358979323846 / 180.0;

QString plotText(const char* text)
{
    return QCoreApplication::translate("QProbabilityPlot", text);
}

// Acklam's rational approximation of the standard normal quantile (relative error below
// 1.15e-9), in its three ranges. p outside all of them (0, 1 and beyond) leaves x as it was.
void normalQuantile(double p, double& x)
{
    static const double a[] = {-3.969683028665376e+01, 2.209460984245205e+02, -2.759285104469687e+02,
                               1.383577518672690e+02,  -3.066479806614716e+01, 2.506628277459239e+00};
    static const double b[] = {-5.447609879822406e+01, 1.615858368580409e+02, -1.556989798598866e+02,
                               6.680131188771972e+01,  -1.328068155288572e+01};
    static const double c[] = {-7.784894002430293e-03, -3.223964580411365e-01, -2.400758277161838e+00,
                               -2.549732539343734e+00, 4.374664141464968e+00,  2.938163982698783e+00};
    static const double d[] = {7.784695709041462e-03, 3.224671290700398e-01, 2.445134137142996e+00,
                               3.754408661907416e+00};
    const double low = 0.02425;
    const double high = 0.97575;

    if (p > 0.0 && p < low) {
        const double q = std::sqrt(-2.0 * std::log(p));
        x = (((((c[0] * q + c[1]) * q + c[2]) * q + c[3]) * q + c[4]) * q + c[5])
            / ((((d[0] * q + d[1]) * q + d[2]) * q + d[3]) * q + 1.0);
    } else if (p >= low && p <= high) {
        const double q = p - 0.5;
        const double r = q * q;
        x = (((((a[0] * r + a[1]) * r + a[2]) * r + a[3]) * r + a[4]) * r + a[5]) * q
            / (((((b[0] * r + b[1]) * r + b[2]) * r + b[3]) * r + b[4]) * r + 1.0);
    } else if (p > high && p < 1.0) {
        const double q = std::sqrt(-2.0 * std::log(1.0 - p));
        x = -(((((c[0] * q + c[1]) * q + c[2]) * q + c[3]) * q + c[4]) * q + c[5])
            / ((((d[0] * q + d[1]) * q + d[2]) * q + d[3]) * q + 1.0);
    }
}

} // namespace

QProbabilityPlot::QProbabilityPlot(QWidget* parent, DisplayUnitManager* manager, QString const& type)
    : QCrossPlotWidget(parent, manager, false, false, false), m_type(type)
{
    // A lasso on the chart reaches the stereo panel with the name of the distribution, so that
    // the panel knows which of its plots the rows came from.
    // The base connected the chart to its own slot of the same name; that one goes.
    disconnect(crossPlot, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)), this, nullptr);
    connect(crossPlot, SIGNAL(dataPointsSelection(boost::dynamic_bitset<>)), this,
            SLOT(slotDataPointsSelection(boost::dynamic_bitset<>)));
    // The three plots of a fit share one tab widget: only the one in front draws at once.
    crossPlot->setRedrawOnlyWhenShown(true);
}

QProbabilityPlot::~QProbabilityPlot()
{
    // The chart and its model point at the columns; they let go before the columns do.
    relationshipModel->clearData();
    horizontalData = verticalData = nullptr;
    deleteColumns();
}

void QProbabilityPlot::deleteColumns()
{
    delete m_reference;
    m_reference = nullptr;
    delete m_sample;
    m_sample = nullptr;
}

double QProbabilityPlot::updateProbabilityPlot(QRelationshipItemModel* model)
{
    relationshipModel->clearData();
    horizontalData = verticalData = nullptr;
    deleteColumns();

    const int rows = model ? std::max(0, model->numberOfTableRows()) : 0;
    const char* referenceName = m_type == QLatin1String(kExponential) ? "Exponential Distribution"
                                : m_type == QLatin1String(kNormal)    ? "Normal Distribution"
                                                                      : "Uniform Distribution";
    m_reference = new MatrixData(plotText(referenceName), rows, 1, QVariant::Double);
    m_sample = new MatrixData(plotText("Sample Quantile"), rows, 1, QVariant::Double);

    if (model) {
        if (m_type == QLatin1String(kExponential))
            createExpontentialProbability(model);
        else if (m_type == QLatin1String(kNormal))
            createNormalProbability(model);
        else
            createUniformProbability(model);
    }

    // No points, no line: a slope left from the last data must not pass for this one's.
    trendLineSlope = kNoValue;
    setDataSet(m_reference, m_sample, nullptr, nullptr);
    return getRegressionSlope();
}

namespace {

// The plotted sample in the order the rows were read, with each value's table row and the
// ascending order of the values (equal values in the order read, as a stable sort leaves them).
struct QuantileSample {
    std::vector<double> values;
    std::vector<int> tableRows;
    std::vector<std::uint32_t> order;
};

void readQuantileSample(QRelationshipItemModel* model, QString const& type, QuantileSample& sample)
{
    sample = QuantileSample();
    if (!model || !model->data())
        return;
    const bool uniform = type == QLatin1String(kUniform);
    const bool exponential = type == QLatin1String(kExponential);
    const bool normal = type == QLatin1String(kNormal);
    const int rows = model->data()->validValueRowCount();
    sample.values.reserve(std::size_t(std::max(rows, 0)));
    sample.tableRows.reserve(std::size_t(std::max(rows, 0)));
    // The rotated points straight from their cells where the model keeps them in a plain point
    // list, as its rotatedData(row) would give them.
    const MatrixDataArray* list = model->rotatedData();
    const CellColumn* cells = list && typeid(*list) == typeid(MatrixDataArray) ? list->cellColumn(0) : nullptr;
    if (cells && !cells->pointData())
        cells = nullptr;
    // The longitudes in whole degrees, whose order a counting pass gives.
    std::vector<std::int32_t> degrees;
    if (uniform)
        degrees.reserve(std::size_t(std::max(rows, 0)));
    for (int row = 0; row < rows; ++row) {
        if (!model->passesRowFilter(row))
            continue;
        QPointF p;
        if (cells) {
            if (!cells->point(row, p))
                continue;
        } else {
            const QVariant rotated = model->rotatedData(row);
            if (!rotated.isValid())
                continue;
            p = rotated.toPointF();
        }
        double x = 0.0;
        if (uniform) {
            // Whole degrees: the longitude is read as a QPoint, which rounds.
            const int degree = p.toPoint().y();
            degrees.push_back(degree);
            x = degree / 360.0;
        } else {
            double sine = 0.0, cosine = 1.0;
            FastTrig::sinCos(p.x() * kDegToRad, sine, cosine);
            if (exponential)
                x = 1.0 - cosine;
            else if (normal)
                x = std::sqrt(std::max(0.0, sine)) * p.y() * kDegToRad;
        }
        // A value that cannot be ordered would break the sort; it cannot be plotted either.
        if (!std::isfinite(x))
            continue;
        sample.values.push_back(x);
        sample.tableRows.push_back(model->tableRow(row));
    }
    if (uniform)
        StableValueOrder::compute(degrees.data(), degrees.size(), sample.order);
    else
        StableValueOrder::compute(sample.values.data(), sample.values.size(), sample.order);
}

} // namespace

void QProbabilityPlot::createQuantile(QRelationshipItemModel* model, QString const& type, std::vector<gdfVertex>& out)
{
    QuantileSample sample;
    readQuantileSample(model, type, sample);
    out.clear();
    out.reserve(sample.order.size());
    for (const std::uint32_t at : sample.order)
        out.emplace_back(sample.values[at], double(sample.tableRows[at]), 0.0);
}

namespace {

// Writes the sample values and their expected quantiles, reference(i, n) for the i-th (1-based)
// smallest of n, at the table row each came from. An expected quantile that does not exist (more
// samples than n counts) leaves the row blank. The rows are written in the order read, which
// keeps a million writes in step with memory instead of scattered by rank.
template <typename Reference>
void writeQuantiles(const QuantileSample& sample, int n, MatrixData* referenceColumn, MatrixData* sampleColumn,
                    Reference reference)
{
    if (!referenceColumn || !sampleColumn)
        return;
    // The expected quantiles in rank order (the lookups then rise, which the normal table's
    // walk relies on), each filed under the position its sample was read at.
    std::vector<double> expected(sample.order.size());
    for (std::size_t k = 0; k < sample.order.size(); ++k)
        expected[sample.order[k]] = reference(double(k + 1), double(n));
    CellColumn* sampleCells = sampleColumn->writableCellColumn(0);
    CellColumn* referenceCells = referenceColumn->writableCellColumn(0);
    double* samples = sampleCells ? sampleCells->writableDoubleData() : nullptr;
    double* references = referenceCells ? referenceCells->writableDoubleData() : nullptr;
    std::uint8_t* sampleValid = samples ? sampleCells->writableValidData() : nullptr;
    std::uint8_t* referenceValid = references ? referenceCells->writableValidData() : nullptr;
    const int rows = samples && references ? std::min(sampleCells->size(), referenceCells->size()) : 0;
    for (std::size_t at = 0; at < expected.size(); ++at) {
        const int row = sample.tableRows[at];
        const double value = sample.values[at];
        if (row < 0 || !std::isfinite(expected[at]))
            continue;
        if (row < rows) {
            samples[row] = value;
            sampleValid[row] = 1;
            references[row] = expected[at];
            referenceValid[row] = 1;
        } else {
            sampleColumn->setDoubleValue(row, 0, value);
            referenceColumn->setDoubleValue(row, 0, expected[at]);
        }
    }
}

// MatrixData::getInterpolationValue over columns 0 and 1 of a table whose x rises row by row,
// answered from where the last question was: the plot asks once for each of a million points,
// in rising order. The answers are the linear walk's, bit for bit: the first segment that holds
// x, the same arithmetic.
class AscendingTable
{
public:
    explicit AscendingTable(const MatrixData* table)
    {
        const CellColumn* xs = table ? table->cellColumn(0) : nullptr;
        const CellColumn* ys = table ? table->cellColumn(1) : nullptr;
        if (!xs || !ys)
            return;
        for (int r = 0; r < table->rowCount(); ++r) {
            if (!xs->isValid(r) || !ys->isValid(r))
                continue;
            const double cx = xs->toDouble(r), cy = ys->toDouble(r);
            if (!std::isfinite(cx) || !std::isfinite(cy))
                continue;
            if (!m_x.empty() && !(cx > m_x.back())) {
                m_x.clear(); // not rising: the walk itself answers
                return;
            }
            m_x.push_back(cx);
            m_y.push_back(cy);
        }
    }
    bool usable() const { return !m_x.empty(); }
    // hint: where the previous, smaller x was found (start at 0); any order of questions is
    // answered right, rising ones in constant time.
    double value(double x, std::size_t& hint) const
    {
        if (x == m_x.front())
            return m_y.front();
        // The first k >= 1 with x[k] >= x; its segment holds x when x[k - 1] <= x. Every row
        // before a hint whose row before it lies below x lies below x too.
        std::size_t k = hint >= 1 && hint < m_x.size() && m_x[hint - 1] < x ? hint : 1;
        while (k < m_x.size() && m_x[k] < x)
            ++k;
        hint = k;
        if (k < m_x.size() && m_x[k - 1] <= x)
            return m_y[k - 1] + (x - m_x[k - 1]) / (m_x[k] - m_x[k - 1]) * (m_y[k] - m_y[k - 1]);
        // Outside the span: the nearer end.
        return std::abs(x - m_x.front()) <= std::abs(x - m_x.back()) ? m_y.front() : m_y.back();
    }

private:
    std::vector<double> m_x, m_y;
};

} // namespace

void QProbabilityPlot::createUniformProbability(QRelationshipItemModel* model)
{
    QuantileSample quantiles;
    readQuantileSample(model, QString::fromLatin1(kUniform), quantiles);
    if (quantiles.order.empty())
        return;
    writeQuantiles(quantiles, model->numberOfSelectedPoints(), m_reference, m_sample,
                   [](double i, double n) { return (i - 0.5) / n; });
}

void QProbabilityPlot::createExpontentialProbability(QRelationshipItemModel* model)
{
    QuantileSample quantiles;
    readQuantileSample(model, QString::fromLatin1(kExponential), quantiles);
    if (quantiles.order.empty())
        return;
    writeQuantiles(quantiles, model->numberOfSelectedPoints(), m_reference, m_sample,
                   [](double i, double n) { return std::log(n / (n - i + 0.5)); });
}

void QProbabilityPlot::createNormalProbability(QRelationshipItemModel* model)
{
    QuantileSample quantiles;
    readQuantileSample(model, QString::fromLatin1(kNormal), quantiles);
    if (quantiles.order.empty())
        return;
    MatrixData* table = nullptr;
    inverse_normal_distribution(table);
    const AscendingTable lookUp(table);
    std::size_t hint = 0;
    writeQuantiles(quantiles, model->numberOfSelectedPoints(), m_reference, m_sample,
                   [table, &lookUp, &hint](double i, double n) {
                       const double p = (i - 0.5) / n;
                       if (!std::isfinite(p))
                           return p;
                       return lookUp.usable() ? lookUp.value(p, hint) : table->getInterpolationValue(p, 0, 1);
                   });
    delete table;
}

void QProbabilityPlot::inverse_normal_distribution(MatrixData*& out)
{
    constexpr int kRows = 201;
    constexpr double kFirst = 1e-05;
    constexpr double kStep = 0.005;
    out = new MatrixData(QStringLiteral("inverse_normal_distribution"), kRows, 2, QVariant::Double);
    double p = kFirst;
    double x = 0.0;
    for (int row = 0; row < kRows; ++row) {
        normalQuantile(p, x);
        out->setValue(row, 0, QVariant(p));
        out->setValue(row, 1, QVariant(x));
        p = p + kStep > 1.0 ? 1.0 : p + kStep;
    }
}

void QProbabilityPlot::slotDataPointsSelection(boost::dynamic_bitset<> const& rows)
{
    emit dataPointsSelection(rows, m_type);
}

} // namespace rkBase
