#include "SymmetricEigenSolver.h"

#include <MathConstants.h>

#include <cmath>
#include <utility>

namespace rkBase {

namespace {
constexpr int kMaxSweeps = 32;

// Right-multiplies q by the plane rotation (c, s) acting on columns lo and hi.
void rotateColumns(double q[3][3], int lo, int hi, double c, double s)
{
    for (int row = 0; row < 3; ++row) {
        const double t = q[row][hi];
        q[row][hi] = s * q[row][lo] + c * t;
        q[row][lo] = c * q[row][lo] - s * t;
    }
}

// Diagonalises the 2 x 2 block (a f; f b) held in d[lo], d[lo + 1], offDiagonal, and turns the
// matching columns of q with it. The smaller root goes to d[lo].
void solveBlock(double d[3], int lo, double offDiagonal, double q[3][3])
{
    const double a = d[lo];
    const double b = d[lo + 1];
    const double h = a - b;
    const double w = std::sqrt(4.0 * offDiagonal * offDiagonal + h * h);
    const double smaller = 0.5 * (a + b - w);
    const double larger = 0.5 * (a + b + w);
    double c;
    double s;
    if (h >= 0.0) {
        c = offDiagonal;
        s = a - smaller;
    } else {
        c = b - smaller;
        s = offDiagonal;
    }
    // A vanishing pair (equal entries, no coupling) gives 0/0 here: left unguarded on purpose,
    // the eigenvalues are still right.
    const double inv = 1.0 / std::sqrt(c * c + s * s);
    c *= inv;
    s *= inv;
    rotateColumns(q, lo, lo + 1, c, s);
    d[lo] = smaller;
    d[lo + 1] = larger;
}

void swapColumns(double q[3][3], int i, int j)
{
    for (int row = 0; row < 3; ++row)
        std::swap(q[row][i], q[row][j]);
}
} // namespace

bool SymmetricEigenSolver::solve(const double m[3][3], double eigenvalues[3], double q[3][3])
{
    const double* rows[3] = {m[0], m[1], m[2]};
    return solve(rows, eigenvalues, q);
}

bool SymmetricEigenSolver::solve(const double* const* m, double eigenvalues[3], double q[3][3])
{
    const double m00 = m[0][0], m01 = m[0][1], m02 = m[0][2];
    const double m11 = m[1][1], m12 = m[1][2], m22 = m[2][2];

    double d[3];
    double e[2];
    // Tracks the determinant of q: a reflection is -1, each column swap flips it again.
    bool reflection;
    if (std::abs(m02) < rkMath::MathConstantsDouble::ZERO_TOLERANCE) {
        d[0] = m00;
        d[1] = m11;
        d[2] = m22;
        e[0] = m01;
        e[1] = m12;
        const double identity[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        for (int r = 0; r < 3; ++r)
            for (int c = 0; c < 3; ++c)
                q[r][c] = identity[r][c];
        reflection = false;
    } else {
        const double length = std::sqrt(m01 * m01 + m02 * m02);
        const double u = m01 / length;
        const double v = m02 / length;
        const double t = (m22 - m11) * v + 2.0 * u * m12;
        d[0] = m00;
        d[1] = m11 + t * v;
        d[2] = m22 - t * v;
        e[0] = length;
        e[1] = m12 - t * u;
        q[0][0] = 1.0; q[0][1] = 0.0; q[0][2] = 0.0;
        q[1][0] = 0.0; q[1][1] = u;   q[1][2] = v;
        q[2][0] = 0.0; q[2][1] = v;   q[2][2] = -u;
        reflection = true;
    }

    bool converged = false;
    for (int sweep = 0; sweep < kMaxSweeps && !converged; ++sweep) {
        // Negligible coupling is judged by whether it still changes the sum in double arithmetic.
        double sum = std::abs(d[0]) + std::abs(d[1]);
        if (std::abs(e[0]) + sum == sum) {
            solveBlock(d, 1, e[1], q);
            e[0] = e[1] = 0.0;
            converged = true;
            break;
        }
        sum = std::abs(d[1]) + std::abs(d[2]);
        if (std::abs(e[1]) + sum == sum) {
            solveBlock(d, 0, e[0], q);
            e[0] = e[1] = 0.0;
            converged = true;
            break;
        }

        // Wilkinson shift from the upper block, applied implicitly.
        double ratio = (d[1] - d[0]) / (2.0 * e[0]);
        double root = std::sqrt(ratio * ratio + 1.0);
        double a = d[2] - d[0] + e[0] / (ratio < 0.0 ? ratio - root : ratio + root);
        double b = e[1];
        double c;
        double s;
        // Each rotation divides by the larger of its two operands.
        if (std::abs(b) >= std::abs(a)) {
            ratio = a / b;
            s = 1.0 / std::sqrt(1.0 + ratio * ratio);
            c = ratio * s;
        } else {
            ratio = b / a;
            c = 1.0 / std::sqrt(1.0 + ratio * ratio);
            s = ratio * c;
        }
        rotateColumns(q, 1, 2, c, s);

        double t0 = (d[1] - d[2]) * s + 2.0 * e[1] * c;
        const double t1 = c * e[0];
        b = s * e[0];
        a = c * t0 - e[1];
        t0 *= s;

        if (std::abs(b) >= std::abs(a)) {
            ratio = a / b;
            root = std::sqrt(1.0 + ratio * ratio);
            e[1] = b * root;
            s = 1.0 / root;
            c = ratio * s;
        } else {
            ratio = b / a;
            root = std::sqrt(1.0 + ratio * ratio);
            e[1] = a * root;
            c = 1.0 / root;
            s = ratio * c;
        }
        rotateColumns(q, 0, 1, c, s);

        const double t2 = d[1] - t0;
        d[2] += t0;
        t0 = (d[0] - t2) * s + 2.0 * t1 * c;
        e[0] = c * t0 - t1;
        t0 *= s;
        d[1] = t2 + t0;
        d[0] -= t0;
    }
    if (!converged)
        return false;

    // Ascending order by three compare-and-swap steps.
    const int pairs[3][2] = {{0, 1}, {1, 2}, {0, 1}};
    for (const auto& p : pairs) {
        if (d[p[1]] < d[p[0]]) {
            std::swap(d[p[0]], d[p[1]]);
            swapColumns(q, p[0], p[1]);
            reflection = !reflection;
        }
    }
    if (reflection) {
        for (int row = 0; row < 3; ++row)
            q[row][2] = -q[row][2];
    }
    for (int i = 0; i < 3; ++i)
        eigenvalues[i] = d[i];
    return true;
}

} // namespace rkBase
