// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/settingsfile.h"

#include "config/paths.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

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

// A second name for the file as it is before a write. QSettings of Qt 5.15 does not notice a disk that gets
// full in the last block: it renames the cut file into place and reports success.
class FormerFile
{
public:
    explicit FormerFile(const QString& file)
        : m_file(QFile::encodeName(file)), m_former(QFile::encodeName(file + QLatin1String(".former")))
    {
        ::unlink(m_former.constData());
        m_kept = ::link(m_file.constData(), m_former.constData()) == 0;
        m_absent = !m_kept && errno == ENOENT;
    }
    ~FormerFile()
    {
        if (m_kept)
            ::unlink(m_former.constData());
    }
    FormerFile(const FormerFile&) = delete;
    FormerFile& operator=(const FormerFile&) = delete;

    // Whether another file has taken its place since.
    bool isReplaced() const
    {
        struct stat now = {};
        struct stat before = {};
        if (::stat(m_file.constData(), &now) != 0)
            return false;
        return m_absent ||
               (m_kept && ::stat(m_former.constData(), &before) == 0 && now.st_ino != before.st_ino);
    }

    // Puts it back; where there was no file before, none stays.
    void restore() const
    {
        if (m_kept)
            std::rename(m_former.constData(), m_file.constData());
        else if (m_absent)
            ::unlink(m_file.constData());
    }

private:
    QByteArray m_file;
    QByteArray m_former;
    bool m_kept = false;
    bool m_absent = false;
};

// Whether the file has a whole line for every key of its settings, which this process knows.
bool isComplete(const QString& file)
{
    QFile written(file);
    if (!written.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = written.readAll();
    int keys = 0;
    for (const QByteArray& line : content.split('\n')) {
        if (!line.isEmpty() && !line.startsWith('[') && !line.startsWith(';') && line.contains('='))
            ++keys;
    }
    QSettings known(file, QSettings::IniFormat);
    known.setIniCodec("UTF-8");
    return (content.isEmpty() || content.endsWith('\n')) && keys >= known.allKeys().size();
}

} // namespace

QString settingsFault(const QString& file)
{
    const QFileInfo info(file);
    if (!info.exists())
        return QStringLiteral("it does not exist");
    if (!info.isReadable())
        return QStringLiteral("it cannot be read");
    const QString reason = unusableBecause(info);
    if (!reason.isEmpty())
        return reason;
    if (info.size() == 0)
        return QStringLiteral("it is empty");
    const QSettings settings(file, QSettings::IniFormat);
    const bool readable = !settings.allKeys().isEmpty(); // this parses the lines
    return readable && settings.status() == QSettings::NoError ? QString()
                                                               : QStringLiteral("it is not an INI file");
}

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
    const QString file = settings.fileName();
    const FormerFile former(file);
    settings.sync();
    const bool cut = former.isReplaced() && !isComplete(file);
    if (cut)
        former.restore();
    if (!cut && settings.status() != QSettings::AccessError)
        return true;
    qWarning().noquote() << "cannot write the settings file" << file;
    return false;
}
