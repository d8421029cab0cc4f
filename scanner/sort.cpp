#include "scanner/sort.h"

#include <algorithm>

#include "base/failure.h"
#include "core/routine.h"

namespace bromvale {
namespace {

// Up to this length a list is sorted by exchange.
constexpr std::size_t kExchangeLimit = 256;

constexpr Routine kRoutine{{"modSort", "Sortiere"}};

}  // namespace

// Bubble sort whose end moves down to the last exchange of each pass.
int sortByExchange(std::vector<std::string>& list) {
    if (list.empty()) raise(9);
    int passes = 0;
    std::size_t upper = list.size() - 1;
    while (upper > 0) {
        std::size_t last = 0;
        for (std::size_t i = 0; i < upper; ++i) {
            if (list[i] > list[i + 1]) {
                list[i].swap(list[i + 1]);
                last = i;
            }
        }
        upper = last;
        ++passes;
    }
    return passes;
}

// The entries of three thousand programs would hold the window for a second and more, and the time grows with
// the square of their number. Every exchange brings two neighbours of which the first is greater into order
// and leaves equal ones alone; the sort ends when there is no such pair left. So it ends in the one ascending
// order in which equal texts stand as they stood before, which is what a stable sort by the same comparison
// gives as well, in n log n comparisons.
std::vector<std::string>& Sortiere(std::vector<std::string>& list) {
    kRoutine.step([&] {
        if (list.size() > kExchangeLimit) {
            std::stable_sort(list.begin(), list.end());
        } else {
            static_cast<void>(sortByExchange(list));
        }
    });
    return list;
}

}  // namespace bromvale
