// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentmodel.h"

/// Lists the pictures whose data have been read, sorted by the times when they were taken.
class PhotoModel : public ContentModel
{
    Q_OBJECT
    Q_PROPERTY(Order order READ order WRITE setOrder NOTIFY orderChanged)
    Q_PROPERTY(int limit READ limit WRITE setLimit NOTIFY limitChanged)
    Q_PROPERTY(QString folder READ folder WRITE setFolder NOTIFY folderChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)

public:
    /// Pictures without a time come last in either order.
    enum Order : int { NewestFirst = 0, OldestFirst = 1 };
    Q_ENUM(Order)

    explicit PhotoModel(QObject* parent = nullptr);

    Order order() const { return m_order; }
    void setOrder(Order order);

    /// The largest number of rows, counted before the search; negative for no limit.
    int limit() const { return m_limit; }
    void setLimit(int limit);

    /// The path of a directory: only pictures in it and below are listed. Empty for all.
    QString folder() const { return m_folder; }
    void setFolder(const QString& folder);

    /// Some words. Only pictures are listed that have each of these words in their path or in their
    /// date, in upper or lower case. The date has the form "2024-03-31". If it is empty, all
    /// pictures are listed.
    QString search() const { return m_search; }
    void setSearch(const QString& search);

Q_SIGNALS:
    void orderChanged();
    void limitChanged();
    void folderChanged();
    void searchChanged();

protected:
    Query query() const override;

private:
    Order m_order = NewestFirst;
    int m_limit = -1;
    QString m_folder;
    QString m_search;
};
