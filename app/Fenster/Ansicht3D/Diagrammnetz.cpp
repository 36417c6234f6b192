#include "Fenster/Ansicht3D/Diagrammnetz.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace Raumbild {

namespace {

constexpr double grad = std::numbers::pi / 180.0;
constexpr double gleich = 1e-6; // Grad: so nah beieinander gilt als derselbe Winkel

// Die verschiedenen Winkel, aufsteigend.
std::vector<double> stufen(std::vector<double> winkel) {
    std::sort(winkel.begin(), winkel.end());
    std::vector<double> aus;
    for (double w : winkel)
        if (aus.empty() || w - aus.back() > gleich) aus.push_back(w);
    return aus;
}

std::int32_t stelle(const std::vector<double>& stufen, double w) {
    auto it = std::lower_bound(stufen.begin(), stufen.end(), w - gleich);
    return static_cast<std::int32_t>(it - stufen.begin());
}

// Schliesst der letzte Azimut mit einem gewöhnlichen Schritt an den ersten an
// (0…355 in 5°), braucht es ein Viereck über die Naht; bei 0…360 nicht.
bool umlaufend(const std::vector<double>& phi) {
    double schritt = 0;
    for (std::size_t j = 1; j < phi.size(); ++j)
        schritt = std::max(schritt, phi[j] - phi[j - 1]);
    const double luecke = phi.front() + 360.0 - phi.back();
    return luecke > gleich && luecke <= schritt + gleich;
}

} // namespace

Diagrammnetz diagrammnetz(const std::vector<NECKern::Richtung>& diagramm) {
    Diagrammnetz netz;
    std::vector<double> thetas, phis;
    for (const auto& r : diagramm) {
        if (!std::isfinite(r.theta) || !std::isfinite(r.phi)) continue;
        thetas.push_back(r.theta);
        phis.push_back(r.phi);
    }
    if (thetas.empty()) return netz;
    const auto theta = stufen(std::move(thetas));
    const auto phi = stufen(std::move(phis));
    netz.art = Diagrammnetz::Art::schnitt;
    if (theta.size() < 2 || phi.size() < 2) return netz;
    // Verstreute Richtungen sind kein Raster; ihr Raster wäre fast leer und riesig.
    if (theta.size() * phi.size() > 4 * diagramm.size()) return netz;

    const auto nPhi = static_cast<std::int32_t>(phi.size());
    const auto nTheta = static_cast<std::int32_t>(theta.size());
    netz.gewinn.assign(theta.size() * phi.size(), std::numeric_limits<double>::quiet_NaN());
    netz.maximum = -std::numeric_limits<double>::infinity();
    for (const auto& r : diagramm) {
        if (!std::isfinite(r.theta) || !std::isfinite(r.phi) || !std::isfinite(r.gesamt)) continue;
        auto i = static_cast<std::size_t>(stelle(theta, r.theta) * nPhi + stelle(phi, r.phi));
        if (std::isnan(netz.gewinn[i])) netz.gewinn[i] = r.gesamt;
        netz.maximum = std::max(netz.maximum, r.gesamt);
    }
    if (!std::isfinite(netz.maximum)) {
        netz.maximum = 0;
        return netz;
    }

    netz.punkte.resize(netz.gewinn.size());
    for (std::int32_t i = 0; i < nTheta; ++i)
        for (std::int32_t j = 0; j < nPhi; ++j) {
            const auto k = static_cast<std::size_t>(i * nPhi + j);
            const double g = netz.gewinn[k];
            if (std::isnan(g)) continue;
            const double r = std::clamp((g - netz.maximum) / Diagrammnetz::dynamik + 1.0, 0.0, 1.0);
            const double t = theta[static_cast<std::size_t>(i)] * grad;
            const double p = phi[static_cast<std::size_t>(j)] * grad;
            netz.punkte[k] = Vek3{std::sin(t) * std::cos(p), std::sin(t) * std::sin(p), std::cos(t)} * r;
        }

    const bool naht = umlaufend(phi);
    auto da = [&](std::int32_t k) { return !std::isnan(netz.gewinn[static_cast<std::size_t>(k)]); };
    for (std::int32_t i = 0; i + 1 < nTheta; ++i)
        for (std::int32_t j = 0; j < nPhi; ++j) {
            const std::int32_t j2 = j + 1 < nPhi ? j + 1 : 0;
            if (j2 == 0 && !naht) continue;
            const std::array<std::int32_t, 4> v{i * nPhi + j, (i + 1) * nPhi + j, (i + 1) * nPhi + j2,
                                                i * nPhi + j2};
            if (std::all_of(v.begin(), v.end(), da)) netz.vierecke.push_back(v);
        }
    if (!netz.vierecke.empty()) netz.art = Diagrammnetz::Art::koerper;
    return netz;
}

} // namespace Raumbild
