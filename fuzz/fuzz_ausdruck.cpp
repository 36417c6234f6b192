// Jede Formel liefert einen Wert oder einen Ausdruck::Fehler, nie etwas anderes.
#include "NECKern/Ausdruck.hpp"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    std::string_view text(reinterpret_cast<const char*>(daten), groesse);
    try {
        NECKern::Ausdruck::auswerten(text, {{"l", 10}, {"höhe", 2}, {"f", 14.2}});
    } catch (const NECKern::Ausdruck::Fehler&) {
    }
    return 0;
}
