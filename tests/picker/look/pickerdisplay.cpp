// SPDX-License-Identifier: BSD-3-Clause
#include "pickerdisplay.h"

#include "pickerengine.h"

#include <QColor>
#include <QCursor>
#include <QDBusVariant>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QStyleHints>
#include <QTest>

#include <algorithm>
#include <functional>

namespace {

const QString SchemeSpace = QStringLiteral("org.freedesktop.appearance");
const QString SchemeKey = QStringLiteral("color-scheme");

QVariant schemeValue(bool isDark)
{
    constexpr uint dark = 1;
    constexpr uint light = 2;
    return isDark ? dark : light;
}

bool waitUntil(const std::function<bool()>& condition)
{
    return QTest::qWaitFor(condition, DaemonProcess::deadlineMs);
}

bool isLoading(const QQuickItem* item)
{
    enum Status : int { Null, Ready, Loading, Error };
    return item->inherits("QQuickImageBase") && item->property("status").toInt() == Loading;
}

/// Whether a condition holds for any item that can be seen, from `item` on downwards.
const QQuickItem* visibleItem(
    const QQuickItem* item, const std::function<bool(const QQuickItem*)>& condition)
{
    if (!item->isVisible()) {
        return nullptr;
    }
    if (condition(item)) {
        return item;
    }
    const QList<QQuickItem*> children = item->childItems();
    for (const QQuickItem* child : children) {
        if (const QQuickItem* const found = visibleItem(child, condition)) {
            return found;
        }
    }
    return nullptr;
}

bool copyWithTime(const QString& source, const QString& target, const QDateTime& time)
{
    QFile file(target);
    return QFile::copy(source, target) && file.open(QIODevice::ReadWrite)
        && file.setFileTime(time, QFileDevice::FileModificationTime);
}

} // namespace

PickerDisplay::PickerDisplay()
    : m_desktop(QDBusConnection::SessionBus, QStringLiteral("org.freedesktop.portal.Desktop"))
    , m_shell(QDBusConnection::SessionBus, QStringLiteral("org.gnome.Shell"))
{
    // The same folder under a name that does not change.
    const QString data = qEnvironmentVariable("PRIVATE_MACHINE") + QStringLiteral("/user");
    QFile::remove(data);
    QFile::link(user.folders.data(), data);
    qputenv("XDG_DATA_HOME", QFile::encodeName(data));
    // A file where the folder of the thumbnails would be.
    QFile noThumbnails(qEnvironmentVariable("XDG_CACHE_HOME") + QStringLiteral("/thumbnails"));
    static_cast<void>(noThumbnails.open(QIODevice::WriteOnly)); // it may be there already
    UserStore::writeScreenSize(QSize(720, 1440));
    m_desktop.answer(QStringLiteral("Read"), [this](const QDBusMessage& call) {
        const QVariant value = call.arguments().constFirst().toString() == SchemeSpace
            ? schemeValue(m_isDark)
            : QVariant(false); // enable-animations
        return call.createReply(
            QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(value)))));
    });
}

PickerDisplay::~PickerDisplay()
{
    m_bridge.terminate();
    m_bridge.waitForFinished();
}

bool PickerDisplay::open()
{
    if (!m_desktop.appear()) {
        return false;
    }
    constexpr quint16 port = 8080;
    server.close();
    if (!server.listen(QHostAddress::LocalHost, port)) {
        return false;
    }
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    m_engine = std::make_unique<PickerEngine>();
    if (!m_engine->show()) {
        return false;
    }
    // Nothing lies below the pointer.
    const QRect screen = window()->screen()->geometry();
    QCursor::setPos(screen.bottomRight());
    window()->setPosition(0, 0);
    return waitUntil([this] {
        return m_engine->content() != nullptr && m_engine->appearance().hasReducedMotion();
    });
}

bool PickerDisplay::damageLibrary()
{
    return InstalledBundles::write(LibraryDatabase::standardPath(), "These are words.");
}

bool PickerDisplay::startDaemon()
{
    return user.startAtRest() && removeFences();
}

/// The session leaves pictures of its own behind.
bool PickerDisplay::removeFences()
{
    QDir folder(user.folders.pictures());
    const QStringList fences = folder.entryList({QStringLiteral("fence *")});
    for (const QString& fence : fences) {
        if (!folder.remove(fence)) {
            return false;
        }
    }
    const QStringList pictures = folder.entryList(QDir::Files);
    return waitUntil([&] {
        return std::all_of(
                   fences.begin(), fences.end(),
                   [&](const QString& name) { return user.fileId(folder.filePath(name)) == 0; })
            && std::all_of(pictures.begin(), pictures.end(), [&](const QString& name) {
                   return user.pictureSize(folder.filePath(name)).isValid();
               });
    });
}

bool PickerDisplay::copyPictures() const
{
    const QDir samples(QStringLiteral(SAMPLE_PICTURES));
    const QStringList names =
        samples.entryList({QStringLiteral("*.jpg"), QStringLiteral("*.png")}, QDir::Files);
    const QDateTime time(QDate(2026, 6, 20), QTime(12, 0), Qt::UTC);
    if (names.isEmpty() || !QDir().mkpath(picturesFolder())) {
        return false;
    }
    for (const QString& name : names) {
        if (!copyWithTime(samples.filePath(name), user.folders.picture(name), time)
            || !copyWithTime(
                samples.filePath(name), picturesFolder() + QLatin1Char('/') + name, time)) {
            return false;
        }
    }
    return true;
}

