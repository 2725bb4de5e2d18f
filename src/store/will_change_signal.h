#pragma once
// The signal of an observable object: fires before every change of it. Whoever draws the object
// schedules a redraw when it fires and reads the new state then.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace kestrel {

namespace detail {
struct SignalState {
    std::uint64_t nextId = 0;
    std::map<std::uint64_t, std::shared_ptr<std::function<void()>>> handlers;
};
} // namespace detail

/// Ends a subscription when it is destroyed. May outlive the signal.
class Subscription {
  public:
    Subscription() = default;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    Subscription(Subscription&& other) noexcept;
    Subscription& operator=(Subscription&& other) noexcept;
    ~Subscription();

  private:
    friend class WillChangeSignal;
    Subscription(std::weak_ptr<detail::SignalState> state, std::uint64_t id);
    void cancel();

    std::weak_ptr<detail::SignalState> state_;
    std::uint64_t id_ = 0;
};

/// Main thread only.
class WillChangeSignal {
  public:
    WillChangeSignal();

    /// Calls `handler` at every firing until the token is destroyed, in the order of subscribing.
    [[nodiscard]] Subscription subscribe(std::function<void()> handler);

    /// Handlers may subscribe and unsubscribe meanwhile: new ones wait for the next firing, and
    /// one that has been unsubscribed is not called.
    void fire() const;

  private:
    std::shared_ptr<detail::SignalState> state_;
};

} // namespace kestrel
