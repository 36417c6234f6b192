// Rechendeck: jedes Feld als Zahl, jede Karte vollständig, mit XQ und EN am Ende.
#include "NECKern/Ausdruck.hpp"
#include "NECKern/Modell.hpp"
#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fmt/format.h>

namespace NECKern {

namespace {

Ausdruck::Fehler ganzzahlFehler(double wert) {
    // NaN ohne Vorzeichen: 0/0 ergibt auf x86 ein negatives NaN.
    auto text = std::isnan(wert) ? std::string("nan") : fmt::format("{:g}", wert);
    return Ausdruck::Fehler("Ganzzahlfeld mit dem Wert " + text +
                            " ist keine ganze Zahl im gültigen Bereich.");
}

// Gerundet wird halb von null weg; was nicht in 64 Bit passt, ist ein Auswertungsfehler.
std::string ganzzahl(double wert) {
    double gerundet = std::round(wert);
    if (!(gerundet >= -0x1p63 && gerundet < 0x1p63)) throw ganzzahlFehler(wert);
    return fmt::format("{}", static_cast<std::int64_t>(gerundet));
}

// Das Feld an Stelle i; fehlt es oder ist es leer, gilt ersatz.
std::string_view feld(const std::vector<std::string>& felder, int i, std::string_view ersatz) {
    auto idx = static_cast<std::size_t>(i);
    return idx < felder.size() && !felder[idx].empty() ? std::string_view(felder[idx]) : ersatz;
}

void karteSchreiben(std::string& aus, const Karte& k, const Werte& werte) {
    aus += k.typ;
    auto anzahl = Karte::felder(k.typ);
    for (int i = 0; i < anzahl.ganz; ++i) {
        aus.push_back(' ');
        aus += ganzzahl(Ausdruck::auswerten(feld(k.ganz, i, "0"), werte));
    }
    for (int i = 0; i < anzahl.reell; ++i) {
        aus.push_back(' ');
        aus += Modell::zahl(Ausdruck::auswerten(feld(k.reell, i, "0"), werte));
    }
    aus.push_back('\n');
}

bool beginntMit(std::string_view zeile, std::string_view kopf) {
    return zeile.substr(0, kopf.size()) == kopf;
}

} // namespace

Werte Modell::variablenWerte(const Werte& ueberschreiben) const {
    Werte werte;
    for (const auto& v : variablen) {
        auto fest = ueberschreiben.find(v.name);
        double wert = fest != ueberschreiben.end() ? fest->second : Ausdruck::auswerten(v.ausdruck, werte);
        werte[Unicode::klein(v.name)] = wert;
    }
    return werte;
}

std::string Modell::deck(const Werte& ueberschreiben, const std::optional<Karte>& ersetzeFR,
                         bool ohneRP) const {
    auto werte = variablenWerte(ueberschreiben);
    std::string aus;
    aus.reserve(64 * (karten.size() + kommentar.size() + 4));
    for (const auto& k : kommentar.empty() ? std::vector<std::string>{name} : kommentar)
        for (const auto& zeile : kommentarZeilen(k, 70)) {
            aus += zeile;
            aus.push_back('\n');
        }
    aus += "CE\n";

    bool gerechnet = false; // schon eine RP- oder XQ-Zeile
    std::size_t endeZeile = std::string::npos;
    bool frErsetzt = false;
    for (const auto& k : karten) {
        if (k.typ == "CM" || k.typ == "CE" || k.typ == "SY") continue;
        if (ohneRP && k.typ == "RP") continue;
        const Karte* karte = &k;
        if (k.typ == "FR" && ersetzeFR) {
            if (frErsetzt) continue;
            frErsetzt = true;
            karte = &*ersetzeFR;
        }
        auto anfang = aus.size();
        karteSchreiben(aus, *karte, werte);
        auto zeile = std::string_view(aus).substr(anfang);
        gerechnet = gerechnet || beginntMit(zeile, "RP") || beginntMit(zeile, "XQ");
        if (endeZeile == std::string::npos && beginntMit(zeile, "EN")) endeZeile = anfang;
    }

    // Ein Kern soll immer etwas rechnen und immer eine Endkarte finden.
    if (!gerechnet) {
        if (endeZeile == std::string::npos)
            aus += "XQ 0\n";
        else
            aus.insert(endeZeile, "XQ 0\n");
    }
    if (endeZeile == std::string::npos) aus += "EN\n";
    return aus;
}

Modell::Frequenzplan Modell::frequenzen() const {
    auto werte = variablenWerte();
    auto fr = std::find_if(karten.begin(), karten.end(), [](const Karte& k) { return k.typ == "FR"; });
    if (fr == karten.end()) return {14.0, 0.0, 1};
    double anzahl = Ausdruck::auswerten(feld(fr->ganz, 1, "1"), werte);
    double start = Ausdruck::auswerten(feld(fr->reell, 0, "14"), werte);
    double schritt = Ausdruck::auswerten(feld(fr->reell, 1, "0"), werte);
    if (!std::isfinite(anzahl) || anzahl >= 0x1p31) throw ganzzahlFehler(anzahl);
    // Die Umwandlung schneidet zur Null hin ab; weniger als eine Frequenz gibt es nicht.
    return {start, schritt, anzahl < 1 ? 1 : static_cast<int>(anzahl)};
}

} // namespace NECKern
