// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "indexing/filemanager.h"

#include <QMap>
#include <QString>
#include <QVector>

/// A file manager that a test drives step by step. At its end, it closes its inotify descriptor,
/// because the kernel allows only a few for each user. The registry makes only the manager of
/// images besides, which reads what a scan has found.
class DrivenFileManager : public FileManager
{
public:
    explicit DrivenFileManager(QueryAgentDatabase& database);
    ~DrivenFileManager() override;

    /// Runs the posted step; false if none was posted.
    bool step();
    /// Runs steps until none is posted. Returns their number.
    int runToIdle();
    /// Reads all pending events of the kernel at once.
    void readEvents();
    /// The event masks of the kernel's watches, sorted.
    QVector<uint> watchMasks() const;

    bool event(QEvent* event) override;

private:
    int m_steps = 0;
};
