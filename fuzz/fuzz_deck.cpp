// Jeder Text wird als Modell gelesen; das Rechendeck entsteht vollständig oder
// scheitert mit Ausdruck::Fehler, nie anders.
#include "NECKern/Ausdruck.hpp"
#include "NECKern/Modell.hpp"

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

bool hatZeile(std::string_view deck, std::string_view kopf) {
    for (std::size_t anfang = 0; anfang < deck.size();) {
        auto ende = deck.find('\n', anfang);
        if (deck.substr(anfang, kopf.size()) == kopf) return true;
        anfang = ende == std::string_view::npos ? deck.size() : ende + 1;
    }
    return false;
}

// Ohne RP muss jedes Deck mit einer XQ-Zeile rechnen und mit einer EN-Zeile enden.
void deckPruefen(const NECKern::Modell& m) {
    try {
        auto deck = m.deck({}, std::nullopt, true);
        if (deck.empty() || deck.back() != '\n' || hatZeile(deck, "RP") || !hatZeile(deck, "XQ") ||
            !hatZeile(deck, "EN"))
            std::abort();
    } catch (const NECKern::Ausdruck::Fehler&) {
    } catch (...) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    std::string_view text(reinterpret_cast<const char*>(daten), groesse);
    auto m = NECKern::Modell::lesen(text, "Fuzz");
    deckPruefen(m);
    try {
        m.deck();
        m.frequenzen();
    } catch (const NECKern::Ausdruck::Fehler&) {
    } catch (...) {
        std::abort();
    }
    return 0;
}
