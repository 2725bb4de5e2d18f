// Preloaded into a program (round_trips.py), this counts how often it waits for the X server's
// answer. Each such wait is a line "trip" in the file that KESTREL_ROUND_TRIPS_FILE names, each
// window that the program shows a line "show 0x...", in the order in which they happen.
//
// One wait is one round trip: what was sent before a wait is answered together with it, so a wait
// for an answer to one of those questions is none of its own. A question and its answer are known
// by the number that the connection gives the request.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <mutex>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

namespace {

/// The library's own function that one of those below stands in front of.
template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

class Counter {
  public:
    void sent(std::uint64_t request) {
        const std::lock_guard lock(mutex_);
        lastSent_ = widened(request);
    }

    void waitsFor(std::uint64_t request) {
        const std::lock_guard lock(mutex_);
        const auto number = widened(request);
        if (number <= answered_)
            return;
        answered_ = number > lastSent_ ? number : lastSent_;
        if (file_ != nullptr)
            std::fputs("trip\n", file_);
    }

    void shows(xcb_window_t window) {
        const std::lock_guard lock(mutex_);
        if (file_ != nullptr)
            std::fprintf(file_, "show 0x%x\n", static_cast<unsigned>(window));
    }

  private:
    static std::FILE* opened() {
        const char* name = std::getenv("KESTREL_ROUND_TRIPS_FILE");
        std::FILE* file = name != nullptr ? std::fopen(name, "ae") : nullptr;
        if (file != nullptr)
            std::setvbuf(file, nullptr, _IOLBF, BUFSIZ);
        return file;
    }

    /// A number of 32 bits, as most functions have them, is one near the last that was sent.
    std::uint64_t widened(std::uint64_t request) const {
        constexpr unsigned bits = 32;
        if ((request >> bits) != 0)
            return request;
        return lastSent_ +
               static_cast<std::uint64_t>(static_cast<std::int64_t>(static_cast<std::int32_t>(
                   static_cast<std::uint32_t>(request) - static_cast<std::uint32_t>(lastSent_))));
    }

    std::mutex mutex_;
    std::FILE* file_ = opened();
    std::uint64_t lastSent_ = 0;
    std::uint64_t answered_ = 0;
};

Counter& counter() {
    static Counter one;
    return one;
}

} // namespace

extern "C" {

unsigned int xcb_send_request(xcb_connection_t* c, int flags, struct iovec* vector,
                              const xcb_protocol_request_t* request) {
    static auto* const real = next<decltype(xcb_send_request)>("xcb_send_request");
    const auto number = real(c, flags, vector, request);
    counter().sent(number);
    return number;
}

std::uint64_t xcb_send_request64(xcb_connection_t* c, int flags, struct iovec* vector,
                                 const xcb_protocol_request_t* request) {
    static auto* const real = next<decltype(xcb_send_request64)>("xcb_send_request64");
    const auto number = real(c, flags, vector, request);
    counter().sent(number);
    return number;
}

void* xcb_wait_for_reply(xcb_connection_t* c, unsigned int request, xcb_generic_error_t** error) {
    static auto* const real = next<decltype(xcb_wait_for_reply)>("xcb_wait_for_reply");
    counter().waitsFor(request);
    return real(c, request, error);
}

void* xcb_wait_for_reply64(xcb_connection_t* c, std::uint64_t request,
                           xcb_generic_error_t** error) {
    static auto* const real = next<decltype(xcb_wait_for_reply64)>("xcb_wait_for_reply64");
    counter().waitsFor(request);
    return real(c, request, error);
}

xcb_generic_error_t* xcb_request_check(xcb_connection_t* c, xcb_void_cookie_t cookie) {
    static auto* const real = next<decltype(xcb_request_check)>("xcb_request_check");
    counter().waitsFor(cookie.sequence);
    return real(c, cookie);
}

xcb_void_cookie_t xcb_map_window(xcb_connection_t* c, xcb_window_t window) {
    static auto* const real = next<decltype(xcb_map_window)>("xcb_map_window");
    counter().shows(window);
    return real(c, window);
}

} // extern "C"
