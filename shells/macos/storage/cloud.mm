#include "shells/macos/storage/cloud.h"

#include "shells/macos/foundation/text.h"

#include <utility>

/// Hears of changes that other machines made. Every notification is the same to it, whatever
/// reason and keys it names.
@interface KSTICloudChangeObserver : NSObject
- (instancetype)initWithHandler:(std::function<void()>)handler;
- (void)handleICloudChange:(NSNotification*)notification;
@end

@implementation KSTICloudChangeObserver {
    std::function<void()> _handler;
}

- (instancetype)initWithHandler:(std::function<void()>)handler {
    if ((self = [super init])) {
        _handler = std::move(handler);
        [NSNotificationCenter.defaultCenter
            addObserver:self
               selector:@selector(handleICloudChange:)
                   name:NSUbiquitousKeyValueStoreDidChangeExternallyNotification
                 object:NSUbiquitousKeyValueStore.defaultStore];
    }
    return self;
}

/// Any thread.
- (void)handleICloudChange:(NSNotification*)notification {
    (void)notification;
    _handler();
}

@end

namespace kestrel::macos_shell {

std::optional<std::string> ICloudKeyValueStore::dataForKey(std::string_view key) {
    return toBytes([NSUbiquitousKeyValueStore.defaultStore dataForKey:toNSString(key)]);
}

void ICloudKeyValueStore::setData(std::string_view data, std::string_view key) {
    [NSUbiquitousKeyValueStore.defaultStore setData:toNSData(data) forKey:toNSString(key)];
}

bool ICloudKeyValueStore::synchronize() {
    return [NSUbiquitousKeyValueStore.defaultStore synchronize];
}

ICloud::ICloud() : observers_([NSMutableArray array]) {}

ICloud::~ICloud() {
    for (id observer in observers_)
        [NSNotificationCenter.defaultCenter removeObserver:observer];
}

bool ICloud::hasIdentityToken() {
    return NSFileManager.defaultManager.ubiquityIdentityToken != nil;
}

CloudKeyValueStore* ICloud::defaultStore() {
    return NSUbiquitousKeyValueStore.defaultStore != nil ? &store_ : nullptr;
}

void ICloud::addExternalChangeObserver(std::function<void()> handler) {
    [observers_ addObject:[[KSTICloudChangeObserver alloc] initWithHandler:std::move(handler)]];
}

} // namespace kestrel::macos_shell
