// The report itself: its address, its way, and what the user is told.
#include "internet/bug_report.h"

#include <chrono>

#include "platform/internet.h"
#include "tests/internet/internet_fixture.h"

namespace bromvale::testing {
namespace {

const ReportFields kFields{"1.0.0",      "13",   "Typen unverträglich", "Registry-Scan",
                           "Windows XP", "SP 2", "Beim Start",          "kunde@bromvale.example"};

TEST(ReportAddress, TheEightFieldsStandBehindTheirKeysInTheirOrder) {
    WebHost = "www.bromvale.example";
    EXPECT_EQ(reportAddress({"1", "2", "3", "4", "5", "6", "7", "8"}),
              "http://www.bromvale.example/"
              "bug_report.php?bromvaleversion=1&errnr=2&errdesc=3&errbereich=4&os=5&sp=6"
              "&errtxt=7&vonwo=Programm&email_abs=8");
}

TEST(ReportAddress, BlanksBecomePercentTwentyInEveryFieldAndNothingElseIsEncoded) {
    WebHost = "www.bromvale.example:8080";
    EXPECT_EQ(reportAddress({"1 0", " 2", "Größe & Preis", "a  b", "Windows 98 SE", "Build 2600",
                             "a+b=c%zz?#\"<>\\\r\n\r\n; Bericht aus dem Programm", "a b@c.d "}),
              "http://www.bromvale.example:8080/bug_report.php?bromvaleversion=1%200&errnr=%202"
              "&errdesc=Größe%20&%20Preis&errbereich=a%20%20b&os=Windows%2098%20SE&sp=Build%202600"
              "&errtxt=a+b=c%zz?#\"<>\\\r\n\r\n;%20Bericht%20aus%20dem%20Programm&vonwo=Programm"
              "&email_abs=a%20b@c.d%20");
}

TEST(ReportAddress, EmptyFieldsKeepTheirKeys) {
    WebHost = "h";
    EXPECT_EQ(
        reportAddress({}),
        "http://h/bug_report.php?bromvaleversion=&errnr=&errdesc=&errbereich=&os=&sp=&errtxt=&vonwo=Programm"
        "&email_abs=");
}

TEST(AcceptedAddress, TheSignAndThePointMustStandLateEnough) {
    const struct {
        const char* eMail;
        bool accepted;
    } kCases[] = {
        {"", false},
        {"abcd", false},
        {"@bcd.de", false},
        {"a@cd.de", true},
        {"a@c.de", false},       // the point at 4
        {"a@bc.de", true},       // at 5
        {"a@bc.d", false},       // one character behind the point
        {"abcd.e@f", true},      // the point may stand before the sign
        {"a.bcd@ef.de", false},  // the first point decides
        {"abcd.de", false},
        {"abcde@", false},
        {"abc@.de", true},
        {"a b@c.de", true},
        {"@@bcd.de", false},
    };
    for (const auto& row : kCases) EXPECT_EQ(isAcceptedAddress(row.eMail), row.accepted) << row.eMail;
}

class Report : public InternetTest {
  protected:
    static void serve(const RecordingServer& server) { WebHost = server.host(); }
    // The machine's own clock doesn't know of a server's time.
    template <class Action>
    static double realSeconds(const Action& action) {
        const auto start = std::chrono::steady_clock::now();
        action();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
};

TEST_F(Report, AnyAnswerCountsAsDelivered) {
    const RecordingServer server("reply", "egal was");
    serve(server);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kSent});
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    ASSERT_EQ(server.requests().size(), 1u);
    EXPECT_EQ(
        addressIn(server.requests()[0]),
        "/bug_report.php?bromvaleversion=1.0.0&errnr=13&errdesc=Typen%20unverträglich&errbereich=Registry-"
        "Scan"
        "&os=Windows%20XP&sp=SP%202&errtxt=Beim%20Start&vonwo=Programm&email_abs=kunde@bromvale.example");
    EXPECT_NE(server.requests()[0].find("\r\nUser-Agent: Bromvale\r\n"), std::string::npos);
    EXPECT_NE(server.requests()[0].find("\r\nHost: " + server.host() + "\r\n"), std::string::npos);
}

TEST_F(Report, ALineBreakInAFieldGoesOutAsItIs) {
    const RecordingServer server("reply", "ok");
    serve(server);
    ReportFields fields = kFields;
    fields.errorText = "Zeile 1\r\nZeile 2&errnr=99";
    BugReport(fields);
    EXPECT_EQ(boxTexts(), Texts{kSent});
    ASSERT_EQ(server.requests().size(), 1u);
    EXPECT_NE(server.requests()[0].find("&errdesc=Zeile%201\r\nZeile%202&errnr=99&errbereich="),
              std::string::npos)
        << server.requests()[0];
}

TEST_F(Report, TheDeliveryIsTraced) {
    const RecordingServer server("reply", "ok");
    serve(server);
    switchTracingOn();
    BugReport(kFields);
    EXPECT_EQ(logLines(),
              (Texts{"modInternet; BugReport; started; 0; ", "modInternet; BugReport; gesendet; 0; ",
                     "modInternet; BugReport; endet; 0; "}));
}

TEST_F(Report, AnErrorPageCountsAsDelivered) {
    const RecordingServer server("error", "kaputt");
    serve(server);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kSent});
}

