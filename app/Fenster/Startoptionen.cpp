#include "Fenster/Startoptionen.hpp"

#include "Modell/AppModell.hpp"

#include "NECKern/Beispiele.hpp"

#include <QCommandLineParser>
#include <QTimer>

#include <iostream>
#include <memory>

namespace {

QString seitenliste() {
    QStringList titelliste;
    for (auto s : alleSeiten)
        titelliste << titel(s);
    return titelliste.join(", ");
}

std::optional<NECKern::Modell> beispielMit(const QString& text) {
    for (const auto& b : NECKern::Beispiele::alle())
        if (QString::fromStdString(b.name).contains(text, Qt::CaseInsensitive)) return b.modell();
    return std::nullopt;
}

Befehlszeile fehler(const QString& satz) {
    return {std::nullopt, satz + "\nHilfe: wellenwerk --help\n", 2};
}

} // namespace

Befehlszeile Befehlszeile::lesen(const QStringList& argumente) {
    QCommandLineParser p;
    p.setApplicationDescription(
        "Wellenwerk – Werkbank für Drahtantennen. Ohne Optionen öffnet sich das Fenster "
        "mit der eingebauten 3-Element-Yagi.");
    p.addOptions({
        {{"h", "help"}, "Diese Hilfe zeigen."},
        {"kern", "Den Rechenkern mit dieser Kennung wählen (nec2c, zirkon, zirkon5, zirkon-klinge, arcanum).",
         "kennung"},
        {"datei", "Diese Deckdatei öffnen und rechnen.", "pfad"},
        {"beispiel", "Das erste eingebaute Beispiel laden, dessen Name den Text enthält (ohne --datei).",
         "text"},
        {"selbsttest", "Den Selbsttest des gewählten Kerns starten."},
        {"feld", "Zwei Sekunden nach dem Start die Feldstärkekarte rechnen."},
        {"schnappschuss", "Sechs Sekunden nach dem Start das Fenster als PNG-Bild sichern und enden.",
         "pfad"},
        {"seite", "Diese Seite zeigen: " + seitenliste() + ".", "titel"},
        {"frequenzgang", "Nach dem ersten Ergebnis den Frequenzgang rechnen."},
    });
    p.addPositionalArgument("datei", "Eine Deckdatei (.nec), die geöffnet wird.", "[datei]");
    if (!p.parse(argumente)) return fehler(p.errorText());
    if (p.isSet("help")) return {std::nullopt, p.helpText(), 0};

    Startoptionen o;
    const auto frei = p.positionalArguments();
    if (frei.size() > 1) return fehler("Nur eine Datei kann geöffnet werden, nicht " + frei.join(" ") + ".");
    if (p.isSet("kern")) o.kern = p.value("kern").toStdString();
    if (p.isSet("datei"))
        o.datei = std::filesystem::path(p.value("datei").toStdString());
    else if (!frei.isEmpty())
        o.datei = std::filesystem::path(frei.front().toStdString());
    if (p.isSet("beispiel")) o.beispiel = p.value("beispiel");
    o.selbsttest = p.isSet("selbsttest");
    o.feld = p.isSet("feld");
    if (p.isSet("schnappschuss")) o.schnappschuss = p.value("schnappschuss");
    if (p.isSet("seite")) {
        o.seite = seiteMitTitel(p.value("seite"));
        if (!o.seite)
            return fehler("Die Seite „" + p.value("seite") + "“ gibt es nicht; möglich sind " +
                          seitenliste() + ".");
    }
    o.frequenzgang = p.isSet("frequenzgang");
    return {o, {}, 0};
}

void Startoptionen::anwenden(AppModell& modell, const std::function<void(Seite)>& seiteWaehlen) const {
    if (kern) modell.setKernKennung(*kern);
    bool geladen = false;
    if (datei) {
        geladen = modell.oeffnen(*datei);
        if (!geladen)
            std::cerr << "Die Datei „" << datei->string()
                      << "“ lässt sich nicht lesen; gerechnet wird das Startmodell.\n";
    } else if (beispiel) {
        if (auto m = beispielMit(*beispiel)) {
            modell.beispiel(*m);
            geladen = true;
        }
    }
    if (!geladen) modell.rechnen(false);
    if (selbsttest) modell.selbsttestStarten();
    if (feld) QTimer::singleShot(2000, &modell, [&modell] { modell.feldRechnen(); });
    if (seite) seiteWaehlen(*seite);
    if (frequenzgang) {
        auto verbindung = std::make_shared<QMetaObject::Connection>();
        *verbindung =
            QObject::connect(&modell, &AppModell::ergebnisGeaendert, &modell, [&modell, verbindung] {
                QObject::disconnect(*verbindung);
                modell.frequenzgangRechnen();
            });
    }
}
