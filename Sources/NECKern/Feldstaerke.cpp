#include "NECKern/Feldstaerke.hpp"

#include "NECKern/Modellpruefung.hpp"
#include "NECKern/Rechenkerne/KernFehler.hpp"

#include <cmath>
#include <fmt/printf.h>
#include <numbers>

namespace NECKern::Feldstaerke {

namespace {

bool entfaellt(const std::string& typ) {
    return typ == "RP" || typ == "NE" || typ == "NH" || typ == "XQ" || typ == "FR" || typ == "EN";
}

} // namespace

std::string deck(const Modell& modell, double mhz, double z, double mx, double my, double halb, int n) {
    if (auto satz = Modellpruefung::umfangPruefen(modell)) throw KernFehler(*satz);
    Modell kopie = modell;
    std::erase_if(kopie.karten, [](const Karte& k) { return entfaellt(k.typ); });

    // Bei einem oder zwei Punkten je Seite ist die Schrittweite die ganze Seite.
    const int k = n - 1 < 2 ? 1 : n - 1;
    const double d = 2.0 * halb / k;
    const std::string punkte = std::to_string(n);
    const std::vector<std::string> ganz{"0", punkte, punkte, "1"};
    const std::vector<std::string> reell{Modell::zahl(mx - halb), Modell::zahl(my - halb), Modell::zahl(z),
                                         Modell::zahl(d),         Modell::zahl(d),         "0"};

    kopie.karten.emplace_back("FR", std::vector<std::string>{"0", "1", "0", "0"},
                              std::vector<std::string>{Modell::zahl(mhz), "0"});
    kopie.karten.emplace_back("NE", ganz, reell);
    kopie.karten.emplace_back("NH", ganz, reell);
    kopie.karten.emplace_back("EN", std::vector<std::string>{}, std::vector<std::string>{});
    return kopie.deck();
}

double effektiv(double spitze, double pNEC, double pSende) {
    if (!(pNEC > 0)) return std::nan("");
    return spitze / std::numbers::sqrt2 * std::sqrt(pSende / pNEC);
}

std::optional<Referenz> icnirp(double f) {
    if (f >= 0.15 && f < 1) return Referenz{87, 0.73 / f};
    if (f >= 1 && f < 10) return Referenz{87 / std::sqrt(f), 0.73 / f};
    if (f >= 10 && f < 400) return Referenz{28, 0.073};
    if (f >= 400 && f < 2000) return Referenz{1.375 * std::sqrt(f), 0.0037 * std::sqrt(f)};
    if (f >= 2000 && f <= 300000) return Referenz{61, 0.16};
    return std::nullopt; // auch für NaN
}

std::optional<Klasse> klasse(double verhaeltnis) {
    if (std::isnan(verhaeltnis)) return std::nullopt;
    if (verhaeltnis < 0.2) return Klasse::gruen;
    if (verhaeltnis < 0.5) return Klasse::gelb;
    if (verhaeltnis < 1) return Klasse::orange;
    return Klasse::rot;
}

std::string name(Klasse k) {
    switch (k) {
    case Klasse::gruen:
        return "grün";
    case Klasse::gelb:
        return "gelb";
    case Klasse::orange:
        return "orange";
    case Klasse::rot:
        return "rot";
    }
    return {};
}

std::string legende(double leistung, double hoehe, double mhz) {
    return fmt::sprintf("%.0f W, Ebene %.1f m, %.4f MHz · grün < 20 %%, gelb < 50 %%, orange < 100 %%, rot ≥ "
                        "Referenz",
                        leistung, hoehe, mhz);
}

} // namespace NECKern::Feldstaerke
