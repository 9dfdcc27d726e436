#pragma once
// Orientations (x dip, y azimuth) in a sheet of their own under a root, loaded into a
// relationship model as a panel loads its two columns, for the statistics tests; and the net the
// density tests count them on.
#include <MatrixData.h>
#include <QRelationshipItemModel.h>
#include <StereoNetGeometry.h>

#include <QList>
#include <QPointF>

#include <memory>
#include <vector>

namespace testorientations {

struct Loaded {
    std::unique_ptr<rkBase::MatrixData> root;
    std::unique_ptr<rkBase::QRelationshipItemModel> model;
};

inline Loaded load(const QList<QPointF>& points,
                   rkBase::QRelationshipItemModel::DisplayType type = rkBase::QRelationshipItemModel::ShowAll,
                   const std::vector<int>& selected = {})
{
    using rkBase::MatrixData;
    Loaded l;
    l.root.reset(new MatrixData(QStringLiteral("root"), -1, -1, QVariant::String, true));
    auto* group = new MatrixData(QStringLiteral("Sheet"), -1, -1, QVariant::String, true);
    auto* x = new MatrixData(QStringLiteral("dip"), points.size(), 1, QVariant::Double, true);
    auto* y = new MatrixData(QStringLiteral("azimuth"), points.size(), 1, QVariant::Double, true);
    l.root->appendChild(group, true);
    group->appendChild(x, false);
    group->appendChild(y, false);
    for (int r = 0; r < points.size(); ++r) {
        x->setValue(r, 0, points[r].x());
        y->setValue(r, 0, points[r].y());
    }
    l.model.reset(new rkBase::QRelationshipItemModel);
    l.model->takeNewDataSet(1, type, x, y, selected);
    return l;
}

// A net of radius 100 centred in a 200 x 200 grid rectangle.
inline rkBase::StereoNetGeometry net(bool equalArea = true, QPointF offset = QPointF())
{
    rkBase::StereoNetGeometry g;
    g.gridRect = QRectF(0, 0, 200, 200);
    g.centre = QPointF(100, 100);
    g.radius = 100;
    g.equalArea = equalArea;
    g.offset = offset;
    return g;
}

} // namespace testorientations
