#include "Fenster/Schnappschuss.hpp"

#include <QApplication>
#include <QPixmap>
#include <QWidget>

namespace Schnappschuss {

int sichern(const QString& pfad) {
    for (auto* fenster : QApplication::topLevelWidgets()) {
        if (!fenster->isVisible() || fenster->width() <= 600) continue;
        const QPixmap bild = fenster->grab();
        return !bild.isNull() && bild.save(pfad, "PNG") ? 0 : 2;
    }
    return 2;
}

} // namespace Schnappschuss
