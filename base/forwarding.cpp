#include "base/forwarding.h"

#include <algorithm>
#include <vector>

namespace bromvale {
namespace {

// "http://host:80", "/folder/file", "?query": each with its sign, any of them empty but the first.
struct AddressParts {
    std::string_view place;
    std::string_view path;
    std::string_view query;
};

AddressParts partsOf(std::string_view address) {
    address = address.substr(0, address.find('#'));
    const std::size_t scheme = address.find("://");
    const std::size_t host = scheme == std::string_view::npos ? 0 : scheme + 3;
    const std::size_t path = std::min(address.find_first_of("/?", host), address.size());
    const std::size_t query = std::min(address.find('?', path), address.size());
    return {address.substr(0, path), address.substr(path, query - path), address.substr(query)};
}

std::string_view schemeOf(std::string_view address) {
    const std::size_t colon = address.find(':');
    const std::size_t end = address.find_first_of("/?#");
    return colon != std::string_view::npos && colon > 0 && colon < end ? address.substr(0, colon + 1)
                                                                       : std::string_view();
}

// Takes "." and ".." out; a ".." above the top is dropped.
std::string withoutSteps(std::string_view path) {
    std::vector<std::string_view> names;
    std::string_view last;
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::size_t end = std::min(path.find('/'), path.size());
        last = path.substr(0, end);
        path.remove_prefix(end);
        if (last == ".." && !names.empty()) names.pop_back();
        if (last != "." && last != "..") names.push_back(last);
    }
    std::string result;
    for (const std::string_view name : names) result.append("/").append(name);
    // A path that ends in a step leads to a folder.
    return last == "." || last == ".." || result.empty() ? result + "/" : result;
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') text.remove_prefix(1);
    while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ') text.remove_suffix(1);
    return text;
}

}  // namespace

bool isForwarding(int status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

std::string forwardedAddress(std::string_view from, std::string_view location) {
    location = trimmed(location);
    if (!schemeOf(location).empty()) return std::string(location);
    if (location.starts_with("//")) return std::string(schemeOf(from)).append(location);
    const AddressParts base = partsOf(from);
    const std::string_view wanted = location.substr(0, location.find('#'));
    const std::size_t query = std::min(wanted.find('?'), wanted.size());
    std::string path(wanted.substr(0, query));
    const bool samePage = path.empty();
    if (samePage) path = base.path;
    const std::size_t folder = base.path.rfind('/');
    if (!path.starts_with('/')) {
        path.insert(0, folder == std::string_view::npos ? "/" : base.path.substr(0, folder + 1));
    }
    const bool ownQuery = samePage && query == wanted.size();
    return std::string(base.place)
        .append(withoutSteps(path))
        .append(ownQuery ? base.query : wanted.substr(query));
}

}  // namespace bromvale
