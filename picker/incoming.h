// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QUrl>
#include <QVariantMap>

/// Recognises what the user drops, pastes, types or names on the command line.
class Incoming : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Describes a text by an object with these values:
    ///   kind   "picture" (a file or an address on the network), "bundle" (a directory), or
    ///          "none"
    ///   url    its URL
    ///   error  why it cannot be used, in one line
    /// A text is a URL or the path of a file. Nothing of the file is read.
    Q_INVOKABLE static QVariantMap classify(const QString& text);

    /// The first line of the text on the clipboard, or the URL of the file there.
    Q_INVOKABLE static QString clipboardText();

    /// The name of a file or directory, or the whole address on the network.
    Q_INVOKABLE static QString fileName(const QUrl& url);

    /// The URL of the user's pictures folder, or of the home directory if there is none.
    Q_INVOKABLE static QUrl picturesFolder();

    /// Why the files of bundles did not become moodsets, as a list of lines. If there are no files,
    /// all files in `folder` are checked.
    Q_INVOKABLE static QStringList bundleFaults(const QUrl& folder, const QStringList& files);
};
