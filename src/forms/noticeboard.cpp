// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/noticeboard.h"

#include <QDebug>
#include <QDir>

void NoticeBoard::clear()
{
    *this = NoticeBoard();
}

void NoticeBoard::addSaved(const QStringList& files)
{
    for (const QString& file : files)
        qInfo().noquote() << "saved:" << file;
    m_saved << files;
}

void NoticeBoard::addProblem(const QString& text)
{
    qInfo().noquote() << "notice:" << text;
    m_problems << text;
}

void NoticeBoard::addFault(const QString& text)
{
    qInfo().noquote() << "fault:" << text;
    m_problems.prepend(text);
}

QString NoticeBoard::summary(const QString& folder) const
{
    QStringList parts;
    if (!m_saved.isEmpty())
        parts << tr("已保存 %1 个文件到 %2").arg(m_saved.size()).arg(QDir::cleanPath(folder));
    else if (m_problems.isEmpty() && m_blank == 0)
        parts << tr("没有扫描到页面");
    else
        parts << tr("没有保存文件");
    if (m_blank > 0)
        parts << tr("已删除 %1 张空白页").arg(m_blank);
    return withProblems(parts);
}

QString NoticeBoard::previewSummary(int shown) const
{
    if (shown > 0)
        return withProblems({tr("预览完成")});
    return m_problems.isEmpty() ? tr("没有扫描到页面") : withProblems({});
}

QString NoticeBoard::withProblems(QStringList parts) const
{
    if (m_problems.size() == 1)
        parts << m_problems.first();
    else if (!m_problems.isEmpty())
        parts << tr("%1 个问题：%2").arg(m_problems.size()).arg(m_problems.first());
    return parts.join(tr("；", "between sentences"));
}
