// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/saneapi.h"

#include <array>
#include <cstdio>
#include <memory>
#include <vector>

struct FileCloser
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

// Writes the header of a binary PNM file: P4 for grey frames of depth 1, P5 for the others, P6 for RGB and
// single-channel frames. Numbers in pixels and bits.
void writePnmHeader(FrameFormat format, int pixelsPerLine, int lines, int depth, std::FILE* file);

// Turns the frames of one page into a PNM file. Grey and RGB frames of known height go straight through;
// everything else (separate channels, unknown height, padded lines) is collected and written at the end.
class PageWriter
{
public:
    enum class Result
    {
        Good,
        WriteFailed,
        OutOfMemory,
        Empty
    };

    explicit PageWriter(std::FILE* file); // stays the caller's

    // Takes the next frame's parameters. Null when the frame can be taken, otherwise the condition that it
    // breaks.
    const char* beginFrame(const FrameParameters& frame);

    // The next bytes of the current frame; the bytes may be rearranged in place.
    Result write(unsigned char* data, std::size_t length);

    // After the last frame: writes what was collected and flushes.
    Result finish();

    bool buffers() const { return m_buffers; }

private:
    const char* followingFrame(const FrameParameters& frame);
    Result collect(const unsigned char* data, std::size_t length);
    Result put(const unsigned char* data, std::size_t length);
    Result putSamples(unsigned char* data, std::size_t length);
    Result putCollected();
    Result putChannels(int lines);

    std::FILE* m_file;
    FrameParameters m_frame; // the current one
    bool m_first = true;
    bool m_buffers = false;
    std::size_t m_lineBytes = 0; // bytes of a line's pixels
    std::size_t m_stride = 0;    // bytes from line to line, with padding
    std::size_t m_received = 0;  // bytes, all frames
    int m_heldByte = -1;         // first half of a 16-bit sample whose second half is in the next read
    std::array<std::vector<unsigned char>, 3> m_planes; // collected data: [0], or red, green, blue
};
