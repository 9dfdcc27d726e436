// Draws the analyser's own 16x16 icons (the charts and the cursor), in the manner of the silk
// set the other icons come from: a soft dark outline, flat fills, one or two colours.
//   make_icons <output folder>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

namespace {
const QColor kOutline(60, 70, 90);
const QColor kBlue(70, 130, 210);
const QColor kGreen(90, 170, 70);
const QColor kOrange(235, 140, 40);
const QColor kRed(210, 60, 50);

QImage canvas()
{
    QImage image(16, 16, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

void axes(QPainter& p)
{
    p.setPen(QPen(kOutline, 1));
    p.drawLine(QPointF(1.5, 1), QPointF(1.5, 14.5));
    p.drawLine(QPointF(1.5, 14.5), QPointF(15, 14.5));
}

void histogram(QPainter& p)
{
    axes(p);
    const int heights[] = {4, 8, 12, 9, 5};
    for (int i = 0; i < 5; ++i) {
        const QRectF bar(3 + i * 2.4, 14 - heights[i], 2.2, heights[i]);
        p.fillRect(bar, kBlue);
        p.setPen(QPen(kOutline.lighter(130), 0.6));
        p.drawRect(bar);
    }
}

void crossPlot(QPainter& p)
{
    axes(p);
    p.setPen(Qt::NoPen);
    const QPointF dots[] = {{4, 12}, {5.5, 10}, {7, 10.5}, {8, 8}, {9.5, 7}, {10.5, 5.5}, {12, 5}, {13.5, 3}, {6, 7}};
    for (const QPointF& d : dots) {
        p.setBrush(d.x() > 9 ? kRed : kOrange);
        p.drawEllipse(d, 1.2, 1.2);
    }
}

void circle(QPainter& p)
{
    p.setBrush(QColor(250, 250, 245));
    p.setPen(QPen(kOutline, 1));
    p.drawEllipse(QPointF(8, 8), 6.8, 6.8);
}

void rosePlot(QPainter& p)
{
    circle(p);
    p.setPen(QPen(kOutline.lighter(140), 0.6));
    const double lengths[] = {6, 3, 4.5, 2, 5.5, 2.5, 4, 3};
    for (int i = 0; i < 8; ++i) {
        const double a0 = qDegreesToRadians(i * 45.0 - 90 - 18), a1 = qDegreesToRadians(i * 45.0 - 90 + 18);
        QPainterPath petal(QPointF(8, 8));
        petal.lineTo(8 + lengths[i] * std::cos(a0), 8 + lengths[i] * std::sin(a0));
        petal.lineTo(8 + lengths[i] * std::cos(a1), 8 + lengths[i] * std::sin(a1));
        petal.closeSubpath();
        p.setBrush(i % 2 ? kOrange : kRed);
        p.drawPath(petal);
    }
}

void stereoPlot(QPainter& p)
{
    circle(p);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(kBlue, 1.1));
    // A great circle: an arc through opposite points of the primitive.
    QPainterPath arc(QPointF(3.2, 3.2));
    arc.quadTo(QPointF(10.5, 6), QPointF(12.8, 12.8));
    p.drawPath(arc);
    p.setPen(Qt::NoPen);
    p.setBrush(kRed);
    for (const QPointF& pole : {QPointF(5, 10), QPointF(6.2, 11.2), QPointF(4.4, 11.6)})
        p.drawEllipse(pole, 1.0, 1.0);
}

void tangentPlot(QPainter& p)
{
    circle(p);
    p.setPen(QPen(kGreen.darker(120), 1.2, Qt::SolidLine, Qt::RoundCap));
    for (int i = 0; i < 6; ++i) {
        const double a = qDegreesToRadians(i * 60.0 + 15), r = 4.2, half = 1.8;
        const QPointF c(8 + r * std::cos(a), 8 + r * std::sin(a));
        const QPointF t(-std::sin(a) * half, std::cos(a) * half);
        p.drawLine(c - t, c + t);
    }
    p.setPen(Qt::NoPen);
    p.setBrush(kOutline);
    p.drawEllipse(QPointF(8, 8), 0.9, 0.9);
}

void wellLogPlot(QPainter& p)
{
    p.fillRect(QRectF(1, 1, 4, 14), QColor(225, 215, 180));
    p.setPen(QPen(kOutline, 0.8));
    p.drawRect(QRectF(1, 1, 4, 14));
    for (int y = 3; y < 15; y += 3)
        p.drawLine(QPointF(1, y + 0.5), QPointF(3, y + 0.5));
    QPainterPath curve(QPointF(9, 1));
    const double xs[] = {9, 12, 8, 13, 10, 14, 9, 11};
    for (int i = 1; i < 8; ++i)
        curve.lineTo(xs[i], 1 + i * 2);
    p.setPen(QPen(kBlue, 1.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPath(curve);
}

void cursors(QPainter& p)
{
    p.setPen(QPen(kOutline, 1.4));
    p.drawLine(QPointF(8, 1), QPointF(8, 6));
    p.drawLine(QPointF(8, 10), QPointF(8, 15));
    p.drawLine(QPointF(1, 8), QPointF(6, 8));
    p.drawLine(QPointF(10, 8), QPointF(15, 8));
    p.setPen(QPen(kRed, 1));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(8, 8), 2.2, 2.2);
}
// Signs of the select-cells conditions: a dark glyph on a pale key, as the silk set draws text.
void signKey(QPainter& p)
{
    p.setPen(QPen(kOutline.lighter(140), 0.8));
    p.setBrush(QColor(245, 246, 250));
    p.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 2.5, 2.5);
    p.setPen(QPen(kBlue.darker(130), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
}

void angle(QPainter& p, bool opensRight, double dy)
{
    const double tip = opensRight ? 4.5 : 11.5, open = opensRight ? 11.5 : 4.5;
    p.drawPolyline(QPolygonF({QPointF(open, 3.5 + dy), QPointF(tip, 7 + dy), QPointF(open, 10.5 + dy)}));
}

void underline(QPainter& p) { p.drawLine(QPointF(4.5, 12.5), QPointF(11.5, 12.5)); }

void equalThan(QPainter& p)
{
    signKey(p);
    p.drawLine(QPointF(4, 6), QPointF(12, 6));
    p.drawLine(QPointF(4, 10), QPointF(12, 10));
}
void lessThan(QPainter& p) { signKey(p); angle(p, true, 1); }
void lessEqualThan(QPainter& p) { signKey(p); angle(p, true, -1); underline(p); }
void greaterThan(QPainter& p) { signKey(p); angle(p, false, 1); }
void greaterEqualThan(QPainter& p) { signKey(p); angle(p, false, -1); underline(p); }

void betweenBars(QPainter& p)
{
    p.drawLine(QPointF(3, 3.5), QPointF(3, 12.5));
    p.drawLine(QPointF(13, 3.5), QPointF(13, 12.5));
    p.setPen(QPen(kOrange, 1.5, Qt::SolidLine, Qt::RoundCap));
}
void between(QPainter& p)
{
    signKey(p);
    betweenBars(p);
    p.drawLine(QPointF(5.5, 8), QPointF(10.5, 8));
}
void betweenEqual(QPainter& p)
{
    signKey(p);
    betweenBars(p);
    p.drawLine(QPointF(4.5, 6.5), QPointF(11.5, 6.5));
    p.drawLine(QPointF(4.5, 9.5), QPointF(11.5, 9.5));
}

// Cursor bitmaps are monochrome BMPs, 32x32 with the hot spot in the middle: a bitmap where
// black is drawn, and a mask that also covers a one-pixel white halo so the cross shows on any
// cell colour.
QImage crossBitmap(int arm, bool mask)
{
    QImage image(32, 32, QImage::Format_Mono);
    image.fill(0);
    for (int d = -arm; d <= arm; ++d) {
        for (int w = mask ? -1 : 0; w <= (mask ? 1 : 0); ++w) {
            image.setPixel(16 + d, 16 + w, 1);
            image.setPixel(16 + w, 16 + d, 1);
        }
    }
    if (mask) {
        for (int w = -1; w <= 1; ++w) {
            image.setPixel(16 - arm - 1, 16 + w, 1);
            image.setPixel(16 + arm + 1, 16 + w, 1);
            image.setPixel(16 + w, 16 - arm - 1, 1);
            image.setPixel(16 + w, 16 + arm + 1, 1);
        }
    }
    return image;
}
} // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    const QString dir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral(".");
    const struct {
        const char* name;
        void (*draw)(QPainter&);
    } icons[] = {{"histogram", histogram}, {"cross_plot", crossPlot},     {"rose_plot", rosePlot}, {"stereo_plot", stereoPlot},
                 {"tangent_plot", tangentPlot}, {"well_log_plot", wellLogPlot}, {"cursors", cursors},
                 {"mathSign_EqualThan", equalThan}, {"mathSign_lessThan", lessThan},
                 {"mathSign_lessEqualThan", lessEqualThan}, {"mathSign_GreaterThan", greaterThan},
                 {"mathSign_GreaterEqualThan", greaterEqualThan}, {"mathSign_Between", between},
                 {"mathSign_BetweenEqual", betweenEqual}};
    for (const auto& icon : icons) {
        QImage image = canvas();
        QPainter p(&image);
        p.setRenderHint(QPainter::Antialiasing);
        icon.draw(p);
        p.end();
        if (!image.save(dir + QLatin1Char('/') + QLatin1String(icon.name) + QStringLiteral(".png")))
            return 1;
    }
    const struct {
        const char* name;
        int arm;
        bool mask;
    } cursors[] = {{"CrossCursor", 7, false}, {"CrossCursorMask", 7, true}, {"BigCrossCursor", 12, false},
                   {"BigCrossCursorMask", 12, true}};
    for (const auto& c : cursors)
        if (!crossBitmap(c.arm, c.mask).save(dir + QLatin1Char('/') + QLatin1String(c.name) + QStringLiteral(".bmp")))
            return 1;
    return 0;
}
