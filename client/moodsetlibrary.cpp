// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetlibrary.h"

#include <QFileInfo>
#include <QStringList>
#include <QUrl>

#include <queryagent.h>
#include <queryagentdatabase.h>

namespace {

class Listing final : public QueryAgent::Recipient
{
public:
    void receive(const QVector<Content>& batch) override
    {
        for (const Content& content : batch) {
            moodsets.append(Moodset(content));
        }
    }

    QVector<Moodset> moodsets;
};

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
    const QString path = QueryAgentDatabase::filePath();
    if (!QFileInfo::exists(path)) {
        m_error = QStringLiteral("there is no database at %1").arg(path);
        return;
    }
    const LogCollection log;
    if (QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::Moodset)) {
        reading(*agent);
    }
    m_error = LogCollection::texts.isEmpty() ? QString()
                                             : QStringLiteral("cannot read the moodsets: ")
            + LogCollection::texts.join(QLatin1Char(' '));
}

QVector<Moodset> MoodsetLibrary::moodsets()
{
    Listing listing;
    read([&listing](QueryAgent& agent) { agent.query(&listing, {}); });
    return listing.moodsets;
}

QVector<Moodset> MoodsetLibrary::find(const QString& text)
{
    QVector<Moodset> named;
    for (const Moodset& moodset : moodsets()) {
        if (QString::number(moodset->id) == text) {
            return {moodset};
        }
        if (moodset->displayName == text) {
            named.append(moodset);
        }
    }
    return named;
}

Moodset MoodsetLibrary::moodset(const QUrl& url)
{
    Content content;
    read([&content, &url](QueryAgent& agent) { content = agent.queryByUrl(url); });
    return Moodset(content);
}

Moodset MoodsetLibrary::moodset(qint64 id)
{
    Content content;
    read([&content, id](QueryAgent& agent) { content = agent.queryById(id); });
    return Moodset(content);
}

QString MoodsetLibrary::error() const
{
    return m_error;
}
