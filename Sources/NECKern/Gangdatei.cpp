#include "NECKern/Gangdatei.hpp"

#include "NECKern/Rechenkerne/Ascii.hpp"

#include <cmath>
#include <complex>
#include <fmt/format.h>
#include <fmt/printf.h>

namespace NECKern::Gangdatei {

namespace {

std::string csvZahl(std::optional<double> x) {
    return x && std::isfinite(*x) ? fmt::sprintf("%.9g", *x) : std::string();
}

} // namespace

std::string csv(const std::vector<Frequenzpunkt>& punkte) {
    std::string text = "mhz,re,im,swr,gewinn,vorRueck\n";
    for (const auto& p : punkte) {
        std::optional<double> re, im;
        if (p.impedanz) re = p.impedanz->re, im = p.impedanz->im;
        text += fmt::format("{},{},{},{},{},{}\n", csvZahl(p.mhz), csvZahl(re), csvZahl(im), csvZahl(p.swr),
                            csvZahl(p.gewinn), csvZahl(p.vorRueck));
    }
    return text;
}

std::string touchstone(const Modell& modell, const std::vector<Frequenzpunkt>& punkte) {
    std::string text =
        "! Wellenwerk: " + ascii(modell.name) + fmt::sprintf(", S11 gegen %g Ohm\n", modell.z0);
    text += fmt::sprintf("# MHZ S RI R %g\n", modell.z0);
    for (const auto& p : punkte) {
        if (!p.impedanz) {
            text += fmt::sprintf("! %.9g MHz: keine Impedanz\n", p.mhz);
            continue;
        }
        const std::complex<double> z(p.impedanz->re, p.impedanz->im);
        const auto s11 = (z - modell.z0) / (z + modell.z0);
        text += fmt::sprintf("%.9g %.9g %.9g\n", p.mhz, s11.real(), s11.imag());
    }
    return text;
}

} // namespace NECKern::Gangdatei
