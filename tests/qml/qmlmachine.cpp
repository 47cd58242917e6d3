// SPDX-License-Identifier: BSD-3-Clause
#include "qmlmachine.h"

#include "encodedpicture.h"
#include "exifbuilder.h"
#include "httpserver.h"
#include "installedbundles.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>

#include <utility>

namespace {

bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QImage picture(const QString& color)
{
    QImage picture(8, 6, QImage::Format_RGB32);
    picture.fill(QColor(color));
    return picture;
}

} // namespace

QmlMachine::QmlMachine() = default;
QmlMachine::~QmlMachine() = default;

bool QmlMachine::writePicture(const QString& name, const QString& color)
{
    return QDir().mkpath(QFileInfo(path(name)).path()) && picture(color).save(path(name));
}

bool QmlMachine::writePhoto(const QString& name, const QString& time)
{
    return writeBytes(path(name), jpegWithExif(exifBlock(time.toLatin1()), {}, QSize(8, 6)));
}

bool QmlMachine::writeFile(const QString& name, const QString& content)
{
    return writeBytes(path(name), content.toUtf8());
}

bool QmlMachine::removeFile(const QString& name) const
{
    return QFile::remove(path(name));
}

QUrl QmlMachine::writeBundle(const QString& name, const QString& content)
{
    return ThemeSession::writeBundle(name, content.toUtf8())
        ? QUrl::fromLocalFile(ThemeSession::bundleFile(name))
        : QUrl();
}

QString QmlMachine::writeOwnBundle(const QString& name, const QString& content)
{
    const QString folder = m_session.folders.elsewhere(name);
    const bool isWritten = QDir().mkpath(folder + QStringLiteral("/images"))
        && picture(QStringLiteral("blue")).save(folder + QStringLiteral("/images/w.png"))
        && writeBytes(folder + QLatin1Char('/') + name + QStringLiteral(".moodset"),
                      content.toUtf8());
    return isWritten ? folder : QString();
}

bool QmlMachine::removeLibrary() const
{
    const QString path =
        m_session.folders.data() + QStringLiteral("/system/privileged/Moodsetd/moodsetd.sqlite");
    bool isRemoved = QFile::remove(path);
    for (const char* const ending : {"-wal", "-shm"}) {
        // After a clean end of the daemon, there is none.
        QFile::remove(path + QLatin1String(ending));
    }
    return isRemoved;
}

QUrl QmlMachine::address(bool isThere)
{
    if (!m_server) {
        m_server = std::make_unique<HttpServer>();
        m_server->answer(
            QStringLiteral("/there.jpg"), encodedPicture(picture(QStringLiteral("green")), "jpg"));
    }
    return m_server->url(isThere ? QStringLiteral("/there.jpg") : QStringLiteral("/missing.jpg"));
}

QVariantList QmlMachine::examples() const
{
    QVariantList examples;
    QFile page(QStringLiteral(MODULE_PAGE));
    if (!page.open(QIODevice::ReadOnly)) {
        return examples;
    }
    const QRegularExpression pattern(
        QStringLiteral("^## ([^\n]+)$|^```qml\n(.*?)^```$"),
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    QString heading;
    QRegularExpressionMatchIterator matches =
        pattern.globalMatch(QString::fromUtf8(page.readAll()));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (!match.captured(1).isEmpty()) {
            heading = match.captured(1);
        } else {
            examples.append(QVariantMap{
                {QStringLiteral("tag"), heading}, {QStringLiteral("source"), match.captured(2)}});
        }
    }
    return examples;
}

QStringList QmlMachine::takeQmlWarnings()
{
    return std::exchange(m_qmlWarnings, {});
}

void QmlMachine::noteQmlWarnings(const QList<QQmlError>& warnings)
{
    for (const QQmlError& warning : warnings) {
        m_qmlWarnings.append(warning.toString());
    }
}

int QmlMachine::threads(const QString& name) const
{
    // The kernel keeps 15 characters.
    constexpr int longestName = 15;
    int count = 0;
    const QDir tasks(QStringLiteral("/proc/self/task"));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(tasks.filePath(task + QStringLiteral("/comm")));
        if (file.open(QIODevice::ReadOnly)
            && file.readAll().trimmed() == name.left(longestName).toUtf8()) {
            ++count;
        }
    }
    return count;
}
