#pragma once
// Eigenvalues and eigenvectors of the 3 x 3 orientation matrix: one plane reflection to
// tridiagonal form, then QL sweeps with implicit shifts. The mean orientations, the T and L
// directions and the Woodcock and Mardia figures all read their axes from here.
//
// Rules callers rely on:
// - Eigenvalues come out ascending; column i of q is the unit eigenvector of eigenvalues[i],
//   and q is a proper rotation (determinant +1).
// - After 32 sweeps without convergence the solver gives up and returns false: eigenvalues
//   keeps whatever the caller put in it, and q holds the unsorted working rotation.
// - Two equal diagonal entries with nothing off the diagonal make a closed-form block whose
//   rotation has length 0; the two eigenvectors concerned are then NaN while the eigenvalues
//   stay right. Only data lying exactly along a coordinate axis meets this.

namespace rkBase {

class SymmetricEigenSolver
{
public:
    // m: three rows of three doubles; only the upper triangle is read.
    static bool solve(const double* const* m, double eigenvalues[3], double q[3][3]);
    static bool solve(const double m[3][3], double eigenvalues[3], double q[3][3]);
};

} // namespace rkBase
