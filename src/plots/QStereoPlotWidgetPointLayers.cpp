// The data points of the stereonet's raster as layers: a million poles take most of a redraw,
// and the controls a user flicks most (the nets, labels, annotation, the mean orientations,
// which kinds of points show) change nothing of them.
#include "QStereoPlotWidget.h"

#include <QRelationshipItemModel.h>

#include <QPainter>

#include <boost/functional/hash.hpp>

namespace rkBase {

namespace {

void hashModel(std::size_t& seed, const QRelationshipItemModel* model)
{
    boost::hash_combine(seed, static_cast<const void*>(model));
    if (!model)
        return;
    boost::hash_combine(seed, model->dataRevision());
    boost::hash_combine(seed, int(model->displayType()));
    boost::hash_combine(seed, int(model->pointStyle()));
    boost::hash_combine(seed, model->pointPixelSize());
    boost::hash_combine(seed, model->outLinePointStyle());
    boost::hash_combine(seed, model->symbolAttributeIsOn());
    boost::hash_combine(seed, model->colorAttributeIsOn());
    boost::hash_combine(seed, model->tadpoleAttributeIsOn());
    // The selection decides the highlight; a million rows hash in microseconds by the word.
    const auto& selection = model->selection();
    boost::hash_combine(seed, selection.size());
    std::vector<unsigned long> words(selection.num_blocks());
    boost::to_block_range(selection, words.begin());
    boost::hash_range(seed, words.begin(), words.end());
}

void hashColor(std::size_t& seed, const QColor& c)
{
    boost::hash_combine(seed, c.isValid());
    boost::hash_combine(seed, c.rgba64().toArgb32());
}

} // namespace

quint64 QStereoPlotWidget::pointLayerKey() const
{
    std::size_t seed = 0;
    hashModel(seed, m_model);
    hashModel(seed, m_lineationModel);
    for (const QColor& c : {m_poleColor, m_dipDirectionColor, m_lineationColor, m_planeColor, m_backgroundColor,
                            m_labelColor, m_highlightFillColor})
        hashColor(seed, c);
    boost::hash_combine(seed, m_traceWidth);
    boost::hash_combine(seed, m_symbolColorOnly);
    boost::hash_combine(seed, m_equalArea);
    boost::hash_combine(seed, m_radius);
    boost::hash_combine(seed, m_centre.x());
    boost::hash_combine(seed, m_centre.y());
    boost::hash_combine(seed, m_maxPlotAngle);
    const QRect clip = m_clipRegion.boundingRect();
    const QRect window = pixmapRect();
    for (int v : {clip.x(), clip.y(), clip.width(), clip.height(), m_clipRegion.rectCount(), window.x(), window.y(),
                  window.width(), window.height(), m_rasterSize.width(), m_rasterSize.height()})
        boost::hash_combine(seed, v);
    boost::hash_combine(seed, m_zoomFactor);
    return quint64(seed);
}

void QStereoPlotWidget::drawDataPointLayers(QPainter* painter)
{
    const quint64 key = pointLayerKey();
    const bool reuse = m_reusePointLayers && key == m_pointLayerKey;
    m_reusePointLayers = false;
    if (!reuse) {
        for (QImage& layer : m_pointLayers)
            layer = QImage();
        m_pointLayerKey = key;
    }
    const bool shown[PointLayerCount] = {m_showTraces, m_showPoles, m_showDipDirections,
                                         m_showLineation && m_lineationModel};
    const QSize size = m_chartPixmap.size();
    for (int kind = 0; kind < PointLayerCount; ++kind) {
        if (!shown[kind])
            continue;
        QImage& layer = m_pointLayers[kind];
        if (layer.size() != size) {
            layer = QImage(size, QImage::Format_ARGB32_Premultiplied);
            layer.fill(Qt::transparent);
            QPainter layerPainter;
            beginRasterPainter(layerPainter, layer);
            layerPainter.setRenderHints(painter->renderHints());
            if (painter->hasClipping())
                layerPainter.setClipRegion(painter->clipRegion());
            // drawDataPoints draws every kind that is on: the others are off while this one draws.
            const bool wasShown[PointLayerCount] = {m_showTraces, m_showPoles, m_showDipDirections, m_showLineation};
            m_showTraces = kind == TraceLayer;
            m_showPoles = kind == PoleLayer;
            m_showDipDirections = kind == DipDirectionLayer;
            m_showLineation = kind == LineationLayer;
            drawDataPoints(&layerPainter);
            m_showTraces = wasShown[TraceLayer];
            m_showPoles = wasShown[PoleLayer];
            m_showDipDirections = wasShown[DipDirectionLayer];
            m_showLineation = wasShown[LineationLayer];
        }
        painter->save();
        painter->resetTransform();
        painter->setClipping(false);
        painter->setOpacity(1.0);
        painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter->drawImage(QPoint(0, 0), layer);
        painter->restore();
    }
}

} // namespace rkBase
