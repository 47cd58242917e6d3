// SPDX-License-Identifier: BSD-3-Clause
#include "photorows.h"

#include <QLocale>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

int roleOf(const QAbstractItemModel& model, const char* name)
{
    return model.roleNames().key(name, -1);
}

} // namespace

PhotoRows::PhotoRows(QObject* parent)
    : QAbstractListModel(parent)
{
    // Many changes in a row are handled together.
    m_soon.setSingleShot(true);
    connect(&m_soon, &QTimer::timeout, this, &PhotoRows::arrange);
}

void PhotoRows::setPhotos(QAbstractItemModel* photos)
{
    if (photos == m_photos) {
        return;
    }
    if (m_photos != nullptr) {
        m_photos->disconnect(this);
    }
    m_photos = photos;
    m_idRole = photos != nullptr ? roleOf(*photos, "contentId") : -1;
    if (photos != nullptr) {
        const auto soon = [this] { m_soon.start(); };
        connect(photos, &QAbstractItemModel::rowsInserted, this, soon);
        connect(photos, &QAbstractItemModel::rowsRemoved, this, soon);
        connect(photos, &QAbstractItemModel::rowsMoved, this, soon);
        connect(photos, &QAbstractItemModel::modelReset, this, soon);
        connect(
            photos, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& from, const QModelIndex& to) {
                m_soon.start();
                for (int place = from.row(); place <= to.row(); ++place) {
                    m_changed.insert(idOf(place));
                }
            });
    }
    m_soon.start();
    Q_EMIT photosChanged();
}

void PhotoRows::setColumns(int columns)
{
    const int atLeastOne = std::max(1, columns);
    if (atLeastOne != m_columns) {
        m_columns = atLeastOne;
        m_soon.start();
        Q_EMIT columnsChanged();
    }
}

int PhotoRows::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant PhotoRows::data(const QModelIndex& index, int role) const
{
    const QAbstractItemModel* const photos = m_photos;
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || photos == nullptr) {
        return {};
    }
    const Row row = m_rows.at(std::size_t(index.row()));
    if (role == TitleRole) {
        return row.ids.isEmpty() ? title(row.month) : QString();
    }
    if (role != PicturesRole) {
        return {};
    }
    if (m_soon.isActive()) {
        // The photos have changed since the rows were arranged, so this may read other pictures.
        for (const qint64 id : row.ids) {
            m_changed.insert(id);
        }
    }
    QVariantList pictures;
    for (int place = row.first; place < row.first + row.ids.size(); ++place) {
        const QModelIndex photo = photos->index(place, 0);
        pictures.append(QVariantMap{
            {QStringLiteral("url"), photo.data(roleOf(*photos, "url"))},
            {QStringLiteral("thumbnail"), photo.data(roleOf(*photos, "thumbnail"))},
            {QStringLiteral("name"), photo.data(roleOf(*photos, "fileName"))}});
    }
    return pictures;
}

QHash<int, QByteArray> PhotoRows::roleNames() const
{
    return {{TitleRole, "title"}, {PicturesRole, "pictures"}};
}

PhotoRows::Rows PhotoRows::arranged() const
{
    Rows rows;
    const QAbstractItemModel* const photos = m_photos;
    if (photos == nullptr) {
        return rows;
    }
    const int count = photos->rowCount();
    const int monthRole = roleOf(*photos, "month");
    Row row;
    const auto finishRow = [&rows, &row] {
        if (!row.ids.isEmpty()) {
            rows.push_back(row);
            row.ids.clear();
        }
    };
    for (int place = 0; place < count; ++place) {
        const QModelIndex photo = photos->index(place, 0);
        const QString month = photo.data(monthRole).toString();
        if (place == 0 || row.month != month) {
            finishRow();
            row.month = month;
            rows.push_back({month, place, {}});
        } else if (row.ids.size() == m_columns) {
            finishRow();
        }
        if (row.ids.isEmpty()) {
            row.first = place;
        }
        row.ids.append(idOf(place));
    }
    finishRow();
    return rows;
}

void PhotoRows::arrange()
{
    Rows next = arranged();
    const auto isAlike = [](const Row& a, const Row& b) { return a.isAlike(b); };
    const auto differing =
        std::mismatch(m_rows.begin(), m_rows.end(), next.begin(), next.end(), isAlike);
    const auto before = int(differing.first - m_rows.begin());
    const auto differingEnd = std::mismatch(
        m_rows.rbegin(), std::make_reverse_iterator(differing.first), next.rbegin(),
        std::make_reverse_iterator(differing.second), isAlike);
    const auto after = int(differingEnd.first - m_rows.rbegin());
    const int removed = rowCount() - before - after;
    const int added = int(next.size()) - before - after;
    if (removed > 0) {
        beginRemoveRows({}, before, before + removed - 1);
        m_rows.erase(m_rows.begin() + before, m_rows.begin() + before + removed);
        endRemoveRows();
    }
    if (added > 0) {
        beginInsertRows({}, before, before + added - 1);
    }
    m_rows = std::move(next);
    if (added > 0) {
        endInsertRows();
    }
    announceChanged();
}

void PhotoRows::announceChanged()
{
    if (m_changed.isEmpty()) {
        return;
    }
    const QSet<qint64> changed = std::exchange(m_changed, {});
    for (int place = 0; place < rowCount(); ++place) {
        const QVector<qint64>& ids = m_rows.at(std::size_t(place)).ids;
        if (std::any_of(
                ids.begin(), ids.end(), [&changed](qint64 id) { return changed.contains(id); })) {
            Q_EMIT dataChanged(index(place), index(place));
        }
    }
}

qint64 PhotoRows::idOf(int place) const
{
    return m_photos->index(place, 0).data(m_idRole).toLongLong();
}

QString PhotoRows::title(const QString& month)
{
    const QDate date = QDate::fromString(month, QStringLiteral("yyyy-MM"));
    return date.isValid() ? QLocale().toString(date, QStringLiteral("MMMM yyyy"))
                          : tr("Without a date");
}
