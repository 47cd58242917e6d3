// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

#include <initializer_list>

class QString;

/// Feeds one input to the parser that a target is for. Each target defines it; libFuzzer calls it
/// with what it makes up, the replay with the files of the corpus.
///
/// Ends the process where the parser does what it must not; throws nothing.
void runTarget(const QByteArray& input);

/// Ends the process with a word about it unless `holds`.
void require(bool holds, const char* property);

/// Writes a file, whose folder must exist; ends the process if it cannot.
void writeFile(const QString& path, const QByteArray& content);

/// From now on, a warning that does not begin with one of `texts`, which must be literals, ends the
/// process; those that do are not shown.
void allowNoWarningsBut(std::initializer_list<const char*> texts);
