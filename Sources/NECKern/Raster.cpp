#include "NECKern/Raster.hpp"

#include <algorithm>
#include <bit>
#include <cmath>

namespace NECKern {

namespace {

// Mehr Zellen je Quader lohnen nicht: dann ist Prüfen von Hand billiger.
constexpr std::int64_t hoechstensZellen = 512;
// ±2^61: so passt auch die Breite eines Bereichs sicher in 64 Bit.
constexpr double randIndex = 2305843009213693952.0;

} // namespace

// Der Ursprung liegt schief, damit runde Koordinaten (Gitter, Achsen) nicht genau
// auf Zellgrenzen fallen und jede Abfrage zwei Zellen je Achse kostet.
Raster::Raster(double zelle) : zelle_(zelle), ursprung_(zelle * 0.381966011250105) {}

std::int64_t Raster::index(double x) const {
    const double k = std::clamp(std::floor((x - ursprung_) / zelle_), -randIndex, randIndex);
    return static_cast<std::int64_t>(k);
}

bool Raster::bereich(const Punkt3& unten, const Punkt3& oben, Bereich& b) const {
    std::int64_t anzahl = 1;
    for (int i = 0; i < 3; ++i) {
        if (std::isnan(unten[i]) || std::isnan(oben[i]) || unten[i] > oben[i]) return false;
        b.von[i] = index(unten[i]);
        b.bis[i] = index(oben[i]);
        const std::int64_t breite = b.bis[i] - b.von[i] + 1;
        if (breite > hoechstensZellen) return false;
        anzahl *= breite;
    }
    return anzahl <= hoechstensZellen;
}

bool Raster::eintragen(std::uint32_t nummer, const Punkt3& unten, const Punkt3& oben) {
    Bereich b;
    if (!bereich(unten, oben, b)) return false;
    for (auto x = b.von[0]; x <= b.bis[0]; ++x)
        for (auto y = b.von[1]; y <= b.bis[1]; ++y)
            for (auto z = b.von[2]; z <= b.bis[2]; ++z)
                eintraege_.push_back({Zelle{x, y, z}, nummer});
    return true;
}

// Gitterpunkte haben oft Nummern mit gemeinsamen Teilern; erst das Durchmischen
// aller Bits verteilt sie gleichmässig auf die Fächer.
std::uint64_t Raster::streuwert(const Zelle& z) {
    std::uint64_t h = static_cast<std::uint64_t>(z.x) * 0x9E3779B97F4A7C15ull ^
                      static_cast<std::uint64_t>(z.y) * 0xC2B2AE3D27D4EB4Full ^
                      static_cast<std::uint64_t>(z.z) * 0x165667B19E3779F9ull;
    h ^= h >> 33;
    h *= 0xFF51AFD7ED558CCDull;
    h ^= h >> 33;
    h *= 0xC4CEB9FE1A85EC53ull;
    return h ^ (h >> 33);
}

void Raster::fertig() {
    std::sort(eintraege_.begin(), eintraege_.end());
    nummern_.resize(eintraege_.size());
    std::size_t zellen = 0;
    for (std::size_t i = 0; i < eintraege_.size(); ++i) {
        nummern_[i] = eintraege_[i].second;
        if (i == 0 || !(eintraege_[i].first == eintraege_[i - 1].first)) ++zellen;
    }
    faecher_.assign(std::bit_ceil(2 * zellen + 1), Fach{});
    const std::size_t maske = faecher_.size() - 1;
    for (std::size_t i = 0; i < eintraege_.size();) {
        std::size_t j = i;
        while (j < eintraege_.size() && eintraege_[j].first == eintraege_[i].first)
            ++j;
        std::size_t f = streuwert(eintraege_[i].first) & maske;
        while (faecher_[f].belegt)
            f = (f + 1) & maske;
        faecher_[f] =
            Fach{eintraege_[i].first, static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(j), true};
        i = j;
    }
    eintraege_.clear();
    eintraege_.shrink_to_fit();
}

const Raster::Fach* Raster::finden(const Zelle& z) const {
    const std::size_t maske = faecher_.size() - 1;
    for (std::size_t f = streuwert(z) & maske; faecher_[f].belegt; f = (f + 1) & maske)
        if (faecher_[f].zelle == z) return &faecher_[f];
    return nullptr;
}

bool Raster::abfragen(const Punkt3& unten, const Punkt3& oben, std::vector<std::uint32_t>& treffer) const {
    Bereich b;
    if (!bereich(unten, oben, b)) return false;
    if (faecher_.empty()) return true;
    for (auto x = b.von[0]; x <= b.bis[0]; ++x)
        for (auto y = b.von[1]; y <= b.bis[1]; ++y)
            for (auto z = b.von[2]; z <= b.bis[2]; ++z)
                if (const Fach* fach = finden(Zelle{x, y, z}))
                    treffer.insert(treffer.end(), nummern_.begin() + fach->anfang,
                                   nummern_.begin() + fach->ende);
    return true;
}

} // namespace NECKern
