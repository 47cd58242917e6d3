// SPDX-License-Identifier: BSD-3-Clause
#include "dorselmonitor.h"

#include "accessorylog.h"
#include "moodset/moodsetmanager.h"
#include "ngfclient.h"
#include "partnerspacemanager.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>
#include <QTimer>
#include <QUrl>

namespace {

const QLatin1String CoverService("com.zavro.dorseld");
const QLatin1String CoverPath("/com/zavro/dorseld");
const QLatin1String PropertiesInterface("org.freedesktop.DBus.Properties");
const QLatin1String PropertiesChangedSignal("PropertiesChanged");
const QLatin1String IdProperty("DORSELID");
const QLatin1String ReadyProperty("Ready");

const QLatin1String LockService("org.pelmomobile.vantile");
const QLatin1String LockPath("/devicelock");
const QLatin1String LockInterface("org.pelmomobile.vantile.devicelock");

const QLatin1String StoreService("com.zavro.zavrostore");
const QLatin1String StorePath("/StoreClient");
const QLatin1String StoreInterface("com.zavro.zavrostore");

const QLatin1String WizardMarker(".zavro-startupwizard-usersession-done");

bool isSet(const MGConfItem& flag, int defaultValue)
{
    return flag.value(defaultValue).toInt() == 1;
}

/// The value in a reply to "Get". It is invalid in an error, whose first argument is a text.
QVariant value(const QDBusMessage& reply)
{
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

/// The properties in a "PropertiesChanged". The map is empty if the argument is not a map, because
/// the bus library ends a process that reads an argument as another type.
QVariantMap properties(const QDBusMessage& message)
{
    const QVariant argument = message.arguments().value(1);
    if (argument.value<QDBusArgument>().currentSignature() != QLatin1String("a{sv}")) {
        return {};
    }
    return qdbus_cast<QVariantMap>(argument);
}

} // namespace

DorselMonitor* DorselMonitor::instance()
{
    static DorselMonitor monitor;
    return &monitor;
}

DorselMonitor::DorselMonitor(QObject* parent, int firstCheckDelay)
    : QObject(parent)
    , m_ngfClient(new Ngf::Client(this))
    , m_activeDorselId(QStringLiteral("/desktop/zavro/theme/dorselid"))
    , m_dorselInstall(QStringLiteral("/desktop/zavro/theme/enable_dorsel_install"))
    , m_followDorselId(QStringLiteral("/desktop/zavro/theme/follow_dorselid_changes"))
    , m_activeMoodset(QStringLiteral("/desktop/zavro/theme/active_moodset"))
{
    connect(m_ngfClient, &Ngf::Client::eventFailed, this, &DorselMonitor::statusFail);
    if (!m_ngfClient->isConnected()) {
        m_ngfClient->connect();
    }
    const QString id = value(propertyValue(IdProperty)).toString();
    const int ready = value(propertyValue(ReadyProperty)).toInt();
    if (!id.isEmpty() && id != activeDorselId()) {
        setActiveDorselId(id);
        scheduleFirstCheck(firstCheckDelay);
    }
    m_ready = ready;
    followServices();
    restorePartnerSpace();
}

DorselMonitor::~DorselMonitor()
{
    QDBusConnection::systemBus().disconnect(
        CoverService, CoverPath, PropertiesInterface, PropertiesChangedSignal, this,
        SLOT(propertiesChanged(QDBusMessage)));
}

QString DorselMonitor::activeDorselId() const
{
    return m_activeDorselId.value().toString();
}

void DorselMonitor::setActiveDorselId(const QString& id)
{
    if (id == activeDorselId()) {
        return;
    }
    m_dorselIdChanged = true;
    m_activeDorselId.set(id);
    MGConfItem::sync();
}

void DorselMonitor::clearActiveDorselId()
{
    setActiveDorselId(QString());
}

bool DorselMonitor::startupWizardFinished() const
{
    return QFile::exists(QDir::homePath() + QDir::separator() + WizardMarker);
}

bool DorselMonitor::dorselInstallEnabled() const
{
    return isSet(m_dorselInstall, 1);
}

bool DorselMonitor::followDORSELIDchanges() const
{
    return isSet(m_followDorselId, 0);
}

// This does not use QDBusInterface, which would first wait for the store client to describe itself.
void DorselMonitor::notifyStore()
{
    if (m_ready == 0 || activeDorselId().isEmpty() || !dorselInstallEnabled()) {
        return;
    }
    if (m_deviceLocked) {
        m_storeNotifyPending = true;
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        StoreService, StorePath, StoreInterface, QStringLiteral("dorselConnected"));
    call << activeDorselId();
    // The daemon works the same if the store client does not answer.
    QDBusConnection::sessionBus().call(call);
}

void DorselMonitor::playSound()
{
    if (!m_ngfClient->isConnected()) {
        qCWarning(accessoryLog) << "void DorselMonitor::playSound()";
        qCWarning(accessoryLog) << "NgfClient not connected!";
        return;
    }
    m_ngfClient->play(QStringLiteral("dorsel_attach"));
}

// This does not use QDBusInterface either: a daemon that hangs would block the start even longer.
QDBusMessage DorselMonitor::propertyValue(const QString& name)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        CoverService, CoverPath, PropertiesInterface, QStringLiteral("Get"));
    call << QString(CoverService) << name;
    const QDBusMessage reply = QDBusConnection::systemBus().call(call);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        qCWarning(accessoryLog) << "QDBusMessage DorselMonitor::propertyValue(const QString&)";
        qCWarning(accessoryLog) << "Failed to read DORSELD property: " << reply.errorName() << ": "
                                << reply.errorMessage();
    }
    return reply;
}

