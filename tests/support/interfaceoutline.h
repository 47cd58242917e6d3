// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// The content of an introspection text, one line for each element inside the outermost node, in
/// the text's order: "interface com.example", "method get", "arg in s key", "annotation a b", "node
/// child". Comments and annotations with documentation are left out. A text that cannot be parsed
/// fails the current test.
QStringList interfaceOutline(const QString& xml);
