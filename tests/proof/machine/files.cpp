// The drive: the program's folder, folders with references, folders that are to be emptied, links.
#include "tests/proof/machine/names.h"

namespace bromvale::proof {
namespace {

void addFiles(Model& model, Random& random, View folder, int count) {
    for (int i = 0; i < count; ++i)
        model.drive.make(Text(folder) + u"\\" + someFileName(random, model.system), EntryKind::File);
}

// `folder` becomes a tree with files, folders and links to folders elsewhere.
void fillFolder(Model& model, Random& random, const Text& folder, int depth) {
    model.drive.make(folder, EntryKind::Folder);
    addFiles(model, random, folder, random.from(0, 3));
    const bool links = model.system.family == Family::Modern;
    if (links && random.percent(35)) {
        const Text name = folder + u"\\" + someName(random, model.system) + u".Verweis";
        const bool dangling = random.percent(25);
        Entry& link = model.drive.make(name, dangling ? EntryKind::DanglingLink : EntryKind::LinkToFolder);
        if (link.kind != EntryKind::Folder && link.kind != EntryKind::File)
            link.target = dangling ? u"C:\\Nirgends" : u"C:\\Ziel";
    }
    if (depth == 0) return;
    for (int i = random.from(0, 2); i > 0; --i) {
        const Text below = folder + u"\\" + someFileName(random, model.system);
        if (model.drive.find(below) == nullptr) fillFolder(model, random, below, depth - 1);
    }
}

// Lines of the list: folders that are there or not, paths that the system would read as others.
void planEmptying(Model& model, Random& random) {
    constexpr View kWays[] = {u"C:\\Leeren",
                              u"C:\\Leeren\\",
                              u"C:\\Leeren\\Daten.",
                              u"C:\\Leeren\\t\\..",
                              u"C:\\Leeren\\Daten ",
                              u"C:\\Nirgends",
                              u"C:\\LEEREN\\Daten",
                              u"C:\\Auch\\Daten",
                              u"C:\\Auch\\.",
                              u"C:\\Auch\\ \\x",
                              u"C:\\Auch",
                              u"C:\\Tmp",
                              u"",
                              u"C:\\Auch\\Daten..",
                              u"C:\\Ziel\\..\\Leeren",
                              u"\\\\kein\\anteil\\x"};
    for (int i = random.from(1, 4); i > 0; --i) model.plan.list.emplace_back(random.oneOf(kWays));
    for (int i = random.from(0, 3); i > 0; --i) {
        Text path =
            random.percent(40) ? Text(random.oneOf(kWays)) : u"C:\\Auch\\" + someName(random, model.system);
        if (!path.empty()) model.plan.chosen.push_back(std::move(path));
    }
}

}  // namespace

void generateFiles(Model& model, Random& random) {
    Entry& drive = model.drive;
    const bool nine = model.system.family == Family::Nine;
    const Text systemFolder = nine ? u"WINDOWS\\SYSTEM" : u"WINDOWS\\SYSTEM32";
    for (const Text& folder :
         {Text(u"Programme\\Bromvale\\Backup"), systemFolder, Text(u"WINDOWS\\TEMP"), Text(u"x"),
          Text(u"Ziel\\tief"), Text(u"Leeren\\Daten"), Text(u"Leeren\\t"), Text(u"Auch\\Daten")})
        drive.make(folder, EntryKind::Folder);
    drive.make(u"Ziel\\bleibt.txt", EntryKind::File);
    drive.make(u"Ziel\\tief\\bleibt.dll", EntryKind::File);
    addFiles(model, random, u"x", random.from(2, 6));
    addFiles(model, random, u"Daten", random.from(0, 2));
    addFiles(model, random, systemFolder, random.from(0, 2));
    if (model.system.sixtyFour) addFiles(model, random, u"WINDOWS\\SysWOW64", random.from(1, 3));
    fillFolder(model, random, u"Leeren", 3);
    fillFolder(model, random, u"Leeren\\Daten", 1);
    fillFolder(model, random, u"Auch", 2);
    if (random.percent(50)) fillFolder(model, random, u"Tmp", 1);
    planEmptying(model, random);
}

}  // namespace bromvale::proof
