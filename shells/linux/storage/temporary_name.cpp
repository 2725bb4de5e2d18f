#include "shells/linux/storage/temporary_name.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <fstream>
#include <string>

#include <sys/random.h>
#include <unistd.h>

namespace kestrel::linux_shell {

namespace {

// A name is "." target marker machine "-" process "-" number ".tmp", the machine and the process in
// eight hexadecimal digits and the number in decimal ones.
constexpr std::string_view marker = ".kestrel-";
constexpr std::string_view ending = ".tmp";
constexpr std::size_t tagLength = 8;

std::string hexadecimal(std::uint32_t value) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text(tagLength, '0');
    for (std::size_t i = 0; i < tagLength; ++i)
        text[tagLength - 1 - i] = digits[(value >> (4 * i)) & 0x0FU];
    return text;
}

/// FNV-1a.
std::uint32_t hash(std::string_view text) {
    std::uint32_t value = 2166136261U;
    for (const char character : text)
        value = (value ^ static_cast<unsigned char>(character)) * 16777619U;
    return value;
}

/// The machine's identity, or its name where it has none. It is only shown hashed: the identity
/// itself is not for others to see.
std::string machineIdentity() {
    std::string identity;
    std::ifstream file("/etc/machine-id");
    if (std::getline(file, identity) && !identity.empty())
        return identity;
    std::array<char, 256> name{};
    if (::gethostname(name.data(), name.size() - 1) == 0)
        identity = name.data();
    return identity;
}

const std::string& machineTag() {
    static const std::string tag = hexadecimal(hash("kestrel " + machineIdentity()));
    return tag;
}

const std::string& processTag() {
    static const std::string tag = [] {
        std::uint32_t value = 0;
        if (::getrandom(&value, sizeof value, 0) != static_cast<ssize_t>(sizeof value))
            value = static_cast<std::uint32_t>(::getpid());
        return hexadecimal(value);
    }();
    return tag;
}

bool isNumber(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

bool isTag(std::string_view text) {
    return text.size() == tagLength && std::ranges::all_of(text, [](char c) {
               return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
           });
}

} // namespace

std::string nextTemporaryName(std::string_view target) {
    static std::atomic<std::uint64_t> count = 0; // the stores write on threads of their own
    std::string name = ".";
    name += target;
    name += marker;
    name += machineTag() + '-' + processTag() + '-' + std::to_string(++count);
    name += ending;
    return name;
}

bool isTemporaryOfThisMachine(std::string_view name, std::string_view target) {
    std::string prefix = ".";
    prefix += target;
    prefix += marker;
    prefix += machineTag() + '-';
    if (!name.starts_with(prefix) || !name.ends_with(ending))
        return false;
    name.remove_prefix(prefix.size());
    if (name.size() < tagLength + 1 + ending.size())
        return false;
    name.remove_suffix(ending.size());
    return isTag(name.substr(0, tagLength)) && name[tagLength] == '-' &&
           isNumber(name.substr(tagLength + 1));
}

bool isTemporaryOfThisProcess(std::string_view name) {
    const std::string middle = std::string(marker) + machineTag() + '-' + processTag() + '-';
    const std::size_t position = name.rfind(middle);
    if (position == std::string_view::npos || !name.starts_with('.') || !name.ends_with(ending))
        return false;
    name.remove_prefix(position + middle.size());
    return name.size() > ending.size() && isNumber(name.substr(0, name.size() - ending.size()));
}

} // namespace kestrel::linux_shell
