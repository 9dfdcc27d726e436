#pragma once
// A paint device whose engine writes down what a painter asks it to draw, one line per call,
// with the pen and brush in force. Comparing those lines is exact on every machine, where pixels
// depend on the rasteriser and the fonts.

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainterPath>
#include <QStringList>
#include <QTextItem>

class PaintRecorder : public QPaintDevice
{
public:
    explicit PaintRecorder(QSize size = QSize(400, 300)) : m_size(size), m_engine(this) {}
    QPaintEngine* paintEngine() const override { return const_cast<RecordingEngine*>(&m_engine); }
    const QStringList& calls() const { return m_engine.calls; }
    void clear() { m_engine.calls.clear(); }
    // Text calls end with " at x,y" (the baseline's start, rounded) when on; off by default.
    void setRecordTextPositions(bool on) { m_engine.textPositions = on; }
    // The calls whose text starts with the prefix.
    QStringList calls(const QString& prefix) const
    {
        QStringList out;
        for (const QString& c : m_engine.calls)
            if (c.startsWith(prefix))
                out << c;
        return out;
    }

protected:
    int metric(PaintDeviceMetric m) const override
    {
        switch (m) {
        case PdmWidth: return m_size.width();
        case PdmHeight: return m_size.height();
        case PdmDpiX: case PdmDpiY: case PdmPhysicalDpiX: case PdmPhysicalDpiY: return 96;
        case PdmDepth: return 32;
        case PdmNumColors: return INT_MAX;
        case PdmDevicePixelRatio: return 1;
        case PdmDevicePixelRatioScaled: return int(QPaintDevice::devicePixelRatioFScale());
        default: return 0;
        }
    }

private:
    class RecordingEngine : public QPaintEngine
    {
    public:
        explicit RecordingEngine(PaintRecorder* device) : QPaintEngine(AllFeatures), m_device(device) {}
        bool begin(QPaintDevice*) override { return true; }
        bool end() override { return true; }
        Type type() const override { return QPaintEngine::User; }
        void updateState(const QPaintEngineState& state) override
        {
            if (state.state() & DirtyPen)
                m_pen = state.pen();
            if (state.state() & DirtyBrush)
                m_brush = state.brush();
        }
        void drawLines(const QLine* lines, int n) override
        {
            QStringList parts;
            for (int i = 0; i < n; ++i)
                parts << QStringLiteral("%1,%2-%3,%4").arg(lines[i].x1()).arg(lines[i].y1()).arg(lines[i].x2()).arg(lines[i].y2());
            add(QStringLiteral("lines ") + parts.join(' '));
        }
        void drawLines(const QLineF* lines, int n) override
        {
            QStringList parts;
            for (int i = 0; i < n; ++i)
                parts << QStringLiteral("%1,%2-%3,%4").arg(lines[i].x1()).arg(lines[i].y1()).arg(lines[i].x2()).arg(lines[i].y2());
            add(QStringLiteral("lines ") + parts.join(' '));
        }
        void drawRects(const QRect* rects, int n) override
        {
            for (int i = 0; i < n; ++i)
                add(QStringLiteral("rect %1,%2 %3x%4").arg(rects[i].x()).arg(rects[i].y()).arg(rects[i].width()).arg(rects[i].height()));
        }
        void drawRects(const QRectF* rects, int n) override
        {
            for (int i = 0; i < n; ++i)
                add(QStringLiteral("rect %1,%2 %3x%4").arg(rects[i].x()).arg(rects[i].y()).arg(rects[i].width()).arg(rects[i].height()));
        }
        void drawEllipse(const QRect& r) override
        {
            add(QStringLiteral("ellipse %1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()));
        }
        void drawEllipse(const QRectF& r) override
        {
            add(QStringLiteral("ellipse %1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()));
        }
        void drawPolygon(const QPoint* p, int n, PolygonDrawMode mode) override
        {
            QStringList parts;
            for (int i = 0; i < n; ++i)
                parts << QStringLiteral("%1,%2").arg(p[i].x()).arg(p[i].y());
            add(modeName(mode) + QLatin1Char(' ') + parts.join(' '));
        }
        void drawPolygon(const QPointF* p, int n, PolygonDrawMode mode) override
        {
            QStringList parts;
            for (int i = 0; i < n; ++i)
                parts << QStringLiteral("%1,%2").arg(p[i].x()).arg(p[i].y());
            add(modeName(mode) + QLatin1Char(' ') + parts.join(' '));
        }
        void drawPoints(const QPoint* p, int n) override
        {
            for (int i = 0; i < n; ++i)
                add(QStringLiteral("point %1,%2").arg(p[i].x()).arg(p[i].y()));
        }
        void drawPoints(const QPointF* p, int n) override
        {
            for (int i = 0; i < n; ++i)
                add(QStringLiteral("point %1,%2").arg(p[i].x()).arg(p[i].y()));
        }
        void drawPath(const QPainterPath& path) override
        {
            const QRectF b = path.boundingRect();
            add(QStringLiteral("path %1 elements in %2,%3 %4x%5").arg(path.elementCount()).arg(b.x()).arg(b.y()).arg(b.width()).arg(b.height()));
        }
        void drawTextItem(const QPointF& p, const QTextItem& item) override
        {
            if (textPositions)
                add(QStringLiteral("text '%1' at %2,%3").arg(item.text()).arg(qRound(p.x())).arg(qRound(p.y())));
            else
                add(QStringLiteral("text '%1'").arg(item.text()));
        }
        void drawPixmap(const QRectF& r, const QPixmap&, const QRectF&) override
        {
            add(QStringLiteral("pixmap %1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()));
        }
        void drawImage(const QRectF& r, const QImage&, const QRectF&, Qt::ImageConversionFlags) override
        {
            add(QStringLiteral("image %1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()));
        }
        QStringList calls;
        bool textPositions = false;

    private:
        static QString modeName(PolygonDrawMode mode)
        {
            switch (mode) {
            case OddEvenMode: return QStringLiteral("polygon odd");
            case WindingMode: return QStringLiteral("polygon winding");
            case PolylineMode: return QStringLiteral("polyline");
            default: return QStringLiteral("polygon convex");
            }
        }
        void add(const QString& what)
        {
            const QString brush = m_brush.style() == Qt::NoBrush ? QStringLiteral("none") : m_brush.color().name(QColor::HexArgb);
            calls << QStringLiteral("%1 | pen %2 %3 | brush %4")
                         .arg(what, m_pen.style() == Qt::NoPen ? QStringLiteral("none") : m_pen.color().name(QColor::HexArgb))
                         .arg(m_pen.widthF())
                         .arg(brush);
        }
        PaintRecorder* m_device;
        QPen m_pen;
        QBrush m_brush;
    };
    QSize m_size;
    RecordingEngine m_engine;
};
