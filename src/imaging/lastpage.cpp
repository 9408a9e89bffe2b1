// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/lastpage.h"

#include "config/paths.h"

#include <QDebug>
#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace {

constexpr int kReduction = SamplePage::kReduction;
constexpr char kPlaceMark[] = "# place "; // a comment in the detail's header

constexpr char kPageName[] = "lastPage.ppm";
constexpr char kDetailName[] = "lastDetail.ppm";

// Where the page has the most strokes and edges.
cv::Rect busiestPlace(const cv::Mat& page, const cv::Mat& reduced)
{
    const cv::Size size(std::min(kDetailSize.width(), page.cols), std::min(kDetailSize.height(), page.rows));
    cv::Mat grey, edges, density;
    cv::cvtColor(reduced, grey, cv::COLOR_BGR2GRAY);
    cv::Laplacian(grey, edges, CV_32F);
    const cv::Size window(std::clamp(size.width / kReduction, 1, reduced.cols),
                          std::clamp(size.height / kReduction, 1, reduced.rows));
    cv::boxFilter(cv::abs(edges), density, CV_32F, window, {0, 0}); // anchored top left
    const cv::Rect inside(0, 0, reduced.cols - window.width + 1, reduced.rows - window.height + 1);
    cv::Point best;
    cv::minMaxLoc(density(inside), nullptr, nullptr, nullptr, &best);
    return {std::min(best.x * kReduction, page.cols - size.width),
            std::min(best.y * kReduction, page.rows - size.height), size.width, size.height};
}

bool writePpm(const QString& path, const cv::Mat& pixels, const QByteArray& comment = {})
{
    std::vector<uchar> bytes;
    if (pixels.empty() || !cv::imencode(".ppm", pixels, bytes))
        return false;
    constexpr int magic = 3; // "P6" and its end of line
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        const auto* data = reinterpret_cast<const char*>(bytes.data());
        file.write(data, magic);
        file.write(comment);
        file.write(data + magic, static_cast<qint64>(bytes.size()) - magic);
        if (file.flush() && file.commit()) // commit alone would miss a disk that has just got full
            return true;
    }
    qWarning().noquote() << "cannot write" << path << file.errorString();
    return false;
}

} // namespace

bool makeSample(const QString& pageFile, double dpi, const QString& folder)
{
    try {
        const cv::Mat page = cv::imread(QFile::encodeName(pageFile).toStdString(), cv::IMREAD_COLOR);
        if (page.empty())
            return false;
        cv::Mat reduced;
        cv::resize(page, reduced, {std::max(1, page.cols / kReduction), std::max(1, page.rows / kReduction)},
                   0, 0, cv::INTER_AREA);
        const cv::Rect place = busiestPlace(page, reduced);
        QByteArray mark = kPlaceMark;
        for (const int number : {place.x, place.y, page.cols, page.rows, qRound(dpi)})
            mark += QByteArray::number(number) + ' ';
        mark.back() = '\n';
        return writePpm(folder + QLatin1String(kPageName), reduced) &&
               writePpm(folder + QLatin1String(kDetailName), page(place), mark);
    } catch (const cv::Exception& error) {
        qWarning() << "no sample of the page:" << error.what();
    }
    return false;
}

SamplePage readSample(const QString& folder)
{
    SamplePage sample;
    const QString page = folder + QLatin1String(kPageName);
    QFile file(folder + QLatin1String(kDetailName));
    if (!QFile::exists(page) || !file.open(QIODevice::ReadOnly))
        return sample;
    constexpr qint64 longestLine = 100;
    file.readLine(longestLine);
    const QByteArray line = file.readLine(longestLine);
    const QList<QByteArray> numbers = line.mid(int(qstrlen(kPlaceMark))).trimmed().split(' ');
    if (!line.startsWith(kPlaceMark) || numbers.size() != 5)
        return sample;
    sample.page = page;
    sample.detail = file.fileName();
    sample.size = {numbers[2].toInt(), numbers[3].toInt()};
    sample.place =
        QRect(QPoint(numbers[0].toInt(), numbers[1].toInt()), kDetailSize) & QRect(QPoint(0, 0), sample.size);
    sample.dpi = numbers[4].toDouble();
    return sample;
}

bool keepLastPage(const QString& pageFile, double dpi)
{
    return makeSample(pageFile, dpi, paths::tempFolder());
}

SamplePage lastPage()
{
    return readSample(paths::tempFolder());
}
