// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/settingsfile.h"

#include "config/paths.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <cstdio>

namespace {

constexpr qint64 maxBytes = 1024 * 1024;

// Why this existing file cannot be settings; empty when it can.
QString unusableBecause(const QFileInfo& info)
{
    if (!info.isFile())
        return QStringLiteral("it is not a regular file");
    if (info.size() > maxBytes)
        return QStringLiteral("it has %1 bytes").arg(info.size());
    QFile file(info.filePath());
    if (file.open(QIODevice::ReadOnly) && file.read(maxBytes + 1).contains('\0'))
        return QStringLiteral("it holds binary data");
    return {};
}

// A name beside the file that is free; never one that exists.
QString nameForDamaged(const QString& file)
{
    const QString base =
        file + QLatin1String(".damaged-") + QDateTime::currentDateTime().toString("yyyyMMdd-hhmmss");
    QString name = base;
    for (int n = 1; QFileInfo::exists(name); ++n)
        name = base + QLatin1Char('-') + QString::number(n);
    return name;
}

// The file to read and write in place of `file`: itself, or one that does not exist when a damaged file
// cannot be moved out of the way (its folder is read-only then, so writing fails and is reported).
QString usableFile(const QString& file)
{
    const QFileInfo info(file);
    if (!info.exists())
        return file;
    const QString reason = unusableBecause(info);
    if (reason.isEmpty())
        return file;
    const QString aside = nameForDamaged(file);
    const bool moved =
        std::rename(QFile::encodeName(file).constData(), QFile::encodeName(aside).constData()) == 0;
    qWarning().noquote() << "settings file" << file << "is damaged:" << reason << "-"
                         << (moved ? "moved to " + aside : QStringLiteral("and cannot be moved away"));
    return moved ? file : aside;
}

} // namespace

std::unique_ptr<QSettings> openSettings(const QString& file)
{
    auto settings = std::make_unique<QSettings>(usableFile(file), QSettings::IniFormat);
    settings->setIniCodec("UTF-8");
    if (settings->status() == QSettings::AccessError)
        qWarning().noquote() << "cannot read the settings file" << file;
    else if (settings->status() == QSettings::FormatError)
        qWarning().noquote() << "lines of the settings file" << file
                             << "cannot be understood and are ignored";
    return settings;
}

std::unique_ptr<QSettings> openMainSettings()
{
    return openSettings(paths::mainSettings());
}

std::unique_ptr<QSettings> openPathSettings()
{
    return openSettings(paths::pathSettings());
}

bool saveSettings(QSettings& settings)
{
    settings.sync();
    if (settings.status() != QSettings::AccessError)
        return true;
    qWarning().noquote() << "cannot write the settings file" << settings.fileName();
    return false;
}
