// A terminal without a window: runs what follows its option (-e, -x or --) in a pseudo-terminal,
// writes what appears there to $HOME/transcript and types what is written to the pipe $HOME/keys.
// Its own arguments go to $HOME/terminal.arguments, its activation to $HOME/terminal.activation as
// "token id"; $HOME/terminal.pid gets its process id as one more line. Like some terminals, it
// hands its whole environment on.

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace {

constexpr unsigned lifetime = 110; // seconds; no test may leave a shell behind

volatile pid_t shell = 0;

/// Ends with the shell and not before it: a shell that still runs would write into the home folder
/// while the test removes it.
void endWithShell(int) {
    if (shell > 0 && ::kill(shell, SIGKILL) == 0)
        ::waitpid(shell, nullptr, 0);
    ::_exit(0);
}

/// Copies what is there from one descriptor to another; false at the end.
bool copyOnce(int from, int to) {
    std::array<char, 4096> bytes{};
    const ssize_t length = ::read(from, bytes.data(), bytes.size());
    return length > 0 && ::write(to, bytes.data(), static_cast<std::size_t>(length)) == length;
}

int pump(int master, const std::string& home) {
    const int keys = ::open((home + "/keys").c_str(), O_RDWR | O_CLOEXEC);
    const int transcript =
        ::open((home + "/transcript").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    for (;;) {
        std::array<pollfd, 2> ready = {{{master, POLLIN, 0}, {keys, POLLIN, 0}}};
        if (::poll(ready.data(), ready.size(), -1) < 0)
            return 1;
        if (ready[0].revents != 0 && !copyOnce(master, transcript))
            return 0;
        if ((ready[1].revents & POLLIN) != 0 && !copyOnce(keys, master))
            return 1;
    }
}

} // namespace

int main(int count, char** arguments) {
    const char* home = std::getenv("HOME");
    if (home == nullptr || count < 2)
        return 1;
    const std::string folder = home;
    std::ofstream log(folder + "/terminal.arguments", std::ios::binary);
    for (int i = 1; i < count; ++i)
        log << arguments[i] << '\0';
    log.close();
    const char* token = std::getenv("XDG_ACTIVATION_TOKEN");
    const char* startupId = std::getenv("DESKTOP_STARTUP_ID");
    if (token != nullptr && startupId != nullptr)
        std::ofstream(folder + "/terminal.activation") << token << ' ' << startupId;
    std::ofstream(folder + "/terminal.pid", std::ios::app) << ::getpid() << '\n';

    int first = 1;
    for (const std::string_view option : {"-e", "-x", "--"})
        if (arguments[1] == option)
            first = 2;
    std::signal(SIGALRM, endWithShell);
    std::signal(SIGTERM, endWithShell);
    ::alarm(lifetime);
    struct winsize size {};
    size.ws_row = 24;
    size.ws_col = 80;
    int master = -1;
    const pid_t child = ::forkpty(&master, nullptr, nullptr, &size);
    if (child == 0) {
        std::signal(SIGTERM, SIG_DFL);
        std::signal(SIGALRM, SIG_DFL);
        ::setenv("TERM", "xterm", 1);
        ::execvp(arguments[first], arguments + first);
        ::_exit(127);
    }
    shell = child;
    return child < 0 ? 1 : pump(master, folder);
}
