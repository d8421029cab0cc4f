// The callers' addresses are looked up in the symbols of this program.
#include "tests/proof/faults/provider_code.h"

#include <elf.h>
#include <execinfo.h>
#include <fcntl.h>
#include <link.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>
#include <vector>

namespace bromvale::proof {
namespace {

struct Range {
    std::uintptr_t start;
    std::uintptr_t end;
    bool provider;  // else the program's
};

// Windows' functions stand in no namespace or in the program's own.
bool isProvider(std::string_view symbol) {
    if (symbol.find("8bromvale7offline") != std::string_view::npos) return true;
    constexpr std::string_view kOfTheProgramsNamespace[] = {"WebAnswer", "openDownloadDialog",
                                                            "askWhereToSave", "openConnection"};
    // The second one is that of functions that leave their object as it is.
    for (const std::string_view plain : {"_ZN8bromvale", "_ZNK8bromvale"}) {
        if (!symbol.starts_with(plain)) continue;
        symbol.remove_prefix(plain.size());
        symbol.remove_prefix(std::min(symbol.find_first_not_of("0123456789"), symbol.size()));
        return std::any_of(std::begin(kOfTheProgramsNamespace), std::end(kOfTheProgramsNamespace),
                           [symbol](std::string_view name) { return symbol.starts_with(name); });
    }
    // A function in no namespace: "_Z" and the length of its name.
    return symbol.starts_with("_Z") && symbol.size() > 2 && symbol[2] >= '1' && symbol[2] <= '9';
}

bool isProgram(std::string_view symbol) {
    return symbol.find("8bromvale") != std::string_view::npos &&
           symbol.find("8bromvale5proof") == std::string_view::npos &&
           symbol.find("8bromvale7testing") == std::string_view::npos;
}

std::uintptr_t baseOfProgram() {
    std::uintptr_t base = 0;
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* data) {
            *static_cast<std::uintptr_t*>(data) = info->dlpi_addr;
            return 1;  // the first one is the program
        },
        &base);
    return base;
}

// For as long as the process lives; null where it can't be read.
const char* mappedProgram() {
    const int file = ::open("/proc/self/exe", O_RDONLY | O_CLOEXEC);
    struct stat state {};
    if (file < 0 || ::fstat(file, &state) != 0) return nullptr;
    void* image = ::mmap(nullptr, static_cast<std::size_t>(state.st_size), PROT_READ, MAP_PRIVATE, file, 0);
    ::close(file);
    return image == MAP_FAILED ? nullptr : static_cast<const char*>(image);
}

std::vector<Range> readRanges() {
    std::vector<Range> ranges;
    const char* image = mappedProgram();
    if (image == nullptr) return ranges;
    Elf64_Ehdr header;
    std::memcpy(&header, image, sizeof header);
    std::vector<Elf64_Shdr> sections(header.e_shnum);
    std::memcpy(sections.data(), image + header.e_shoff, sections.size() * sizeof(Elf64_Shdr));
    const std::uintptr_t base = baseOfProgram();
    for (const Elf64_Shdr& section : sections) {
        if (section.sh_type != SHT_SYMTAB) continue;
        const char* names = image + sections[section.sh_link].sh_offset;
        for (std::size_t at = 0; at < section.sh_size; at += sizeof(Elf64_Sym)) {
            Elf64_Sym symbol;
            std::memcpy(&symbol, image + section.sh_offset + at, sizeof symbol);
            if (ELF64_ST_TYPE(symbol.st_info) != STT_FUNC || symbol.st_size == 0) continue;
            const std::string_view name = names + symbol.st_name;
            const bool provider = isProvider(name);
            if (provider || isProgram(name))
                ranges.push_back({base + symbol.st_value, base + symbol.st_value + symbol.st_size, provider});
        }
    }
    std::sort(ranges.begin(), ranges.end(),
              [](const Range& left, const Range& right) { return left.start < right.start; });
    return ranges;
}

}  // namespace

// The innermost caller that is one of either decides: the provider calls handlers of the program, too.
bool calledByProvider() {
    static const std::vector<Range> ranges = readRanges();
    constexpr int kDeepest = 64;
    void* callers[kDeepest];
    const int count = ::backtrace(callers, kDeepest);
    for (int i = 0; i < count; ++i) {
        const auto address = reinterpret_cast<std::uintptr_t>(callers[i]);
        const auto behind =
            std::upper_bound(ranges.begin(), ranges.end(), address,
                             [](std::uintptr_t sought, const Range& range) { return sought < range.start; });
        if (behind != ranges.begin() && address <= std::prev(behind)->end) return std::prev(behind)->provider;
    }
    return true;  // the test's own
}

}  // namespace bromvale::proof
