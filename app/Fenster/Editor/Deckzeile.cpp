#include "Fenster/Editor/Deckzeile.hpp"

#include "NECKern/Unicode.hpp"

#include <string>
#include <vector>

namespace Deckzeile {

namespace {

// Jedes Stück bis zum Apostroph muss name=formel sein; sonst verwirft der Leser es stumm.
bool symboleLesbar(std::string_view rest) {
    rest = rest.substr(0, rest.find('\''));
    bool eines = false;
    while (!rest.empty()) {
        const auto komma = rest.find(',');
        const auto stueck = beschnitten(rest.substr(0, komma));
        rest = komma == std::string_view::npos ? std::string_view() : rest.substr(komma + 1);
        if (stueck.empty()) continue;
        const auto gleich = stueck.find('=');
        if (gleich == std::string_view::npos || beschnitten(stueck.substr(0, gleich)).empty() ||
            beschnitten(stueck.substr(gleich + 1)).empty())
            return false;
        eines = true;
    }
    return eines;
}

// Die ersten zwei Zeichen im Sinne des Lesers; bei ASCII ohne Zerlegung der ganzen Zeile.
std::vector<std::string> ersteZwei(std::string_view t) {
    const auto ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (t.size() >= 2 && ascii(t[0]) && ascii(t[1]) && (t.size() == 2 || ascii(t[2])))
        return {std::string(1, t[0]), std::string(1, t[1])};
    auto alle = NECKern::Unicode::zeichen(t);
    if (alle.size() > 2) alle.resize(2);
    return alle;
}

} // namespace

std::string_view beschnitten(std::string_view s) {
    const auto anfang = s.find_first_not_of(" \t");
    if (anfang == std::string_view::npos) return {};
    return s.substr(anfang, s.find_last_not_of(" \t") - anfang + 1);
}

Art art(std::string_view zeile) {
    const auto t = beschnitten(zeile);
    if (t.empty()) return Art::leer;
    const auto zeichen = ersteZwei(t);
    if (zeichen.size() < 2) return Art::ignoriert;
    const auto kopf = NECKern::Unicode::gross(zeichen[0] + zeichen[1]);
    if (kopf == "CM" || kopf == "CE") return Art::kommentar;
    const auto rest = t.substr(zeichen[0].size() + zeichen[1].size());
    if (kopf == "SY") return symboleLesbar(rest) ? Art::symbol : Art::ignoriert;
    if (!NECKern::Unicode::istBuchstabe(zeichen[0]) || !NECKern::Unicode::istBuchstabe(zeichen[1]))
        return Art::ignoriert;
    return Art::karte;
}

} // namespace Deckzeile
