// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/ofdpackage.h"

#include "config/leftovers.h"
#include "config/ofdparts.h"
#include "output/savefolder.h"
#include "pdf/ofdunits.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <cerrno>

namespace {

class OfdPackageText
{
    Q_DECLARE_TR_FUNCTIONS(OfdPackage)
public:
    static QString cannotWrite(const QString& path, const QString& reason)
    {
        return tr("无法写入“%1”：%2").arg(path, reason);
    }
    static QString foreignParts(const QString& path)
    {
        return tr("“%1”不是本程序的临时文件，为避免覆盖，未生成OFD文件；请移走它或更换保存文件夹").arg(path);
    }
    static QString cannotRemove(const QString& path) { return tr("无法删除遗留的临时文件“%1”").arg(path); }
    static QString cannotCreate() { return tr("无法创建文件夹"); }
};

const QString kDeclaration = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
const QString kNamespace = QStringLiteral("xmlns:ofd=\"http://www.ofdspec.org/2016\"");

const char kEntry[] = R"(<ofd:OFD %1 DocType="OFD" Version="1.0">
  <ofd:DocBody>
    <ofd:DocInfo>
      <ofd:Author>ZARN-QWD200</ofd:Author>
      <ofd:CreationDate>%2</ofd:CreationDate>
      <ofd:ModDate>%2</ofd:ModDate>
      <ofd:Creator>ZARN-QWD200Vintrel</ofd:Creator>
    </ofd:DocInfo>
    <ofd:DocRoot>Doc_0/Document.xml</ofd:DocRoot>
  </ofd:DocBody>
</ofd:OFD>
)";

const char kResourcesHead[] = R"(<ofd:Res %1 BaseLoc="Res">
  <ofd:Fonts>
    <ofd:Font ID="4" FontName="宋体" FamilyName="宋体"/>
  </ofd:Fonts>
  <ofd:ColorSpaces>
    <ofd:ColorSpace ID="5" Type="RGB"/>
  </ofd:ColorSpaces>
  <ofd:MultiMedias>
)";
const char kResourcesTail[] = "  </ofd:MultiMedias>\n</ofd:Res>\n";

const char kDocumentHead[] = R"(<ofd:Document %1>
  <ofd:CommonData>
    <ofd:MaxUnitID>%2</ofd:MaxUnitID>
    <ofd:PageArea>
      <ofd:PhysicalBox>0 0 %3 %4</ofd:PhysicalBox>
    </ofd:PageArea>
    <ofd:DocumentRes>DocumentRes.xml</ofd:DocumentRes>
  </ofd:CommonData>
  <ofd:Pages>
)";
const char kDocumentPage[] = "    <ofd:Page ID=\"%1\" BaseLoc=\"Pages/Page_%2/Content.xml\"/>\n";
const char kDocumentTail[] = "  </ofd:Pages>\n</ofd:Document>\n";

const char kContentHead[] = R"(<ofd:Page %1>
  <ofd:Content>
    <ofd:Layer ID="%2">
)";
const char kTextObject[] = R"(      <ofd:TextObject ID="%1" Boundary="%2 %3 %4 %5" Font="4" Size="4.0">
        <ofd:FillColor Value="0 0 8" ColorSpace="5"/>
        <ofd:TextCode X="0" Y="4.0" DeltaX="%6">%7</ofd:TextCode>
      </ofd:TextObject>
)";
const char kContentTail[] = "    </ofd:Layer>\n  </ofd:Content>\n</ofd:Page>\n";

QString fragment(const char* text)
{
    return QString::fromUtf8(text);
}

// A line's box reaches down to the next line, the last one's as far as the one before it. Where that gives
// nothing, as at the top of a further column or for a single line, its own height and a third count.
QString boxHeight(const QMap<int, zarnOFDLINERET>& lines, QMap<int, zarnOFDLINERET>::const_iterator line,
                  int pageHeightMm)
{
    const auto next = std::next(line);
    if (next != lines.end() && next->top > line->top)
        return getOFDHeight(next->top - line->top, pageHeightMm);
    if (line != lines.begin() && line->top > std::prev(line)->top)
        return getOFDHeight(line->top - std::prev(line)->top, pageHeightMm);
    return QString("%1").arg(getOFDHeight(line->height, pageHeightMm).toInt() * 1.3);
}

