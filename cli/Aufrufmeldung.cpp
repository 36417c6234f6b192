#include "Aufrufmeldung.hpp"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

namespace Befehle {

namespace {

using Teile = std::pair<std::string, std::string>;

// "vorn" + MITTE + "hinten"; passt der Text nicht, nichts.
std::optional<std::string> zwischen(std::string_view text, std::string_view vorn, std::string_view hinten) {
    if (!text.starts_with(vorn) || !text.ends_with(hinten) || text.size() < vorn.size() + hinten.size())
        return std::nullopt;
    return std::string(text.substr(vorn.size(), text.size() - vorn.size() - hinten.size()));
}

// LINKS + trenner + RECHTS, am ersten Trenner geteilt.
std::optional<Teile> teilen(std::string_view text, std::string_view trenner) {
    const auto pos = text.find(trenner);
    if (pos == std::string_view::npos) return std::nullopt;
    return Teile{std::string(text.substr(0, pos)), std::string(text.substr(pos + trenner.size()))};
}

std::string inAnfuehrung(const std::string& text) {
    return "„" + text + "“";
}

// Die Option unter diesem Namen, zuerst im gewählten Befehl.
const CLI::Option* option(const CLI::App& app, const std::string& name) {
    for (const auto* befehl : app.get_subcommands())
        if (const auto* o = befehl->get_option_no_throw(name)) return o;
    if (const auto* o = app.get_option_no_throw(name)) return o;
    for (const auto* befehl : app.get_subcommands({}))
        if (const auto* o = befehl->get_option_no_throw(name)) return o;
    return nullptr;
}

std::string schalter(const std::string& name) {
    return name + " ist ein Schalter und nimmt keinen Wert.";
}

std::string umwandlung(const CLI::App& app, std::string_view text) {
    if (auto t = teilen(text, ": too many inputs for a flag")) return schalter(t->first);
    if (auto t = teilen(text, ": Should be true/false or a number")) return schalter(t->first);
    if (auto rest = zwischen(text, "The value ", ""))
        if (auto t = teilen(*rest, " is not an allowed value for "))
            return inAnfuehrung(t->first) + " ist für " + t->second + " nicht erlaubt.";
    const auto rest = zwischen(text, "Could not convert: ", "");
    const auto t = rest ? teilen(*rest, " = ") : std::nullopt;
    if (!t) return "Ein Wert lässt sich nicht lesen.";
    const auto* o = option(app, t->first);
    if (o && o->get_expected_min() == 0) return schalter(t->first);
    const std::string typ = o ? o->get_type_name() : "";
    const char* erwartet = typ == "GANZZAHL" ? "eine ganze Zahl"
                           : typ == "ZAHL"   ? "eine Zahl"
                                             : "einen gültigen Wert";
    return t->first + " erwartet " + erwartet + ", nicht " + inAnfuehrung(t->second) + ".";
}

std::string anzahl(std::string_view text) {
    if (auto t = teilen(text, ": 1 required ")) return t->first + " braucht einen Wert.";
    if (auto t = teilen(text, ": At Most 1 required")) return t->first + " darf nur einmal stehen.";
    if (auto t = teilen(text, " was given a disallowed flag override")) return schalter(t->first);
    for (std::string_view name : {": At least ", ": At Most ", ": "})
        if (auto t = teilen(text, name)) return t->first + " hat die falsche Zahl von Werten.";
    if (auto rest = zwischen(text, "Expected ", ""))
        if (auto t = teilen(*rest, " arguments to "))
            if (auto n = teilen(t->second, ", got ")) return n->first + " hat die falsche Zahl von Werten.";
    return "Eine Angabe hat die falsche Zahl von Werten.";
}

// CLI11 schreibt die übrigen Argumente rückwärts; hier stehen sie wieder in Aufrufreihenfolge.
std::vector<std::string> uebrige(std::string_view liste) {
    std::vector<std::string> worte;
    while (!liste.empty()) {
        const auto ende = liste.find(' ');
        if (ende != 0) worte.emplace_back(liste.substr(0, ende));
        liste.remove_prefix(ende == std::string_view::npos ? liste.size() : ende + 1);
    }
    std::reverse(worte.begin(), worte.end());
    return worte;
}

std::string unerwartet(std::string_view text) {
    auto t = teilen(text, " not expected: ");
    if (!t) return "Der Aufruf enthält Unerwartetes.";
    const auto worte = uebrige(t->second);
    if (worte.size() == 1 && worte[0].starts_with('-'))
        return "Unbekannte Option " + inAnfuehrung(worte[0]) + ".";
    if (worte.size() == 1) return "Unerwartetes Argument " + inAnfuehrung(worte[0]) + ".";
    std::string liste;
    for (const auto& w : worte)
        liste += (liste.empty() ? "" : ", ") + inAnfuehrung(w);
    return "Unerwartete Argumente: " + liste + ".";
}

std::string fehlt(const CLI::App& app, std::string_view text) {
    if (text.starts_with("A subcommand")) {
        const auto rest = app.remaining();
        if (rest.empty()) return "Es fehlt ein Befehl.";
        if (rest.front().starts_with('-')) return "Unbekannte Option " + inAnfuehrung(rest.front()) + ".";
        return "Unbekannter Befehl " + inAnfuehrung(rest.front()) + ".";
    }
    if (auto name = zwischen(text, "", " is required")) return "Die Angabe " + *name + " fehlt.";
    return "Es fehlt eine Angabe.";
}

} // namespace

std::string aufrufMeldung(const CLI::App& app, const CLI::ParseError& fehler) {
    const std::string_view text = fehler.what();
    if (dynamic_cast<const CLI::ExtrasError*>(&fehler)) return unerwartet(text);
    if (dynamic_cast<const CLI::ConversionError*>(&fehler)) return umwandlung(app, text);
    if (dynamic_cast<const CLI::RequiredError*>(&fehler)) return fehlt(app, text);
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&fehler)) return anzahl(text);
    if (dynamic_cast<const CLI::ExcludesError*>(&fehler))
        if (auto t = teilen(text, " excludes "))
            return t->first + " und " + t->second + " schliessen einander aus.";
    if (dynamic_cast<const CLI::RequiresError*>(&fehler))
        if (auto t = teilen(text, " requires ")) return t->first + " braucht auch " + t->second + ".";
    if (dynamic_cast<const CLI::ValidationError*>(&fehler))
        if (auto t = teilen(text, ": ")) return "Ungültiger Wert für " + t->first + ".";
    return "Die Befehlszeile lässt sich nicht lesen.";
}

void typnamenDeutsch(CLI::App& app) {
    for (auto* befehl : app.get_subcommands({}))
        for (auto* o : befehl->get_options()) {
            const auto typ = o->get_type_name();
            if (typ == "FLOAT") o->type_name("ZAHL");
            if (typ == "INT") o->type_name("GANZZAHL");
        }
}

} // namespace Befehle
