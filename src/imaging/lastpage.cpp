// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/lastpage.h"

#include "config/paths.h"

#include <QDebug>
#include <QFile>
#include <QSaveFile>
#include <opencv2/imgcodecs.hpp>
#include <vector>

bool keepLastPage(const QString& pageFile)
{
    QSaveFile file(paths::tempFolder() + QStringLiteral("lastPage.ppm"));
    try {
        const cv::Mat page =
            cv::imread(QFile::encodeName(pageFile).toStdString(), cv::IMREAD_REDUCED_COLOR_4);
        std::vector<uchar> bytes;
        if (page.empty() || !cv::imencode(".ppm", page, bytes))
            return false;
        if (file.open(QIODevice::WriteOnly)) {
            file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
            if (file.flush() && file.commit()) // commit alone would miss a disk that has just got full
                return true;
        }
        qWarning().noquote() << "cannot write" << file.fileName() << file.errorString();
    } catch (const cv::Exception& error) {
        qWarning() << "no reduced copy of the page:" << error.what();
    }
    return false;
}
