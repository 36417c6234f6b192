#include "Fenster/Ansicht3D/Masstab.hpp"

#include <cmath>
#include <fmt/format.h>

namespace Raumbild::Masstab {

double schritt(double hoechstens) {
    if (!(hoechstens > 0) || !std::isfinite(hoechstens)) return 0;
    const double zehner = std::pow(10.0, std::floor(std::log10(hoechstens)));
    for (double stufe : {5.0, 2.0, 1.0})
        if (stufe * zehner <= hoechstens * (1 + 1e-12)) return stufe * zehner;
    return zehner / 2; // nur bei Rundungsfehlern im Logarithmus
}

std::string text(double meter) {
    const double betrag = std::fabs(meter);
    if (betrag >= 1000) return fmt::format("{:g} km", meter / 1000);
    if (betrag >= 1 || betrag == 0) return fmt::format("{:g} m", meter);
    if (betrag >= 0.01) return fmt::format("{:g} cm", meter * 100);
    return fmt::format("{:g} mm", meter * 1000);
}

} // namespace Raumbild::Masstab
