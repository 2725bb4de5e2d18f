// Writes how it was started into a new file of $HOME/records: "name=value" fields, each ended by a
// NUL. The file appears under its final name only when it is complete.

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace {

namespace fs = std::filesystem;

void writeDescriptors(std::ostream& out) {
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        const fs::path target = fs::read_symlink(entry.path(), error);
        // The descriptor of this very listing, and that of the record.
        const std::string text = target.string();
        if (error || text.find("/proc/") == 0 || text.find("/records/") != std::string::npos)
            continue;
        out << "fd " << entry.path().filename().string() << '=' << text << '\0';
    }
}

void writeSignals(std::ostream& out) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        for (const std::string_view name : {"SigBlk", "SigIgn"})
            if (line.starts_with(name))
                out << name << '=' << line.substr(line.find_first_not_of(":\t ", name.size()))
                    << '\0';
}

} // namespace

int main(int count, char** arguments) {
    const char* home = std::getenv("HOME");
    if (home == nullptr)
        return 1;
    const fs::path folder = fs::path(home) / "records";
    const std::string name = std::to_string(::getpid());
    std::ofstream out(folder / ('.' + name), std::ios::binary);
    for (int i = 0; i < count; ++i)
        out << "argument=" << arguments[i] << '\0';
    out << "folder=" << fs::current_path().string() << '\0';
    out << "leader=" << (::getsid(0) == ::getpid() ? "yes" : "no") << '\0';
    out << "parent=" << ::getppid() << '\0';
    for (const char* variable : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"})
        if (const char* value = std::getenv(variable))
            out << variable << '=' << value << '\0';
    writeSignals(out);
    writeDescriptors(out);
    out.close();
    fs::rename(folder / ('.' + name), folder / name);
    return 0;
}
