// SPDX-License-Identifier: BSD-3-Clause
#include "phone.h"

#include "content/dbmanager.h"
#include "dconfcommand.h"
#include "librarydatabase.h"
#include "mgconfitem.h"
#include "moodset/managerfactory.h"
#include "moodset/moodsetmanager.h"
#include "ngfclient.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace {

QString markerPath()
{
    return QDir::homePath() + QStringLiteral("/.zavro-startupwizard-usersession-done");
}

/// The database of the process, made at the first call.
QString libraryPath()
{
    ContentManager::setFactory(makeManager);
    static_cast<void>(DbManager::instance());
    return LibraryDatabase::standardPath();
}

/// Removes the argument from the calls of a method: `method("text")`.
QStringList soleArguments(const QStringList& calls)
{
    QStringList arguments;
    for (const QString& call : calls) {
        arguments.append(call.section(QLatin1Char('"'), 1, 1));
    }
    return arguments;
}

} // namespace

Phone::Phone()
    : m_writer(libraryPath())
{
    finishWizard();
}

Phone::~Phone()
{
    monitor.reset();
    const QStringList strays = takeWarnings();
    if (!strays.isEmpty()) {
        QTest::qFail(
            qPrintable(QStringLiteral("Stray messages:\n") + strays.join(QLatin1Char('\n'))),
            __FILE__, __LINE__);
    }
    for (const char* table : {"directory", "file", "moodset", "dorselId"}) {
        m_writer.exec(QStringLiteral("DELETE FROM %1").arg(QLatin1String(table)));
    }
    if (QFile::exists(markerPath())) {
        undoWizard();
    }
    MGConfItem::sync();
    runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/desktop/")});
}

bool Phone::start()
{
    if (!cover.appear() || !lock.appear() || !storeClient.appear() || !feedback.appear()) {
        return false;
    }
    makeMonitor();
    return lock.waitForCalls(1) && settle() && QTest::qWaitFor([this] { return hasFeedback(); });
}

void Phone::makeMonitor()
{
    m_switches.reset();
    monitor = std::make_unique<DorselMonitor>(nullptr, firstCheckDelay);
    m_switches = std::make_unique<QSignalSpy>(monitor.get(), &DorselMonitor::activeMoodset);
}

QString Phone::addMoodset(const QString& dorselId, bool isFavorite)
{
    const QString path = QStringLiteral("/bundles/%1 #1.moodset").arg(dorselId);
    const qint64 id = m_writer.addMoodset(path, {{QStringLiteral("favorite"), isFavorite ? 1 : 0}});
    m_writer.exec(
        QStringLiteral("INSERT INTO dorselId (fileId, dorselId) VALUES (?, ?)"), {id, dorselId});
    return path;
}

void Phone::setFavorite(const QString& path, bool isFavorite)
{
    setColumn(path, QStringLiteral("favorite"), isFavorite ? 1 : 0);
}

void Phone::setPartnerSpace(const QString& path, const QString& name)
{
    setColumn(path, QStringLiteral("partnerSpace"), name);
}

void Phone::setColumn(const QString& path, const QString& column, const QVariant& value)
{
    m_writer.exec(
        QStringLiteral("UPDATE moodset SET %1 = ? WHERE fileId = "
                       "(SELECT id FROM file WHERE fileName = ?)")
            .arg(column),
        {value, path.section(QLatin1Char('/'), -1)});
}

void Phone::finishWizard()
{
    QFile marker(markerPath());
    if (!marker.open(QIODevice::WriteOnly)) {
        QTest::qFail("Cannot make the wizard's marker", __FILE__, __LINE__);
    }
}

void Phone::undoWizard()
{
    if (!QFile::remove(markerPath())) {
        QTest::qFail("Cannot remove the wizard's marker", __FILE__, __LINE__);
    }
}

bool Phone::hasFeedback() const
{
    return monitor->findChild<Ngf::Client*>()->isConnected();
}

void Phone::attach(const QString& id)
{
    cover.announce({{QStringLiteral("DORSELID"), id}});
    cover.announce({{QStringLiteral("Ready"), 1}});
}

// A change from a wrong service is the only thing for which the monitor always logs something.
bool Phone::settle()
{
    const QString interface = QStringLiteral("fence%1").arg(++m_fences);
    const QString warning = QStringLiteral(
        "void DorselMonitor::propertiesChanged(const QDBusMessage&) PropertiesChanged from a wrong "
        "service \"org.freedesktop.DBus.Properties\"");
    const int known = m_warnings.count(warning);
    cover.sendChange({interface, QVariantMap(), QStringList()});
    const bool isSettled = QTest::qWaitFor([&] {
        m_warnings += m_log.takeWarnings();
        return m_warnings.count(warning) > known;
    });
    if (isSettled) {
        m_warnings.removeAt(m_warnings.lastIndexOf(warning));
    }
    return isSettled;
}

QStringList Phone::takeWarnings()
{
    m_warnings += m_log.takeWarnings();
    return std::exchange(m_warnings, {});
}

QStringList Phone::takeSwitches()
{
    QStringList urls;
    for (const QVariantList& arguments : std::as_const(*m_switches)) {
        urls.append(arguments.constFirst().toString());
    }
    m_switches->clear();
    return urls;
}

int Phone::takeSounds()
{
    return feedback.takeCalls()
        .filter(QStringLiteral("TriggerFeedback(\"com.zavro.moodsetd\", \"dorsel_attach\", , -1)"))
        .count();
}

QStringList Phone::takeStoreCalls()
{
    return soleArguments(storeClient.takeCalls());
}

QString Phone::storedId()
{
    return MGConfItem(QStringLiteral("/desktop/zavro/theme/dorselid")).value().toString();
}

void Phone::storeId(const QString& id)
{
    store(QStringLiteral("dorselid"), id);
}

void Phone::store(const QString& key, const QVariant& value)
{
    MGConfItem(QStringLiteral("/desktop/zavro/theme/") + key).set(value);
}

QStringList propertyWarnings(const QString& error, const QString& text)
{
    return {
        QStringLiteral("QDBusMessage DorselMonitor::propertyValue(const QString&)"),
        QStringLiteral("Failed to read DORSELD property:  \"%1\" :  \"%2\"").arg(error, text)};
}
