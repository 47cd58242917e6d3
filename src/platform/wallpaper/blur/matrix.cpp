// SPDX-License-Identifier: BSD-3-Clause
#include "matrix.h"

Matrix operator*(const Matrix& left, const Matrix& right)
{
    Matrix product(left.rows(), right.columns());
    for (int row = 0; row < left.rows(); ++row) {
        double* const target = product.row(row);
        for (int i = 0; i < left.columns(); ++i) {
            const double factor = left.row(row)[i];
            const double* const source = right.row(i);
            for (int column = 0; column < right.columns(); ++column) {
                target[column] += factor * source[column];
            }
        }
    }
    return product;
}

Matrix timesPower(Matrix left, Matrix base, int exponent)
{
    for (; exponent > 0; exponent /= 2) {
        if (exponent % 2 == 1) {
            left = left * base;
        }
        if (exponent > 1) {
            base = base * base;
        }
    }
    return left;
}
