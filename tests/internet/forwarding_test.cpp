// Where a forwarding leads to, and that one which never ends is given up.
#include "base/forwarding.h"

#include "internet/bug_report.h"
#include "internet/live_update.h"
#include "tests/internet/internet_fixture.h"

namespace bromvale::testing {
namespace {

struct Case {
    const char* from;
    const char* location;
    const char* leadsTo;
};
constexpr Case kCases[] = {
    {"http://a.de/x/y?q", "http://b.de:81/z", "http://b.de:81/z"},
    {"http://a.de/x/y?q", "HTTPS://b.de", "HTTPS://b.de"},
    {"http://a.de/x/y?q", "//b.de/z", "http://b.de/z"},
    {"http://a.de:81/x/y?q", "/z", "http://a.de:81/z"},
    {"http://a.de/x/y?q", "z", "http://a.de/x/z"},
    {"http://a.de/x/y?q=/u/v", "z", "http://a.de/x/z"},
    {"http://a.de/x/y/", "z", "http://a.de/x/y/z"},
    {"http://a.de", "z", "http://a.de/z"},
    {"http://a.de?q=1", "z", "http://a.de/z"},
    {"http://a.de/x/y", "./z", "http://a.de/x/z"},
    {"http://a.de/x/y", "../z?r=1", "http://a.de/z?r=1"},
    {"http://a.de/x/y", "../../../z", "http://a.de/z"},
    {"http://a.de/x/y/z", "..", "http://a.de/x/"},
    {"http://a.de/x/y", ".", "http://a.de/x/"},
    {"http://a.de/x/y?q", "?r", "http://a.de/x/y?r"},
    {"http://a.de/x/y?q", "", "http://a.de/x/y?q"},
    {"http://a.de/x/y?q", "#teil", "http://a.de/x/y?q"},
    {"http://a.de/x/y", "z?u=b:c", "http://a.de/x/z?u=b:c"},
    {"http://a.de/x/y", " z\t", "http://a.de/x/z"},
    {"http://a.de/x/y#teil/u", "z#v", "http://a.de/x/z"},
};

TEST(ForwardingTest, RelativeAddressesAreReadFromWhereTheyStood) {
    for (const Case& row : kCases)
        EXPECT_EQ(forwardedAddress(row.from, row.location), row.leadsTo)
            << row.from << " to " << row.location;
}

TEST(ForwardingTest, OnlyTheseStatusesForward) {
    for (const int status : {301, 302, 303, 307, 308}) EXPECT_TRUE(isForwarding(status)) << status;
    for (const int status : {200, 204, 300, 304, 305, 306, 309, 400, 404, 500})
        EXPECT_FALSE(isForwarding(status)) << status;
}

using Forwarded = InternetTest;

TEST_F(Forwarded, EachRelativeAddressIsAskedWhereItLeads) {
    const RecordingServer server("wander", "ok");
    WebHost = server.host();
    BugReport({});
    EXPECT_EQ(boxTexts(), Texts{kSent});
    Texts addresses;
    for (const std::string& request : server.requests()) addresses.push_back(addressIn(request));
    ASSERT_FALSE(addresses.empty());
    addresses.erase(addresses.begin());
    EXPECT_EQ(addresses, (Texts{"/ordner/eins?a=1", "/ordner/zwei", "/drei", "/drei?b=2", "/vier"}));
}

// The tenth forwarding is followed, the eleventh is not; and nobody goes on behind the user's No.
TEST_F(Forwarded, AServerThatForwardsOnAndOnIsGivenUpAfterTen) {
    const RecordingServer server("circle");
    WebHost = server.host();
    answer(IDNO);
    LiveUpdate();
    EXPECT_EQ(boxTexts(), Texts{kNoVersion});
    EXPECT_EQ(server.requests().size(), 11u);
    for (int i = 0; i < 50; ++i) waitABit();
    EXPECT_EQ(server.requests().size(), 11u);
}

TEST_F(Forwarded, TenForwardingsAreFollowedToTheirEnd) {
    const RecordingServer server("ten", "1.0.0");
    WebHost = server.host();
    LiveUpdate();
    EXPECT_EQ(boxTexts(), Texts{kNothingNew});
    EXPECT_EQ(server.requests().size(), 11u);
}

}  // namespace
}  // namespace bromvale::testing
