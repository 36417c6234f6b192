#pragma once

#include <string>
#include <system_error>

namespace NECKern {

// Der Grund, den das System für einen gescheiterten Datei- oder Prozesszugriff
// nennt, auf Deutsch: die häufigen Fehlernummern aus eigener Tabelle, jede andere
// mit ihrer Nummer, damit kein englischer Satz beim Benutzer ankommt.
std::string systemgrund(int fehlernummer);
std::string systemgrund(const std::error_code& fehler);

} // namespace NECKern
