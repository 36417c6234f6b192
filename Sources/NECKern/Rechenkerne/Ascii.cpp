#include "NECKern/Rechenkerne/Ascii.hpp"

#include "NECKern/Unicode.hpp"

#include <memory>
#include <unicode/translit.h>
#include <unicode/unistr.h>

namespace NECKern {

namespace {

bool nurAscii(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

// ICU-Umschreiber sind nicht threadsicher und teuer anzulegen: einer je Thread,
// und nur, wenn ein Deck wirklich Nicht-ASCII enthält. Scheitert das Anlegen,
// bleibt der Text, wie er ist.
icu::Transliterator* umschreiber(const char* regeln) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Transliterator> t(
        icu::Transliterator::createInstance(icu::UnicodeString::fromUTF8(regeln), UTRANS_FORWARD, status));
    return U_SUCCESS(status) ? t.release() : nullptr;
}

void anwenden(icu::UnicodeString& text, icu::Transliterator* t) {
    if (t) t->transliterate(text);
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

} // namespace

std::string ascii(std::string_view text) {
    if (nurAscii(text)) return std::string(text);
    const std::string mitLambda = ersetzen(Unicode::reparieren(text), "λ", "lambda");
    std::string umschrieben;
    if (nurAscii(mitLambda)) {
        umschrieben = mitLambda;
    } else {
        thread_local std::unique_ptr<icu::Transliterator> lateinisch(umschreiber("Any-Latin"));
        thread_local std::unique_ptr<icu::Transliterator> ohneZeichen(
            umschreiber("NFD; [:Nonspacing Mark:] Remove; NFC"));
        auto u = icu::UnicodeString::fromUTF8(mitLambda);
        anwenden(u, lateinisch.get());
        anwenden(u, ohneZeichen.get());
        u.toUTF8String(umschrieben);
    }
    std::string ergebnis;
    ergebnis.reserve(umschrieben.size());
    for (char c : umschrieben)
        if (static_cast<unsigned char>(c) < 0x80) ergebnis.push_back(c);
    return ergebnis;
}

} // namespace NECKern
