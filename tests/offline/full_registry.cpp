#include "tests/offline/full_registry.h"

#include <cstdint>
#include <cstdio>
#include <string_view>

namespace bromvale::testing {
namespace {

constexpr std::string_view kClasses = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\";
constexpr std::string_view kWindows = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";

class Writer {
  public:
    FullRegistry registry() {
        interfaces();
        classes();
        libraries();
        programs();
        finished_.file = "\xFF\xFE";
        for (const char unit : text_) {
            // The one character beyond ASCII is the sign of a trade mark.
            finished_.file += unit == '\x99' ? "\x22\x21" : std::string{unit, '\0'};
        }
        finished_.keysWithoutValue += keyIsEmpty_;
        return finished_;
    }

  private:
    // --- random things ---

    // True for `count` of `all`, spread evenly.
    bool some(unsigned count, unsigned all) { return number() % all < count; }
    std::uint32_t number() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return static_cast<std::uint32_t>(state_ >> 33);
    }
    template <class... Arguments>
    static std::string format(const char* picture, Arguments... arguments) {
        char text[200];
        std::snprintf(text, sizeof text, picture, arguments...);
        return text;
    }
    // Unlike any other, by `count_`.
    std::string guid() {
        const unsigned first = number() * 2u;
        const unsigned rest = number();
        return format("{%08X-%04X-11D%u-%04X-%012X}", first, rest >> 16, rest & 7, (rest >> 3) & 0xFFFF,
                      ++count_);
    }
    std::string path(const char* extension) {
        static constexpr const char* kFolders[] = {
            "C:\\\\Windows\\\\System32", "C:\\\\Program Files\\\\Hersteller",
            "C:\\\\Program Files\\\\Common Files\\\\Shared", "D:\\\\Spiele (alt)"};
        return format("%s\\\\modul%04u.%s", kFolders[number() % 4], number() % 3000, extension);
    }

    // --- the file ---

    void key(std::string_view name) {
        finished_.keysWithoutValue += keyIsEmpty_;
        keyIsEmpty_ = true;
        ++finished_.keys;
        text_ += "\r\n[";
        text_.append(name) += "]\r\n";
    }
    void value(std::string_view name, const std::string& data) {
        keyIsEmpty_ = false;
        ++finished_.values;
        text_ += name.empty() ? "@" : "\"" + std::string(name) + "\"";
        text_ += "=" + data + "\r\n";
    }
    void text(std::string_view name, const std::string& words) { value(name, "\"" + words + "\""); }
    void dword(std::string_view name) { value(name, format("dword:%08x", number())); }
    // Two bytes a character and a NUL: how the editor writes what is no plain text.
    void units(std::string_view name, int type, std::string_view words) {
        std::string data = format("hex(%d):", type);
        for (const char unit : words) data += format("%02x,00,", static_cast<unsigned char>(unit));
        value(name, data + "00,00");
    }
    void bytes(std::string_view name, const char* type, unsigned count) {
        std::string data = type;
        for (unsigned i = 0; i < count; ++i) data += format(i == 0 ? "%02x" : ",%02x", number() & 0xFF);
        value(name, data);
    }
    // A path, in every second class with a variable of the environment in it.
    void file(std::string_view name, const char* extension) {
        if (some(4, 8))
            units(name, 2, format("%%SystemRoot%%\\system32\\modul%04u.%s", number() % 3000, extension));
        else
            text(name, path(extension));
    }
    void below(const std::string& parent, std::string_view name, const std::string& words) {
        key(parent + "\\" + std::string(name));
        text("", words);
    }

    // --- the objects ---

    void interfaces() {
        key(std::string(kClasses) + "Interface");
        for (unsigned i = 0; i < 9640; ++i) {
            const std::string own = std::string(kClasses) + "Interface\\" + guid();
            key(own);
            text("", some(3, 100) ? "" : format("ISchnittstelle%u", i));
            if (some(99, 100)) below(own, "ProxyStubClsid32", guid());
            if (some(57, 100)) below(own, "ProxyStubClsid", guid());
            if (some(35, 100)) below(own, "NumMethods", format("%u", number() % 40 + 3));
            if (some(58, 100)) {
                below(own, "TypeLib", guid());
                text("Version", format("%u.%u", number() % 9 + 1, number() % 4));
            }
            if (some(2, 300))
                below(own, some(1, 2) ? "AsynchronousInterface" : "SynchronousInterface", guid());
        }
    }

