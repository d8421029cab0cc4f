// The registry: objects of all five kinds in both hives, with every oddity that the scan knows.
#include "tests/proof/machine/names.h"

namespace bromvale::proof {
namespace {

constexpr View kIds[] = {u"{0000000A-0000-0000-C000-000000000046}",
                         u"{0000000B-0000-0000-C000-000000000046}",
                         u"{0000000C-1111-2222-3333-444455556666}",
                         u"{0000000D-1111-2222-3333-444455556666}",
                         u"{E}",
                         u"{f}"};
constexpr View kFileKeys[] = {u"InprocServer32", u"InprocHandler32", u"LocalServer32",
                              u"shell\\open\\command", u"commandline"};
constexpr View kCurrent = u"Software\\Microsoft\\Windows\\CurrentVersion\\";

class Builder {
  public:
    Builder(Model& model, Random& random) : model_(model), random_(random) {}

    void classes(Key& hive, View view) {
        fill(hive, view, u"CLSID", &Builder::classId);
        fill(hive, view, u"Interface", &Builder::interfaceId);
        fill(hive, view, u"TypeLib", &Builder::typeLib);
    }
    void appPaths(Key& hive, View software);
    void uninstall(Key& hive, View software);
    void wrongPlaces(Key& hive);
    void oddities(Key& key);

  private:
    void fill(Key& hive, View view, View kind, void (Builder::*make)(Key&));
    void classId(Key& object);
    void interfaceId(Key& object);
    void typeLib(Key& object);
    void link(Key& object, View name) { object.make(name).setText(u"", linkText()); }
    Text linkText();
    Text reference();
    void oddValue(Key& key);
    void deepKey(Key& key);
    Text name() { return someName(random_, model_.system); }

