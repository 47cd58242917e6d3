// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetlibrary.h"

#include "libraryfault.h"
#include "subject.h"
#include "text.h"

#include <QStringList>
#include <QUrl>

namespace {

// The content library tells of failures in the Qt log alone. While this lives, they come here.
class LogCollection
{
public:
    LogCollection()
        : m_previous(qInstallMessageHandler(collect))
    {
        texts.clear();
    }
    ~LogCollection() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY_MOVE(LogCollection)

    static QStringList texts;

private:
    static void collect(
        QtMsgType /*type*/, const QMessageLogContext& /*where*/, const QString& text)
    {
        texts.append(text);
    }

    QtMessageHandler m_previous;
};

QStringList LogCollection::texts;

} // namespace

template <typename Reading>
void MoodsetLibrary::read(Reading reading)
{
    const LogCollection log;
    m_isOpen = m_isOpen || m_reader.open();
    if (!m_isOpen) {
        m_error = libraryFaultWithAdvice(m_reader);
        return;
    }
    reading();
    const QString reason = LogCollection::texts.isEmpty()
        ? m_reader.error()
        : LogCollection::texts.join(QLatin1Char(' '));
    m_error = reason.isEmpty() ? QString() : Text::tr("cannot read the moodsets: %1").arg(reason);
}

QVector<Moodset> MoodsetLibrary::moodsets()
{
    QVector<Moodset> moodsets;
    read([&] { moodsets = m_reader.moodsets(); });
    return moodsets;
}

QVector<Moodset> MoodsetLibrary::find(const QString& text)
{
    QVector<Moodset> named;
    for (const Moodset& moodset : moodsets()) {
        if (QString::number(moodset->id) == text) {
            return {moodset};
        }
        if (calledName(*moodset) == text) {
            named.append(moodset);
        }
    }
    return named;
}

Moodset MoodsetLibrary::moodset(const QUrl& url)
{
    Moodset moodset;
    read([&] { moodset = m_reader.moodset(url); });
    return moodset;
}

Moodset MoodsetLibrary::moodset(qint64 id)
{
    Moodset moodset;
    read([&] { moodset = m_reader.moodset(id); });
    return moodset;
}

QString MoodsetLibrary::error() const
{
    return m_error;
}
