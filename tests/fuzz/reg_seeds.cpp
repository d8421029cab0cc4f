#include "tests/fuzz/reg_seeds.h"

namespace bromvale::fuzz {

std::string wideFile(std::string_view ascii) {
    std::string bytes = "\xFF\xFE";
    for (const char c : ascii) bytes.append(1, c).append(1, '\0');
    return bytes;
}

std::vector<std::string> regFileSeeds() {
    const std::string body =
        "\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\A b\\[c]]\r\n@=\"x \\\\ \\\" y\"\r\n\"n=\"=dword:0000ffFF\r\n"
        "\"b\"=hex:01,02,\\\r\n  03\r\n\"e\"=hex(2):25,00,61,00,00,00\r\n\"m\"=hex(7):61,00,00,00,00,00\r\n"
        "\"q\"=hex(b):01,00,00,00,00,00,00,00\r\n\"l\"=hex(1):61\r\n; note\r\n\"weg\"=-\r\n"
        "[-HKEY_CURRENT_USER\\Fort]\r\n\r\n[HKEY_CLASSES_ROOT\\.x]\r\n@=\"zwei\r\nZeilen\"\r\n";
    return {"REGEDIT4" + body,
            "Windows Registry Editor Version 5.00" + body,
            wideFile("Windows Registry Editor Version 5.00" + body),
            "REGEDIT4\n[HKEY_USERS\\.Default]\n@=\"\xE4\x80\"\n",
            "REGEDIT4\r[HKCR\\x]\r@=hex(0):\r",
            "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\S]\r\n@=dword:12345678"};
}

}  // namespace bromvale::fuzz
