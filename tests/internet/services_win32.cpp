// What only the system's own library and dialogs show: a server that never answers, and the dialog "save as".
#include <atomic>
#include <thread>

#include "internet/bug_report.h"
#include "internet/file_download.h"
#include "internet/live_update.h"
#include "platform/internet.h"
#include "platform/win32/system/windows.h"
#include "tests/internet/internet_fixture.h"

namespace bromvale::testing {
namespace {

constexpr const char* kDialog = "Update speichern unter";
constexpr int kNameField = 0x47C;     // the dialog's field for the name, a combo box in newer shapes
constexpr int kOldNameField = 0x480;  // and an edit field in older ones

HWND waitForDialog() {
    for (int tries = 0; tries < 500; ++tries) {
        const HWND dialog = FindWindowA(nullptr, kDialog);
        if (dialog != nullptr && IsWindowVisible(dialog)) return dialog;
        Sleep(20);
    }
    return nullptr;
}

// A user who names the file, or presses Cancel for an empty one, as soon as the dialog is there.
class SavingUser {
  public:
    explicit SavingUser(const std::string& path) : thread_([this, path] { act(path); }) {}
    ~SavingUser() { thread_.join(); }
    [[nodiscard]] bool sawDialog() const { return sawDialog_; }
    [[nodiscard]] const std::string& suggested() const { return suggested_; }

  private:
    void act(const std::string& path) {
        const HWND dialog = waitForDialog();
        if (dialog == nullptr) return;
        sawDialog_ = true;
        Sleep(300);
        HWND field = GetDlgItem(dialog, kNameField);
        if (field == nullptr) field = GetDlgItem(dialog, kOldNameField);
        char text[MAX_PATH] = {};
        SendMessageA(field, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
        suggested_ = text;
        if (!path.empty()) SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
        PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(path.empty() ? IDCANCEL : IDOK), 0);
    }
    bool sawDialog_ = false;
    std::string suggested_;
    std::thread thread_;
};

// Asks a window again and again whether it is alive.
class Asker {
  public:
    explicit Asker(HWND window) : thread_([this, window] { ask(window); }) {}
    ~Asker() {
        going_ = false;
        thread_.join();
    }
    [[nodiscard]] int answers() const { return answers_; }
    [[nodiscard]] int silences() const { return silences_; }

  private:
    void ask(HWND window) {
        while (going_) {
            DWORD_PTR answer = 0;
            const bool alive = SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, 3000, &answer) != 0;
            ++(alive ? answers_ : silences_);
            Sleep(50);
        }
    }
    std::atomic<bool> going_ = true;
    std::atomic<int> answers_ = 0;
    std::atomic<int> silences_ = 0;
    std::thread thread_;
};

using WindowsServices = InternetTest;

TEST_F(WindowsServices, AServerThatSaysNothingIsGivenUpAfterAMinuteAndTheWindowLives) {
    const RecordingServer server("silent");
    WebHost = server.host();
    frmMain().load();
    const DWORD start = GetTickCount();
    {
        const Asker asker(frmMain().window());
        BugReport({});
        EXPECT_GE(asker.answers(), 100);
        EXPECT_EQ(asker.silences(), 0);
    }
    EXPECT_EQ(boxTexts(), Texts{kNotSent});
    EXPECT_GE(GetTickCount() - start, 60000u);
    EXPECT_LT(GetTickCount() - start, 75000u);
}

TEST_F(WindowsServices, AnAnswerThatFellSilentIsNotReadAgain) {
    internetPatience = 3000;
    const RecordingServer server("stall", "halb");
    DWORD start = 0;
    {
        WebAnswer page("http://" + server.host() + "/", "Bromvale");
        std::string buffer(100, '.');
        std::size_t got = 0;
        EXPECT_FALSE(page.read(buffer.data(), buffer.size(), got));
        EXPECT_EQ(buffer.substr(0, got), "hal");
        start = GetTickCount();
        EXPECT_FALSE(page.read(buffer.data(), buffer.size(), got));
        EXPECT_EQ(got, 0u);
    }
    EXPECT_LT(GetTickCount() - start, 1000u);
}

TEST_F(WindowsServices, ASecondReportGoesOutWhileTheFirstOnesReadingStillHangs) {
    internetPatience = 3000;
    const RecordingServer stalling("stall", "  x");
    WebHost = stalling.host();
    BugReport({});
    const RecordingServer server("reply", "ok");
    WebHost = server.host();
    BugReport({});
    EXPECT_EQ(boxTexts(), (Texts{kNotSent, kSent}));
}

TEST_F(WindowsServices, ANewerVersionIsSavedWhereTheUserSays) {
    const RecordingServer server("reply", "1.0.1");
    WebHost = server.host();
    const std::string path = folder() + "Neu.exe";
    {
        const SavingUser user(path);
        LiveUpdate();
        EXPECT_TRUE(user.sawDialog());
        EXPECT_EQ(user.suggested(), "Bromvale-Update.exe");
    }
    EXPECT_EQ(boxTexts(), Texts{});
    EXPECT_EQ(readWholeFile(path), "1.0.1");
    ASSERT_EQ(server.requests().size(), 2u);
    EXPECT_EQ(addressIn(server.requests()[1]), "/download.php?file=update");
}

TEST_F(WindowsServices, ACancelledDialogFetchesNothing) {
    const RecordingServer server("reply", "1.0.1");
    WebHost = server.host();
    {
        const SavingUser user("");
        LiveUpdate();
        EXPECT_TRUE(user.sawDialog());
    }
    EXPECT_EQ(boxTexts(), Texts{});
    EXPECT_EQ(server.requests().size(), 1u);
}

TEST_F(WindowsServices, TenMegabytesArriveWhole) {
    const std::string bytes(10 << 20, 'y');
    const RecordingServer server("reply", bytes);
    const std::string path = folder() + "Gross.exe";
    {
        const SavingUser user(path);
        fetchWithConsent("http://" + server.host() + "/x");
    }
    EXPECT_TRUE(readWholeFile(path) == bytes);
}

}  // namespace
}  // namespace bromvale::testing
