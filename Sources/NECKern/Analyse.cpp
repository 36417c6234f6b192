#include "NECKern/Analyse.hpp"

#include "NECKern/Aufgabengruppe.hpp"
#include "NECKern/Frequenzkarte.hpp"
#include "NECKern/Json.hpp"
#include "NECKern/Modellpruefung.hpp"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

namespace NECKern {

namespace {

using nlohmann::ordered_json;

// JSON kennt kein ∞ (SWR bei Totalreflexion): nicht endliche Zahlen werden null.
void zahlSetzen(ordered_json& j, const char* schluessel, const std::optional<double>& wert) {
    if (!wert) return;
    j[schluessel] = std::isfinite(*wert) ? ordered_json(*wert) : ordered_json(nullptr);
}

struct Stueck {
    std::int64_t anfang;
    std::int64_t anzahl;
};

// c = ⌈punkte / parallel⌉; Stück g beginnt bei g·c. Leere Stücke entfallen.
std::vector<Stueck> stuecke(int punkte, int parallel) {
    auto c = static_cast<std::int64_t>(std::ceil(static_cast<double>(punkte) / parallel));
    std::vector<Stueck> liste;
    for (std::int64_t g = 0; g < parallel; ++g) {
        std::int64_t anfang = g * c;
        std::int64_t anzahl = std::min<std::int64_t>(c, punkte - anfang);
        if (anzahl < 1) break;
        liste.push_back({anfang, anzahl});
    }
    return liste;
}

Frequenzpunkt punkt(const FrequenzErgebnis& f, double z0) {
    Frequenzpunkt p;
    p.mhz = f.mhz;
    p.impedanz = f.impedanz;
    p.swr = f.swr(z0);
    if (auto maximum = f.maxGewinn()) p.gewinn = maximum->gesamt;
    p.vorRueck = f.vorRueck();
    return p;
}

// Nach Frequenz aufsteigend; eine (nie erwartete) NaN-Frequenz kommt ans Ende,
// damit die Ordnung streng schwach bleibt.
bool frueher(const Frequenzpunkt& a, const Frequenzpunkt& b) {
    bool aNaN = std::isnan(a.mhz), bNaN = std::isnan(b.mhz);
    if (aNaN != bNaN) return bNaN;
    return a.mhz < b.mhz;
}

} // namespace

void to_json(ordered_json& j, const Frequenzpunkt& p) {
    j = ordered_json::object();
    zahlSetzen(j, "mhz", p.mhz);
    if (p.impedanz) j["impedanz"] = *p.impedanz;
    zahlSetzen(j, "swr", p.swr);
    zahlSetzen(j, "gewinn", p.gewinn);
    zahlSetzen(j, "vorRueck", p.vorRueck);
}

void from_json(const ordered_json& j, Frequenzpunkt& p) {
    constexpr const char* typ = "Frequenzpunkt";
    auto mhz = j.is_object() ? j.find("mhz") : j.end();
    p.mhz = (mhz != j.end() && mhz->is_null()) ? std::numeric_limits<double>::quiet_NaN()
                                               : Json::pflicht<double>(j, "mhz", typ);
    p.impedanz = Json::freiwillig<Komplex>(j, "impedanz", typ);
    p.swr = Json::freiwillig<double>(j, "swr", typ);
    p.gewinn = Json::freiwillig<double>(j, "gewinn", typ);
    p.vorRueck = Json::freiwillig<double>(j, "vorRueck", typ);
}

std::vector<Frequenzpunkt> Analyse::frequenzgang(const Modell& modell, const Rechenkern& kern, double von,
                                                 double bis, int punkte, bool mitDiagramm, int parallel,
                                                 std::stop_token stopp,
                                                 const std::function<void(int)>& fertig) {
    if (punkte < 2) throw KernFehler("Der Frequenzgang braucht mindestens 2 Frequenzen.");
    if (parallel < 1) throw KernFehler("Der Frequenzgang braucht mindestens einen Rechenlauf zugleich.");
    double schritt = (bis - von) / (punkte - 1);
    if (!std::isfinite(von) || !std::isfinite(bis) || !std::isfinite(schritt))
        throw KernFehler("Die Grenzen des Frequenzgangs müssen endliche Zahlen sein.");
    // Bei f ≤ 0 rechnet nec2c über Boden bis zu seinem Zeitlimit.
    if (von <= 0 || bis <= 0) throw KernFehler("Frequenz muss grösser als 0 MHz sein.");
    if (auto satz = Modellpruefung::umfangPruefen(modell)) throw KernFehler(*satz);

    auto liste = stuecke(punkte, parallel);
    std::vector<std::vector<Frequenzpunkt>> teile(liste.size());
    std::atomic<int> gerechnet{0};
    aufgabengruppe(liste.size(), liste.size(), [&](std::size_t g) {
        const auto& stueck = liste[g];
        double start = von + static_cast<double>(stueck.anfang) * schritt;
        auto fr = Frequenzkarte::linear(start, stueck.anzahl, schritt);
        auto ohne = mitDiagramm ? std::vector<std::string>{} : std::vector<std::string>{"RP"};
        auto deck = Frequenzkarte::einsetzen(modell, std::move(fr), ohne).deck();
        auto ergebnis = kern.rechnen(deck, stopp);
        for (const auto& f : ergebnis.frequenzen)
            teile[g].push_back(punkt(f, modell.z0));
        const int bisher = gerechnet += static_cast<int>(stueck.anzahl);
        if (fertig) fertig(bisher);
    });

    std::vector<Frequenzpunkt> alle;
    for (auto& teil : teile)
        alle.insert(alle.end(), teil.begin(), teil.end());
    std::stable_sort(alle.begin(), alle.end(), frueher);
    return alle;
}

} // namespace NECKern
