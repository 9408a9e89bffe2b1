// SPDX-License-Identifier: GPL-3.0-or-later
// draw-sheets FOLDER: writes the sample stack as NNN-front.png and NNN-back.png.
#include "sheets.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QImageWriter>
#include <atomic>
#include <cstdio>
#include <thread>

namespace {

bool write(const QImage& picture, const QString& folder, int number, const char* side)
{
    QImageWriter writer(QStringLiteral("%1/%2-%3.png")
                            .arg(folder)
                            .arg(number, 3, 10, QLatin1Char('0'))
                            .arg(QLatin1String(side)));
    writer.setQuality(85); // zlib level 1: noise does not compress any better with more effort
    if (writer.write(picture))
        return true;
    fprintf(stderr, "%s: %s\n", qPrintable(writer.fileName()), qPrintable(writer.errorString()));
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    if (argc != 2) {
        fprintf(stderr, "usage: draw-sheets FOLDER\n");
        return 2;
    }
    if (!QFontDatabase().families().contains(QStringLiteral("Noto Serif CJK SC"))) {
        fprintf(stderr, "the fonts of the package fonts-noto-cjk are missing\n");
        return 1;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const auto sheets = sampleSheets();
    std::atomic<int> next{0};
    std::atomic<bool> good{true};
    const auto work = [&] {
        for (int place = next++; place < int(sheets.size()); place = next++) {
            const Sheet sheet = sheets[place]();
            if (!write(sheet.front, folder, place + 1, "front") ||
                !write(sheet.back, folder, place + 1, "back"))
                good = false;
        }
    };
    std::thread helper(work);
    work();
    helper.join();
    return good ? 0 : 1;
}
