// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// Makes a copy of the `.qm` catalogue `file` that has only the messages without a context, and
/// that QTranslator can search safely. Empty if `file` is not a catalogue or its parts do not fit.
///
/// QTranslator trusts every length and offset that it reads, and loads further catalogues that a
/// catalogue names. So the copy leaves out damaged messages, the names of other catalogues, and the
/// rules for plurals.
QByteArray contextFreeCatalog(const QByteArray& file);
