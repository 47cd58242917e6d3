// SPDX-License-Identifier: BSD-3-Clause
#include "progressline.h"

#include <QTextStream>

#include <cstdio>
#include <unistd.h>

namespace {

// Back to the start of the line, and delete it.
constexpr const char* clearLine = "\r\033[K";

} // namespace

ProgressLine::ProgressLine()
    : m_onTerminal(isatty(STDERR_FILENO) == 1)
{
}

ProgressLine::~ProgressLine()
{
    if (m_onTerminal) {
        QTextStream(stderr) << clearLine;
    }
}

void ProgressLine::show(const Library::Counts& counts)
{
    if (!m_onTerminal) {
        return;
    }
    QTextStream(stderr) << clearLine
                        << QStringLiteral("Indexing: %1 of %2 pictures read, %3 folders")
                               .arg(counts.photos - counts.waitingPhotos)
                               .arg(counts.photos)
                               .arg(counts.folders);
}
