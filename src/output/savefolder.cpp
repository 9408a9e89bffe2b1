// SPDX-License-Identifier: GPL-3.0-or-later
#include "output/savefolder.h"

#include "config/installroot.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace {

class SaveFolderText
{
    Q_DECLARE_TR_FUNCTIONS(SaveFolder)
public:
    static QString reason(int error)
    {
        switch (error) {
        case EACCES:
        case EPERM:
            return tr("没有写入权限");
        case EROFS:
            return tr("文件系统为只读");
        case ENOSPC:
        case EDQUOT:
            return tr("磁盘空间不足");
        case ENOTDIR:
        case EEXIST:
        case EISDIR:
            return tr("路径中有同名文件");
        case ENAMETOOLONG:
            return tr("路径过长");
        default:
            return tr("系统错误 %1").arg(error);
        }
    }
    static QString cannotCreate(const QString& folder, int error)
    {
        return tr("无法创建保存文件夹“%1”：%2").arg(folder, reason(error));
    }
    static QString notWritable(const QString& folder, int error)
    {
        return tr("保存文件夹“%1”无法写入：%2").arg(folder, reason(error));
    }
    static QString notAbsolute(const QString& folder) { return tr("保存文件夹“%1”不是完整路径").arg(folder); }
};

constexpr qint64 leastFreeBytes = 1024 * 1024;

// What hinders writing into `folder`, creating it if need be; empty when nothing does.
QString problemOf(const QString& folder)
{
    if (!QDir::isAbsolutePath(folder))
        return SaveFolderText::notAbsolute(folder);
    const QByteArray path = QFile::encodeName(folder);
    std::error_code failure;
    std::filesystem::create_directories(path.constData(), failure);
    const bool isFolder = QFileInfo(folder).isDir();
    if (!isFolder)
        return SaveFolderText::cannotCreate(folder, failure ? failure.value() : ENOTDIR);
    if (::access(path.constData(), W_OK | X_OK) != 0)
        return SaveFolderText::notWritable(folder, errno);
    const QStorageInfo disk(folder);
    if (disk.isValid() && disk.bytesAvailable() >= 0 && disk.bytesAvailable() < leastFreeBytes)
        return SaveFolderText::notWritable(folder, ENOSPC);
    return {};
}

} // namespace

QString writeProblem(int error)
{
    return SaveFolderText::reason(error);
}

SaveFolder prepareSaveFolder(const QString& folder)
{
    SaveFolder result;
    result.path = QDir::cleanPath(folder.isEmpty() ? defaultSaveFolder() : folder);
    result.problem = problemOf(result.path);
    if (!result.good())
        qWarning().noquote() << "save folder" << result.path << "cannot be used:" << result.problem;
    return result;
}

QString storedSaveFolder(const QString& pathGroup)
{
    const auto settings = openPathSettings();
    const GroupScope scope(*settings, pathGroup);
    return readText(*settings, keys::savepath);
}
