// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <QStringList>

// A template as one file to hand on: a zip with NAME.conf and NAME_path.conf and nothing else. Any thread.
class TemplateArchive
{
    Q_DECLARE_TR_FUNCTIONS(TemplateArchive)
public:
    // Reads an archive without unpacking it anywhere. What is not two plain files of a safe name, small
    // enough and readable as this program's settings is refused; problem() then says why, in Chinese, and the
    // rest is empty.
    static TemplateArchive read(const QString& file);
    // The files of a stored template.
    static TemplateArchive ofTemplate(const QString& name);

    const QString& problem() const { return m_problem; }
    const QString& name() const { return m_name; }
    const QByteArray& mainFile() const { return m_main; }
    const QByteArray& pathFile() const { return m_path; }
    // The programs that these settings would start after a scan.
    QStringList programs() const;

    // Writes the archive, whole or not at all; false when the file cannot be written.
    bool write(const QString& file) const;

private:
    void takeEntries(const QList<QPair<QString, QByteArray>>& entries);
    void check();
    TemplateArchive& refuse(const QString& problem);

    QString m_problem;
    QString m_name;
    QByteArray m_main;
    QByteArray m_path;
};
