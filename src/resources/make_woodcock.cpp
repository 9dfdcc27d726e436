// Draws the eigenvalue ratio diagram that QWoodcockHelpWidget plots on: ln(S2/S3) along x and
// ln(S1/S2) up y, both from 0 to 5, with the lines of constant shape K = y / x and of constant
// strength C = x + y, and the fields of clustered, girdled and uniform distributions.
//   make_woodcock <output file>
//
// The widget does not read the picture's axes: it finds them from positions measured at 383 and
// 634 pixels (QWoodcockHelpWidget::point). The picture is therefore drawn at 634 x 634 with its
// axes on the 634-pixel positions, 2 pixels wide and on whole pixels so that they stay crisp. At
// 383 pixels the same axes land 0.2 to 0.9 pixel from the 383-pixel positions, which are not
// exactly proportional to the others; that is as close as one picture gets to both.
#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <cstdio>

namespace {

constexpr int kSize = 634;
// The origin and the ends (value 5) of both axes, in painter coordinates.
constexpr double kOriginX = 100.0;
constexpr double kOriginY = 561.0;
constexpr double kEndX = 546.0;
constexpr double kEndY = 113.0;
constexpr double kMax = 5.0;

const QColor kAxis(20, 20, 20);
const QColor kFrame(150, 150, 150);
const QColor kGrid(236, 236, 236);
const QColor kShapeLine(38, 74, 140);
const QColor kStrengthLine(110, 110, 110);
const QColor kClusterTint(234, 241, 251);
const QColor kGirdleTint(251, 243, 231);
const QColor kFieldText(150, 40, 30);

QPointF at(double x, double y)
{
    return {kOriginX + (kEndX - kOriginX) * x / kMax, kOriginY - (kOriginY - kEndY) * y / kMax};
}

QFont font(double pixels, bool italic = false, bool bold = false)
{
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(int(std::lround(pixels)));
    f.setItalic(italic);
    f.setBold(bold);
    f.setHintingPreference(QFont::PreferNoHinting);
    return f;
}

// Text centred on a point, turned by angle degrees, over a white patch so that the lines under it
// give way.
void label(QPainter& p, const QPointF& centre, const QString& text, const QFont& f, const QColor& colour,
           double angle = 0.0, bool patch = true)
{
    p.save();
    p.translate(centre);
    p.rotate(angle);
    p.setFont(f);
    const QFontMetricsF m(f);
    const QRectF box(-m.horizontalAdvance(text) / 2.0, -m.height() / 2.0, m.horizontalAdvance(text), m.height());
    if (patch) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(255, 255, 255, 235));
        p.drawRoundedRect(box.adjusted(-4, -1, 4, 1), 4, 4);
    }
    p.setPen(colour);
    p.drawText(box, Qt::AlignCenter, text);
    p.restore();
}

// The end of the line y = k x inside the square.
QPointF shapeLineEnd(double k)
{
    return k <= 1.0 ? QPointF(kMax, kMax * k) : QPointF(kMax / k, kMax);
}

void fields(QPainter& p)
{
    QPainterPath cluster;
    cluster.moveTo(at(0, 0));
    cluster.lineTo(at(kMax, kMax));
    cluster.lineTo(at(0, kMax));
    cluster.closeSubpath();
    p.fillPath(cluster, kClusterTint);
    QPainterPath girdle;
    girdle.moveTo(at(0, 0));
    girdle.lineTo(at(kMax, 0));
    girdle.lineTo(at(kMax, kMax));
    girdle.closeSubpath();
    p.fillPath(girdle, kGirdleTint);

    p.setPen(QPen(kGrid, 1.0));
    for (int v = 1; v < 5; ++v) {
        p.drawLine(at(v, 0), at(v, kMax));
        p.drawLine(at(0, v), at(kMax, v));
    }
}

void strengthLines(QPainter& p)
{
    QPen pen(kStrengthLine, 1.4, Qt::CustomDashLine, Qt::FlatCap);
    pen.setDashPattern({6, 4});
    p.setPen(pen);
    for (double c : {2.0, 4.0, 6.0}) {
        const QPointF from(std::min(c, kMax), c - std::min(c, kMax));
        const QPointF to(c - std::min(c, kMax), std::min(c, kMax));
        p.drawLine(at(from.x(), from.y()), at(to.x(), to.y()));
    }
}

