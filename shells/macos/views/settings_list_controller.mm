#include "shells/macos/views/settings_list_controller.h"

#include "shells/macos/foundation/text.h"
#include "shells/macos/views/item_icon_image.h"
#include "shells/macos/views/item_row_cell_view.h"
#include "shells/macos/views/kit/accessibility.h"
#include "shells/macos/views/kit/hover_tracking.h"
#include "shells/macos/views/kit/style_bridge.h"
#include "views/accessible_texts.h"

#include <optional>
#include <vector>

using namespace kestrel;
using namespace kestrel::macos_shell;

namespace {

// What is dragged: an item's id, which stays true when the list changes meanwhile.
NSPasteboardType const itemType = @"app.kestrel.Kestrel.item";
NSUserInterfaceItemIdentifier const rowIdentifier = @"item";

} // namespace

@interface KSTSettingsListController ()
- (KSTSettingsListView*)makeTable;
- (std::optional<std::size_t>)positionOfRow:(NSInteger)row;
- (void)showPosition:(std::size_t)position in:(KSTItemRowCellView*)cell;
- (void)showSelection;
- (void)rowDoubleClicked:(id)sender;
@end

@implementation KSTSettingsListController {
    SettingsView* _state;
    std::vector<Uuid> _shownIds; // of the rows, as the table knows them
    KSTItemRowCellView* _measuringCell;
    KSTHoverTracker* _hover;
    BOOL _isShowingState;
}

- (instancetype)initWithState:(SettingsView&)state {
    if ((self = [super init])) {
        _state = &state;
        _measuringCell = [[KSTItemRowCellView alloc] initWithFrame:NSZeroRect];
        _table = [self makeTable];
    }
    return self;
}

- (KSTSettingsListView*)makeTable {
    KSTSettingsListView* const table = [[KSTSettingsListView alloc] initWithFrame:NSZeroRect];
    NSTableColumn* const column = [[NSTableColumn alloc] initWithIdentifier:rowIdentifier];
    column.resizingMask = NSTableColumnAutoresizingMask;
    [table addTableColumn:column];
    table.headerView = nil;
    table.style = NSTableViewStyleInset;
    table.columnAutoresizingStyle = NSTableViewUniformColumnAutoresizingStyle;
    table.allowsMultipleSelection = NO;
    table.allowsEmptySelection = YES;
    table.allowsTypeSelect = NO;
    table.focusRingType = NSFocusRingTypeNone; // the selection shows who has the keys
    table.dataSource = self;
    table.delegate = self;
    table.commands = self;
    table.target = self;
    table.doubleAction = @selector(rowDoubleClicked:);
    nameForAssistivePrograms(table, textFor(accessible_texts::itemList));
    [table registerForDraggedTypes:@[ itemType ]];
    [table setDraggingSourceOperationMask:NSDragOperationMove forLocal:YES];
    return table;
}

- (void)detach {
    _table.dataSource = nil;
    _table.delegate = nil;
    _table.commands = nil;
    _table.target = nil;
    _hover = nil;
}

// ---- rows

- (void)reload {
    _shownIds.clear();
    for (const LauncherItem& item : _state->items())
        _shownIds.push_back(item.id);
    _isShowingState = YES;
    [_table reloadData];
    _isShowingState = NO;
    [self showSelection];
    if (!_hover && _table.enclosingScrollView)
        _hover = [[KSTHoverTracker alloc] initWithList:_table];
}

- (void)refresh {
    for (NSInteger row = 0; row < _table.numberOfRows; ++row) {
        NSView* const view = [_table viewAtColumn:0 row:row makeIfNecessary:NO];
        const auto position = [self positionOfRow:row];
        if (position && [view isKindOfClass:KSTItemRowCellView.class])
            [self showPosition:*position in:static_cast<KSTItemRowCellView*>(view)];
    }
    [self showSelection];
}

- (void)showAddedRow {
    if (const auto row = _state->nextRowToShow())
        [_table scrollRowToVisible:static_cast<NSInteger>(*row)];
}

/// Where the item of a row stands now; nothing when it has gone since the table was filled.
- (std::optional<std::size_t>)positionOfRow:(NSInteger)row {
    if (row < 0 || static_cast<std::size_t>(row) >= _shownIds.size())
        return std::nullopt;
    const auto position = static_cast<std::size_t>(row);
    const Uuid& id = _shownIds[position];
    const ItemList& items = _state->items();
    if (position < items.size() && items[position].id == id)
        return position;
    return items.positionOf(id);
}

- (void)showPosition:(std::size_t)position in:(KSTItemRowCellView*)cell {
    const ItemRow row = _state->row(position);
    [cell showRow:row icon:itemIconImage(_state->manager().icon(row.item))];
}

- (NSInteger)numberOfRowsInTableView:(NSTableView*)tableView {
    (void)tableView;
    return static_cast<NSInteger>(_shownIds.size());
}

