#include "NECKern/Modell.hpp"

#include <cmath>
#include <fmt/printf.h>

namespace NECKern {

std::string Modell::zahl(double x) {
    if (x == 0) return "0";
    auto betrag = std::fabs(x);
    if (betrag >= 0.001 && betrag < 1e7) return fmt::sprintf("%.9g", x);
    return fmt::sprintf("%.9E", x);
}

} // namespace NECKern