void shapeLines(QPainter& p)
{
    for (double k : {0.2, 0.5, 1.0, 2.0, 5.0}) {
        p.setPen(QPen(kShapeLine, k == 1.0 ? 2.4 : 1.5, Qt::SolidLine, Qt::FlatCap));
        const QPointF end = shapeLineEnd(k);
        p.drawLine(at(0, 0), at(end.x(), end.y()));
    }
}

void shapeLabels(QPainter& p)
{
    const QFont f = font(14);
    const QFontMetricsF m(f);
    for (double k : {0.2, 0.5, 1.0, 2.0, 5.0}) {
        const QString text = QStringLiteral("K = %1").arg(k);
        const QPointF end = at(shapeLineEnd(k).x(), shapeLineEnd(k).y());
        QPointF centre;
        if (k < 1.0)
            centre = end + QPointF(10.0 + m.horizontalAdvance(text) / 2.0, 0.0);
        else if (k > 1.0)
            centre = end + QPointF(0.0, -10.0 - m.height() / 2.0);
        else
            centre = end + QPointF(8.0 + m.horizontalAdvance(text) / 2.0, -8.0 - m.height() / 2.0);
        label(p, centre, text, f, kShapeLine, 0.0, false);
    }
}

void strengthLabels(QPainter& p)
{
    // Between the lines K = 0.2 and K = 0.5, where no other line runs, along the line itself.
    const QFont f = font(14);
    for (double c : {2.0, 4.0, 6.0}) {
        const double k = 0.34;
        const double x = c / (1.0 + k);
        label(p, at(x, k * x), QStringLiteral("C = %1").arg(c), f, kStrengthLine.darker(130), 45.0);
    }
}

void fieldLabels(QPainter& p)
{
    const QFont f = font(19, true, true);
    label(p, at(3.2, 4.35), QStringLiteral("clusters"), f, kFieldText, 0.0, false);
    label(p, at(4.3, 3.15), QStringLiteral("girdles"), f, kFieldText, 0.0, false);
    label(p, at(0.62, 0.3), QStringLiteral("uniform"), font(16, true, true), kFieldText);
}

void frameAndAxes(QPainter& p)
{
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(kFrame, 1.0));
    p.drawLine(at(0, kMax) + QPointF(1, 0), at(kMax, kMax));
    p.drawLine(at(kMax, kMax), at(kMax, 0) - QPointF(0, 1));

    // Two pixels wide on whole pixels: crisp here, and still one dark pixel when scaled down.
    const QPen axis(kAxis, 2.0, Qt::SolidLine, Qt::SquareCap);
    p.setPen(axis);
    p.drawLine(at(0, 0), at(kMax, 0));
    p.drawLine(at(0, 0), at(0, kMax));
    const double tick = 8.0;
    const QFont numbers = font(16);
    p.setFont(numbers);
    const QFontMetricsF m(numbers);
    for (int v = 0; v <= 5; ++v) {
        p.setPen(axis);
        const QPointF onX = at(v, 0);
        const QPointF onY = at(0, v);
        p.drawLine(onX, onX + QPointF(0, tick));
        p.drawLine(onY, onY - QPointF(tick, 0));
        const QString text = QString::number(v);
        p.setPen(kAxis);
        p.drawText(QRectF(onX.x() - 20, onX.y() + tick + 3, 40, m.height()), Qt::AlignHCenter | Qt::AlignTop, text);
        p.drawText(QRectF(onY.x() - tick - 6 - 40, onY.y() - m.height() / 2.0, 40, m.height()),
                   Qt::AlignRight | Qt::AlignVCenter, text);
    }

    const QFont title = font(18);
    label(p, QPointF((kOriginX + kEndX) / 2.0, kOriginY + tick + 3 + m.height() + 18), QStringLiteral("ln(S2/S3)"),
          title, kAxis, 0.0, false);
    label(p, QPointF(kOriginX - tick - 6 - m.horizontalAdvance(QStringLiteral("0")) - 26, (kOriginY + kEndY) / 2.0),
          QStringLiteral("ln(S1/S2)"), title, kAxis, -90.0, false);
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication app(argc, argv);
    const QString file = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("Woodcock.png");

    QImage image(kSize, kSize, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter p(&image);
    p.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    fields(p);
    strengthLines(p);
    shapeLines(p);
    strengthLabels(p);
    fieldLabels(p);
    shapeLabels(p);
    frameAndAxes(p);
    p.end();

    if (!image.save(file)) {
        std::fprintf(stderr, "make_woodcock: cannot write %s\n", qPrintable(file));
        return 1;
    }
    return 0;
}
