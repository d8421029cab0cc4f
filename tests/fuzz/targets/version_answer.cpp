// The answer of the version check: a greater text is an update, none at all a question, all else nothing new.
#include "core/state.h"
#include "internet/live_update.h"
#include "tests/fuzz/program.h"
#include "tests/fuzz/scripted_server.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

using offline::EventKind;

void run(std::string_view input) {
    constexpr std::size_t kMost = 3000;
    Pieces pieces(input);
    ScriptedServers servers;
    servers.pieceSize = std::size_t{1} + 16 * std::size_t{pieces.byte()};
    const std::string body(pieces.rest());
    servers.answers.push_back("HTTP/1.1 200 OK\r\n\r\n" + body);
    offline::Machine& machine = freshMachine();
    machine.connect = servers.connect();
    LiveUpdate();
    machine.connect = offline::connectByTcp;

    std::string version = body.substr(0, kMost);
    std::erase(version, ' ');
    const std::size_t downloads = machine.events.count(EventKind::Download);
    const auto boxes = machine.events.of(EventKind::MessageBox);
    require(machine.internetHandles == 0, "no handle is left open");
    require(downloads == (version > AppVersion ? 1u : 0u), "a greater text is an update");
    require(boxes.size() == 1 - downloads, "one box where there is none");
    if (boxes.empty()) return;
    const bool question = boxes[0].text.ends_with("Soll erneut nach einem Update gesucht werden?");
    require(question == version.empty(), "an empty answer is asked about");
    require(question || boxes[0].text == "Zur Zeit gibt es kein Update.", "all else is nothing new");
}

std::vector<std::string> seeds() {
    return {
        "\1"
        "1.1.0",
        "\1"
        "1.1.0\r\n",
        "\1"
        "1.0.9",
        "\1   ",
        "\xFF<html>",
        "\1"
        "2"};
}

const KnownTarget kTarget({"version_answer", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
