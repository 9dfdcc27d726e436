// Structural tops scenarios of the relationship model and the interval filter's boundaries.
#include "QRelationshipItemModel.h"

#include <cmath>

namespace rkBase {

namespace {
QString scenarioName(std::size_t index)
{
    return QStringLiteral("Scenario_") + QString::number(static_cast<qulonglong>(index));
}
} // namespace

DepthLineField* QRelationshipItemModel::structuralTops()
{
    if (m_activeScenario < 0)
        m_activeScenario = 0;
    while (static_cast<std::size_t>(m_activeScenario) >= m_structuralTopsScenarios.size())
        m_structuralTopsScenarios.push_back(new DepthLineField(scenarioName(m_structuralTopsScenarios.size())));
    DepthLineField*& entry = m_structuralTopsScenarios[static_cast<std::size_t>(m_activeScenario)];
    // A hole in the list is filled so that the caller always gets a field the model owns.
    if (!entry)
        entry = new DepthLineField(scenarioName(static_cast<std::size_t>(m_activeScenario)));
    return entry;
}

void QRelationshipItemModel::addStructuralTopsSenario(const QString& name)
{
    m_activeScenario = static_cast<int>(m_structuralTopsScenarios.size());
    m_structuralTopsScenarios.push_back(new DepthLineField(name));
}

void QRelationshipItemModel::activateStructuralTopsSenario(const QString& name)
{
    for (std::size_t i = 0; i < m_structuralTopsScenarios.size(); ++i) {
        if (m_structuralTopsScenarios[i] && m_structuralTopsScenarios[i]->name() == name) {
            m_activeScenario = static_cast<int>(i);
            return;
        }
    }
    addStructuralTopsSenario(name);
}

DepthLineField* QRelationshipItemModel::eraseActiveStructuralTopsSenario()
{
    DepthLineField* taken = nullptr;
    if (m_activeScenario >= 0 && static_cast<std::size_t>(m_activeScenario) < m_structuralTopsScenarios.size()) {
        auto it = m_structuralTopsScenarios.begin() + m_activeScenario;
        taken = *it;
        m_structuralTopsScenarios.erase(it);
    }
    m_activeScenario = 0;
    return taken;
}

// ---------------------------------------------------------------------------------------------
// Bare depth vectors

void QRelationshipItemModel::insertHorizontalLine(std::vector<double>& depths, const double& depth, const double& eps)
{
    if (!std::isfinite(depth))
        return;
    if (depths.empty()) {
        depths.push_back(depth);
        emit manuellBinInserted(true);
        return;
    }
    for (std::size_t i = 0; i < depths.size(); ++i) {
        if (std::fabs(depths[i] - depth) < eps)
            return;
        if (!(depths[i] < depth)) {
            depths.insert(depths.begin() + static_cast<std::ptrdiff_t>(i), depth);
            return;
        }
    }
    depths.push_back(depth);
}

void QRelationshipItemModel::eraseHorizontalLines(std::vector<double>& depths, const QPointF& point, const double& eps)
{
    for (std::size_t i = 0; i < depths.size();) {
        if (std::fabs(depths[i] - point.y()) < eps)
            depths.erase(depths.begin() + static_cast<std::ptrdiff_t>(i));
        else
            ++i;
    }
}

// ---------------------------------------------------------------------------------------------
// Interval filter

DepthLineField* QRelationshipItemModel::ensureIntervalFilter()
{
    if (!m_intervalFilter)
        m_intervalFilter = new DepthLineField(QStringLiteral("Interval Filter"));
    return m_intervalFilter;
}

void QRelationshipItemModel::generateAquidistantIntervalFilter(const double& size, const double& min, const double& max)
{
    ensureIntervalFilter()->generateAquidistantIntervalFilter(size, min, max);
}

void QRelationshipItemModel::generateNumberOfIntervalFilter(const int& count, const double& min, const double& max)
{
    ensureIntervalFilter()->generateNumberOfIntervalFilter(count, min, max);
}

void QRelationshipItemModel::insertIntervalBoundary(const double& depth, const double& eps)
{
    DepthLineField* filter = ensureIntervalFilter();
    filter->insertHorizontalLine(0.0, depth, QStringLiteral("Boundary"), Qt::red, DepthLineField::IntervalBoundary, eps,
                                 QPointF(-1.0, 0.0), -1);
    emit manuellBinInserted(!filter->lineDepths().empty());
}

void QRelationshipItemModel::eraseIntervalBoundary(const QPointF& point, const double& eps)
{
    DepthLineField* filter = ensureIntervalFilter();
    filter->eraseHorizontalLines(point, eps);
    emit manuellBinInserted(!filter->lineDepths().empty());
}

void QRelationshipItemModel::deleteIntervalBoundaries()
{
    if (m_intervalFilter)
        m_intervalFilter->clearAll();
    delete m_decimationData;
    m_decimationData = nullptr;
    delete m_decimationCount;
    m_decimationCount = nullptr;
}

} // namespace rkBase
