// SPDX-License-Identifier: BSD-3-Clause
#include "storewatcher.h"

#include "dconfcommand.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QTest>

StoreWatcher::StoreWatcher()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(
        QString(), QStringLiteral("/ca/desrt/dconf/Writer/user"),
        QStringLiteral("ca.desrt.dconf.Writer"), QStringLiteral("Notify"), this,
        SLOT(note(QString, QStringList, QString)));
    // The bus handles messages in their order, so it knows the watcher after this call.
    bus.interface()->isServiceRegistered(QStringLiteral("ca.desrt.dconf"));
    // The service may still have to announce earlier changes.
    if (!catchUp()) {
        QTest::qFail("The store announces nothing", __FILE__, __LINE__);
    }
    m_announcements.clear();
}

int StoreWatcher::announcementOf(const QString& key) const
{
    for (int i = 0; i < m_announcements.size(); ++i) {
        if (m_announcements.at(i).contains(key)) {
            return i;
        }
    }
    return -1;
}

bool StoreWatcher::catchUp()
{
    const QString fence = QStringLiteral("/fence/%1").arg(++m_fences);
    runDconf({QStringLiteral("write"), fence, QStringLiteral("true")});
    constexpr int deadlineMs = 20000;
    return QTest::qWaitFor([&] { return m_announcements.removeAll({fence}) > 0; }, deadlineMs);
}

void StoreWatcher::note(const QString& prefix, const QStringList& names, const QString& tag)
{
    Q_UNUSED(tag)
    QStringList keys;
    for (const QString& name : names) {
        keys.append(prefix + name);
    }
    m_announcements.append(keys);
}
