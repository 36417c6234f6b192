// wellenwerk-cli pruefen: Vorprüfung, dann mit nec2c rechnen und die Befunde der
// letzten Frequenz ausgeben, jede Zeile mit ihrer Stufe.
#include "Abbruch.hpp"
#include "Befehle.hpp"
#include "KernWahl.hpp"
#include "ModellWahl.hpp"

#include "NECKern/Modellpruefung.hpp"

#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace Befehle {

namespace {

using NECKern::Befund;
using NECKern::Stufe;
namespace MP = NECKern::Modellpruefung;

struct Optionen {
    ModellWahl wahl;
    bool json = false;
};

const char* stufenwort(Stufe s) {
    switch (s) {
    case Stufe::fehler:
        return "Fehler";
    case Stufe::warnung:
        return "Warnung";
    case Stufe::hinweis:
        return "Hinweis";
    }
    return "";
}

nlohmann::ordered_json bericht(const NECKern::Modell& m, const std::optional<std::string>& vorpruefung,
                               std::optional<double> mhz, const std::vector<Befund>& befunde) {
    nlohmann::ordered_json j;
    j["modell"] = m.name;
    j["vorpruefung"] = vorpruefung ? nlohmann::ordered_json(*vorpruefung) : nlohmann::ordered_json(nullptr);
    j["mhz"] = mhz ? nlohmann::ordered_json(*mhz) : nlohmann::ordered_json(nullptr);
    j["befunde"] = befunde;
    return j;
}

int pruefen(const Optionen& o) {
    const auto modell = o.wahl.laden();
    // Ein Modell, das die Vorprüfung aufhält, ist gescheitert: Satz auf stderr, Exit-Code 1.
    if (const auto satz = MP::vorpruefen(modell)) {
        if (o.json) std::cout << bericht(modell, satz, std::nullopt, {}).dump(2) << '\n';
        throw std::runtime_error(*satz);
    }
    const auto ergebnis = kernWaehlen("nec2c")->rechnen(modell.deck(), stoppzeichen());
    if (auto satz = MP::laufAbgelehnt(ergebnis)) throw std::runtime_error(*satz);

    const auto& f = ergebnis.frequenzen.back();
    std::vector<Befund> befunde;
    if (auto lange = MP::dauerBefund(modell)) befunde.push_back(*lange);
    for (auto& b : MP::pruefen(f.segmente, f.mhz))
        befunde.push_back(std::move(b));
    for (auto& b : MP::bodenPruefen(f.segmente, f.mitBoden))
        befunde.push_back(std::move(b));

    if (o.json) {
        std::cout << bericht(modell, std::nullopt, f.mhz, befunde).dump(2) << '\n';
    } else if (befunde.empty()) {
        std::cout << "Segmentierung und Drähte nach den NEC-Regeln in Ordnung\n";
    } else {
        for (const auto& b : befunde)
            std::cout << stufenwort(b.stufe) << ": " << b.text << '\n';
    }
    return erfolg;
}

} // namespace

void pruefenAnmelden(CLI::App& app) {
    auto* befehl = app.add_subcommand("pruefen", "Das Modell nach den NEC-Regeln prüfen (rechnet mit nec2c)");
    auto o = std::make_shared<Optionen>();
    o->wahl.anmelden(befehl);
    befehl->add_flag("--json", o->json, "Vorprüfung und Befunde als JSON-Objekt");
    befehl->callback([o] { ausfuehren([&] { return pruefen(*o); }); });
}

} // namespace Befehle
