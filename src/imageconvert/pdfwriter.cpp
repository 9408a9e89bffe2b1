// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/documentjob.h"
#include "imageconvert/outputfile.h"
#include "imageconvert/pageencoder.h"
#include "imageconvert/pageerror.h"
#include "imageconvert/pagesize.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

namespace imageconvert {

namespace {

using Object = QPDFObjectHandle;

constexpr double kPointsPerMm = 72 / 25.4;
constexpr double kLongestPage = 14400; // points; ISO 32000-1, annex C: the most that readers must take

// The written file, in pieces that are worth a system call. It never throws, since the library also writes
// from destructors: the file keeps the first error.
class FileSink : public Pipeline
{
public:
    explicit FileSink(OutputFile& file) : Pipeline("page file", nullptr), m_file(file) {}

    void write(unsigned char const* data, size_t size) override
    {
        if (m_waiting.size() + size > kPiece)
            flush();
        if (size > kPiece)
            put(data, size);
        else
            m_waiting.append(reinterpret_cast<const char*>(data), size);
    }
    void finish() override { flush(); }

private:
    static constexpr size_t kPiece = 1 << 18;

    void flush()
    {
        put(m_waiting.data(), m_waiting.size());
        m_waiting.clear();
    }
    void put(const void* data, size_t size) { static_cast<void>(m_file.write(data, size)); }

    OutputFile& m_file;
    std::string m_waiting;
};

// Where the picture's unit square goes on the page: turned as Exif says, so that the data stay as they are.
// `w`, `h`: the page in points. First row of the file on top is 1; TIFF 6.0, tag Orientation.
std::string placement(int orientation, double w, double h)
{
    const double matrices[8][6] = {{w, 0, 0, h, 0, 0},  {-w, 0, 0, h, w, 0},  {-w, 0, 0, -h, w, h},
                                   {w, 0, 0, -h, 0, h}, {0, -h, -w, 0, w, h}, {0, -h, w, 0, 0, h},
                                   {0, h, w, 0, 0, 0},  {0, h, -w, 0, w, 0}};
    std::string text = "q ";
    for (const double value : matrices[orientation - 1])
        text += Object::newReal(value, 4).unparse() + " ";
    return text + "cm /Im0 Do Q\n";
}

Object deviceColour(int channels)
{
    return Object::newName(channels == 1 ? "/DeviceGray" : channels == 3 ? "/DeviceRGB" : "/DeviceCMYK");
}

// How a page's pixels stand in the document.
struct Encoding
{
    const char* filter = "/FlateDecode";
    Object parameters = Object::newNull();
    int bits = 8;
    int channels = 3;
    std::function<void(Pipeline&)> write;
};

void put(Pipeline& to, const std::string& bytes, size_t offset, size_t size)
{
    to.write(reinterpret_cast<const unsigned char*>(bytes.data()) + offset, size);
}

Object predictor(int channels, int bits, int width)
{
    Object parameters = Object::newDictionary();
    parameters.replaceKey("/Predictor", Object::newInteger(15));
    parameters.replaceKey("/Colors", Object::newInteger(channels));
    parameters.replaceKey("/BitsPerComponent", Object::newInteger(bits));
    parameters.replaceKey("/Columns", Object::newInteger(width));
    return parameters;
}

Encoding groupFour(const PageFile& page)
{
    Object parameters = Object::newDictionary();
    parameters.replaceKey("/K", Object::newInteger(-1));
    parameters.replaceKey("/Columns", Object::newInteger(page.size.width));
    parameters.replaceKey("/Rows", Object::newInteger(page.size.height));
    const auto write = [&page](Pipeline& to) { to.writeString(groupFourData(decodedPixels(page))); };
    return {"/CCITTFaxDecode", parameters, 1, 1, write};
}

// A PNG's pixel data are what PDF calls Flate with predictor 15.
bool isCopiedPng(const PageFile& page)
{
    return page.kind == PageFile::Kind::Png && !page.png.interlaced && !page.png.transparent &&
           page.png.depth <= 8 && (page.png.colourType == 0 || page.png.colourType == 2);
}

Encoding copiedPng(const PageFile& page)
{
    const auto write = [&page](Pipeline& to) {
        const std::string bytes = readBytes(page);
        for (const auto& [offset, size] : page.png.pixels)
            put(to, bytes, offset, size);
    };
    return {"/FlateDecode", predictor(page.channels, page.png.depth, page.size.width), page.png.depth,
            page.channels, write};
}

Encoding encodingOf(const PageFile& page, int jpegQuality)
{
    if (page.kind == PageFile::Kind::Jpeg)
        return {"/DCTDecode", Object::newNull(), 8, page.channels,
                [&page](Pipeline& to) { to.writeString(readBytes(page)); }};
    if (page.twoLevel)
        return groupFour(page);
    if (jpegQuality > 0)
        return {"/DCTDecode", Object::newNull(), 8, page.channels, [&page, jpegQuality](Pipeline& to) {
                    to.writeString(jpegData(decodedPixels(page), std::min(jpegQuality, 100)));
                }};
    if (isCopiedPng(page))
        return copiedPng(page);
    return {"/FlateDecode", predictor(page.channels, 8, page.size.width), 8, page.channels,
            [&page](Pipeline& to) { to.writeString(predictedData(decodedPixels(page))); }};
}

class PdfDocument
{
public:
    explicit PdfDocument(const DocumentJob& job) : m_job(job)
    {
        m_pdf.emptyPDF();
        m_pdf.setSuppressWarnings(true);
        describePdf(m_pdf, job.info);
        for (size_t i = 0; i < job.pages.size(); ++i)
            addPage(i);
    }

