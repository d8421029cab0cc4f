#include "scanner/sort.h"

#include "core/handling.h"
#include "core/runtime.h"

namespace bromvale {

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

std::vector<std::string>& Sortiere(std::vector<std::string>& list) {
    attempt(reportAndGoOn({"modSort", "Sortiere"}), [&] { static_cast<void>(sortByExchange(list)); });
    return list;
}

}  // namespace bromvale
