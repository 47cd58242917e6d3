// SPDX-License-Identifier: BSD-3-Clause
#include "content/contentdata.h"

#include <QTest>

namespace {

/// A record with only what the base class has.
class PlainRecord : public ContentData
{
public:
    PlainRecord(qint64 fileId, const QUrl& fileUrl, MoodsetContent::Type contentType)
        : ContentData(fileId, fileUrl, contentType)
    {
    }

    PlainRecord* clone() const override { return new PlainRecord(*this); }
    QVariant data(int role) const override
    {
        Q_UNUSED(role)
        return QVariant();
    }
};

} // namespace

class ContentDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void holdsWhatItIsMadeOf()
    {
        const QUrl url = QUrl::fromLocalFile(QStringLiteral("/a/b.jpg"));

        const PlainRecord record(7, url, MoodsetContent::Image);

        QCOMPARE(record.id, 7);
        QCOMPARE(record.url, url);
        QCOMPARE(record.type, 2);
    }

    void isNotReferredToAtFirst()
    {
        const PlainRecord record(7, QUrl(), MoodsetContent::File);

        QCOMPARE(record.ref.loadRelaxed(), 0);
    }

    void refusesToWriteAnyRole()
    {
        PlainRecord record(7, QUrl(), MoodsetContent::File);

        for (int role = -1; role <= 24; ++role) {
            QVERIFY2(!record.setData(role, 1), qPrintable(QString::number(role)));
        }
    }

    void typesHaveTheNumbersOfTheBusInterface()
    {
        QCOMPARE(int(MoodsetContent::File), 0);
        QCOMPARE(int(MoodsetContent::Moodset), 1);
        QCOMPARE(int(MoodsetContent::Image), 2);
        QCOMPARE(int(MoodsetContent::Download), 4);
        QCOMPARE(int(MoodsetContent::Install), 6);
        QCOMPARE(int(MoodsetContent::Index), 7);
    }
};

QTEST_GUILESS_MAIN(ContentDataTest)

#include "tst_contentdata.moc"
