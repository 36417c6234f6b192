#include "Fenster/Editor/Zellpruefung.hpp"

#include "Fenster/Editor/Deckzeile.hpp"

#include "NECKern/Ausdruck.hpp"
#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <fmt/printf.h>

namespace Zellpruefung {

namespace {

// Zeichen, die das Deck selbst deutet: Komma trennt Felder, Apostroph beginnt einen Kommentar.
std::string deckzeichen(std::string_view s) {
    if (s.find(',') != std::string_view::npos)
        return "Ein Komma trennt im Deck die Felder – Dezimalzahlen mit Punkt schreiben (0.5 statt 0,5).";
    if (s.find('\'') != std::string_view::npos)
        return "Ein Apostroph beginnt im Deck einen Kommentar – in Formeln ist er nicht möglich.";
    return {};
}

} // namespace

Pruefung kartenfeld(std::string_view eingabe) {
    if (auto m = deckzeichen(eingabe); !m.empty()) return {std::string(eingabe), m};
    std::string text;
    std::copy_if(eingabe.begin(), eingabe.end(), std::back_inserter(text),
                 [](char c) { return c != ' ' && c != '\t'; });
    return {text.empty() ? "0" : text, {}};
}

Pruefung formel(std::string_view eingabe) {
    const auto text = Deckzeile::beschnitten(eingabe);
    if (text.empty()) return {{}, "Die Formel ist leer – bitte eine Zahl oder eine Formel eingeben."};
    return {std::string(text), deckzeichen(text)};
}

Pruefung name(std::string_view eingabe, const std::vector<std::string>& andereNamen) {
    const std::string text(Deckzeile::beschnitten(eingabe));
    if (text.empty()) return {text, "Die Variable braucht einen Namen."};
    const auto klein = NECKern::Unicode::klein(text);
    if (klein == "pi" || klein == "c0")
        return {text, "„" + text + "“ ist eine Konstante der Formeln – bitte einen anderen Namen wählen."};
    // Der Auswerter entscheidet: liest er den Text als genau diese Variable, taugt er als Name.
    constexpr double probe = 0.318309886183791;
    try {
        if (NECKern::Ausdruck::auswerten(text, {{klein, probe}}) != probe)
            return {text, "„" + text + "“ ist kein Name – Namen beginnen mit einem Buchstaben."};
    } catch (const NECKern::Ausdruck::Fehler& f) {
        return {text, std::string("Name nicht möglich: ") + f.what()};
    }
    for (const auto& anderer : andereNamen)
        if (NECKern::Unicode::klein(anderer) == klein)
            return {text, "Eine Variable „" + anderer + "“ gibt es schon."};
    return {text, {}};
}

Grenze grenze(std::string_view eingabe, const NECKern::Werte& werte) {
    const auto text = Deckzeile::beschnitten(eingabe);
    if (text.empty()) return {};
    try {
        return {NECKern::Ausdruck::auswerten(text, werte), {}};
    } catch (const NECKern::Ausdruck::Fehler& f) {
        return {std::nullopt, std::string("Grenze nicht lesbar: ") + f.what()};
    }
}

std::string zahl(double x) {
    return fmt::sprintf("%.6g", x);
}

} // namespace Zellpruefung
