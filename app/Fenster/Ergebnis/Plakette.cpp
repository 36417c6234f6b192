#include "Fenster/Ergebnis/Plakette.hpp"

#include "Fenster/Ergebnis/Ergebnistexte.hpp"

Plakette::Plakette(QWidget* eltern) : QLabel(eltern) {
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
}

void Plakette::setzen(const QString& text, NECKern::Urteile::Farbe farbe) {
    setText(text);
    const auto name = Ergebnistexte::name(farbe);
    if (property("farbe").toString() == name) return;
    setProperty("farbe", name);
    setStyleSheet(QString("QLabel { background: %1; color: %2; border-radius: 4px; padding: 2px 8px; }")
                      .arg(Ergebnistexte::hintergrund(farbe).name(), Ergebnistexte::schrift(farbe).name()));
}
