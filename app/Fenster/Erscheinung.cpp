#include "Fenster/Erscheinung.hpp"

#include <QApplication>
#include <QFont>
#include <QLibraryInfo>
#include <QStyleFactory>
#include <QTranslator>

namespace Erscheinung {

void anwenden(QApplication& anwendung) {
    // Fusion sieht auf jeder Plattform gleich aus, auch offscreen und unter Xvfb.
    anwendung.setStyle(QStyleFactory::create("Fusion"));
    QFont schrift("DejaVu Sans");
    schrift.setPointSizeF(9.5);
    anwendung.setFont(schrift);
    deutsch(anwendung);
}

void deutsch(QCoreApplication& anwendung) {
    // Qts eigene Texte (Dateiwahl, Knöpfe, Befehlszeile) deutsch, unabhängig von LANG.
    auto* qtTexte = new QTranslator(&anwendung);
    if (qtTexte->load("qtbase_de", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(qtTexte);
}

} // namespace Erscheinung
