// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/worddocument.h"

#include "ocr/base64.h"
#include "ocr/measures.h"
#include "ocr/paragraphs.h"

#include <QDebug>
#include <QSaveFile>
#include <QTextStream>
#include <QUuid>
#include <cerrno>

namespace {

constexpr int kIndent = 4;
constexpr double kFontFactor = 0.4; // half-points for a pixel of height, as getFontSize()
constexpr int kPitchFactor = 4; // with the fifth that getPSLineSpacing() adds: twips for a pixel at 300 dpi

} // namespace

WordDocument::WordDocument(OcrJob job) : m_loop(std::move(job)), m_elements(m_document)
{
    m_elements.getDocXMLHeader();
    m_body = m_elements.getWordroot().firstChildElement(QStringLiteral("w:body"));
}

OcrResult WordDocument::xmltowordpages(const QStringList& files)
{
    OcrResult result;
    result.file = m_loop.path(QStringLiteral(".doc"));
    QSaveFile file(result.file);
    if (files.isEmpty())
        return result;
    errno = 0;
    // Opened first: nobody should wait for pages that cannot be saved.
    if (!file.open(QIODevice::WriteOnly)) {
        result.problem = PageLoop::cannotWrite(result.file, errno);
        return result;
    }
    m_loop.overPages(
        files,
        [&](const QString& page, int index, tesseract::TessBaseAPI* api, PageNotes& notes) {
            const QMap<int, QDomElement> paragraphs = getOnePageP(page, api, notes);
            m_anyBox = m_anyBox || !paragraphs.isEmpty();
            addPage(paragraphs, index + 1 < files.size());
        },
        result);
    if (!result.problem.isEmpty() || result.cancelled)
        return result;
    finishBody();
    result.saved = save(file);
    if (!result.saved)
        result.problem = PageLoop::cannotWrite(result.file, errno);
    else if (!m_anyBox)
        result.notices << tr("未识别到文字");
    return result;
}

QMap<int, QDomElement> WordDocument::getOnePageP(const QString& imageFile, tesseract::TessBaseAPI* api,
                                                 PageNotes& notes)
{
    const FramedPage page = framedPage(imageFile, notes);
    if (page.boxes.isEmpty() || !giveToEngine(page, api, notes))
        return {};
    QMap<int, zarnTXTLINERET> lines;
    handleProcessMultiTestBorder(page.boxes, api, page.frame, lines, notes, m_loop.control());
    return pageParagraphs(lines, page.frame);
}

QMap<int, QDomElement> WordDocument::pageParagraphs(const QMap<int, zarnTXTLINERET>& lines,
                                                    const cv::Mat& frame)
{
    QMap<int, QDomElement> paragraphs;
    const QMap<int, zarnTXTLINERET> joined = joinParagraphs(lines);
    for (auto record = joined.begin(); record != joined.end(); ++record)
        if (!record->text.isEmpty())
            paragraphs.insert(record.key(), paragraph(record.value(), frame));
    return paragraphs;
}

QDomElement WordDocument::paragraph(const zarnTXTLINERET& record, const cv::Mat& frame)
{
    if (record.text == doubtfulMarker())
        return picture(record, frame);
    return record.lines > 1 ? paragraphBox(record) : lineBox(record);
}

QDomElement WordDocument::picture(const zarnTXTLINERET& record, const cv::Mat& frame)
{
    qDebug() << "*************  low ocr,get img  ******************";
    const cv::Rect place(record.x, record.y, record.width, record.height);
    const QString name = QStringLiteral("wordml://") + QUuid::createUuid().toString(QUuid::WithoutBraces) +
                         QStringLiteral(".jpg");
    return m_elements.getPpict(getLeft(record.x), getTop(record.y), getWidth(record.width),
                               getHeight(record.height), name,
                               QString::fromStdString(Mat2Base64(frame(place), ".jpg")));
}

QDomElement WordDocument::lineBox(const zarnTXTLINERET& record)
{
    return m_elements.getP(getLeft(record.x), getTop(record.y), getWidth(record.width),
                           getHeight(record.height), record.text, getFontSize(record.height));
}

QDomElement WordDocument::paragraphBox(const zarnTXTLINERET& record)
{
    const int span = record.height - record.lineHeight; // from the first line's top to the last line's
    const QString fontSize = getPSFontSize(static_cast<int>(kFontFactor * record.height), record.lines);
    const QString pitch = getPSLineSpacing(kPitchFactor * span, record.lines);
    return m_elements.getPs(getLeft(record.x), getTop(record.y), getWidth(record.width),
                            getHeight(record.height), record.text.split(QLatin1String(kLineJoint)), fontSize,
                            pitch.toInt());
}

void WordDocument::addPage(const QMap<int, QDomElement>& paragraphs, bool breakAfter)
{
    for (const QDomElement& paragraph : paragraphs)
        m_body.appendChild(paragraph);
    if (breakAfter)
        m_body.appendChild(m_elements.getPpages());
}

void WordDocument::finishBody()
{
    m_body.appendChild(m_elements.section());
}

bool WordDocument::save(QSaveFile& file)
{
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    errno = 0;
    m_document.save(stream, kIndent, QDomNode::EncodingFromTextStream);
    stream.flush();
    qDebug() << "out over";
    return stream.status() == QTextStream::Ok && file.flush() && file.commit();
}
