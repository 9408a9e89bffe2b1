// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

// The SANE calls that a scan needs, as an interface: one implementation calls libsane, tests script the
// replies. Nothing is decided behind it, and the numbers are those of the SANE standard. All calls come from
// one thread, except that cancel() may come from any.

enum class SaneStatus : int
{
    Good,
    Unsupported,
    Cancelled,
    DeviceBusy,
    Inval,
    Eof,
    Jammed,
    NoDocs,
    CoverOpen,
    IoError,
    NoMem,
    AccessDenied,
};

enum class FrameFormat : int
{
    Gray,
    Rgb,
    Red,
    Green,
    Blue
};

// One frame of a page: sizes in pixels, bytes and lines, lines -1 when the height is not known beforehand,
// depth in bits per sample.
struct FrameParameters
{
    FrameFormat format = FrameFormat::Gray;
    bool lastFrame = true;
    int bytesPerLine = 0;
    int pixelsPerLine = 0;
    int lines = 0;
    int depth = 8;
};

// A copy of the strings of the device list, which the next listing would invalidate.
struct SaneDeviceInfo
{
    std::string name;
    std::string vendor;
    std::string model;
    std::string type;
};

using SaneHandle = void*;

class SaneApi
{
public:
    virtual ~SaneApi() = default;

    virtual SaneStatus init(int& versionCode) = 0;
    virtual void exit() = 0;
    virtual SaneStatus localDevices(std::vector<SaneDeviceInfo>& devices) = 0;
    virtual SaneStatus open(const std::string& name, SaneHandle& handle) = 0;
    virtual void close(SaneHandle handle) = 0;
    // Inval when the option does not exist or holds another type of value.
    virtual SaneStatus setOption(SaneHandle handle, int option, int value) = 0;
    virtual SaneStatus setOption(SaneHandle handle, int option, const std::string& value) = 0;
    virtual SaneStatus start(SaneHandle handle) = 0;
    virtual SaneStatus parameters(SaneHandle handle, FrameParameters& frame) = 0;
    // At most `capacity` bytes into `data`; `length` is 0 unless the status is good.
    virtual SaneStatus read(SaneHandle handle, unsigned char* data, int capacity, int& length) = 0;
    virtual void cancel(SaneHandle handle) = 0;
    virtual std::string statusText(SaneStatus status) = 0;
};

// The system's SANE library.
std::unique_ptr<SaneApi> makeLibSane();
