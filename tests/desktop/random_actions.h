#pragma once
// What a random user does to the running program, from outside: messages to its own windows and, where one of
// them is in front under the mouse, the real mouse. Nothing goes to windows of other programs.
#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "windows_by_name.h"

// The same numbers for the same seed.
class Dice {
  public:
    explicit Dice(std::uint64_t seed) : state_(seed * 0xD1342543DE82EF95u + 1) {
        state_ = next();  // neighbours would say the same, a step apart
    }
    // 0 to count - 1.
    int below(int count);
    bool percent(int chance) { return below(100) < chance; }
    template <class Things>
    const auto& oneOf(const Things& things) {
        return things[static_cast<std::size_t>(below(static_cast<int>(std::size(things))))];
    }

  private:
    std::uint64_t next();
    std::uint64_t state_;
};

class RandomActions {
  public:
    RandomActions(std::uint64_t seed, DWORD process, DWORD thread)
        : dice_(seed ^ 0xD1CE000000000000u), process_(process), thread_(thread) {}
    // The main window, once it is there.
    void useWindow(HWND window) { main_ = window; }

    // One action; what it was, for the record.
    std::string act();
    // One that can be done while a box or a menu stands, too.
    std::string actBeside();
    // A visible box or dialog of the program, null for none; and one try to leave it.
    [[nodiscard]] HWND openDialog() const;
    std::string leaveDialog(HWND dialog);
    [[nodiscard]] bool menuIsOpen() const;
    std::string leaveMenu();

  private:
    std::string onControl(const NamedWindow& control);
    std::string onList(const NamedWindow& list);
    std::string onBar(HWND bar);
    std::string onText(const NamedWindow& box);
    std::string onWindow();
    std::string tray();
    std::string someKey();
    // False where the number of programs that may be started is spent.
    bool mayStart();
    [[nodiscard]] bool isOurs(HWND window) const;
    void click(HWND window, POINT at, bool right, bool twice);
    bool clickForReal(HWND window, POINT at, bool right, bool twice) const;

    Dice dice_;
    HWND main_ = nullptr;
    DWORD process_;
    DWORD thread_;
    int starts_ = 0;
};
