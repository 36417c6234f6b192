#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Textwerkzeuge für UTF-8: Reparatur, Zeichen im Sinne des Lesers
// (Graphem-Cluster), Gross- und Kleinschreibung, Buchstabentest.
namespace NECKern::Unicode {

// Gültiges UTF-8; jede ungültige Folge wird durch U+FFFD ersetzt.
std::string reparieren(std::string_view text);
bool istGueltig(std::string_view text);

// Dekodieren und Kodieren; die Eingabe muss gültiges UTF-8 sein.
std::u32string zuUtf32(std::string_view text);
std::string zuUtf8(std::u32string_view text);
void anhaengen(std::string& ziel, char32_t zeichen);

// Die Zeichen (Graphem-Cluster) eines Texts, jedes als eigener UTF-8-Text.
std::vector<std::string> zeichen(std::string_view text);
// Anzahl der Zeichen (Graphem-Cluster).
std::size_t laenge(std::string_view text);

std::string gross(std::string_view text);
std::string klein(std::string_view text);

// Buchstabe im Sinne von Unicode (allgemeine Kategorie L) für das erste Codezeichen eines Zeichens.
bool istBuchstabe(std::string_view zeichen);
bool istZiffer(std::string_view zeichen);      // Dezimalziffer (Kategorie Nd)
bool istZahlzeichen(std::string_view zeichen); // irgendein Zahlzeichen (Kategorie N)

} // namespace NECKern::Unicode
