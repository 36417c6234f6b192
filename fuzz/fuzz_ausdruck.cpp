// Jeder Text wird ausgewertet oder mit Ausdruck::Fehler abgelehnt; alles andere bricht ab.
#include "NECKern/Ausdruck.hpp"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    static const NECKern::Werte variablen{
        {"l", 10.0}, {"n", 11.0}, {"höhe", 2.5}, {"λ", 20.0}, {"_x1", -1.0}};
    std::string_view text(reinterpret_cast<const char*>(daten), groesse);
    try {
        NECKern::Ausdruck::auswerten(text, variablen);
    } catch (const NECKern::Ausdruck::Fehler& f) {
        if (std::string_view(f.what()).empty()) std::abort();
    } catch (...) {
        std::abort();
    }
    return 0;
}
