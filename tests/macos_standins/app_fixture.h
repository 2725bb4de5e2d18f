#pragma once
// The whole shell over the recording stand-ins, as the entry makes it.

#import <AppKit/AppKit.h>

#include "app/app_delegate.h"
#include "shells/macos/app_delegate.h"
#include "tests/macos_standins/macos_fixture.h"

namespace kestrel::tests {

class AppFixture : public MacosFixture {
  protected:
    KSTAppDelegate* delegate = nil;

    ~AppFixture() override;

    /// What the entry does, but for running the event loop.
    void makeDelegate();

    /// And what the application says once it runs, with the loaded list handed over.
    void launch();

    ItemsManager& manager() { return delegate.core->itemsManager(); }
    void addItems(int count);

    /// The one status item's.
    static NSStatusBarButton* button();

    /// The windows that the program opened itself; popovers and bars are none.
    static NSArray<NSWindow*>* ordinaryWindows();
};

} // namespace kestrel::tests
