// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

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
    static QString program() { return qEnvironmentVariable("VSCAN_HOME") + "/vscan"; }
    QString socket() const { return m_folder.filePath("s"); }
    QProcess& process() { return m_process; }

private:
    QTemporaryDir m_folder{"/tmp/vscantest-XXXXXX"};
    QProcess m_process;
};
