// Results of the chart tools kept as ordinary columns: rotated and random orientations, bias
// weights, cluster numbers and decimated data. Each call is one undo action on the root, so a
// user can try a rotation or a clustering and take it back.
#include "QDataAnalyserDialog.h"

#include "DerivedColumnWriter.h"
#include "WaitCursor.h"

#include <CellColumn.h>
#include <DoubleColumnWriter.h>
#include <MatrixData.h>
#include <MatrixDataRestore.h>
#include <QAttributeTreeView.h>
#include <QRelationshipItemModel.h>
#include <QStereoChartWidget.h>
#include <TerzaghiScanline.h>
#include <QVertexItemModel.h>
#include <UnitRegistry.h>

#include <boost/dynamic_bitset.hpp>

#include <QSet>

#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace rkBase {

namespace {
const QString kOrientationGroup = QStringLiteral("Orientation Data");
const QString kClusterGroup = QStringLiteral("Cluster Distributions");
const QString kDecimationGroup = QStringLiteral("Data Decimation");
constexpr double kRadToDeg = 180.0 / M_PI;

QString text(const char* source)
{
    return QCoreApplication::translate("QDataAnalyserDialog", source);
}

// One point of a model's list, through the typed store where there is one.
bool modelPoint(const QRelationshipItemModel& model, const CellColumn* cells, int row, QPointF& out)
{
    if (cells && cells->pointData())
        return cells->point(row, out);
    const QVariant v = model.data(model.index(row, 0));
    if (!v.isValid() || v.isNull())
        return false;
    out = v.toPointF();
    return true;
}

// Every cell of a reused column blank, in one pass over its store.
void blank(MatrixData* column)
{
    if (CellColumn* cells = column->writableCellColumn(0))
        cells->fill(QVariant());
}

// The random sequence of the orientation generator: a 32-bit multiplicative congruential state
// started at 1. It is fixed so that the histogram's test against uniform orientations gives the
// same figures on every run.
class OrientationDraws
{
public:
    double next()
    {
        double u;
        do {
            m_state *= 69069u;
            u = (double(m_state) - 1.0) * kScale;
        } while (u >= 1.0);
        return u;
    }

private:
    static constexpr double kScale = 1.0 / 4294967295.0;
    std::uint32_t m_state = 1;
};

double acosDegrees(double x)
{
    if (x <= -1.0)
        return M_PI * kRadToDeg;
    if (x >= 1.0)
        return 0.0;
    return std::acos(x) * kRadToDeg;
}
// Rows of a new derived column: those of the tree's first column with data; -1 without data.
int derivedRowCount(const MatrixData* root)
{
    const MatrixData* first = root ? root->getFirstChildWithData() : nullptr;
    return first ? first->rowCount() : -1;
}

DerivedColumnWriter writerFor(QDataAnalyserDialog* dialog, const QString& actionName)
{
    return DerivedColumnWriter(dialog->dataRoot(), actionName,
                               [dialog](const QString& name, const QString& typeName, int rows) {
                                   return dialog->createMatrixData(name, typeName, rows, true);
                               });
}

// What every derived attribute ends with: the new columns show in the tree, the table and every
// chart's boxes, and the host hears of the change.
void finish(QDataAnalyserDialog* dialog)
{
    if (QAttributeTreeView* tree = dialog->treeView()) {
        tree->reset();
        tree->expandAll();
    }
    dialog->updateAllViews(false, false);
    if (QVertexItemModel* model = dialog->vertexItemModel())
        model->setModified(true);
}
// The course that the bias weight and the cluster number share: one column in group, blanked,
// then value(r) at the table row of each model row that passes the row filter and has a value.
// False, with the tree untouched, without data, a data set or a name.
bool writeModelColumn(QDataAnalyserDialog* dialog, const QString& action, const QString& groupName,
                      const QString& name, const std::string& category, QRelationshipItemModel* model,
                      const std::function<bool(int, double&)>& value)
{
    const int rows = derivedRowCount(dialog->dataRoot());
    if (!model || !model->data() || model->rowCount() == 0 || rows < 0 || name.isEmpty())
        return false;
    const WaitCursor wait;
    DerivedColumnWriter writer = writerFor(dialog, action);
    bool made = false;
    MatrixData* column = writer.column(writer.group(groupName), name, rows, &made);
    if (!column)
        return false;
    if (made)
        column->setUnitManager(category);
    column->setDefaultValue1(QVariant());
    DoubleColumnWriter out(column);
    const int points = model->rowCount();
    double v = 0.0;
    for (int r = 0; r < points; ++r)
        if (model->passesRowFilter(r) && value(r, v))
            out.set(model->tableRow(r), v);
    column->setMinMax(0, boost::dynamic_bitset<>());
    writer.commit();
    return true;
}
} // namespace

