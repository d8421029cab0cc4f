#pragma once
// What a scan must find, read straight off the rules of a fault by the true names. Simple and slow, and
// without any code of the scanner's.
#include <string>
#include <vector>

#include "tests/proof/machine/model.h"

namespace bromvale::proof {

// As the list holds it, in the system's code page.
struct Row {
    std::string keyLine;
    std::string valueName;
    std::string valueData;
    std::string hive;
    // NOLINTNEXTLINE(modernize-use-nullptr): the zero is the compiler's
    auto operator<=>(const Row&) const = default;
};

struct Findings {
    std::vector<Row> rows;
    // The keys that a removal of the rows aims at, with the hive's name, where they really lie.
    std::vector<Text> targets;
    int entries = 0;
};

// One value that the walk meets, as the driver takes its line apart.
struct Line {
    std::int32_t hive = 0;
    Text key;  // with its "]"
    Text name;
    Text value;
    bool lostName = false;  // a key on the way has a name that the code page lacks
};

// The lines of the nine steps, in the order of the walk.
[[nodiscard]] std::vector<Line> collectLines(const Model& model);

// Whether a path that the code page holds leads to a file or folder, seen by the machine's program.
[[nodiscard]] bool fileExists(const Model& model, View path);
// The same for a file alone.
[[nodiscard]] bool isFile(const Model& model, View path);

// Null where the program can't open it: missing, denied, or too long for the call.
[[nodiscard]] const Key* openKey(const Model& model, std::int32_t hive, View path);
// Where the program's path really lies on a 64-bit system.
[[nodiscard]] Text realKeyPath(const System& system, std::int32_t hive, View path);

// What the ANSI functions make of a text on this machine.
[[nodiscard]] std::string ansi(const System& system, View text);

// The buffers of the checks outlive a scan, as they do in the program.
class Oracle {
  public:
    [[nodiscard]] Findings scan(const Model& model);

  private:
    struct Found {
        Row row;
        Text target;
        std::size_t group;
    };
    void checkReg(const Line& line);
    void checkLink(const Line& line);
    void close(const Line& next);
    [[nodiscard]] bool checkFile(const Line& next, std::size_t index);
    [[nodiscard]] Text prefixOf(const Text& key, View appPaths) const;
    void add(std::int32_t hiveNamed, bool slash, const Line& entry, bool quoted, bool doubled);
    void forgetGroup();

    const Model* model_ = nullptr;
    std::vector<Found> found_;
    std::vector<Line> group_;
    Text prefix_;
    bool open_ = false;
    bool repeat_ = false;
    bool leftAlone_ = false;  // the open group holds a name that is lost
    std::size_t number_ = 0;  // of the open group
};

}  // namespace bromvale::proof
