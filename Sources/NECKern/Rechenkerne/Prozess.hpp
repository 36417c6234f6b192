#pragma once

#include <filesystem>
#include <stop_token>
#include <string>
#include <vector>

// Startet Löserprogramme: jeder Lauf in einem eigenen Arbeitsordner, mit
// Argumentliste (keine Shell), Zeitlimit und der Fehlerausgabe als Text.
namespace NECKern::Prozess {

struct Ende {
    // Exit-Code; endete das Programm durch ein Signal, dessen Nummer.
    int status = 0;
    std::string fehlerausgabe; // stderr, als gültiges UTF-8
};

// Legt einen neuen, privaten Ordner „nec-XXXXXXXX“ im temporären Verzeichnis an.
// Wirft KernFehler.
std::filesystem::path arbeitsordner();

// Der Satz, mit dem ein angehaltener Lauf endet.
inline constexpr const char* abgebrochen = "Rechnung abgebrochen.";

// Startet `programm` (wörtlich, ohne PATH-Suche) mit `argumente` im Ordner `ordner`
// und wartet auf sein Ende. Nach `zeitlimit` Sekunden bekommt es SIGTERM, kurz
// darauf SIGKILL, falls es noch lebt. Ein Startfehler wirft sofort KernFehler;
// Exit-Codes ungleich 0, Abstürze und Zeitüberschreitung sind keine Fehler.
// Wird `stopp` ausgelöst, endet das Programm ebenso (SIGTERM, dann SIGKILL) und
// ausfuehren wirft KernFehler(abgebrochen); ist es schon ausgelöst, startet nichts.
// Blockiert den rufenden Thread; beliebig viele Threads dürfen gleichzeitig rufen.
Ende ausfuehren(const std::filesystem::path& programm, const std::vector<std::string>& argumente,
                const std::filesystem::path& ordner, double zeitlimit, std::stop_token stopp = {});

// Besitzt einen Arbeitsordner und entfernt ihn samt Inhalt, wenn er endet –
// auf jedem Weg, auch bei Ausnahmen. Fehler beim Entfernen werden übergangen.
class Arbeitsordner {
  public:
    Arbeitsordner() : pfad_(arbeitsordner()) {}
    ~Arbeitsordner();
    Arbeitsordner(const Arbeitsordner&) = delete;
    Arbeitsordner& operator=(const Arbeitsordner&) = delete;

    const std::filesystem::path& pfad() const { return pfad_; }

  private:
    std::filesystem::path pfad_;
};

} // namespace NECKern::Prozess
