#include "NECKern/Modellpruefung.hpp"
#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <array>
#include <unicode/uchar.h>

namespace NECKern::Modellpruefung {

namespace {

struct Ueberschrift {
    std::array<std::string_view, 2> worte; // leer: kein zweites Stichwort
    std::string_view text;
};

// Erster Treffer gewinnt, in dieser Reihenfolge.
constexpr std::array<Ueberschrift, 6> ueberschriften{{
    {{"GEOMETRY", "SEGMENT"}, "Fehler in den Drähten (Lage, Verbindung, Segmente)"},
    {{"EXCITATION", "SOURCE"}, "Fehler bei der Speisung (EX)"},
    {{"LOAD", ""}, "Fehler bei einer Last (LD)"},
    {{"TRANSMISSION", "NETWORK"}, "Fehler bei Leitung oder Netzwerk (TL/NT)"},
    {{"GROUND", ""}, "Fehler beim Boden (GN)"},
    {{"MEMORY", "ALLOCATION"}, "Das Modell ist ungültig oder zu gross"},
}};

std::string_view ueberschrift(std::string_view gross) {
    for (const auto& u : ueberschriften)
        for (auto wort : u.worte)
            if (!wort.empty() && gross.find(wort) != std::string_view::npos) return u.text;
    return "NEC hat das Modell nicht gerechnet";
}

// Leerraum im Sinne von Unicode an beiden Enden weg.
std::string beschnitten(std::string_view text) {
    const auto zeichen = Unicode::zuUtf32(text);
    auto leer = [](char32_t c) { return u_isUWhiteSpace(static_cast<UChar32>(c)) != 0; };
    std::size_t anfang = 0, ende = zeichen.size();
    while (anfang < ende && leer(zeichen[anfang]))
        ++anfang;
    while (ende > anfang && leer(zeichen[ende - 1]))
        --ende;
    return Unicode::zuUtf8(std::u32string_view(zeichen).substr(anfang, ende - anfang));
}

} // namespace

std::string necMeldung(std::string_view text) {
    const std::string gueltig = Unicode::reparieren(text);
    return std::string(ueberschrift(Unicode::gross(gueltig))) + ". NEC meldet: " + beschnitten(gueltig);
}

std::optional<std::string> laufAbgelehnt(const NECErgebnis& ergebnis) {
    const auto& w = ergebnis.warnungen;
    if (ergebnis.frequenzen.empty()) return necMeldung(w.empty() ? "keine Ausgabe" : w.front());
    const auto& f = ergebnis.frequenzen;
    if (std::any_of(f.begin(), f.end(), [](const FrequenzErgebnis& e) { return e.impedanz.has_value(); }))
        return std::nullopt;
    // Ohne Impedanz kann ein Lauf gelten (Anregung durch eine ebene Welle); abgelehnt hat
    // der Kern ihn erst, wenn er einen Fehler meldet oder nicht mit 0 endet.
    const auto fehler = std::find_if(w.begin(), w.end(), [](const std::string& t) {
        return Unicode::gross(t).find("ERROR") != std::string::npos || t.starts_with("nec2c beendet mit ");
    });
    if (fehler == w.end()) return std::nullopt;
    return necMeldung(*fehler);
}

} // namespace NECKern::Modellpruefung
