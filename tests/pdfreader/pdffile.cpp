// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdffile.h"

#include <QFile>

namespace {

QByteArray utf16Hex(const QString& text)
{
    QByteArray bytes;
    for (const QChar c : text) {
        bytes += char(c.row());
        bytes += char(c.cell());
    }
    return bytes.toHex();
}

QByteArray number(double value)
{
    return QByteArray::number(value);
}

} // namespace

// The font has no letters, only their meaning: every code is its own character.
PdfFile::PdfFile()
{
    const int map =
        addStream({}, "/CIDInit /ProcSet findresource begin 12 dict begin begincmap /CMapName /Own def "
                      "/CMapType 2 def 1 begincodespacerange <0000> <FFFF> endcodespacerange "
                      "1 beginbfrange <0000> <FFFF> <0000> endbfrange endcmap end end");
    const int letters =
        add("<< /Type /Font /Subtype /CIDFontType2 /BaseFont /Own /DW 1000 /CIDSystemInfo << /Registry "
            "(Adobe) /Ordering (Identity) /Supplement 0 >> /FontDescriptor << /Type /FontDescriptor "
            "/FontName /Own /Flags 4 /FontBBox [0 -200 1000 800] /ItalicAngle 0 /Ascent 800 /Descent "
            "-200 /StemV 80 >> >>");
    m_font = add("<< /Type /Font /Subtype /Type0 /BaseFont /Own /Encoding /Identity-H /DescendantFonts [" +
                 number(letters) + " 0 R] /ToUnicode " + number(map) + " 0 R >>");
    m_pages = add({});
}

int PdfFile::add(const QByteArray& object)
{
    m_objects << object;
    return m_objects.size();
}

int PdfFile::addStream(const QByteArray& dictionary, const QByteArray& data)
{
    return add("<< /Length " + number(data.size()) + ' ' + dictionary + " >>\nstream\n" + data +
               "\nendstream");
}

void PdfFile::addPage(QSize points, const QByteArray& content, const QByteArray& more)
{
    const int stream = addStream({}, content);
    m_kids << add(
        "<< /Type /Page /Parent " + number(m_pages) + " 0 R /MediaBox [0 0 " + number(points.width()) + ' ' +
        number(points.height()) + "] /Contents " + number(stream) + " 0 R " +
        (more.contains("/Resources") ? QByteArray()
                                     : "/Resources << /Font << /F " + number(m_font) + " 0 R >> >> ") +
        more + " >>");
}

void PdfFile::addTextPage(const QList<Text>& texts, QSize points, const QByteArray& more)
{
    QByteArray content;
    for (const Text& t : texts)
        content += "BT /F " + number(t.size) + " Tf " + number(t.x) + ' ' + number(points.height() - t.y) +
                   " Td <" + utf16Hex(t.text) + "> Tj ET\n";
    addPage(points, content, more);
}

void PdfFile::addColourPage(const QColor& colour, QSize points)
{
    addPage(points, number(colour.redF()) + ' ' + number(colour.greenF()) + ' ' + number(colour.blueF()) +
                        " rg 0 0 5000 5000 re f");
}

void PdfFile::addImagePage(const QByteArray& filter, const QByteArray& data, QSize pixels)
{
    const int image =
        addStream("/Type /XObject /Subtype /Image /ColorSpace /DeviceRGB /BitsPerComponent 8 /Width " +
                      number(pixels.width()) + " /Height " + number(pixels.height()) + " /Filter /" + filter,
                  data);
    addPage({595, 842}, "595 0 0 842 0 0 cm /I Do",
            "/Resources << /XObject << /I " + number(image) + " 0 R >> >>");
}

void PdfFile::addBadPage()
{
    m_kids << 9999;
}

void PdfFile::setOutline(const QString& title, int page, const QString& below, int belowPage)
{
    const int root = m_objects.size() + 1;
    add("<< /Type /Outlines /First " + number(root + 1) + " 0 R /Last " + number(root + 1) +
        " 0 R /Count 1 >>");
    add("<< /Title <FEFF" + utf16Hex(title) + "> /Parent " + number(root) + " 0 R /First " +
        number(root + 2) + " 0 R /Last " + number(root + 2) + " 0 R /Count 1 /Dest [" + number(m_kids[page]) +
        " 0 R /Fit] >>");
    add("<< /Title <FEFF" + utf16Hex(below) + "> /Parent " + number(root + 1) + " 0 R /Dest [" +
        number(m_kids[belowPage]) + " 0 R /XYZ 0 421 null] >>");
    m_catalogMore = " /Outlines " + number(root) + " 0 R";
}

QByteArray PdfFile::bytes() const
{
    QByteArray kids;
    for (const int kid : m_kids)
        kids += number(kid) + " 0 R ";
    QList<QByteArray> objects = m_objects;
    objects[m_pages - 1] = "<< /Type /Pages /Kids [" + kids + "] /Count " + number(m_kids.size()) + " >>";
    objects << "<< /Type /Catalog /Pages " + number(m_pages) + " 0 R" + m_catalogMore + " >>";
    QByteArray file = "%PDF-1.5\n", table;
    for (int i = 0; i < objects.size(); ++i) {
        table += number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const QByteArray start = number(file.size()), count = number(objects.size() + 1);
    return file + "xref\n0 " + count + "\n0000000000 65535 f \n" + table + "trailer\n<< /Size " + count +
           " /Root " + number(objects.size()) + " 0 R >>\nstartxref\n" + start + "\n%%EOF\n";
}

bool PdfFile::save(const QString& name) const
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes()) > 0;
}
