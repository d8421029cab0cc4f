#pragma once

namespace bromvale {

// The waiting window of an emptying, shown and painted before the work begins, which serves no events.
void showEmptyingWindow();

// Empties the folders of an open list, one a line; empty lines are passed over.
void emptyListedFolders(int number);

}  // namespace bromvale
