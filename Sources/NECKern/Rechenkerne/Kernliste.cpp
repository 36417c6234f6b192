#include "NECKern/Rechenkerne/Kernliste.hpp"
#include "NECKern/Rechenkerne/Datei.hpp"

#include "NECKern/Rechenkerne/ExternerKern.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <array>
#include <cstdlib>
#include <pwd.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace NECKern::Kernliste {

namespace {

namespace fs = std::filesystem;

struct Eintrag {
    const char* kennung;
    const char* name;
    const char* beschreibung;
    const char* befehl; // Befehl der mitgebrachten Laufzeit; nullptr: nur aus dem Kernordner
};

constexpr std::array<Eintrag, 4> externe{{
    {"zirkon", "zirkon B-Spline (NEC-2-Format)",
     "Eigener Löser von zirkon, unabhängig von nec2c; liest und schreibt NEC-2, mit Boden. Rechnet je Lauf "
     "nur eine Feldkarte – die App teilt auf. MIT-Lizenz.",
     "zirkon-nec2c"},
    {"zirkon5", "zirkon B-Spline (Format wie NEC-5)",
     "Derselbe B-Spline-Löser, nur mit Ein-/Ausgabe im Format von NEC-5. Ist kein NEC-5 und rechnet nicht "
     "nach "
     "dessen Verfahren. Keine Segmentströme. MIT-Lizenz.",
     "zirkon-nec5"},
    {"zirkon-klinge", "zirkon Klinge (Näherung an das NEC-5-Verfahren)",
     "Näherung: bildet das im NEC-5-Handbuch beschriebene Verfahren nach. Ist nicht NEC-5 – das Original "
     "(LLNL) ist lizenzpflichtig und nicht enthalten. Keine Segmentströme. MIT-Lizenz.",
     "zirkon-nec5-klinge-2p"},
    {"arcanum", "Arcanum (CMoM, exakter Kern)", "Konforme Momentenmethode, GPL-3, separat installiert",
     nullptr},
}};

// Nur absolute Pfade zählen; ein relativer hinge vom aktuellen Ordner ab.
std::optional<fs::path> absoluteVariable(const char* name) {
    const char* wert = std::getenv(name);
    if (!wert || wert[0] != '/') return std::nullopt;
    return fs::path(wert);
}

fs::path heimordner() {
    if (auto home = absoluteVariable("HOME")) return *home;
    std::array<char, 4096> puffer{};
    passwd eintrag{};
    passwd* gefunden = nullptr;
    if (::getpwuid_r(::getuid(), &eintrag, puffer.data(), puffer.size(), &gefunden) == 0 && gefunden &&
        gefunden->pw_dir && gefunden->pw_dir[0] == '/')
        return gefunden->pw_dir;
    // Ohne Heimordner: ein Pfad, unter dem nur root Programme ablegen kann.
    return "/";
}

std::vector<fs::path> programmdatenOrdner() {
    std::error_code fehler;
    auto selbst = fs::read_symlink("/proc/self/exe", fehler);
    if (fehler) return {};
    auto ordner = selbst.parent_path();
    return {ordner, ordner.parent_path() / "share" / "wellenwerk"};
}

KernZeiger externerKern(const Eintrag& e, const fs::path& ordner,
                        const std::optional<fs::path>& eingebettet) {
    std::string kennung = e.kennung;
    bool istZirkon = kennung.starts_with("zirkon");
    bool tags = kennung == "zirkon5" || kennung == "zirkon-klinge";
    bool feldkarten = kennung == "zirkon";
    fs::path programm = ordner / kennung;
    std::vector<std::string> argumente{"{ein}", "{aus}"};
    if (eingebettet && e.befehl) {
        programm = *eingebettet / "python" / "bin" / "python3.12";
        argumente = {"-I", "-B", (*eingebettet / "zirkon_starten.py").string(), e.befehl, "{ein}", "{aus}"};
    }
    return std::make_shared<const ExternerKern>(kennung, e.name, e.beschreibung, programm, argumente,
                                                istZirkon, tags, feldkarten);
}

} // namespace

fs::path kernordner() {
    auto daten = absoluteVariable("XDG_DATA_HOME").value_or(heimordner() / ".local" / "share");
    return daten / "Wellenwerk" / "Kerne";
}

std::optional<fs::path> zirkonEingebettet() {
    for (const auto& ordner : programmdatenOrdner()) {
        auto zirkon = ordner / "zirkon";
        if (Datei::ausfuehrbar(zirkon / "python" / "bin" / "python3.12")) return zirkon;
    }
    return std::nullopt;
}

std::vector<KernZeiger> kerneFinden() {
    return kerneFinden(kernordner(), zirkonEingebettet());
}

std::vector<KernZeiger> kerneFinden(const fs::path& ordner, const std::optional<fs::path>& eingebettet) {
    std::vector<KernZeiger> kerne{std::make_shared<const Nec2cKern>()};
    for (const auto& e : externe)
        kerne.push_back(externerKern(e, ordner, eingebettet));
    return kerne;
}

KernZeiger waehlen(const std::vector<KernZeiger>& kerne, std::string_view kennung) {
    for (const auto& k : kerne)
        if (k && k->kennung() == kennung && k->verfuegbar()) return k;
    return std::make_shared<const Nec2cKern>();
}

} // namespace NECKern::Kernliste
