// SPDX-License-Identifier: GPL-3.0-or-later
// The SANE entry points of the virtual scanner, named as libsane's loader looks them up.

#include "options.h"
#include "scansession.h"

#include <memory>
#include <new>
#include <sane/sane.h>

using namespace vscan;

namespace {

constexpr const char* deviceName = "one";
std::mutex listMutex;
std::string listedModel;
SANE_Device listedDevice;
const SANE_Device* deviceList[2];

ScanSession* session(SANE_Handle handle)
{
    return static_cast<ScanSession*>(handle);
}

} // namespace

extern "C" {

SANE_Status sane_vscan_init(SANE_Int* version, SANE_Auth_Callback)
{
    if (version)
        *version = SANE_VERSION_CODE(1, 0, 0);
    return SANE_STATUS_GOOD;
}

void sane_vscan_exit() {}

SANE_Status sane_vscan_get_devices(const SANE_Device*** list, SANE_Bool)
{
    const std::lock_guard<std::mutex> lock(listMutex);
    deviceList[0] = nullptr;
    Link link;
    Fields reply;
    if (link.connect() && link.request({verb::devices}, reply) == Status::Good && reply.size() > 1) {
        listedModel = reply[1];
        listedDevice = {deviceName, "Virtual", listedModel.c_str(), "sheetfed scanner"};
        deviceList[0] = &listedDevice;
    }
    *list = deviceList;
    return SANE_STATUS_GOOD;
}

SANE_Status sane_vscan_open(SANE_String_Const name, SANE_Handle* handle)
{
    if (name && *name && std::string(name) != deviceName)
        return SANE_STATUS_INVAL;
    std::unique_ptr<ScanSession> opened(new (std::nothrow) ScanSession);
    if (!opened)
        return SANE_STATUS_NO_MEM;
    const SANE_Status status = opened->open();
    if (status == SANE_STATUS_GOOD)
        *handle = opened.release();
    return status;
}

void sane_vscan_close(SANE_Handle handle)
{
    delete session(handle);
}

const SANE_Option_Descriptor* sane_vscan_get_option_descriptor(SANE_Handle, SANE_Int option)
{
    return optionDescriptor(option);
}

SANE_Status sane_vscan_control_option(SANE_Handle handle, SANE_Int option, SANE_Action action, void* value,
                                      SANE_Int* info)
{
    return session(handle)->control(option, action, value, info);
}

SANE_Status sane_vscan_get_parameters(SANE_Handle handle, SANE_Parameters* parameters)
{
    const SANE_Parameters current = session(handle)->parameters();
    if (parameters)
        *parameters = current;
    return SANE_STATUS_GOOD;
}

SANE_Status sane_vscan_start(SANE_Handle handle)
{
    return session(handle)->start();
}

SANE_Status sane_vscan_read(SANE_Handle handle, SANE_Byte* buffer, SANE_Int capacity, SANE_Int* length)
{
    SANE_Int read = 0;
    const SANE_Status status = session(handle)->read(buffer, capacity, read);
    if (length)
        *length = read;
    return status;
}

void sane_vscan_cancel(SANE_Handle handle)
{
    session(handle)->cancel();
}

SANE_Status sane_vscan_set_io_mode(SANE_Handle, SANE_Bool nonBlocking)
{
    return nonBlocking ? SANE_STATUS_UNSUPPORTED : SANE_STATUS_GOOD;
}

SANE_Status sane_vscan_get_select_fd(SANE_Handle, SANE_Int*)
{
    return SANE_STATUS_UNSUPPORTED;
}

} // extern "C"
