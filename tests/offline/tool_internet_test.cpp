// bromvale-offline and the web services: a server of the host stands in for the maker's.
#include "platform/offline/locale/code_page.h"
#include "tests/internet/recording_server.h"
#include "tests/offline/tool_run.h"

namespace bromvale::testing {
namespace {

class ToolInternet : public ToolTest {
  protected:
    Outcome runOn(const RecordingServer& server, const std::string& script) {
        return runScript({"--web-host", server.host()}, script);
    }
};

TEST_F(ToolInternet, AReportIsSentFromThePage) {
    const RecordingServer server("reply", "ok");
    const Outcome outcome = runOn(server, R"(nav Bug-Report
text txtErrNr 13
text txtErrDesc Typen unvertraeglich
text txtErrtxt Beim Start
text txtEMail kunde@bromvale.example
click cmdBugReportSenden
)");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const std::string query =
        "/bug_report.php?bromvaleversion=" BROMVALE_VERSION
        "&errnr=13&errdesc=Typen%20unvertraeglich"
        "&errbereich=Bromvale%20installieren&os=Windows%20XP&sp=Build%202600&errtxt=Beim%20Start";
    EXPECT_NE(outcome.out.find("\nfetch: http://" + server.host() + query +
                               "\\n\\n;%20Bericht%20aus%20dem%20Programm"
                               "&vonwo=Programm&email_abs=kunde@bromvale.example\n"),
              std::string::npos)
        << outcome.out;
    EXPECT_NE(outcome.out.find("Der Bug-Report ist erfolgreich versendet worden. -> OK\n"), std::string::npos)
        << outcome.out;
    ASSERT_EQ(server.requests().size(), 1u);
    EXPECT_TRUE(server.requests()[0].starts_with("GET " + query + "\r\n\r\n;%20Bericht"))
        << server.requests()[0];
}

TEST_F(ToolInternet, AnUpdateIsSavedWhereTheScriptSays) {
    const RecordingServer server("reply", "9.0.0");
    const Outcome outcome = runOn(server, "save C:\\Update.exe\nnav Live-Update\n");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    for (const std::string& line : {"fetch: http://" + server.host() + "/appver.txt",
                                    "download: http://" + server.host() + "/download.php?file=update",
                                    std::string("save dialog: Bromvale-Update.exe -> C:\\Update.exe"),
                                    std::string("make file: C:\\Update.exe.1.teil"),
                                    std::string("move file: C:\\Update.exe.1.teil -> C:\\Update.exe")}) {
        EXPECT_NE(outcome.out.find("\n" + line + "\n"), std::string::npos) << line << "\n" << outcome.out;
    }
}

TEST_F(ToolInternet, TheHomepageIsTheGivenHosts) {
    const Outcome outcome = runScript({"--web-host", "localhost:1"}, "nav Homepage\n");
    EXPECT_NE(outcome.out.find("http://localhost:1/\n"), std::string::npos) << outcome.out;
}

}  // namespace
}  // namespace bromvale::testing
