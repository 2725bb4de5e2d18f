#pragma once
// Cloud on the key-value store of the program's own iCloud container.

#import <Foundation/Foundation.h>

#include "platform/cloud.h"

namespace kestrel::macos_shell {

/// Each call asks the system for its default store anew.
class ICloudKeyValueStore final : public CloudKeyValueStore {
  public:
    std::optional<std::string> dataForKey(std::string_view key) override;
    void setData(std::string_view data, std::string_view key) override;
    bool synchronize() override;
};

class ICloud final : public Cloud {
  public:
    ICloud();

    /// Ends the observations; a handler that runs on another thread meanwhile runs to its end.
    ~ICloud() override;
    ICloud(const ICloud&) = delete;
    ICloud& operator=(const ICloud&) = delete;

    bool hasIdentityToken() override;
    CloudKeyValueStore* defaultStore() override;
    void addExternalChangeObserver(std::function<void()> handler) override;

  private:
    ICloudKeyValueStore store_;
    NSMutableArray* observers_; // the notification centre holds them weakly
};

} // namespace kestrel::macos_shell
