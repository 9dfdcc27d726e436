#pragma once
// A point or direction in 3D: the vector type of the orientation geometry (x north, y east,
// z down).

#include <cmath>

class gdfVertex
{
public:
    gdfVertex() = default;
    gdfVertex(double x, double y, double z) : m_x(x), m_y(y), m_z(z) {}
    gdfVertex(const gdfVertex&) = default;
    gdfVertex& operator=(const gdfVertex&) = default;

    double& x() { return m_x; }
    double& y() { return m_y; }
    double& z() { return m_z; }
    double x() const { return m_x; }
    double y() const { return m_y; }
    double z() const { return m_z; }

    double length() const { return std::sqrt(m_x * m_x + m_y * m_y + m_z * m_z); }
    // The unit vector; the zero vector stays zero rather than turning into NaNs.
    gdfVertex normalize() const
    {
        const double l = length();
        return l > 0.0 ? gdfVertex(m_x / l, m_y / l, m_z / l) : gdfVertex();
    }

    gdfVertex operator+(const gdfVertex& o) const { return {m_x + o.m_x, m_y + o.m_y, m_z + o.m_z}; }
    gdfVertex operator-(const gdfVertex& o) const { return {m_x - o.m_x, m_y - o.m_y, m_z - o.m_z}; }
    gdfVertex operator-() const { return {-m_x, -m_y, -m_z}; }
    gdfVertex operator*(double s) const { return {m_x * s, m_y * s, m_z * s}; }
    // Dot product.
    double operator*(const gdfVertex& o) const { return m_x * o.m_x + m_y * o.m_y + m_z * o.m_z; }
    // Cross product.
    gdfVertex operator^(const gdfVertex& o) const
    {
        return {m_y * o.m_z - m_z * o.m_y, m_z * o.m_x - m_x * o.m_z, m_x * o.m_y - m_y * o.m_x};
    }
    bool operator==(const gdfVertex& o) const { return m_x == o.m_x && m_y == o.m_y && m_z == o.m_z; }
    bool operator!=(const gdfVertex& o) const { return !(*this == o); }

private:
    double m_x = 0.0;
    double m_y = 0.0;
    double m_z = 0.0;
};
