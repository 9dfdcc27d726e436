#pragma once
// A stereonet whose density bands all cross the rim: the pole grid rises from west to east, one
// percent per four cells, so that each of its ten bands is a strip from the north rim to the
// south rim and its iso-lines run straight north-south. metafile() copies it as the user does
// and reads the metafile back from the clipboard.

#include <MatrixData.h>
#include <MatrixDataArray.h>
#include <QRelationshipItemModel.h>
#include <QStereoPlotWidget.h>
#include <RKColormap.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <memory>
#include <vector>

class RimBandStereo : public rkBase::QStereoPlotWidget
{
public:
    static constexpr int kNodes = 41;
    static constexpr double kLevelStep = 1.0;
    static constexpr int kBands = 10;

    explicit RimBandStereo(bool lines = false) : QStereoPlotWidget(nullptr, QStringLiteral("Stereo"))
    {
        resize(400, 400);
        redraw(); // places the net: centre, radius, gridRect
        // A hundred poles, so that a count is a percentage as it stands.
        const int rows = 100;
        m_dip = std::make_unique<rkBase::MatrixData>(QStringLiteral("dip"), rows, 1, QVariant::Double, true);
        m_azimuth = std::make_unique<rkBase::MatrixData>(QStringLiteral("azimuth"), rows, 1, QVariant::Double, true);
        for (int r = 0; r < rows; ++r) {
            m_dip->setValue(r, 0, 40.0);
            m_azimuth->setValue(r, 0, 90.0);
        }
        m_model.takeNewDataSet(m_dip.get(), m_azimuth.get(), rkBase::QRelationshipItemModel::ShowAll);
        setModel(&m_model);
        countingOutProjections(kNodes, kNodes, true, false);
        rkBase::MatrixDataArray* grid = m_model.contourGridPoles();
        for (int i = 0; i < kNodes; ++i)
            for (int j = 0; j < kNodes; ++j)
                grid->setValue(i, j, kBands * double(i) / (kNodes - 1));
        grid->setColorMapStepSize(kLevelStep);
        setShowPoles(false);
        setShow10DegreeNet(false);
        setContourPolesOn(true);
        setContourLinesOn(lines);
        setContourRange(0.0, kBands);
        updateChart();
    }

    // The band colours, west to east.
    static std::vector<QColor> bandColours()
    {
        RKColormap map;
        map.set_interpolation(RKColormap::STEPPED);
        map.fill_spectrum_color_list(0.0, kBands, kLevelStep, false);
        std::vector<QColor> out;
        for (int b = 0; b < kBands; ++b)
            out.push_back(map.value_to_color(b * kLevelStep));
        return out;
    }

    // The metafile that "Copy to Enhanced metafile" leaves on the clipboard.
    QByteArray metafile()
    {
        QGuiApplication::clipboard()->clear();
        copyWEMFToClipboard();
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        return data ? data->data(QStringLiteral("image/emf")) : QByteArray();
    }

private:
    std::unique_ptr<rkBase::MatrixData> m_dip, m_azimuth;
    rkBase::QRelationshipItemModel m_model;
};
