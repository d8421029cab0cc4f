#pragma once
#include "core/state.h"
#include "tests/internet/recording_server.h"
#include "tests/ui/main_form_fixture.h"

namespace bromvale::testing {

using Texts = std::vector<std::string>;

inline constexpr const char* kSent =
    "Vielen Dank für Ihre Unterstützung.\r\n\r\nDer Bug-Report ist erfolgreich versendet worden.";
inline constexpr const char* kNotSent =
    "Es besteht ein Problem mit Ihrer Internetverbindung.\r\n\r\n"
    "Der Bug-Report konnte noch nicht versendet werden.\r\n"
    "Stellen Sie sicher, das eine Internetverbindung besteht.\r\n\r\n"
    "Soll der Versand noch einmal versucht werden?";
inline constexpr const char* kNothingNew = "Zur Zeit gibt es kein Update.";
inline constexpr const char* kNoVersion =
    "Es besteht ein Problem mit Ihrer Internetverbindung.\r\n\r\n"
    "Stellen Sie sicher, das eine Internetverbindung besteht.\r\n\r\n"
    "Soll erneut nach einem Update gesucht werden?";

// A machine whose web services are a server of the test's own, or nobody.
class InternetTest : public MainFormTest {
  protected:
    InternetTest() { WebHost = deadHost(); }

    static std::string deadHost() { return "127.0.0.1:" + std::to_string(kDeadPort); }
    Texts boxTexts() {
        Texts texts;
        for (const ShownBox& box : boxes()) texts.push_back(box.text);
        return texts;
    }
    // What stands between the verb and the protocol of the request.
    static std::string addressIn(const std::string& request) {
        const std::size_t end = request.find(" HTTP/1.1\r\n");
        return request.starts_with("GET ") && end != std::string::npos ? request.substr(4, end - 4)
                                                                       : "<none>";
    }
    static void useProxy(const std::string& host, int port) {
        Proxy = 1;
        ProxyAdresse = host;
        ProxyPort = static_cast<std::int16_t>(port);
    }
};

}  // namespace bromvale::testing
