#pragma once
// Three values of one type, read as P, Q and R (eigenvalues, Woodcock ratios and the like).

namespace rke {
namespace rkUtils {
namespace rkMath {

template <class T> class Triple
{
public:
    Triple() : m_p(), m_q(), m_r() {}
    Triple(const T& p, const T& q, const T& r) : m_p(p), m_q(q), m_r(r) {}

    const T& getP() const { return m_p; }
    const T& getQ() const { return m_q; }
    const T& getR() const { return m_r; }
    void setP(const T& v) { m_p = v; }
    void setQ(const T& v) { m_q = v; }
    void setR(const T& v) { m_r = v; }
    bool operator==(const Triple& o) const { return m_p == o.m_p && m_q == o.m_q && m_r == o.m_r; }

private:
    T m_p;
    T m_q;
    T m_r;
};

} // namespace rkMath
} // namespace rkUtils
} // namespace rke
