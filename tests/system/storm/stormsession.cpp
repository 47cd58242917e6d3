// SPDX-License-Identifier: BSD-3-Clause
#include "stormsession.h"

#include "dconfcommand.h"
#include "encodedpicture.h"
#include "stormclient.h"
#include "themekeys.h"

#include <QColor>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <numeric>

namespace {

constexpr int ClientCount = 8;

const QString HeldPath = QStringLiteral("/8");

/// What bad requests, failing downloads and bad files bring, and changes of the disk of which the
/// daemon hears late.
const QRegularExpression ExpectedWarning(QStringLiteral(
    "^(-?\\d+ is not an existing moodset"
    "|void AlbumGallery::(set|create)Moodset\\(const QString&\\) Invalid URL:  \".*\""
    "|void SystemTheme::onlineImageReady\\(QNetworkReply\\*\\)"
    "( Error in QUrl\\(\".*\"\\) : \".*\")?"
    "|Failed to insert new image into database"
    "|QVariantMap plainAttributes\\(const QVariantMap&\\) Attribute too large \".*\" \\d+"
    "|Failed to save online image\\.\\.\\. \".*\""
    "|Failed to parse moodset \\d+ \\d+"
    "|Failed to add listener -1 \".*\""
    "|bool FileManager::(readEvent|scanDirectory)\\(\\)"
    "|virtual bool MoodsetManager::updateMetaData\\(\\)"
    "|Failed to execute m_((file|directory)Insert|insertMoodset)\\."
    "|QSqlError\\(\"19\", \"Unable to fetch row\", \"UNIQUE constraint failed: "
    "(file|directory|moodset)\\..*\"\\)"
    "|\"INSERT INTO (file|directory|moodset) .*\")$"));

void prepareServer(HttpServer* server)
{
    QImage picture(40, 30, QImage::Format_RGB32);
    picture.fill(Qt::green);
    const QByteArray content = encodedPicture(picture, "png");
    for (const char* const path : {"/0", "/1", "/2", "/3"}) {
        server->answer(QLatin1String(path), content);
    }
    server->answer(QStringLiteral("/4"), "no picture");
    server->answer(QStringLiteral("/5"), {}, "302 Found", "Location: /0\r\n");
    server->answer(QStringLiteral("/6"), {}, "500 Internal Server Error");
    server->hangUp(QStringLiteral("/7"));
    server->answer(HeldPath, content);
    server->hold(HeldPath);
}

/// What the store holds for a colour of the library.
QString storedColor(const QString& text)
{
    const QColor color = QColor::isValidColor(text) ? QColor(text) : QColor();
    return QLatin1Char('\'') + color.name(QColor::HexArgb) + QLatin1Char('\'');
}

QStringList difference(const QStringList& left, const QStringList& right)
{
    QStringList rest = left;
    for (const QString& text : right) {
        rest.removeOne(text);
    }
    return rest;
}

QString lines(const QString& title, const QStringList& texts)
{
    return (QStringList(title) + texts).join(QStringLiteral("\n  ")) + QLatin1Char('\n');
}

} // namespace

StormSession::StormSession(quint32 seed)
    : m_files(folders, seed)
    , m_chance(seed + 1)
{
    prepareServer(&m_server);
    for (int i = 0; i < ClientCount; ++i) {
        m_calls.emplace_back(m_files, m_server, seed + 2 + quint32(i));
        m_clients.push_back(std::make_unique<StormClient>(i));
    }
}

StormSession::~StormSession()
{
    // It has open downloads, whose end does not matter any more.
    if (daemon.isRunning()) {
        daemon.terminate();
    }
    static_cast<void>(takeUnexpectedWarnings());
}

bool StormSession::start()
{
    if (!m_files.prepare() || !startAtRest()) {
        return false;
    }
    const QStringList themes = m_files.themes();
    const bool areSet =
        std::all_of(themes.begin(), themes.end(), [](const QString& path) { return set(path); });
    readIds();
    return areSet;
}

bool StormSession::restart()
{
    if (!daemon.terminate() || !DaemonSession::startAtRest()) {
        return false;
    }
    readIds();
    return true;
}

QString StormSession::storm(int milliseconds)
{
    return storm(milliseconds, [this] { turn(); });
}

QString StormSession::stormInOrder(int milliseconds)
{
    m_clients.front()->send(StormCalls::setTheme(m_files.themes().constFirst()));
    return storm(milliseconds, [this] { turnInOrder(); });
}

