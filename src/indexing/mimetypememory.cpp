// SPDX-License-Identifier: BSD-3-Clause
#include "mimetypememory.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMimeType>
#include <QStandardPaths>

namespace {

/// The MIME database looks for changes of its files only this often. Looking more often here would
/// find a change before the database knows it.
constexpr qint64 CheckInterval = 5000; // milliseconds

/// The glob that a type has if its globs from other directories do not count.
const QLatin1String NoGlobs("__NOGLOBS__");

bool hasWildcard(const QString& glob)
{
    return glob.contains(QLatin1Char('*')) || glob.contains(QLatin1Char('?'))
        || glob.contains(QLatin1Char('['));
}

/// The part after the last dot, or a null text if there is no dot.
QString suffixOf(const QString& name)
{
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : name.mid(dot + 1);
}

/// The files that hold the installed globs. Empty if a directory of types has no such file, because
/// its globs are unknown then.
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

/// A text that changes when another file comes or one of the files changes.
QString stateOf(const QStringList& files)
{
    QString state;
    for (const QString& file : files) {
        state += file + QLatin1Char('\n')
            + QFileInfo(file).lastModified().toString(Qt::ISODateWithMs) + QLatin1Char('\n');
    }
    return state;
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
    const QStringList types = isRegular ? typesOfSuffix(fileName, suffix) : QStringList();
    if (types.isEmpty()) {
        return m_mimeDatabase.mimeTypeForFile(file).name();
    }
    return types.size() == 1 ? typeBySuffix(file, suffix, types.constFirst())
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

/// If the name matches several globs, the type depends only on them and on the type of the content.
QString MimeTypeMemory::typeBySuffixAndContent(
    const QFileInfo& file, const QString& suffix, const QStringList& types)
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
    // Otherwise the database has other globs than those read here, or prefers some of them.
    if (m_settled && matching == QSet<QString>(types.cbegin(), types.cend())) {
        m_rememberedContents.insert({suffix, content}, name);
    }
    return name;
}

QStringList MimeTypeMemory::rememberedSuffixes() const
{
    return m_remembered.keys();
}

/// The types among which the suffix of a name decides; none if more than the suffix counts.
QStringList MimeTypeMemory::typesOfSuffix(const QString& fileName, const QString& suffix) const
{
    const QStringList types = m_suffixTypes.value(suffix.toLower());
    // A name that is only a suffix does not match the suffix's glob.
    const bool isDecisive = fileName.size() > suffix.size() + 1 && !types.isEmpty()
        && !m_literalNames.contains(fileName.toLower()) && !m_otherGlobs.match(fileName).hasMatch();
    return isDecisive ? types : QStringList();
}

void MimeTypeMemory::followInstalledGlobs()
{
    if (m_lastCheck.isValid() && !m_lastCheck.hasExpired(CheckInterval)) {
        return;
    }
    const bool isFirst = !m_lastCheck.isValid();
    m_lastCheck.start();
    const QStringList files = globFiles();
    const QString state = stateOf(files);
    const bool hasChanged = state != m_globState;
    m_settled = isFirst || !hasChanged;
    if (isFirst || hasChanged) {
        m_globState = state;
        readGlobs(files);
    }
}

void MimeTypeMemory::readGlobs(const QStringList& files)
{
    m_remembered.clear();
    m_rememberedContents.clear();
    m_suffixTypes.clear();
    m_literalNames.clear();
    QStringList otherGlobs;
    for (const QString& file : files) {
        if (!addGlobsOf(file, &otherGlobs)) {
            m_suffixTypes.clear();
            return;
        }
    }
    m_otherGlobs = QRegularExpression(
        otherGlobs.join(QLatin1Char('|')), QRegularExpression::CaseInsensitiveOption);
}

/// False if the file cannot be read, or if some of its globs do not count. Then no suffix can be
/// known to decide.
bool MimeTypeMemory::addGlobsOf(const QString& path, QStringList* otherGlobs)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    while (!file.atEnd()) {
        // A line has the form weight:type:glob, and flags may follow.
        const QStringList fields =
            QString::fromUtf8(file.readLine()).trimmed().split(QLatin1Char(':'));
        if (fields.size() < 3 || fields.constFirst().startsWith(QLatin1Char('#'))) {
            continue;
        }
        if (fields.at(2) == NoGlobs) {
            return false;
        }
        addGlob(fields.at(2), fields.at(1), otherGlobs);
    }
    return true;
}

void MimeTypeMemory::addGlob(const QString& glob, const QString& type, QStringList* otherGlobs)
{
    const QString suffix = suffixOf(glob).toLower();
    const bool isPlain = glob.size() == suffix.size() + 2 && glob.startsWith(QLatin1Char('*'));
    if (!hasWildcard(glob)) {
        m_literalNames.insert(glob.toLower());
    } else if (suffix.isEmpty() || hasWildcard(suffix)) {
        otherGlobs->append(QRegularExpression::wildcardToRegularExpression(glob));
    } else if (isPlain) {
        addPlainGlob(suffix, type);
    } else {
        m_suffixTypes.insert(suffix, {});
    }
}

void MimeTypeMemory::addPlainGlob(const QString& suffix, const QString& type)
{
    const auto known = m_suffixTypes.find(suffix);
    if (known == m_suffixTypes.end()) {
        m_suffixTypes.insert(suffix, {type});
    } else if (!known->isEmpty() && !known->contains(type)) {
        known->append(type);
    }
}
