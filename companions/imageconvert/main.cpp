// SPDX-License-Identifier: GPL-3.0-or-later
// imageconvert: the operations of the image library over files; see docs/man/imageconvert.1.
#include "arguments.h"
#include "batch.h"
#include "stopsignal.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTextCodec>
#include <cstdio>
#include <opencv2/core/utility.hpp>

using namespace companion;

namespace {

constexpr int kWrongUse = 2;
int wrongUse(const QString& message)
{
    std::fprintf(stderr, "imageconvert: %s\n", qPrintable(message));
    return kWrongUse;
}

bool openReport(QFile& report)
{
    if (report.fileName() == QLatin1String("-"))
        return report.open(stdout, QIODevice::WriteOnly);
    return report.open(QIODevice::WriteOnly | QIODevice::Truncate);
}

} // namespace

int main(int argc, char* argv[])
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("utf-8"));
    const QCoreApplication application(argc, argv);
    QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, false);
    handleSignals();
    cv::setNumThreads(1); // the workers are the threads

    const Arguments arguments(QCoreApplication::arguments());
    const Request& request = arguments.request();
    if (request.help) {
        std::fputs(qPrintable(Arguments::help()), stdout);
        return 0;
    }
    if (!arguments.error().isEmpty())
        return wrongUse(arguments.error() + QStringLiteral("\n") +
                        QCoreApplication::translate("main", "用 imageconvert --help 查看用法"));
    if (!QDir().mkpath(request.outFolder) || !QFileInfo(request.outFolder).isWritable())
        return wrongUse(QCoreApplication::translate("main", "输出文件夹 %1 无法写入").arg(request.outFolder));
    if (reportHitsInput(request))
        return wrongUse(
            QCoreApplication::translate("main", "报告 %1 会覆盖输入文件").arg(request.reportFile));
    QFile report(request.reportFile);
    if (!request.reportFile.isEmpty() && !openReport(report))
        return wrongUse(QCoreApplication::translate("main", "报告 %1 无法写入：%2")
                            .arg(request.reportFile, report.errorString()));
    return Batch(request, report.isOpen() ? &report : nullptr, stopped).run();
}
