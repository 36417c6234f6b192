#include "NECKern/Optimierer.hpp"

#include "NECKern/Aufgabengruppe.hpp"
#include "NECKern/Frequenzkarte.hpp"
#include "NECKern/Json.hpp"

#include <algorithm>
#include <cmath>
#include <fmt/printf.h>
#include <thread>
#include <utility>

namespace NECKern {

namespace {

struct ArtEintrag {
    Ziel::Art art;
    const char* kennung;
    const char* text;
};

constexpr ArtEintrag artTabelle[] = {
    {Ziel::Art::swr, "swr", "SWR"},
    {Ziel::Art::gewinn, "gewinn", "Gewinn"},
    {Ziel::Art::vorRueck, "vorRueck", "Vor/Rück"},
    {Ziel::Art::resonanz, "resonanz", "Resonanz (X = 0)"},
    {Ziel::Art::impedanzR, "impedanzR", "R = Ziel"},
};

const ArtEintrag& eintrag(Ziel::Art art) {
    for (const auto& e : artTabelle)
        if (e.art == art) return e;
    return artTabelle[0];
}

// Der Kern druckt die Frequenz gerundet (nec2c mit fünf Stellen). Ein Lauf
// verlangt genau eine Frequenz; sein Ergebnis gilt als bei genau dieser
// gerechnet, damit der Vergleich mit der Zielfrequenz exakt bleibt.
bool gehoertZu(double gemeldet, double verlangt) {
    return std::fabs(gemeldet - verlangt) <= 1e-4 * std::fabs(verlangt);
}

// Liefert der Kern die verlangte Frequenz nicht, zählt sie wie ein Ergebnis ohne
// Impedanz und Diagramm: ein gescheiterter Lauf darf nie als erfülltes Ziel gelten.
std::vector<FrequenzErgebnis> zuordnen(std::vector<FrequenzErgebnis> gemeldet, double mhz) {
    for (auto& f : gemeldet) {
        if (!gehoertZu(f.mhz, mhz)) continue;
        f.mhz = mhz;
        return {std::move(f)};
    }
    FrequenzErgebnis leer;
    leer.mhz = mhz;
    return {leer};
}

double term(const Ziel& z, const FrequenzErgebnis& f, double z0) {
    switch (z.art) {
    case Ziel::Art::swr: {
        double s = f.impedanz ? *f.swr(z0) : 100.0;
        return z.gewicht * std::max(s - z.sollwert, 0.0);
    }
    case Ziel::Art::gewinn: {
        auto maximum = f.maxGewinn();
        double g = maximum ? maximum->gesamt : -30.0;
        return z.gewicht * std::max(z.sollwert - g, 0.0);
    }
    case Ziel::Art::vorRueck: {
        auto v = f.vorRueck();
        double defizit = v ? z.sollwert - *v : z.sollwert;
        return z.gewicht * std::max(defizit, 0.0) / 5.0;
    }
    case Ziel::Art::resonanz: {
        double x = f.impedanz ? std::fabs(f.impedanz->im) : 1000.0;
        return z.gewicht * x / 10.0;
    }
    case Ziel::Art::impedanzR: {
        double d = f.impedanz ? std::fabs(f.impedanz->re - z.sollwert) : 1000.0;
        return z.gewicht * d / 10.0;
    }
    }
    return 0;
}

bool brauchtDiagramm(const std::vector<Ziel>& ziele) {
    return std::any_of(ziele.begin(), ziele.end(), [](const Ziel& z) {
        return z.art == Ziel::Art::gewinn || z.art == Ziel::Art::vorRueck;
    });
}

} // namespace

Ziel::Ziel(Art art_, double mhz_, double sollwert_, double gewicht_)
    : art(art_), mhz(mhz_), sollwert(sollwert_), gewicht(gewicht_) {}

const std::vector<Ziel::Art>& Ziel::arten() {
    static const std::vector<Art> alle = [] {
        std::vector<Art> liste;
        for (const auto& e : artTabelle)
            liste.push_back(e.art);
        return liste;
    }();
    return alle;
}

std::string Ziel::text(Art art) {
    return eintrag(art).text;
}

std::string Ziel::kennung(Art art) {
    return eintrag(art).kennung;
}

void to_json(nlohmann::ordered_json& j, const Ziel& z) {
    j = nlohmann::ordered_json::object();
    j["id"] = z.id;
    j["art"] = Ziel::kennung(z.art);
    j["mhz"] = z.mhz;
    j["sollwert"] = z.sollwert;
    j["gewicht"] = z.gewicht;
}

void from_json(const nlohmann::ordered_json& j, Ziel& z) {
    constexpr const char* typ = "Ziel";
    z.id = Json::pflicht<Uuid>(j, "id", typ);
    auto art = Json::pflicht<std::string>(j, "art", typ);
    auto it = std::find_if(std::begin(artTabelle), std::end(artTabelle),
                           [&](const ArtEintrag& e) { return art == e.kennung; });
    if (it == std::end(artTabelle)) throw DatenFehler("Ziel: die Zielart „" + art + "“ ist unbekannt.");
    z.art = it->art;
    z.mhz = Json::pflicht<double>(j, "mhz", typ);
    z.sollwert = Json::pflicht<double>(j, "sollwert", typ);
    z.gewicht = Json::pflicht<double>(j, "gewicht", typ);
}

Optimierer::Optimierer(Modell modell_, KernZeiger kern_, std::vector<Ziel> ziele_)
    : Optimierer(std::move(modell_), std::move(kern_), std::move(ziele_), Einstellungen{}) {}

Optimierer::Optimierer(Modell modell_, KernZeiger kern_, std::vector<Ziel> ziele_,
                       Einstellungen einstellungen)
    : modell(std::move(modell_)), kern(std::move(kern_)), ziele(std::move(ziele_)),
      parallel_(einstellungen.parallel > 0 ? static_cast<std::size_t>(einstellungen.parallel)
                                           : std::max(1u, std::thread::hardware_concurrency())),
      vorausrechnen_(einstellungen.vorausrechnen) {
    if (!kern) throw KernFehler("Dem Optimierer fehlt ein Rechenkern.");
    // Nahfelder zählen nie, Diagramme nur für Gewinn und Vor-Rück: was kein Ziel
    // braucht, rechnet der Kern auch nicht.
    std::vector<std::string> ohne{"NE", "NH"};
    if (!brauchtDiagramm(ziele)) ohne.push_back("RP");
    for (const auto& z : ziele) {
        if (!std::isfinite(z.mhz)) continue;
        if (std::find(frequenzen_.begin(), frequenzen_.end(), z.mhz) != frequenzen_.end()) continue;
        frequenzen_.push_back(z.mhz);
        laufModelle_.push_back(Frequenzkarte::einsetzen(modell, Frequenzkarte::linear(z.mhz, 1, 0), ohne));
    }
}

double Optimierer::kostenAus(const std::vector<FrequenzErgebnis>& frequenzen, const std::vector<Ziel>& ziele,
                             double z0) {
    double summe = 0;
    for (const auto& f : frequenzen)
        for (const auto& z : ziele)
            if (z.mhz == f.mhz) summe += term(z, f, z0);
    return summe;
}

double Optimierer::kosten(const Werte& werte) const {
    return kostenVieler({werte}).front();
}

std::vector<double> Optimierer::kostenVieler(const std::vector<Werte>& punkte) const {
    const std::size_t k = laufModelle_.size();
    if (k == 0) {
        // Ohne Zielfrequenz gibt es nichts zu rechnen; Formelfehler zeigen sich trotzdem.
        for (const auto& werte : punkte)
            (void)modell.deck(werte);
        return std::vector<double>(punkte.size(), 0.0);
    }
    std::vector<std::vector<FrequenzErgebnis>> antworten(punkte.size() * k);
    aufgabengruppe(antworten.size(), parallel_, [&](std::size_t i) {
        auto deck = laufModelle_[i % k].deck(punkte[i / k]);
        auto ergebnis = kern->rechnen(deck, stopp_.get_token());
        ++laeufe_;
        antworten[i] = zuordnen(std::move(ergebnis.frequenzen), frequenzen_[i % k]);
    });
    std::vector<double> kosten;
    for (std::size_t p = 0; p < punkte.size(); ++p) {
        std::vector<FrequenzErgebnis> alle;
        for (std::size_t i = p * k; i < (p + 1) * k; ++i)
            alle.insert(alle.end(), antworten[i].begin(), antworten[i].end());
        kosten.push_back(kostenAus(alle, ziele, modell.z0));
    }
    return kosten;
}

Modell Optimierer::uebernehmen(Modell modell, const Werte& werte) {
    for (auto& v : modell.variablen) {
        auto it = werte.find(v.name);
        if (it != werte.end()) v.ausdruck = fmt::sprintf("%.5g", it->second);
    }
    return modell;
}

} // namespace NECKern
