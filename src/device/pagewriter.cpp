// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/pagewriter.h"

#include <QDebug>
#include <QtEndian>
#include <algorithm>
#include <new>

namespace {

// More than a legal sheet at 1200 dpi in 48-bit colour; a device that sends more never stops.
constexpr std::size_t collectLimit = (std::size_t(2) << 30) - 1;

bool isChannel(FrameFormat format)
{
    return format == FrameFormat::Red || format == FrameFormat::Green || format == FrameFormat::Blue;
}

std::size_t channelIndex(FrameFormat format)
{
    return isChannel(format) ? std::size_t(int(format) - int(FrameFormat::Red)) : 0;
}

// The condition that the frame breaks, or null.
const char* brokenCondition(const FrameParameters& parm)
{
    if (parm.pixelsPerLine <= 0)
        return "parm.pixels_per_line > 0";
    switch (parm.format) {
    case FrameFormat::Gray:
        return parm.depth == 1 || parm.depth == 8 || parm.depth == 16
                   ? nullptr
                   : "parm.depth == 1 || parm.depth == 8 || parm.depth == 16";
    case FrameFormat::Rgb:
        return parm.depth == 8 || parm.depth == 16 ? nullptr : "parm.depth == 8 || parm.depth == 16";
    case FrameFormat::Red:
    case FrameFormat::Green:
    case FrameFormat::Blue:
        return parm.depth == 8 ? nullptr : "parm.depth == 8";
    }
    return "parm.format >= SANE_FRAME_GRAY && parm.format <= SANE_FRAME_BLUE";
}

std::size_t tightLineBytes(const FrameParameters& frame)
{
    const std::size_t samples = std::size_t(frame.pixelsPerLine) * (frame.format == FrameFormat::Rgb ? 3 : 1);
    return (samples * std::size_t(frame.depth) + 7) / 8;
}

// SANE delivers 16-bit samples in the machine's order, PNM wants the most significant byte first.
void toBigEndian(unsigned char* data, std::size_t samples)
{
    qToBigEndian<quint16>(data, qsizetype(samples), data);
}

} // namespace

void writePnmHeader(FrameFormat format, int pixelsPerLine, int lines, int depth, std::FILE* file)
{
    const int maximum = depth <= 8 ? 255 : 65535;
    if (format != FrameFormat::Gray)
        std::fprintf(file, "P6\n%d %d\n%d\n", pixelsPerLine, lines, maximum);
    else if (depth == 1)
        std::fprintf(file, "P4\n%d %d\n", pixelsPerLine, lines);
    else // The empty line is wanted: the readers of these files know it.
        std::fprintf(file, "P5\n\n%d %d\n%d\n", pixelsPerLine, lines, maximum);
}

PageWriter::PageWriter(std::FILE* file) : m_file(file) {}

const char* PageWriter::beginFrame(const FrameParameters& frame)
{
    if (const char* condition = brokenCondition(frame))
        return condition;
    if (!m_first)
        return followingFrame(frame);
    m_first = false;
    m_frame = frame;
    m_lineBytes = tightLineBytes(frame);
    m_stride = std::max(m_lineBytes, std::size_t(std::max(0, frame.bytesPerLine)));
    m_buffers = isChannel(frame.format) || frame.lines <= 0 || m_stride != m_lineBytes;
    if (!m_buffers)
        writePnmHeader(frame.format, frame.pixelsPerLine, frame.lines, frame.depth, m_file);
    return nullptr;
}

const char* PageWriter::followingFrame(const FrameParameters& frame)
{
    if (!isChannel(frame.format) || !isChannel(m_frame.format))
        return "parm.format >= SANE_FRAME_RED && parm.format <= SANE_FRAME_BLUE";
    if (frame.pixelsPerLine != m_frame.pixelsPerLine || frame.bytesPerLine != m_frame.bytesPerLine)
        return "parm.bytes_per_line == image.width";
    if (!m_planes[channelIndex(frame.format)].empty())
        return "parm.format is sent once";
    m_frame = frame;
    return nullptr;
}

PageWriter::Result PageWriter::write(unsigned char* data, std::size_t length)
{
    m_received += length;
    if (m_buffers)
        return collect(data, length);
    return m_frame.depth == 16 ? putSamples(data, length) : put(data, length);
}

PageWriter::Result PageWriter::collect(const unsigned char* data, std::size_t length)
{
    if (m_received > collectLimit)
        return Result::OutOfMemory;
    try {
        std::vector<unsigned char>& plane = m_planes[channelIndex(m_frame.format)];
        plane.insert(plane.end(), data, data + length);
    } catch (const std::bad_alloc&) {
        return Result::OutOfMemory;
    }
    return Result::Good;
}

PageWriter::Result PageWriter::put(const unsigned char* data, std::size_t length)
{
    return std::fwrite(data, 1, length, m_file) == length ? Result::Good : Result::WriteFailed;
}

PageWriter::Result PageWriter::putSamples(unsigned char* data, std::size_t length)
{
    if (length == 0)
        return Result::Good;
    if (m_heldByte >= 0) {
        unsigned char sample[2] = {static_cast<unsigned char>(m_heldByte), *data};
        m_heldByte = -1;
        toBigEndian(sample, 1);
        if (put(sample, sizeof sample) != Result::Good)
            return Result::WriteFailed;
        ++data;
        --length;
    }
    if (length % 2 == 1)
        m_heldByte = data[--length];
    toBigEndian(data, length / 2);
    return put(data, length);
}

PageWriter::Result PageWriter::finish()
{
    Result result = Result::Good;
    if (m_buffers)
        result = putCollected();
    else if (m_received < m_stride * std::size_t(m_frame.lines))
        qWarning("the scanner sent %zu of %zu bytes of a page", m_received,
                 m_stride * std::size_t(m_frame.lines));
    if (std::fflush(m_file) != 0 || std::ferror(m_file))
        return Result::WriteFailed;
    return result;
}

PageWriter::Result PageWriter::putCollected()
{
    std::size_t longest = 0;
    for (const auto& plane : m_planes)
        longest = std::max(longest, plane.size());
    const int lines = int(longest / m_stride);
    if (lines == 0)
        return Result::Empty;
    writePnmHeader(m_frame.format, m_frame.pixelsPerLine, lines, m_frame.depth, m_file);
    if (isChannel(m_frame.format))
        return putChannels(lines);
    for (int line = 0; line < lines; ++line) {
        unsigned char* bytes = m_planes[0].data() + std::size_t(line) * m_stride;
        if (m_frame.depth == 16)
            toBigEndian(bytes, m_lineBytes / 2);
        if (put(bytes, m_lineBytes) != Result::Good)
            return Result::WriteFailed;
    }
    return Result::Good;
}

// Interleaves the three channels; a channel that is missing or too short is black there.
PageWriter::Result PageWriter::putChannels(int lines)
{
    const std::size_t width = m_lineBytes;
    std::vector<unsigned char> row(3 * width);
    for (int line = 0; line < lines; ++line) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const std::vector<unsigned char>& plane = m_planes[channel];
            const std::size_t start = std::size_t(line) * m_stride;
            for (std::size_t x = 0; x < width; ++x)
                row[3 * x + channel] = start + x < plane.size() ? plane[start + x] : 0;
        }
        if (put(row.data(), row.size()) != Result::Good)
            return Result::WriteFailed;
    }
    return Result::Good;
}
