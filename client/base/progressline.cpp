// SPDX-License-Identifier: BSD-3-Clause
#include "progressline.h"

#include "terminal.h"

#include <QTextStream>

#include <cstdio>

namespace {

// Back to the start of the line, and delete it.
constexpr const char* ClearLine = "\r\033[K";

} // namespace

ProgressLine::ProgressLine(bool isWanted)
    : m_isShown(isWanted && Terminal::showsErrors())
{
}

ProgressLine::~ProgressLine()
{
    if (m_isShown && !m_last.isEmpty()) {
        QTextStream(stderr) << ClearLine;
    }
}

void ProgressLine::show(const QString& text)
{
    if (m_isShown && text != m_last) {
        m_last = text;
        QTextStream(stderr) << ClearLine << text;
    }
}
