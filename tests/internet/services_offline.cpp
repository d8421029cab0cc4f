// What leaves the program on the way to the internet, call by call, and downloads to a chosen place.
#include "core/log.h"
#include "internet/bug_report.h"
#include "internet/file_download.h"
#include "internet/live_update.h"
#include "platform/internet.h"
#include "platform/offline/machine.h"
#include "platform/offline/network/http_get.h"
#include "tests/internet/internet_fixture.h"
#include "ui/navigation.h"

namespace bromvale::testing {
namespace {

using offline::EventKind;
using offline::machine;

class Services : public InternetTest {
  protected:
    Texts calls;
    void watchCalls() {
        machine().faults.observe([this](std::string_view operation) {
            if (operation.starts_with("Internet")) calls.emplace_back(operation);
        });
    }
    static Texts eventsOf(EventKind kind) {
        Texts texts;
        for (const offline::Event& event : machine().events.of(kind)) texts.push_back(event.text);
        return texts;
    }
};

const Texts kFiveCalls{"InternetOpenA", "InternetOpenUrlA", "InternetReadFile", "InternetCloseHandle",
                       "InternetCloseHandle"};

TEST_F(Services, AReportReadsOnceAndClosesBothHandles) {
    const RecordingServer server("reply", "ok");
    WebHost = server.host();
    watchCalls();
    BugReport({});
    EXPECT_EQ(calls, kFiveCalls);
    EXPECT_EQ(offline::machine().internetHandles, 0u);
    EXPECT_EQ(boxes()[0].style, 64u);
}

TEST_F(Services, AFailureOnTheWayChangesNothingInTheCalls) {
    const RecordingServer server("reply", "ok");
    WebHost = server.host();
    for (const char* operation : {"InternetOpenA", "InternetOpenUrlA", "InternetReadFile"}) {
        calls.clear();
        machine().faults.clear();
        watchCalls();
        machine().faults.fail(operation, 1, 12029);
        BugReport({});
        EXPECT_EQ(calls, kFiveCalls) << operation;
        EXPECT_EQ(boxTexts().back(), kNotSent) << operation;
        EXPECT_EQ(boxes().back().style, 52u);
    }
    EXPECT_EQ(offline::machine().internetHandles, 0u);
}

TEST_F(Services, AServerThatSaysNothingIsGivenUp) {
    const RecordingServer server("silent");
    WebHost = server.host();
    internetPatience = 300;
    BugReport({});
    EXPECT_EQ(boxTexts(), Texts{kNotSent});
}

TEST_F(Services, TheWholeAddressIsHandedOverAsItIs) {
    WebHost = "127.0.0.1:1";
    BugReport({"1.0.0", "13", "Zeile 1\r\nZeile 2\\Pfad", "", "", "", "", ""});
    EXPECT_EQ(eventsOf(EventKind::Fetch),
              Texts{"http://127.0.0.1:1/bug_report.php?bromvaleversion=1.0.0&errnr=13&errdesc=Zeile%201\r\n"
                    "Zeile%202\\Pfad&errbereich=&os=&sp=&errtxt=&vonwo=Programm&email_abs="});
}

TEST_F(Services, AFailureOfThePageIsReportedAndEndsTheSending) {
    const RecordingServer proxy("silent");
    useProxy("127.0.0.1", proxy.port());
    nav("Bug-Report");
    FrmMain& form = frmMain();
    form.bugReport.txtErrNr.userText("13");
    form.bugReport.txtErrDesc.userText("Text");
    form.bugReport.txtErrtxt.userText("Beim Start");
    form.bugReport.txtEMail.userText("a@bc.de");
    machine().faults.fail("send", 1, 1);
    form.bugReport.cmdBugReportSenden.userClick();
    EXPECT_EQ(boxTexts(), Texts{});
    EXPECT_EQ(logLines(),
              Texts{"frmMain; cmdBugReportSenden_Click; ; 40006; Die Verbindung ist nicht in dem Zustand, "
                    "den diese Anforderung verlangt"});
    EXPECT_EQ(eventsOf(EventKind::Fetch), Texts{});
}

TEST_F(Services, AFailureOfTheGreetingIsReportedAndEndsTheCheckForAnUpdate) {
    const RecordingServer proxy("silent");
    useProxy("127.0.0.1", proxy.port());
    machine().faults.fail("send", 1, 1);
    nav("Live-Update");
    EXPECT_EQ(boxTexts(), Texts{});
    EXPECT_EQ(logLines(),
              Texts{"frmMain; mnuPopUpLiveUpdate_Click; ; 40006; Die Verbindung ist nicht in dem Zustand, "
                    "den diese Anforderung verlangt"});
    EXPECT_EQ(eventsOf(EventKind::Fetch), Texts{});
}

TEST_F(Services, TheWindowCanBeClosedWhileTheProxyIsWaitedFor) {
    const RecordingServer proxy("silent");
    useProxy("127.0.0.1", proxy.port());
    atPump(3, [] { frmMain().userClose(); });
    EXPECT_THROW(nav("Live-Update"), offline::ProcessEnded);
    EXPECT_EQ(eventsOf(EventKind::Fetch), Texts{});
}

TEST_F(Services, TheHomepageOpensMaximisedWithoutAVerb) {
    WebHost = "www.bromvale.example";
    switchTracingOn();
    nav("Homepage");
    const auto shell = machine().events.of(EventKind::ShellExecute);
    ASSERT_EQ(shell.size(), 1u);
    EXPECT_EQ(shell[0].text, "http://www.bromvale.example/");
    EXPECT_EQ(shell[0].caption, "");
    EXPECT_EQ(shell[0].number, 3u);
    const Texts lines = logLines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], "modInternet; CallWebSite; started; 0; ");
    EXPECT_EQ(lines[lines.size() - 1], "modInternet; CallWebSite; endet; 0; ");
}