    void write()
    {
        OutputFile file(m_job.path);
        FileSink sink(file);
        m_file = &file;
        try {
            QPDFWriter writer(m_pdf);
            writer.setOutputPipeline(&sink);
            writer.setMinimumPDFVersion("1.4");
            writer.setStreamDataMode(qpdf_s_preserve);
            writer.setObjectStreamMode(qpdf_o_disable); // the plain cross-reference table of PDF 1.4
            writer.write();
        } catch (...) {
            if (m_failure) // the library passes on the text only
                std::rethrow_exception(m_failure);
            throw;
        }
        file.commit();
    }

private:
    Object image(size_t index)
    {
        const PageFile& page = m_job.pages[index];
        const Encoding encoding = encodingOf(page, m_job.options.jpegQuality);
        Object image = m_pdf.newStream();
        Object dictionary = image.getDict();
        dictionary.replaceKey("/Type", Object::newName("/XObject"));
        dictionary.replaceKey("/Subtype", Object::newName("/Image"));
        dictionary.replaceKey("/Width", Object::newInteger(page.size.width));
        dictionary.replaceKey("/Height", Object::newInteger(page.size.height));
        dictionary.replaceKey("/BitsPerComponent", Object::newInteger(encoding.bits));
        dictionary.replaceKey("/ColorSpace", deviceColour(encoding.channels));
        if (page.invertedInks)
            dictionary.replaceKey("/Decode", Object::parse("[1 0 1 0 1 0 1 0]"));
        const auto provide = [this, index, write = encoding.write](Pipeline* to) {
            try {
                aboutPage(m_job.pages[index].path, [&] { write(*to); });
                to->finish();
                m_file->throwIfFailed();
                m_job.report(index + 1);
            } catch (...) {
                m_failure = std::current_exception();
                throw;
            }
        };
        image.replaceStreamData(provide, Object::newName(encoding.filter), encoding.parameters);
        return image;
    }

    void addPage(size_t index)
    {
        const PageFile& file = m_job.pages[index];
        const cv::Size2d size = snappedToPaper(physicalSize(file, m_job.options.sourceDpi)) * kPointsPerMm;
        const double shrink = std::min(1.0, kLongestPage / std::max(size.width, size.height));
        const double width = std::max(3.0, size.width * shrink), height = std::max(3.0, size.height * shrink);
        Object images = Object::newDictionary();
        images.replaceKey("/Im0", image(index));
        Object resources = Object::newDictionary();
        resources.replaceKey("/XObject", images);
        Object page = m_pdf.makeIndirectObject(Object::newDictionary());
        page.replaceKey("/Type", Object::newName("/Page"));
        page.replaceKey("/MediaBox", Object::newArray(Object::Rectangle(0, 0, width, height)));
        page.replaceKey("/Resources", resources);
        page.replaceKey("/Contents", m_pdf.newStream(placement(file.orientation, width, height)));
        m_pdf.addPage(page, false);
    }

    const DocumentJob& m_job;
    QPDF m_pdf;
    OutputFile* m_file = nullptr; // while it is written
    std::exception_ptr m_failure;
};

} // namespace

void writePdf(const DocumentJob& job)
{
    PdfDocument(job).write();
}

} // namespace imageconvert
