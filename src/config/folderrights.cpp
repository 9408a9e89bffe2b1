// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/folderrights.h"

#include "config/installroot.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString userName()
{
    const passwd* user = getpwuid(getuid()); // the environment may name another
    return user ? QString::fromLocal8Bit(user->pw_name) : QString::number(getuid());
}

} // namespace

QString folderRightsProblem()
{
    const QFileInfo root(installRoot());
    if (!root.isDir() || root.isWritable())
        return {};
    QString text = QCoreApplication::translate("FolderRights", "您没有写入 %1 的权限，无法扫描和保存设置。")
                       .arg(root.absoluteFilePath());
    // A group of its own shares the folder with its members; the superuser's does not.
    if (root.groupId() != 0 && root.permission(QFile::WriteGroup))
        text +=
            QCoreApplication::translate("FolderRights", "请管理员执行 sudo usermod -aG %1 %2，然后重新登录。")
                .arg(root.group(), userName());
    else
        text += QCoreApplication::translate("FolderRights", "请联系管理员。");
    return text;
}

void shareNewFiles()
{
    struct stat root = {};
    if (stat(QFile::encodeName(installRoot()).constData(), &root) == 0 && (root.st_mode & S_ISGID) != 0)
        umask(002);
}
