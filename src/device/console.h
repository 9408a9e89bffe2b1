// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdarg>
#include <cstdio>

// A diagnostic on standard output, as printf. Flushed at once: the last lines before a crash are the ones
// that matter, and standard output is usually a pipe or a file.
__attribute__((format(printf, 1, 2))) inline void say(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
    std::fflush(stdout);
}
