#pragma once

#include "NECKern/Rechenkerne/Rechenkern.hpp"

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

// Die Kerne, die Fenster und Befehlszeile anbieten, und die Wahl eines Kerns
// nach seiner Kennung – an einer Stelle, damit beide dasselbe rechnen.
namespace NECKern::Kernliste {

// Ordner der Kernprogramme, je Kennung eine ausführbare Datei:
// $XDG_DATA_HOME/Wellenwerk/Kerne, sonst ~/.local/share/Wellenwerk/Kerne.
std::filesystem::path kernordner();

// Die mitgebrachte zirkon-Laufzeit: der Ordner „zirkon“ neben dem Programm oder
// in <Präfix>/share/wellenwerk, wenn darin python/bin/python3.12 ausführbar ist.
std::optional<std::filesystem::path> zirkonEingebettet();

// Immer fünf Kerne in fester Folge: nec2c, zirkon, zirkon5, zirkon-klinge, arcanum.
// Ob einer rechnen kann, sagt sein verfuegbar().
std::vector<KernZeiger> kerneFinden();
std::vector<KernZeiger> kerneFinden(const std::filesystem::path& ordner,
                                    const std::optional<std::filesystem::path>& eingebettet);

// Der erste verfügbare Kern mit dieser Kennung, sonst ein neuer nec2c-Kern.
KernZeiger waehlen(const std::vector<KernZeiger>& kerne, std::string_view kennung);

} // namespace NECKern::Kernliste
