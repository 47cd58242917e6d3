// SPDX-License-Identifier: BSD-3-Clause
#include "photomodel.h"

#include <QDateTime>
#include <QUrl>

#include <algorithm>

#include <photodata.h>
#include <photoqueryagent.h>

namespace {

bool isBelow(const QString& path, const QString& folder)
{
    return folder.isEmpty()
        || (path.startsWith(folder)
            && (folder.endsWith(QLatin1Char('/'))
                || path.midRef(folder.size()).startsWith(QLatin1Char('/'))));
}

ContentListing::Filter filterFor(const QString& folder, const QString& search)
{
    const QStringList words = search.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (folder.isEmpty() && words.isEmpty()) {
        return {};
    }
    return [folder, words](const Content& content) {
        const auto* const photo = static_cast<const PhotoData*>(content.data());
        const QString path = photo->url.toLocalFile();
        if (!isBelow(path, folder)) {
            return false;
        }
        const QString date = photo->dateTaken.date().toString(Qt::ISODate);
        return std::all_of(words.cbegin(), words.cend(), [&path, &date](const QString& word) {
            return path.contains(word, Qt::CaseInsensitive) || date.contains(word);
        });
    };
}

} // namespace

PhotoModel::PhotoModel(QObject* parent)
    : ContentModel(MoodsetContent::Image, parent)
{
}

void PhotoModel::setOrder(Order order)
{
    if (order != m_order) {
        m_order = order;
        Q_EMIT orderChanged();
        requery();
    }
}

void PhotoModel::setLimit(int limit)
{
    if (limit != m_limit) {
        m_limit = limit;
        Q_EMIT limitChanged();
        requery();
    }
}

void PhotoModel::setFolder(const QString& folder)
{
    if (folder != m_folder) {
        m_folder = folder;
        Q_EMIT folderChanged();
        requery();
    }
}

void PhotoModel::setSearch(const QString& search)
{
    if (search != m_search) {
        m_search = search;
        Q_EMIT searchChanged();
        requery();
    }
}

ContentModel::Query PhotoModel::query() const
{
    PhotoQueryAgent::Page page;
    page.order = static_cast<PhotoQueryAgent::Page::Order>(m_order);
    page.limit = m_limit;
    return {
        [page](QueryAgent::Recipient* recipient, int limit) {
            auto* const agent =
                static_cast<PhotoQueryAgent*>(QueryAgent::agentFor(MoodsetContent::Image));
            PhotoQueryAgent::Page part = page;
            if (limit >= 0 && (part.limit < 0 || limit < part.limit)) {
                part.limit = limit;
            }
            return agent != nullptr && agent->queryPage(recipient, part);
        },
        filterFor(m_folder, m_search), true};
}
