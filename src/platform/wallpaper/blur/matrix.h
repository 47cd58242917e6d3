// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <cstddef>
#include <vector>

/// A dense matrix of numbers. They are 0 at first.
class Matrix
{
public:
    Matrix(int rows, int columns)
        : m_rows(rows)
        , m_columns(columns)
        , m_values(size_t(rows) * size_t(columns))
    {
    }

    int rows() const { return m_rows; }
    int columns() const { return m_columns; }
    double* row(int row) { return m_values.data() + offset(row); }
    const double* row(int row) const { return m_values.data() + offset(row); }

private:
    size_t offset(int row) const { return size_t(row) * size_t(m_columns); }

    int m_rows;
    int m_columns;
    std::vector<double> m_values;
};

/// The product; `left` must have as many columns as `right` has rows.
Matrix operator*(const Matrix& left, const Matrix& right);

/// `left` times the square matrix `base` to the power of `exponent`, which must not be negative.
/// The number of matrix products grows with the logarithm of the exponent.
Matrix timesPower(Matrix left, Matrix base, int exponent);
