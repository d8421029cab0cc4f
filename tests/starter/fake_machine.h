// A machine in memory that ends the starter at, or refuses, any change that one counts up to.
#pragma once
#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "starter/machine.h"

namespace bromvale::starter {

// The starter's process is ended: thrown by the change after which it shall be.
struct Killed {};

class FakeMachine : public Machine {
  public:
    struct FakeKey {
        std::vector<Value> values;
        bool operator==(const FakeKey&) const = default;
    };
    using Registry = std::map<std::tuple<Hive, View, std::u16string>, FakeKey>;
    using Files = std::map<std::string, std::string, std::less<>>;

    Registry registry;
    Files files;
    std::function<void(FakeMachine&)> program = [](FakeMachine&) {};  // what it does while it runs
    std::vector<std::string> told;                                    // what was asked too
    Answer answer = Answer::No;
    bool isAdministrator = true;
    std::function<void(FakeMachine&)> atQuestion = [](FakeMachine&) {};  // what happens while it is shown
    bool isWritable = true;                                              // the folder
    Found without = Found::Yes;     // what the system says of files while the folder is gone
    bool replacesInOneStep = true;  // not so on the 9x family
    bool is64Bit = true;
    bool otherStarter = false;
    bool otherProgram = false;
    bool lacksProgram = false;
    bool sessionEnds = false;  // while the program runs
    bool programOutlivesSession = false;
    int starts = 0;

    int changes = 0;
    int killAfter = 0;   // the number of the change, from 1
    int refuse = 0;      // that one alone
    int refuseFrom = 0;  // that one and all behind it

    // Without counting.
    void put(const Place& place, std::vector<Value> values = {});
    [[nodiscard]] const FakeKey* find(const Place& place) const;

    Key readKey(const Place& place) override;
    bool mayCreate(const Place& place) override;
    Created createKey(const Place& place) override;
    bool setValue(const Place& place, const Value& value) override;
    bool removeValue(const Place& place, const std::u16string& name) override;
    bool removeKey(const Place& place) override;
    void flush() override {}

    std::u16string folder() override { return u"E:\\Bromvale\\"; }
    File readFile(std::string_view name) override;
    bool writeFile(std::string_view name, std::string_view bytes) override;
    bool replaceFile(std::string_view from, std::string_view to) override;
    void removeFile(std::string_view name) override;

    std::string toCodePage(std::u16string_view text) override;
    std::u16string fromCodePage(std::string_view text) override;
    std::u16string newId() override;

    bool isOnlyStarter() override { return !otherStarter; }
    bool programRuns() override { return otherProgram; }
    View programWidth() override { return is64Bit ? View::Bits64 : View::Bits32; }
    bool hasProgram(View) override { return !lacksProgram; }
    bool startProgram(View width) override;
    void waitForProgram(const std::function<void()>& atSessionsEnd) override;

    void tell(const std::string& text) override { told.push_back(text); }
    Answer ask(const std::string& text, Buttons) override;

  private:
    // Does a change, unless it is one to be refused; ends the starter behind it, where that is wanted.
    bool change(const std::function<void()>& what);
};

}  // namespace bromvale::starter
