// What is fetched to a chosen place, and what becomes of a file that was there.
#include "internet/file_download.h"

#include "platform/files.h"
#include "platform/internet.h"
#include "tests/internet/internet_fixture.h"

namespace bromvale::testing {
namespace {

class FileDownload : public InternetTest {
  protected:
    FileDownload() { writeWholeFile(path(), "alt"); }
    [[nodiscard]] std::string path() const { return folder() + "Neu.exe"; }
    [[nodiscard]] bool fetches(const RecordingServer& server) const {
        return fetchFile("http://" + server.host() + "/x", path());
    }
    // The old file is as it was, and nothing lies beside it.
    void expectOldFile(const std::string& what = "") {
        EXPECT_EQ(readWholeFile(path()), "alt") << what;
        EXPECT_EQ(filesIn(folder(), "Neu*"), Texts{"Neu.exe"}) << what;
    }
};

TEST_F(FileDownload, AWholeFileTakesThePlaceOfTheOldOne) {
    const RecordingServer server("reply", "neu");
    EXPECT_TRUE(fetches(server));
    ASSERT_EQ(server.requests().size(), 1u);
    EXPECT_NE(server.requests()[0].find("\r\nUser-Agent: Bromvale\r\n"), std::string::npos);
    EXPECT_EQ(readWholeFile(path()), "neu");
    EXPECT_EQ(filesIn(folder(), "Neu*"), Texts{"Neu.exe"});
}

TEST_F(FileDownload, AFileWithoutALengthOrInChunksIsWholeAtItsEnd) {
    for (const char* bytes :
         {"HTTP/1.0 200 OK\r\n\r\nneu", "HTTP/1.1 206 Teil\r\nContent-Length: 3\r\n\r\nneu",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nne\r\n1\r\nu\r\n0\r\n\r\n"}) {
        writeWholeFile(path(), "alt");
        const RecordingServer server("raw", bytes);
        EXPECT_TRUE(fetches(server)) << bytes;
        EXPECT_EQ(readWholeFile(path()), "neu") << bytes;
    }
}

TEST_F(FileDownload, AServersPageAboutAnErrorIsNotTheFile) {
    const RecordingServer server("error", "<html>kaputt</html>");
    EXPECT_FALSE(fetches(server));
    expectOldFile();
    for (const char* status : {"302 Found", "304 Wie vorher", "404 Fehlt"}) {
        const RecordingServer other("raw", std::string("HTTP/1.1 ") + status + "\r\n\r\n<html>nein</html>");
        EXPECT_FALSE(fetches(other)) << status;
        expectOldFile(status);
    }
}

TEST_F(FileDownload, ALineThatBreaksLeavesTheOldFile) {
    const RecordingServer server("raw", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nzu kurz");
    EXPECT_FALSE(fetches(server));
    expectOldFile();
}

TEST_F(FileDownload, AServerThatFallsSilentLeavesTheOldFile) {
    internetPatience = 3000;
    const RecordingServer server("stall", "neu");
    EXPECT_FALSE(fetches(server));
    expectOldFile();
}

TEST_F(FileDownload, ASlowFileMayTakeLongerThanTheSilenceThatIsBorne) {
    internetPatience = 3000;
    const RecordingServer server("trickle", "langsam");
    EXPECT_TRUE(fetches(server));
    EXPECT_EQ(readWholeFile(path()), "langsam");
}

TEST_F(FileDownload, AFileThatMayNotBeReplacedStays) {
    ASSERT_TRUE(SetFileAttributesA(path().c_str(), FILE_ATTRIBUTE_READONLY));
    const RecordingServer server("reply", "neu");
    EXPECT_FALSE(fetches(server));
    expectOldFile();
    SetFileAttributesA(path().c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FileDownload, APartOfAnEarlierDownloadIsLeftAlone) {
    const std::string part = path() + ".1.teil";
    writeWholeFile(part, "früher");
    const RecordingServer server("reply", "neu");
    EXPECT_TRUE(fetches(server));
    EXPECT_EQ(readWholeFile(path()), "neu");
    EXPECT_EQ(readWholeFile(part), "früher");
}

TEST_F(FileDownload, AFolderThatIsNotThereTakesNoFile) {
    const RecordingServer server("reply", "neu");
    EXPECT_FALSE(fetchFile("http://" + server.host() + "/x", folder() + "fehlt\\Neu.exe"));
}

}  // namespace
}  // namespace bromvale::testing
