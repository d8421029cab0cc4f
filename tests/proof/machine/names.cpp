#include "tests/proof/machine/names.h"

#include <vector>

namespace bromvale::proof {
namespace {

constexpr View kPlain[] = {u"Daten", u"lap", u"Zdjecia", u"Foto-Alt", u"Test",
                           u"srv",   u"a",   u"b",       u"Zdjecie",  u"s"};
constexpr View kWithUmlauts[] = {u"Größe", u"Jörg", u"Söhne", u"Éclair", u"Straße"};
constexpr View kOneLost[] = {
    u"łap", u"Zdjęcia", u"Zdjęcie", u"Łukasz", u"Şule", u"Пётр",          u"漢字", u"表",  u"ﬀ",
    u"ş",   u"ćma",     u"WŁódź",   u"п",      u"øre",  u"Foto\u2011Alt", u"Ｓrv", u"ｓrv"};
constexpr View kWide[] = {u"a＼b", u"．．",  u"x．exe", u"C：",  u"［x］", u"x＝y",
                          u"x＠",  u"＂a＂", u"｛A｝",  u"a／b", u"＊",    u"？ap"};
constexpr View kAwkward[] = {u"a]b",      u"x=y",  u"[x",      u"a@b",        u"@",
                             u"mit Leer", u"x..y", u"command", u"commandline"};

Text choose(Random& random, bool forFile) {
    const int kind = random.below(100);
    if (kind < 45) return Text(random.oneOf(kPlain));
    if (kind < 55) return Text(random.oneOf(kWithUmlauts));
    if (kind < 80) return Text(random.oneOf(kOneLost));
    if (kind < 92) return Text(random.oneOf(kWide));
    Text name(random.oneOf(kAwkward));
    return forFile && name.find(u'"') != Text::npos ? u"x" : name;
}

Text fitting(Random& random, const System& system, bool forFile) {
    for (;;) {
        Text name = choose(random, forFile);
        if (system.family != Family::Nine || isExactOn(system.codePage, name)) return name;
    }
}

void collect(const Entry& entry, const Text& path, std::vector<Text>& paths) {
    const Text own = path.empty() ? entry.name : path + u"\\" + entry.name;
    if (!path.empty()) paths.push_back(own);
    for (const Entry& below : entry.entries) collect(below, own, paths);
}

}  // namespace

Text someName(Random& random, const System& system) {
    return fitting(random, system, false);
}

Text someFileName(Random& random, const System& system) {
    constexpr View kEndings[] = {u".dll", u".exe", u".txt", u".ocx", u".tlb", u""};
    return fitting(random, system, true) + Text(random.oneOf(kEndings));
}

Text somePath(Random& random, const Model& model, bool mayLackLetters) {
    std::vector<Text> there;
    collect(model.drive, u"", there);
    for (int tries = 0; tries < 20; ++tries) {
        Text path;
        if (random.percent(55)) {
            path = random.oneOf(there);
        } else {
            constexpr View kFolders[] = {u"C:\\x",   u"C:\\Programme", u"C:\\WINDOWS\\SYSTEM32",
                                         u"C:\\Weg", u"C:\\Daten",     u"E:"};
            path = Text(random.oneOf(kFolders)) + u"\\" + someFileName(random, model.system);
        }
        if (mayLackLetters || isExactOn(model.system.codePage, path)) return path;
    }
    return u"C:\\Weg\\fort.dll";
}

}  // namespace bromvale::proof
