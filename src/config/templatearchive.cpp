// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/templatearchive.h"

#include "config/keys.h"
#include "config/settingsfile.h"
#include "config/templates.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <zip.h>

namespace {

constexpr qint64 maxArchiveBytes = 4 << 20;
constexpr zip_uint64_t maxFileBytes = 1 << 20; // as openSettings() takes it
const QLatin1String mainEnd(".conf");
const QLatin1String pathEnd("_path.conf");

struct CloseArchive
{
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, CloseArchive>;

struct CloseEntry
{
    void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

bool isPlainFile(zip_t* archive, zip_uint64_t index, const zip_stat_t& entry)
{
    constexpr zip_uint64_t wanted = ZIP_STAT_NAME | ZIP_STAT_SIZE;
    if ((entry.valid & wanted) != wanted)
        return false;
    if ((entry.valid & ZIP_STAT_ENCRYPTION_METHOD) && entry.encryption_method != ZIP_EM_NONE)
        return false;
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    zip_file_get_external_attributes(archive, index, 0, &system, &attributes);
    const mode_t mode = system == ZIP_OPSYS_UNIX ? attributes >> 16 : 0;
    return (mode & S_IFMT) == 0 || S_ISREG(mode);
}

// Reads as many bytes as were announced, and not one more.
std::optional<QByteArray> content(zip_t* archive, zip_uint64_t index, zip_uint64_t size)
{
    const std::unique_ptr<zip_file_t, CloseEntry> entry(zip_fopen_index(archive, index, 0));
    QByteArray bytes(int(size) + 1, '\0');
    if (!entry || zip_fread(entry.get(), bytes.data(), size + 1) != zip_int64_t(size))
        return std::nullopt;
    bytes.chop(1);
    return bytes;
}

bool isOurs(const QString& mainFile, const QString& pathFile)
{
    const QSettings main(mainFile, QSettings::IniFormat);
    const QSettings path(pathFile, QSettings::IniFormat);
    return (main.contains(QLatin1String(keys::ScanModel)) ||
            main.childGroups().contains(QLatin1String(groups::scanScan))) &&
           !path.childGroups().filter(QStringLiteral("_FilePath")).isEmpty();
}

// Puts both files where QSettings can read them.
bool unpack(const QTemporaryDir& folder, const QByteArray& main, const QByteArray& path)
{
    for (const auto& [name, bytes] : {std::pair{"main", &main}, std::pair{"path", &path}}) {
        QFile file(folder.filePath(QLatin1String(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(*bytes) != bytes->size() || !file.flush())
            return false;
    }
    return true;
}

} // namespace

TemplateArchive& TemplateArchive::refuse(const QString& problem)
{
    qWarning().noquote() << "template archive refused:" << problem;
    *this = TemplateArchive();
    m_problem = problem;
    return *this;
}

TemplateArchive TemplateArchive::read(const QString& file)
{
    TemplateArchive result;
    const QFileInfo info(file);
    if (!info.isFile() || !info.isReadable())
        return result.refuse(tr("文件不存在或无法读取"));
    if (info.size() > maxArchiveBytes)
        return result.refuse(tr("文件太大，不是模板文件"));
    int error = 0;
    const Archive archive(zip_open(QFile::encodeName(file).constData(), ZIP_RDONLY | ZIP_CHECKCONS, &error));
    if (!archive || zip_get_num_entries(archive.get(), 0) != 2)
        return result.refuse(tr("文件已损坏，或不是模板文件"));
    QList<QPair<QString, QByteArray>> entries;
    for (zip_uint64_t i = 0; i < 2; ++i) {
        zip_stat_t entry;
        zip_stat_init(&entry);
        if (zip_stat_index(archive.get(), i, 0, &entry) != 0 || !isPlainFile(archive.get(), i, entry))
            return result.refuse(tr("文件已损坏，或不是模板文件"));
        if (entry.size > maxFileBytes)
            return result.refuse(tr("其中的设置文件太大"));
        const auto bytes = content(archive.get(), i, entry.size);
        if (!bytes)
            return result.refuse(tr("文件已损坏，无法解压"));
        entries.append({QString::fromUtf8(entry.name), *bytes});
    }
    result.takeEntries(entries);
    if (result.m_problem.isEmpty())
        result.check();
    return result;
}

// Of the two names one is the other's with "_path" before the end.
void TemplateArchive::takeEntries(const QList<QPair<QString, QByteArray>>& entries)
{
    for (int i = 0; i < 2; ++i) {
        const auto& [mainName, main] = entries[i];
        const auto& [pathName, path] = entries[1 - i];
        const QString base = mainName.endsWith(mainEnd) ? mainName.chopped(mainEnd.size()) : QString();
        if (!isSafeTemplateName(base) || pathName != base + pathEnd)
            continue;
        m_name = base;
        m_main = main;
        m_path = path;
        return;
    }
    refuse(tr("其中的文件名不是模板的文件名"));
}

void TemplateArchive::check()
{
    const QTemporaryDir folder;
    if (!unpack(folder, m_main, m_path)) {
        refuse(tr("临时文件无法写入，请检查磁盘空间"));
        return;
    }
    const QString main = folder.filePath(QStringLiteral("main"));
    const QString path = folder.filePath(QStringLiteral("path"));
    for (const QString& file : {main, path}) {
        const QString fault = settingsFault(file);
        if (fault.isEmpty())
            continue;
        qWarning().noquote() << "a settings file of the archive:" << fault;
        refuse(tr("其中的设置文件已损坏"));
        return;
    }
    if (!isOurs(main, path))
        refuse(tr("其中的设置文件不属于本程序"));
}

TemplateArchive TemplateArchive::ofTemplate(const QString& name)
{
    TemplateArchive result;
    result.m_name = name;
    for (const auto& [file, bytes] : {std::pair{templateMainFile(name), &result.m_main},
                                      std::pair{templatePathFile(name), &result.m_path}}) {
        QFile source(file);
        if (!isSafeTemplateName(name) || !settingsFault(file).isEmpty() || !source.open(QIODevice::ReadOnly))
            return result.refuse(tr("模板的文件不存在或已损坏"));
        *bytes = source.readAll();
    }
    return result;
}

QStringList TemplateArchive::programs() const
{
    const QTemporaryDir folder;
    if (m_main.isEmpty() || !unpack(folder, m_main, m_path))
        return {};
    QSettings settings(folder.filePath(QStringLiteral("main")), QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    QStringList programs;
    for (const QString& key : settings.allKeys()) {
        if (!key.contains(QLatin1String("_exec/")) &&
            !key.endsWith(QLatin1Char('/') + QLatin1String(keys::appName)))
            continue;
        const QVariant value = settings.value(key);
        programs << (value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(','))
                                                          : value.toString());
    }
    programs.removeAll(QString());
    programs.removeDuplicates();
    return programs;
}

bool TemplateArchive::write(const QString& file) const
{
    int error = 0;
    Archive archive(zip_open(QFile::encodeName(file).constData(), ZIP_CREATE | ZIP_TRUNCATE, &error));
    if (!archive || m_name.isEmpty())
        return false;
    for (const auto& [end, bytes] : {std::pair{mainEnd, &m_main}, std::pair{pathEnd, &m_path}}) {
        zip_source_t* source =
            zip_source_buffer(archive.get(), bytes->constData(), zip_uint64_t(bytes->size()), 0);
        const QByteArray name = (m_name + end).toUtf8();
        if (source && zip_file_add(archive.get(), name.constData(), source, ZIP_FL_ENC_UTF_8) >= 0)
            continue;
        zip_source_free(source);
        return false;
    }
    if (zip_close(archive.get()) == 0) { // under a temporary name, then renamed
        archive.release();
        return true;
    }
    qWarning().noquote() << "cannot write" << file << zip_strerror(archive.get());
    return false;
}
