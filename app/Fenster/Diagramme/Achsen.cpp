#include "Fenster/Diagramme/Achsen.hpp"

#include <algorithm>
#include <cmath>

namespace Achsen {

Teilung teilen(double a, double b, int ziel, bool erweitern) {
    Teilung t;
    if (!std::isfinite(a) || !std::isfinite(b)) a = b = 0;
    if (a > b) std::swap(a, b);
    if (b - a < 1e-12 * std::max(1.0, std::fabs(a))) {
        const double rand = std::max(std::fabs(a) * 0.1, 1.0);
        a -= rand;
        b += rand;
    }
    const double roh = (b - a) / std::max(ziel, 1);
    const double potenz = std::pow(10.0, std::floor(std::log10(roh)));
    double schritt = 10 * potenz;
    for (double f : {1.0, 2.0, 5.0})
        if (f * potenz >= roh) {
            schritt = f * potenz;
            break;
        }
    t.schritt = schritt;
    t.von = erweitern ? std::floor(a / schritt + 1e-9) * schritt : a;
    t.bis = erweitern ? std::ceil(b / schritt - 1e-9) * schritt : b;
    const double erster = std::ceil(t.von / schritt - 1e-9) * schritt;
    for (int i = 0;; ++i) {
        const double s = erster + i * schritt;
        if (s > t.bis + schritt * 1e-9) break;
        t.striche.push_back(std::fabs(s) < schritt * 1e-9 ? 0.0 : s);
    }
    return t;
}

int stellen(const Teilung& t) {
    if (!(t.schritt > 0)) return 0;
    return std::clamp(static_cast<int>(std::ceil(-std::log10(t.schritt) - 1e-9)), 0, 6);
}

} // namespace Achsen
