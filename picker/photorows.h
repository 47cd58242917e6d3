// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QAbstractListModel>
#include <QDate>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QVector>

#include <vector>

/// Arranges the pictures of a PhotoModel in rows for a view. Each month has a row with its name,
/// and then rows with as many pictures as fit beside each other. Rows that have not changed stay.
class PhotoRows : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* photos READ photos WRITE setPhotos NOTIFY photosChanged)
    Q_PROPERTY(int columns READ columns WRITE setColumns NOTIFY columnsChanged)

public:
    enum Role : int {
        TitleRole = Qt::UserRole, ///< the name of the month; empty for a row of pictures
        PicturesRole ///< a list of objects with url, thumbnail and name
    };

    explicit PhotoRows(QObject* parent = nullptr);

    QAbstractItemModel* photos() const { return m_photos; }
    void setPhotos(QAbstractItemModel* photos);
    int columns() const { return m_columns; }
    void setColumns(int columns);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void photosChanged();
    void columnsChanged();

private:
    struct Row
    {
        QString month;
        int first = 0; ///< the position of the first picture
        QVector<qint64> ids; ///< the ids of the pictures; empty for the name of a month

        bool isAlike(const Row& other) const { return month == other.month && ids == other.ids; }
    };

    using Rows = std::vector<Row>;

    Rows arranged() const;
    void arrange();
    void announceChanged();
    qint64 idOf(int place) const;
    static QString title(const QString& month);

    QPointer<QAbstractItemModel> m_photos;
    int m_idRole = -1;
    int m_columns = 1;
    Rows m_rows;
    mutable QSet<qint64> m_changed; ///< the pictures whose rows a view must read again
    QTimer m_soon;
};
