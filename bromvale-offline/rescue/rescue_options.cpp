#include "bromvale-offline/rescue/rescue_options.h"

#include <array>
#include <charconv>
#include <cstring>

#include "platform/offline/hives/cleaning/record.h"
#include "platform/offline/locale/stored_text.h"
#include "platform/offline/locale/utf8.h"
#include "platform/offline/registry/registry.h"

namespace bromvale::offline {
namespace {

using Problem = std::optional<std::string>;
using Values = std::span<char* const>;

std::u16string keyOf(const std::string& utf8) {
    std::u16string key = wideFromUtf8(utf8).text;
    while (key.ends_with(u'\\')) key.pop_back();
    return key;
}

// HKEY_CLASSES_ROOT is a view of other hives and holds nothing itself.
bool canHoldHive(const std::u16string& key) {
    const std::string stored = storedFromWide(key);
    std::string_view rest = stored;
    const auto hive = hiveByName(nextPathName(rest));
    return hive && *hive != 0 && namesFit(rest);
}

template <std::string RescueOptions::*Field>
Problem keep(RescueOptions& options, Values values) {
    options.*Field = values[0];
    return {};
}

template <bool RescueOptions::*Field>
Problem set(RescueOptions& options, Values) {
    options.*Field = true;
    return {};
}

Problem readView(RescueOptions& options, Values values) {
    constexpr std::array<std::pair<const char*, WantedView>, 3> kViews{
        {{"64", WantedView::Only64}, {"32", WantedView::Only32}, {"both", WantedView::Both}}};
    for (const auto& [name, view] : kViews) {
        if (std::strcmp(values[0], name) != 0) continue;
        options.view = view;
        return {};
    }
    return std::string("unknown view '") + values[0] + "'; there are 64, 32 and both";
}

Problem addHive(RescueOptions& options, Values values) {
    const std::string text = values[0];
    const std::size_t sign = text.find('=');
    RescueOptions::HiveOption hive;
    if (sign != std::string::npos) hive = {keyOf(text.substr(0, sign)), text.substr(sign + 1), {}};
    if (hive.file.empty() || !canHoldHive(hive.key))
        return "'" + text +
               "' is no hive; write HKEY_LOCAL_MACHINE\\Software=FILE, or for a user's classes "
               "HKEY_CURRENT_USER\\Software\\Classes=FILE";
    options.hives.push_back(hive);
    return {};
}

Problem addLog(RescueOptions& options, Values values) {
    if (options.hives.empty()) return "--log belongs behind the --hive whose log it is";
    options.hives.back().logs.emplace_back(values[0]);
    return {};
}

Problem addReport(RescueOptions& options, Values values) {
    const auto form = reportFormByName(values[0]);
    if (!form) return std::string("unknown form of report '") + values[0] + "'; there are text, csv and json";
    options.reports.push_back({*form, values[1]});
    return {};
}

Problem readExport(RescueOptions& options, Values values) {
    options.exportFile = values[0];
    if (values.size() > 1) options.exportKey = keyOf(values[1]);
    return {};
}

Problem readYes(RescueOptions& options, Values values) {
    const std::string_view text = values[0];
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return "'" + std::string(text) + "' is no number; --yes wants how many keys go";
    options.yes = number;
    return {};
}

Problem readUndo(RescueOptions& options, Values values) {
    options.undo = values[0];
    if (options.undo == "list" || isStamp(options.undo)) return {};
    return "'" + options.undo + "' is no stamp of a cleaning; --undo list shows those there are";
}

struct Row {
    const char* name;
    std::size_t values;
    Problem (*read)(RescueOptions&, Values);
};

constexpr std::array kRows{
    Row{"--windows", 1, keep<&RescueOptions::windows>},
    Row{"--view", 1, readView},
    Row{"--hive", 1, addHive},
    Row{"--log", 1, addLog},
    Row{"--report", 2, addReport},
    Row{"--export", 1, readExport},
    Row{"--remove", 1, keep<&RescueOptions::remove>},
    Row{"--yes", 1, readYes},
    Row{"--undo", 1, readUndo},
    Row{"--write", 0, set<&RescueOptions::write>},
    Row{"--check", 0, set<&RescueOptions::check>},
    Row{"--force", 0, set<&RescueOptions::force>},
    Row{"--not-hibernated", 0, set<&RescueOptions::notHibernated>},
    Row{"--lose-transactions", 0, set<&RescueOptions::loseTransactions>},
};

}  // namespace

bool RescueOptions::wanted() const {
    return !windows.empty() || !hives.empty() || !reports.empty() || !exportFile.empty() || !remove.empty() ||
           !undo.empty() || write || check || view != WantedView::Default;
}

std::size_t readRescueOption(std::span<char* const> arguments, RescueOptions& options, Problem& problem) {
    const std::string_view name = arguments[0];
    const std::size_t sign = name.find('=');
    for (const Row& row : kRows) {
        const bool joined =
            row.values == 1 && sign != std::string_view::npos && name.substr(0, sign) == row.name;
        if (joined) {
            char* const value = arguments[0] + sign + 1;
            problem = row.read(options, Values(&value, 1));
            return 1;
        }
        if (name != row.name) continue;
        std::size_t count = row.values;
        // The key behind --export may be left out.
        if (row.read == readExport && arguments.size() > 2 && std::strncmp(arguments[2], "HKEY_", 5) == 0)
            ++count;
        if (arguments.size() <= count) {
            problem = std::string(name) + (row.values > 1 ? " wants two values" : " wants a value");
        } else {
            problem = row.read(options, arguments.subspan(1, count));
        }
        return count + 1;
    }
    return 0;
}

Problem checkTogether(const RescueOptions& options) {
    const bool raw = !options.windows.empty() || !options.hives.empty();
    if (options.write && options.remove.empty()) return "--write removes what --remove names; say which rows";
    if (!options.remove.empty() && !options.write && options.windows.empty() && options.hives.empty())
        return "--remove works on raw hives; give --windows or --hive";
    if (options.write && !raw) return "--write works on raw hives; give --windows or --hive";
    if (!options.windows.empty() && !options.hives.empty())
        return "--windows finds its hives itself; give --windows or --hive, not both";
    if (!options.undo.empty() && !raw) return "--undo wants to know where; give --windows or --hive";
    if (!options.undo.empty() && (options.write || !options.remove.empty()))
        return "--undo and --remove are two things; do one after the other";
    const bool looks = !options.reports.empty() || options.check;
    if (!options.exportFile.empty() && (looks || !options.remove.empty()))
        return "--export scans nothing; run --report, --check and --remove by themselves";
    if (!options.undo.empty() && (looks || !options.exportFile.empty()))
        return "--undo scans nothing; run --report, --check and --export by themselves";
    if (options.view != WantedView::Default && options.windows.empty())
        return "--view belongs to --windows: it takes the folders of both views from the disk";
    return {};
}

}  // namespace bromvale::offline
