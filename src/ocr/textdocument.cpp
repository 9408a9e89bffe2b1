// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/textdocument.h"

#include <QDebug>
#include <QFile>
#include <QSaveFile>
#include <cerrno>
#include <cstdio>

namespace {

bool removeOrAbsent(const QString& path)
{
    return !QFile::exists(path) || QFile::remove(path);
}

bool replaceFile(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

} // namespace

bool outtofile(const QString& path, const QString& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) {
        qDebug() << "open file error";
        return false;
    }
    const QByteArray line = text.toUtf8() + '\n';
    return file.write(line) == line.size() && file.flush();
}

int writePageLines(const QString& textFile, const QMap<int, QString>& lines)
{
    const QString part = textFile + QStringLiteral(".part");
    if (!removeOrAbsent(part))
        return -1;
    int written = 0;
    for (const QString& line : lines) {
        if (line.trimmed().isEmpty())
            continue;
        if (!outtofile(part, line)) {
            QFile::remove(part);
            return -1;
        }
        ++written;
    }
    if (written > 0 && !replaceFile(part, textFile)) {
        QFile::remove(part);
        return -1;
    }
    return written;
}

bool TextDocument::handleTxtOcrbycv(const QString& imageFile, int pageIndex, tesseract::TessBaseAPI* api,
                                    const QString& textFile, PageNotes& notes)
{
    const FramedPage page = framedPage(imageFile, notes);
    if (page.boxes.isEmpty() || !giveToEngine(page, api, notes))
        return true;
    QMap<int, QString> lines;
    handleProcessMultiTestForTXT(page.boxes, api, lines, notes, m_loop.control());
    if (notes.cancelled)
        return true;
    const int written = writePageLines(textFile, lines);
    if (written >= 0)
        qDebug() << "page" << pageIndex + 1 << "lines" << written;
    m_anyText = m_anyText || written > 0;
    return written >= 0;
}

OcrResult TextDocument::ocrProcess(const QStringList& files)
{
    OcrResult result;
    result.file = m_loop.path(QStringLiteral(".txt"));
    m_loop.overPages(
        files,
        [&](const QString& file, int index, tesseract::TessBaseAPI* api, PageNotes& notes) {
            errno = 0;
            noteFailure(!handleTxtOcrbycv(file, index, api, result.file, notes));
        },
        result);
    if (result.problem.isEmpty() && !files.isEmpty())
        finish(files.size(), result);
    return result;
}

void TextDocument::noteFailure(bool failed)
{
    if (failed && !m_failed)
        m_error = errno;
    m_failed = m_failed || failed;
}

void TextDocument::finish(int pageCount, OcrResult& result)
{
    if (!m_anyText && !m_failed && !result.cancelled) {
        QSaveFile empty(result.file);
        errno = 0;
        noteFailure(!empty.open(QIODevice::WriteOnly) || !empty.commit());
        result.saved = !m_failed;
        result.notices << tr("未识别到文字");
    }
    if (m_failed)
        result.problem = PageLoop::cannotWrite(result.file, m_error);
    result.saved = !m_failed && (result.saved || m_anyText);
    if (pageCount > 1 && m_anyText)
        result.notices << tr("纯文本仅保留最后一页");
}