bool PickerDisplay::addSamples()
{
    for (const char* const name : {"autumn-walk", "coast-light", "first-snow"}) {
        if (!InstalledBundles::installSample(QLatin1String(name))) {
            return false;
        }
    }
    const QString own = user.folders.picture(QStringLiteral("winter-night.jpg"));
    const QString bundle = ThemeSession::bundleFile(QStringLiteral("coast-light"));
    return copyPictures() && user.daemon.terminate() && startDaemon() && ThemeSession::create(own)
        && ThemeSession::set(bundle) && startBridge();
}

bool PickerDisplay::startBridge()
{
    if (!m_shell.appear()) {
        return false;
    }
    m_bridge.start(QStringLiteral(BRIDGE), QStringList());
    return waitUntil([this] { return bridgeIsDone(); });
}

/// Whether it has set all for one shell, and has given up for the other.
bool PickerDisplay::bridgeIsDone() const
{
    QProcess status;
    status.start(QStringLiteral(BRIDGE), {QStringLiteral("--status"), QStringLiteral("--json")});
    if (!waitUntil([&status] { return status.state() == QProcess::NotRunning; })) {
        return false;
    }
    QStringList done;
    const QJsonArray adapters = QJsonDocument::fromJson(status.readAllStandardOutput())
                                    .object()
                                    .value(QStringLiteral("adapters"))
                                    .toArray();
    for (const QJsonValue& adapter : adapters) {
        const QString name = adapter[QStringLiteral("name")].toString();
        const bool hasFailed = !adapter[QStringLiteral("failure")].toString().isEmpty();
        const bool hasSet = !adapter[QStringLiteral("time")].toString().isEmpty();
        if (adapter[QStringLiteral("present")].toBool()
            && (name == QLatin1String("portal") ? hasFailed : hasSet)) {
            done.append(name);
        }
    }
    return done == QStringList({QStringLiteral("gnome"), QStringLiteral("portal")});
}

bool PickerDisplay::setDark(bool isDark)
{
    m_isDark = isDark;
    sendSetting(SchemeSpace, SchemeKey, schemeValue(isDark));
    return waitUntil([this, isDark] { return m_engine->appearance().isDark() == isDark; });
}

bool PickerDisplay::setMotion(bool isWanted)
{
    sendSetting(
        QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("enable-animations"),
        isWanted);
    return waitUntil(
        [this, isWanted] { return m_engine->appearance().hasReducedMotion() != isWanted; });
}

void PickerDisplay::sendSetting(const QString& nameSpace, const QString& key, const QVariant& value)
{
    m_desktop.send(
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"),
        {nameSpace, key, QVariant::fromValue(QDBusVariant(value))});
}

bool PickerDisplay::resize(QSize size)
{
    window()->resize(size);
    return waitUntil([this, size] { return window()->size() == size; });
}

void PickerDisplay::setText(int size, Qt::LayoutDirection direction)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(size);
    QGuiApplication::setFont(font);
    QGuiApplication::setLayoutDirection(direction);
}

void PickerDisplay::call(const char* function, const QVariant& argument)
{
    QMetaObject::invokeMethod(m_engine->content(), function, Q_ARG(QVariant, argument));
}

bool PickerDisplay::openMoodset(const QString& path)
{
    const qint64 id = user.fileId(path);
    call("openMoodset", id);
    return id > 0 && waitFor(QStringLiteral("moodsetPage"));
}

QQuickItem* PickerDisplay::find(const QString& name) const
{
    return const_cast<QQuickItem*>(
        visibleItem(window()->contentItem(), [&name](const QQuickItem* item) {
            return item->objectName() == name;
        }));
}

bool PickerDisplay::waitFor(const QString& name) const
{
    return waitUntil([this, &name] { return find(name) != nullptr; });
}

bool PickerDisplay::press(const QString& name) const
{
    return waitFor(name) && waitUntil([&] { return find(name)->isEnabled(); })
        && QMetaObject::invokeMethod(find(name), "clicked");
}

bool PickerDisplay::scrollTo(const QString& name) const
{
    const QQuickItem* const item = find(name);
    if (item == nullptr) {
        return false;
    }
    QQuickItem* content = item->parentItem();
    while (!content->parentItem()->inherits("QQuickFlickable")) {
        content = content->parentItem();
    }
    QQuickItem* const view = content->parentItem();
    const qreal last = view->property("contentHeight").toReal() - view->height();
    return view->setProperty(
        "contentY", qBound(0.0, item->mapToItem(content, QPointF()).y(), qMax(0.0, last)));
}

QString PickerDisplay::picturesFolder()
{
    return QDir::homePath() + QStringLiteral("/Pictures");
}

bool PickerDisplay::isSettled() const
{
    const QQuickItem* const pages = find(QStringLiteral("pages"));
    return m_engine->notices().busy().isEmpty() && pages != nullptr
        && !pages->property("busy").toBool()
        && visibleItem(window()->contentItem(), isLoading) == nullptr;
}

// Qt draws what has changed over what was there, so that edges between two pixels come out one way
// or another. Under another background, all is drawn anew.
QImage PickerDisplay::shown() const
{
    const QColor background = window()->color();
    window()->setColor(QColor::fromRgb(background.rgb() ^ 0xffffff));
    static_cast<void>(window()->grabWindow());
    window()->setColor(background);
    return window()->grabWindow().convertToFormat(QImage::Format_RGB888);
}

QQuickWindow* PickerDisplay::window() const
{
    return m_engine->window();
}
