#include "NECKern/Rechenkerne/Ascii.hpp"

#include "NECKern/Unicode.hpp"

#include <memory>
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

std::string ersetzen(std::string_view text, std::string_view alt, std::string_view neu) {
    std::string ergebnis;
    ergebnis.reserve(text.size());
    for (std::size_t pos = 0;;) {
        const auto fund = text.find(alt, pos);
        ergebnis.append(text.substr(pos, fund - pos));
        if (fund == std::string_view::npos) return ergebnis;
        ergebnis.append(neu);
        pos = fund + alt.size();
    }
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

} // namespace

std::string ascii(std::string_view text) {
    if (nurAscii(text)) return std::string(text);
    auto u = icu::UnicodeString::fromUTF8(ersetzen(Unicode::reparieren(text), "λ", "lambda"));
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

} // namespace NECKern