void QDataAnalyserDialog::createRotatedAttributes()
{
    QRelationshipItemModel* model = m_stereoChart ? m_stereoChart->model() : nullptr;
    const int rows = derivedRowCount(m_dataRoot);
    if (!model || rows < 0)
        return;
    const WaitCursor wait;
    DerivedColumnWriter writer = writerFor(this, text("Rotated Orientations"));
    MatrixData* group = writer.group(kOrientationGroup);
    bool newDip = false, newAzimuth = false;
    MatrixData* dip = writer.column(group, QStringLiteral("Rotated:Dip"), rows, &newDip);
    MatrixData* azimuth = writer.column(group, QStringLiteral("Rotated:Dip Azimuth"), rows, &newAzimuth);
    if (!dip || !azimuth)
        return;
    if (newDip) {
        dip->setRegistry(model->nodeX() ? model->nodeX()->registry() : m_dataRoot->registry());
        dip->setUnitManager(UnitRegistry::CATEGORY_ORIENTATION);
    }
    if (newAzimuth) {
        azimuth->setRegistry(model->nodeY() ? model->nodeY()->registry() : m_dataRoot->registry());
        azimuth->setUnitManager(UnitRegistry::CATEGORY_ORIENTATION);
    }
    const CellColumn* cells = model->data() ? model->data()->cellColumn(0) : nullptr;
    DoubleColumnWriter dipOut(dip), azimuthOut(azimuth);
    const int points = model->rowCount();
    QPointF p;
    for (int r = 0; r < points; ++r) {
        if (!model->passesRowFilter(r) || !modelPoint(*model, cells, r, p))
            continue;
        const int target = model->tableRow(r);
        dipOut.set(target, p.x());
        azimuthOut.set(target, p.y());
    }
    const boost::dynamic_bitset<> all;
    dip->setMinMax(0, all);
    azimuth->setMinMax(0, all);
    writer.commit();
    finish(this);
}

void QDataAnalyserDialog::createBiasWeightAttribute(const QString& name, QRelationshipItemModel* model)
{
    const std::vector<double> weights =
        model && model->data() ? TerzaghiScanline::weights(*model) : std::vector<double>();
    if (writeModelColumn(this, text("Bias Weights"), kOrientationGroup, name, UnitRegistry::CATEGORY_FRACTION, model,
                         [&](int r, double& value) {
                             value = r < int(weights.size()) ? weights[std::size_t(r)] : 1.0;
                             return true;
                         }))
        finish(this);
}

void QDataAnalyserDialog::createClusterAttribute(const QString& name, QRelationshipItemModel* model)
{
    // Rows that the run left out carry -1, the unsigned maximum of the original numbering.
    if (writeModelColumn(this, text("Cluster Attribute"), kClusterGroup, name, UnitRegistry::CATEGORY_DIMENSIONLESS,
                         model, [&](int r, double& value) {
                             value = model->clusterID(r);
                             return value >= 0.0;
                         }))
        finish(this);
}

