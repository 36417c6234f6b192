#include "NECKern/Gangmarken.hpp"

#include <fmt/printf.h>

#include <cmath>
#include <cstddef>
#include <optional>

namespace NECKern::Gangmarken {

namespace {

bool unter(const Frequenzpunkt& p, double grenze) {
    return p.swr && *p.swr < grenze;
}

// Frequenz zwischen a und b, bei der der Wert (linear dazwischen) w erreicht.
double einpassen(double fa, double wa, double fb, double wb, double w) {
    if (wa == wb) return fa;
    return fa + (fb - fa) * (w - wa) / (wb - wa);
}

} // namespace

std::vector<Band> swrBaender(const std::vector<Frequenzpunkt>& gang, double grenze) {
    std::vector<Band> baender;
    std::optional<Band> offen;
    for (std::size_t i = 0; i < gang.size(); ++i) {
        const auto& p = gang[i];
        const bool drin = unter(p, grenze);
        if (drin && !offen) {
            offen = Band{p.mhz, p.mhz, i == 0, false};
            if (i > 0 && gang[i - 1].swr && std::isfinite(*gang[i - 1].swr))
                offen->von = einpassen(gang[i - 1].mhz, *gang[i - 1].swr, p.mhz, *p.swr, grenze);
        } else if (!drin && offen) {
            offen->bis = gang[i - 1].mhz;
            if (p.swr && std::isfinite(*p.swr))
                offen->bis = einpassen(gang[i - 1].mhz, *gang[i - 1].swr, p.mhz, *p.swr, grenze);
            baender.push_back(*offen);
            offen.reset();
        }
    }
    if (offen) {
        offen->bis = gang.back().mhz;
        offen->offenOben = true;
        baender.push_back(*offen);
    }
    return baender;
}

std::vector<double> resonanzen(const std::vector<Frequenzpunkt>& gang) {
    std::vector<double> frequenzen;
    for (std::size_t i = 0; i < gang.size(); ++i) {
        if (!gang[i].impedanz) continue;
        const double x = gang[i].impedanz->im;
        if (x == 0) {
            frequenzen.push_back(gang[i].mhz);
            continue;
        }
        if (i + 1 >= gang.size() || !gang[i + 1].impedanz) continue;
        const double xn = gang[i + 1].impedanz->im;
        if ((x < 0 && xn > 0) || (x > 0 && xn < 0))
            frequenzen.push_back(einpassen(gang[i].mhz, x, gang[i + 1].mhz, xn, 0.0));
    }
    return frequenzen;
}

std::string zusammenfassung(const std::vector<Frequenzpunkt>& gang) {
    const auto baender = swrBaender(gang);
    std::string text = baender.empty() ? "SWR < 2: nirgends im Band" : "";
    for (const auto& b : baender) {
        if (!text.empty()) text += " · ";
        const bool offen = b.offenUnten || b.offenOben;
        text += fmt::sprintf("SWR < 2: %.3f–%.3f MHz (%s%.0f kHz)", b.von, b.bis, offen ? "≥ " : "",
                             b.breiteKhz());
    }
    const auto frequenzen = resonanzen(gang);
    if (frequenzen.empty()) text += " · keine Resonanz im Band";
    for (double f : frequenzen)
        text += fmt::sprintf(" · Resonanz %.3f MHz", f);
    return text;
}

} // namespace NECKern::Gangmarken
