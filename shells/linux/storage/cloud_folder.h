#pragma once
// The folder that stands for the cloud, on whatever file system it lies. One that is down does not
// fail a call, it never ends it. So every question goes to a thread of its own and is given up
// after a while; from then on the folder is silent and is asked nothing else, until the question
// ends after all.

#include "shells/linux/posix/file_operations.h"
#include "shells/linux/storage/file_store.h"
#include "shells/linux/threading/timed_call.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace kestrel::linux_shell {

/// How long a question may take.
struct CloudTimeouts {
    std::chrono::milliseconds first{500}; ///< while the folder has not answered yet
    std::chrono::milliseconds later{100};
};

/// What stands under a key.
struct CloudValue {
    std::optional<std::string> data; ///< nothing where it cannot be read
    bool isHeld = false;             ///< something is there, readable or not
    bool hasFolder = false;
};

/// Main thread only. A question that was given up may end after this object, and uses the file
/// operations then.
class CloudFolder {
  public:
    /// `directory` is absolute, or empty when there is none. What a silent folder says of
    /// `watchedKey` when it answers again is kept for the next `read`.
    CloudFolder(FileOperations& operations, std::string directory, std::string watchedKey,
                CloudTimeouts timeouts = {});

    /// Waits for what is still to be written, but not longer than for a first answer.
    ~CloudFolder();

    CloudFolder(const CloudFolder&) = delete;
    CloudFolder& operator=(const CloudFolder&) = delete;

    /// Calls `handler` from the event loop each time that the folder has been silent and answers
    /// again.
    void whenItAnswersAgain(std::function<void()> handler) { answersAgain_ = std::move(handler); }

    /// Whether the folder is there. Of a silent one: whether it was when it last said so, which is
    /// not before its first answer. Were a folder that is merely slow taken for a missing one, the
    /// list that it holds would undo what the user has done meanwhile.
    bool exists();

    /// Nothing while the folder is silent.
    std::optional<CloudValue> read(std::string_view key);

    /// True when `data` is stored. What a silent folder is given is stored when it answers again,
    /// the last value of each key, unless the folder has never answered: then it is dropped.
    [[nodiscard]] bool write(std::string_view key, std::string_view data);

    /// What `question` returns, which runs on the folder's thread; nothing when it has not ended in
    /// time, or not begun because the folder is silent. As it may go on later, it must own what it
    /// uses.
    template <typename Question>
    auto ask(Question question) {
        using Answer = std::invoke_result_t<Question, FileStore&>;
        const auto answer = std::make_shared<std::optional<Answer>>();
        const bool isAnswered = run([answer, question = std::move(question)](FileStore& store) {
            *answer = question(store);
        });
        return isAnswered ? std::move(*answer) : std::nullopt;
    }

  private:
    struct State;

    /// True when `question` has ended in time.
    [[nodiscard]] bool run(std::function<void(FileStore&)> question);
    void takeInTheAnswer();

    CloudTimeouts timeouts_;
    std::string watchedKey_;
    std::function<void()> answersAgain_;
    QObject receiver_; ///< of what the folder's thread reports
    bool hasAnswered_ = false;
    bool wasThere_ = false;
    std::optional<CloudValue> late_;
    std::shared_ptr<State> state_;
    TimedCall call_;
};

} // namespace kestrel::linux_shell
