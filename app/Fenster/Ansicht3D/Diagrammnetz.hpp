#pragma once

#include "Fenster/Ansicht3D/Vek3.hpp"
#include "NECKern/Ergebnis.hpp"

#include <array>
#include <cstdint>
#include <vector>

namespace Raumbild {

// Der Diagrammkörper als Netz über einem Raster aus θ und φ. Der Radius wächst
// linear mit dem Gewinn in dB über einer Untergrenze 30 dB unter dem Maximum.
struct Diagrammnetz {
    static constexpr double dynamik = 30; // dB

    enum class Art { keinDiagramm, schnitt, koerper };
    Art art = Art::keinDiagramm;
    // Je Rasterpunkt die Richtung mal Radius (0…1) und der Gewinn in dBi; fehlende
    // Punkte haben NaN als Gewinn und gehören zu keinem Viereck.
    std::vector<Vek3> punkte;
    std::vector<double> gewinn;
    std::vector<std::array<std::int32_t, 4>> vierecke;
    double maximum = 0; // dBi
};

Diagrammnetz diagrammnetz(const std::vector<NECKern::Richtung>& diagramm);

} // namespace Raumbild
