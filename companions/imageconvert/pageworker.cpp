// SPDX-License-Identifier: GPL-3.0-or-later
#include "pageworker.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

namespace companion {

// Runs one step and takes its time. False, with the reason in the report, when the library could not do it.
bool PageWorker::run(const char* name, PageReport& report, const std::function<void()>& work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    report.times.push_back({QString::fromLatin1(name), static_cast<double>(timer.nsecsElapsed()) / 1e6});
    report.error = m_library.lastError();
    return !report.failed();
}

ImageHandle PageWorker::load(const PlannedPage& page, PageReport& report)
{
    MagickWand* wand = nullptr;
    const QByteArray first = QFile::encodeName(page.file), second = QFile::encodeName(page.second);
    if (m_request.append)
        run("append", report, [&] {
            wand = m_library.imageAppend(nullptr, first.constData(), second.constData(), *m_request.append);
        });
    else
        run("read", report, [&] { wand = m_library.getImage(first.constData()); });
    if (wand && m_request.dpi > 0)
        m_library.setSourceDpi(wand, m_request.dpi);
    return ImageHandle(m_library, wand);
}

void PageWorker::edit(ImageHandle& image, PageReport& report)
{
    PageWork work{m_library, image, report, m_scratch};
    for (const Operation& operation : m_request.operations) {
        const bool good =
            run(operation.kind->name, report, [&] { operation.kind->run(work, operation.values); });
        if (!good || report.blank.value_or(false))
            break;
    }
    report.measures = m_library.measures(image.get());
}

void PageWorker::write(ImageHandle& image, const QString& path, PageReport& report)
{
    const QFileInfo file(path);
    const QString folder = file.path() + QLatin1Char('/');
    const QByteArray name = QFile::encodeName(file.completeBaseName()), type = m_request.type.toLatin1();
    const bool good = run("write", report, [&] {
        if (m_request.quality > 0)
            m_library.imageCompress(image.get(), QStringLiteral("jpg"), QString::number(m_request.quality));
        m_library.saveImage(image.get(), folder, name.constData(), type.constData(), 0);
    });
    if (!good)
        return;
    report.out = path;
    report.width = m_library.width(image.get());
    report.height = m_library.height(image.get());
}

// The library splits page files.
std::vector<PageReport> PageWorker::writePieces(ImageHandle& image, const PlannedPage& page,
                                                PageReport& report)
{
    const QString folder = m_scratch.path() + QLatin1Char('/'), whole = folder + QStringLiteral("whole.bmp");
    const double dpi = m_library.workingDpi(image.get());
    int count = 0;
    const auto cut = [&] {
        if (m_library.saveImage(image.get(), folder, "whole", "bmp", dpi))
            count = m_library.imageCrop(QFile::encodeName(whole).constData(),
                                        QFile::encodeName(folder).constData(), m_request.split->count,
                                        m_request.split->direction);
    };
    const bool good = run("split", report, cut);
    image.reset(nullptr);
    QFile::remove(whole);
    const QStringList outputs = outputFiles(m_request, page.name);
    if (good && count != outputs.size())
        report.error = QStringLiteral("the picture is too small for %1 pieces").arg(outputs.size());
    if (report.failed())
        return {report};

    std::vector<PageReport> reports;
    const QStringList pieces = QDir(folder).entryList({QStringLiteral("crop*.bmp")}, QDir::Files, QDir::Name);
    for (int i = 0; i < outputs.size(); ++i) {
        PageReport part = report;
        if (i > 0)
            part.times.clear();
        const QByteArray piece = QFile::encodeName(folder + pieces.value(i));
        ImageHandle cutting(m_library, m_library.getImage(piece.constData()));
        part.error = m_library.lastError();
        if (cutting) {
            m_library.setSourceDpi(cutting.get(), dpi);
            write(cutting, outputs[i], part);
        }
        reports.push_back(part);
        QFile::remove(folder + pieces.value(i));
    }
    return reports;
}

std::vector<PageReport> PageWorker::process(const PlannedPage& page)
{
    PageReport report;
    report.file = page.file;
    ImageHandle image = load(page, report);
    if (!report.failed())
        edit(image, report);
    if (report.failed() || report.blank.value_or(false)) {
        report.width = m_library.width(image.get());
        report.height = m_library.height(image.get());
        return {report};
    }
    if (m_request.split)
        return writePieces(image, page, report);
    write(image, outputFiles(m_request, page.name).constFirst(), report);
    return {report};
}

} // namespace companion
