// Vorlagen für neue Karten im Editor.
#include "NECKern/Feldwerte.hpp"
#include "NECKern/Modellpruefung.hpp"

#include <algorithm>
#include <string>

namespace NECKern::Modellpruefung {

namespace {

using Felder = std::vector<std::string>;

bool istDraht(const Karte& k) {
    return k.typ == "GW" || k.typ == "GA" || k.typ == "GH";
}

struct Draehte {
    std::size_t anzahl = 0;
    std::int64_t groessterTag = 0; // nie unter 0: der nächste Tag ist mindestens 1
    const Karte* erster = nullptr;
};

Draehte draehte(const Modell& m, const Werte& werte) {
    Draehte d;
    for (const auto& k : m.karten) {
        if (!istDraht(k)) continue;
        ++d.anzahl;
        if (!d.erster) d.erster = &k;
        if (auto tag = Feldwerte::ganz(k, 0, werte)) d.groessterTag = std::max(d.groessterTag, *tag);
    }
    return d;
}

// Eine neue Speisung sitzt auf dem mittleren Segment des ersten Drahts, sonst auf Tag 1.
Felder speisung(const Draehte& d, const Werte& werte) {
    if (d.erster)
        if (auto tag = Feldwerte::ganz(*d.erster, 0, werte)) {
            auto n = Feldwerte::ganz(*d.erster, 1, werte);
            const std::int64_t mitte = n && *n >= 1 ? *n / 2 + *n % 2 : 1;
            return {"0", std::to_string(*tag), std::to_string(mitte), "0"};
        }
    return {"0", "1", "1", "0"};
}

} // namespace

Karte neueKarte(std::string_view typ, const Modell& modell) {
    Karte k(std::string(typ), {}, {});
    const Werte werte = Feldwerte::lesbareWerte(modell);
    const Draehte d = draehte(modell, werte);
    const std::string tag = std::to_string(d.groessterTag + 1);
    // Neue Drähte parallel zu y, je einen Meter weiter in x, damit keiner auf einem anderen liegt.
    const std::string versatz = Modell::zahl(static_cast<double>(d.anzahl + 1));

    if (k.typ == "GW") {
        k.ganz = {tag, "11"};
        k.reell = {versatz, "-0.5", "1", versatz, "0.5", "1", "1mm"};
    } else if (k.typ == "GA") {
        k.ganz = {tag, "12"};
        k.reell = {"0.5", "0", "180", "1mm"};
    } else if (k.typ == "GH") {
        k.ganz = {tag, "40"};
        k.reell = {"0.05", "0.5", "0.05", "0.05", "0.05", "0.05", "1mm", "0"};
    } else if (k.typ == "GE") {
        k.ganz = {"0"};
    } else if (k.typ == "GN") {
        k.ganz = {"2", "0", "0", "0"};
        k.reell = {"13", "0.005"};
    } else if (k.typ == "LD") {
        k.ganz = {"5", "0", "0", "0"};
        k.reell = {"5.8e7"};
    } else if (k.typ == "FR") {
        k.ganz = {"0", "1", "0", "0"};
        k.reell = {"14.2", "0"};
    } else if (k.typ == "RP") {
        k.ganz = {"0", "19", "37", "1000"};
        k.reell = {"0", "0", "5", "5"};
    } else if (k.typ == "EX") {
        k.ganz = speisung(d, werte);
        k.reell = {"1", "0"};
    } else if (k.typ == "GS") {
        k.ganz = {"0", "0"};
        k.reell = {"1"}; // Faktor 1: ändert nichts, bis der Nutzer ihn setzt
    } else if (k.typ == "GR") {
        k.ganz = {"0", "1"}; // eine Kopie
    } else {
        // Übrige Typen: so viele Nullen, wie die Karte Felder hat.
        const auto f = Karte::felder(k.typ);
        k.ganz.assign(static_cast<std::size_t>(f.ganz), "0");
        k.reell.assign(static_cast<std::size_t>(f.reell), "0");
    }
    return k;
}

} // namespace NECKern::Modellpruefung
