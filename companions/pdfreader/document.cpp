// SPDX-License-Identifier: GPL-3.0-or-later
#include "document.h"

#include "errorlog.h"

#include <QFile>
#include <QFileInfo>
#include <QTextCodec>

namespace reader {
namespace {

constexpr int kDeepestOutline = 16; // a damaged outline may hold itself
constexpr int kMostEntries = 20000;
const QSizeF kA4{595, 842};

std::vector<OutlineEntry> readOutline(const QVector<Poppler::OutlineItem>& items, int depth, int& count)
{
    std::vector<OutlineEntry> entries;
    for (const Poppler::OutlineItem& item : items) {
        if (item.isNull() || ++count > kMostEntries)
            continue;
        OutlineEntry entry;
        entry.title = item.name().simplified();
        if (const auto destination = item.destination()) {
            entry.page = destination->pageNumber() - 1;
            entry.top = destination->isChangeTop() ? qBound(0.0, destination->top(), 1.0) : 0;
        }
        if (depth < kDeepestOutline && item.hasChildren())
            entry.children = readOutline(item.children(), depth + 1, count);
        entries.push_back(std::move(entry));
    }
    return entries;
}

// Older files hold the password in an 8-bit encoding that they do not name.
QList<QByteArray> spellings(const QString& password)
{
    QList<QByteArray> bytes{password.toUtf8()};
    for (const char* name : {"ISO-8859-1", "GB18030"}) {
        const QTextCodec* codec = QTextCodec::codecForName(name);
        if (codec != nullptr && codec->canEncode(password) && !bytes.contains(codec->fromUnicode(password)))
            bytes << codec->fromUnicode(password);
    }
    return bytes;
}

} // namespace

QString Document::faultOfFile(const QString& name)
{
    const QFileInfo about(name);
    if (!about.exists())
        return tr("文件不存在。");
    if (about.isDir())
        return tr("这是一个文件夹，不是文件。");
    if (!about.isFile())
        return tr("这不是普通文件。");
    if (about.size() == 0)
        return tr("文件是空的（0 字节）。");
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return about.isReadable() ? tr("文件无法读取：%1").arg(file.errorString())
                                  : tr("没有读取这个文件的权限。");
    if (!file.read(1024).contains("%PDF-"))
        return tr("这不是 PDF 文件。");
    return {};
}

OpenResult Document::open(const QString& file, const QString& password)
{
    m_document.reset();
    m_info = {};
    takeErrors();
    m_problem = faultOfFile(file);
    if (!m_problem.isEmpty())
        return OpenResult::Failed;
    const OpenResult result = load(file, password);
    if (result != OpenResult::Opened)
        m_document.reset();
    return result;
}

OpenResult Document::load(const QString& file, const QString& password)
{
    for (const QByteArray& bytes : spellings(password)) {
        m_document.reset(Poppler::Document::load(file, bytes, bytes));
        if (!m_document || !m_document->isLocked())
            break;
    }
    if (!m_document) {
        const QString errors = takeErrors().join('\n');
        m_problem = errors.contains("security handler") || errors.contains("Unsupported version")
                        ? tr("文件的加密方式不受支持。")
                        : tr("文件已损坏，无法读取。");
        return OpenResult::Failed;
    }
    if (m_document->isLocked())
        return OpenResult::PasswordNeeded;
    if (m_document->numPages() < 1) {
        m_problem = tr("文件已损坏：其中没有可以显示的页面。");
        return OpenResult::Failed;
    }
    m_document->setRenderHint(Poppler::Document::Antialiasing);
    m_document->setRenderHint(Poppler::Document::TextAntialiasing);
    readInfo(file);
    return OpenResult::Opened;
}

void Document::readInfo(const QString& file)
{
    m_info.file = file;
    m_info.pages.reserve(m_document->numPages());
    for (int i = 0; i < m_document->numPages(); ++i) {
        const auto read = page(i);
        const QSizeF size = read ? read->pageSizeF() : kA4;
        m_info.pages << (size.width() >= 1 && size.height() >= 1 ? size : kA4);
    }
    int count = 0;
    m_info.outline = readOutline(m_document->outline(), 0, count);
    m_info.repaired = m_document->xrefWasReconstructed();
    m_info.mayCopy = m_document->okToCopy();
    m_info.mayPrint = m_document->okToPrint();
}

std::unique_ptr<Poppler::Page> Document::page(int index) const
{
    if (!m_document || index < 0 || index >= m_document->numPages())
        return nullptr;
    return std::unique_ptr<Poppler::Page>(m_document->page(index));
}

} // namespace reader
