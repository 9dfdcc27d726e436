#include "QProbabilityPlot.h"

#include "MatrixData.h"
#include "QRelationshipItemModel.h"

namespace rkBase {

QProbabilityPlot::QProbabilityPlot(QWidget* parent, DisplayUnitManager* manager, QString const& type)
    : QCrossPlotWidget(parent, manager, false, false, false), m_type(type)
{
}

QProbabilityPlot::~QProbabilityPlot() { deleteColumns(); }

void QProbabilityPlot::deleteColumns()
{
    delete m_reference;
    m_reference = nullptr;
    delete m_sample;
    m_sample = nullptr;
}

double QProbabilityPlot::updateProbabilityPlot(QRelationshipItemModel*) { return 99999.0; }
void QProbabilityPlot::createQuantile(QRelationshipItemModel*, QString const&, std::vector<gdfVertex>& out) { out.clear(); }
void QProbabilityPlot::createUniformProbability(QRelationshipItemModel*) {}
void QProbabilityPlot::createExpontentialProbability(QRelationshipItemModel*) {}
void QProbabilityPlot::createNormalProbability(QRelationshipItemModel*) {}
void QProbabilityPlot::inverse_normal_distribution(MatrixData*& out) { out = nullptr; }
void QProbabilityPlot::slotDataPointsSelection(boost::dynamic_bitset<> const& rows) { emit dataPointsSelection(rows, m_type); }

} // namespace rkBase
