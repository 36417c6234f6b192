#include "Fenster/Diagramme/Feldraster.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace Feldraster {

namespace {

int index(double wert, double min, double max, int n) {
    if (n < 2 || !(max > min)) return 0;
    const double i = std::round((wert - min) / (max - min) * (n - 1));
    return static_cast<int>(std::clamp(i, 0.0, static_cast<double>(n - 1)));
}

} // namespace

Raster rechnen(const FeldErgebnis& feld) {
    namespace FS = NECKern::Feldstaerke;
    Raster r;
    r.n = std::max(feld.n, 1);
    r.referenz = FS::icnirp(feld.mhz);
    if (feld.e.empty()) return r;
    const auto [xa, xb] = std::minmax_element(feld.e.begin(), feld.e.end(),
                                              [](const auto& a, const auto& b) { return a.x < b.x; });
    const auto [ya, yb] = std::minmax_element(feld.e.begin(), feld.e.end(),
                                              [](const auto& a, const auto& b) { return a.y < b.y; });
    r.xMin = xa->x;
    r.xMax = xb->x;
    r.yMin = ya->y;
    r.yMax = yb->y;
    r.eMin = std::numeric_limits<double>::infinity();
    r.eMax = -std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (std::size_t i = 0; i < feld.e.size(); ++i) {
        const auto& p = feld.e[i];
        Zelle z;
        z.spalte = index(p.x, r.xMin, r.xMax, r.n);
        z.zeile = index(p.y, r.yMin, r.yMax, r.n);
        z.x = p.x;
        z.y = p.y;
        z.eEff = FS::effektiv(p.gesamt(), feld.pNEC, feld.leistung);
        z.hEff = i < feld.h.size() ? FS::effektiv(feld.h[i].gesamt(), feld.pNEC, feld.leistung) : nan;
        z.verhaeltnis = r.referenz ? z.eEff / r.referenz->e : nan;
        z.klasse = FS::klasse(z.verhaeltnis);
        if (std::isfinite(z.eEff)) {
            r.eMin = std::min(r.eMin, z.eEff);
            r.eMax = std::max(r.eMax, z.eEff);
        }
        r.zellen.push_back(z);
    }
    if (!(r.eMax >= r.eMin)) r.eMin = r.eMax = 0;
    return r;
}

} // namespace Feldraster
