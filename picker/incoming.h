// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QObject>
#include <QUrl>
#include <QVariantMap>

/// What the user drops, pastes, types or names on the command line, told apart.
class Incoming : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// What a text is: an object with
    ///   kind   "picture" (a file or an address on the network), "bundle" (a directory), or
    ///          "none"
    ///   url    its URL
    ///   error  why it is of no use, in one line
    /// A text is a URL or the path of a file. Nothing of the file is read.
    Q_INVOKABLE static QVariantMap classify(const QString& text);

    /// The first line of the text on the clipboard, or the URL of the file there.
    Q_INVOKABLE static QString clipboardText();

    /// The name of a file or folder; the whole of an address on the network.
    Q_INVOKABLE static QString fileName(const QUrl& url);

    /// The URL of the user's pictures folder, or of the home folder where there is none.
    Q_INVOKABLE static QUrl picturesFolder();

    /// Why the files of bundles have given no moodset: a list of lines. All files in `folder` are
    /// looked at if there are none.
    Q_INVOKABLE static QStringList bundleFaults(const QUrl& folder, const QStringList& files);
};