    Model& model_;
    Random& random_;
};

void Builder::fill(Key& hive, View view, View kind, void (Builder::*make)(Key&)) {
    Key& place = hive.make(Text(view) + Text(kind));
    for (int i = random_.from(0, 3); i > 0; --i) {
        Text id(random_.oneOf(kIds));
        if (random_.percent(7)) id = u"{" + name() + u"}";
        if (random_.percent(3)) id = name();
        Key& object = place.make(id);
        if (random_.percent(60)) object.setText(u"", name());
        if (!random_.percent(12)) (this->*make)(object);
    }
    if (random_.percent(8)) oddValue(place);
}

// A command line or path, dressed as programs write it.
Text Builder::reference() {
    Text path = somePath(random_, model_, random_.percent(30));
    if (random_.percent(6)) return name() + u":\\" + someFileName(random_, model_.system);
    if (random_.percent(4)) return u"\\\\server\\anteil\\" + someFileName(random_, model_.system);
    if (random_.percent(8)) return someFileName(random_, model_.system);
    if (random_.percent(6)) path = u"%SystemRoot%\\System32\\" + someFileName(random_, model_.system);
    if (random_.percent(3)) path = u"%WinDir%\\x.dll";
    if (random_.percent(3)) path = u"%ProgramFiles%\\x.dll";
    if (random_.percent(3)) path = u"%ProgrammFiles%\\x.dll";
    if (random_.percent(20)) path = u"\"" + path + u"\"";
    if (random_.percent(8)) path = u"rundll32.exe " + path;
    if (random_.percent(4)) path = u"łódź.exe " + path;
    if (random_.percent(15)) path += u" /automation";
    if (random_.percent(5)) path += u",-" + name();
    if (random_.percent(4)) path += u"\\..\\weg.dll";
    if (random_.percent(3)) path += random_.percent(50) ? u"." : u" ";
    // A mask looks at short names, too, which only the system knows.
    if (!model_.system.shortNames && random_.percent(4))
        path.insert(path.size() / 2, random_.percent(50) ? u"?" : u"*");
    if (model_.system.family == Family::Nine && !isExactOn(model_.system.codePage, path))
        return u"C:\\x\\weg.dll";
    return path;
}

Text Builder::linkText() {
    if (random_.percent(10)) return u"{" + name() + u"}";
    if (random_.percent(4)) return u"{}";
    if (random_.percent(4)) return u"{halb";
    return Text(random_.oneOf(kIds));
}

void Builder::classId(Key& object) {
    for (int i = random_.from(0, 2); i > 0; --i) {
        Key& server = object.make(random_.oneOf(kFileKeys));
        server.set(u"", random_.percent(20) ? kExpandText : kText, bytesOf(reference() + u'\0'));
        if (random_.percent(40)) server.setText(u"ThreadingModel", u"Apartment");
        if (random_.percent(15)) server.setText(name(), reference());
    }
    if (random_.percent(45)) link(object, u"TypeLib");
    if (random_.percent(10)) link(object, u"Interface");
    if (random_.percent(10)) link(object, u"clsid");
    if (random_.percent(30)) object.make(u"ProgID").setText(u"", name());
    if (random_.percent(25)) object.make(name()).setText(u"", name());
    oddities(object);
}

void Builder::interfaceId(Key& object) {
    if (random_.percent(60)) object.make(u"ProxyStubClsid32").setText(u"", linkText());
    if (random_.percent(60)) link(object, u"TypeLib");
    if (random_.percent(30)) object.make(u"NumMethods").setText(u"", u"7");
    oddities(object);
}

void Builder::typeLib(Key& object) {
    Key& version = object.make(u"1.0");
    if (random_.percent(70)) version.setText(u"", name());
    if (random_.percent(80)) version.make(u"0\\win32").setText(u"", reference());
    if (random_.percent(40)) version.make(u"HELPDIR").setText(u"", reference());
    oddities(object);
}

void Builder::appPaths(Key& hive, View software) {
    Key& place = hive.make(Text(software) + u"App Paths");
    for (int i = random_.from(0, 4); i > 0; --i) {
        Key& object = place.make(name() + u".exe" + (random_.percent(10) ? u"2" : u""));
        if (random_.percent(85)) object.setText(u"", reference());
        if (random_.percent(50)) object.setText(u"Path", u"C:\\x");
        oddities(object);
    }
}

void Builder::uninstall(Key& hive, View software) {
    Key& place = hive.make(Text(software) + u"Uninstall");
    for (int i = random_.from(0, 5); i > 0; --i) {
        Key& object = place.make(name());
        if (random_.percent(75))
            object.setText(u"DisplayName", name() + (random_.percent(5) ? u" Bromvale" : u""));
        if (random_.percent(60)) object.setText(u"UninstallString", reference());
        if (random_.percent(15)) object.set(u"SystemComponent", kNumber, std::string("\1\0\0\0", 4));
        if (random_.percent(15)) object.setText(name(), name());
        oddities(object);
    }
}

// Where the rows of dead links without a backslash behind the hive aim at.
void Builder::wrongPlaces(Key& hive) {
    if (!random_.percent(20)) return;
    for (const View kind : {u"CLSID", u"Interface"}) {
        Key& object = hive.make(u"Classes\\" + Text(kind)).make(random_.oneOf(kIds));
        object.setText(u"", name());
        link(object, random_.percent(50) ? u"clsid" : u"Interface");
        oddValue(object.make(u"TypeLib"));
    }
}

void Builder::oddValue(Key& key) {
    const Text valueName = random_.percent(15) ? Text() : name();
    switch (random_.below(9)) {
        case 0: return key.set(valueName, kNumber, std::string("\x10\0\0\0", 4));
        case 1: return key.set(valueName, kBinary, std::string("\1\2\0\xFF", 4));
        case 2: return key.set(valueName, kMultiText, bytesOf(name() + u'\0' + name() + u'\0' + u'\0'));
        case 3: return key.setText(valueName, Text(300, u'x'));
        case 4: return key.setText(valueName, Text(static_cast<std::size_t>(random_.from(252, 258)), u'y'));
        case 5: return key.set(valueName, kBinary, std::string(400, '\7'));
        case 6: return key.set(valueName, kNone, "");
        case 7: return key.set(valueName, kText, bytesOf(u"ab" + Text(1, u'\0') + u"cd" + u'\0'));
        default: return key.set(valueName, kText, bytesOf(u"a\"b\\c\r\nd" + Text(1, u'\0')));
    }
}

// More than 260 characters from the hive on.
void Builder::deepKey(Key& key) {
    key.make(Text(120, u'a') + u"\\" + Text(static_cast<std::size_t>(random_.from(60, 130)), u'b'))
        .setText(u"w", name());
}

void Builder::oddities(Key& key) {
    if (random_.percent(15)) oddValue(key);
    if (random_.percent(8)) {
        Key& below = key.make(name());
        if (random_.percent(60)) oddValue(below);
    }
    if (random_.percent(4)) deepKey(key);
    if (model_.system.family != Family::Nine && random_.percent(4)) key.denied = true;
}

void prune(Key& key, const System& system) {
    std::erase_if(key.keys, [&](const Key& below) { return !isExactOn(system.codePage, below.name); });
    std::erase_if(key.values, [&](const Value& value) {
        const bool isText = value.type == kText || value.type == kExpandText || value.type == kMultiText;
        return !isExactOn(system.codePage, value.name) ||
               (isText && !isExactOn(system.codePage, textOf(value.bytes)));
    });
    for (Key& below : key.keys) prune(below, system);
}

}  // namespace

void generateRegistry(Model& model, Random& random) {
    Builder builder(model, random);
    for (Key* hive : {&model.user, &model.machine}) {
        hive->make(u"Software");
        builder.classes(*hive, u"Software\\Classes\\");
        builder.uninstall(*hive, kCurrent);
        builder.wrongPlaces(*hive);
    }
    builder.appPaths(model.machine, kCurrent);
    if (model.system.sixtyFour) {
        for (Key* hive : {&model.user, &model.machine})
            builder.classes(*hive, u"Software\\Classes\\Wow6432Node\\");
        builder.uninstall(model.machine, u"Software\\Wow6432Node\\Microsoft\\Windows\\CurrentVersion\\");
    }
    model.machine.make(u"Software\\Microsoft\\Windows\\CurrentVersion\\Run");
    if (model.system.family == Family::Nine) {
        prune(model.machine, model.system);
        prune(model.user, model.system);
    }
}

}  // namespace bromvale::proof