TEST_F(Services, ABrowserThatCannotBeStartedGoesUnnoticed) {
    machine().faults.fail("ShellExecuteA", 1, 2);
    CallWebSite();
    EXPECT_EQ(boxTexts(), Texts{});
}

class Download : public Services {
  protected:
    static constexpr const char* kPath = "C:\\Update.exe";
};

TEST_F(Download, ANewerVersionIsHandedToTheDownloadWithoutAWord) {
    const RecordingServer server("reply", "1.0.1");
    WebHost = server.host();
    machine().savePaths = {kPath};
    LiveUpdate();
    EXPECT_EQ(boxTexts(), Texts{});
    EXPECT_EQ(eventsOf(EventKind::Download), Texts{"http://" + server.host() + "/download.php?file=update"});
    EXPECT_EQ(eventsOf(EventKind::SaveDialog), Texts{"Bromvale-Update.exe"});
    ASSERT_EQ(server.requests().size(), 2u);
    EXPECT_EQ(addressIn(server.requests()[1]), "/download.php?file=update");
    EXPECT_EQ(readWholeFile(kPath), "1.0.1");
}

TEST_F(Download, ALineEndBehindAnEqualVersionMakesItGreater) {
    const RecordingServer server("reply", "1.0.0\r\n");
    WebHost = server.host();
    LiveUpdate();
    EXPECT_EQ(eventsOf(EventKind::Download).size(), 1u);
    EXPECT_EQ(boxTexts(), Texts{});
}

TEST_F(Download, APageThatTellsOfAnErrorStartsTheDownloadToo) {
    const RecordingServer server("error", "<html>kaputt</html>");
    WebHost = server.host();
    LiveUpdate();
    EXPECT_EQ(eventsOf(EventKind::Download).size(), 1u);
}

TEST_F(Download, CharactersAboveTheDigitsAreGreaterWhateverTheirSign) {
    const RecordingServer server("reply", "\xFC");
    WebHost = server.host();
    LiveUpdate();
    EXPECT_EQ(eventsOf(EventKind::Download).size(), 1u);
}

TEST_F(Download, WithoutConsentNothingIsFetched) {
    const RecordingServer server("reply", "2");
    fetchWithConsent("http://" + server.host() + "/x");
    EXPECT_EQ(server.requests(), Texts{});
    EXPECT_EQ(boxTexts(), Texts{});
}

TEST_F(Download, TenMegabytesArriveWhole) {
    std::string bytes(10 << 20, 'x');
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7);
    const RecordingServer server("reply", bytes);
    machine().savePaths = {kPath};
    fetchWithConsent("http://" + server.host() + "/x");
    EXPECT_TRUE(readWholeFile(kPath) == bytes);
    EXPECT_EQ(offline::machine().internetHandles, 0u);
}

TEST_F(Download, AFileThatCannotBeFetchedIsToldAndLeavesNothing) {
    machine().savePaths = {kPath, kPath, "C:\\Fehlt\\Update.exe"};
    fetchWithConsent("http://" + deadHost() + "/x");
    const RecordingServer cut("raw", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nzu kurz");
    fetchWithConsent("http://" + cut.host() + "/x");
    const RecordingServer server("reply", "ok");
    fetchWithConsent("http://" + server.host() + "/x");
    ASSERT_EQ(boxes().size(), 3u);
    EXPECT_EQ(boxes()[0].text, "Die Datei konnte nicht von http://127.0.0.1:1/x geladen werden.");
    EXPECT_EQ(readWholeFile(kPath), "<missing>");
    for (const ShownBox& box : boxes()) EXPECT_EQ(box.caption, "Dateidownload");
}

TEST(WebAddresses, AreTakenApart) {
    const auto whole = offline::webAddress("http://rechner:8080/pfad?a=b c");
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->host, "rechner");
    EXPECT_EQ(whole->port, 8080);
    EXPECT_EQ(whole->path, "/pfad?a=b%20c");
    EXPECT_EQ(offline::webAddress("  HTTP://rechner \t")->path, "/");
    EXPECT_EQ(offline::webAddress("http://rechner?x")->path, "/?x");
    EXPECT_EQ(offline::webAddress("http://rechner")->hostAndPort(), "rechner");
    for (const char* wrong :
         {"", "http://", "https://rechner/", "ftp://rechner/", "rechner", "http://rechner:x/",
          "http://rechner:70000/", "http://rech ner/", "http://:80/"}) {
        EXPECT_FALSE(offline::webAddress(wrong)) << wrong;
    }
}

