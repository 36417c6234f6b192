// gang: Frequenzgang über ein Band, als Tabelle, JSON, CSV oder Touchstone-Datei.
#include "Abbruch.hpp"
#include "Ausgabe.hpp"
#include "Befehle.hpp"
#include "KernWahl.hpp"
#include "ModellWahl.hpp"

#include "NECKern/Analyse.hpp"
#include "NECKern/Gangdatei.hpp"
#include "NECKern/Gangmarken.hpp"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <fmt/format.h>
#include <fmt/printf.h>
#include <fstream>
#include <iostream>
#include <memory>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace Befehle {

namespace {

struct Optionen {
    ModellWahl wahl;
    std::string kern = "nec2c";
    double von = 0;
    double bis = 0;
    int punkte = 0;
    std::optional<int> parallel;
    bool json = false;
    bool csv = false;
    std::string touchstone;
};

std::string tabelle(const std::vector<NECKern::Frequenzpunkt>& punkte, double z0) {
    std::string text = fmt::format("{:>10}  {:>24}  {:>8}  {:>13}  {:>9}\n", "MHz", "Impedanz",
                                   fmt::sprintf("SWR %g Ω", z0), "Gewinn", "V/R");
    for (const auto& p : punkte)
        text +=
            fmt::format("{:>10}  {:>24}  {:>8}  {:>13}  {:>9}\n", fmt::sprintf("%.4f", p.mhz),
                        Ausgabe::impedanz(p.impedanz), Ausgabe::swr(p.swr),
                        Ausgabe::wert(p.gewinn, "%.2f", " dBi"), Ausgabe::wert(p.vorRueck, "%.2f", " dB"));
    return text;
}

nlohmann::ordered_json json(const NECKern::Modell& m, const std::string& kern,
                            const std::vector<NECKern::Frequenzpunkt>& punkte) {
    nlohmann::ordered_json j;
    j["modell"] = m.name;
    j["kern"] = kern;
    j["z0"] = m.z0;
    j["punkte"] = punkte;
    j["baender"] = nlohmann::ordered_json::array();
    for (const auto& b : NECKern::Gangmarken::swrBaender(punkte))
        j["baender"].push_back({{"von", b.von},
                                {"bis", b.bis},
                                {"breiteKhz", b.breiteKhz()},
                                {"offenUnten", b.offenUnten},
                                {"offenOben", b.offenOben}});
    j["resonanzen"] = NECKern::Gangmarken::resonanzen(punkte);
    return j;
}

// Auf einem Terminal zeigt stderr, dass gerechnet wird; in Dateien und Pipes bleibt es still.
class Fortschritt {
  public:
    explicit Fortschritt(int punkte) {
        if (!::isatty(STDERR_FILENO)) return;
        faden_ = std::jthread([=](std::stop_token halt) {
            auto anfang = std::chrono::steady_clock::now();
            while (!halt.stop_requested()) {
                auto sekunden =
                    std::chrono::duration<double>(std::chrono::steady_clock::now() - anfang).count();
                std::cerr << fmt::sprintf("\rFrequenzgang: %d Punkte … %.1f s", punkte, sekunden)
                          << std::flush;
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
            }
            std::cerr << "\r\033[K" << std::flush;
        });
    }

  private:
    std::jthread faden_;
};

void pruefen(const Optionen& o) {
    if (!std::isfinite(o.von) || !std::isfinite(o.bis))
        throw Aufruffehler("--von und --bis müssen endliche Frequenzen in MHz sein.");
    if (o.punkte < 2) throw Aufruffehler("--punkte muss mindestens 2 sein (beide Bandgrenzen).");
    if (o.parallel && *o.parallel < 1) throw Aufruffehler("--parallel muss mindestens 1 sein.");
}

int gang(const Optionen& o) {
    pruefen(o);
    const auto kern = kernWaehlen(o.kern);
    const auto modell = o.wahl.laden();
    const int parallel =
        o.parallel.value_or(static_cast<int>(std::max(1u, std::thread::hardware_concurrency())));
    std::vector<NECKern::Frequenzpunkt> punkte;
    {
        Fortschritt anzeige(o.punkte);
        punkte = NECKern::Analyse::frequenzgang(modell, *kern, o.von, o.bis, o.punkte, true, parallel,
                                                stoppzeichen());
    }
    if (!o.touchstone.empty())
        Ausgabe::dateiSchreiben(o.touchstone, NECKern::Gangdatei::touchstone(modell, punkte));
    if (o.json)
        std::cout << json(modell, kern->kennung(), punkte).dump(2) << '\n';
    else if (o.csv)
        std::cout << NECKern::Gangdatei::csv(punkte);
    else
        std::cout << tabelle(punkte, modell.z0) << NECKern::Gangmarken::zusammenfassung(punkte) << '\n';
    if (punkte.empty()) {
        std::cerr << "Der Kern hat keine Frequenz geliefert.\n";
        return gescheitert;
    }
    return erfolg;
}

} // namespace

void gangAnmelden(CLI::App& app) {
    auto* befehl =
        app.add_subcommand("gang", "Frequenzgang: Impedanz, SWR, Gewinn und Vor-Rück über ein Band");
    auto o = std::make_shared<Optionen>();
    o->wahl.anmelden(befehl);
    befehl->add_option("--von", o->von, "Untere Bandgrenze in MHz")->required();
    befehl->add_option("--bis", o->bis, "Obere Bandgrenze in MHz")->required();
    befehl->add_option("--punkte", o->punkte, "Frequenzen einschliesslich beider Grenzen")->required();
    befehl->add_option("--parallel", o->parallel, "Kernläufe zugleich (Vorgabe: Zahl der Prozessorkerne)");
    befehl->add_option("--kern", o->kern, "Kennung des Rechenkerns (Vorgabe: nec2c)");
    auto* json = befehl->add_flag("--json", o->json, "Punkte als JSON");
    befehl->add_flag("--csv", o->csv, "Punkte als CSV")->excludes(json);
    befehl->add_option("--touchstone", o->touchstone, "S11 als Touchstone-Datei (.s1p) schreiben");
    befehl->callback([o] { ausfuehren([&] { return gang(*o); }); });
}

} // namespace Befehle
