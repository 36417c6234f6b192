#pragma once

#include "Fenster/Diagramme/Diagramm.hpp"
#include "Fenster/Diagramme/Polar.hpp"

#include "NECKern/Ergebnis.hpp"

#include <optional>
#include <string>

// Elevations- oder Azimutschnitt des Richtdiagramms durch die Richtung grössten
// Gewinns; der vorige Schnitt bleibt blass dahinter stehen.
class PolarDiagramm : public Diagramm {
    Q_OBJECT

  public:
    using Schnitt = Polar::Schnitt;

    explicit PolarDiagramm(Schnitt art, QWidget* eltern = nullptr);

    void zeigen(std::optional<NECKern::FrequenzErgebnis> aktuell);

    // Abstand des innersten Rings unter dem Maximum, dB.
    double boden() const { return boden_; }
    void setBoden(double db);

    void malen(QPainter& p, const QRectF& rahmen) const override;

  protected:
    void menueErgaenzen(QMenu& menue) override;

  private:
    struct Kreis {
        QPointF mitte;
        double radius = 0;
        bool halb = false; // nur der obere Halbkreis (Elevation über Boden)
    };
    // Elevationsschnitt nur über dem Horizont (mit Boden): ein Halbkreis genügt.
    bool nurOben() const;
    // Kreis und Wertblock: der Block in einer Ecke oder in Zeilen unter dem Kreis,
    // je nachdem, wo der Kreis grösser wird.
    struct Anordnung {
        Kreis kreis;
        QRectF block;
    };
    Anordnung anordnen(const QRectF& flaeche, QSizeF block) const;
    Kreis kreis(const QRectF& flaeche, const QRectF& block) const;
    QPointF ort(const Kreis& k, double winkel, double anteil) const;
    void gitterMalen(QPainter& p, const Kreis& k) const;
    void spurMalen(QPainter& p, const Kreis& k, const Polar::Schnittdaten& s, bool alt) const;
    std::vector<std::string> werte() const;

    Schnitt art_;
    double boden_ = 40;
    std::optional<Polar::Schnittdaten> schnitt_;
    std::optional<Polar::Schnittdaten> vorher_;
    std::string meldung_ = "Noch kein Ergebnis.";
    double maximum_ = 0;
    std::optional<double> vorRueck_;
    std::optional<double> oeffnung_;
};
