// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/charactermap.h"

#include "imageconvert/documentinfo.h"
#include "output/savefolder.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>
#include <map>
#include <qpdf/Pl_String.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>
#include <stdexcept>

namespace {

class CharacterMapText
{
    Q_DECLARE_TR_FUNCTIONS(CharacterMap)
public:
    static QString cannotWrite(const QString& file, const QString& reason)
    {
        return tr("无法写入“%1”：%2").arg(file, reason);
    }
    static QString incomplete(const QString& file) { return tr("无法生成“%1”，磁盘空间可能不足").arg(file); }
};

// Codes for further meanings of a glyph lie far above those of the glyphs that Qt embeds.
constexpr unsigned kFirstExtraCode = 0xE000;
constexpr unsigned kLastExtraCode = 0xFFFE;

// One font of the document: what its codes stand for. Codes are glyph numbers until extra codes are added.
class FontMap
{
public:
    explicit FontMap(QPDFObjectHandle font) : m_font(font) {}

    // The code for `glyph` when it stands for `text`: its own if that is free, else an extra one.
    unsigned codeFor(unsigned glyph, const QString& text)
    {
        const auto known = m_codes.find({glyph, text});
        if (known != m_codes.end())
            return known->second;
        unsigned code = glyph;
        if (m_texts.count(glyph)) {
            if (m_nextExtra > kLastExtraCode)
                return glyph;
            code = m_nextExtra++;
            m_extraGlyphs.push_back(glyph);
        }
        m_texts[code] = text;
        m_codes[{glyph, text}] = code;
        return code;
    }

    void apply(QPDF& pdf, bool keepFormer)
    {
        if (m_texts.empty())
            return;
        if (keepFormer)
            addFormer();
        m_font.replaceKey("/ToUnicode", QPDFObjectHandle::newStream(&pdf, unicodeMap()));
        if (!m_extraGlyphs.empty())
            nameExtraGlyphs(pdf);
    }

private:
    void addFormer();
    std::string unicodeMap() const;
    void nameExtraGlyphs(QPDF& pdf);

