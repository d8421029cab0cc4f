#include "bromvale-offline/set_up.h"

#include <cstdio>
#include <ctime>

#include "bromvale-offline/example.h"
#include "core/state.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/machine.h"

namespace bromvale::offline {

void complain(const std::string& text) {
    std::fprintf(stderr, "bromvale-offline: %s\n", text.c_str());
}

void complain(const RegFileError& error) {
    std::string place = error.file;
    if (error.line > 0) place.append(":").append(std::to_string(error.line));
    complain(place + ": " + utf8FromAnsi(error.reason));
}

namespace {

SYSTEMTIME hostTime() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    const auto word = [](int number) { return static_cast<WORD>(number); };
    return {word(parts.tm_year + 1900), word(parts.tm_mon + 1),  0, word(parts.tm_mday), word(parts.tm_hour),
            word(parts.tm_min),         word(parts.tm_sec % 60), 0};
}

}  // namespace

SYSTEMTIME timeOf(const Options& options) {
    return options.now ? *options.now : hostTime();
}

void setUpMachine(const Options& options) {
    Machine& machine = offline::machine();
    for (char letter = 'C'; letter <= 'Z'; ++letter) machine.drives.addMemory(letter);
    for (const auto& [letter, folder] : options.drives) machine.drives.addFolder(letter, folder);
    machine.clock.set(timeOf(options));
    machine.locale = options.english ? englishLocale() : germanLocale();
    if (!options.user.empty()) machine.user = options.user;
    if (!options.computer.empty()) machine.computer = options.computer;
    if (!options.webHost.empty()) WebHost = options.webHost;
    machine.commandLine = options.commandLine;
    machine.setOs(options.os);
    machine.setAppPath(options.appPath);
}

bool loadRegistries(const Options& options) {
    const bool raw = !options.rescue.windows.empty() || !options.rescue.hives.empty();
    if (options.registries.empty() && !raw) {
        const auto error = loadExample();
        if (error) complain(*error);
        return !error;
    }
    for (const std::string& file : options.registries) {
        if (const auto error = loadRegFile(file, machine().registry)) {
            complain(*error);
            return false;
        }
    }
    return true;
}

}  // namespace bromvale::offline
