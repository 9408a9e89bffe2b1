// SPDX-License-Identifier: GPL-3.0-or-later
#include "report.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <cstdio>

namespace companion {

bool Report::open(const QString& path)
{
    if (path.isEmpty())
        return true;
    if (path == QLatin1String("-"))
        return m_file.open(stdout, QIODevice::WriteOnly);
    m_file.setFileName(path);
    return m_file.open(QIODevice::WriteOnly | QIODevice::Truncate);
}

void Report::add(const PageLine& line)
{
    ++m_page;
    if (!m_file.isOpen())
        return;
    const QJsonObject object{{QStringLiteral("page"), m_page},
                             {QStringLiteral("file"), line.file},
                             {QStringLiteral("boxes"), line.boxes},
                             {QStringLiteral("confidence"), std::round(line.confidence * 10) / 10},
                             {QStringLiteral("seconds"), std::round(line.seconds * 1000) / 1000},
                             {QStringLiteral("problem"), line.problem}};
    const QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
    m_good = m_file.write(text) == text.size() && m_file.flush() && m_good;
}

bool Report::close()
{
    m_file.close();
    return m_good && m_file.error() == QFileDevice::NoError;
}

} // namespace companion
