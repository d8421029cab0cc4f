#include "core/log.h"

#include "core/routine.h"
#include "core/state.h"
#include "core/text_file.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "tests/support/test_machine.h"

namespace bromvale {
namespace {

using Lines = std::vector<std::string>;

class Log : public testing::TestMachine {
  protected:
    Log() {
        fillState();
        setErrorDialog(
            [this](auto modul, auto funktion, std::int32_t nummer, auto beschreibung, std::int32_t stil) {
                dialogs.push_back(std::string(modul).append("|").append(funktion).append("|") +
                                  std::to_string(nummer) + "|" + std::string(beschreibung) + "|" +
                                  std::to_string(stil));
            });
    }
    ~Log() override { setErrorDialog(nullptr); }
    static void report(std::int32_t style, std::int16_t show) {
        ErrHandle("modMain", "Main", "Text", 5, "Beschreibung", style, show);
    }
    Lines dialogs;
};

TEST_F(Log, StopAndExclamationAreAlwaysLogged) {
    report(16, 0);
    report(48, 0);
    EXPECT_EQ(logLines(),
              (Lines{"modMain; Main; Text; 5; Beschreibung", "modMain; Main; Text; 5; Beschreibung"}));
    EXPECT_EQ(dialogs, Lines{});
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Log, StopAndExclamationShowTheDialogWithoutTheCallersOwnWords) {
    report(16, -1);
    report(48, -1);
    EXPECT_EQ(dialogs, (Lines{"modMain|Main|5|Beschreibung|16", "modMain|Main|5|Beschreibung|48"}));
    EXPECT_EQ(logLines().size(), 2u);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Log, QuestionAndInformationAreLoggedWhileLogAlways) {
    report(32, 0);
    report(64, 0);
    EXPECT_EQ(logLines(), Lines{});
    LogAlways = true;
    report(32, 0);
    report(64, 0);
    EXPECT_EQ(logLines(),
              (Lines{"modMain; Main; Text; 5; Beschreibung", "modMain; Main; Text; 5; Beschreibung"}));
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Log, AnInformationIsShownInABoxAndNotLoggedWithoutLogAlways) {
    report(64, -1);
    ASSERT_EQ(boxes().size(), 1u);
    EXPECT_EQ(boxes()[0].text, "Text");
    EXPECT_EQ(boxes()[0].caption, "Bromvale");
    EXPECT_EQ(logLines(), Lines{});
    EXPECT_EQ(dialogs, Lines{});
}

TEST_F(Log, OtherStylesDoNothingAtAll) {
    LogAlways = true;
    for (const std::int32_t style : {0, 4, 36, 52, 80}) report(style, -1);
    EXPECT_EQ(logLines(), Lines{});
    EXPECT_EQ(dialogs, Lines{});
    EXPECT_TRUE(boxes().empty());
}

TEST_F(Log, OnlyMinusOneCountsAsShow) {
    report(64, 1);
    report(16, 1);
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(dialogs, Lines{});
}

TEST_F(Log, EmptyFieldsKeepTheirSeparators) {
    ErrHandle("modMain", "Main", "", 0, "", 16, 0);
    EXPECT_EQ(logLines(), Lines{"modMain; Main; ; 0; "});
}

TEST_F(Log, NothingIsEscaped) {
    ErrHandle("modMain", "Main", "a; b\r\nc", -3, "d; e", 48, 0);
    const std::string log = readWholeFile(folder() + "bromvale.log");
    EXPECT_EQ(log.substr(log.find("; ")), "; modMain; Main; a; b\r\nc; -3; d; e\r\n");
}

TEST_F(Log, ALogThatCannotBeOpenedCostsTheRecordAndNothingElse) {
    AppPath = folder() + "fehlt\\";
    report(48, -1);
    EXPECT_EQ(dialogs, Lines{"modMain|Main|5|Beschreibung|48"});
    AppPath = folder();
    makeFolderOnDisk(folder() + "bromvale.log");
    report(48, 0);
    EXPECT_EQ(logLines(), Lines{});
    EXPECT_EQ(openFileCount(), 0);
    EXPECT_EQ(lastFailure().number, 0);
}

TEST_F(Log, ARecordThatFailsDoesNotEndUpInAnotherOpenFile) {
    openFile(folder() + "anders.txt", FileMode::Output, 1);
    AppPath = folder() + "fehlt\\";
    report(48, 0);
    closeFile(1);
    EXPECT_EQ(readWholeFile(folder() + "anders.txt"), "");
}

TEST_F(Log, TracingOffBuildsNoText) {
    int built = 0;
    const Tags tags{"modMain", "Main"};
    const auto text = [&] {
        ++built;
        return std::string("Wert");
    };
    LogAlways = true;
    tags.trace(text);
    EXPECT_EQ(built, 0);
    EXPECT_EQ(logLines(), Lines{});
    Protokoll = 2;  // only 1 is on
    tags.trace(text);
    EXPECT_EQ(built, 0);
    Protokoll = 1;
    tags.trace(text);
    tags.trace("started");
    EXPECT_EQ(built, 1);
    EXPECT_EQ(logLines(), (Lines{"modMain; Main; Wert; 0; ", "modMain; Main; started; 0; "}));
}

TEST_F(Log, ATraceWithinAHandlerCarriesTheFailure) {
    switchTracingOn();
    const auto onFailure = [](const Failure&) {
        trace("modMain", "Main", "im Handler");
        return Ending::Next;
    };
    attempt(onFailure, [] { raise(53); });
    trace("modMain", "Main", "danach");
    EXPECT_EQ(logLines(),
              (Lines{"modMain; Main; im Handler; 53; Datei nicht gefunden", "modMain; Main; danach; 0; "}));
}

TEST_F(Log, TheStartRecordHasNoNumber) {
    WriteLogStart();
    EXPECT_EQ(logLines(), Lines{"started; Bromvale; 1.0.0; für Windows 98/ME und NT4"});
}

TEST_F(Log, TheStartRecordGoesToTheCurrentDirectoryWhileThereIsNoProgramFolder) {
    makeFolderOnDisk(folder() + "hier");
    SetCurrentDirectoryA((folder() + "hier").c_str());
    AppPath.clear();
    WriteLogStart();
    SetCurrentDirectoryA(folder().c_str());
    EXPECT_EQ(filesIn(folder() + "hier\\", "*"), Lines{"bromvale.log"});
    EXPECT_EQ(filesIn(folder(), "*.log"), Lines{});
}

TEST_F(Log, ABoxGivesTheAnswer) {
    answer(IDYES);
    EXPECT_EQ(MsgBox("Wirklich?", 52), IDYES);
    EXPECT_EQ(MsgBox("Wirklich?", 36), IDNO);
    EXPECT_EQ(MsgBox("Fertig.", 64), IDOK);
    ASSERT_EQ(boxes().size(), 3u);
    EXPECT_EQ(boxes()[0].text, "Wirklich?");
    EXPECT_EQ(boxes()[2].text, "Fertig.");
}

}  // namespace
}  // namespace bromvale