    void classes() {
        key(std::string(kClasses) + "CLSID");
        for (unsigned i = 0; i < 5750; ++i) {
            const std::string own = std::string(kClasses) + "CLSID\\" + guid();
            key(own);
            if (!some(1, 20)) text("", some(1, 9) ? "" : format("Klasse %u (f\\\"%u\\\")", i, number() % 9));
            if (some(7, 100)) text("AppID", guid());
            if (some(5, 100)) text("LocalizedString", "@" + path("dll") + ",-100");
            server(own);
            description(own, i);
            rareParts(own);
        }
    }
    void server(const std::string& own) {
        if (some(6, 100)) {
            key(own + "\\LocalServer32");
            text("", "\\\"" + path("exe") + "\\\" -Embedding");
            return;
        }
        if (!some(97, 100)) return;
        const std::string server = own + (some(35, 100) ? "\\InProcServer32" : "\\InprocServer32");
        key(server);
        file("", "dll");
        if (some(94, 100)) text("ThreadingModel", some(1, 2) ? "Both" : "Apartment");
        if (!some(9, 100)) return;
        for (const char* version : {"", "\\2.0.0.0"}) {
            if (*version != '\0') key(server + version);
            text("Class", format("Hersteller.Klasse%u", count_));
            text("Assembly", "Hersteller, Version=2.0.0.0, Culture=neutral, PublicKeyToken=b03f5f7f11d50a3a");
            text("RuntimeVersion", "v2.0.50727");
        }
    }
    void description(const std::string& own, unsigned i) {
        if (some(35, 100)) below(own, some(2, 11) ? "ProgId" : "ProgID", format("Hersteller.Klasse%u.1", i));
        if (some(24, 100)) below(own, "VersionIndependentProgID", format("Hersteller.Klasse%u", i));
        if (some(14, 100)) below(own, "TypeLib", guid());
        if (some(11, 100)) below(own, "Version", "1.0");
        if (some(9, 100)) key(own + "\\Programmable");
        if (some(11, 100)) {
            key(own + "\\Implemented Categories");
            for (unsigned n = number() % 2 + 1; n-- > 0;) key(own + "\\Implemented Categories\\" + guid());
        }
        if (some(4, 100)) below(own, "DefaultIcon", path("ico") + ",0");
    }
    void rareParts(const std::string& own) {
        if (some(3, 100)) {
            below(own, "MiscStatus", "0");
            below(own, "MiscStatus\\1", "131473");
        }
        if (some(25, 1000)) {
            key(own + "\\ShellFolder");
            dword("Attributes");
            if (some(1, 2)) units("Verbs", 7, "open");
        }
        if (some(2, 100)) {
            const std::string instance = own + "\\Instance\\" + guid();
            key(own + "\\Instance");
            key(instance);
            text("FriendlyName", "Quelle 100% [Ton]; Bild=1");
            bytes("FilterData", "hex:", number() % 900);
            key(instance + "\\InitPropertyBag");
            dword("Enabled");
            bytes("leer", "hex(0):", 0);
        }
        if (some(2, 100)) {
            key(own + "\\Elevation");
            dword("Enabled");
            text("IconReference", "@" + path("dll") + ",-6");
        }
        if (some(1, 100)) {
            key(own + "\\DataFormats");
            key(own + "\\DataFormats\\GetSet");
            for (char n = '0'; n < '3'; ++n) below(own, std::string("DataFormats\\GetSet\\") + n, "3,1,32,1");
        }
        // Names with blanks at an end, slashes and brackets, an empty text, a text that is stored without its
        // NUL.
        if (some(1, 800)) below(own, " vorn und hinten ", "");
        if (some(1, 800)) below(own, "Verb/1 (neu)", "&Bearbeiten,0,2");
        if (some(1, 500)) units("zweizeilig", 1, "Zeile 1\r\nZeile 2");
    }

    void libraries() {
        key(std::string(kClasses) + "TypeLib");
        for (unsigned i = 0; i < 374; ++i) {
            const std::string own = std::string(kClasses) + "TypeLib\\" + guid();
            key(own);
            for (unsigned version = 1; version <= (i % 30 == 0 ? 2u : 1u); ++version) {
                const std::string of = own + format("\\%u.0", version);
                below(own, format("%u.0", version), format("Bibliothek %u", i));
                key(of + "\\0");
                below(of, "0\\win32", path("tlb"));
                below(of, "FLAGS", "0");
                if (some(6, 10)) below(of, "HELPDIR", "C:\\\\Windows\\\\Help\\\\");
            }
        }
    }

    void programs() {
        key(std::string(kWindows) + "App Paths");
        for (unsigned i = 0; i < 40; ++i) {
            below(std::string(kWindows) + "App Paths", format("programm%02u.exe", i), path("exe"));
            text("Path", "C:\\\\Program Files\\\\Hersteller\\\\");
        }
        key(std::string(kWindows) + "Uninstall");
        for (unsigned i = 0; i < 60; ++i) {
            key(std::string(kWindows) + "Uninstall\\" + guid());
            text("DisplayName", format("Programm\x99 %u.5", i));
            text("UninstallString", some(1, 2) ? "MsiExec.exe /I" + guid() : path("exe") + " /remove");
            text("Publisher", "Hersteller");
            dword("EstimatedSize");
            if (some(1, 3)) bytes("Bild", "hex:", 40);
        }
    }

    std::uint64_t state_ = 71953;
    unsigned count_ = 0;
    bool keyIsEmpty_ = false;
    std::string text_ = "Windows Registry Editor Version 5.00\r\n";
    FullRegistry finished_;
};

}  // namespace

FullRegistry makeFullRegistry() {
    return Writer().registry();
}

}  // namespace bromvale::testing