void DorselMonitor::propertiesChanged(const QDBusMessage& message)
{
    if (message.arguments().value(0).toString() != CoverService) {
        qCWarning(accessoryLog) << "void DorselMonitor::propertiesChanged(const QDBusMessage&)"
                                << "PropertiesChanged from a wrong service" << message.interface();
        return;
    }
    const QVariantMap changes = properties(message);
    const auto id = changes.constFind(IdProperty);
    if (id != changes.constEnd()) {
        setActiveDorselId(id->toString());
    }
    const auto ready = changes.constFind(ReadyProperty);
    if (ready != changes.constEnd()) {
        m_ready = ready->toInt();
        checkDorselStatus();
    }
}

void DorselMonitor::deviceLockStateChanged(const QDBusMessage& message)
{
    m_deviceLocked = message.arguments().value(0).toInt() > 0;
    if (!m_deviceLocked && m_storeNotifyPending) {
        m_storeNotifyPending = false;
        notifyStore();
    }
}

void DorselMonitor::statusFail(const quint32& id)
{
    qCWarning(accessoryLog) << "void DorselMonitor::statusFail(const quint32&)"
                            << "NGF Client failure: " << id;
}

void DorselMonitor::checkDorselStatus()
{
    if (!startupWizardFinished()) {
        return;
    }
    if (m_ready == 0 || activeDorselId().isEmpty()) {
        if (followDORSELIDchanges()) {
            clearActiveDorselId();
        }
        return;
    }
    MoodsetManager* const manager = MoodsetManager::fromRegistry();
    const Moodset moodset = manager ? manager->moodsetFromDorselId(activeDorselId()) : Moodset();
    if (!moodset) {
        playSound();
        notifyStore();
        return;
    }
    if (!m_dorselIdChanged) {
        return;
    }
    m_dorselIdChanged = false;
    if (!moodset->favorite) {
        return;
    }
    playSound();
    Q_EMIT activeMoodset(moodset->url.toString());
}

void DorselMonitor::homeDirChanged()
{
    if (!startupWizardFinished()) {
        return;
    }
    checkDorselStatus();
    if (m_homeDirWatcher) {
        // More changes may come before the watcher is deleted, and one check is enough.
        m_homeDirWatcher->disconnect(this);
        m_homeDirWatcher->deleteLater();
        m_homeDirWatcher = nullptr;
    }
}

void DorselMonitor::scheduleFirstCheck(int delay)
{
    if (startupWizardFinished()) {
        QTimer::singleShot(delay, this, &DorselMonitor::checkDorselStatus);
        return;
    }
    m_homeDirWatcher = new QFileSystemWatcher(this);
    m_homeDirWatcher->addPath(QDir::homePath());
    connect(
        m_homeDirWatcher, &QFileSystemWatcher::directoryChanged, this,
        &DorselMonitor::homeDirChanged);
}

void DorselMonitor::followServices()
{
    QDBusConnection bus = QDBusConnection::systemBus();
    bus.connect(
        CoverService, CoverPath, PropertiesInterface, PropertiesChangedSignal, this,
        SLOT(propertiesChanged(QDBusMessage)));
    bus.connect(
        LockService, LockPath, LockInterface, QStringLiteral("stateChanged"), this,
        SLOT(deviceLockStateChanged(QDBusMessage)));
    // Nothing is called on failure, so a lock that is not there counts as open.
    bus.callWithCallback(
        QDBusMessage::createMethodCall(
            LockService, LockPath, LockInterface, QStringLiteral("state")),
        this, SLOT(deviceLockStateChanged(QDBusMessage)));
}

void DorselMonitor::restorePartnerSpace() const
{
    const QString path = m_activeMoodset.value().toString();
    if (!startupWizardFinished() || path.isEmpty()) {
        return;
    }
    MoodsetManager* const manager = MoodsetManager::fromRegistry();
    if (!manager) {
        qCWarning(accessoryLog) << "DorselMonitor::DorselMonitor(QObject*)";
        qCWarning(accessoryLog) << "NULL MoodsetManager...";
        return;
    }
    const Moodset moodset = manager->moodsetFromUrl(QUrl::fromLocalFile(path));
    if (moodset) {
        PartnerSpaceManager::instance()->setPartnerSpace(moodset->partnerSpace);
    }
}
