#include "tests/hives/cleaning/disk.h"

#include <algorithm>
#include <filesystem>

#include "platform/offline/hives/checker.h"
#include "platform/offline/hives/cleaning/recovery.h"
#include "platform/offline/hives/comparison.h"
#include "platform/offline/hives/hive.h"
#include "tests/hives/made_log.h"

namespace bromvale::offline {

namespace fs = std::filesystem;

bool TroubledFiles::isTrouble() const {
    return forever ? troubleAt >= 0 && calls > troubleAt : calls == troubleAt + 1;
}

int TroubledFiles::failureBefore(std::string_view call, const std::string& name) {
    if (firstReplacement < 0 && call == "rename" && name.ends_with(".new") && !name.ends_with(".list.new"))
        firstReplacement = calls;
    ++calls;
    if (call == "write") unsynced.insert(name);
    writing_ = name;
    if (!isTrouble()) return 0;
    if (meanwhile) {
        meanwhile();
        return 0;
    }
    if (number == 0) throw Killed();
    return after ? 0 : number;
}

int TroubledFiles::failureAfter(std::string_view call, const std::string& name) {
    if (call == "sync") unsynced.erase(name);
    return isTrouble() && after ? number : 0;
}

FolderState CleaningTest::state() const {
    FolderState state;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder())) {
        const std::string name = fs::relative(entry.path().parent_path(), folder()) / entry.path().filename();
        if (entry.is_symlink()) {
            state[fs::path(name).lexically_normal()] = "->" + fs::read_symlink(entry.path()).string();
        } else if (entry.is_regular_file()) {
            state[fs::path(name).lexically_normal()] = bytesOf(entry.path());
        }
    }
    return state;
}

void CleaningTest::restore(const FolderState& state) const {
    for (const auto& [name, bytes] : this->state()) fs::remove(folder() / name);
    for (const auto& [name, bytes] : state) write(name, bytes);
}

std::vector<std::string> CleaningTest::folders() const {
    std::vector<std::string> folders{folder().string()};
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder()))
        if (entry.is_directory()) folders.push_back(entry.path().string());
    return folders;
}

HiveToClean CleaningTest::place(const std::string& name, const std::string& hive,
                                const std::vector<std::pair<LogName, std::string>>& logs,
                                const std::vector<std::u16string>& keys) const {
    HiveToClean order;
    order.path = write(name, hive);
    order.shown = printOf(hive);
    HiveImage image{std::string_view(hive)};
    std::vector<HiveLog> given;
    for (const auto& [log, bytes] : logs) {
        const char* const end = log == LogName::Log ? ".LOG" : log == LogName::Log1 ? ".LOG1" : ".LOG2";
        order.logs.push_back({log, write(name + end, bytes), printOf(bytes)});
        given.push_back({log, HiveBytes(bytes)});
    }
    static_cast<void>(replayLogs(image, given));
    for (const std::u16string& key : keys) {
        const Cell cell = cellOf(image.bytes().all(), key);
        std::string text = "HKEY_LOCAL_MACHINE\\Software\\";
        for (const char16_t c : key) text += static_cast<char>(c);
        EXPECT_NE(kNil, cell) << text;
        order.keys.push_back({cell, text});
    }
    order.completeCopy = "Windows Registry Editor Version 5.00\r\n; " + name + "\r\n";
    return order;
}

namespace {

std::u16string wide(const std::string& text) {
    return {text.begin(), text.end()};
}

MadeKey branch(const std::u16string& name, std::string_view list, std::size_t partSize) {
    MadeKey key;
    key.name = name;
    key.list = {list, partSize};
    for (int i = 0; i < 7; ++i) {
        MadeKey sub;
        sub.name = wide("Key" + std::to_string(i));
        sub.values.push_back({u"", 1, std::string("C\0:\0\0\0", 6)});
        sub.values.push_back({u"Data", 3, std::string(static_cast<std::size_t>(30 * i), 'd')});
        sub.className = i == 2 ? u"Class" : u"";
        MadeKey inner;
        inner.name = u"InprocServer32";
        if (i % 2 == 1) sub.subKeys.push_back(inner);
        key.subKeys.push_back(sub);
    }
    return key;
}

MadeHive hiveOfAllLists() {
    MadeHive hive;
    hive.root.name = u"ROOT";
    hive.root.subKeys.push_back(branch(u"Hashes", key_list::kHashes, 0));
    hive.root.subKeys.push_back(branch(u"Names", key_list::kNames, 0));
    hive.root.subKeys.push_back(branch(u"Offsets", key_list::kOffsets, 0));
    hive.root.subKeys.push_back(branch(u"Parts", key_list::kHashes, 3));
    MadeKey big;
    big.name = u"Big";
    big.values.push_back({u"Data", 3, std::string(40000, 'b')});
    hive.root.subKeys.push_back(big);
    return hive;
}

}  // namespace

