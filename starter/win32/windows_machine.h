#pragma once
#include "platform/win32/system/windows.h"
#include "starter/machine.h"

namespace bromvale::starter {

class WindowsMachine : public Machine {
  public:
    WindowsMachine();

    Key readKey(const Place& place) override;
    bool mayCreate(const Place& place) override;
    Created createKey(const Place& place) override;
    bool setValue(const Place& place, const Value& value) override;
    bool removeValue(const Place& place, const std::u16string& name) override;
    bool removeKey(const Place& place) override;
    void flush() override;

    std::u16string folder() override { return folder_; }
    File readFile(std::string_view name) override;
    bool writeFile(std::string_view name, std::string_view bytes) override;
    bool replaceFile(std::string_view from, std::string_view to) override;
    void removeFile(std::string_view name) override;

    std::string toCodePage(std::u16string_view text) override;
    std::u16string fromCodePage(std::string_view text) override;
    std::u16string newId() override;

    bool isOnlyStarter() override;
    bool programRuns() override;
    View programWidth() override;
    bool hasProgram(View width) override;
    bool startProgram(View width) override;
    void waitForProgram(const std::function<void()>& sessionEnds) override;

    void tell(const std::string& text) override;
    Answer ask(const std::string& text, Buttons buttons) override;

  private:
    [[nodiscard]] std::u16string pathOf(std::string_view name) const;

    std::u16string folder_;  // with a backslash at its end
    HANDLE program_ = nullptr;
    bool sessionEnds_ = false;
};

}  // namespace bromvale::starter
