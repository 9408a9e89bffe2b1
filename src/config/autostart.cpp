// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/autostart.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>
#include <QStandardPaths>

namespace autostart {

namespace {

// A value of a desktop entry.
QString escaped(QString value)
{
    return value.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
}

// One argument of "Exec=": in double quotes, with what is special inside them and the field codes escaped.
QString execArgument(const QString& argument)
{
    QString quoted;
    for (const QChar c : argument) {
        if (QStringLiteral("\"`$\\").contains(c))
            quoted += QLatin1Char('\\');
        quoted += c == QLatin1Char('%') ? QStringLiteral("%%") : QString(c);
    }
    return QLatin1Char('"') + quoted + QLatin1Char('"');
}

// "TryExec": an entry that outlives the program is passed over.
QByteArray entry(const QString& program)
{
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Document Scanning QWD200\n"
                          "Name[zh_CN]=文档扫描 QWD200\n"
                          "TryExec=%1\n"
                          "Exec=%2\n"
                          "Icon=cn.zarn.qwd200\n"
                          "Terminal=false\n")
        .arg(escaped(program), escaped(execArgument(program)))
        .toUtf8();
}

} // namespace

QString file()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QLatin1String("/autostart/cn.zarn.qwd200.desktop");
}

bool isOn()
{
    return QFileInfo::exists(file()) &&
           !QSettings(file(), QSettings::IniFormat).value(QStringLiteral("Desktop Entry/Hidden")).toBool();
}

bool set(bool on, const QString& program)
{
    if (on == isOn())
        return true;
    if (!on)
        return QFile::remove(file());
    QSaveFile target(file());
    const QByteArray content = entry(program);
    return QDir().mkpath(QFileInfo(file()).path()) && target.open(QIODevice::WriteOnly) &&
           target.write(content) == content.size() && target.flush() && target.commit();
}

} // namespace autostart
