#include "NECKern/Rechenkerne/Ascii.hpp"

#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <unicode/normalizer2.h>
#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

namespace NECKern {

namespace {

bool nurAscii(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

// Was in Antennenkommentaren vorkommt, ohne ICU: dessen Umschreiber kostet beim
// ersten Anlegen 15–30 ms je Prozess. Umlaute verlieren ihre Punkte (Ä → A), griechische
// Buchstaben heissen wie ausgesprochen, Ω als Einheit „Ohm“, µ als Vorsatz „u“.
// Nach Codepunkt sortiert.
struct Umschrift {
    char32_t zeichen;
    std::string_view ascii;
};

constexpr Umschrift tabelle[] = {
    {0x00A0, " "},       {0x00AB, "\""},      {0x00B0, "Grad"},   {0x00B1, "+-"},      {0x00B2, "2"},
    {0x00B3, "3"},       {0x00B5, "u"},       {0x00B7, "*"},      {0x00B9, "1"},       {0x00BB, "\""},
    {0x00BC, "1/4"},     {0x00BD, "1/2"},     {0x00BE, "3/4"},    {0x00C0, "A"},       {0x00C1, "A"},
    {0x00C2, "A"},       {0x00C3, "A"},       {0x00C4, "A"},      {0x00C5, "A"},       {0x00C6, "AE"},
    {0x00C7, "C"},       {0x00C8, "E"},       {0x00C9, "E"},      {0x00CA, "E"},       {0x00CB, "E"},
    {0x00CC, "I"},       {0x00CD, "I"},       {0x00CE, "I"},      {0x00CF, "I"},       {0x00D0, "D"},
    {0x00D1, "N"},       {0x00D2, "O"},       {0x00D3, "O"},      {0x00D4, "O"},       {0x00D5, "O"},
    {0x00D6, "O"},       {0x00D7, "x"},       {0x00D8, "O"},      {0x00D9, "U"},       {0x00DA, "U"},
    {0x00DB, "U"},       {0x00DC, "U"},       {0x00DD, "Y"},      {0x00DE, "Th"},      {0x00DF, "ss"},
    {0x00E0, "a"},       {0x00E1, "a"},       {0x00E2, "a"},      {0x00E3, "a"},       {0x00E4, "a"},
    {0x00E5, "a"},       {0x00E6, "ae"},      {0x00E7, "c"},      {0x00E8, "e"},       {0x00E9, "e"},
    {0x00EA, "e"},       {0x00EB, "e"},       {0x00EC, "i"},      {0x00ED, "i"},       {0x00EE, "i"},
    {0x00EF, "i"},       {0x00F0, "d"},       {0x00F1, "n"},      {0x00F2, "o"},       {0x00F3, "o"},
    {0x00F4, "o"},       {0x00F5, "o"},       {0x00F6, "o"},      {0x00F7, "/"},       {0x00F8, "o"},
    {0x00F9, "u"},       {0x00FA, "u"},       {0x00FB, "u"},      {0x00FC, "u"},       {0x00FD, "y"},
    {0x00FE, "th"},      {0x00FF, "y"},       {0x0391, "Alpha"},  {0x0392, "Beta"},    {0x0393, "Gamma"},
    {0x0394, "Delta"},   {0x0395, "Epsilon"}, {0x0396, "Zeta"},   {0x0397, "Eta"},     {0x0398, "Theta"},
    {0x0399, "Iota"},    {0x039A, "Kappa"},   {0x039B, "Lambda"}, {0x039C, "My"},      {0x039D, "Ny"},
    {0x039E, "Xi"},      {0x039F, "Omikron"}, {0x03A0, "Pi"},     {0x03A1, "Rho"},     {0x03A3, "Sigma"},
    {0x03A4, "Tau"},     {0x03A5, "Ypsilon"}, {0x03A6, "Phi"},    {0x03A7, "Chi"},     {0x03A8, "Psi"},
    {0x03A9, "Ohm"},     {0x03B1, "alpha"},   {0x03B2, "beta"},   {0x03B3, "gamma"},   {0x03B4, "delta"},
    {0x03B5, "epsilon"}, {0x03B6, "zeta"},    {0x03B7, "eta"},    {0x03B8, "theta"},   {0x03B9, "iota"},
    {0x03BA, "kappa"},   {0x03BB, "lambda"},  {0x03BC, "u"},      {0x03BD, "ny"},      {0x03BE, "xi"},
    {0x03BF, "omikron"}, {0x03C0, "pi"},      {0x03C1, "rho"},    {0x03C2, "sigma"},   {0x03C3, "sigma"},
    {0x03C4, "tau"},     {0x03C5, "ypsilon"}, {0x03C6, "phi"},    {0x03C7, "chi"},     {0x03C8, "psi"},
    {0x03C9, "omega"},   {0x03D1, "theta"},   {0x03D5, "phi"},    {0x03F5, "epsilon"}, {0x2009, " "},
    {0x2013, "-"},       {0x2014, "-"},       {0x2018, "'"},      {0x2019, "'"},       {0x201A, "'"},
    {0x201C, "\""},      {0x201D, "\""},      {0x201E, "\""},     {0x2026, "..."},     {0x202F, " "},
    {0x2126, "Ohm"},     {0x2192, "->"},      {0x2212, "-"},      {0x2248, "~"},       {0x2264, "<="},
    {0x2265, ">="},      {0xFFFD, ""},
};

static_assert(std::is_sorted(std::begin(tabelle), std::end(tabelle),
                             [](const Umschrift& a, const Umschrift& b) { return a.zeichen < b.zeichen; }));

std::optional<std::string_view> umschrift(char32_t c) {
    const auto it = std::lower_bound(std::begin(tabelle), std::end(tabelle), c,
                                     [](const Umschrift& u, char32_t z) { return u.zeichen < z; });
    if (it == std::end(tabelle) || it->zeichen != c) return std::nullopt;
    return it->ascii;
}

// Zeichen einer anderen Schrift als der lateinischen (Griechisch, Kyrillisch …)?
bool fremdeSchrift(const icu::UnicodeString& u) {
    for (int32_t i = 0; i < u.length(); i = u.moveIndex32(i, 1)) {
        UErrorCode status = U_ZERO_ERROR;
        const auto schrift = uscript_getScript(u.char32At(i), &status);
        if (U_SUCCESS(status) && schrift != USCRIPT_LATIN && schrift != USCRIPT_COMMON &&
            schrift != USCRIPT_INHERITED && schrift != USCRIPT_UNKNOWN)
            return true;
    }
    return false;
}

// Der ICU-Umschreiber kostet beim ersten Anlegen gut 15 ms und ist nicht
// threadsicher: einer je Thread, und nur, wenn ein Deck wirklich eine fremde
// Schrift enthält. Scheitert das Anlegen, bleibt der Text, wie er ist.
void lateinischUmschreiben(icu::UnicodeString& u) {
    thread_local std::unique_ptr<icu::Transliterator> umschreiber = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::Transliterator> t(icu::Transliterator::createInstance(
            icu::UnicodeString::fromUTF8("Any-Latin"), UTRANS_FORWARD, status));
        return U_SUCCESS(status) ? std::move(t) : nullptr;
    }();
    if (umschreiber) umschreiber->transliterate(u);
}

// Zerlegen (NFD) und die nicht setzenden Zeichen (Akzente, Punkte) weglassen.
void diakritikaEntfernen(icu::UnicodeString& u) {
    UErrorCode status = U_ZERO_ERROR;
    const auto* nfd = icu::Normalizer2::getNFDInstance(status);
    if (U_FAILURE(status)) return;
    const auto zerlegt = nfd->normalize(u, status);
    if (U_FAILURE(status)) return;
    icu::UnicodeString ohne;
    for (int32_t i = 0; i < zerlegt.length(); i = zerlegt.moveIndex32(i, 1)) {
        const UChar32 c = zerlegt.char32At(i);
        if (u_charType(c) != U_NON_SPACING_MARK) ohne.append(c);
    }
    u = ohne;
}

// Was die Tabelle nicht kennt: fremde Schriften lateinisch, Akzente weg, der Rest fällt.
std::string mitIcu(std::string_view text) {
    auto u = icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
    if (fremdeSchrift(u)) lateinischUmschreiben(u);
    diakritikaEntfernen(u);
    std::string umschrieben;
    u.toUTF8String(umschrieben);
    std::string ergebnis;
    ergebnis.reserve(umschrieben.size());
    for (char c : umschrieben)
        if (static_cast<unsigned char>(c) < 0x80) ergebnis.push_back(c);
    return ergebnis;
}

} // namespace

std::string ascii(std::string_view text) {
    if (nurAscii(text)) return std::string(text);
    std::string ergebnis;
    ergebnis.reserve(text.size() + 16);
    bool unbekannt = false;
    for (char32_t c : Unicode::zuUtf32(text)) {
        if (c < 0x80) {
            ergebnis.push_back(static_cast<char>(c));
        } else if (auto ersatz = umschrift(c)) {
            ergebnis += *ersatz;
        } else {
            Unicode::anhaengen(ergebnis, c);
            unbekannt = true;
        }
    }
    return unbekannt ? mitIcu(ergebnis) : ergebnis;
}

} // namespace NECKern
