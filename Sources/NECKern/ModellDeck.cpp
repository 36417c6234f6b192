// Das Rechendeck: nur Zahlen, jede Karte vollständig, mit XQ und EN.
#include "NECKern/Ausdruck.hpp"
#include "NECKern/Modell.hpp"
#include "NECKern/Unicode.hpp"

#include <cmath>
#include <cstdint>
#include <fmt/format.h>
#include <fmt/printf.h>

namespace NECKern {

namespace {

const std::string& feldOderNull(const std::vector<std::string>& felder, int i) {
    static const std::string null = "0";
    auto idx = static_cast<std::size_t>(i);
    return idx < felder.size() && !felder[idx].empty() ? felder[idx] : null;
}

std::string ganzzahl(const std::string& feld, const Werte& werte) {
    double wert = std::round(Ausdruck::auswerten(feld, werte)); // Hälften von null weg
    // 2^63 ist als double exakt; alles ab dort passt nicht mehr in 64 Bit.
    constexpr double grenze = 9223372036854775808.0;
    if (!std::isfinite(wert) || wert < -grenze || wert >= grenze)
        throw Ausdruck::Fehler(
            fmt::sprintf("Der Wert %g in einem Ganzzahlfeld ist keine ganze Zahl im 64-Bit-Bereich.", wert));
    return fmt::format("{}", static_cast<std::int64_t>(wert));
}

void karteSchreiben(std::string& aus, const Karte& k, const Werte& werte) {
    aus += k.typ;
    auto felder = Karte::felder(k.typ);
    for (int i = 0; i < felder.ganz; ++i) {
        aus.push_back(' ');
        aus += ganzzahl(feldOderNull(k.ganz, i), werte);
    }
    for (int i = 0; i < felder.reell; ++i) {
        aus.push_back(' ');
        aus += Modell::zahl(Ausdruck::auswerten(feldOderNull(k.reell, i), werte));
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
        auto schluessel = Unicode::klein(v.name);
        auto vorgabe = ueberschreiben.find(v.name);
        werte[schluessel] =
            vorgabe != ueberschreiben.end() ? vorgabe->second : Ausdruck::auswerten(v.ausdruck, werte);
    }
    return werte;
}

std::string Modell::deck(const Werte& ueberschreiben, const std::optional<Karte>& ersetzeFR,
                         bool ohneRP) const {
    auto werte = variablenWerte(ueberschreiben);
    std::string kopf;
    for (const auto& k : kommentar.empty() ? std::vector<std::string>{name} : kommentar)
        for (const auto& zeile : kommentarZeilen(k, 70))
            kopf += zeile + '\n';
    kopf += "CE\n";

    std::vector<std::string> zeilen;
    zeilen.reserve(karten.size() + 2);
    bool frGesehen = false;
    for (const auto& k : karten) {
        if (k.typ == "CM" || k.typ == "CE" || k.typ == "SY") continue;
        if (ohneRP && k.typ == "RP") continue;
        const Karte* karte = &k;
        if (k.typ == "FR" && ersetzeFR) {
            if (frGesehen) continue;
            frGesehen = true;
            karte = &*ersetzeFR;
        }
        std::string zeile;
        karteSchreiben(zeile, *karte, werte);
        zeilen.push_back(std::move(zeile));
    }

    auto hat = [&zeilen](std::string_view k) {
        for (const auto& z : zeilen)
            if (beginntMit(z, k)) return true;
        return false;
    };
    if (!hat("RP") && !hat("XQ")) {
        auto en = std::find_if(zeilen.begin(), zeilen.end(),
                               [](const std::string& z) { return beginntMit(z, "EN"); });
        zeilen.insert(en, "XQ 0\n");
    }
    if (!hat("EN")) zeilen.emplace_back("EN\n");

    std::string aus = std::move(kopf);
    for (const auto& z : zeilen)
        aus += z;
    return aus;
}

Modell::Frequenzplan Modell::frequenzen() const {
    auto werte = variablenWerte();
    auto fr = std::find_if(karten.begin(), karten.end(), [](const Karte& k) { return k.typ == "FR"; });
    if (fr == karten.end()) return {14.0, 0.0, 1};
    auto feld = [](const std::vector<std::string>& felder, std::size_t i, const char* vorgabe) {
        if (i >= felder.size()) return std::string(vorgabe);
        return felder[i].empty() ? std::string("0") : felder[i];
    };
    double anzahl = std::trunc(Ausdruck::auswerten(feld(fr->ganz, 1, "1"), werte));
    double start = Ausdruck::auswerten(feld(fr->reell, 0, "14"), werte);
    double schritt = Ausdruck::auswerten(feld(fr->reell, 1, "0"), werte);
    int n = 1;
    if (anzahl > 1) n = anzahl >= 2147483647.0 ? 2147483647 : static_cast<int>(anzahl);
    return {start, schritt, n};
}

} // namespace NECKern
