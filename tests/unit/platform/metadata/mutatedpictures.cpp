// SPDX-License-Identifier: BSD-3-Clause
// mutated-pictures COUNT FOLDER...
//
// Damages pictures COUNT times for each format, in the same way in each run: those of
// samplePictures() and those in the folders. Wherever the decoder gives a size, the header must
// give the same size. If they differ, it prints the name of the first such picture, keeps it as the
// file mutated-picture, and ends with the exit status 1.
#include "pictureformat.h"
#include "picturereader.h"
#include "picturesize.h"
#include "samplepictures.h"
#include "windowedfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstdio>
#include <map>

namespace {

class Mutator
{
public:
    QByteArray mutated(QByteArray bytes)
    {
        constexpr int maximalChanges = 4;
        for (int changes = 1 + below(maximalChanges); changes > 0 && !bytes.isEmpty(); --changes) {
            change(&bytes);
        }
        return bytes;
    }

    int below(int limit) { return int(m_random.bounded(limit)); }

private:
    /// Half of the changes are in the first bytes, where the headers are.
    int place(const QByteArray& bytes)
    {
        constexpr int start = 64;
        const bool isAtStart = below(2) == 0;
        return below(isAtStart ? qMin(start, bytes.size()) : bytes.size());
    }

    void change(QByteArray* bytes)
    {
        constexpr int kinds = 8;
        constexpr int maximalPiece = 16;
        static const QByteArray oddBytes("\0\x01\x7f\x80\xff", 5);
        const int at = place(*bytes);
        switch (below(kinds)) {
        case 0:
            bytes->truncate(at);
            break;
        case 1:
            bytes->remove(at, 1 + below(maximalPiece));
            break;
        case 2:
            bytes->insert(at, bytes->mid(place(*bytes), 1 + below(maximalPiece)));
            break;
        case 3:
            (*bytes)[at] = oddBytes.at(below(oddBytes.size()));
            break;
        case 4:
            (*bytes)[at] = char(below(256));
            break;
        case 5:
            (*bytes)[at] = char(bytes->at(at) + 1 - 2 * below(2));
            break;
        default:
            (*bytes)[at] = char(bytes->at(at) ^ (1 << below(8)));
        }
    }

    QRandomGenerator m_random{1};
};

QByteArray textOf(const QSize& size)
{
    return QByteArray::number(size.width()) + 'x' + QByteArray::number(size.height());
}

/// The result of comparing the sizes of damaged pictures.
struct Counts
{
    int decoded = 0; // where the decoder tells one
    int undecoded = 0; // where only the header does
};

class Comparison
{
public:
    /// False if the sizes differ.
    bool compare(const QByteArray& bytes, Counts* counts)
    {
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot write %s", qPrintable(m_path));
        }
        file.close();
        const QSize decoders = PictureReader(m_path).size();
        WindowedFile picture(m_path);
        const QSize headers = pictureSize(picture);
        counts->decoded += decoders.isValid() ? 1 : 0;
        counts->undecoded += !decoders.isValid() && headers.isValid() ? 1 : 0;
        if (!decoders.isValid() || headers == decoders) {
            return true;
        }
        QFile::remove(QStringLiteral("mutated-picture"));
        file.copy(QStringLiteral("mutated-picture"));
        printf(
            "the decoder's size is %s, the header's %s\n", textOf(decoders).constData(),
            textOf(headers).constData());
        return false;
    }

private:
    const QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(QStringLiteral("picture"));
};

using Samples = std::vector<SamplePicture>;

void addFolder(const QDir& folder, Samples* samples)
{
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly)) {
            samples->push_back({name.toUtf8(), file.readAll()});
        }
    }
}

/// Whether the header may give a size although the decoder gives none: the decoder reads all frames
/// of an animation and all tags of a directory, and it may not be installed.
bool mayTellMore(PictureFormat format)
{
    switch (format) {
    case PictureFormat::WebP:
    case PictureFormat::Tiff:
    case PictureFormat::Heif:
    case PictureFormat::Avif:
        return true;
    case PictureFormat::Jpeg:
    case PictureFormat::Png:
    case PictureFormat::Gif:
    case PictureFormat::Bmp:
    case PictureFormat::Pnm:
    case PictureFormat::Unknown:
        return false;
    }
    return false;
}

/// Whether the sizes of `count` damaged pictures are correct.
bool compareMutations(PictureFormat format, const Samples& samples, int count)
{
    Mutator mutator;
    Comparison comparison;
    Counts counts;
    for (int i = 0; i < count; ++i) {
        const SamplePicture& sample = samples.at(size_t(mutator.below(int(samples.size()))));
        if (!comparison.compare(mutator.mutated(sample.bytes), &counts)) {
            printf("%s, change %d\n", sample.name.constData(), i);
            return false;
        }
    }
    printf(
        "%d damaged: %d with the decoder's size, %d with a size from the header alone\n", count,
        counts.decoded, counts.undecoded);
    return counts.undecoded == 0 || mayTellMore(format);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) {
        fputs("usage: mutated-pictures COUNT FOLDER...\n", stderr);
        return 2;
    }
    // Decoders may log anything about damaged pictures.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    Samples all = samplePictures();
    for (const QString& folder : arguments.mid(2)) {
        addFolder(folder, &all);
    }
    std::map<PictureFormat, Samples> byFormat;
    for (const SamplePicture& sample : all) {
        byFormat[pictureFormat(sample.bytes)].push_back(sample);
    }
    byFormat.erase(PictureFormat::Unknown);
    bool isEqual = true;
    for (const auto& [format, samples] : byFormat) {
        printf("%s, %d pictures: ", decoderName(format).constData(), int(samples.size()));
        isEqual = compareMutations(format, samples, arguments.at(1).toInt()) && isEqual;
    }
    return isEqual ? 0 : 1;
}
