#pragma once

#include "Fenster/Seite.hpp"

#include <QString>
#include <QStringList>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

class AppModell;

// Die Optionen beim Start des Fensters, für unbeaufsichtigte Läufe und Bilder.
struct Startoptionen {
    std::optional<std::string> kern;
    std::optional<std::filesystem::path> datei; // --datei oder eine Datei ohne Option
    std::optional<QString> beispiel;
    bool selbsttest = false;
    bool feld = false;
    std::optional<QString> schnappschuss;
    std::optional<Seite> seite;
    bool frequenzgang = false;

    // Wendet die Optionen in ihrer Reihenfolge an: Kern, Datei oder Beispiel (sonst
    // das Startmodell rechnen), Selbsttest, Feldstärke nach 2 s, Seite, Frequenzgang
    // nach dem ersten Ergebnis. Der Schnappschuss ist Sache des Programms.
    void anwenden(AppModell& modell, const std::function<void(Seite)>& seiteWaehlen) const;
};

// Die gelesene Befehlszeile: Optionen, oder Hilfe bzw. Fehler zum Ausgeben mit Exit-Code.
struct Befehlszeile {
    std::optional<Startoptionen> optionen;
    QString ausgabe;
    int status = 0;

    static Befehlszeile lesen(const QStringList& argumente);
};
