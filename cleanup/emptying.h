#pragma once
#include <functional>

#include "cleanup/folder_paths.h"

namespace bromvale {

// The waiting window of an emptying, shown and painted before the work begins, which serves no events.
void showEmptyingWindow();

// Empties the folders of an open list, one a line; empty lines are passed over. Those that are left alone
// since their paths lead elsewhere go to `onRefused`.
void emptyListedFolders(int number, const std::function<void(const RefusedFolder&)>& onRefused);

}  // namespace bromvale
