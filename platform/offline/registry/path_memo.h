// Remembers the keys along the last path that was walked. Scans and registry files go from neighbour to
// neighbour, so most of a path was just walked: the memo turns its seven look-ups into one or two.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace bromvale::offline {

class RegistryKey;

class RegistryPathMemo {
  public:
    // The deepest remembered key along `path`, and how many characters of the path lead to it. `from` when
    // there is none. From here on the memo is about this path.
    RegistryKey* resume(RegistryKey* from, std::string_view path, std::size_t& covered) {
        std::size_t common = 0;
        if (from == from_) {
            common = commonLength(path, path_);
            while (!steps_.empty() && !leadsAlong(steps_.back(), path, common)) steps_.pop_back();
        } else {
            from_ = from;
            steps_.clear();
        }
        path_.resize(common);
        path_.append(path.substr(common));
        covered = steps_.empty() ? 0 : steps_.back().end;
        return steps_.empty() ? from : steps_.back().key;
    }

    // The path's first `end` characters lead to `key`.
    void add(std::size_t end, RegistryKey* key) { steps_.push_back({end, key}); }

    // Must be called before a key is freed.
    void clear() {
        from_ = nullptr;
        path_.clear();
        steps_.clear();
    }

  private:
    struct Step {
        std::size_t end;
        RegistryKey* key;
    };

    static bool leadsAlong(const Step& step, std::string_view path, std::size_t common) {
        return step.end <= common && (step.end == path.size() || path[step.end] == '\\');
    }

    static std::size_t commonLength(std::string_view left, std::string_view right) {
        const std::size_t size = std::min(left.size(), right.size());
        std::size_t i = 0;
        while (i + 8 <= size && std::memcmp(left.data() + i, right.data() + i, 8) == 0) i += 8;
        while (i < size && left[i] == right[i]) ++i;
        return i;
    }

    RegistryKey* from_ = nullptr;
    std::string path_;
    std::vector<Step> steps_;
};

}  // namespace bromvale::offline
