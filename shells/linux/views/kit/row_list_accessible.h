#pragma once
// What screen readers see of a RowList: a list with all of its rows, also those out of sight.

namespace kestrel::linux_shell {

class RowList;

/// Makes the lists known to the accessibility framework; further calls do nothing.
void installRowListAccessibility();

void announceRowsChanged(RowList& list);
void announceRowFocused(RowList& list, int row);

} // namespace kestrel::linux_shell
