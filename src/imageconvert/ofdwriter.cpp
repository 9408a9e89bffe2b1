// SPDX-License-Identifier: GPL-3.0-or-later
// Image-only OFD documents (GB/T 33190-2016): one folder per page, its picture in "Res".
#include "imageconvert/documentjob.h"
#include "imageconvert/pageencoder.h"
#include "imageconvert/pageerror.h"
#include "imageconvert/pagesize.h"
#include "imageconvert/zippackage.h"

#include <QUuid>
#include <QXmlStreamWriter>
#include <cmath>

namespace imageconvert {

namespace {

// One number space for the whole document.
constexpr size_t kIdsPerPage = 4;
QString pageId(size_t page)
{
    return QString::number(kIdsPerPage * page + 1);
}
QString layerId(size_t page)
{
    return QString::number(kIdsPerPage * page + 2);
}
QString objectId(size_t page)
{
    return QString::number(kIdsPerPage * page + 3);
}
QString pictureId(size_t page)
{
    return QString::number(kIdsPerPage * page + 4);
}

QString contentPath(size_t page)
{
    return QStringLiteral("Pages/Page_%1/Content.xml").arg(page);
}

// Millimetres with at most two decimals, always with a point.
QString millimetres(double value)
{
    return QString::number(std::round(value * 100) / 100, 'g', 10);
}

// An XML part; elements have the prefix that some readers look for literally.
class Part
{
public:
    explicit Part(const char* root) : m_xml(&m_bytes)
    {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(2);
        m_xml.writeStartDocument();
        open(root);
        m_xml.writeAttribute(QStringLiteral("xmlns:ofd"), QStringLiteral("http://www.ofdspec.org/2016"));
    }
    void open(const char* element)
    {
        m_xml.writeStartElement(QStringLiteral("ofd:") + QLatin1String(element));
    }
    void close() { m_xml.writeEndElement(); }
    void set(const char* attribute, const QString& value)
    {
        m_xml.writeAttribute(QLatin1String(attribute), value);
    }
    void text(const char* element, const QString& value)
    {
        m_xml.writeTextElement(QStringLiteral("ofd:") + QLatin1String(element), value);
    }
    std::string bytes()
    {
        m_xml.writeEndDocument();
        return m_bytes.toStdString();
    }

private:
    QByteArray m_bytes;
    QXmlStreamWriter m_xml;
};

void writeArea(Part& part, const char* element, const cv::Size2d& size)
{
    part.open(element);
    part.text("PhysicalBox",
              QStringLiteral("0 0 %1 %2").arg(millimetres(size.width), millimetres(size.height)));
    part.close();
}

// What readers show as it is: JPEG without a turn that only some obey and without inks, and PNG.
bool goesInUnchanged(const PageFile& page)
{
    return page.kind == PageFile::Kind::Jpeg ? page.orientation == 1 && page.channels != 4
                                             : page.kind != PageFile::Kind::Other;
}

class OfdDocument
{
public:
    OfdDocument(const DocumentJob& job, int paperCode) : m_job(job), m_package(job.path)
    {
        for (const PageFile& page : job.pages)
            m_sizes.push_back(snappedToOfdPaper(physicalSize(page, job.options.sourceDpi), paperCode));
    }

    void write()
    {
        m_package.addText("OFD.xml", entry());
        m_package.addText("Doc_0/Document.xml", document());
        m_package.addText("Doc_0/DocumentRes.xml", resources());
        for (size_t i = 0; i < m_job.pages.size(); ++i)
            m_package.addText("Doc_0/" + contentPath(i).toStdString(), content(i));
        for (size_t i = 0; i < m_job.pages.size(); ++i)
            addPicture(i);
        m_package.write([this](double share) {
            const auto done = static_cast<size_t>(share * static_cast<double>(m_job.pages.size()));
            if (done > m_reported) {
                m_reported = done;
                m_job.report(done);
            }
            return true;
        });
        if (m_reported < m_job.pages.size() && m_job.options.progress) // too late to cancel
            m_job.options.progress(static_cast<int>(m_job.pages.size()),
                                   static_cast<int>(m_job.pages.size()));
    }

private:
    // Pictures that readers differ about are drawn anew, the others go in as they are.
    bool asJpeg(const PageFile& page) const
    {
        return page.kind == PageFile::Kind::Jpeg ||
               (!goesInUnchanged(page) && !page.twoLevel && m_job.options.jpegQuality > 0);
    }

