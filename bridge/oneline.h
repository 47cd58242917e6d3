// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// A text for people in one line, whatever is in it: names of files may have line breaks.
QString oneLine(QString text);
