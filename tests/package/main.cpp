#include <MatrixData.h>
#include <QVertexItemModel.h>
#include <UnitManager.h>
#include <UnitRegistry.h>
#include <gdfVertex.h>

#include <cstdio>

int main()
{
    rkBase::UnitRegistry registry;
    rkBase::MatrixData root(QStringLiteral("root"), -1, -1, QVariant::String, true);
    root.setRegistry(&registry);
    auto* well = new rkBase::MatrixData(QStringLiteral("well"), -1, -1, QVariant::String, true);
    root.appendChild(well, true);
    auto* dip = new rkBase::MatrixData(QStringLiteral("dip"), 3, 1, QVariant::Double, true);
    well->appendChild(dip, false);
    dip->setUnitManager(rkBase::UnitRegistry::CATEGORY_ORIENTATION);
    dip->setValue(0, 0, 10.0);
    dip->setValue(1, 0, 20.0);
    dip->setValue(2, 0, 45.0);
    dip->setMinMax(0, boost::dynamic_bitset<>());
    rkBase::QVertexItemModel sheet(nullptr, &root, -1, false, nullptr);
    const gdfVertex n = gdfVertex(1, 0, 0) ^ gdfVertex(0, 1, 0);
    std::printf("consumer: sheet %d x %d, %d column(s), mean dip %.2f %s, orientation data: %s, x^y = (%g, %g, %g)\n",
                sheet.rowCount(), sheet.columnCount(), static_cast<int>(root.leafs().size()), dip->meanValue().toDouble(),
                qPrintable(dip->displayUnitTag()), root.hasOrientationData() ? "yes" : "no", n.x(), n.y(), n.z());
    return root.leafs().size() == 1 && sheet.rowCount() == 3 && dip->meanValue().toDouble() == 25.0 ? 0 : 1;
}
