#pragma once
// The system calls that storage makes, one virtual function each, so that tests can make any of
// them fail or end the process there. The functions behave as the calls they are named after:
// -1 and `errno` on failure. Stateless; whoever is given one borrows it for life.

#include <cstddef>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <sys/types.h>

namespace kestrel::linux_shell {

/// How many links one path may lead through: as many as Linux follows itself (path_resolution(7)).
inline constexpr int linkLimit = 40;

class FileOperations {
  public:
    virtual ~FileOperations() = default;

    virtual int openAt(int directory, const char* name, int flags, mode_t mode);
    virtual int close(int descriptor);
    virtual ssize_t read(int descriptor, char* buffer, std::size_t size);
    virtual ssize_t write(int descriptor, const char* bytes, std::size_t size);
    virtual int sync(int descriptor);
    /// Takes the file for this process until its descriptor is closed; EWOULDBLOCK where another
    /// process has it.
    virtual int lock(int descriptor);
    virtual int status(int descriptor, struct stat& status);
    /// Of the name itself, be it a link.
    virtual int statusAt(int directory, const char* name, struct stat& status);
    /// Of what the path leads to, through links.
    virtual int statusOfPath(const char* path, struct stat& status);
    virtual int changeModeAt(int directory, const char* name, mode_t mode);
    virtual ssize_t readLinkAt(int directory, const char* name, char* buffer, std::size_t size);
    virtual int renameAt(int directory, const char* from, const char* to);
    virtual int unlinkAt(int directory, const char* name);
    virtual int makeDirectory(const char* path, mode_t mode);

    /// The names in an open directory, in no order; empty when it cannot be listed.
    virtual std::vector<std::string> list(int directory);
};

/// The operations of this system, alive until the process ends.
FileOperations& systemFileOperations();

} // namespace kestrel::linux_shell
