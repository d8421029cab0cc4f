// The steps of an answer from the web: each has the name of Windows' function and fails alone.
#include "platform/dialogs.h"
#include "platform/internet.h"
#include "platform/offline/machine.h"
#include "tests/fuzz/scripted_server.h"
#include "tests/support/test_machine.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class WebAnswers : public TestMachine {
  protected:
    WebAnswers() { machine().connect = servers_.connect(); }
    ~WebAnswers() override { machine().connect = offline::connectByTcp; }
    // What comes of it where the first call of this step fails: status, length and text, "-" for what didn't
    // come; then the handles that are left open.
    std::string answerWithout(const char* step) {
        servers_.answers = {"HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc"};
        machine().faults.clear();
        machine().faults.fail(step, 1, 12002);
        machine().internetHandles = 0;
        std::string text;
        {
            WebAnswer answer("http://rechner/x", "Wer fragt");
            const auto number = [&text](const std::optional<std::uint32_t>& value) {
                text += (value ? std::to_string(*value) : "-") + " ";
            };
            number(answer.status());
            number(answer.length());
            char buffer[8];
            std::size_t got = 9;
            text += answer.read(buffer, sizeof buffer, got) ? std::string(buffer, got) : "-";
        }
        return text + " " + std::to_string(machine().internetHandles);
    }
    fuzz::ScriptedServers servers_;
};

TEST_F(WebAnswers, EachStepFailsAlone) {
    EXPECT_EQ(answerWithout("none"), "200 3 abc 0");
    EXPECT_EQ(answerWithout("InternetOpenA"), "- - - 0");
    EXPECT_EQ(answerWithout("InternetOpenUrlA"), "- - - 0");
    EXPECT_EQ(answerWithout("HttpQueryInfoA"), "- 3 abc 0");
    EXPECT_EQ(answerWithout("InternetReadFile"), "200 3 - 0");
    EXPECT_EQ(answerWithout("InternetCloseHandle"), "200 3 abc 1");
    machine().faults.clear();
    machine().faults.startCounting();
    WebAnswer answer("http://nirgends/", "");
    EXPECT_EQ(answer.length(), std::nullopt);
    EXPECT_EQ(machine().faults.calls("HttpQueryInfoA"), 1u);
    std::size_t got = 9;
    EXPECT_FALSE(answer.read(nullptr, 0, got));
    EXPECT_EQ(got, 0u);
}

TEST_F(WebAnswers, ADownloadDialogIsAskedForAndNotThere) {
    machine().faults.fail("DoFileDownload", 1, 5);
    EXPECT_TRUE(openDownloadDialog("http://a/"));
    EXPECT_EQ(machine().events.count(EventKind::Download), 0u);
    EXPECT_FALSE(openDownloadDialog("http://b/"));
    EXPECT_EQ(machine().events.of(EventKind::Download).at(0).text, "http://b/");
}

TEST_F(WebAnswers, PlacesToSaveAreGivenInTurn) {
    machine().savePaths = {"C:\\a.zip"};
    EXPECT_EQ(askWhereToSave("x.zip"), "C:\\a.zip");
    EXPECT_EQ(askWhereToSave("y.zip"), "");
    const auto asked = machine().events.of(EventKind::SaveDialog);
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[0].text + "|" + asked[0].caption + "|" + std::to_string(asked[0].answer),
              "x.zip|C:\\a.zip|1");
    EXPECT_EQ(asked[1].text + "|" + asked[1].caption + "|" + std::to_string(asked[1].answer), "y.zip||0");
}

}  // namespace
}  // namespace bromvale::testing
