// SPDX-License-Identifier: BSD-3-Clause
// Measures the blur of application wallpapers against OpenCV's one-shot Gaussian, and the colour
// analysis against QImage::pixel() with QColor, in turns, and prints the table.
#include "measuredprocess.h"
#include "peakmemory.h"
#include "report.h"
#include "theme/colouranalysis.h"
#include "velmoorzerlinbackground.h"
#include "wallpaperblur.h"

#include <QColor>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QImage>
#include <QRectF>
#include <QTemporaryDir>

#include <opencv2/imgproc.hpp>

#include <array>
#include <ctime>
#include <iostream>
#include <malloc.h>

namespace {

/// A wallpaper, and what its blur may take.
struct Kind
{
    int side;
    int ratio;
    /// Against OpenCV's time.
    double timeBudget;
    /// Besides the picture and the copy that is blurred, against the picture's bytes.
    double memoryBudget;
};

const Kind Kinds[] = {{960, 1, 0.45, 0.25}, {2520, 2, 0.2, 0.1}};

/// What unset keys give, at a pixel ratio of 1.
constexpr int DefaultRounds = 15;
constexpr int DefaultRadius = 4;
constexpr double DefaultSigma = 1.3;
/// Of the default passes together, at a pixel ratio of 1.
constexpr double TotalSigma = 5.0;

constexpr int FewRounds = 8;
const int ManyRounds[] = {15, 30, 60};
/// The time that more rounds take: no more than fewer, but for what the machine varies.
constexpr double RoundsBudget = 1.1;

constexpr double AnalysisBudget = 0.35;

double processorTime()
{
    constexpr double perMillisecond = CLOCKS_PER_SEC / 1000.0;
    return double(std::clock()) / perMillisecond;
}

template <typename Function>
double timeOf(Function function)
{
    const double start = processorTime();
    function();
    return processorTime() - start;
}

BlurPasses passesOf(const Kind& kind, int rounds = DefaultRounds)
{
    return {rounds, DefaultRadius * kind.ratio, DefaultSigma * kind.ratio};
}

double timeOfBlur(const QImage& picture, const BlurPasses& passes)
{
    QImage copy = picture.copy();
    return timeOf([&] { blurWallpaper(&copy, passes); });
}

double timeOfOpenCv(const QImage& picture, double sigma)
{
    QImage copy = picture.copy();
    const cv::Mat source(
        copy.height(), copy.width(), CV_8UC4, copy.bits(), size_t(copy.bytesPerLine()));
    // Its memory is there before, as is that of a blur in place.
    cv::Mat blurred(source.size(), source.type(), cv::Scalar());
    return timeOf([&] { cv::GaussianBlur(source, blurred, cv::Size(), sigma, sigma); });
}

/// The analysis with Qt's means alone. The sum keeps the compiler from leaving the work out.
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
            addAnalysis(report, kind);
        }
    }

private:
    [[nodiscard]] QImage picture(const Kind& kind) const
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

    /// The peak of a process that makes a wallpaper, less that of one that only copies the picture.
    /// Both make a tiny one first, and so have the same code in memory.
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
                timeOf([&] { analyseImageColors(wallpaper, &average, &dominant); }));
            comparison.base.push_back(timeOf([&] { checksum += analysedByQt(wallpaper); }));
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
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Measures the making of wallpapers."));
    parser.addHelpOption();
    const QCommandLineOption rounds(
        QStringLiteral("rounds"), QStringLiteral("Rounds of which medians are taken."),
        QStringLiteral("N"), QStringLiteral("15"));
    const QCommandLineOption divisor(
        QStringLiteral("divisor"),
        QStringLiteral("Make the pictures' sides this many times shorter."), QStringLiteral("N"),
        QStringLiteral("1"));
    const QCommandLineOption noBudgets(
        QStringLiteral("no-budgets"), QStringLiteral("Succeed also where a budget is not kept."));
    parser.addOptions({rounds, divisor, noBudgets});
    parser.process(application);
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        giveUp("cannot make a temporary folder");
    }
    // Freed pictures go back to the system at once. Kept for later ones, as they are by default,
    // they would hide what a child takes.
    constexpr int largestKept = 128 * 1024;
    mallopt(M_MMAP_THRESHOLD, largestKept);
    // The daemon has one thread for this, too.
    cv::setNumThreads(1);

    const Benchmark benchmark(
        folder.path(), parser.value(rounds).toInt(), parser.value(divisor).toInt());
    Report report;
    benchmark.run(&report);
    report.print(std::cout);
    return report.isWithinBudgets() || parser.isSet(noBudgets) ? EXIT_SUCCESS : EXIT_FAILURE;
}
