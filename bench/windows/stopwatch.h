#pragma once
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/win32/system/windows.h"

namespace bench {

// What a piece of work took: milliseconds, and those of the processor in this process and in Wine's server
// together, whose process is named by the variable WINE_SERVER_PID. What other programs do on the machine
// makes the first longer and leaves the second alone.
class Stopwatch {
  public:
    // "ms=12.3 cpu=4.5"
    [[nodiscard]] std::string taken() const {
        char text[64];
        std::snprintf(text, sizeof text, "ms=%.1f cpu=%.1f", clock() - clock_, processor() - processor_);
        return text;
    }

  private:
    static double clock() {
        LARGE_INTEGER frequency, ticks;
        QueryPerformanceFrequency(&frequency);
        QueryPerformanceCounter(&ticks);
        return 1000.0 * static_cast<double>(ticks.QuadPart) / static_cast<double>(frequency.QuadPart);
    }
    static double processor() { return ownProcessor() + serverProcessor(); }
    static double ownProcessor() {
        FILETIME created, ended, kernel, user;
        GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
        return (kernel.dwLowDateTime + 4294967296.0 * kernel.dwHighDateTime + user.dwLowDateTime +
                4294967296.0 * user.dwHighDateTime) /
               1e4;
    }
    // The host tells nanoseconds.
    static double serverProcessor() {
        const char* const pid = std::getenv("WINE_SERVER_PID");
        if (pid == nullptr) return 0;
        const std::string path = std::string("Z:\\proc\\") + pid + "\\schedstat";
        double nanoseconds = 0;
        if (std::FILE* const file = std::fopen(path.c_str(), "r")) {
            if (std::fscanf(file, "%lf", &nanoseconds) != 1) nanoseconds = 0;
            std::fclose(file);
        }
        return nanoseconds / 1e6;
    }

    double clock_ = clock();
    double processor_ = processor();
};

}  // namespace bench