- (NSView*)tableView:(NSTableView*)tableView
    viewForTableColumn:(NSTableColumn*)tableColumn
                   row:(NSInteger)row {
    (void)tableColumn;
    KSTItemRowCellView* cell = [tableView makeViewWithIdentifier:rowIdentifier owner:self];
    if (!cell) {
        cell = [[KSTItemRowCellView alloc] initWithFrame:NSZeroRect];
        cell.identifier = rowIdentifier;
    }
    if (const auto position = [self positionOfRow:row])
        [self showPosition:*position in:cell];
    return cell;
}

// Rows that come under a resting pointer: after a reload, or later than the list was scrolled.
- (void)tableView:(NSTableView*)tableView
    didAddRowView:(NSTableRowView*)rowView
           forRow:(NSInteger)row {
    (void)tableView;
    (void)rowView;
    (void)row;
    [_hover rowsChanged];
}

- (CGFloat)tableView:(NSTableView*)tableView heightOfRow:(NSInteger)row {
    if (const auto position = [self positionOfRow:row])
        [_measuringCell showRow:_state->row(*position) icon:[[NSImage alloc] init]];
    NSTableColumn* const column = tableView.tableColumns.firstObject;
    return [_measuringCell heightForWidth:column.width];
}

- (void)tableViewColumnDidResize:(NSNotification*)notification {
    (void)notification;
    const auto count = static_cast<NSUInteger>(_table.numberOfRows);
    [NSAnimationContext beginGrouping];
    NSAnimationContext.currentContext.duration = 0;
    [_table
        noteHeightOfRowsWithIndexesChanged:[NSIndexSet
                                               indexSetWithIndexesInRange:NSMakeRange(0, count)]];
    [NSAnimationContext endGrouping];
}

// ---- selection

- (void)showSelection {
    NSIndexSet* rows = [NSIndexSet indexSet];
    for (std::size_t row = 0; row < _shownIds.size(); ++row) {
        if (_state->selectedID() == _shownIds[row]) {
            rows = [NSIndexSet indexSetWithIndex:row];
            break;
        }
    }
    if ([_table.selectedRowIndexes isEqualToIndexSet:rows])
        return;
    _isShowingState = YES;
    [_table selectRowIndexes:rows byExtendingSelection:NO];
    _isShowingState = NO;
    if (rows.count > 0)
        [_table scrollRowToVisible:static_cast<NSInteger>(rows.firstIndex)];
}

- (void)tableViewSelectionDidChange:(NSNotification*)notification {
    (void)notification;
    // What the table does with its selection while it is filled is not the user's.
    if (_isShowingState)
        return;
    const NSInteger row = _table.selectedRow;
    const bool isRow = row >= 0 && static_cast<std::size_t>(row) < _shownIds.size();
    _state->setSelectedID(isRow ? std::optional(_shownIds[static_cast<std::size_t>(row)])
                                : std::nullopt);
}

- (void)rowDoubleClicked:(id)sender {
    (void)sender;
    // A double click below the rows has no row.
    if (const auto position = [self positionOfRow:_table.clickedRow])
        _state->editItem(_state->items()[*position]);
}

// ---- dragging

- (id<NSPasteboardWriting>)tableView:(NSTableView*)tableView pasteboardWriterForRow:(NSInteger)row {
    (void)tableView;
    const auto position = [self positionOfRow:row];
    if (!position)
        return nil;
    NSPasteboardItem* const item = [[NSPasteboardItem alloc] init];
    [item setString:toNSString(_state->items()[*position].id.toString()) forType:itemType];
    return item;
}

- (NSDragOperation)tableView:(NSTableView*)tableView
                validateDrop:(id<NSDraggingInfo>)info
                 proposedRow:(NSInteger)row
       proposedDropOperation:(NSTableViewDropOperation)dropOperation {
    (void)dropOperation;
    if (info.draggingSource != tableView)
        return NSDragOperationNone;
    [tableView setDropRow:row dropOperation:NSTableViewDropAbove];
    return NSDragOperationMove;
}

- (BOOL)tableView:(NSTableView*)tableView
       acceptDrop:(id<NSDraggingInfo>)info
              row:(NSInteger)row
    dropOperation:(NSTableViewDropOperation)dropOperation {
    (void)tableView;
    (void)dropOperation;
    NSString* const text = [info.draggingPasteboard stringForType:itemType];
    const auto id = text ? Uuid::parse(toUtf8(text)) : std::nullopt;
    const auto source = id ? _state->items().positionOf(*id) : std::nullopt;
    if (!source || row < 0)
        return NO;
    // The row of a drop counts the dragged one where it still stands, as the state does.
    _state->moveRows({*source}, static_cast<std::size_t>(row));
    return YES;
}

// ---- commands

- (void)deleteSelectedRow {
    _state->deleteSelectedRow();
}

- (void)moveSelectedRow:(SettingsView::Direction)direction {
    _state->moveSelectedRow(direction);
}

- (void)moveSelection:(SettingsView::Step)step {
    _state->moveSelection(step, 1); // the page keys are the table's
}

- (void)editSelectedRow {
    _state->editSelectedRow();
}

- (void)typed:(NSString*)text {
    _state->typed(toUtf8(text));
}

@end
