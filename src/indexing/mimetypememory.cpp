// SPDX-License-Identifier: BSD-3-Clause
#include "mimetypememory.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMimeType>
#include <QStandardPaths>

namespace {

/// The MIME database looks for changes of its files as rarely as this; looking more often would
/// only see them before it does.
constexpr qint64 CheckInterval = 5000; // milliseconds

/// Stands in the globs of a type whose globs from other folders do not count.
const QLatin1String NoGlobs("__NOGLOBS__");

bool hasWildcard(const QString& glob)
{
    return glob.contains(QLatin1Char('*')) || glob.contains(QLatin1Char('?'))
        || glob.contains(QLatin1Char('['));
}

/// What follows the last dot, or a null text without one.
QString suffixOf(const QString& name)
{
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : name.mid(dot + 1);
}

/// The files that hold the installed globs; empty if any folder of types has none, since then
/// nothing can be told about its globs.
QStringList globFiles()
{
    const QStringList folders = QStandardPaths::locateAll(
        QStandardPaths::GenericDataLocation, QStringLiteral("mime"),
        QStandardPaths::LocateDirectory);
    QStringList files;
    for (const QString& folder : folders) {
        const QString file = folder + QStringLiteral("/globs2");
        if (QFile::exists(file)) {
            files.append(file);
        } else if (
            QFile::exists(folder + QStringLiteral("/packages"))
            || QFile::exists(folder + QStringLiteral("/mime.cache"))) {
            return {};
        }
    }
    return files;
}

} // namespace

QString MimeTypeMemory::typeName(const QFileInfo& file)
{
    return typeName(file, file.isFile());
}

QString MimeTypeMemory::typeName(const QFileInfo& file, bool isRegular)
{
    followInstalledGlobs();
    const QString fileName = file.fileName();
    const QString suffix = suffixOf(fileName);
    const QSet<QString> types = isRegular ? typesOfSuffix(fileName, suffix) : QSet<QString>();
    if (types.isEmpty()) {
        return m_mimeDatabase.mimeTypeForFile(file).name();
    }
    return types.size() == 1 ? typeBySuffix(file, suffix, *types.constBegin())
                             : typeBySuffixAndContent(file, suffix, types);
}

QString MimeTypeMemory::typeBySuffix(
    const QFileInfo& file, const QString& suffix, const QString& type)
{
    const auto remembered = m_remembered.constFind(suffix);
    if (remembered != m_remembered.constEnd()) {
        return *remembered;
    }
    QString name = m_mimeDatabase.mimeTypeForFile(file).name();
    if (m_settled && name == type) {
        m_remembered.insert(suffix, name);
    }
    return name;
}

/// Where the name matches several globs, the type depends on them and on that of the content alone.
QString MimeTypeMemory::typeBySuffixAndContent(
    const QFileInfo& file, const QString& suffix, const QSet<QString>& types)
{
    const QString content =
        m_mimeDatabase.mimeTypeForFile(file, QMimeDatabase::MatchContent).name();
    const auto remembered = m_rememberedContents.constFind({suffix, content});
    if (remembered != m_rememberedContents.constEnd()) {
        return *remembered;
    }
    QString name = m_mimeDatabase.mimeTypeForFile(file).name();
    QSet<QString> matching;
    const QList<QMimeType> matches = m_mimeDatabase.mimeTypesForFileName(file.fileName());
    for (const QMimeType& type : matches) {
        matching.insert(type.name());
    }
    // Else the database holds other globs than those read here, or ranks them.
    if (m_settled && matching == types) {
        m_rememberedContents.insert({suffix, content}, name);
    }
    return name;
}

QStringList MimeTypeMemory::rememberedSuffixes() const
{
    return m_remembered.keys();
}

/// The types among which the suffix of a name decides; none if more than the suffix counts.
QSet<QString> MimeTypeMemory::typesOfSuffix(const QString& fileName, const QString& suffix) const
{
    const QSet<QString> types = m_suffixTypes.value(suffix.toLower());
    // A name that is nothing but a suffix does not match the suffix's glob.
    const bool isDecisive = fileName.size() > suffix.size() + 1 && !types.isEmpty()
        && !m_literalNames.contains(fileName.toLower()) && !m_otherGlobs.match(fileName).hasMatch();
    return isDecisive ? types : QSet<QString>();
}

void MimeTypeMemory::followInstalledGlobs()
{
    if (m_lastCheck.isValid() && !m_lastCheck.hasExpired(CheckInterval)) {
        return;
    }
    const bool isFirst = !m_lastCheck.isValid();
    m_lastCheck.start();
    const QStringList files = globFiles();
    QString state;
    for (const QString& file : files) {
        state += file + QLatin1Char('\n')
            + QFileInfo(file).lastModified().toString(Qt::ISODateWithMs) + QLatin1Char('\n');
    }
    m_settled = isFirst || state == m_globState;
    if (!m_settled || isFirst) {
        m_globState = state;
        readGlobs(files);
    }
}

void MimeTypeMemory::readGlobs(const QStringList& paths)
{
    m_remembered.clear();
    m_rememberedContents.clear();
    m_suffixTypes.clear();
    m_literalNames.clear();
    QStringList otherGlobs;
    for (const QString& path : paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            m_suffixTypes.clear();
            return;
        }
        while (!file.atEnd()) {
            // weight:type:glob, then perhaps flags
            const QStringList fields =
                QString::fromUtf8(file.readLine()).trimmed().split(QLatin1Char(':'));
            if (fields.size() < 3 || fields.constFirst().startsWith(QLatin1Char('#'))) {
                continue;
            }
            if (fields.at(2) == NoGlobs) {
                m_suffixTypes.clear();
                return;
            }
            addGlob(fields.at(2), fields.at(1), &otherGlobs);
        }
    }
    m_otherGlobs = QRegularExpression(
        otherGlobs.join(QLatin1Char('|')), QRegularExpression::CaseInsensitiveOption);
}

void MimeTypeMemory::addGlob(const QString& glob, const QString& type, QStringList* otherGlobs)
{
    const QString suffix = suffixOf(glob).toLower();
    if (!hasWildcard(glob)) {
        m_literalNames.insert(glob.toLower());
    } else if (suffix.isEmpty() || hasWildcard(suffix)) {
        otherGlobs->append(QRegularExpression::wildcardToRegularExpression(glob));
    } else {
        const bool isPlain = glob.size() == suffix.size() + 2 && glob.startsWith(QLatin1Char('*'));
        const auto known = m_suffixTypes.find(suffix);
        if (known == m_suffixTypes.end()) {
            m_suffixTypes.insert(suffix, isPlain ? QSet<QString>{type} : QSet<QString>());
        } else if (!isPlain) {
            known->clear();
        } else if (!known->isEmpty()) {
            known->insert(type);
        }
    }
}
