#include "Fenster/Diagramme/Smith.hpp"

#include <cmath>
#include <complex>

namespace Smith {

std::optional<Punkt> abbilden(NECKern::Komplex z, double z0) {
    if (std::isnan(z.re) || std::isnan(z.im) || !(z0 > 0)) return std::nullopt;
    if (std::isinf(z.re) || std::isinf(z.im)) return Punkt{1, 0};
    const std::complex<double> zn(z.re / z0, z.im / z0);
    const std::complex<double> nenner = zn + 1.0;
    // Z = −z0 ist kein Punkt der Ebene; wie der Leerlauf an den rechten Rand.
    if (std::abs(nenner) < 1e-12) return Punkt{1, 0};
    const std::complex<double> gamma = (zn - 1.0) / nenner;
    return Punkt{gamma.real(), gamma.imag()};
}

Kreis widerstandskreis(double r) {
    return {{r / (1.0 + r), 0}, 1.0 / (1.0 + r)};
}

Kreis blindkreis(double x) {
    return {{1.0, 1.0 / x}, 1.0 / std::fabs(x)};
}

double gammaBetrag(double swr) {
    return (swr - 1.0) / (swr + 1.0);
}

} // namespace Smith
