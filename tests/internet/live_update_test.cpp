// The check for an update: its three outcomes.
#include "internet/live_update.h"

#include "tests/internet/internet_fixture.h"

namespace bromvale::testing {
namespace {

const char* const kNoVersionLine =
    "modInternet; LiveUpdate; ; 61000; Es besteht ein Problem mit Ihrer Internetverbindung.";

using Update = InternetTest;

TEST_F(Update, AnEqualVersionIsNothingNew) {
    const RecordingServer server("reply", "1.0.0");
    WebHost = server.host();
    nav("Live-Update");
    EXPECT_EQ(boxTexts(), Texts{kNothingNew});
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    ASSERT_EQ(server.requests().size(), 1u);
    EXPECT_EQ(addressIn(server.requests()[0]), "/appver.txt");
}

TEST_F(Update, BlanksInTheAnswerDoNotCount) {
    const RecordingServer server("reply", " 1. 0.0   ");
    WebHost = server.host();
    nav("Live-Update");
    EXPECT_EQ(boxTexts(), Texts{kNothingNew});
}

TEST_F(Update, ASmallerVersionIsNothingNew) {
    const RecordingServer server("reply", "0.9.9");
    WebHost = server.host();
    LiveUpdate();
    EXPECT_EQ(boxTexts(), Texts{kNothingNew});
}

TEST_F(Update, AVersionWithTwoDigitsCountsAsSmaller) {
    AppVersion = "1.2.0";
    const RecordingServer server("reply", "1.10.0");
    WebHost = server.host();
    LiveUpdate();
    EXPECT_EQ(boxTexts(), Texts{kNothingNew});
}

TEST_F(Update, NothingNewIsTraced) {
    const RecordingServer server("reply", "1.0.0");
    WebHost = server.host();
    switchTracingOn();
    LiveUpdate();
    EXPECT_EQ(logLines(), (Texts{"modInternet; LiveUpdate; started; 0; ",
                                 "modInternet; LiveUpdate; Zur Zeit gibt es kein Update. ; 0; ",
                                 "modInternet; LiveUpdate; endet; 0; "}));
}

TEST_F(Update, NoNetworkAndNoEndsWithAReportAndNothingElse) {
    nav("Live-Update");
    EXPECT_EQ(boxTexts(), Texts{kNoVersion});
    EXPECT_EQ(logLines(), Texts{kNoVersionLine});
}

TEST_F(Update, AnEmptyFileAsksAndYesAsksTheServerOnceMore) {
    const RecordingServer server("reply", "   ");
    WebHost = server.host();
    switchTracingOn();
    answer(IDYES);
    LiveUpdate();
    EXPECT_EQ(boxTexts(), (Texts{kNoVersion, kNoVersion}));
    EXPECT_EQ(server.requests().size(), 2u);
    EXPECT_EQ(logLines(),
              (Texts{"modInternet; LiveUpdate; started; 0; ", kNoVersionLine,
                     "modInternet; LiveUpdate; wiederholt; 0; ", "modInternet; LiveUpdate; started; 0; ",
                     kNoVersionLine, "modInternet; LiveUpdate; endet; 0; ",
                     "modInternet; LiveUpdate; endet; 0; "}));
}

TEST_F(Update, ADeadProxyEndsItWithoutAnyEffect) {
    const RecordingServer server("reply", "1.0.0");
    WebHost = server.host();
    useProxy("127.0.0.1", kDeadPort);
    nav("Live-Update");
    EXPECT_EQ(boxTexts(), Texts{});
    EXPECT_EQ(server.requests(), Texts{});
    EXPECT_EQ(logLines(), Texts{});
}

TEST_F(Update, AProxyIsGreetedFirst) {
    const RecordingServer proxy("silent");
    const RecordingServer server("reply", "1.0.0");
    WebHost = server.host();
    useProxy("127.0.0.1", proxy.port());
    nav("Live-Update");
    EXPECT_EQ(boxTexts(), Texts{kNothingNew});
    ASSERT_EQ(proxy.requests().size(), 1u);
    EXPECT_EQ(proxy.requests()[0].substr(0, proxy.requests()[0].find("\r\n")),
              "GET http://" + server.host() + "/ HTTP/1.0");
}

}  // namespace
}  // namespace bromvale::testing
