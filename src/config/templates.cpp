// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/templates.h"

#include "config/paths.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/wait.h>

namespace {

constexpr int maxNameLength = 64;
constexpr int maxNameBytes = 240; // leaves room for "_path.conf" in a file name

bool isPlainAscii(uint c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           (c != 0 && c < 128 && std::strchr("_-.+=@%,:", int(c)) != nullptr);
}

bool isPlain(uint c)
{
    return c < 128 ? isPlainAscii(c)
                   : QChar::isPrint(c) && !QChar::isSpace(c) && c != QChar::ReplacementCharacter;
}

QString mainFile(const QString& name)
{
    return paths::templateFolder() + name + QLatin1String(".conf");
}

QString pathFile(const QString& name)
{
    return paths::templateFolder() + name + QLatin1String("_path.conf");
}

// A path as a shell word: as it stands, quoted only where the install root needs it.
QString word(const QString& path)
{
    const auto codes = path.toUcs4();
    const bool plain = std::all_of(codes.begin(), codes.end(), [](uint c) { return c == '/' || isPlain(c); });
    if (plain)
        return path;
    return QLatin1Char('\'') + QString(path).replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

bool run(const QString& command)
{
    if (command.isEmpty())
        return true;
    const int status = std::system(QFile::encodeName(command).constData());
    if (status != -1 && WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return true;
    qWarning().noquote() << "failed:" << command;
    return false;
}

bool removeFile(const QString& path)
{
    return run(QLatin1String("rm -rf ") + word(path));
}

bool copyFile(const QString& from, const QString& to)
{
    return run(QLatin1String("cp -ap ") + word(from) + QLatin1Char(' ') + word(to));
}

bool checkedName(const QString& name, const char* action)
{
    if (isSafeTemplateName(name))
        return true;
    qWarning() << "refusing to" << action << "a template of the name" << name;
    return false;
}

bool isReadableFile(const QString& path)
{
    const QFileInfo info(path);
    return info.isFile() && info.isReadable();
}

// The former template is removed before the new one is copied: not when the copy is bound to fail.
bool hasRoom(const QString& folder)
{
    const QStorageInfo disk(folder);
    const qint64 needed = QFileInfo(paths::mainSettings()).size() + QFileInfo(paths::pathSettings()).size();
    return !disk.isValid() || disk.bytesAvailable() < 0 || disk.bytesAvailable() > needed + 16 * 1024;
}

} // namespace

bool isSafeTemplateName(const QString& name)
{
    const auto codes = name.toUcs4();
    // what the locale cannot express would come to the shell as "?", which stands for any character
    if (QFile::decodeName(QFile::encodeName(name)) != name)
        return false;
    return !codes.isEmpty() && codes.size() <= maxNameLength && name.toUtf8().size() <= maxNameBytes &&
           codes.first() != '.' && std::all_of(codes.begin(), codes.end(), isPlain);
}

QStringList templateNames()
{
    const QStringList files =
        QDir(paths::templateFolder()).entryList({"*_path.conf"}, QDir::Files | QDir::NoSymLinks);
    QStringList names;
    for (const QString& file : files)
        names += file.split(QLatin1Char('_'), Qt::SkipEmptyParts).first();
    return names;
}

bool templateComplete(const QString& name)
{
    return isSafeTemplateName(name) && isReadableFile(mainFile(name)) && isReadableFile(pathFile(name));
}

bool storeTemplate(const QString& name)
{
    if (!checkedName(name, "store"))
        return false;
    for (const QString& live : {paths::mainSettings(), paths::pathSettings()}) {
        if (!isReadableFile(live)) {
            qWarning().noquote() << "cannot make a template:" << live << "cannot be read";
            return false;
        }
    }
    if (!QDir().mkpath(paths::templateFolder())) {
        qWarning().noquote() << "cannot make the folder" << paths::templateFolder();
        return false;
    }
    if (!hasRoom(paths::templateFolder())) {
        qWarning().noquote() << "cannot make a template: the disk of" << paths::templateFolder() << "is full";
        return false;
    }
    bool good = removeFile(mainFile(name));
    good = removeFile(pathFile(name)) && good;
    good = copyFile(paths::mainSettings(), mainFile(name)) && good;
    return copyFile(paths::pathSettings(), pathFile(name)) && good;
}

bool loadTemplate(const QString& name)
{
    if (!checkedName(name, "load"))
        return false;
    bool good = removeFile(paths::mainSettings());
    good = removeFile(paths::pathSettings()) && good;
    good = copyFile(mainFile(name), paths::mainSettings()) && good;
    return copyFile(pathFile(name), paths::pathSettings()) && good;
}

bool removeTemplate(const QString& name)
{
    if (!checkedName(name, "remove"))
        return false;
    if (name == QLatin1String(defaultTemplate)) {
        qWarning() << "the default template is not removed";
        return false;
    }
    const bool good = removeFile(mainFile(name));
    return removeFile(pathFile(name)) && good;
}
