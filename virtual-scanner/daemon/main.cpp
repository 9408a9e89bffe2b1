// SPDX-License-Identifier: GPL-3.0-or-later
// The one program of the virtual scanner: `vscan run` starts a command with a scanner attached, `vscan
// daemon` only the scanner, and every other word is a command for the scanner at $VSCAN_SOCKET.

#include "arguments.h"
#include "runner.h"
#ifdef VSCAN_WITH_USB
#include "usb/usb_device.h"
#endif

#include <cstdio>

using namespace vscan;

namespace {

int sendCommand(const Fields& command)
{
    const char* path = std::getenv(socketVariable);
    if (!path) {
        std::fprintf(stderr, "vscan: %s is not set; start with `vscan run` or `vscan daemon`\n",
                     socketVariable);
        return static_cast<int>(Status::IoError);
    }
    const Fd socket = connectTo(path);
    Fields reply;
    if (!socket || !sendPacket(socket.get(), command) || receivePacket(socket.get(), reply) != 1) {
        std::fprintf(stderr, "vscan: no scanner listens at %s\n", path);
        return static_cast<int>(Status::IoError);
    }
    const int status = static_cast<int>(number(reply, 0, static_cast<int>(Status::IoError)));
    if (reply.size() > 1 && !reply[1].empty())
        std::fprintf(status == 0 ? stdout : stderr, "%s\n", reply[1].c_str());
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    const std::string word = argc > 1 ? argv[1] : "help";
    if (word == "help" || word == "--help" || word == "-h") {
        std::fputs(usage, stdout);
        return 0;
    }
    if (word != "run" && word != "daemon")
        return sendCommand(absolutePaths(Fields(argv + 1, argv + argc)));
    Arguments arguments;
    std::string error;
    if (!parseArguments(Fields(argv + 2, argv + argc), word == "run", arguments, error)) {
        std::fprintf(stderr, "vscan: %s\n%s", error.c_str(), usage);
        return runnerFailed;
    }
#ifdef VSCAN_WITH_USB
    if (arguments.usb)
        preloadSelf(argv, error);
    if (!error.empty()) {
        std::fprintf(stderr, "vscan: %s\n", error.c_str());
        return runnerFailed;
    }
#endif
    return word == "run" ? runCommandWithScanner(arguments) : runDaemon(arguments);
}
