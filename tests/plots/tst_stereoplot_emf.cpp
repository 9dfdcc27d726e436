// The stereonet copied as an enhanced metafile: density bands and iso-lines that cross the rim
// still reach it, inside the disc the chart clips them to, as they do on the screen.
#include "EmfRecords.h"
#include "RimBandStereo.h"

#include <QtTest>

#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <map>

namespace {

constexpr uint32_t kStock = 0xffffffff; // a stock object: no colour of ours

// A drawing record with the colours in force: the brush for a polygon, the pen for a polyline.
struct Shape {
    bool polygon = false;
    uint32_t colour = 0;
    QVector<QPointF> points;
};

std::vector<Shape> shapes(const EmfFile& emf)
{
    struct Object {
        bool pen = false;
        uint32_t colour = 0;
    };
    std::map<uint32_t, Object> objects; // by index, as created last (indices are reused)
    uint32_t pen = 0, brush = 0;
    std::vector<Shape> out;
    for (const EmfRecord& r : emf.records) {
        switch (r.type) {
        case U_EMR_CREATEPEN: {
            const auto* p = r.as<U_EMRCREATEPEN>();
            objects[p->ihPen] = {true, emfrecords::colour(p->lopn.lopnColor)};
            break;
        }
        case U_EMR_CREATEBRUSHINDIRECT: {
            const auto* b = r.as<U_EMRCREATEBRUSHINDIRECT>();
            objects[b->ihBrush] = {false, emfrecords::colour(b->lb.lbColor)};
            break;
        }
        case U_EMR_SELECTOBJECT: {
            const uint32_t index = r.as<U_EMRSELECTOBJECT>()->ihObject;
            if (index & U_STOCK_OBJECT) {
                (emfrecords::kindOfStock(index & 0xff) == 0 ? pen : brush) = kStock;
            } else {
                const auto it = objects.find(index);
                if (it != objects.end())
                    (it->second.pen ? pen : brush) = it->second.colour;
            }
            break;
        }
        case U_EMR_POLYGON16:
        case U_EMR_POLYLINE16: {
            const auto* p = r.as<U_EMRPOLYLINE16>();
            Shape s;
            s.polygon = r.type == U_EMR_POLYGON16;
            s.colour = s.polygon ? brush : pen;
            for (uint32_t i = 0; i < p->cpts; ++i)
                s.points << QPointF(p->apts[i].x, p->apts[i].y);
            out.push_back(s);
            break;
        }
        default: break;
        }
    }
    return out;
}

uint32_t colourRef(const QColor& c) { return uint32_t(c.red()) | uint32_t(c.green()) << 8 | uint32_t(c.blue()) << 16; }

} // namespace

class TestStereoPlotEmf : public QObject
{
    Q_OBJECT
private slots:
    void bandsReachTheRim_data();
    void bandsReachTheRim();
};

void TestStereoPlotEmf::bandsReachTheRim_data()
{
    // A stereonet's density contours always have their iso-lines: in the band colours, or in
    // the label colour with "with Contours" on.
    QTest::addColumn<bool>("lines");
    QTest::newRow("iso-lines in the band colours") << false;
    QTest::newRow("iso-lines in the label colour") << true;
}

void TestStereoPlotEmf::bandsReachTheRim()
{
    QFETCH(bool, lines);
    RimBandStereo net(lines);
    const QByteArray bytes = net.metafile();
    const EmfFile emf = readEmf(bytes);
    QVERIFY2(emf.ok(), qPrintable(emf.error));
    const QPointF centre(net.centre());
    const double R = net.radius();
    const double cell = 2 * R / (RimBandStereo::kNodes - 1);
    auto distance = [&](const QPointF& p) { return std::hypot(p.x() - centre.x(), p.y() - centre.y()); };

    const std::vector<QColor> colours = RimBandStereo::bandColours();
    std::vector<double> reach(colours.size(), 0.0); // farthest band vertex from the centre
    std::map<int, double> lineReach;                // iso-line x -> farthest end
    std::vector<QPolygonF> fills;
    for (const Shape& s : shapes(emf)) {
        double farthest = 0.0;
        for (const QPointF& p : s.points)
            farthest = std::max(farthest, distance(p));
        if (s.polygon && s.points.size() >= 3) {
            for (std::size_t b = 0; b < colours.size(); ++b) {
                if (s.colour != colourRef(colours[b]))
                    continue;
                // Clipped to the disc of R + 2 (whole pixels, truncated).
                QVERIFY2(farthest <= R + 3, qPrintable(QStringLiteral("band %1 at %2").arg(b).arg(farthest)));
                reach[b] = std::max(reach[b], farthest);
                fills.push_back(QPolygonF(QVector<QPointF>(s.points.begin(), s.points.end())));
            }
        }
        // The iso-lines of a west-east ramp run north-south, in the label colour over the fill.
        if (!s.polygon && s.points.size() == 2 && s.colour == 0 && s.points[0].x() == s.points[1].x()
            && std::abs(s.points[0].y() - s.points[1].y()) > 0) {
            QVERIFY(farthest <= R + 3);
            double& r = lineReach[int(s.points[0].x())];
            r = std::max(r, farthest);
        }
    }
    // Every band, each one a strip across the disc, reaches the rim: the pieces the clip cuts
    // are cut, not dropped. All round the rim the fill leaves no gap.
    for (std::size_t b = 0; b < colours.size(); ++b)
        QVERIFY2(reach[b] >= R - 1.0,
                 qPrintable(QStringLiteral("band %1 reaches %2 of %3").arg(b).arg(reach[b]).arg(R)));
    for (int degrees = 0; degrees < 360; degrees += 5) {
        const double a = degrees * 3.14159265358979323846 / 180.0;
        const QPointF p = centre + (R - 2.0) * QPointF(std::cos(a), std::sin(a));
        QVERIFY2(std::any_of(fills.cbegin(), fills.cend(),
                             [&](const QPolygonF& f) { return f.containsPoint(p, Qt::OddEvenFill); }),
                 qPrintable(QStringLiteral("no fill at %1 degrees, 2 px inside the rim").arg(degrees)));
    }
    if (lines) {
        // One line at each band's lower level, four cells apart (the lowest along the grid's west
        // side, where it touches the rim), every one reaching the rim.
        QCOMPARE(int(lineReach.size()), RimBandStereo::kBands);
        for (const auto& [x, r] : lineReach)
            QVERIFY2(r >= R - cell, qPrintable(QStringLiteral("iso-line at x %1 reaches %2").arg(x).arg(r)));
    } else {
        QVERIFY(lineReach.empty());
    }
}

QTEST_MAIN(TestStereoPlotEmf)
#include "tst_stereoplot_emf.moc"
