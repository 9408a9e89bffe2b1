// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

// Gathers what a batch has to tell, so that the user gets one notice at its end instead of a box per page.
// GUI thread.
class NoticeBoard
{
    Q_DECLARE_TR_FUNCTIONS(NoticeBoard)
public:
    void clear();
    void addSaved(const QStringList& files); // logged as "saved: PATH"
    void addBlank() { ++m_blank; }
    void addProblem(const QString& text); // logged as "notice: TEXT"
    void addFault(const QString& text);   // a fault that ended the batch; logged as "fault: TEXT"

    const QStringList& saved() const { return m_saved; }
    bool hasProblems() const { return !m_problems.isEmpty(); }
    void replaceSaved(const QStringList& files) { m_saved = files; }

    // "已保存 n 个文件到 …", with what went wrong behind it.
    QString summary(const QString& folder) const;
    QString previewSummary(int shown) const; // of so many pages, which are not kept
    QString problems() const { return m_problems.join(QLatin1Char('\n')); }

private:
    QString withProblems(QStringList parts) const;

    QStringList m_saved;
    QStringList m_problems;
    int m_blank = 0;
};
