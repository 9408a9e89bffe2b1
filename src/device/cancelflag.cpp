// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/cancelflag.h"

#include <atomic>

namespace cancelflag {

namespace {
std::atomic<bool> flag{false};
}

void set()
{
    flag = true;
}

void clear()
{
    flag = false;
}

bool isSet()
{
    return flag;
}

} // namespace cancelflag
