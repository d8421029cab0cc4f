#pragma once
#include <string>
#include <vector>

namespace bromvale {

// Sorts by character code, case counts, in place, and gives the list back. Failures are reported.
std::vector<std::string>& Sortiere(std::vector<std::string>& list);

// Sorts by exchanging neighbours, as Sortiere does with short lists; the order is the same. Returns, for
// tests, the passes that it took: none for one element, one for a sorted list, n - 1 for a reversed list of
// n. Failure 9 for a list without elements.
int sortByExchange(std::vector<std::string>& list);

}  // namespace bromvale
