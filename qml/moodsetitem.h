// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "contentrow.h"
#include "libraryevents.h"
#include "librarythread.h"

#include <QObject>
#include <QQmlParserStatus>
#include <QUrl>
#include <QVariant>

#include <memory>

/// One moodset with its tones, which follows the library.
class MoodsetItem : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(qlonglong contentId READ contentId WRITE setContentId NOTIFY contentIdChanged)
    Q_PROPERTY(QUrl url READ url WRITE setUrl NOTIFY urlChanged)
    Q_PROPERTY(QVariant moodset READ moodset NOTIFY moodsetChanged)
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString error READ error NOTIFY statusChanged)

public:
    enum Status : int {
        Null, ///< neither an id nor a URL is given, or the component is not complete yet
        Loading, ///< the moodset is being read for the first time
        Ready, ///< `moodset` shows the library
        Error ///< the library cannot be read; `moodset` is that of the last time
    };
    Q_ENUM(Status)

    explicit MoodsetItem(QObject* parent = nullptr);
    ~MoodsetItem() override;

    /// The id of the moodset. If it is 0, the URL counts.
    qlonglong contentId() const { return m_contentId; }
    void setContentId(qlonglong contentId);

    /// The URL of the moodset's file or picture, or the address that the picture was downloaded
    /// from. It is ignored while there is an id.
    QUrl url() const { return m_url; }
    void setUrl(const QUrl& url);

    /// The values of the moodset's roles, by their names; null while there is no such moodset.
    QVariant moodset() const;
    const ContentRow& row() const { return m_row; }

    Status status() const { return m_status; }
    QString error() const { return m_error; }

    void classBegin() override;
    void componentComplete() override;

Q_SIGNALS:
    void contentIdChanged();
    void urlChanged();
    void moodsetChanged();
    void statusChanged();

private:
    void look();
    void start();
    void show(const ContentRow& row, const QString& error);
    void setStatus(Status status, const QString& error);

    qlonglong m_contentId = 0;
    QUrl m_url;
    ContentRow m_row;
    Status m_status = Null;
    QString m_error;
    std::shared_ptr<LibraryThread> m_thread;
    std::shared_ptr<LibraryEvents> m_events;
    ReadingPointer m_reading;
    bool m_isStale = false;
};