QString textObjects(const QMap<int, zarnOFDLINERET>& lines, const QSize& page)
{
    QString objects;
    int i = 0;
    for (auto line = lines.begin(); line != lines.end(); ++line, ++i) {
        const QString text = QString(line->text).replace('<', ' ');
        objects += fragment(kTextObject)
                       .arg(QString::number(4 * i + 6), getOFDLeft(line->left, page.width()),
                            getOFDTop(line->top, page.height()), getOFDWidth(line->width, page.width()),
                            boxHeight(lines, line, page.height()), line->deltaX, text);
    }
    return objects;
}

} // namespace

OfdPackage::OfdPackage(QString folder, const QSize& pageBox) : m_folder(std::move(folder)), m_pageBox(pageBox)
{
}

bool OfdPackage::begin(int pageCount, const QDate& today)
{
    const QString tree = m_folder + ofdparts::kTree + "/";
    QFile entry;
    return makeFolder(tree) && makeFolder(tree + "/Pages") && makeFolder(tree + "/Res") &&
           open(entry, m_folder + ofdparts::kEntry,
                fragment(kEntry).arg(kNamespace, today.toString("yyyy-MM-dd"))) &&
           close(entry, {}) &&
           open(m_resources, tree + "DocumentRes.xml", fragment(kResourcesHead).arg(kNamespace)) &&
           open(m_document, tree + "Document.xml",
                fragment(kDocumentHead)
                    .arg(kNamespace)
                    .arg(4 * pageCount + 1)
                    .arg(m_pageBox.width())
                    .arg(m_pageBox.height()));
}

bool OfdPackage::addPage(const QMap<int, zarnOFDLINERET>& lines)
{
    const int k = m_pages++;
    const QString folder = m_folder + ofdparts::kTree + QString("/Pages/Page_%1/").arg(k);
    QFile content;
    return write(m_document, fragment(kDocumentPage).arg(4 * k + 1).arg(k)) && makeFolder(folder) &&
           open(content, folder + "Content.xml", fragment(kContentHead).arg(kNamespace).arg(4 * k + 2)) &&
           close(content, textObjects(lines, m_pageBox) + kContentTail);
}

bool OfdPackage::end()
{
    return close(m_resources, kResourcesTail) && close(m_document, kDocumentTail);
}

bool OfdPackage::makeFolder(const QString& path)
{
    return QDir().mkpath(path) || fail(path, OfdPackageText::cannotCreate());
}

bool OfdPackage::open(QFile& file, const QString& path, const QString& head)
{
    file.setFileName(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return fail(path, file.errorString());
    return write(file, kDeclaration + head);
}

bool OfdPackage::write(QFile& file, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return file.write(bytes) == bytes.size() || fail(file.fileName(), writeProblem(errno));
}

bool OfdPackage::close(QFile& file, const QString& tail)
{
    if (!write(file, tail))
        return false;
    if (!file.flush()) // Qt calls a full disk an unknown error
        return fail(file.fileName(), writeProblem(errno));
    file.close();
    return true;
}

bool OfdPackage::fail(const QString& path, const QString& reason)
{
    m_problem = OfdPackageText::cannotWrite(path, reason);
    qWarning().noquote() << "cannot write" << path << reason;
    return false;
}

QString claimOfdFolder(const QString& folder)
{
    const QString entry = folder + ofdparts::kEntry;
    const QString tree = folder + ofdparts::kTree;
    const QString mark = folder + ofdparts::kMark;
    const bool ours = QFileInfo::exists(mark);
    for (const QString& part : {entry, tree}) {
        const QFileInfo found(part);
        if (found.isSymLink() || (found.exists() && !ours))
            return OfdPackageText::foreignParts(part);
    }
    if (ours) {
        qInfo().noquote() << "removing the parts of an unfinished document in" << folder;
        removeOfdParts(folder);
        for (const QString& part : {entry, tree}) {
            if (QFileInfo::exists(part))
                return OfdPackageText::cannotRemove(part);
        }
    }
    QFile file(mark);
    if (!file.open(QIODevice::WriteOnly))
        return OfdPackageText::cannotWrite(mark, file.errorString());
    return {};
}
