#pragma once
// Draws the form in which an item is added or changed; the content of a sheet.

#import <AppKit/AppKit.h>

#include "views/settings/add_edit_item_view.h"

#include <memory>

/// Its title is the form's header: a window takes it over.
@interface KSTItemEditorViewController : NSViewController

/// Owns `form`, which is not null and whose `dismiss` is set. The form may be dismissed, and this
/// controller be let go, in any action of the user's.
- (instancetype)initWithForm:(std::unique_ptr<kestrel::AddEditItemView>)form
    NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithNibName:(NSNibName)nibNameOrNil
                         bundle:(NSBundle*)nibBundleOrNil NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

/// Where the keyboard starts.
@property(nonatomic, readonly) NSTextField* titleField;

@end
