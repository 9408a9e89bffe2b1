// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "config/installroot.h"
#include "config/paths.h"

#include <QDir>
#include <QFile>
#include <QString>
#include <functional>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

// An empty install root with its folders, and no save folder.
inline bool freshRoot()
{
    QDir(installRoot()).removeRecursively();
    QDir(defaultSaveFolder()).removeRecursively();
    return QDir().mkpath(installRoot()) && paths::ensureFolders();
}

inline bool putFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

inline QByteArray fileContent(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Runs `body` in a child that has no rights of root and returns its result (0 to 99), or -1 when the child
// died.
inline int asOrdinaryUser(const std::function<int()>& body)
{
    const pid_t child = fork();
    if (child == 0) {
        constexpr unsigned nobody = 65534;
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(100);
        _exit(body());
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

// Whether that user can see the install root at all (a build folder below /root cannot be entered).
inline bool ordinaryUserSeesRoot()
{
    return asOrdinaryUser([] { return QFile::exists(paths::tempFolder()) ? 0 : 1; }) == 0;
}
