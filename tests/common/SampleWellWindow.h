#pragma once
// The analyser window with every chart tab, holding the sample well as the demo host loads it:
// the examples' CSV reader, one sheet under the root, the charts opened on porosity, depth, dip
// and dip azimuth. Tests that walk the whole window start from here.

#include <CsvSheetReader.h>
#include <MatrixData.h>
#include <QCrossPlotWidget.h>
#include <QDataAnalyserDialog.h>
#include <QDepthPlotWidget.h>
#include <QStereoChartWidget.h>
#include <QTangentChartWidget.h>
#include <UnitRegistry.h>

#include <QString>

#include <memory>

inline rkBase::MatrixData* readSampleWell()
{
    CsvSheetReader reader;
    return reader.read(QStringLiteral(RK_SAMPLE_CSV), QStringLiteral("sample_well"));
}

// Points the chart tabs at the columns a user of the sample well looks at first.
inline void chooseSampleWellColumns(rkBase::QDataAnalyserDialog& d)
{
    if (rkBase::QCrossPlotWidget* cross = d.crossPlotChart()) {
        cross->setCurrentHorizontalSelectedDataSet(QStringLiteral("Measured Depth"));
        cross->setCurrentVerticalSelectedDataSet(QStringLiteral("Porosity"));
    }
    if (rkBase::QDepthPlotWidget* depth = d.depthPlotChart()) {
        depth->setCurrentHorizontalSelectedDataSet(QStringLiteral("Porosity"));
        depth->setCurrentVerticalSelectedDataSet(QStringLiteral("Measured Depth"));
    }
    for (rkBase::QStereoChartWidget* net : {d.stereoChart(), static_cast<rkBase::QStereoChartWidget*>(d.tangentChart())})
        if (net) {
            net->setCurrentDipSelectedDataSet(QStringLiteral("dip"));
            net->setCurrentAzimuthSelectedDataSet(QStringLiteral("azimuth"));
        }
    d.resetChartsUpdateNeeded();
    d.slotTabWidgetChanged();
}

inline std::unique_ptr<rkBase::QDataAnalyserDialog> sampleWellWindow(rkBase::UnitRegistry& registry)
{
    auto d = std::make_unique<rkBase::QDataAnalyserDialog>();
    d->dataRoot()->setRegistry(&registry);
    d->initialize(QStringLiteral("test"), nullptr, &registry, Qt::Horizontal, false, true, true, true, true, true, 1,
                  false, false);
    if (rkBase::MatrixData* sheet = readSampleWell())
        d->dataRoot()->appendChild(sheet, true);
    d->updateAllViews(false, false);
    d->hideShowOrientationWindows();
    chooseSampleWellColumns(*d);
    return d;
}
