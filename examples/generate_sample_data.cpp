// Writes the demo's sample well: a deviated well through a plunging fold, logged every half
// metre. Bedding dips follow the fold (poles on a great circle about the fold axis) with noise,
// a few fractures cut across it, and lithology (codes 1 sandstone, 2 shale, 3 limestone,
// 4 siltstone) and porosity change with depth.
//   rk_sample_generator [rows] > examples/data/sample_well.csv
#include <QColor>
#include <QString>
#include <QTextStream>

#include <cmath>
#include <random>

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr double kRad = kPi / 180.0;

struct Vec {
    double x, y, z; // north, east, down
};

Vec lineation(double plunge, double azimuth)
{
    return {std::cos(azimuth * kRad) * std::cos(plunge * kRad), std::sin(azimuth * kRad) * std::cos(plunge * kRad),
            std::sin(plunge * kRad)};
}

Vec cross(const Vec& a, const Vec& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Vec normalised(const Vec& v)
{
    const double l = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    return {v.x / l, v.y / l, v.z / l};
}

// Dip and dip direction of the plane whose pole is p.
void planeFromPole(Vec p, double& dip, double& dipDirection)
{
    if (p.z < 0)
        p = {-p.x, -p.y, -p.z}; // lower hemisphere
    const double plunge = std::asin(std::min(1.0, p.z)) / kRad;
    double trend = std::atan2(p.y, p.x) / kRad;
    dip = 90.0 - plunge;
    dipDirection = std::fmod(trend + 180.0 + 360.0, 360.0);
}
} // namespace

int main(int argc, char** argv)
{
    const int rows = argc > 1 ? std::max(10, QString::fromLocal8Bit(argv[1]).toInt()) : 3000;
    std::mt19937 rng(20261122);
    std::normal_distribution<double> noise(0.0, 4.0);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);

    // Fold axis plunging 15 degrees toward 060; two unit vectors span the plane of the poles.
    const Vec axis = lineation(15.0, 60.0);
    const Vec u = normalised(cross(axis, Vec{0, 0, 1}));
    const Vec v = normalised(cross(axis, u));
    const char* horizons[] = {"Top Alpha", "Top Beta", "Top Gamma", "Top Delta", "Top Epsilon"};

    QTextStream out(stdout);
    out << "Measured Depth,dip,azimuth,SCAT,Type,Name,Horizon,Vertex_colour,X(East),Y(North),Z,Lithology Code,Porosity\r\n";
    double x = 0.0, y = 0.0, z = 1000.0;
    for (int r = 0; r < rows; ++r) {
        const double md = 1000.0 + 0.5 * r;
        // The well builds angle toward the east-north-east.
        const double inclination = std::min(35.0, 0.02 * r) * kRad;
        x += 0.5 * std::sin(inclination) * std::sin(70 * kRad);
        y += 0.5 * std::sin(inclination) * std::cos(70 * kRad);
        z += 0.5 * std::cos(inclination);

        const bool fracture = uniform(rng) < 0.08;
        double dip = 0, azimuth = 0;
        if (fracture) {
            dip = 70.0 + 15.0 * uniform(rng);
            azimuth = std::fmod(150.0 + noise(rng) * 3.0 + 360.0, 360.0);
        } else {
            // Walk around the fold: limbs alternate every ~200 m of hole.
            const double angle = 55.0 * std::sin(md / 200.0 * kPi) * kRad;
            // The hinge has near-flat beds (pole near v, the steep normal to the axis).
            Vec pole{v.x * std::cos(angle) + u.x * std::sin(angle), v.y * std::cos(angle) + u.y * std::sin(angle),
                     v.z * std::cos(angle) + u.z * std::sin(angle)};
            planeFromPole(pole, dip, azimuth);
            dip = std::clamp(dip + noise(rng), 0.0, 90.0);
            azimuth = std::fmod(azimuth + noise(rng) * 1.5 + 360.0, 360.0);
        }
        const int zone = std::min(4, static_cast<int>((md - 1000.0) / (0.5 * rows) * 5.0));
        const int lith = (zone + (uniform(rng) < 0.15 ? 1 : 0)) % 4;
        const double porosity = std::clamp((lith == 0 ? 0.22 : lith == 2 ? 0.12 : 0.06) + 0.03 * noise(rng) / 4.0, 0.0, 0.35);
        const bool scat = !fracture && uniform(rng) < 0.03;
        const QColor colour = fracture ? QColor(200, 30, 30) : scat ? QColor(30, 30, 200) : QColor(40, 160, 60);
        const QString type = fracture ? QStringLiteral("Fracture") : QStringLiteral("Bedding");
        const QString name = QStringLiteral("%1 %2").arg(type).arg(r + 1);
        // The horizon names the interval; its top row is a marker.
        const QString horizon = QString::fromLatin1(horizons[zone]);
        out << QString::number(md, 'f', 1) << ',' << QString::number(dip, 'f', 2) << ','
            << QString::number(azimuth, 'f', 2) << ',' << (scat ? "true" : "false") << ',' << type << ',' << name << ','
            << horizon << ',' << colour.name().toUpper() << ',' << QString::number(x, 'f', 3) << ','
            << QString::number(y, 'f', 3) << ',' << QString::number(z, 'f', 3) << ',' << (lith + 1) << ','
            << QString::number(porosity, 'f', 4) << "\r\n";
    }
    return 0;
}
