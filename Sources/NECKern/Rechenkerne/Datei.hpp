#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Ein- und Ausgabedateien der Löserläufe im Arbeitsordner.
namespace NECKern::Datei {

// Schreibt über eine Zwischendatei und Umbenennen, so dass nie eine halbe Datei
// liegt. Wirft KernFehler mit dem Grund des Systems.
void schreibenAtomar(const std::filesystem::path& pfad, std::string_view inhalt);

// Der Inhalt als ASCII-Text; fehlt die Datei, ist sie unlesbar oder enthält sie
// Bytes ausserhalb von ASCII, der leere Text.
std::string lesenAscii(const std::filesystem::path& pfad);

// Eine gewöhnliche Datei, die der Benutzer ausführen darf.
bool ausfuehrbar(const std::filesystem::path& pfad);

// Ohne Leerraum und Zeilenenden an beiden Enden.
std::string_view trimmen(std::string_view text);

// Die letzte Zeile, die nach dem Trimmen nicht leer ist (getrimmt), sonst "".
std::string_view letzteZeile(std::string_view text);

} // namespace NECKern::Datei
