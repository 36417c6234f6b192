#include "NECKern/Frequenzkarte.hpp"

#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace NECKern::Frequenzkarte {

Karte linear(double start, std::int64_t anzahl, double schritt) {
    return Karte("FR", {"0", fmt::format("{}", anzahl), "0", "0"},
                 {fmt::format("{}", start), fmt::format("{}", schritt)});
}

Modell einsetzen(const Modell& modell, Karte fr, const std::vector<std::string>& ohne) {
    Modell kopie = modell;
    kopie.karten.clear();
    bool ersetzt = false;
    for (const auto& karte : modell.karten) {
        auto typ = Unicode::gross(karte.typ);
        if (std::find(ohne.begin(), ohne.end(), typ) != ohne.end()) continue;
        if (typ != "FR") {
            kopie.karten.push_back(karte);
            continue;
        }
        if (!ersetzt) kopie.karten.push_back(fr);
        ersetzt = true;
    }
    if (!ersetzt) kopie.karten.insert(kopie.karten.begin(), std::move(fr));
    return kopie;
}

} // namespace NECKern::Frequenzkarte
