// Jeder Text übersteht Abflachen, Umnummerieren und das Lesen der Struktur ohne
// Absturz und in begrenzter Zeit; das Umnummerieren sieht dabei auch ungeflachte
// Decks. Eine Struktur, an der die Grenzen griffen, hat keine Drähte, und die
// Zahl der Flächen wird nie negativ.
#include "NECKern/Geometrie.hpp"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    std::string_view text(reinterpret_cast<const char*>(daten), groesse);
    auto flach = NECKern::Geometrie::abflachen(text);
    NECKern::Geometrie::eindeutigeTags(flach);
    NECKern::Geometrie::eindeutigeTags(text);
    const auto s = NECKern::Geometrie::struktur(text);
    (void)s.segmente();
    if ((!s.zuGrossBei.empty() && !s.draehte.empty()) || s.flaechen < 0) std::abort();
    return 0;
}