    QPDFObjectHandle m_font;
    std::map<unsigned, QString> m_texts; // by code; empty: stands for nothing of its own
    std::map<std::pair<unsigned, QString>, unsigned> m_codes;
    std::vector<unsigned> m_extraGlyphs; // of the codes from kFirstExtraCode
    unsigned m_nextExtra = kFirstExtraCode;
};

QByteArray hex(const QString& text)
{
    QByteArray digits;
    for (const QChar unit : text)
        digits += QByteArray::number(unit.unicode(), 16).rightJustified(4, '0');
    return digits.toUpper();
}

QByteArray hex(unsigned code)
{
    return hex(QString(QChar(code)));
}

// Takes over what Qt's map says about codes that nothing is known of: entries "<from> <to> [<text> ...]" or
// "<from> <to> <text>".
void FontMap::addFormer()
{
    QPDFObjectHandle former = m_font.getKey("/ToUnicode");
    if (!former.isStream())
        return;
    const auto data = former.getStreamData(qpdf_dl_generalized);
    const QByteArray all(reinterpret_cast<const char*>(data->getBuffer()), static_cast<int>(data->getSize()));
    for (const QByteArray& line : all.split('\n')) {
        QList<QByteArray> fields =
            QByteArray(line).replace('[', ' ').replace(']', ' ').simplified().split(' ');
        if (fields.size() < 3 || !line.startsWith('<'))
            continue;
        const unsigned first = fields[0].mid(1, 4).toUInt(nullptr, 16);
        for (int i = 2; i < fields.size(); ++i) {
            const QByteArray units = QByteArray::fromHex(fields[i].mid(1));
            QString text;
            for (int unit = 0; unit + 1 < units.size(); unit += 2)
                text += QChar(static_cast<uchar>(units[unit + 1]), static_cast<uchar>(units[unit]));
            m_texts.emplace(first + static_cast<unsigned>(i - 2), text);
        }
    }
}

std::string FontMap::unicodeMap() const
{
    QByteArray map = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
                     "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
                     "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
                     "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
    QList<QByteArray> entries;
    for (const auto& [code, text] : m_texts) {
        if (!text.isEmpty())
            entries.append('<' + hex(code) + "> <" + hex(text) + ">\n");
    }
    constexpr int kMostEntries = 100; // of one block, by the CMap rules
    for (int from = 0; from < entries.size(); from += kMostEntries) {
        const QList<QByteArray> block = entries.mid(from, kMostEntries);
        map += QByteArray::number(block.size()) + " beginbfchar\n" + block.join() + "endbfchar\n";
    }
    map += "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
    return map.toStdString();
}

// Width of a glyph by the font's "W" array: "first [w w ...]" and "first last w" in any order.
QPDFObjectHandle widthOf(QPDFObjectHandle cidFont, unsigned glyph)
{
    QPDFObjectHandle widths = cidFont.getKey("/W");
    const int size = widths.isArray() ? widths.getArrayNItems() : 0;
    for (int i = 0; i + 1 < size;) {
        const long long first = widths.getArrayItem(i).getIntValue();
        QPDFObjectHandle second = widths.getArrayItem(i + 1);
        if (second.isArray()) {
            if (glyph >= first && glyph < first + second.getArrayNItems())
                return second.getArrayItem(static_cast<int>(glyph - first));
            i += 2;
        } else {
            if (glyph >= first && glyph <= second.getIntValue() && i + 2 < size)
                return widths.getArrayItem(i + 2);
            i += 3;
        }
    }
    QPDFObjectHandle usual = cidFont.getKey("/DW");
    return usual.isNumber() ? usual : QPDFObjectHandle::newInteger(1000);
}

void FontMap::nameExtraGlyphs(QPDF& pdf)
{
    QPDFObjectHandle cidFont = m_font.getKey("/DescendantFonts").getArrayItem(0);
    std::string glyphs;
    const auto put = [&glyphs](unsigned glyph) {
        glyphs += static_cast<char>(glyph >> 8);
        glyphs += static_cast<char>(glyph & 0xFF);
    };
    for (unsigned code = 0; code < kFirstExtraCode; ++code)
        put(code);
    QPDFObjectHandle extraWidths = QPDFObjectHandle::newArray();
    for (const unsigned glyph : m_extraGlyphs) {
        put(glyph);
        extraWidths.appendItem(widthOf(cidFont, glyph));
    }
    QPDFObjectHandle widths = cidFont.getKey("/W");
    if (!widths.isArray())
        widths = QPDFObjectHandle::newArray();
    widths.appendItem(QPDFObjectHandle::newInteger(kFirstExtraCode));
    widths.appendItem(extraWidths);
    cidFont.replaceKey("/W", widths);
    cidFont.replaceKey("/CIDToGIDMap", QPDFObjectHandle::newStream(&pdf, glyphs));
    cidFont.getKey("/FontDescriptor").removeKey("/CIDSet"); // it lists the former codes only
}

struct ShownCode
{
    FontMap* font;
    unsigned code;
};

// Walks through a page's content and tells or replaces the two-byte codes that are shown, with their fonts.
class CodeFilter : public QPDFObjectHandle::TokenFilter
{
public:
    // With `replacements` the codes are replaced one after the other, else they are gathered.
    CodeFilter(std::map<std::string, FontMap*> fonts, const std::vector<unsigned>* replacements)
        : m_fonts(std::move(fonts)), m_replacements(replacements)
    {
    }

    void handleToken(const QPDFTokenizer::Token& token) override
    {
        if (token.getType() == QPDFTokenizer::tt_name)
            m_name = token.getValue();
        else if (token.isWord("Tf"))
            m_font = m_fonts.count(m_name) ? m_fonts.at(m_name) : nullptr;
        if (token.getType() == QPDFTokenizer::tt_string && m_font)
            writeToken(QPDFTokenizer::Token(QPDFTokenizer::tt_string, codes(token.getValue())));
        else
            writeToken(token);
    }

    std::vector<ShownCode> shown;

private:
    std::string codes(std::string bytes)
    {
        for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
            const unsigned code = static_cast<uchar>(bytes[i]) * 256u + static_cast<uchar>(bytes[i + 1]);
            if (m_replacements) {
                bytes[i] = static_cast<char>(m_replacements->at(m_done) >> 8);
                bytes[i + 1] = static_cast<char>(m_replacements->at(m_done++) & 0xFF);
            } else {
                shown.push_back({m_font, code});
            }
        }
        return bytes;
    }

    std::map<std::string, FontMap*> m_fonts;
    const std::vector<unsigned>* m_replacements;
    std::string m_name;
    FontMap* m_font = nullptr;
    size_t m_done = 0;
};

class Mender
{
public:
    explicit Mender(QPDF& pdf) : m_pdf(pdf) {}

    void mendPage(QPDFPageObjectHelper page, const ShownText& text)
    {
        const auto fonts = fontsOf(page);
        CodeFilter reading(fonts, nullptr);
        page.filterContents(&reading);
        const std::vector<QString> glyphs = text.glyphs();
        if (glyphs.size() != reading.shown.size()) {
            qWarning() << "character map: a page shows" << reading.shown.size() << "glyphs instead of"
                       << glyphs.size();
            m_allMatched = false;
            return;
        }
        std::vector<unsigned> codes;
        bool changed = false;
        for (size_t i = 0; i < glyphs.size(); ++i) {
            const ShownCode& shown = reading.shown[i];
            codes.push_back(shown.font->codeFor(shown.code, glyphs[i]));
            changed |= codes.back() != shown.code;
        }
        if (changed)
            replaceCodes(page, fonts, codes);
    }

