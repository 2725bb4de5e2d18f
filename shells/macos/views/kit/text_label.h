#pragma once
// Lines of text that cannot be edited, and how much room they take.

#import <AppKit/AppKit.h>

#include "views/style.h"

namespace kestrel::macos_shell {

/// One line, as large as its text; what does not fit into a narrower frame is cut with an ellipsis
/// at the end, or where `lineBreakMode` is set to say.
NSTextField* lineLabel(NSString* text, const style::TextStyle& style);

/// As many lines as its frame's width makes necessary.
NSTextField* paragraphLabel(NSString* text, const style::TextStyle& style);

/// Centred, as large as its text: as few lines as `maximumWidth` points allow, as even as can be.
NSTextField* centeredParagraph(NSString* text, const style::TextStyle& style, CGFloat maximumWidth);

/// The size of the label's text when it may be at most `maximumWidth` points wide.
NSSize sizeOfLabel(NSTextField* label, CGFloat maximumWidth);

/// Whole points, so that text stands on the grid of every screen.
CGFloat centeredOrigin(CGFloat length, CGFloat available);

} // namespace kestrel::macos_shell
