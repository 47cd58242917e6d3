// SPDX-License-Identifier: BSD-3-Clause
// Makes a directory of pictures for measurements. The same arguments give the same names, bytes and
// times.
#include "pictureforms.h"

#include <QByteArray>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QString>
#include <QVector>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>

namespace {

[[noreturn]] void fail(const QByteArray& path)
{
    std::cerr << "makecorpus: " << path.constData() << ": " << std::strerror(errno) << '\n';
    std::exit(EXIT_FAILURE);
}

QByteArray numbered(const char* name, int number)
{
    return name + QByteArray::number(number).rightJustified(5, '0');
}

void makeFolder(const QByteArray& path)
{
    constexpr mode_t mode = 0755;
    if (mkdir(path.constData(), mode) != 0) {
        fail(path);
    }
}

/// The corpus's folder, and `count` more that nest in it, each with up to six others in it.
QVector<QByteArray> makeFolders(const QByteArray& root, int count)
{
    constexpr int foldersPerFolder = 6;
    makeFolder(root);
    QVector<QByteArray> folders{root};
    for (int i = 0; i < count; ++i) {
        folders.append(folders.at(i / foldersPerFolder) + '/' + numbered("album-", i));
        makeFolder(folders.constLast());
    }
    return folders;
}

void writeFile(const QByteArray& path, const QByteArray& bytes, const QDateTime& modified)
{
    constexpr mode_t mode = 0644;
    const int descriptor = open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    const timespec time{modified.toSecsSinceEpoch(), 0};
    const std::array<timespec, 2> times{time, time};
    if (descriptor < 0 || write(descriptor, bytes.constData(), size_t(bytes.size())) != bytes.size()
        || futimens(descriptor, times.data()) != 0 || close(descriptor) != 0) {
        fail(path);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Makes a folder of pictures to measure with."));
    parser.addHelpOption();
    parser.addPositionalArgument(
        QStringLiteral("FOLDER"), QStringLiteral("The folder to make; it must not exist."));
    const QCommandLineOption pictures(
        QStringLiteral("pictures"), QStringLiteral("How many pictures to write."),
        QStringLiteral("N"), QStringLiteral("10000"));
    const QCommandLineOption folderCount(
        QStringLiteral("folders"), QStringLiteral("How many folders to nest in FOLDER."),
        QStringLiteral("N"), QStringLiteral("200"));
    const QCommandLineOption first(
        QStringLiteral("first"), QStringLiteral("The number in the first picture's name."),
        QStringLiteral("N"), QStringLiteral("0"));
    parser.addOptions({pictures, folderCount, first});
    parser.process(application);
    if (parser.positionalArguments().size() != 1) {
        parser.showHelp(EXIT_FAILURE);
    }

    const PictureForms forms;
    const QVector<QByteArray> folders = makeFolders(
        QFile::encodeName(parser.positionalArguments().constFirst()),
        parser.value(folderCount).toInt());
    // Pictures are put into the nested directories, and into FOLDER itself only if there are none.
    const int nested = folders.size() - 1;
    const int begin = parser.value(first).toInt();
    const int end = begin + parser.value(pictures).toInt();
    for (int i = begin; i < end; ++i) {
        const QByteArray& folder = nested == 0 ? folders.at(0) : folders.at(1 + i % nested);
        const Picture picture = forms.picture(i);
        writeFile(
            folder + '/' + numbered("IMG_", i) + picture.suffix, picture.bytes,
            PictureForms::dateTaken(i));
    }
    // Data that are not written yet would slow down the next measurement.
    sync();
    return EXIT_SUCCESS;
}
