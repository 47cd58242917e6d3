// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <QVariantList>
#include <QVector>

/// The daemon's own database in the private machine, with a package's directory as row 1, and that
/// directory. Managers come from the registry, as in the daemon.
///
/// What does not work ends the process.
class ScratchLibrary
{
public:
    ScratchLibrary();
    Q_DISABLE_COPY_MOVE(ScratchLibrary)

    /// The path of a file in the package, by its relative name.
    QString path(const QString& name) const;
    /// Writes a file, and makes its folder.
    void write(const QString& name, const QByteArray& content = "content") const;
    /// Adds a row for a file of the package; its id.
    static qint64 addFile(const QString& name, const QString& mimeType);

    /// Runs a statement on the daemon's connection; the rows that it gives.
    static QVector<QVariantList> exec(const QString& statement, const QVariantList& values = {});
    /// Whether a transaction is open on that connection.
    static bool isInTransaction();

private:
    QTemporaryDir m_folder;
};
