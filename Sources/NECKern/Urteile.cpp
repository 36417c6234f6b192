#include "NECKern/Urteile.hpp"

#include <algorithm>
#include <cmath>
#include <fmt/printf.h>

namespace NECKern::Urteile {

std::optional<Gegenprobe> gegenprobeAus(const NECErgebnis& nec2c, std::size_t frequenzIndex) {
    if (nec2c.frequenzen.empty()) return std::nullopt;
    const auto& f = nec2c.frequenzen[std::min(frequenzIndex, nec2c.frequenzen.size() - 1)];
    Gegenprobe g{f.impedanz, std::nullopt};
    if (auto max = f.maxGewinn()) g.g = max->gesamt;
    return g;
}

GegenprobeUrteil gegenprobe(const std::optional<FrequenzErgebnis>& aktuell, const Gegenprobe& nec2c) {
    double dR = 0, dG = 0;
    bool mitWiderstand = false, mitGewinn = false;
    if (aktuell && aktuell->impedanz && nec2c.z && nec2c.z->re != 0) {
        dR = std::fabs((aktuell->impedanz->re - nec2c.z->re) / nec2c.z->re);
        mitWiderstand = true;
    }
    if (auto max = aktuell ? aktuell->maxGewinn() : std::nullopt; max && nec2c.g) {
        dG = std::fabs(max->gesamt - *nec2c.g);
        mitGewinn = true;
    }

    GegenprobeUrteil u;
    if (nec2c.z)
        u.nec2c = fmt::sprintf("nec2c: %.2f %s j%.2f Ω", nec2c.z->re, nec2c.z->im < 0 ? "−" : "+",
                               std::fabs(nec2c.z->im));
    u.abweichung = fmt::sprintf("Abweichung: Wirkwiderstand %.0f %%, Gewinn %.2f dB", 100 * dR, dG);
    if ((mitWiderstand && dR > 0.15) || (mitGewinn && dG > 1.0)) {
        u.stufe = Abweichung::stark;
        u.urteil = "Die Kerne weichen stark ab – diesem Ergebnis nicht trauen, Modell oder Kern prüfen.";
    } else if ((mitWiderstand && dR > 0.05) || (mitGewinn && dG > 0.3)) {
        u.stufe = Abweichung::merklich;
        u.urteil = "Merkliche Abweichung zwischen den Kernen – Ergebnis mit Vorsicht verwenden.";
    } else {
        u.urteil = "Stimmt mit nec2c überein.";
    }
    return u;
}

GueteUrteil gueteKlasse(double abweichungDb) {
    auto betrag = std::fabs(abweichungDb);
    if (betrag <= 0.1) return {"", "gut", Farbe::gruen};
    if (betrag <= 0.5) return {"", "brauchbar", Farbe::gelb};
    return {"", "Modell prüfen", Farbe::orange};
}

GueteUrteil guete(double mittlererGewinn) {
    // NaN bleibt NaN (und damit „Modell prüfen“), statt durch max verdeckt zu werden.
    double d =
        10 * std::log10(std::isnan(mittlererGewinn) ? mittlererGewinn : std::max(mittlererGewinn, 1e-12));
    auto u = gueteKlasse(d);
    u.wert = fmt::sprintf("%.3f (%+.2f dB)", mittlererGewinn, d);
    return u;
}

SwrAnzeige swr(const FrequenzErgebnis& aktuell, double z0) {
    SwrAnzeige a;
    a.titel = fmt::sprintf("SWR (%.0f Ω)", z0);
    auto s = aktuell.swr(z0);
    if (!s) {
        a.wert = "–";
        a.farbe = swrFarbe(s);
        return a;
    }
    a.wert = std::isfinite(*s) ? fmt::sprintf("%.2f", *s) : "∞";
    a.farbe = swrFarbe(s);
    return a;
}

Farbe swrFarbe(std::optional<double> swr) {
    if (swr && *swr < 1.5) return Farbe::gruen;
    if (swr && *swr < 2.0) return Farbe::gelb;
    return Farbe::orange;
}

} // namespace NECKern::Urteile
