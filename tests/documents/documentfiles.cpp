// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/documentfiles.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <opencv2/imgcodecs.hpp>

QStringList DocumentFiles::everything(const QString& folder) const
{
    return QDir(path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

void DocumentFiles::put(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    file.remove(); // some file systems wait for the disk when a file is written anew
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(name));
}

QByteArray DocumentFiles::get(const QString& name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray DocumentFiles::run(const QString& program, const QStringList& arguments) const
{
    QProcess process;
    process.setWorkingDirectory(folder());
    process.start(program, arguments);
    if (!process.waitForFinished(100000) || process.exitStatus() != QProcess::NormalExit)
        return "FAILED: " + process.errorString().toUtf8();
    if (process.exitCode() != 0)
        return "FAILED: " + QByteArray::number(process.exitCode()) + ' ' + process.readAllStandardError();
    return process.readAllStandardOutput();
}

cv::Mat DocumentFiles::picture(const QString& name) const
{
    cv::Mat picture = cv::imread(QFile::encodeName(path(name)).toStdString(), cv::IMREAD_COLOR);
    if (!picture.empty()) {
        cv::Mat swapped(picture.size(), picture.type());
        const int order[] = {0, 2, 1, 1, 2, 0};
        cv::mixChannels(&picture, 1, &swapped, 1, order, 3);
        return swapped;
    }
    return picture;
}

QList<cv::Mat> DocumentFiles::drawn(const QString& prefix) const
{
    const QStringList names = QDir(folder()).entryList({prefix + "-*.p[pn][gm]"}, QDir::Files, QDir::Name);
    QList<cv::Mat> pages;
    for (const QString& name : names) {
        pages.append(picture(name));
        QFile::remove(path(name));
    }
    return pages;
}

QList<cv::Mat> DocumentFiles::drawnPdf(const QString& name, int dpi) const
{
    run("pdftoppm", {"-r", QString::number(dpi), name, "drawn"});
    return drawn("drawn");
}

QList<cv::Mat> DocumentFiles::drawnOfd(const QString& name, int dpi) const
{
    const QByteArray said =
        run("/usr/bin/python3", {qEnvironmentVariable("OFD_RENDER"), name, QString::number(dpi), "drawn"});
    if (!said.isEmpty()) {
        qWarning("%s", said.constData());
        return {};
    }
    return drawn("drawn");
}
