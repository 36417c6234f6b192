#include "Befehle.hpp"

#include "NECKern/Rechenkerne/ExternerKern.hpp"
#include "NECKern/Rechenkerne/Kernliste.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace Befehle {

namespace {

struct Angaben {
    std::string programm = "–";
    std::vector<std::string> schalter;
};

// Programm und Schalter eines Kerns; nur externe Kerne haben Schalter.
Angaben angabenVon(const NECKern::Rechenkern& kern) {
    Angaben a;
    if (const auto* n = dynamic_cast<const NECKern::Nec2cKern*>(&kern)) {
        if (n->programm()) a.programm = n->programm()->string();
        return a;
    }
    if (const auto* e = dynamic_cast<const NECKern::ExternerKern*>(&kern)) {
        a.programm = e->programm().string();
        if (e->helixAufloesen()) a.schalter.emplace_back("helixAufloesen");
        if (e->eindeutigeTags()) a.schalter.emplace_back("eindeutigeTags");
        if (e->feldkartenEinzeln()) a.schalter.emplace_back("feldkartenEinzeln");
    }
    return a;
}

int kerneAusgeben(bool json) {
    auto liste = nlohmann::ordered_json::array();
    for (const auto& kern : NECKern::Kernliste::kerneFinden()) {
        auto a = angabenVon(*kern);
        if (json) {
            liste.push_back({{"kennung", kern->kennung()},
                             {"name", kern->name()},
                             {"beschreibung", kern->beschreibung()},
                             {"verfuegbar", kern->verfuegbar()},
                             {"programm", a.programm},
                             {"schalter", a.schalter}});
            continue;
        }
        std::cout << kern->kennung() << " – " << kern->name()
                  << (kern->verfuegbar() ? "" : " (nicht verfügbar)") << "\n  " << kern->beschreibung()
                  << "\n  Programm: " << a.programm << '\n';
        if (!a.schalter.empty()) {
            std::cout << "  Schalter:";
            for (const auto& s : a.schalter)
                std::cout << ' ' << s;
            std::cout << '\n';
        }
    }
    if (json)
        std::cout << liste.dump(2) << '\n';
    else
        std::cout << "Kernordner: " << NECKern::Kernliste::kernordner().string() << '\n';
    return erfolg;
}

} // namespace

void kerneAnmelden(CLI::App& app) {
    auto* befehl = app.add_subcommand("kerne", "Die Rechenkerne mit Verfügbarkeit, Programm und Schaltern");
    auto json = std::make_shared<bool>(false);
    befehl->add_flag("--json", *json, "Als JSON-Liste");
    befehl->callback([json] { ausfuehren([&] { return kerneAusgeben(*json); }); });
}

} // namespace Befehle
