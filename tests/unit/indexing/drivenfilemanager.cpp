// SPDX-License-Identifier: BSD-3-Clause
#include "drivenfilemanager.h"

#include "content/moodsetcontent.h"
#include "indexing/imagemanager.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <unistd.h>

namespace {

QueryAgentDatabase& withImageManagers(QueryAgentDatabase& database)
{
    ContentManager::setFactory([](int type, QueryAgentDatabase& connection) -> ContentManager* {
        return type == MoodsetContent::Image ? new ImageManager(connection) : nullptr;
    });
    return database;
}

} // namespace

DrivenFileManager::DrivenFileManager(QueryAgentDatabase& database)
    : FileManager(withImageManagers(database), nullptr)
{
}

DrivenFileManager::~DrivenFileManager()
{
    setEnabled(false);
    if (socket() >= 0) {
        close(int(socket()));
    }
}

bool DrivenFileManager::step()
{
    const int before = m_steps;
    // An event that is posted during this call waits for the next call.
    QCoreApplication::sendPostedEvents(this, QEvent::UpdateRequest);
    return m_steps > before;
}

int DrivenFileManager::runToIdle()
{
    int steps = 0;
    while (step()) {
        ++steps;
    }
    return steps;
}

void DrivenFileManager::readEvents()
{
    QEvent readable(QEvent::SockAct);
    event(&readable);
}

QVector<uint> DrivenFileManager::watchMasks() const
{
    QFile info(QStringLiteral("/proc/self/fdinfo/%1").arg(socket()));
    if (!info.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QRegularExpression mask(
        QStringLiteral("^inotify .* mask:([0-9a-f]+) "), QRegularExpression::MultilineOption);
    QVector<uint> masks;
    auto matches = mask.globalMatch(QString::fromLatin1(info.readAll()));
    while (matches.hasNext()) {
        masks.append(matches.next().captured(1).toUInt(nullptr, 16) & 0xfffU);
    }
    std::sort(masks.begin(), masks.end());
    return masks;
}

bool DrivenFileManager::event(QEvent* event)
{
    if (event->type() == QEvent::UpdateRequest) {
        ++m_steps;
    }
    return FileManager::event(event);
}
