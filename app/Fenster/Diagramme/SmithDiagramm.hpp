#pragma once

#include "Fenster/Diagramme/Diagramm.hpp"
#include "Fenster/Diagramme/Smith.hpp"

#include "NECKern/Analyse.hpp"

#include <optional>
#include <vector>

// Smith-Diagramm, normiert auf z0: Ortskurve des Frequenzgangs mit Marken an
// ihren Enden und bei der gezeigten Frequenz; Tooltip mit MHz, R ± jX und SWR.
class SmithDiagramm : public Diagramm {
    Q_OBJECT

  public:
    explicit SmithDiagramm(QWidget* eltern = nullptr);

    void zeigen(const std::vector<NECKern::Frequenzpunkt>& gang, double z0, std::optional<double> aktuellMhz,
                std::optional<NECKern::Komplex> aktuellZ);

    void malen(QPainter& p, const QRectF& rahmen) const override;

    // Text des Tooltips am Ort im Widget; leer abseits der Ortskurve.
    QString tipp(QPointF ort) const override;

    // Lage des Einheitskreises in `rahmen`: Mitte (z0) und Radius in Bildpunkten.
    struct Kreisflaeche {
        QPointF mitte;
        double radius = 0;
        QPointF bild(Smith::Punkt g) const { return {mitte.x() + radius * g.x, mitte.y() - radius * g.y}; }
    };
    Kreisflaeche flaeche(const QRectF& rahmen) const;

  private:
    struct Ortspunkt {
        Smith::Punkt g;
        double mhz = 0;
        NECKern::Komplex z;
        std::optional<double> swr;
    };
    void gitterMalen(QPainter& p, const Kreisflaeche& f) const;
    void ortskurveMalen(QPainter& p, const Kreisflaeche& f) const;
    void legendeMalen(QPainter& p, const QRectF& rahmen) const;

    double z0_ = 50;
    std::vector<Ortspunkt> kurve_;
    std::optional<double> aktuellMhz_;
    std::optional<Smith::Punkt> aktuell_;
};