HiveToClean CleaningTest::placeDirty(const std::string& name) const {
    MadeHive old;
    old.root.name = u"ROOT";
    old.root.subKeys.push_back(branch(u"Hashes", key_list::kHashes, 0));
    std::string hive = offline::bytesOf(old);
    std::string after = offline::bytesOf(hiveOfAllLists());
    const std::string stale = newLog(hive, 3, {{3, hive, after}});
    const std::string log = newLog(hive, 7, {{7, hive, after}});
    setSequence(hive, 8, 7);
    return place(name, hive, {{LogName::Log1, log}, {LogName::Log2, stale}},
                 {u"Hashes\\Key1", u"Hashes\\Key6", u"Names\\Key0", u"Names\\Key3", u"Offsets\\Key0",
                  u"Offsets\\Key5\\InprocServer32", u"Parts\\Key0", u"Parts\\Key1", u"Parts\\Key2", u"Big"});
}

HiveToClean CleaningTest::placeClean(const std::string& name) const {
    MadeHive hive;
    hive.root = branch(u"ROOT", key_list::kHashes, 0);
    hive.tail = "what lies behind the bins";
    return place(name, offline::bytesOf(hive), {}, {u"Key3"});
}

Cleaning CleaningTest::cleaningOf(std::vector<HiveToClean> hives) {
    Cleaning cleaning;
    cleaning.stamp = kStamp;
    cleaning.hives = std::move(hives);
    return cleaning;
}

void CleaningTest::expectCleaned(const HiveToClean& order, const FolderState& before) const {
    const auto relative = [&](const std::string& path) { return fs::relative(path, folder()).string(); };
    HiveImage image{std::string_view(before.at(relative(order.path)))};
    std::vector<HiveLog> logs;
    for (const LogToClean& log : order.logs)
        logs.push_back({log.name, HiveBytes(before.at(relative(log.path)))});
    static_cast<void>(replayLogs(image, logs));
    std::vector<Cell> gone;
    for (const AnnouncedKey& key : order.keys) gone.push_back(key.cell);

    const std::string bytes = bytesOf(order.path);
    const HiveBytes after(bytes);
    EXPECT_TRUE(checkHive(after).whole());
    EXPECT_FALSE(readBaseBlock(after).dirty());
    EXPECT_EQ("", differenceOfTrees(Hive(image.bytes()), Hive(after), gone).value_or(""));
    EXPECT_LT(checkHive(after).keys, checkHive(image.bytes()).keys);
    EXPECT_TRUE(logsGone(order)) << "a log is still beside the hive";
}

bool CleaningTest::logsGone(const HiveToClean& order) {
    return std::ranges::none_of(order.logs, [](const LogToClean& log) { return fs::exists(log.path); });
}

void CleaningTest::goOn() const {
    HostFiles files;
    const std::vector<std::string> folders = this->folders();
    for (const UnfinishedCleaning& cleaning : unfinishedCleanings(files, folders)) {
        const CleaningResult result = goOnWithCleaning(files, folders, cleaning.stamp, {});
        EXPECT_EQ("", describe(result));
        EXPECT_TRUE(result.state == CleaningResult::State::Done ||
                    result.state == CleaningResult::State::TakenBack);
    }
    EXPECT_TRUE(unfinishedCleanings(files, folders).empty());
}

std::string describe(const CleaningResult& result) {
    std::string text = result.problem;
    for (const Refusal& refusal : result.refusals) text += refusal.path + ": " + refusal.what + "\n";
    return text;
}

}  // namespace bromvale::offline
