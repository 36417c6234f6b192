// Jede Deckdatei ergibt ein Rechendeck oder einen Ausdruck::Fehler, nie etwas anderes.
#include "NECKern/Ausdruck.hpp"
#include "NECKern/Modell.hpp"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    std::string_view text(reinterpret_cast<const char*>(daten), groesse);
    auto m = NECKern::Modell::lesen(text, "Fuzz");
    try {
        (void)m.deck();
        (void)m.frequenzen();
    } catch (const NECKern::Ausdruck::Fehler&) {
    }
    return 0;
}
