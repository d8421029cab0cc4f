// What the starter asks of the machine that it runs on. One implementation is Windows (starter/win32), the
// other one the tests' (tests/starter/fake_machine.h), which fails or ends at every change in turn.
#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace bromvale::starter {

enum class Hive { Machine, User };
// The half of the registry that a program of this width sees.
enum class View { Bits32, Bits64 };

struct Place {
    Hive hive;
    View view;
    std::u16string path;
};

struct Value {
    std::u16string name;  // empty: the default value
    std::uint32_t type;
    std::string data;  // as it is stored; texts in UTF-16LE on every system
    bool operator==(const Value&) const = default;
};

// Unknown: it may be there, but can't be read.
enum class Found { Yes, No, Unknown };

struct Key {
    Found found = Found::No;
    std::vector<Value> values;
    bool hasSubKeys = false;
};

struct File {
    Found found = Found::No;
    std::string bytes;
};

// No larger file is read.
inline constexpr std::size_t kLargestFile = 65536;

enum class Created { New, WasThere, Refused };
// None: nobody can be asked, since the session ends.
enum class Answer { Yes, No, None };
// The buttons: the text says what each of them does.
enum class Buttons { YesNo, RetryCancel };

class Machine {
  public:
    virtual ~Machine() = default;

    // --- the registry; what changes it is false where the system refuses ---
    [[nodiscard]] virtual Key readKey(const Place& place) = 0;
    // Whether a key may be made there, judged by the nearest key above it that is there.
    [[nodiscard]] virtual bool mayCreate(const Place& place) = 0;
    [[nodiscard]] virtual Created createKey(const Place& place) = 0;
    [[nodiscard]] virtual bool setValue(const Place& place, const Value& value) = 0;
    [[nodiscard]] virtual bool removeValue(const Place& place, const std::u16string& name) = 0;
    // A key that has no sub keys.
    [[nodiscard]] virtual bool removeKey(const Place& place) = 0;
    // All that was written to the user's half is with the disk when this returns.
    virtual void flush() = 0;

    // --- the files in the starter's own folder, by their plain names ---
    [[nodiscard]] virtual std::u16string folder() = 0;
    // Unknown also for one of more than kLargestFile bytes.
    [[nodiscard]] virtual File readFile(std::string_view name) = 0;
    // Makes the file anew; it is with the disk when this returns true.
    [[nodiscard]] virtual bool writeFile(std::string_view name, std::string_view bytes) = 0;
    // `from` takes the place of `to`. On the 9x family there is an instant at which only `from` is there.
    [[nodiscard]] virtual bool replaceFile(std::string_view from, std::string_view to) = 0;
    virtual void removeFile(std::string_view name) = 0;

    // --- texts ---
    [[nodiscard]] virtual std::string toCodePage(std::u16string_view text) = 0;
    [[nodiscard]] virtual std::u16string fromCodePage(std::string_view text) = 0;
    [[nodiscard]] virtual std::u16string newId() = 0;

    // --- programs ---
    // False while another starter of this session is at work.
    [[nodiscard]] virtual bool isOnlyStarter() = 0;
    // Any Bromvale of this session, whoever started it.
    [[nodiscard]] virtual bool programRuns() = 0;
    [[nodiscard]] virtual View programWidth() = 0;
    [[nodiscard]] virtual bool hasProgram(View width) = 0;
    // With the arguments that the starter was given.
    [[nodiscard]] virtual bool startProgram(View width) = 0;
    // Returns when the program has ended for good, also where it has started itself anew with more rights.
    // `sessionEnds` is called when the session ends meanwhile; from then on nobody is asked or told anything.
    virtual void waitForProgram(const std::function<void()>& sessionEnds) = 0;

    // --- the user ---
    virtual void tell(const std::string& text) = 0;
    [[nodiscard]] virtual Answer ask(const std::string& text, Buttons buttons) = 0;
};

}  // namespace bromvale::starter
