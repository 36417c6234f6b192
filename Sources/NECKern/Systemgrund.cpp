#include "NECKern/Systemgrund.hpp"

#include <cerrno>
#include <utility>

namespace NECKern {

namespace {

constexpr std::pair<int, const char*> gruende[] = {
    {EPERM, "Vorgang nicht erlaubt"},
    {ENOENT, "Datei oder Verzeichnis nicht gefunden"},
    {EIO, "Ein- oder Ausgabefehler"},
    {E2BIG, "Argumentliste zu lang"},
    {ENOEXEC, "kein ausführbares Programmformat"},
    {EAGAIN, "Mittel vorübergehend nicht verfügbar"},
    {ENOMEM, "nicht genug Speicher"},
    {EACCES, "keine Berechtigung"},
    {EEXIST, "Datei existiert bereits"},
    {ENOTDIR, "kein Verzeichnis"},
    {EISDIR, "ist ein Verzeichnis"},
    {EMFILE, "zu viele offene Dateien"},
    {ENFILE, "zu viele offene Dateien im System"},
    {ETXTBSY, "Programmdatei wird gerade beschrieben"},
    {EFBIG, "Datei zu gross"},
    {ENOSPC, "kein Platz mehr auf dem Datenträger"},
    {EROFS, "Dateisystem nur lesbar"},
    {ENAMETOOLONG, "Dateiname zu lang"},
    {ELOOP, "zu viele symbolische Verknüpfungen"},
    {EDQUOT, "Speicherkontingent überschritten"},
    {ENOTEMPTY, "Verzeichnis nicht leer"},
};

} // namespace

std::string systemgrund(int fehlernummer) {
    for (const auto& [nummer, text] : gruende)
        if (nummer == fehlernummer) return text;
    return "Systemfehler " + std::to_string(fehlernummer);
}

std::string systemgrund(const std::error_code& fehler) {
    if (fehler.category() == std::system_category() || fehler.category() == std::generic_category())
        return systemgrund(fehler.value());
    return "Fehler " + std::to_string(fehler.value());
}

} // namespace NECKern
