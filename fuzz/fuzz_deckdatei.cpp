// Lesen scheitert nie, und Schreiben ist ein Fixpunkt: schreiben(lesen(schreiben(m))) == schreiben(m).
#include "NECKern/Modell.hpp"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    std::string_view text(reinterpret_cast<const char*>(daten), groesse);
    auto m = NECKern::Modell::lesen(text, "Fuzz");
    auto einmal = m.schreiben();
    auto zweimal = NECKern::Modell::lesen(einmal, "Fuzz").schreiben();
    if (einmal != zweimal) std::abort();
    return 0;
}
