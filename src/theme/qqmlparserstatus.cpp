// SPDX-License-Identifier: BSD-3-Clause
// What a class needs of Qt Qml to implement QQmlParserStatus, which is but an interface. Linked for
// this alone, that library and what it brings would take 2 MiB of every daemon's memory.
#include <QQmlParserStatus>

QQmlParserStatus::QQmlParserStatus()
    : d(nullptr)
{
}

// An engine keeps in `d` where it holds this object.
QQmlParserStatus::~QQmlParserStatus()
{
    if (d) {
        *d = nullptr;
    }
}