void QDataAnalyserDialog::createDataDecimationAttribute(QRelationshipItemModel* model, bool binAverage,
                                                        bool replaceOriginal, bool replaceDecimated,
                                                        MatrixData* original)
{
    if (!model || !original || !m_dataRoot || derivedRowCount(m_dataRoot) < 0)
        return;
    MatrixData* source = binAverage ? model->decimationData() : model->decimationCount();
    if (!source)
        return;
    const int rows = original->rowCount();
    const QString name = binAverage ? original->name() : original->name() + QStringLiteral("_Count");
    const QString tadpole = model->tadpoleAttributeName();
    const bool hasTadpole = !tadpole.isEmpty() && tadpole != QLatin1String("None");
    const std::vector<double>& angles = model->decimationAngle();
    const bool withAzimuth = hasTadpole || (!angles.empty() && binAverage);

    const WaitCursor wait;
    DerivedColumnWriter writer = writerFor(this, text("Data Decimation"));
    MatrixData* values = nullptr;
    MatrixData* azimuth = nullptr;
    if (replaceOriginal && binAverage) {
        values = m_dataRoot->getNodeFromName(QStringLiteral("dip"));
        azimuth = withAzimuth ? m_dataRoot->getNodeFromName(QStringLiteral("azimuth")) : nullptr;
        writer.keep(values);
        writer.keep(azimuth);
    } else {
        MatrixData* group = writer.group(kDecimationGroup);
        bool made = false, madeAzimuth = false;
        values = writer.column(group, QStringLiteral("Decimated:") + name, rows, &made);
        if (values && made) {
            values->setRegistry(source->registry());
            values->setUnitManager(source->unitCategory());
        }
        if (withAzimuth) {
            const QString azimuthName = QStringLiteral("Decimated:") + (hasTadpole ? tadpole : QStringLiteral("azimuth"));
            azimuth = writer.column(group, azimuthName, rows, &madeAzimuth);
            if (azimuth && madeAzimuth)
                azimuth->setUnitManager(UnitRegistry::CATEGORY_ORIENTATION);
        }
        // "Replace Decimated Data" drops what an earlier decimation left; a merge keeps it
        // where this one has nothing.
        if (replaceDecimated) {
            if (values && !made)
                blank(values);
            if (azimuth && !madeAzimuth)
                blank(azimuth);
        }
    }
    if (!values)
        return;

    const std::vector<int>& tableRows = model->decimationTableRows();
    const CellColumn* cells = source->cellColumn(0);
    QPointF p;
    for (int k = 0; k < int(tableRows.size()); ++k) {
        const int target = tableRows[std::size_t(k)];
        if (target < 0 || !cells || !cells->point(k, p))
            continue;
        values->setDoubleValue(target, 0, p.x());
        if (azimuth && k < int(angles.size()))
            azimuth->setDoubleValue(target, 0, angles[std::size_t(k)]);
    }
    values->setMinMax(0, boost::dynamic_bitset<>());
    if (azimuth)
        azimuth->setMinMax(0, boost::dynamic_bitset<>());

    writer.keep(m_dataRoot);
    writer.keep(m_dataRoot->getNodeFromName(QStringLiteral("$V")));
    m_dataRoot->setSelected(false, false);
    setMarkerVisibility(false, true, true, false, false, true);
    writer.commit();
    finish(this);
}

void QDataAnalyserDialog::createRandomOrientationAttributes()
{
    const int rows = derivedRowCount(m_dataRoot);
    if (rows < 0)
        return;
    const WaitCursor wait;
    DerivedColumnWriter writer = writerFor(this, text("Random Orientations"));
    MatrixData* group = writer.group(kOrientationGroup);
    MatrixData* dip = writer.column(group, QStringLiteral("Random:Dip"), rows);
    MatrixData* azimuth = writer.column(group, QStringLiteral("Random:Dip Azimuth"), rows);
    if (!dip || !azimuth)
        return;
    OrientationDraws draws;
    DoubleColumnWriter dipOut(dip), azimuthOut(azimuth);
    for (int r = 0; r < rows; ++r) {
        double u1 = draws.next();
        while (u1 < 0.0 || u1 > 1.0)
            u1 = draws.next();
        const double u2 = draws.next();
        dipOut.set(r, acosDegrees(1.0 - u1));
        azimuthOut.set(r, u2 * 2.0 * M_PI * kRadToDeg);
    }
    const boost::dynamic_bitset<> all;
    dip->setMinMax(0, all);
    azimuth->setMinMax(0, all);
    writer.commit();
    finish(this);
}

