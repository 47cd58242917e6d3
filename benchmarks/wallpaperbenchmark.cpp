// SPDX-License-Identifier: BSD-3-Clause
// Compares the blur of application wallpapers with one Gaussian in OpenCV, and the colour analysis
// with QImage::pixel() and QColor, in turns. Prints the table.
#include "arguments.h"
#include "blur/wallpaperblur.h"
#include "clocktime.h"
#include "measuredprocess.h"
#include "peakmemory.h"
#include "report.h"
#include "theme/colouranalysis.h"
#include "velmoorzerlinbackground.h"

#include <QColor>
#include <QCoreApplication>
#include <QImage>
#include <QRectF>

#include <opencv2/imgproc.hpp>

#include <array>
#include <malloc.h>

namespace {

/// A kind of wallpaper, and the budgets of its blur.
struct Kind
{
    int side;
    int ratio;
    /// The limit relative to OpenCV's time.
    double timeBudget;
    /// The limit for the memory in addition to the picture and the blurred copy, relative to the
    /// bytes of the picture.
    double memoryBudget;
};

constexpr std::array<Kind, 2> Kinds{{{960, 1, 0.45, 0.25}, {2520, 2, 0.2, 0.1}}};

/// The parameters if no keys are set, at a pixel ratio of 1.
constexpr int DefaultRounds = 15;
constexpr int DefaultRadius = 4;
constexpr double DefaultSigma = 1.3;
/// The sigma of all default passes together, at a pixel ratio of 1.
constexpr double TotalSigma = 5.0;

constexpr int FewRounds = 8;
constexpr std::array<int, 3> ManyRounds{15, 30, 60};
/// The limit for the time of more rounds relative to fewer. They take the same time, except for
/// variations of the machine.
constexpr double RoundsBudget = 1.1;

/// A blur that is wide compared with the picture, at a pixel ratio of 1.
constexpr BlurPasses WidePasses = {15, 32, 16};
constexpr int ManyWideRounds = 100;
/// It takes some milliseconds to compute their filter, whatever the size of the picture is.
constexpr double WideRoundsBudget = 1.5;

constexpr double AnalysisBudget = 0.35;

BlurPasses passesOf(const Kind& kind, int rounds = DefaultRounds)
{
    return {rounds, DefaultRadius * kind.ratio, DefaultSigma * kind.ratio};
}

double timeOfBlur(const QImage& picture, const BlurPasses& passes)
{
    QImage copy = picture.copy();
    return processorTimeOf([&] { blurWallpaper(&copy, passes); });
}

double timeOfOpenCv(const QImage& picture, double sigma)
{
    QImage copy = picture.copy();
    const cv::Mat source(
        copy.height(), copy.width(), CV_8UC4, copy.bits(), size_t(copy.bytesPerLine()));
    // Its memory is allocated before the measurement, as for a blur in place.
    cv::Mat blurred(source.size(), source.type(), cv::Scalar());
    return processorTimeOf([&] { cv::GaussianBlur(source, blurred, cv::Size(), sigma, sigma); });
}

/// The analysis with Qt's functions alone. Because of the sum, the compiler cannot leave the work
/// out.
int analysedByQt(const QImage& image)
{
    std::array<int, 360> weights = {};
    int valueSum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            int hue = 0;
            int saturation = 0;
            int value = 0;
            QColor(image.pixel(x, y)).getHsv(&hue, &saturation, &value);
            valueSum += value;
            if (saturation > 20 && value > 20) {
                weights.at(size_t(hue)) += value >> 4;
            }
        }
    }
    const auto best = std::max_element(weights.begin(), weights.end());
    return valueSum + int(best - weights.begin());
}

class Benchmark
{
public:
    Benchmark(const QString& folder, int rounds, int divisor)
        : m_folder(folder)
        , m_rounds(rounds)
        , m_divisor(divisor)
    {
    }

    void run(Report* report) const
    {
        // A child begins with the memory of this process, so the times come last.
        for (const Kind& kind : Kinds) {
            addMemory(report, kind);
        }
        for (const Kind& kind : Kinds) {
            addBlur(report, kind);
            addRounds(report, kind);
            addWideRounds(report, kind);
            addAnalysis(report, kind);
        }
    }

private:
    QImage picture(const Kind& kind) const
    {
        const int side = kind.side / m_divisor;
        const QImage photo(QStringLiteral(SAMPLE_PICTURES "/autumn-forest.jpg"));
        if (photo.isNull()) {
            giveUp("cannot read the sample picture");
        }
        return photo.scaled(side, side).convertToFormat(QImage::Format_RGB32);
    }

    static QString title(const QImage& picture, const char* what)
    {
        return QStringLiteral("%1 x %2, %3")
            .arg(picture.width())
            .arg(picture.height())
            .arg(QLatin1String(what));
    }

