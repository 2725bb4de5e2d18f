#pragma once
// A Qt event loop for one test, without sleeping: it waits for a condition, or takes in what is
// already there.

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>
#include <functional>

namespace kestrel::tests {

class EventLoop {
  public:
    /// False when `condition` did not come true within a limit far beyond what is ever needed.
    bool waitUntil(const std::function<bool()>& condition) {
        bool expired = false;
        QTimer limit;
        limit.setSingleShot(true);
        QObject::connect(&limit, &QTimer::timeout, [&expired] { expired = true; });
        limit.start(std::chrono::seconds(20));
        while (!condition() && !expired)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return condition();
    }

    /// Handles all that the kernel has already queued. File events are queued before the call that
    /// causes them returns, so whatever a test has done is known afterwards.
    void takeInWhatIsThere() {
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents();
    }

  private:
    int argumentCount_ = 1;
    char name_[8] = "kestrel";
    char* arguments_[2] = {name_, nullptr};
    QCoreApplication application_{argumentCount_, arguments_};
};

} // namespace kestrel::tests
