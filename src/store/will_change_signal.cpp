#include "store/will_change_signal.h"

#include <utility>
#include <vector>

namespace kestrel {

Subscription::Subscription(std::weak_ptr<detail::SignalState> state, std::uint64_t id)
    : state_(std::move(state)), id_(id) {}

Subscription::Subscription(Subscription&& other) noexcept
    : state_(std::exchange(other.state_, {})), id_(other.id_) {}

Subscription& Subscription::operator=(Subscription&& other) noexcept {
    if (this != &other) {
        cancel();
        state_ = std::exchange(other.state_, {});
        id_ = other.id_;
    }
    return *this;
}

Subscription::~Subscription() { cancel(); }

void Subscription::cancel() {
    if (const auto state = state_.lock())
        state->handlers.erase(id_);
    state_.reset();
}

WillChangeSignal::WillChangeSignal() : state_(std::make_shared<detail::SignalState>()) {}

Subscription WillChangeSignal::subscribe(std::function<void()> handler) {
    const std::uint64_t id = state_->nextId++;
    state_->handlers.emplace(id, std::make_shared<std::function<void()>>(std::move(handler)));
    return {state_, id};
}

void WillChangeSignal::fire() const {
    // The state is held here because a handler may destroy the signal itself.
    const auto state = state_;
    std::vector<std::uint64_t> ids;
    ids.reserve(state->handlers.size());
    for (const auto& [id, handler] : state->handlers)
        ids.push_back(id);
    for (const std::uint64_t id : ids) {
        const auto found = state->handlers.find(id);
        if (found == state->handlers.end())
            continue;
        const auto handler = found->second;
        (*handler)();
    }
}

} // namespace kestrel
