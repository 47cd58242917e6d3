// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QFutureWatcher>
#include <QJsonObject>
#include <QObject>
#include <QTemporaryDir>
#include <QUrl>
#include <QVariantMap>

/// Previews the moodset of a picture before anything is stored. Another process decodes the
/// picture, so that a picture that ends its decoder does not end this program. For an address on
/// the network, it only checks that there is a picture.
class PicturePreview : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QUrl picture READ picture WRITE setPicture NOTIFY changed)
    Q_PROPERTY(Status status READ status NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)
    Q_PROPERTY(QVariantMap look READ look NOTIFY changed)

public:
    enum Status : int {
        Null, ///< there is no picture
        Loading, ///< it is being checked
        Ready, ///< a moodset can be made from it
        Error ///< no moodset can be made of it; `error` says why
    };
    Q_ENUM(Status)

    explicit PicturePreview(QObject* parent = nullptr);
    ~PicturePreview() override;

    QUrl picture() const { return m_picture; }
    void setPicture(const QUrl& picture);
    Status status() const { return m_status; }
    QString error() const { return m_error; }

    /// The roles of the moodset that are known: homeWallpaper, applicationWallpaper and the four
    /// colours. Empty for an address on the network.
    QVariantMap look() const { return m_look; }

Q_SIGNALS:
    void changed();

private:
    struct Reply
    {
        QVariantMap look;
        QString error;
    };

    static Reply inspect(const QUrl& picture, const QString& folder);
    static Reply inspectFile(const QUrl& picture, const QString& folder);
    static Reply inspectAddress(const QUrl& address);
    void take();

    QUrl m_picture;
    Status m_status = Null;
    QString m_error;
    QVariantMap m_look;
    QTemporaryDir m_folder;
    QFutureWatcher<Reply> m_inspection;
};
