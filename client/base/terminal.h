// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// The terminal that the process writes to.
namespace Terminal {

/// The number of columns of the standard output. 0 if it is not a terminal; then lines can have any
/// length.
int outputColumns();

/// Whether the standard error is a terminal, so that progress can be shown there.
bool showsErrors();

} // namespace Terminal
