#pragma once

#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

// Installiert den Löser zirkon aus dem Python-Paketindex in eine virtuelle
// Umgebung neben dem Kernordner und legt drei Startskripte in den Kernordner.
namespace ZirkonInstallation {

inline constexpr const char* keinPython = "Kein Python 3 gefunden (brew install python)";
inline constexpr const char* laeuft = "zirkon wird installiert …";
inline constexpr const char* fertig = "zirkon installiert (B-Spline im NEC-2- und NEC-5-Format, Klinge)";
inline constexpr const char* gescheitert = "Installation fehlgeschlagen: ";

// Wo Python gesucht wird, in dieser Reihenfolge.
std::vector<std::filesystem::path> pythonKandidaten();
std::optional<std::filesystem::path> pythonFinden(const std::vector<std::filesystem::path>& kandidaten);

// Das Skript für zsh: basis ist der Ordner „Wellenwerk“ im Datenordner des Benutzers.
std::string skript(const std::filesystem::path& basis, const std::filesystem::path& python);

// Führt das Skript mit `shell -c` aus und gibt den Satz für die Anzeige zurück:
// fertig, oder gescheitert mit den letzten 300 Bytes der Fehlerausgabe bzw. dem
// Grund, warum die Shell nicht startet. Blockiert.
std::string ausfuehren(const std::filesystem::path& shell, const std::string& skript, std::stop_token stopp);

} // namespace ZirkonInstallation
