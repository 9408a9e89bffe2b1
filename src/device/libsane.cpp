// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/saneapi.h"

#include <sane/sane.h>

#include <algorithm>
#include <cstring>

static_assert(int(SaneStatus::AccessDenied) == SANE_STATUS_ACCESS_DENIED, "statuses follow the standard");
static_assert(int(SaneStatus::NoDocs) == SANE_STATUS_NO_DOCS, "statuses follow the standard");
static_assert(int(FrameFormat::Blue) == SANE_FRAME_BLUE, "formats follow the standard");

namespace {

// The scanner asks for no user name or password.
void authorise(SANE_String_Const, SANE_Char*, SANE_Char*) {}

std::string text(SANE_String_Const string)
{
    return string ? string : "";
}

SaneStatus result(SANE_Status status)
{
    return SaneStatus(int(status));
}

class LibSane : public SaneApi
{
public:
    SaneStatus init(int& versionCode) override
    {
        SANE_Int version = 0;
        const SANE_Status status = sane_init(&version, authorise);
        versionCode = version;
        return result(status);
    }

    void exit() override { sane_exit(); }

    SaneStatus localDevices(std::vector<SaneDeviceInfo>& devices) override
    {
        devices.clear();
        const SANE_Device** list = nullptr;
        const SANE_Status status = sane_get_devices(&list, SANE_TRUE);
        if (status != SANE_STATUS_GOOD || !list)
            return result(status);
        for (; *list; ++list)
            devices.push_back(
                {text((*list)->name), text((*list)->vendor), text((*list)->model), text((*list)->type)});
        return SaneStatus::Good;
    }

    SaneStatus open(const std::string& name, SaneHandle& handle) override
    {
        handle = nullptr;
        return result(sane_open(name.c_str(), &handle));
    }

    void close(SaneHandle handle) override { sane_close(handle); }

    SaneStatus setOption(SaneHandle handle, int option, int value) override
    {
        const SANE_Option_Descriptor* descriptor = sane_get_option_descriptor(handle, option);
        if (!descriptor || descriptor->type != SANE_TYPE_INT || descriptor->size != sizeof(SANE_Word))
            return SaneStatus::Inval;
        SANE_Word word = value;
        return result(sane_control_option(handle, option, SANE_ACTION_SET_VALUE, &word, nullptr));
    }

    SaneStatus setOption(SaneHandle handle, int option, const std::string& value) override
    {
        const SANE_Option_Descriptor* descriptor = sane_get_option_descriptor(handle, option);
        if (!descriptor || descriptor->type != SANE_TYPE_STRING)
            return SaneStatus::Inval;
        // A backend may write the value that it really took back into all of the option's size.
        std::vector<char> room(std::max<std::size_t>(value.size() + 1, std::max(0, descriptor->size)));
        std::memcpy(room.data(), value.c_str(), value.size());
        return result(sane_control_option(handle, option, SANE_ACTION_SET_VALUE, room.data(), nullptr));
    }

    SaneStatus start(SaneHandle handle) override { return result(sane_start(handle)); }

    SaneStatus parameters(SaneHandle handle, FrameParameters& frame) override
    {
        SANE_Parameters parm = {};
        const SANE_Status status = sane_get_parameters(handle, &parm);
        frame.format = FrameFormat(int(parm.format));
        frame.lastFrame = parm.last_frame != SANE_FALSE;
        frame.bytesPerLine = parm.bytes_per_line;
        frame.pixelsPerLine = parm.pixels_per_line;
        frame.lines = parm.lines;
        frame.depth = parm.depth;
        return result(status);
    }

    SaneStatus read(SaneHandle handle, unsigned char* data, int capacity, int& length) override
    {
        SANE_Int count = 0;
        const SANE_Status status = sane_read(handle, data, capacity, &count);
        length = status == SANE_STATUS_GOOD ? count : 0;
        return result(status);
    }

    void cancel(SaneHandle handle) override { sane_cancel(handle); }

    std::string statusText(SaneStatus status) override
    {
        return text(sane_strstatus(SANE_Status(int(status))));
    }
};

} // namespace

std::unique_ptr<SaneApi> makeLibSane()
{
    return std::make_unique<LibSane>();
}
