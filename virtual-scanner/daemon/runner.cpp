// SPDX-License-Identifier: GPL-3.0-or-later
#include "runner.h"

#include "server.h"
#ifdef VSCAN_WITH_USB
#include "usb/usb_device.h"
#endif

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <map>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/wait.h>

namespace fs = std::filesystem;

namespace vscan {

namespace {

// A private folder for the socket; removed at the end.
class SocketFolder
{
public:
    ~SocketFolder()
    {
        if (!m_path.empty())
            rmdir(m_path.c_str());
    }
    // Path of the socket in a new folder, empty on failure.
    std::string make()
    {
        constexpr size_t longestFolder = 80;
        const char* runtime = std::getenv("XDG_RUNTIME_DIR");
        for (std::string base : {std::string(runtime ? runtime : ""), std::string("/tmp")}) {
            if (base.empty() || base.size() > longestFolder || access(base.c_str(), W_OK | X_OK) != 0)
                continue;
            base += "/vscan-XXXXXX";
            if (mkdtemp(base.data())) {
                m_path = base;
                return base + "/socket";
            }
        }
        return {};
    }

private:
    std::string m_path;
};

// Signals that end the server, as a descriptor. The former mask comes back with the object.
class Signals
{
public:
    Signals()
    {
        sigset_t set;
        sigemptyset(&set);
        for (int signal : {SIGCHLD, SIGTERM, SIGINT, SIGHUP})
            sigaddset(&set, signal);
        sigprocmask(SIG_BLOCK, &set, &m_former);
        m_fd = Fd(signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
    }
    ~Signals() { restore(); }
    void restore() const { sigprocmask(SIG_SETMASK, &m_former, nullptr); }
    int descriptor() const { return m_fd.get(); }
    // The next signal that has arrived, 0 when there is none.
    int take() const
    {
        signalfd_siginfo info;
        return read(m_fd.get(), &info, sizeof info) == sizeof info ? static_cast<int>(info.ssi_signo) : 0;
    }

private:
    sigset_t m_former;
    Fd m_fd;
};

// What a client needs to find the scanner. The module lies beside this program.
std::map<std::string, std::string> clientEnvironment(const std::string& socket)
{
    std::error_code ignored;
    const fs::path home = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    const char* libraries = std::getenv("LD_LIBRARY_PATH");
    std::string path = (home / "lib").string();
    if (libraries && *libraries)
        path += std::string(":") + libraries;
    return {
        {socketVariable, socket}, {"SANE_CONFIG_DIR", (home / "sane.d").string()}, {"LD_LIBRARY_PATH", path}};
}

// The scanner on its socket and, where it is built and wanted, at its USB port. The signals are blocked
// before any thread exists, so that none of them gets one.
class Machine
{
public:
    bool start(const Arguments& arguments);
    const Signals& signals() const { return m_signals; }
    Server& server() { return m_server; }
    std::map<std::string, std::string> clientVariables() const;
    void restoreForClient() const; // what only this process needs

private:
    bool startUsb(const Arguments& arguments, std::string& error);

    SocketFolder m_folder;
    Signals m_signals;
    Scanner m_scanner;
    Server m_server{m_scanner};
    std::string m_socket;
    std::unique_ptr<UsbPort> m_usb;
    rlimit m_formerFiles{RLIM_INFINITY, RLIM_INFINITY};
};

bool Machine::start(const Arguments& arguments)
{
    m_socket = arguments.socket.empty() ? m_folder.make() : fs::absolute(arguments.socket).string();
    std::string error;
    if (m_scanner.setUp(arguments.setup, error) && m_server.listen(m_socket, error) &&
        startUsb(arguments, error))
        return true;
    std::fprintf(stderr, "vscan: %s\n", error.c_str());
    return false;
}

#ifdef VSCAN_WITH_USB
bool Machine::startUsb(const Arguments& arguments, std::string& error)
{
    if (!arguments.usb)
        return true;
    getrlimit(RLIMIT_NOFILE, &m_formerFiles); // each time it is plugged in costs a few descriptors
    const rlimit files{m_formerFiles.rlim_max, m_formerFiles.rlim_max};
    setrlimit(RLIMIT_NOFILE, &files);
    m_usb = std::make_unique<UsbDevice>(m_scanner.channel(), UsbIdentity(),
                                        fs::path(m_socket).parent_path().string(),
                                        [this] { return m_scanner.interfaceTaken(); });
    if (!m_usb->plug()) {
        error = "no USB device";
        return false;
    }
    m_scanner.setUsb(m_usb.get());
    return true;
}

std::map<std::string, std::string> Machine::clientVariables() const
{
    std::map<std::string, std::string> variables = clientEnvironment(m_socket);
    if (m_usb)
        for (const auto& variable : usbEnvironment())
            variables.insert(variable);
    return variables;
}

void Machine::restoreForClient() const
{
    m_signals.restore();
    if (!m_usb)
        return;
    setrlimit(RLIMIT_NOFILE, &m_formerFiles);
    unsetenv(preloadedVariable);
}
#else
bool Machine::startUsb(const Arguments& arguments, std::string&)
{
    if (arguments.usb)
        std::fprintf(stderr, "vscan: built without the USB side; only images are to be had (--no-usb)\n");
    return true;
}

std::map<std::string, std::string> Machine::clientVariables() const
{
    return clientEnvironment(m_socket);
}

void Machine::restoreForClient() const
{
    m_signals.restore();
}
#endif

[[noreturn]] void becomeCommand(const Arguments& arguments, const Machine& machine, pid_t parent)
{
    machine.restoreForClient();
    prctl(PR_SET_PDEATHSIG, SIGTERM); // whoever kills the scanner ends its client, too
    if (getppid() != parent)
        _exit(runnerFailed);
    for (const auto& [name, value] : machine.clientVariables())
        setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> words;
    for (const std::string& word : arguments.command)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    execvp(words[0], words.data());
    std::fprintf(stderr, "vscan: %s: %s\n", words[0], std::strerror(errno));
    _exit(errno == ENOENT ? 127 : 126);
}

int exitCode(int status)
{
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

std::string shellQuoted(const std::string& text)
{
    std::string quoted = "'";
    for (char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

} // namespace

int runCommandWithScanner(const Arguments& arguments)
{
    Machine machine;
    if (!machine.start(arguments))
        return runnerFailed;
    const pid_t self = getpid();
    const pid_t child = fork();
    if (child < 0) {
        std::fprintf(stderr, "vscan: fork: %s\n", std::strerror(errno));
        return runnerFailed;
    }
    if (child == 0)
        becomeCommand(arguments, machine, self);
    int status = 0;
    machine.server().run(machine.signals().descriptor(), [&] {
        while (const int signal = machine.signals().take()) {
            if (signal != SIGCHLD && signal != SIGINT) // the terminal sends its own interrupt to the command
                kill(child, signal);
        }
        return waitpid(child, &status, WNOHANG) == child;
    });
    return exitCode(status);
}

int runDaemon(const Arguments& arguments)
{
    Machine machine;
    if (!machine.start(arguments))
        return runnerFailed;
    for (const auto& [name, value] : machine.clientVariables())
        std::printf("export %s=%s\n", name.c_str(), shellQuoted(value).c_str());
    std::fflush(stdout);
    machine.server().run(machine.signals().descriptor(), [&] {
        int signal;
        while ((signal = machine.signals().take()) == SIGCHLD) {
        }
        return signal != 0;
    });
    return 0;
}

} // namespace vscan
