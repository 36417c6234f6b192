// Jeder Text übersteht Abflachen und Umnummerieren ohne Absturz und in
// begrenzter Zeit; das Umnummerieren sieht dabei auch ungeflachte Decks.
#include "NECKern/Geometrie.hpp"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    std::string_view text(reinterpret_cast<const char*>(daten), groesse);
    auto flach = NECKern::Geometrie::abflachen(text);
    NECKern::Geometrie::eindeutigeTags(flach);
    NECKern::Geometrie::eindeutigeTags(text);
    return 0;
}
