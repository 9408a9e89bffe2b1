// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/templates.h"

#include "config/paths.h"
#include "config/settingsfile.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStorageInfo>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/wait.h>
#include <unistd.h>

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

// A second name for a file while commands replace it, so that a copy that fails loses nothing.
class KeptFile
{
public:
    explicit KeptFile(const QString& file)
        : m_file(QFile::encodeName(file)), m_second(QFile::encodeName(file + QLatin1String(".kept")))
    {
        ::unlink(m_second.constData());
        m_kept = ::link(m_file.constData(), m_second.constData()) == 0;
    }
    ~KeptFile()
    {
        if (m_kept)
            ::unlink(m_second.constData());
    }
    KeptFile(const KeptFile&) = delete;
    KeptFile& operator=(const KeptFile&) = delete;

    void putBack()
    {
        if (m_kept && std::rename(m_second.constData(), m_file.constData()) == 0)
            m_kept = false;
    }

private:
    QByteArray m_file;
    QByteArray m_second;
    bool m_kept = false;
};

// Removes `to` and copies `from` there, both files of a pair in this order. When a copy of files that are
// there fails, both targets are what they were before.
bool replacePair(const QStringList& from, const QStringList& to)
{
    KeptFile firstKept(to[0]);
    KeptFile secondKept(to[1]);
    const bool complete = isReadableFile(from[0]) && isReadableFile(from[1]);
    bool good = removeFile(to[0]);
    good = removeFile(to[1]) && good;
    good = copyFile(from[0], to[0]) && good;
    good = copyFile(from[1], to[1]) && good;
    if (!good && complete) {
        firstKept.putBack();
        secondKept.putBack();
    }
    return good;
}

QStringList livePair()
{
    return {paths::mainSettings(), paths::pathSettings()};
}

QStringList templatePair(const QString& name)
{
    return {templateMainFile(name), templatePathFile(name)};
}

bool writeWhole(const QString& path, const QByteArray& content)
{
    QSaveFile file(path);
    const bool good = file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
                      file.flush() && file.commit();
    if (!good)
        qWarning().noquote() << "cannot write" << path << file.errorString();
    return good;
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

QString templateMainFile(const QString& name)
{
    return paths::templateFolder() + name + QLatin1String(".conf");
}

QString templatePathFile(const QString& name)
{
    return paths::templateFolder() + name + QLatin1String("_path.conf");
}

TemplateState templateState(const QString& name)
{
    if (!isSafeTemplateName(name))
        return TemplateState::Missing;
    for (const QString& file : templatePair(name)) {
        if (!isReadableFile(file))
            return TemplateState::Missing;
    }
    for (const QString& file : templatePair(name)) {
        const QString fault = settingsFault(file);
        if (fault.isEmpty())
            continue;
        qWarning().noquote() << "template file" << file << "is damaged:" << fault;
        return TemplateState::Damaged;
    }
    return TemplateState::Good;
}

bool templateComplete(const QString& name)
{
    return isSafeTemplateName(name) && isReadableFile(templateMainFile(name)) &&
           isReadableFile(templatePathFile(name));
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
    return replacePair(livePair(), templatePair(name));
}

bool loadTemplate(const QString& name)
{
    return checkedName(name, "load") && replacePair(templatePair(name), livePair());
}

bool putTemplate(const QString& name, const QByteArray& main, const QByteArray& path)
{
    return checkedName(name, "put") && QDir().mkpath(paths::templateFolder()) &&
           writeWhole(templateMainFile(name), main) && writeWhole(templatePathFile(name), path);
}

bool removeTemplate(const QString& name)
{
    if (!checkedName(name, "remove"))
        return false;
    if (name == QLatin1String(defaultTemplate)) {
        qWarning() << "the default template is not removed";
        return false;
    }
    const bool good = removeFile(templateMainFile(name));
    return removeFile(templatePathFile(name)) && good;
}
