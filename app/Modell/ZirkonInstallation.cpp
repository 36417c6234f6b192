#include "Modell/ZirkonInstallation.hpp"

#include "NECKern/Rechenkerne/Datei.hpp"
#include "NECKern/Rechenkerne/Prozess.hpp"

#include <exception>

namespace ZirkonInstallation {

namespace {

// pip braucht über eine langsame Leitung Minuten; länger wartet niemand.
constexpr double zeitlimit = 1800.0;
constexpr std::size_t behalteneBytes = 300;

} // namespace

std::vector<std::filesystem::path> pythonKandidaten() {
    return {"/opt/homebrew/bin/python3", "/usr/local/bin/python3", "/usr/bin/python3"};
}

std::optional<std::filesystem::path> pythonFinden(const std::vector<std::filesystem::path>& kandidaten) {
    for (const auto& p : kandidaten)
        if (NECKern::Datei::ausfuehrbar(p)) return p;
    return std::nullopt;
}

std::string skript(const std::filesystem::path& basis, const std::filesystem::path& python) {
    const std::string b = basis.string();
    const std::string p = python.string();
    const std::string kerne = b + "/Kerne";
    auto starter = [&](const std::string& befehl, const std::string& aufruf, const std::string& name) {
        return "printf '#!/bin/zsh\\nexec \"${0:A:h}/../zirkon-venv/bin/" + befehl + "\" " + aufruf +
               "\\n' > \"" + kerne + "/" + name + "\"\n";
    };
    std::string s = "set -e\n";
    s += "mkdir -p \"" + kerne + "\"\n";
    s += "\"" + p + "\" -m venv \"" + b + "/zirkon-venv\"\n";
    s += "\"" + b + "/zirkon-venv/bin/pip\" install -q zirkon\n";
    s += starter("zirkon-nec2c", "< \"$1\" > \"$2\"", "zirkon");
    s += starter("zirkon-nec5", "\"$1\" \"$2\"", "zirkon5");
    s += starter("zirkon-nec5-klinge-2p", "\"$1\" \"$2\"", "zirkon-klinge");
    s += "chmod +x \"" + kerne + "/zirkon\" \"" + kerne + "/zirkon5\" \"" + kerne + "/zirkon-klinge\"\n";
    return s;
}

std::string ausfuehren(const std::filesystem::path& shell, const std::string& skript, std::stop_token stopp) {
    try {
        NECKern::Prozess::Arbeitsordner ordner;
        auto ende = NECKern::Prozess::ausfuehren(shell, {"-c", skript}, ordner.pfad(), zeitlimit, stopp);
        if (ende.status == 0) return fertig;
        std::string rest = ende.fehlerausgabe;
        if (rest.size() > behalteneBytes) rest.erase(0, rest.size() - behalteneBytes);
        // Der Schnitt kann ein Zeichen teilen: dessen Rest fällt weg.
        std::size_t anfang = 0;
        while (anfang < rest.size() && (static_cast<unsigned char>(rest[anfang]) & 0xC0) == 0x80)
            ++anfang;
        return gescheitert + rest.substr(anfang);
    } catch (const std::exception& e) {
        return gescheitert + std::string(e.what());
    }
}

} // namespace ZirkonInstallation
