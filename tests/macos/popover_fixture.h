#pragma once
// The popover's view controller in a window of its own, and looking into its views.

#include "shells/macos/views/kit/rounded_fill_view.h"
#include "shells/macos/views/menu_popover_view_controller.h"
#include "shells/macos/views/popover_list_view.h"
#include "tests/macos/views_support.h"
#include "tests/macos/window_with_pointer.h"

#include <memory>
#include <string>
#include <vector>

namespace kestrel::tests {

class MacPopoverFixture : public MacViewsFixture {
  protected:
    void SetUp() override {
        MacViewsFixture::SetUp();
        show();
    }

    void TearDown() override {
        window_.reset();
        controller_ = nil;
    }

    /// Makes the controller anew for what the store holds now.
    void show() {
        window_.reset();
        MenuPopoverView::Callbacks callbacks{.onOpenSettings = [this] { log.add("settings"); },
                                             .onQuit = [this] { log.add("quit"); },
                                             .onClose = [this] { log.add("close"); }};
        auto view =
            std::make_unique<MenuPopoverView>(manager, mainQueue, clock, std::move(callbacks));
        view_ = view.get();
        controller_ =
            [[KSTMenuPopoverViewController alloc] initWithMenuPopoverView:std::move(view)];
        window_ = std::make_unique<WindowWithPointer>(controller_);
        [controller_ viewWillAppear];
    }

    KSTPopoverListView* list() { return findView<KSTPopoverListView>(controller_.view); }
    KSTPopoverRowView* row(NSUInteger position) { return list().rows[position]; }
    NSScrollView* scrollView() { return findView<NSScrollView>(controller_.view); }

    NSButton* button(const std::string& name) { return buttonWith(controller_.view, name); }

    /// What the key bindings of the system make of letters.
    void type(NSString* letters) {
        [(id<NSStandardKeyBindingResponding>)controller_ insertText:letters];
    }

    std::vector<std::string> shownTitles() {
        std::vector<std::string> result;
        for (KSTPopoverRowView* row in list().rows)
            result.push_back(textOf(findView<NSTextField>(row).stringValue));
        return result;
    }

    /// The pointer moves into the middle of that row.
    void pointAt(NSUInteger position) {
        const NSRect bounds = row(position).bounds;
        const NSPoint middle = NSMakePoint(bounds.size.width / 2, bounds.size.height / 2);
        window_->movePointer(middle, row(position), list());
    }
    void pointElsewhere() { window_->takePointerFrom(list()); }

    /// The row whose highlight can be seen; -1 when none can.
    long highlightedRow() {
        long result = -1;
        for (KSTPopoverRowView* row in list().rows) {
            if (!findView<KSTRoundedFillView>(row).hidden) {
                EXPECT_EQ(result, -1) << "two rows are highlighted";
                result = static_cast<long>(row.position);
            }
        }
        return result;
    }

    MenuPopoverView* view_ = nullptr;
    KSTMenuPopoverViewController* controller_ = nil;
    std::unique_ptr<WindowWithPointer> window_;
};

} // namespace kestrel::tests
