// Jeder Text ergibt eine Meldung aus Überschrift und den Worten des Kerns, als gültiges UTF-8.
#include "NECKern/Modellpruefung.hpp"
#include "NECKern/Unicode.hpp"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    std::string_view text(reinterpret_cast<const char*>(daten), groesse);
    const auto meldung = NECKern::Modellpruefung::necMeldung(text);
    if (!NECKern::Unicode::istGueltig(meldung)) std::abort();
    if (meldung.find(". NEC meldet: ") == std::string::npos) std::abort();
    return 0;
}
