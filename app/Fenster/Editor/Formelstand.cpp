#include "Fenster/Editor/Formelstand.hpp"

#include "NECKern/Ausdruck.hpp"
#include "NECKern/Unicode.hpp"

Formelstand Formelstand::aus(const std::vector<NECKern::Variable>& variablen) {
    Formelstand stand;
    stand.zeilen.reserve(variablen.size());
    for (const auto& v : variablen) {
        try {
            const double wert = NECKern::Ausdruck::auswerten(v.ausdruck, stand.werte);
            stand.werte[NECKern::Unicode::klein(v.name)] = wert;
            stand.zeilen.push_back({wert, {}});
        } catch (const NECKern::Ausdruck::Fehler& f) {
            stand.zeilen.push_back({std::nullopt, f.what()});
        }
    }
    return stand;
}

std::optional<std::string> Formelstand::fehler(std::string_view text) const {
    if (text.empty()) return std::nullopt;
    try {
        NECKern::Ausdruck::auswerten(text, werte);
        return std::nullopt;
    } catch (const NECKern::Ausdruck::Fehler& f) {
        return f.what();
    }
}
