// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

// The number of files that a process has open.
inline int openDescriptors(qint64 process)
{
    return QDir(QString("/proc/%1/fd").arg(process)).entryList(QDir::Files | QDir::System).size();
}

// A virtual scanner of its own for a test, with VSCAN_SOCKET set for this process.
class DaemonFixture
{
public:
    ~DaemonFixture() { stop(); }

    bool start(const QStringList& arguments = {})
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(program(), QStringList{"daemon", "--sock", socket()} + arguments);
        if (!m_process.waitForStarted() || !m_process.waitForReadyRead())
            return false;
        return qputenv("VSCAN_SOCKET", QFile::encodeName(socket()));
    }
    void stop()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }
    // Runs one command; its exit code.
    static int command(const QStringList& words) { return QProcess::execute(program(), words); }
    // What one command prints.
    static QString output(const QStringList& words)
    {
        QProcess process;
        process.start(program(), words);
        process.waitForFinished();
        return process.readAllStandardOutput();
    }
    static QString program() { return qEnvironmentVariable("VSCAN_HOME") + "/vscan"; }
    QString socket() const { return m_folder.filePath("s"); }
    QProcess& process() { return m_process; }

private:
    QTemporaryDir m_folder{"/tmp/vscantest-XXXXXX"};
    QProcess m_process;
};
