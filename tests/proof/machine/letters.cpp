#include "tests/proof/machine/letters.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace bromvale::proof {
namespace {

struct Letter {
    char16_t letter;
    char16_t lower;
    unsigned char in1252;  // 0 where the page lacks it
    unsigned char in1250;
    char near1252;
};

constexpr Letter kLetters[] = {
    {u'ä', u'ä', 0xE4, 0xE4, 0}, {u'Ä', u'ä', 0xC4, 0xC4, 0},       {u'ö', u'ö', 0xF6, 0xF6, 0},
    {u'Ö', u'ö', 0xD6, 0xD6, 0}, {u'ü', u'ü', 0xFC, 0xFC, 0},       {u'Ü', u'ü', 0xDC, 0xDC, 0},
    {u'ß', u'ß', 0xDF, 0xDF, 0}, {u'é', u'é', 0xE9, 0xE9, 0},       {u'É', u'é', 0xC9, 0xC9, 0},
    {u'ø', u'ø', 0xF8, 0, 0},    {u'ñ', u'ñ', 0xF1, 0, 0},          {u'ł', u'ł', 0, 0xB3, 'l'},
    {u'Ł', u'ł', 0, 0xA3, 'L'},  {u'ę', u'ę', 0, 0xEA, 'e'},        {u'ą', u'ą', 0, 0xB9, 'a'},
    {u'ş', u'ş', 0, 0xBA, 's'},  {u'Ş', u'ş', 0, 0xAA, 'S'},        {u'ź', u'ź', 0, 0x9F, 'z'},
    {u'ó', u'ó', 0xF3, 0xF3, 0}, {u'ć', u'ć', 0, 0xE6, 'c'},        {u'П', u'п', 0, 0, '?'},
    {u'п', u'п', 0, 0, '?'},     {u'ё', u'ё', 0, 0, '?'},           {u'т', u'т', 0, 0, '?'},
    {u'漢', u'漢', 0, 0, '?'},   {u'字', u'字', 0, 0, '?'},         {u'表', u'表', 0, 0, '?'},
    {u'ﬀ', u'ﬀ', 0, 0, '?'},     {u'＠', u'＠', 0, 0, '@'},         {u'＼', u'＼', 0, 0, '\\'},
    {u'／', u'／', 0, 0, '/'},   {u'：', u'：', 0, 0, ':'},         {u'．', u'．', 0, 0, '.'},
    {u'＂', u'＂', 0, 0, '"'},   {u'［', u'［', 0, 0, '['},         {u'］', u'］', 0, 0, ']'},
    {u'＝', u'＝', 0, 0, '='},   {u'｛', u'｛', 0, 0, '{'},         {u'｝', u'｝', 0, 0, '}'},
    {u'Ｓ', u'ｓ', 0, 0, 'S'},   {u'ｓ', u'ｓ', 0, 0, 's'},         {u'＊', u'＊', 0, 0, '*'},
    {u'？', u'？', 0, 0, '?'},   {u'\u2011', u'\u2011', 0, 0, '-'},
};

// Where a letter stands in the table, counted from 1.
using Places = std::array<unsigned char, 0x10000>;
Places placesOfLetters() {
    Places places{};
    for (std::size_t i = 0; i < std::size(kLetters); ++i)
        places[kLetters[i].letter] = static_cast<unsigned char>(i + 1);
    return places;
}

const Letter* known(char16_t letter) {
    static const Places places = placesOfLetters();
    return letter < 0x80 || places[letter] == 0 ? nullptr : &kLetters[places[letter] - 1];
}

bool isExactOn(unsigned codePage, char16_t letter) {
    if (letter < 0x80) return letter != 0x1A;
    const Letter* row = known(letter);
    if (row == nullptr) return false;
    return (codePage == 1252 && row->in1252 != 0) || (codePage == 1250 && row->in1250 != 0);
}

char16_t upper(char16_t letter) {
    if (letter >= u'a' && letter <= u'z') return static_cast<char16_t>(letter - 32);
    if (letter < 0x80) return letter;
    for (const Letter& row : kLetters) {
        if (row.lower == letter && row.letter != letter) return row.letter;
    }
    return letter;
}

}  // namespace

bool isExactOn(unsigned codePage, View text) {
    return std::all_of(text.begin(), text.end(),
                       [codePage](char16_t letter) { return isExactOn(codePage, letter); });
}

std::string nearest1252(View text) {
    std::string result;
    for (const char16_t letter : text) {
        const Letter* row = known(letter);
        if (letter < 0x80) {
            result += static_cast<char>(letter);
        } else if (row == nullptr) {
            result += '?';
        } else {
            result += row->in1252 != 0 ? static_cast<char>(row->in1252) : row->near1252;
        }
    }
    return result;
}

char16_t lower(char16_t letter) {
    if (letter >= u'A' && letter <= u'Z') return static_cast<char16_t>(letter + 32);
    const Letter* row = known(letter);
    return row == nullptr ? letter : row->lower;
}

Text lower(View text) {
    Text result(text);
    for (char16_t& letter : result) letter = lower(letter);
    return result;
}

bool equalNoCase(View left, View right) {
    return lower(left) == lower(right);
}

bool comesBefore(View left, View right) {
    Text a(left);
    Text b(right);
    for (char16_t& letter : a) letter = upper(letter);
    for (char16_t& letter : b) letter = upper(letter);
    return a < b;
}

std::string utf8(View text) {
    std::string result;
    for (const char16_t letter : text) {
        const unsigned code = letter;
        if (code < 0x80) {
            result += static_cast<char>(code);
        } else if (code < 0x800) {
            result += static_cast<char>(0xC0 | code >> 6);
            result += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            result += static_cast<char>(0xE0 | code >> 12);
            result += static_cast<char>(0x80 | (code >> 6 & 0x3F));
            result += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return result;
}

Text fromUtf8(std::string_view text) {
    Text result;
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = [&](std::size_t at) {
            return static_cast<unsigned>(static_cast<unsigned char>(text[at]));
        };
        const unsigned first = byte(i);
        if (first < 0x80) {
            result += static_cast<char16_t>(first);
            i += 1;
        } else if (first < 0xE0) {
            result += static_cast<char16_t>((first & 0x1F) << 6 | (byte(i + 1) & 0x3F));
            i += 2;
        } else {
            result += static_cast<char16_t>((first & 0x0F) << 12 | (byte(i + 1) & 0x3F) << 6 |
                                            (byte(i + 2) & 0x3F));
            i += 3;
        }
    }
    return result;
}

std::string readable(View text) {
    std::string result;
    char number[8];
    for (const char16_t letter : text) {
        if (letter >= 0x20 && letter < 0x7F) {
            result += static_cast<char>(letter);
        } else {
            static_cast<void>(std::snprintf(number, sizeof number, "<%04X>", static_cast<unsigned>(letter)));
            result += number;
        }
    }
    return result;
}

std::string readable(std::string_view ansi) {
    Text wide;
    for (const char byte : ansi) wide += static_cast<char16_t>(static_cast<unsigned char>(byte));
    return readable(wide);
}

std::string bytesOf(View text) {
    std::string bytes;
    for (const char16_t letter : text) {
        bytes += static_cast<char>(letter & 0xFF);
        bytes += static_cast<char>(letter >> 8);
    }
    return bytes;
}

Text textOf(std::string_view bytes) {
    Text text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                      static_cast<unsigned>(static_cast<unsigned char>(bytes[i + 1])) << 8);
    }
    return text;
}

}  // namespace bromvale::proof