QString StormSession::storm(int milliseconds, const std::function<void()>& turn)
{
    constexpr int turnLength = 2; // milliseconds
    QTimer clock;
    clock.start(turnLength);
    QElapsedTimer time;
    time.start();
    while (!time.hasExpired(milliseconds) && fault().isEmpty()) {
        turn();
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    const auto isAnswered = [this] {
        return std::all_of(m_clients.begin(), m_clients.end(), [](const auto& caller) {
            return caller->openCalls() == 0;
        });
    };
    // A call that gets no reply ends with an error after the deadline.
    return QTest::qWaitFor(
               [&] { return isAnswered() || !fault().isEmpty(); }, 2 * DaemonProcess::deadlineMs)
        ? fault()
        : QStringLiteral("calls are not answered");
}

void StormSession::turn()
{
    sendCalls([](StormCalls* calls) { return calls->any(); });
    if (m_chance.isOneIn(3)) {
        m_files.change();
    }
    if (m_chance.isOneIn(20)) {
        writeKey();
    }
    if (m_chance.isOneIn(20)) {
        m_clients.front()->announceInstalled(
            StormFiles::anyBundle(&m_chance), QString::number(m_chance.below(3)));
    }
    if (m_chance.isOneIn(20) && m_server.isHolding(HeldPath)) {
        m_server.release(HeldPath);
        m_server.hold(HeldPath);
    }
    constexpr int turnsBetweenReads = 50;
    if (++m_turns % turnsBetweenReads == 0) {
        readIds();
    }
}

void StormSession::turnInOrder()
{
    sendCalls([](StormCalls* calls) { return calls->agreeing(); });
    if (m_chance.isOneIn(3)) {
        m_files.changeInOrder();
    }
}

void StormSession::sendCalls(const std::function<QList<StormCall>(StormCalls*)>& make)
{
    constexpr int mostOpenCalls = 4;
    for (std::size_t i = 0; i < ClientCount; ++i) {
        StormClient* const caller = m_clients.at(i).get();
        if (caller->openCalls() >= mostOpenCalls) {
            continue;
        }
        for (const StormCall& call : make(&m_calls.at(i))) {
            caller->send(call);
        }
    }
}

void StormSession::readIds()
{
    QList<qint64> ids;
    const LibraryDatabase::Rows moodsets =
        library().rows(QStringLiteral("SELECT fileId FROM moodset"));
    for (const QVariantList& row : moodsets) {
        ids.append(row.constFirst().toLongLong());
    }
    QList<qint64> themeIds;
    const QStringList themes = m_files.themes();
    for (const QString& path : themes) {
        themeIds.append(fileId(path));
    }
    for (StormCalls& calls : m_calls) {
        calls.setMoodsets(ids);
        calls.setThemes(themeIds);
    }
}

void StormSession::writeKey()
{
    const QString profile = profileFolder() + QStringLiteral("general/");
    const QStringList keys = ThemeKeys::names()
        + QStringList{
            ThemeKeys::Picture, ThemeKeys::Picture,
            profile + QStringLiteral("ringing.alert.volume"),
            profile + QStringLiteral("im.alert.enabled")};
    const QString key = m_chance.pick(keys);
    const QStringList values{
        QStringLiteral("''"), QStringLiteral("'foreign'"), QStringLiteral("7"),
        QStringLiteral("@as []"),
        QLatin1Char('\'') + m_chance.pick(m_files.themes()) + QLatin1Char('\'')};
    if (m_chance.isOneIn(6)) {
        runDconf({QStringLiteral("reset"), key});
    } else {
        UserStore::write(key, m_chance.pick(values));
    }
}

QString StormSession::fault()
{
    if (!daemon.isRunning()) {
        return QStringLiteral("the daemon has ended: %1").arg(daemon.exitCode());
    }
    for (const auto& caller : m_clients) {
        if (!caller->fault().isEmpty()) {
            return caller->fault();
        }
    }
    return {};
}

QString StormSession::libraryFault()
{
    const QString unread = QStringLiteral("SELECT fileName FROM file WHERE metadataCurrent = 0 AND "
                                          "(mimeType GLOB 'image/*' OR mimeType GLOB '*-moodset')");
    const QRegularExpression inFolder(
        QLatin1Char('^') + QRegularExpression::escape(folders.pictures() + QLatin1Char('/')));
    QStringList rows;
    QStringList files;
    const auto agrees = [&] {
        rows = libraryFiles().filter(inFolder);
        files = diskFiles();
        return rows == files;
    };
    const bool isFollowed = QTest::qWaitFor(agrees, DaemonProcess::deadlineMs);
    // Moodset files outside of bundles wait for it.
    BusClient::send(QStringLiteral("refreshMoodsets"), {});
    const bool isRead = QTest::qWaitFor(
        [&] { return library().texts(unread).isEmpty(); }, DaemonProcess::deadlineMs);
    client.forgetAnnouncements();
    const bool isAnnounced = waitUntilAnnounced();
    return isFollowed && isRead && isAnnounced
        ? QString()
        : lines(QStringLiteral("rows without a file:"), difference(rows, files))
            + lines(QStringLiteral("files without a row:"), difference(files, rows))
            + lines(QStringLiteral("not read:"), library().texts(unread));
}

QString StormSession::themeFault()
{
    const QString source = UserStore::value(ThemeKeys::Picture);
    const QString path = source.mid(1, source.size() - 2);
    const QStringList colors = library().moodset(
        path,
        QStringLiteral("highlightColor, secondaryHighlightColor, primaryColor, secondaryColor"));
    const QStringList keys = ThemeKeys::names().filter(QStringLiteral("/color/"));
    if (colors.size() != keys.size()) {
        return source + QStringLiteral(" is no moodset");
    }
    if (UserStore::value(ThemeKeys::ActiveMoodset) != source) {
        return source + QStringLiteral(" is not the theme");
    }
    for (int i = 0; i < keys.size(); ++i) {
        const QString stored = UserStore::value(keys.at(i));
        if (stored != storedColor(colors.at(i))) {
            return QStringLiteral("%1 is %2, but the row has %3")
                .arg(keys.at(i), stored, colors.at(i));
        }
    }
    return {};
}

QString StormSession::takeUnexpectedWarnings()
{
    QStringList unexpected;
    const QStringList warnings = daemon.takeWarnings();
    for (const QString& warning : warnings) {
        if (!ExpectedWarning.match(warning).hasMatch()) {
            unexpected.append(warning);
        }
    }
    m_warnings += warnings.size();
    return unexpected.join(QLatin1Char('\n'));
}

QString StormSession::summary() const
{
    const int calls =
        std::accumulate(m_clients.begin(), m_clients.end(), 0, [](int sum, const auto& caller) {
            return sum + caller->calls();
        });
    return QStringLiteral("%1 calls, %2 downloads, %3 warnings")
        .arg(calls)
        .arg(m_server.requests().size())
        .arg(m_warnings);
}
