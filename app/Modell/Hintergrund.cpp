#include "Modell/Hintergrund.hpp"

void Hintergrund::beenden() {
    for (auto& f : faeden_)
        f.auftrag->anhalten();
    faeden_.clear(); // jthread wartet beim Abbau
}

std::size_t Hintergrund::laufende() const {
    std::size_t n = 0;
    for (const auto& f : faeden_)
        if (!f.erledigt->load()) ++n;
    return n;
}

void Hintergrund::aufraeumen() {
    faeden_.remove_if([](const Faden& f) { return f.erledigt->load(); });
}
