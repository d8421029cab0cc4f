// What is a fault.
#include <algorithm>

#include "tests/proof/oracle/scan.h"

namespace bromvale::proof {
namespace {

constexpr View kWindowsFolder = u"C:\\WINDOWS\\";
constexpr View kProgramsFolder = u"C:\\Programme\\";

// From 1 on; 0 where it isn't found.
std::size_t position(View text, View sought) {
    const std::size_t at = text.find(sought);
    return at == View::npos ? 0 : at + 1;
}

void replaceAll(Text& text, View old, View by) {
    for (std::size_t at = text.find(old); at != Text::npos; at = text.find(old, at + by.size()))
        text.replace(at, old.size(), by);
}

Text normalised(const Text& value) {
    Text v = lower(View(value));
    replaceAll(v, u"%systemroot%", kWindowsFolder);
    replaceAll(v, u"%programmfiles%", kProgramsFolder);
    replaceAll(v, u"%windir%", kWindowsFolder);
    replaceAll(v, u"\"", u"");
    if (const std::size_t p = position(v, u":\\"); p > 1) v = v.substr(p - 2);
    for (const View ending : {u".exe", u".dll", u".ocx"}) {
        if (const std::size_t p = position(v, ending); p > 1) v = v.substr(0, p + 3);
    }
    return v;
}

bool isAtFilePlace(const Text& key, const Text& name) {
    for (const View place : {u"inprocserver32", u"inprochandler32", u"localserver32", u"command", u"win32"}) {
        if (position(key, place) >= 2) return true;
    }
    return position(key, u"app paths") >= 2 && name == u"@";
}

bool belongsToNoObject(const Text& key) {
    const std::size_t a = position(key, u"}");
    const std::size_t b = position(key, u"app paths\\");
    const std::size_t c = position(key, u"uninstall\\");
    return a <= 1 && b <= 1 && (c <= 1 || c + 1 >= key.size());
}

View nameOfHive(std::int32_t hive) {
    return hive == kUser ? u"HKEY_CURRENT_USER" : u"HKEY_LOCAL_MACHINE";
}

}  // namespace

Findings Oracle::scan(const Model& model) {
    model_ = &model;
    found_.clear();
    const std::vector<Line> lines = collectLines(model);
    for (std::size_t i = 0; i < lines.size();) {
        checkReg(lines[i]);
        checkLink(lines[i]);
        if (!repeat_) ++i;
        repeat_ = false;
    }
    if (leftAlone_) std::erase_if(found_, [this](const Found& found) { return found.group == number_; });
    Findings findings;
    for (Found& found : found_) {
        findings.rows.push_back(std::move(found.row));
        findings.targets.push_back(std::move(found.target));
    }
    findings.entries = static_cast<int>(lines.size());
    return findings;
}

Text Oracle::prefixOf(const Text& key, View appPaths) const {
    if (const std::size_t brace = position(key, u"}"); brace >= 2) return key.substr(0, brace);
    if (position(key, appPaths) >= 2) return key.substr(0, key.find(u']'));
    if (position(key, u"uninstall") >= 2) return key;
    return prefix_;
}

void Oracle::checkReg(const Line& line) {
    const Text key = lower(View(line.key));
    if (belongsToNoObject(key)) {
        open_ = false;
        return;
    }
    if (!open_) prefix_ = prefixOf(key, u"app paths\\");
    if (key.find(prefix_) != Text::npos) {
        group_.push_back(line);
        open_ = true;
        leftAlone_ = leftAlone_ || line.lostName;
        return;
    }
    prefix_ = prefixOf(key, u"app paths");
    repeat_ = true;
    close(line);
}

void Oracle::close(const Line& next) {
    if (leftAlone_) std::erase_if(found_, [this](const Found& found) { return found.group == number_; });
    for (std::size_t i = 0; !leftAlone_ && i < group_.size() && !checkFile(next, i); ++i) {
    }
    forgetGroup();
}

void Oracle::forgetGroup() {
    group_.clear();
    leftAlone_ = false;
    ++number_;
}

// True where the entry decided for the whole group.
bool Oracle::checkFile(const Line& next, std::size_t index) {
    const Line entry = group_[index];
    const std::size_t n = group_.size();
    if (n == 1 && entry.name == u"@" && entry.value.empty()) {
        add(next.hive, true, entry, true, false);
        return true;
    }
    const Text key = lower(View(entry.key));
    const Text v = normalised(entry.value);
    const bool form = position(v, u":\\") >= 2 || v.starts_with(u"\\\\");
    if (isAtFilePlace(key, entry.name) && form && entry.name != u"ThreadingModel") {
        // A text that lost letters on its way clears the object like a file that was found, also where the
        // cuts took them off: what stood there may have belonged to the path.
        if (!isExactOn(model_->system.codePage, entry.value) || fileExists(*model_, v)) return true;
        for (std::size_t j = n; j-- > 0;) add(next.hive, true, group_[j], true, true);
        return true;
    }
    if (position(key, u"uninstall") >= 2 && n == 1 && entry.name != u"SystemComponent" &&
        entry.name != u"UninstallString") {
        add(next.hive, true, entry, true, false);
        return true;
    }
    return false;
}

void Oracle::checkLink(const Line& line) {
    const Text& value = line.value;
    if (line.name != u"@" || value.empty() || value.front() != u'{' || value.back() != u'}') return;
    struct Kind {
        View ending;
        View path;
        bool slash;
    };
    constexpr Kind kKinds[] = {{u"}\\typelib]", u"Software\\Classes\\TypeLib\\", true},
                               {u"}\\clsid]", u"Software\\Classes\\clsid\\", false},
                               {u"}\\interface]", u"Software\\Classes\\interface\\", false}};
    const Text key = lower(View(line.key));
    const auto* const kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                          [&](const Kind& row) { return position(key, row.ending) >= 2; });
    if (kind == std::end(kKinds) || !isExactOn(model_->system.codePage, value)) return;
    const Text path = Text(kind->path) + value;
    if (openKey(*model_, kMachine, path) != nullptr || openKey(*model_, kUser, path) != nullptr) return;
    if (group_.size() > 2) return add(line.hive, kind->slash, line, false, false);
    for (std::size_t i = group_.size(); i-- > 0;) {
        Line entry = group_[i];
        entry.hive = line.hive;
        add(line.hive, kind->slash, entry, false, false);
    }
}

void Oracle::add(std::int32_t hiveNamed, bool slash, const Line& entry, bool quoted, bool doubled) {
    const System& system = model_->system;
    std::string data;
    for (const char16_t letter : entry.value) {
        // What has become a backslash is doubled like one; the second byte of a letter isn't.
        const std::string byte = ansi(system, View(&letter, 1));
        data += doubled && byte == "\\" ? "\\\\" : byte;
    }
    std::string name = ansi(system, entry.name);
    if (quoted && entry.name != u"@") name = "\"" + name + "\"";
    const Text line = Text(u"[") + Text(nameOfHive(hiveNamed)) + (slash ? u"\\" : u"") + entry.key;
    // The sub key is what stands behind the first backslash, without the "]".
    const Text subKey = line.substr(line.find(u'\\') + 1, line.size() - line.find(u'\\') - 2);
    found_.push_back({{ansi(system, line), name, data, std::to_string(entry.hive)},
                      Text(nameOfHive(entry.hive)) + u"\\" + realKeyPath(system, entry.hive, subKey),
                      number_});
}

}  // namespace bromvale::proof
