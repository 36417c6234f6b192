// wellenwerk: das Fenster.
#include "Fenster/Erscheinung.hpp"
#include "Fenster/Hauptfenster.hpp"
#include "Fenster/Schnappschuss.hpp"
#include "Fenster/Startoptionen.hpp"
#include "Modell/AppModell.hpp"

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <fstream>
#include <string>

namespace {

// Mit WELLENWERK_MESSUNG endet das Programm, sobald das erste Ergebnis gezeichnet
// ist, und meldet seinen grössten Speicherbedarf (für bench/fenster-start.sh).
void messungEinrichten(AppModell& modell, Hauptfenster& fenster) {
    if (qEnvironmentVariableIsEmpty("WELLENWERK_MESSUNG")) return;
    QObject::connect(&modell, &AppModell::ergebnisGeaendert, &fenster, [&fenster] {
        fenster.repaint();
        std::ifstream status("/proc/self/status");
        for (std::string zeile; std::getline(status, zeile);)
            if (zeile.starts_with("VmHWM:")) std::fprintf(stderr, "%s\n", zeile.c_str());
        QApplication::exit(0);
    });
}

// Ohne Bildschirm bricht Qt mit einer englischen Meldung ab; vorher sagen wir es deutsch.
bool bildschirmDa() {
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// Hilfe und falsche Aufrufe brauchen keinen Bildschirm: gelesen wird vor dem Fenster.
Befehlszeile befehlszeileLesen(int argc, char** argv) {
    QCoreApplication vorab(argc, argv);
    Erscheinung::deutsch(vorab);
    return Befehlszeile::lesen(QCoreApplication::arguments());
}

} // namespace

int main(int argc, char** argv) {
    const auto lesung = befehlszeileLesen(argc, argv);
    if (!lesung.optionen) {
        std::fputs(lesung.ausgabe.toLocal8Bit().constData(), lesung.status == 0 ? stdout : stderr);
        return lesung.status;
    }
    if (!bildschirmDa()) {
        std::fputs(
            "Kein Bildschirm gefunden: DISPLAY und WAYLAND_DISPLAY sind leer. Ohne Bildschirm läuft das "
            "Fenster mit QT_QPA_PLATFORM=offscreen oder unter xvfb-run.\n",
            stderr);
        return 1;
    }
    const auto& optionen = *lesung.optionen;

    QApplication anwendung(argc, argv); // setzt auch das C-Gebietsschema aus der Umgebung
    QApplication::setApplicationName("Wellenwerk");
    QApplication::setDesktopFileName("de.wellenwerk.Wellenwerk");
    Erscheinung::anwenden(anwendung);

    AppModell modell;
    Hauptfenster fenster(modell);
    messungEinrichten(modell, fenster);
    if (optionen.schnappschuss)
        QTimer::singleShot(6000, &anwendung, [pfad = *optionen.schnappschuss] {
            QApplication::exit(Schnappschuss::sichern(pfad));
        });
    fenster.show();
    QTimer::singleShot(0, &fenster,
                       [&] { optionen.anwenden(modell, [&fenster](Seite s) { fenster.seiteWaehlen(s); }); });
    return QApplication::exec();
}
