#include "shells/macos/views/kit/redraw_schedule.h"

#include "shells/macos/desktop/main_queue.h"

#include <utility>

namespace kestrel::macos_shell {

RedrawSchedule::RedrawSchedule(WillChangeSignal& signal, std::function<void()> redraw)
    : redraw_(std::move(redraw)), willChange_(signal.subscribe([this] { request(); })) {}

void RedrawSchedule::request() {
    if (std::exchange(isDue_, true))
        return;
    DispatchMainQueue().async([weak = anchor_.weak()] {
        const auto self = weak.lock();
        if (!self)
            return;
        self->isDue_ = false;
        const auto redraw = self->redraw_; // a redraw may end the schedule
        redraw();
    });
}

} // namespace kestrel::macos_shell
