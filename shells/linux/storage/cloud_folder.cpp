#include "shells/linux/storage/cloud_folder.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <utility>

namespace kestrel::linux_shell {

namespace {

CloudValue lookUp(const FileStore& store, std::string_view key) {
    CloudValue value{.data = store.read(key)};
    value.isHeld = value.data || store.holds(key);
    value.hasFolder = value.isHeld || store.exists();
    return value;
}

} // namespace

/// Shared with the thread that asks, which a question may hold for good. The mutex guards all but
/// the store, which belongs to the question under way.
struct CloudFolder::State {
    State(FileOperations& operations, std::string directory, std::string key)
        : store(operations, std::move(directory), MissingDirectory::fail),
          watchedKey(std::move(key)) {}

    FileStore store;
    const std::string watchedKey;
    std::mutex mutex;
    std::condition_variable written;
    std::function<void()> reportAnswer;
    std::map<std::string, std::string, std::less<>> unwritten; ///< the last value of each key
    std::optional<CloudValue> late; ///< of the watched key, when the folder answered again
    bool isSilent = false;          ///< the question asked last has not ended
    bool owesWrites = false;

    /// First what it has been given meanwhile, so that nobody finds an older value in the folder.
    void endSilence() {
        std::unique_lock lock(mutex);
        do {
            const auto values = std::exchange(unwritten, {});
            lock.unlock();
            for (const auto& [key, data] : values)
                static_cast<void>(store.write(key, data)); // nobody is left to tell of a failure
            CloudValue found = lookUp(store, watchedKey);
            lock.lock();
            late = std::move(found);
        } while (!unwritten.empty());
        isSilent = owesWrites = false;
        written.notify_all();
        if (reportAnswer)
            reportAnswer();
    }
};

CloudFolder::CloudFolder(FileOperations& operations, std::string directory, std::string watchedKey,
                         CloudTimeouts timeouts)
    : timeouts_(timeouts),
      watchedKey_(std::move(watchedKey)),
      state_(std::make_shared<State>(operations, std::move(directory), watchedKey_)) {
    state_->reportAnswer = [this] {
        QMetaObject::invokeMethod(
            &receiver_, [this] { takeInTheAnswer(); }, Qt::QueuedConnection);
    };
}

CloudFolder::~CloudFolder() {
    std::unique_lock lock(state_->mutex);
    state_->written.wait_for(lock, timeouts_.first, [this] { return !state_->owesWrites; });
    state_->reportAnswer = nullptr;
}

bool CloudFolder::run(std::function<void(FileStore&)> question) {
    {
        const std::lock_guard lock(state_->mutex);
        if (std::exchange(state_->isSilent, true))
            return false;
    }
    const bool isInTime =
        call_.run([state = state_, question = std::move(question)] { question(state->store); },
                  hasAnswered_ ? timeouts_.later : timeouts_.first,
                  [state = state_] { state->endSilence(); });
    if (!isInTime)
        return false;
    hasAnswered_ = true;
    const std::lock_guard lock(state_->mutex);
    state_->isSilent = false;
    return true;
}

void CloudFolder::takeInTheAnswer() {
    {
        const std::lock_guard lock(state_->mutex);
        late_ = std::exchange(state_->late, std::nullopt);
    }
    hasAnswered_ = true;
    wasThere_ = late_ ? late_->hasFolder : wasThere_;
    if (answersAgain_)
        answersAgain_();
}

bool CloudFolder::exists() {
    if (late_) {
        if (!late_->hasFolder)
            late_.reset();
    } else if (const auto found = ask([](const FileStore& store) { return store.exists(); })) {
        wasThere_ = *found;
    }
    return wasThere_;
}

std::optional<CloudValue> CloudFolder::read(std::string_view key) {
    if (late_ && key == watchedKey_)
        return std::exchange(late_, std::nullopt);
    return ask([key = std::string(key)](const FileStore& store) { return lookUp(store, key); });
}

bool CloudFolder::write(std::string_view key, std::string_view data) {
    late_.reset();
    {
        const std::lock_guard lock(state_->mutex);
        state_->late.reset();
        if (state_->isSilent) {
            if (wasThere_)
                state_->unwritten.insert_or_assign(std::string(key), std::string(data));
            state_->owesWrites = state_->owesWrites || wasThere_;
            return false;
        }
    }
    const auto isStored = ask([key = std::string(key), data = std::string(data)](FileStore& store) {
        return store.write(key, data);
    });
    if (isStored)
        return *isStored;
    const std::lock_guard lock(state_->mutex);
    state_->owesWrites = state_->isSilent;
    return false;
}

} // namespace kestrel::linux_shell
