#pragma once
// The strip of three buttons above the settings list.

#import <AppKit/AppKit.h>

#import "shells/macos/views/kit/rounded_fill_view.h"

#include "views/settings/settings_view.h"

@interface KSTSettingsToolbarView : KSTRoundedFillView

/// Points.
+ (CGFloat)height;

/// `state` lives at least as long as this view is shown.
- (instancetype)initWithFrame:(NSRect)frame
                        state:(kestrel::SettingsView&)state NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithFrame:(NSRect)frame
                        color:(NSColor*)color
                       radius:(CGFloat)radius NS_UNAVAILABLE;

/// Reads from the state which buttons are enabled.
- (void)updateNow;

@end
