// SPDX-License-Identifier: BSD-3-Clause
#include "content/filedata.h"
#include "content/moodsetdata.h"
#include "content/photodata.h"

#include <QTest>

#include <memory>

namespace {

std::unique_ptr<FileData> sampleFile()
{
    auto file = std::make_unique<FileData>(
        5, QUrl::fromLocalFile(QStringLiteral("/home/user/Pictures/a b.txt")));
    file->mimeType = QStringLiteral("text/plain");
    file->fileName = QStringLiteral("a b.txt");
    file->displayName = QStringLiteral("A note");
    file->permissions = 3;
    return file;
}

} // namespace

class FileDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isEmptyAtFirst()
    {
        const FileData file(5, QUrl());

        QCOMPARE(file.type, int(MoodsetContent::File));
        QCOMPARE(file.mimeType, QString());
        QCOMPARE(file.fileName, QString());
        QCOMPARE(file.displayName, QString());
        QCOMPARE(file.permissions, 0);
    }

    void roleGivesItsField_data()
    {
        QTest::addColumn<int>("role");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("contentId") << 0 << QVariant(qlonglong(5));
        QTest::newRow("url") << 1
                             << QVariant(
                                    QUrl(QStringLiteral("file:///home/user/Pictures/a b.txt")));
        QTest::newRow("mimeType") << 2 << QVariant(QStringLiteral("text/plain"));
        QTest::newRow("fileName") << 3 << QVariant(QStringLiteral("a b.txt"));
        QTest::newRow("filePath") << 4 << QVariant(QStringLiteral("/home/user/Pictures/a b.txt"));
        QTest::newRow("displayName") << 5 << QVariant(QStringLiteral("A note"));
        QTest::newRow("readOnly") << 6 << QVariant(false);
        QTest::newRow("one below the first") << -1 << QVariant();
        QTest::newRow("one above the last") << 7 << QVariant();
    }

    void roleGivesItsField()
    {
        QFETCH(int, role);
        QFETCH(QVariant, value);
        const std::unique_ptr<FileData> file = sampleFile();

        const QVariant read = file->data(role);

        QCOMPARE(read.userType(), value.userType());
        QCOMPARE(read, value);
    }

    void isReadOnlyWithoutWritePermission_data()
    {
        QTest::addColumn<int>("permissions");
        QTest::addColumn<bool>("readOnly");
        QTest::newRow("none") << 0 << true;
        QTest::newRow("from an index or a package") << 1 << true;
        QTest::newRow("write alone") << 2 << false;
        QTest::newRow("from a scan") << 3 << false;
        QTest::newRow("other bits") << 0x7d << true;
    }

    void isReadOnlyWithoutWritePermission()
    {
        QFETCH(int, permissions);
        QFETCH(bool, readOnly);
        FileData file(5, QUrl());
        file.permissions = permissions;

        QCOMPARE(file.data(6), QVariant(readOnly));
    }

    void rolesHaveNames()
    {
        const QHash<int, QByteArray> expected{{0, "contentId"}, {1, "url"},      {2, "mimeType"},
                                              {3, "fileName"},  {4, "filePath"}, {5, "displayName"},
                                              {6, "readOnly"}};

        QCOMPARE(FileData::roleNames(), expected);
    }

    void refusesToWriteAnyRole()
    {
        const std::unique_ptr<FileData> file = sampleFile();

        for (int role = -1; role <= 24; ++role) {
            QVERIFY2(!file->setData(role, QStringLiteral("x")), qPrintable(QString::number(role)));
        }
        QCOMPARE(file->displayName, QStringLiteral("A note"));
    }

    void commonRolesMeanTheSameForEachKind()
    {
        FileData file(5, QUrl());
        PhotoData photo(5, QUrl());
        MoodsetData moodset(5, QUrl());
        const QDateTime time(QDate(2021, 3, 4), QTime(5, 6, 7, 89));
        for (FileData* const record :
             {&file, static_cast<FileData*>(&photo), static_cast<FileData*>(&moodset)}) {
            QCOMPARE(record->data(FileData::WritableRole), QVariant(false));
            QCOMPARE(record->data(FileData::ModificationTimeRole), QVariant(QDateTime()));

            record->permissions = FileData::WritePermission;
            record->modified = QDateTime(time.date(), time.time(), Qt::UTC).toMSecsSinceEpoch();

            QCOMPARE(record->data(FileData::WritableRole), QVariant(true));
            QCOMPARE(record->data(FileData::ModificationTimeRole), QVariant(time));
        }
        const QHash<int, QByteArray> names = FileData::modelRoleNames(MoodsetData::roleNames());
        QCOMPARE(names.size(), MoodsetData::roleNames().size() + 2);
        QCOMPARE(names.value(FileData::WritableRole), QByteArray("writable"));
        QCOMPARE(names.value(FileData::ModificationTimeRole), QByteArray("modificationTime"));
    }

    void cloneHasTheSameValuesAndNoReferences()
    {
        const std::unique_ptr<FileData> file = sampleFile();
        file->ref.ref();

        const std::unique_ptr<FileData> copy(file->clone());

        const FileData& content = *copy;
        QVERIFY(typeid(content) == typeid(FileData));
        QCOMPARE(copy->ref.loadRelaxed(), 0);
        QCOMPARE(copy->type, file->type);
        for (int role = 0; role <= 6; ++role) {
            QCOMPARE(copy->data(role), file->data(role));
        }
        QCOMPARE(copy->permissions, 3);
    }
};

QTEST_GUILESS_MAIN(FileDataTest)

#include "tst_filedata.moc"
