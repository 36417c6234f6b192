#include "NECKern/GeometrieZeile.hpp"

#include "NECKern/Geometrie.hpp"

#include <charconv>
#include <limits>

namespace NECKern::Geometrie::intern {

namespace {

constexpr Ganz ganzMax = std::numeric_limits<Ganz>::max();
constexpr Ganz ganzMin = std::numeric_limits<Ganz>::min();

// Die C-Umwandlung nimmt ein führendes '+' an, from_chars nicht.
std::string_view ohnePlus(std::string_view teil) {
    if (teil.size() > 1 && teil[0] == '+' && teil[1] != '+' && teil[1] != '-') teil.remove_prefix(1);
    return teil;
}

} // namespace

Ganz plus(Ganz a, Ganz b) {
    Ganz r = 0;
    if (!__builtin_add_overflow(a, b, &r)) return r;
    return b > 0 ? ganzMax : ganzMin;
}

Ganz mal(Ganz a, Ganz b) {
    Ganz r = 0;
    if (!__builtin_mul_overflow(a, b, &r)) return r;
    return (a < 0) != (b < 0) ? ganzMin : ganzMax;
}

std::optional<double> alsZahl(std::string_view teil) {
    teil = ohnePlus(teil);
    double x = 0;
    auto [ende, fehler] = std::from_chars(teil.data(), teil.data() + teil.size(), x);
    if (fehler != std::errc{} || ende != teil.data() + teil.size()) return std::nullopt;
    return x;
}

std::optional<Ganz> alsGanz(std::string_view teil) {
    teil = ohnePlus(teil);
    Ganz x = 0;
    auto [ende, fehler] = std::from_chars(teil.data(), teil.data() + teil.size(), x);
    if (fehler != std::errc{} || ende != teil.data() + teil.size()) return std::nullopt;
    return x;
}

std::vector<std::string_view> zeilen(std::string_view text) {
    std::vector<std::string_view> ergebnis;
    while (!text.empty()) {
        auto ende = text.find('\n');
        auto zeile = text.substr(0, ende);
        if (!zeile.empty()) ergebnis.push_back(zeile);
        if (ende == std::string_view::npos) break;
        text.remove_prefix(ende + 1);
    }
    return ergebnis;
}

// Tabulator und Wagenrücklauf zählen wie Leerzeichen, damit CR-LF-Decks nicht
// an der letzten Zahl jeder Zeile scheitern.
bool istTrenner(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

std::vector<std::string_view> teile(std::string_view zeile) {
    std::vector<std::string_view> ergebnis;
    std::size_t i = 0;
    while (i < zeile.size()) {
        while (i < zeile.size() && istTrenner(zeile[i]))
            ++i;
        auto anfang = i;
        while (i < zeile.size() && !istTrenner(zeile[i]))
            ++i;
        if (i > anfang) ergebnis.push_back(zeile.substr(anfang, i - anfang));
    }
    return ergebnis;
}

std::vector<Ganz> Zeile::ganz() const {
    std::vector<Ganz> ergebnis;
    for (std::size_t i = 1; i < 3 && i < teile.size(); ++i)
        if (auto wert = alsGanz(teile[i])) ergebnis.push_back(*wert);
    return ergebnis;
}

std::vector<double> Zeile::reell() const {
    if (teile.size() <= 3) return {};
    return zahlen({teile.begin() + 3, teile.end()});
}

void anfuegen(std::string& aus, std::string_view zeile) {
    if (!aus.empty()) aus += '\n';
    aus += zeile;
}

} // namespace NECKern::Geometrie::intern