    void finish()
    {
        for (auto& [id, font] : m_fonts)
            font.apply(m_pdf, !m_allMatched);
    }

private:
    std::map<std::string, FontMap*> fontsOf(QPDFPageObjectHelper page)
    {
        std::map<std::string, FontMap*> fonts;
        QPDFObjectHandle named = page.getAttribute("/Resources", false).getKey("/Font");
        if (!named.isDictionary())
            return fonts;
        for (const auto& [name, font] : named.getDictAsMap())
            fonts[name] = &m_fonts.try_emplace(font.getObjGen(), font).first->second;
        return fonts;
    }

    void replaceCodes(QPDFPageObjectHelper page, const std::map<std::string, FontMap*>& fonts,
                      const std::vector<unsigned>& codes)
    {
        std::string bytes;
        Pl_String content("page content", nullptr, bytes);
        CodeFilter writing(fonts, &codes);
        page.filterContents(&writing, &content);
        page.getObjectHandle().replaceKey("/Contents", QPDFObjectHandle::newStream(&m_pdf, bytes));
    }

    QPDF& m_pdf;
    std::map<QPDFObjGen, FontMap> m_fonts;
    bool m_allMatched = true;
};

// Lets libqpdf write into a file that appears when it is complete.
class SaveFilePipe : public Pipeline
{
public:
    explicit SaveFilePipe(QSaveFile& file) : Pipeline("document", nullptr), m_file(file) {}
    void write(const unsigned char* data, size_t size) override
    {
        if (m_file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) !=
            static_cast<qint64>(size))
            throw std::runtime_error(m_file.errorString().toStdString());
    }
    void finish() override {}

private:
    QSaveFile& m_file;
};

} // namespace

void ShownText::add(const QString& characters, int glyphs)
{
    // Characters are dealt out one to a glyph, the last takes what remains.
    const QVector<uint> points = characters.toUcs4();
    int done = 0;
    for (int i = 0; i < glyphs; ++i) {
        int units = 0;
        if (i + 1 == glyphs)
            units = characters.size() - done;
        else if (i < points.size())
            units = QChar::requiresSurrogates(points[i]) ? 2 : 1;
        units = std::min({units, characters.size() - done, 255});
        m_lengths.append(static_cast<char>(units));
        done += units;
    }
    m_text += characters.left(done);
}

std::vector<QString> ShownText::glyphs() const
{
    std::vector<QString> glyphs;
    int at = 0;
    for (const char length : m_lengths) {
        glyphs.push_back(m_text.mid(at, static_cast<uchar>(length)));
        at += static_cast<uchar>(length);
    }
    return glyphs;
}

QString mendCharacterMap(const QString& source, const QString& target, const QString& title,
                         const std::vector<ShownText>& pages)
try {
    QPDF pdf;
    pdf.setSuppressWarnings(true);
    pdf.setAttemptRecovery(false); // a cut-off file is a failure, not something to guess at
    pdf.processFile(QFile::encodeName(source).constData());
    Mender mender(pdf);
    std::vector<QPDFPageObjectHelper> printed = QPDFPageDocumentHelper(pdf).getAllPages();
    if (printed.size() != pages.size())
        throw std::runtime_error("the number of pages is wrong");
    for (size_t i = 0; i < printed.size(); ++i)
        mender.mendPage(printed[i], pages[i]);
    mender.finish();
    imageconvert::DocumentInfo about;
    about.title = title;
    imageconvert::describePdf(pdf, about);

    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly))
        return CharacterMapText::cannotWrite(target, file.errorString());
    SaveFilePipe pipe(file);
    QPDFWriter writer(pdf);
    writer.setOutputPipeline(&pipe);
    writer.setDecodeLevel(qpdf_dl_none);
    writer.setStreamDataMode(qpdf_s_compress);
    try {
        writer.write();
    } catch (const std::exception& error) {
        const int reason = errno; // of the write that failed
        qWarning().noquote() << "cannot write" << target << error.what();
        return CharacterMapText::cannotWrite(target, writeProblem(reason));
    }
    if (!file.flush() || !file.commit()) // Qt calls a full disk an unknown error
        return CharacterMapText::cannotWrite(target, writeProblem(errno));
    return {};
} catch (const std::exception& error) {
    qWarning().noquote() << "character map of" << target << error.what();
    return CharacterMapText::incomplete(target);
}
