// Jeder Bericht wird gelesen, ohne Absturz; das Ergebnis lässt sich immer als
// JSON schreiben (Warnungen sind gültiges UTF-8, nicht endliche Zahlen null).
#include "NECKern/NEC2Ausgabe.hpp"

#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    std::string_view text(reinterpret_cast<const char*>(daten), groesse);
    const auto ergebnis = NECKern::NEC2Ausgabe::lesen(text);
    const auto json = nlohmann::ordered_json(ergebnis).dump();
    if (json.empty()) std::abort();
    NECKern::NEC2Ausgabe::zahlen(text);
    NECKern::NEC2Ausgabe::beginntMitZahl(text);
    return 0;
}