TEST_F(Report, AnAnswerWithoutALengthCountsAsDelivered) {
    const RecordingServer server("raw", "HTTP/1.0 200 OK\r\n\r\nok");
    serve(server);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kSent});
}

TEST_F(Report, AnAnswerInChunksCountsAsDelivered) {
    const RecordingServer server(
        "raw", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\n   \r\n2\r\nok\r\n0\r\n\r\n");
    serve(server);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kSent});
}

TEST_F(Report, AnAnswerOfTenMegabytesIsReadOnce) {
    const RecordingServer server("reply", std::string(10 << 20, 'x'));
    serve(server);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kSent});
    EXPECT_EQ(server.requests().size(), 1u);
}

TEST_F(Report, TheReadBringsThreeThousandBytes) {
    // What counts may stand behind the first thousand.
    const RecordingServer server("reply", std::string(2999, ' ') + "x");
    serve(server);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kSent});
}

TEST_F(Report, WhatStandsBehindThreeThousandBlanksIsNotSeen) {
    const RecordingServer server("reply", std::string(3000, ' ') + "x");
    serve(server);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kNotSent});
}

TEST_F(Report, AnAnswerThatComesByteByByteIsWaitedFor) {
    const RecordingServer server("trickle", "   x");
    serve(server);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kSent});
}

TEST_F(Report, APageThatTricklesOnAndOnCountsAsDeliveredWhenThePatienceIsOver) {
    internetPatience = 3000;
    const RecordingServer server("trickle", std::string(60, 'x'));
    serve(server);
    const double seconds = realSeconds([] { BugReport(kFields); });
    EXPECT_EQ(boxTexts(), Texts{kSent});
    EXPECT_GE(seconds, 3);
    EXPECT_LT(seconds, 20);
}

TEST_F(Report, WhatCameBeforeTheServerFellSilentCountsAsDelivered) {
    internetPatience = 3000;
    const RecordingServer server("stall", "ok");
    serve(server);
    const double seconds = realSeconds([] { BugReport(kFields); });
    EXPECT_EQ(boxTexts(), Texts{kSent});
    EXPECT_GE(seconds, 3);
    EXPECT_LT(seconds, 20);
}

TEST_F(Report, AServerThatFallsSilentAfterBlanksLooksLikeAnEmptyAnswer) {
    internetPatience = 3000;
    const RecordingServer server("stall", "  x");
    serve(server);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kNotSent});
}

TEST_F(Report, AForwardingIsFollowed) {
    const RecordingServer server("forward", "ok");
    serve(server);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kSent});
    ASSERT_EQ(server.requests().size(), 2u);
    EXPECT_EQ(addressIn(server.requests()[1]), "/elsewhere");
}

TEST_F(Report, EveryKindOfEmptyAnswerIsToldAndLogged) {
    const struct {
        const char* mode;
        const char* answer;
    } kCases[] = {{"reply", ""}, {"reply", "     "}, {"close", ""}, {"raw", ""}};
    for (const auto& row : kCases) {
        const RecordingServer server(row.mode, row.answer);
        serve(server);
        BugReport(kFields);
        EXPECT_EQ(boxTexts().back(), kNotSent) << row.mode;
        EXPECT_EQ(boxes().back().caption, "Bromvale");
        EXPECT_EQ(logLines().back(),
                  "modInternet; BugReport; ; 61001; Es besteht ein Problem mit Ihrer Internetverbindung.");
    }
    EXPECT_EQ(boxes().size(), 4u);
    EXPECT_EQ(logLines().size(), 4u);
}

TEST_F(Report, NobodyListeningLooksLikeAnEmptyAnswer) {
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kNotSent});
}

TEST_F(Report, AHostThatDoesNotExistLooksLikeAnEmptyAnswer) {
    WebHost = "www.bromvale.invalid";
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), Texts{kNotSent});
}

TEST_F(Report, YesSendsTheSameFieldsOnceMoreAsOftenAsItIsSaid) {
    const RecordingServer server("reply", "  ");
    serve(server);
    switchTracingOn();
    answer(IDYES);
    answer(IDYES);
    BugReport(kFields);
    EXPECT_EQ(boxTexts(), (Texts{kNotSent, kNotSent, kNotSent}));
    const Texts requests = server.requests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0], requests[2]);
    const std::string failure =
        "modInternet; BugReport; ; 61001; Es besteht ein Problem mit Ihrer Internetverbindung.";
    const std::string tag = "modInternet; BugReport; ";
    EXPECT_EQ(logLines(), (Texts{tag + "started; 0; ", failure, tag + "wiederholt; 0; ", tag + "started; 0; ",
                                 failure, tag + "wiederholt; 0; ", tag + "started; 0; ", failure,
                                 tag + "endet; 0; ", tag + "endet; 0; ", tag + "endet; 0; "}));
}

}  // namespace
}  // namespace bromvale::testing