    QString pictureName(size_t index) const
    {
        return QStringLiteral("Image_%1.%2")
            .arg(index)
            .arg(QLatin1String(asJpeg(m_job.pages[index]) ? "jpg" : "png"));
    }

    void addPicture(size_t index)
    {
        const PageFile& page = m_job.pages[index];
        const std::string name = "Doc_0/Res/" + pictureName(index).toStdString();
        if (goesInUnchanged(page)) {
            m_package.addFile(name, page.path, ZipPackage::Method::Store);
            return;
        }
        const int quality = m_job.options.jpegQuality > 0 ? std::min(m_job.options.jpegQuality, 100) : 95;
        m_package.addLazily(
            name,
            [&page, jpeg = asJpeg(page), quality] {
                return aboutPage(page.path, [&] {
                    const cv::Mat pixels = decodedPixels(page);
                    return jpeg ? jpegData(pixels, quality) : pngData(pixels);
                });
            },
            ZipPackage::Method::Store);
    }

    std::string entry() const
    {
        const QString today = m_job.info.created.toString(QStringLiteral("yyyy-MM-dd"));
        Part part("OFD");
        part.set("Version", QStringLiteral("1.0"));
        part.set("DocType", QStringLiteral("OFD"));
        part.open("DocBody");
        part.open("DocInfo");
        part.text("DocID", QUuid::createUuid().toString(QUuid::Id128));
        part.text("Title", xmlText(m_job.info.title));
        part.text("Author", m_job.info.author);
        part.text("CreationDate", today);
        part.text("ModDate", today);
        part.text("Creator", m_job.info.creator);
        part.close();
        part.text("DocRoot", QStringLiteral("Doc_0/Document.xml"));
        return part.bytes();
    }

    std::string document() const
    {
        Part part("Document");
        part.open("CommonData");
        part.text("MaxUnitID", QString::number(kIdsPerPage * m_job.pages.size()));
        writeArea(part, "PageArea", m_sizes.front());
        part.text("DocumentRes", QStringLiteral("DocumentRes.xml"));
        part.close();
        part.open("Pages");
        for (size_t i = 0; i < m_job.pages.size(); ++i) {
            part.open("Page");
            part.set("ID", pageId(i));
            part.set("BaseLoc", contentPath(i));
            part.close();
        }
        return part.bytes();
    }

    std::string resources() const
    {
        Part part("Res");
        part.set("BaseLoc", QStringLiteral("Res"));
        part.open("MultiMedias");
        for (size_t i = 0; i < m_job.pages.size(); ++i) {
            part.open("MultiMedia");
            part.set("ID", pictureId(i));
            part.set("Type", QStringLiteral("Image"));
            part.set("Format", asJpeg(m_job.pages[i]) ? QStringLiteral("JPEG") : QStringLiteral("PNG"));
            part.text("MediaFile", pictureName(i));
            part.close();
        }
        return part.bytes();
    }

    // Every page has its own area, which some readers rely on.
    std::string content(size_t index) const
    {
        const QString width = millimetres(m_sizes[index].width), height = millimetres(m_sizes[index].height);
        Part part("Page");
        writeArea(part, "Area", m_sizes[index]);
        part.open("Content");
        part.open("Layer");
        part.set("ID", layerId(index));
        part.open("ImageObject");
        part.set("ID", objectId(index));
        part.set("Boundary", QStringLiteral("0 0 %1 %2").arg(width, height));
        part.set("CTM", QStringLiteral("%1 0 0 %2 0 0").arg(width, height));
        part.set("ResourceID", pictureId(index));
        return part.bytes();
    }

    const DocumentJob& m_job;
    std::vector<cv::Size2d> m_sizes;
    ZipPackage m_package;
    size_t m_reported = 0;
};

} // namespace

void writeOfd(const DocumentJob& job, int paperCode)
{
    OfdDocument(job, paperCode).write();
}

} // namespace imageconvert
