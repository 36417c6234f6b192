#include "Fenster/Erscheinung.hpp"

#include <QApplication>
#include <QFont>
#include <QStyleFactory>

namespace Erscheinung {

void anwenden(QApplication& anwendung) {
    // Fusion sieht auf jeder Plattform gleich aus, auch offscreen und unter Xvfb.
    anwendung.setStyle(QStyleFactory::create("Fusion"));
    QFont schrift("DejaVu Sans");
    schrift.setPointSizeF(9.5);
    anwendung.setFont(schrift);
}

} // namespace Erscheinung
