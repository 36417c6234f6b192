#include "Fenster/Diagramme/Zahltext.hpp"

#include <cmath>
#include <fmt/printf.h>

namespace Zahltext {

std::string text(const char* format, double wert) {
    if (std::isnan(wert)) return "–";
    std::string s = fmt::sprintf(format, wert);
    std::string aus;
    aus.reserve(s.size() + 4);
    for (char c : s) {
        if (c == '-')
            aus += "−";
        else
            aus += c;
    }
    return aus;
}

std::string kurz(double wert) {
    const double betrag = std::fabs(wert);
    if (betrag >= 100) return text("%.0f", wert);
    if (betrag >= 10) return text("%.1f", wert);
    if (betrag >= 1) return text("%.2f", wert);
    return text("%.3g", wert);
}

std::string impedanz(NECKern::Komplex z) {
    return text("%.2f", z.re) + (std::signbit(z.im) ? " − j" : " + j") + text("%.2f", std::fabs(z.im)) + " Ω";
}

std::string swr(std::optional<double> swr) {
    if (!swr || std::isnan(*swr)) return "–";
    if (std::isinf(*swr)) return "∞";
    return text("%.2f", *swr);
}

} // namespace Zahltext