TEST_F(Services, AQuestionThatCannotBeAskedIsANo) {
    const RecordingServer server("reply", "   ");
    WebHost = server.host();
    machine().faults.observe([](std::string_view operation) {
        if (operation == "MessageBoxA") raise(7);
    });
    LiveUpdate();
    machine().faults.clear();
    EXPECT_EQ(server.requests().size(), 1u);
}

class Answers : public Services {
  protected:
    // What a read of up to `count` gives, and "<broken>" where it fails; "<none>" for no answer at all.
    static std::string readFrom(const RecordingServer& server, std::size_t count) {
        WebAnswer page("http://" + server.host() + "/", "Bromvale");
        std::string buffer(count, '.');
        std::size_t got = 0;
        const bool worked = page.read(buffer.data(), count, got);
        if (!page.came()) return "<none>";
        return buffer.substr(0, got) + (worked ? "" : "<broken>");
    }
    // The same for these bytes on the line.
    static std::string read(const std::string& bytes, std::size_t count = 100) {
        return readFrom(RecordingServer("raw", bytes), count);
    }
};

TEST_F(Answers, ThatCannotBeReadGiveNothing) {
    const RecordingServer server("raw", "HTTP/1.1 200 OK\r\n\r\nabc");
    WebAnswer page("http://" + server.host() + "/", "Bromvale");
    machine().faults.fail("InternetReadFile", 1, 5);
    std::size_t got = 99;
    char byte = '.';
    EXPECT_FALSE(page.read(&byte, 1, got));
    EXPECT_EQ(got, 0u);
    EXPECT_TRUE(page.read(&byte, 1, got));
    EXPECT_EQ(byte, 'a');
}

TEST_F(Answers, OfEveryKindAreRead) {
    const struct {
        const char* bytes;
        const char* read;
    } kCases[] = {
        {"HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabcdef", "abc"},
        {"HTTP/1.1 200 OK\r\ncontent-length:0\r\n\r\nabc", ""},
        {"HTTP/1.0 404 Fehlt\n\nabc", "abc"},
        {"HTTP/1.1 200\r\n\r\nabc", "abc"},
        {"HTTP/1.1 100 Weiter\r\n\r\nHTTP/1.1 200 OK\r\n\r\nabc", "abc"},
        {"HTTP/1.1 200 OK\r\nTransfer-Encoding: Chunked\r\n\r\n3;x=y\r\nabc\r\nA\r\n0123456789\r\n0\r\n\r\n",
         "abc0123456789"},
        {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\nkaputt\r\n", "abc<broken>"},
        {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nkaputt", "<none>"},
        {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nabc", "abc<broken>"},
        {"HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\nabc", "abc"},
        {"HTTP/1.1 302 Found\r\nLocation: https://rechner/\r\n\r\n", "<none>"},
        {"HTTP/1.1 302 Found\r\n\r\nabc", "abc"},
        {"HTTP/1.1 200 OK\r\nEin Feld", "<none>"},
        {"SSH-2.0-irgendwas\r\n", "<none>"},
        {"HTTP/\r\n\r\n", "<none>"},
        {"", "<none>"},
    };
    for (const auto& row : kCases) EXPECT_EQ(read(row.bytes), row.read) << row.bytes;
}

TEST_F(Answers, AForwardingInACircleEnds) {
    EXPECT_EQ(read("HTTP/1.1 302 Found\r\nLocation: /\r\n\r\n"), "<none>");
}

TEST_F(Answers, AHeadWithoutEndEnds) {
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\nX: " + std::string(200000, 'x')), "<none>");
}

TEST_F(Answers, AHeadOfEndlessLinesEnds) {
    std::string bytes = "HTTP/1.1 200 OK\r\n";
    for (int i = 0; i < 10000; ++i) bytes += "X: 3456\r\n";
    EXPECT_EQ(read(bytes + "\r\nabc"), "<none>");
    bytes.clear();
    for (int i = 0; i < 5000; ++i) bytes += "HTTP/1.1 100 Weiter\r\n\r\n";
    EXPECT_EQ(read(bytes + "HTTP/1.1 200 OK\r\n\r\nabc"), "<none>");
}

TEST_F(Answers, AHeadOfUpTo64KilobytesIsRead) {
    std::string bytes = "HTTP/1.1 200 OK\r\n";
    for (int i = 0; i < 6000; ++i) bytes += "X: 3456\r\n";
    EXPECT_EQ(read(bytes + "\r\nabc"), "abc");
}

TEST_F(Answers, WhatCameBeforeASilenceIsCounted) {
    internetPatience = 300;
    const RecordingServer server("stall", "halb");
    EXPECT_EQ(readFrom(server, 100), "hal<broken>");
}

TEST_F(Answers, AReadStopsAtItsCount) {
    EXPECT_EQ(read("HTTP/1.1 200 OK\r\n\r\nabcdef", 4), "abcd");
}

}  // namespace
}  // namespace bromvale::testing
