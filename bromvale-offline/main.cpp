// bromvale-offline: the program on a machine of its own making.
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <ctime>

#include "bromvale-offline/example.h"
#include "bromvale-offline/options.h"
#include "bromvale-offline/rescue/rescue.h"
#include "bromvale-offline/script.h"
#include "bromvale-offline/set_up.h"
#include "bromvale-offline/show.h"
#include "core/startup/main.h"
#include "core/state.h"
#include "platform/offline/locale/code_page.h"
#include "platform/offline/machine.h"
#include "platform/offline/reg_files/reg_file.h"

namespace bromvale::offline {
namespace {

constexpr int kScriptFailed = 1;
constexpr int kWrongUse = 2;

using Stopwatch = std::chrono::steady_clock;

double secondsSince(Stopwatch::time_point start) {
    return std::chrono::duration<double>(Stopwatch::now() - start).count();
}

// Where the programs lie is a fact of every Windows machine, so one without it gets it.
void nameProgramFiles() {
    constexpr const char* kKey = "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion";
    Registry& registry = machine().registry;
    if (!registry.value(kKey, "ProgramFilesDir"))
        registry.setText(kKey, "ProgramFilesDir", machine().programFiles());
}

// What the program does of itself when nobody clicks: nothing. So the default run clicks the start button,
// unless a scan has been made already, and shows what was found.
class DefaultRun {
  public:
    DefaultRun(Transcript& transcript, bool time) : transcript_(transcript), time_(time) {}

    bool next() {
        if (done_) return false;
        done_ = true;
        const Control* report = findControl("lblScanBericht");
        if (report == nullptr) return false;
        const auto start = Stopwatch::now();
        const bool scanned = !report->caption().empty();
        if (!scanned) doAction("click", "cmdStart", transcript_);
        if (time_ && !scanned) tellTime(report->caption(), secondsSince(start));
        transcript_.lookAtWindows();
        transcript_.line(report->caption());
        doAction("rows", "lvwRegKeys", transcript_);
        return true;
    }

  private:
    // The number of entries stands in the report: "... von 4120 ...".
    static void tellTime(const std::string& report, double seconds) {
        const std::size_t at = report.rfind(" von ");
        const double entries = at == std::string::npos ? 0 : std::strtod(report.c_str() + at + 5, nullptr);
        std::fprintf(stderr, "scan %.3f s, %.0f entries, %.0f entries/s\n", seconds, entries,
                     seconds > 0 ? entries / seconds : 0);
    }
    Transcript& transcript_;
    bool time_;
    bool done_ = false;
};

int runToTheEnd(const Options& options, Transcript& transcript) {
    Script script(transcript);
    DefaultRun defaultRun(transcript, options.time);
    Machine& machine = offline::machine();
    if (options.script.empty()) {
        machine.pump.nextAction = [&defaultRun] { return defaultRun.next(); };
    } else {
        if (!script.load(options.script)) {
            complain(options.script + ": cannot be read");
            return kWrongUse;
        }
        machine.pump.nextAction = [&script] { return script.next(); };
        machine.askForMenuChoice = [&script] { return script.takeMenuChoice(); };
    }
    machine.clock.beforeAdvance = [&machine, &transcript] {
        machine.pump.noteTimers();
        machine.pump.timePassed();
        transcript.lookAtWindows();
    };
    transcript.attach();
    try {
        runProgram();
        transcript.lookAtWindows();
    } catch (const ProcessEnded& ended) {
        return static_cast<int>(ended.exitCode);
    } catch (const ScriptError& error) {
        transcript.flush();
        complain(utf8FromAnsi(error.text));
        return kScriptFailed;
    }
    return 0;
}

int run(const Options& options) {
    setUpMachine(options);
    const auto start = Stopwatch::now();
    if (!loadRegistries(options)) return kWrongUse;
    const double loading = secondsSince(start);
    nameProgramFiles();
    if (options.time) {
        const Registry& registry = machine().registry;
        std::fprintf(stderr, "load %.3f s, %zu keys, %zu values\n", loading, registry.keyCount(),
                     registry.valueCount());
    }
    Transcript transcript;
    int status = runToTheEnd(options, transcript);
    transcript.flush();
    if (!options.save.empty() && status != kWrongUse) {
        if (const auto error = saveRegFile(machine().registry, options.save)) {
            complain(*error);
            status = kWrongUse;
        }
    }
    if (options.time) {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        const auto seconds = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
        };
        std::fprintf(stderr, "all %.3f s, processor %.3f s, peak memory %ld KB\n", secondsSince(start),
                     seconds(usage.ru_utime) + seconds(usage.ru_stime), usage.ru_maxrss);
    }
    // Singletons hold controls that hold handlers of the run that is over, so nothing may call them again.
    machine().events.sink = nullptr;
    machine().clock.beforeAdvance = nullptr;
    machine().pump.nextAction = nullptr;
    machine().askForMenuChoice = nullptr;
    return status;
}

}  // namespace
}  // namespace bromvale::offline

int main(int count, char** arguments) {
    bromvale::offline::Options options;
    if (const auto problem = bromvale::offline::readOptions(count, arguments, options)) {
        bromvale::offline::complain(*problem + "\nTry --help.");
        return bromvale::offline::kWrongUse;
    }
    if (options.help) {
        std::fputs(bromvale::offline::helpText(), stdout);
        return 0;
    }
    if (options.rescue.wanted()) return bromvale::offline::runRescue(options);
    return bromvale::offline::run(options);
}
