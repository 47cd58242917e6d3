// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// Shows the progress of work on the standard error: on a terminal, in one line that is overwritten
/// each time and removed at the end. If the standard error is not a terminal, nothing is shown.
class ProgressLine
{
public:
    /// Shows nothing if not wanted.
    explicit ProgressLine(bool isWanted = true);
    ~ProgressLine();
    Q_DISABLE_COPY_MOVE(ProgressLine)

    void show(const QString& text);

private:
    bool m_isShown;
    QString m_last;
};
