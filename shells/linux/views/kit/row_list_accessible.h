#pragma once
// What screen readers see of a RowList: a list with all of its rows, also those out of sight.

namespace kestrel::linux_shell {

class RowList;

/// Makes the lists known to the accessibility framework; further calls do nothing.
void installRowListAccessibility();

void announceRowsChanged(RowList& list);

/// The current row has the focus; nothing when the list has not or has no such row.
void announceFocusedRow(RowList& list);

} // namespace kestrel::linux_shell
