#pragma once

#include "Fenster/Ansicht3D/Vek3.hpp"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <span>

namespace Raumbild {

// Parallelprojektion: ein Meter ist überall gleich lang, darum stimmt der Massstab
// im ganzen Bild. Bildkoordinaten wie bei Qt: x nach rechts, y nach unten.
struct Projektion {
    Vek3 ziel;           // liegt in der Bildmitte
    Vek3 rechts, oben;   // Bildachsen im Raum
    Vek3 zumBetrachter;  // Blickrichtung umgekehrt
    double massstab = 1; // Bildpunkte je Meter
    QPointF mitte;

    QPointF bild(const Vek3& p) const;
    // Grösser heisst näher am Betrachter.
    double tiefe(const Vek3& p) const;
    // Der Raumpunkt unter einem Bildpunkt in der Ebene durch das Ziel.
    Vek3 raum(const QPointF& bildpunkt) const;
};

enum class Blick { oben, vorne, seite };

// Kreist um ein Ziel. Azimut und Elevation in Grad; Elevation 90 blickt senkrecht
// von oben.
class Kamera {
  public:
    static constexpr double startAzimut = 35;
    static constexpr double startElevation = 25;
    static constexpr double gradJePunkt = 0.4;

    double azimut() const { return azimut_; }
    double elevation() const { return elevation_; }
    const Vek3& ziel() const { return ziel_; }
    double massstab() const { return massstab_; }
    const QSizeF& groesse() const { return groesse_; }
    // Solange eingepasst, folgt der Ausschnitt der Fenstergrösse.
    bool eingepasst() const { return eingepasst_; }

    void setGroesse(const QSizeF& groesse) { groesse_ = groesse; }
    void drehen(const QPointF& verschiebung);
    void schieben(const QPointF& verschiebung);
    // Der Raumpunkt unter dem Zeiger bleibt, wo er ist.
    void zoomen(const QPointF& zeiger, double faktor);
    void blick(Blick b);
    void einpassen(std::span<const Vek3> punkte);

    // Für einen Rahmen anderer Grösse (Bilddatei) wächst der Massstab mit.
    Projektion projektion(const QRectF& rahmen) const;
    Projektion projektion() const { return projektion(QRectF(QPointF(0, 0), groesse_)); }

    bool operator==(const Kamera&) const = default;

  private:
    double azimut_ = startAzimut;
    double elevation_ = startElevation;
    Vek3 ziel_;
    double massstab_ = 100;
    QSizeF groesse_{640, 480};
    bool eingepasst_ = true;
};

} // namespace Raumbild
