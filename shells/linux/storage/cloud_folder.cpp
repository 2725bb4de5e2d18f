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
    std::optional<CloudValue> late; ///< of the watched key, when the folder spoke again
    bool hasEnded = false;          ///< the question asked last
    bool isSilent = false;
    bool owesWrites = false;

    void end() {
        std::unique_lock lock(mutex);
        hasEnded = true;
        if (isSilent)
            speakAgain(lock);
    }

    /// First what it has been given meanwhile, so that nobody finds an older value in the folder.
    void speakAgain(std::unique_lock<std::mutex>& lock) {
        do {
            const auto values = std::exchange(unwritten, {});
            lock.unlock();
            for (const auto& [key, data] : values)
                store.write(key, data);
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
                         CloudLimits limits)
    : limits_(limits),
      watchedKey_(std::move(watchedKey)),
      state_(std::make_shared<State>(operations, std::move(directory), watchedKey_)) {
    state_->reportAnswer = [this] {
        QMetaObject::invokeMethod(
            &receiver_, [this] { takeInTheAnswer(); }, Qt::QueuedConnection);
    };
}

CloudFolder::~CloudFolder() {
    std::unique_lock lock(state_->mutex);
    state_->written.wait_for(lock, limits_.first, [this] { return !state_->owesWrites; });
    state_->reportAnswer = nullptr;
}

bool CloudFolder::ask(std::function<void(FileStore&)> question) {
    {
        const std::lock_guard lock(state_->mutex);
        if (state_->isSilent)
            return false;
        state_->hasEnded = false;
    }
    const bool inTime = thread_.run(
        [state = state_, question = std::move(question)] {
            question(state->store);
            state->end();
        },
        hasAnswered_ ? limits_.later : limits_.first);
    const std::lock_guard lock(state_->mutex);
    // It may have ended in this very moment.
    state_->isSilent = !inTime && !state_->hasEnded;
    hasAnswered_ = hasAnswered_ || !state_->isSilent;
    return !state_->isSilent;
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
    const auto found = std::make_shared<bool>(false);
    if (late_) {
        if (!late_->hasFolder)
            late_.reset();
    } else if (ask([found](const FileStore& store) { *found = store.exists(); })) {
        wasThere_ = *found;
    }
    return wasThere_;
}

std::optional<CloudValue> CloudFolder::read(std::string_view key) {
    if (late_ && key == watchedKey_)
        return std::exchange(late_, std::nullopt);
    const auto found = std::make_shared<CloudValue>();
    const bool isAnswered = ask(
        [found, key = std::string(key)](const FileStore& store) { *found = lookUp(store, key); });
    return isAnswered ? std::optional(std::move(*found)) : std::nullopt;
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
    const auto isStored = std::make_shared<bool>(false);
    const bool isAnswered = ask([isStored, key = std::string(key), data = std::string(data)](
                                    FileStore& store) { *isStored = store.write(key, data); });
    if (isAnswered)
        return *isStored;
    const std::lock_guard lock(state_->mutex);
    state_->owesWrites = state_->isSilent;
    return false;
}

} // namespace kestrel::linux_shell
