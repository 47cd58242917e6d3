// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "indexing/filemanager.h"

#include <QMap>
#include <QString>
#include <QVector>

/// A file manager that a test turns by hand, so that every step comes when the test says so. It
/// closes its descriptor at the end, of which the kernel grants a user few. Of other managers, the
/// registry makes the one of images, which reads what a scan has found.
class DrivenFileManager : public FileManager
{
public:
    explicit DrivenFileManager(QueryAgentDatabase& database);
    ~DrivenFileManager() override;

    /// Does the posted step; false if none was posted.
    bool step();
    /// Does steps until none is posted; the number of them.
    int runToIdle();
    /// Reads all changes that the kernel has to tell, in one read.
    void readEvents();
    /// The event masks of the kernel's watches, sorted.
    QVector<uint> watchMasks() const;

    bool event(QEvent* event) override;

private:
    int m_steps = 0;
};
