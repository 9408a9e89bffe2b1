// SPDX-License-Identifier: GPL-3.0-or-later
#include "runner.h"

#include "server.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <map>
#include <sys/prctl.h>
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

bool prepare(const Arguments& arguments, Scanner& scanner, Server& server, SocketFolder& folder,
             std::string& socket)
{
    socket = arguments.socket.empty() ? folder.make() : fs::absolute(arguments.socket).string();
    std::string error;
    if (scanner.setUp(arguments.setup, error) && server.listen(socket, error))
        return true;
    std::fprintf(stderr, "vscan: %s\n", error.c_str());
    return false;
}

[[noreturn]] void becomeCommand(const Arguments& arguments, const std::string& socket, const Signals& signals,
                                pid_t parent)
{
    signals.restore();
    prctl(PR_SET_PDEATHSIG, SIGTERM); // whoever kills the scanner ends its client, too
    if (getppid() != parent)
        _exit(runnerFailed);
    for (const auto& [name, value] : clientEnvironment(socket))
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
    SocketFolder folder;
    Scanner scanner;
    Server server(scanner);
    std::string socket;
    if (!prepare(arguments, scanner, server, folder, socket))
        return runnerFailed;
    const Signals signals;
    const pid_t self = getpid();
    const pid_t child = fork();
    if (child < 0) {
        std::fprintf(stderr, "vscan: fork: %s\n", std::strerror(errno));
        return runnerFailed;
    }
    if (child == 0)
        becomeCommand(arguments, socket, signals, self);
    int status = 0;
    server.run(signals.descriptor(), [&] {
        while (const int signal = signals.take()) {
            if (signal != SIGCHLD && signal != SIGINT) // the terminal sends its own interrupt to the command
                kill(child, signal);
        }
        return waitpid(child, &status, WNOHANG) == child;
    });
    return exitCode(status);
}

int runDaemon(const Arguments& arguments)
{
    SocketFolder folder;
    Scanner scanner;
    Server server(scanner);
    std::string socket;
    if (!prepare(arguments, scanner, server, folder, socket))
        return runnerFailed;
    const Signals signals;
    for (const auto& [name, value] : clientEnvironment(socket))
        std::printf("export %s=%s\n", name.c_str(), shellQuoted(value).c_str());
    std::fflush(stdout);
    server.run(signals.descriptor(), [&] {
        int signal;
        while ((signal = signals.take()) == SIGCHLD) {
        }
        return signal != 0;
    });
    return 0;
}

} // namespace vscan
