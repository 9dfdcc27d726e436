// Lines in planes: the plunge and azimuth of a line given by its pitch (rake) in a plane, as the
// stereonet traces great and small circles and the lineation columns are derived from planes.
#include "MatrixData.h"

#include <QRegularExpression>

#include <cmath>

namespace rkBase {

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr double kDegToRad = kPi / 180.0;
constexpr double kRadToDeg = 180.0 / kPi;

double into360(double a)
{
    a = std::fmod(a, 360.0);
    if (a < 0.0)
        a += 360.0;
    if (a >= 360.0) // -1e-17 + 360 rounds to 360
        a -= 360.0;
    return a;
}

// Azimuth of a compass point of up to three letters ("N", "NE", "NNE"), or NaN.
double compassAzimuth(const QString& letters)
{
    auto cardinal = [](QChar c) {
        switch (c.unicode()) {
        case 'N': return 0.0;
        case 'E': return 90.0;
        case 'S': return 180.0;
        case 'W': return 270.0;
        default: return std::nan("");
        }
    };
    // NE, SE, SW, NW: north or south first, then east or west.
    auto intercardinal = [&](const QString& two) {
        const QChar ns = two.at(0);
        const QChar ew = two.at(1);
        if ((ns != QLatin1Char('N') && ns != QLatin1Char('S')) || (ew != QLatin1Char('E') && ew != QLatin1Char('W')))
            return std::nan("");
        if (ns == QLatin1Char('N'))
            return ew == QLatin1Char('E') ? 45.0 : 315.0;
        return ew == QLatin1Char('E') ? 135.0 : 225.0;
    };
    switch (letters.size()) {
    case 1: return cardinal(letters.at(0));
    case 2: return intercardinal(letters);
    case 3: {
        // NNE, ENE, ...: half way from the cardinal to the intercardinal point that contains it.
        const double first = cardinal(letters.at(0));
        const double rest = intercardinal(letters.mid(1));
        if (std::isnan(first) || std::isnan(rest) || !letters.mid(1).contains(letters.at(0)))
            return std::nan("");
        double diff = rest - first;
        if (diff > 180.0)
            diff -= 360.0;
        else if (diff < -180.0)
            diff += 360.0;
        return into360(first + 0.5 * diff);
    }
    default: return std::nan("");
    }
}

// The azimuth a pitch-direction text stands for, or NaN when it names none.
double directionAzimuth(const QString& text)
{
    QString t = text.trimmed().toUpper();
    if (t.isEmpty())
        return std::nan("");
    bool ok = false;
    const double number = t.toDouble(&ok);
    if (ok)
        return std::isfinite(number) ? into360(number) : std::nan("");
    t.replace(QStringLiteral("NORTH"), QStringLiteral("N"));
    t.replace(QStringLiteral("SOUTH"), QStringLiteral("S"));
    t.replace(QStringLiteral("EAST"), QStringLiteral("E"));
    t.replace(QStringLiteral("WEST"), QStringLiteral("W"));
    t.remove(QRegularExpression(QStringLiteral("[\\s\\-_]")));
    return compassAzimuth(t);
}
} // namespace

void MatrixData::plungeAndAzimuth(double& plunge, double& azimuth, const double& dip, const double& dipDirection,
                                  const double& pitch)
{
    const double dipRad = dip * kDegToRad;
    const double ddRad = dipDirection * kDegToRad;
    const double pitchRad = pitch * kDegToRad;
    const double cp = std::cos(pitchRad);
    const double sp = std::sin(pitchRad);
    // Strike end at dip direction - 90: (sin dd, -cos dd, 0); dip line: (cos dd cos dip,
    // sin dd cos dip, sin dip). North, east, down.
    const double sdd = std::sin(ddRad);
    const double cdd = std::cos(ddRad);
    double x = cp * sdd + sp * cdd * std::cos(dipRad);
    double y = -cp * cdd + sp * sdd * std::cos(dipRad);
    double z = sp * std::sin(dipRad);
    if (z < 0.0) {
        // A pitch beyond 0..180 or an overturned dip points upwards: take the lower end.
        x = -x;
        y = -y;
        z = -z;
    }
    const double horizontal = std::sqrt(x * x + y * y);
    plunge = std::atan2(z, horizontal) * kRadToDeg;
    // A vertical line has no azimuth of its own; it keeps the plane's dip direction.
    if (horizontal < 1e-12)
        azimuth = std::isfinite(dipDirection) ? into360(dipDirection) : dipDirection;
    else
        azimuth = into360(std::atan2(y, x) * kRadToDeg);
}

void MatrixData::plungeAndAzimuth(double& plunge, double& azimuth, const double& dip, const double& dipDirection,
                                  const double& pitch, const QString& pitchDirection)
{
    const double named = directionAzimuth(pitchDirection);
    double measured = pitch;
    if (!std::isnan(named) && std::isfinite(dipDirection)) {
        // Cosine of the angle between the named direction and the strike end at dip direction
        // + 90: positive means the text names that end, so the pitch is turned round.
        const double toOtherEnd = std::cos((named - (dipDirection + 90.0)) * kDegToRad);
        if (toOtherEnd > 1e-9)
            measured = 180.0 - pitch;
    }
    plungeAndAzimuth(plunge, azimuth, dip, dipDirection, measured);
}

} // namespace rkBase