void QDataAnalyserDialog::createMeasuredDepth()
{
    if (!m_dataRoot || !m_dataRoot->getFirstChildWithData())
        return;
    // The wells that get a depth column are found by the tree itself: the action notes the row
    // counts first and takes every column that appeared.
    auto restore = std::make_unique<MatrixDataRestore>(m_dataRoot, text("Measured Depth"), true);
    const QList<MatrixData*> leafs = m_dataRoot->leafs();
    const QSet<MatrixData*> before(leafs.begin(), leafs.end());
    if (m_dataRoot->createMeasuredDepth() == 0)
        return;
    for (MatrixData* leaf : m_dataRoot->leafs())
        if (!before.contains(leaf))
            restore->recordInsertedAttribute(leaf);
    m_dataRoot->appendUndoAction(restore.release(), true);
    finish(this);
}

void QDataAnalyserDialog::initializeFieldDataSheet(bool createDefaultLine)
{
    if (!m_dataRoot)
        return;
    struct FieldColumn {
        const char* name;
        const char* type;
        const char* interfaceName;
        const std::string* category;
    };
    static const FieldColumn columns[] = {
        {"X", "Double", "", &UnitRegistry::CATEGORY_DIMENSION},
        {"Y", "Double", "", &UnitRegistry::CATEGORY_DIMENSION},
        {"Z", "Double", "", &UnitRegistry::CATEGORY_ELEVATION},
        {"dip", "Double", "Dip", &UnitRegistry::CATEGORY_ORIENTATION},
        {"azimuth", "Double", "Azimuth", &UnitRegistry::CATEGORY_ORIENTATION},
        {"strike", "Double", "Strike", &UnitRegistry::CATEGORY_ORIENTATION},
        {"Name", "String", "", nullptr},
        {"Day", "String", "", nullptr},
        {"color", "Color", "Colour", nullptr},
        {"pitch", "Double", "Pitch", &UnitRegistry::CATEGORY_ORIENTATION},
        {"lineation direction", "String", "Lineation Direction", nullptr},
        {"Type", "String", "", nullptr},
    };
    const QString groupName = QStringLiteral("Field Data");
    MatrixData* existing = nullptr;
    for (MatrixData* child : m_dataRoot->children())
        if (child->isGroup() && child->name() == groupName)
            existing = child;

    // The sheet joins whatever the tree holds: the user's other groups stay, and undo takes the
    // sheet back out.
    DerivedColumnWriter writer = writerFor(this, text("Field Data"));
    writer.keep(m_dataRoot);
    m_dataRoot->setSelected(false, false);
    if (!existing) {
        m_dataRoot->setName(QStringLiteral("Data Root"));
        m_dataRoot->setInterfaceName(QStringLiteral("Data Root"));
        m_dataRoot->setColor(MatrixData::getDefaultColor(true));
    }
    MatrixData* sheet = writer.group(groupName);
    writer.setNamesUniqueInTree(false);
    const int rows = createDefaultLine ? 1 : 0;
    for (const FieldColumn& f : columns) {
        bool made = false;
        MatrixData* c = writer.column(sheet, QString::fromLatin1(f.name), rows, &made, QString::fromLatin1(f.type));
        if (!c || !made)
            continue;
        if (*f.interfaceName)
            c->setInterfaceName(QString::fromLatin1(f.interfaceName));
        if (f.category)
            c->setUnitManager(*f.category);
        if (c->cellType() == QVariant::Color)
            c->setDefaultValue1(QVariant(MatrixData::getDefaultColor(false)));
    }
    sheet->setSelected(true, false);
    writer.commit();
    updateAllViews(false, false);
}

} // namespace rkBase
