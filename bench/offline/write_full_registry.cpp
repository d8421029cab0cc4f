// write_full_registry FILE.reg: the registry of a used system's size and shape that the tests make.
#include <fstream>

#include "tests/offline/full_registry.h"

int main(int count, char** words) {
    if (count != 2) return 2;
    std::ofstream(words[1], std::ios::binary) << bromvale::testing::makeFullRegistry().file;
    return 0;
}
