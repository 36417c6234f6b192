#pragma once

#include "NECKern/Urteile.hpp"

#include <QLabel>

// Ein Urteil als farbiges Schild: Text auf grünem, gelbem oder orangem Grund.
// Die Farbe steht zusätzlich als Eigenschaft "farbe" ("gruen", "gelb", "orange").
class Plakette : public QLabel {
    Q_OBJECT

  public:
    explicit Plakette(QWidget* eltern = nullptr);

    void setzen(const QString& text, NECKern::Urteile::Farbe farbe);
};
