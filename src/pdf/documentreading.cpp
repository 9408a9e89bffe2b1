// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/documentreading.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>

namespace {

class DocumentText
{
    Q_DECLARE_TR_FUNCTIONS(DocumentReading)
public:
    static QString reading(int number) { return tr("正在识别第%1张图像").arg(number); }
    static QString unread(const QStringList& names)
    {
        constexpr int kNamed = 3;
        const QString list = QStringList(names.mid(0, kNamed)).join(tr("、"));
        return names.size() > kNamed
                   ? tr("图像%1等%2张无法读取，文档中留为空白页").arg(list).arg(names.size())
                   : tr("图像%1无法读取，文档中留为空白页").arg(list);
    }
    static QString lost(int lines) { return tr("有%1行文字未能识别").arg(lines); }
    static QString nothingRead() { return tr("所有图像都无法读取"); }
    static QString semicolon() { return tr("；"); }
};

} // namespace

DocumentReading::DocumentReading(PageReader& reader, DocumentJob job, bool symbols)
    : m_reader(reader), m_job(std::move(job)), m_symbols(symbols)
{
}

QString DocumentReading::folder() const
{
    return m_job.folder.endsWith('/') ? m_job.folder : m_job.folder + '/';
}

bool DocumentReading::announce(int index)
{
    if (m_job.cancelled && m_job.cancelled())
        m_result.cancelled = true;
    else if (m_job.progress)
        m_job.progress(DocumentText::reading(index + 1));
    return !m_result.cancelled;
}

PageText DocumentReading::read(const QString& picture)
{
    PageText page = m_reader.read(picture, m_symbols, m_job.cancelled);
    m_result.cancelled |= page.cancelled;
    if (!page.problem.isEmpty())
        fail(page.problem);
    else if (!page.cancelled && !page.readable)
        m_result.unread.append(picture);
    m_lostLines += page.lostLines;
    if (!page.readable || stopped())
        page.lines.clear();
    return page;
}

void DocumentReading::fail(const QString& problem)
{
    if (m_result.problem.isEmpty())
        m_result.problem = problem;
}

bool DocumentReading::anyPageRead(int pages)
{
    if (!stopped() && m_result.unread.size() >= pages)
        fail(DocumentText::nothingRead());
    return !stopped();
}

DocumentResult DocumentReading::finish(const QString& file)
{
    DocumentResult result = m_result;
    result.saved = !stopped();
    if (!result.saved)
        return result;
    result.file = file;
    QStringList warnings;
    if (!m_result.unread.isEmpty()) {
        QStringList names;
        for (const QString& picture : m_result.unread)
            names.append(QFileInfo(picture).fileName());
        warnings.append(DocumentText::unread(names));
    }
    if (m_lostLines > 0)
        warnings.append(DocumentText::lost(m_lostLines));
    result.warning = warnings.join(DocumentText::semicolon());
    return result;
}
