// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentmodel.h"

/// Lists the files of the library, sorted by name.
class FileModel : public ContentModel
{
    Q_OBJECT
    Q_PROPERTY(QString mimeType READ mimeType WRITE setMimeType NOTIFY mimeTypeChanged)
    Q_PROPERTY(
        QStringList directories READ directories WRITE setDirectories NOTIFY directoriesChanged)

public:
    explicit FileModel(QObject* parent = nullptr);

    /// The type of the files, such as "audio/*"; empty for all.
    QString mimeType() const { return m_mimeType; }
    void setMimeType(const QString& mimeType);

    /// Paths of directories. Only files in directories below one of these are listed, and not the
    /// files directly in them. If it is empty, all files are listed.
    QStringList directories() const { return m_directories; }
    void setDirectories(const QStringList& directories);

Q_SIGNALS:
    void mimeTypeChanged();
    void directoriesChanged();

protected:
    Query query() const override;

private:
    QString m_mimeType;
    QStringList m_directories;
};
