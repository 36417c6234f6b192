#include "NECKern/Feldwerte.hpp"

#include "NECKern/Ausdruck.hpp"

#include <cmath>
#include <exception>
#include <string_view>

namespace NECKern::Feldwerte {

namespace {

std::optional<double> auswerten(std::string_view text, const Werte& werte) {
    if (text.empty()) text = "0";
    try {
        return Ausdruck::auswerten(text, werte);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

std::optional<double> feld(const std::vector<std::string>& felder, std::size_t index, const Werte& werte) {
    return auswerten(index < felder.size() ? std::string_view(felder[index]) : std::string_view(), werte);
}

Werte werteBis(const Modell& modell, std::size_t anzahl) {
    Modell teil;
    teil.variablen.assign(modell.variablen.begin(),
                          modell.variablen.begin() + static_cast<std::ptrdiff_t>(anzahl));
    return teil.variablenWerte();
}

} // namespace

Werte lesbareWerte(const Modell& modell) {
    try {
        return modell.variablenWerte();
    } catch (const std::exception&) {
    }
    // Die längste Folge von Variablen am Anfang, die sich fehlerfrei rechnen lässt.
    Werte werte;
    for (std::size_t anzahl = 1; anzahl < modell.variablen.size(); ++anzahl) {
        try {
            werte = werteBis(modell, anzahl);
        } catch (const std::exception&) {
            break;
        }
    }
    return werte;
}

std::optional<double> reell(const Karte& karte, std::size_t index, const Werte& werte) {
    return feld(karte.reell, index, werte);
}

std::optional<std::int64_t> ganz(const Karte& karte, std::size_t index, const Werte& werte) {
    const auto wert = feld(karte.ganz, index, werte);
    if (!wert) return std::nullopt;
    const double gerundet = std::round(*wert);
    // 2^63 ist als double genau darstellbar; alles darunter passt in 64 Bit.
    constexpr double grenze = 9223372036854775808.0;
    if (!(gerundet >= -grenze && gerundet < grenze)) return std::nullopt;
    return static_cast<std::int64_t>(gerundet);
}

} // namespace NECKern::Feldwerte