    void build(const QImage& picture, int ratio) const
    {
        VelmoorZerlinBackground background(m_folder);
        background.setPixelRatio(float(ratio));
        VelmoorZerlinBackground::buildBackgroundImageForPortrait(
            &background, picture, {}, {}, QRectF(picture.rect()));
    }

    /// The peak memory of a process that makes a wallpaper, minus the peak of one that only copies
    /// the picture. Both first make a very small wallpaper, so both have loaded the same code.
    void addMemory(Report* report, const Kind& kind) const
    {
        constexpr double kibPerMib = 1024;
        const QImage source = picture(kind);
        const QImage tiny = source.copy(0, 0, 64, 64);
        Comparison comparison = {
            title(source, "memory besides the copy"),
            QStringLiteral("MiB"),
            {},
            QStringLiteral("the picture"),
            {},
            kind.memoryBudget};
        for (int round = 0; round < m_rounds; ++round) {
            const long building = peakMemoryOf([&] {
                build(tiny, 1);
                build(source, kind.ratio);
            });
            const long copying = peakMemoryOf([&] {
                build(tiny, 1);
                const QImage copy = source.copy();
            });
            comparison.measured.push_back(double(building - copying) / kibPerMib);
            comparison.base.push_back(double(source.sizeInBytes()) / kibPerMib / kibPerMib);
        }
        report->add(comparison);
    }

    void addBlur(Report* report, const Kind& kind) const
    {
        const QImage source = picture(kind);
        Comparison comparison = {
            title(source, "blur"), QStringLiteral("ms"), {}, QStringLiteral("OpenCV"), {},
            kind.timeBudget};
        for (int round = 0; round < m_rounds; ++round) {
            comparison.measured.push_back(timeOfBlur(source, passesOf(kind)));
            comparison.base.push_back(timeOfOpenCv(source, TotalSigma * kind.ratio));
        }
        report->add(comparison);
    }

    void addRounds(Report* report, const Kind& kind) const
    {
        const QImage source = picture(kind);
        for (const int many : ManyRounds) {
            const QString what = QStringLiteral("blur of %1 rounds").arg(many);
            Comparison comparison = {
                title(source, what.toLatin1().constData()),
                QStringLiteral("ms"),
                {},
                QStringLiteral("%1 rounds").arg(FewRounds),
                {},
                RoundsBudget};
            for (int round = 0; round < m_rounds; ++round) {
                comparison.measured.push_back(timeOfBlur(source, passesOf(kind, many)));
                comparison.base.push_back(timeOfBlur(source, passesOf(kind, FewRounds)));
            }
            report->add(comparison);
        }
    }

    void addWideRounds(Report* report, const Kind& kind) const
    {
        const QImage source = picture(kind);
        BlurPasses few = WidePasses;
        few.radius *= kind.ratio;
        few.sigma *= kind.ratio;
        BlurPasses many = few;
        many.rounds = ManyWideRounds;
        Comparison comparison = {
            title(source, "wide blur of 100 rounds"),
            QStringLiteral("ms"),
            {},
            QStringLiteral("%1 rounds").arg(few.rounds),
            {},
            WideRoundsBudget};
        for (int round = 0; round < m_rounds; ++round) {
            comparison.measured.push_back(timeOfBlur(source, many));
            comparison.base.push_back(timeOfBlur(source, few));
        }
        report->add(comparison);
    }

    void addAnalysis(Report* report, const Kind& kind) const
    {
        QImage wallpaper = picture(kind);
        blurWallpaper(&wallpaper, passesOf(kind));
        Comparison comparison = {
            title(wallpaper, "colour analysis"),
            QStringLiteral("ms"),
            {},
            QStringLiteral("pixel() and QColor"),
            {},
            AnalysisBudget};
        float average = 0;
        QColor dominant;
        int checksum = 0;
        for (int round = 0; round < m_rounds; ++round) {
            comparison.measured.push_back(
                processorTimeOf([&] { analyseImageColors(wallpaper, &average, &dominant); }));
            comparison.base.push_back(
                processorTimeOf([&] { checksum += analysedByQt(wallpaper); }));
        }
        if (checksum == 0 || !dominant.isValid()) {
            giveUp("an analysis found nothing");
        }
        report->add(comparison);
    }

    const QString m_folder;
    const int m_rounds;
    const int m_divisor;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Arguments arguments(QStringLiteral("Measures the making of wallpapers."));
    arguments.addNumber("divisor", "Make the pictures' sides this many times shorter.", "1");
    arguments.addRounds("31");
    arguments.read();
    // Memory of freed pictures is given back to the system at once. By default, the C library would
    // keep it, and hide how much a child takes.
    constexpr int largestKept = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, largestKept);
    // The daemon has only one thread for this, too.
    cv::setNumThreads(1);

    const Benchmark benchmark(
        arguments.folder().path(), arguments.number("rounds"), arguments.number("divisor"));
    Report report;
    benchmark.run(&report);
    return arguments.finish(report);
}
