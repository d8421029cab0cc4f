// The walk over the nine places.
#include <algorithm>

#include "platform/machine.h"
#include "tests/proof/oracle/scan.h"

namespace bromvale::proof {
namespace {

constexpr std::size_t kMostData = 256;
constexpr std::size_t kLongestPath = 260;

struct Step {
    std::int32_t hive;
    View key;
};
constexpr Step kSteps[] = {
    {kUser, u"Software\\Classes\\CLSID"},
    {kMachine, u"Software\\Classes\\CLSID"},
    {kUser, u"Software\\Classes\\Interface"},
    {kMachine, u"Software\\Classes\\Interface"},
    {kUser, u"Software\\Classes\\TypeLib"},
    {kMachine, u"Software\\Classes\\TypeLib"},
    {kMachine, u"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths"},
    {kMachine, u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall"},
    {kUser, u"Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall"},
};

bool isTextType(std::uint32_t type) {
    return type == kText || type == kExpandText || type == kMultiText;
}

std::size_t ansiDataSize(const System& system, const Value& value) {
    return isTextType(value.type) ? ansi(system, textOf(value.bytes)).size() : value.bytes.size();
}

Text dataOf(const Value& value) {
    if (value.type != kText && value.type != kExpandText) return {};
    const Text text = textOf(value.bytes);
    return text.substr(0, text.find(u'\0'));
}

// The driver looks for the first "[", the first "]" and the first "=" of the whole line; with a "=" in the
// key the name of the entry before stays.
class Reader {
  public:
    explicit Reader(const Model& model) : model_(model) {}

    void walk(std::int32_t hive, const Text& path) {
        const Key* key = openKey(model_, hive, path);
        bool any = false;
        for (const Value& value : key == nullptr ? std::vector<Value>{} : key->values) {
            if (ansiDataSize(model_.system, value) > kMostData) break;
            add(hive, path, value.name, dataOf(value));
            any = true;
        }
        if (!any) add(hive, path, u"", key == nullptr ? Text() : defaultOf(*key));
        if (key == nullptr) return;
        for (const Key& below : key->keys) walk(hive, path + u"\\" + below.name);
    }
    std::vector<Line> lines;

  private:
    // A key whose list is empty is asked for its default value all the same; one that is too long gives
    // nothing.
    Text defaultOf(const Key& key) const {
        for (const Value& value : key.values) {
            if (value.name.empty() && ansiDataSize(model_.system, value) <= kMostData) return dataOf(value);
        }
        return {};
    }

    void add(std::int32_t hive, const Text& path, const Text& valueName, const Text& data) {
        // A key that is left alone is told from all others: a "]" in it cuts nothing.
        const bool lost = !isExactOn(model_.system.codePage, path);
        Text key = path;
        if (lost) std::replace(key.begin(), key.end(), u']', u'\uE000');
        const Text text = Text(u"[") + key + u"]" + (valueName.empty() ? u"@" : valueName) + u"=" + data;
        const std::size_t bracket = text.find(u']');
        const std::size_t equals = text.find(u'=');
        if (equals > bracket) name_ = text.substr(bracket + 1, equals - bracket - 1);
        lines.push_back({hive, text.substr(1, bracket), name_, text.substr(equals + 1), lost});
    }

    const Model& model_;
    Text name_;
};

constexpr View kRedirected[] = {u"clsid", u"interface"};

bool startsWith(const std::vector<Text>& names, std::initializer_list<View> start) {
    if (names.size() < start.size()) return false;
    return std::equal(start.begin(), start.end(), names.begin(),
                      [](View left, const Text& right) { return equalNoCase(left, right); });
}

Text joined(const std::vector<Text>& names, std::size_t first) {
    Text path;
    for (std::size_t i = first; i < names.size(); ++i) path += (path.empty() ? u"" : u"\\") + names[i];
    return path;
}

}  // namespace

std::vector<Line> collectLines(const Model& model) {
    Reader reader(model);
    for (const Step& step : kSteps) reader.walk(step.hive, Text(step.key));
    return reader.lines;
}

std::string ansi(const System& system, View text) {
    if (system.codePage == 1252) return nearest1252(text);
    if (std::all_of(text.begin(), text.end(), [](char16_t letter) { return letter < 0x80; }))
        return {text.begin(), text.end()};
    std::string result(text.size() * 4, '\0');
    const int written = WideCharToMultiByte(CP_ACP, 0, reinterpret_cast<const WCHAR*>(text.data()),
                                            static_cast<int>(text.size()), result.data(),
                                            static_cast<int>(result.size()), nullptr, nullptr);
    result.resize(static_cast<std::size_t>(written));
    return result;
}

Text realKeyPath(const System& system, std::int32_t hive, View path) {
    if (!system.sixtyFour || system.programSixtyFour) return Text(path);
    const std::vector<Text> names = split(path);
    if (startsWith(names, {u"software", u"classes"})) {
        const bool other =
            names.size() > 2 && std::any_of(std::begin(kRedirected), std::end(kRedirected),
                                            [&](View kind) { return equalNoCase(kind, names[2]); });
        return other ? u"Software\\Classes\\Wow6432Node\\" + joined(names, 2) : Text(path);
    }
    const bool shared =
        startsWith(names, {u"software", u"microsoft", u"windows", u"currentversion", u"app paths"});
    if (hive == kUser || shared || !startsWith(names, {u"software"}) || names.size() < 2) return Text(path);
    return u"Software\\Wow6432Node\\" + joined(names, 1);
}

const Key* openKey(const Model& model, std::int32_t hive, View path) {
    if (model.system.family != Family::Nine && path.size() > kLongestPath) return nullptr;
    const Key* key = model.hive(hive).find(realKeyPath(model.system, hive, path));
    return key == nullptr || key->denied ? nullptr : key;
}

}  // namespace bromvale::proof
