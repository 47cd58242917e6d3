// SPDX-License-Identifier: BSD-3-Clause
#include "filemodel.h"

FileModel::FileModel(QObject* parent)
    : ContentModel(MoodsetContent::File, parent)
{
}

void FileModel::setMimeType(const QString& mimeType)
{
    if (mimeType != m_mimeType) {
        m_mimeType = mimeType;
        Q_EMIT mimeTypeChanged();
        requery();
    }
}

void FileModel::setDirectories(const QStringList& directories)
{
    if (directories != m_directories) {
        m_directories = directories;
        Q_EMIT directoriesChanged();
        requery();
    }
}

ContentModel::Query FileModel::query() const
{
    QueryAgent::Parameters parameters;
    parameters.mimeType = m_mimeType;
    parameters.directories = m_directories;
    return wholeListing(MoodsetContent::File, parameters);
}
