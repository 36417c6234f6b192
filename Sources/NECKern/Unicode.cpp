#include "NECKern/Unicode.hpp"

#include <memory>
#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>

namespace NECKern::Unicode {

namespace {

constexpr char32_t ersatz = 0xFFFD;

// Liest ein Codezeichen ab pos. Eine ungültige Folge wird wie üblich als ein
// U+FFFD je maximalem gültigem Anfangsstück gelesen.
char32_t naechstes(std::string_view s, std::size_t& pos) {
    auto b0 = static_cast<unsigned char>(s[pos]);
    ++pos;
    if (b0 < 0x80) return b0;
    std::size_t n = 0;
    char32_t wert = 0;
    unsigned char unten = 0x80, oben = 0xBF; // erlaubter Bereich des zweiten Bytes
    if (b0 >= 0xC2 && b0 <= 0xDF) {
        n = 1;
        wert = b0 & 0x1F;
    } else if (b0 >= 0xE0 && b0 <= 0xEF) {
        n = 2;
        wert = b0 & 0x0F;
        if (b0 == 0xE0) unten = 0xA0;
        if (b0 == 0xED) oben = 0x9F;
    } else if (b0 >= 0xF0 && b0 <= 0xF4) {
        n = 3;
        wert = b0 & 0x07;
        if (b0 == 0xF0) unten = 0x90;
        if (b0 == 0xF4) oben = 0x8F;
    } else {
        return ersatz;
    }
    for (std::size_t k = 0; k < n; ++k) {
        if (pos >= s.size()) return ersatz;
        auto b = static_cast<unsigned char>(s[pos]);
        auto lo = k == 0 ? unten : static_cast<unsigned char>(0x80);
        auto hi = k == 0 ? oben : static_cast<unsigned char>(0xBF);
        if (b < lo || b > hi) return ersatz;
        wert = (wert << 6) | (b & 0x3F);
        ++pos;
    }
    return wert;
}

bool nurAscii(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

char32_t erstesZeichen(std::string_view s) {
    if (s.empty()) return 0;
    std::size_t pos = 0;
    return naechstes(s, pos);
}

icu::UnicodeString zuIcu(std::string_view s) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(s.data(), static_cast<int32_t>(s.size())));
}

std::string ausIcu(const icu::UnicodeString& u) {
    std::string ergebnis;
    u.toUTF8String(ergebnis);
    return ergebnis;
}

} // namespace

void anhaengen(std::string& ziel, char32_t c) {
    if (c < 0x80) {
        ziel.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        ziel.push_back(static_cast<char>(0xC0 | (c >> 6)));
        ziel.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        ziel.push_back(static_cast<char>(0xE0 | (c >> 12)));
        ziel.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        ziel.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        ziel.push_back(static_cast<char>(0xF0 | (c >> 18)));
        ziel.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        ziel.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        ziel.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

bool istGueltig(std::string_view text) {
    std::size_t pos = 0;
    while (pos < text.size()) {
        auto vorher = pos;
        char32_t c = naechstes(text, pos);
        if (c == ersatz && !(pos - vorher == 3 && text.substr(vorher, 3) == "\xEF\xBF\xBD")) return false;
    }
    return true;
}

std::string reparieren(std::string_view text) {
    if (nurAscii(text) || istGueltig(text)) return std::string(text);
    std::string ergebnis;
    ergebnis.reserve(text.size() + 8);
    std::size_t pos = 0;
    while (pos < text.size())
        anhaengen(ergebnis, naechstes(text, pos));
    return ergebnis;
}

std::u32string zuUtf32(std::string_view text) {
    std::u32string ergebnis;
    ergebnis.reserve(text.size());
    std::size_t pos = 0;
    while (pos < text.size())
        ergebnis.push_back(naechstes(text, pos));
    return ergebnis;
}

std::string zuUtf8(std::u32string_view text) {
    std::string ergebnis;
    ergebnis.reserve(text.size());
    for (char32_t c : text)
        anhaengen(ergebnis, c);
    return ergebnis;
}

std::vector<std::string> zeichen(std::string_view text) {
    std::vector<std::string> ergebnis;
    if (nurAscii(text)) {
        // Reines ASCII: jedes Byte ist ein Zeichen, ausser CR LF.
        ergebnis.reserve(text.size());
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                ergebnis.emplace_back("\r\n");
                ++i;
                continue;
            }
            ergebnis.emplace_back(1, text[i]);
        }
        return ergebnis;
    }
    std::string gueltig = reparieren(text);
    UErrorCode status = U_ZERO_ERROR;
    UText* ut = utext_openUTF8(nullptr, gueltig.data(), static_cast<int64_t>(gueltig.size()), &status);
    std::unique_ptr<icu::BreakIterator> it(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status) || !it) {
        utext_close(ut);
        std::size_t pos = 0;
        while (pos < gueltig.size()) {
            auto anfang = pos;
            naechstes(gueltig, pos);
            ergebnis.emplace_back(gueltig.substr(anfang, pos - anfang));
        }
        return ergebnis;
    }
    it->setText(ut, status);
    int32_t anfang = it->first();
    for (int32_t ende = it->next(); ende != icu::BreakIterator::DONE; anfang = ende, ende = it->next())
        ergebnis.emplace_back(
            gueltig.substr(static_cast<std::size_t>(anfang), static_cast<std::size_t>(ende - anfang)));
    utext_close(ut);
    return ergebnis;
}

std::size_t laenge(std::string_view text) {
    if (nurAscii(text)) {
        std::size_t n = text.size();
        for (std::size_t i = 0; i + 1 < text.size(); ++i)
            if (text[i] == '\r' && text[i + 1] == '\n') --n;
        return n;
    }
    return zeichen(text).size();
}

std::string gross(std::string_view text) {
    if (nurAscii(text)) {
        std::string s(text);
        for (char& c : s)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        return s;
    }
    auto u = zuIcu(reparieren(text));
    u.toUpper(icu::Locale::getRoot());
    return ausIcu(u);
}

std::string klein(std::string_view text) {
    if (nurAscii(text)) {
        std::string s(text);
        for (char& c : s)
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        return s;
    }
    auto u = zuIcu(reparieren(text));
    u.toLower(icu::Locale::getRoot());
    return ausIcu(u);
}

bool istBuchstabe(std::string_view z) {
    return !z.empty() && u_isalpha(static_cast<UChar32>(erstesZeichen(z)));
}

bool istZiffer(std::string_view z) {
    return !z.empty() && u_isdigit(static_cast<UChar32>(erstesZeichen(z)));
}

bool istZahlzeichen(std::string_view z) {
    if (z.empty()) return false;
    auto typ = u_charType(static_cast<UChar32>(erstesZeichen(z)));
    return typ == U_DECIMAL_DIGIT_NUMBER || typ == U_LETTER_NUMBER || typ == U_OTHER_NUMBER;
}

} // namespace NECKern::Unicode
