#pragma once

#include "Fenster/Diagramme/Diagramm.hpp"
#include "Fenster/Diagramme/Feldraster.hpp"
#include "Modell/FeldErgebnis.hpp"

#include "NECKern/Ergebnis.hpp"
#include "NECKern/Feldstaerke.hpp"

#include <optional>
#include <vector>

// Feldstärke auf der Ebene, von oben gesehen: n × n Zellen in den Farben der
// Klassen gegen die ICNIRP-Referenz, die Drähte darüber, Legende und Erklärung;
// ohne Referenz eine neutrale Skala von E_eff.
class FeldKarte : public Diagramm {
    Q_OBJECT

  public:
    explicit FeldKarte(QWidget* eltern = nullptr);

    void zeigen(std::optional<FeldErgebnis> feld, const std::vector<NECKern::Segment>& draehte);

    void malen(QPainter& p, const QRectF& rahmen) const override;

    // Text des Tooltips am Ort im Widget; leer ausserhalb der Karte.
    QString tipp(QPointF ort) const override;

    static QColor farbe(NECKern::Feldstaerke::Klasse k);

  private:
    struct Anordnung {
        QRectF karte;
        QRectF text; // Legende und Erklärung
    };
    Anordnung anordnen(const QRectF& rahmen) const;
    QRectF zellrechteck(const QRectF& karte, const Feldraster::Zelle& z) const;
    QPointF bildpunkt(const QRectF& karte, double x, double y) const;
    QColor zellfarbe(const Feldraster::Zelle& z) const;
    void karteMalen(QPainter& p, const QRectF& karte) const;
    void textMalen(QPainter& p, const QRectF& flaeche) const;

    std::optional<FeldErgebnis> feld_;
    Feldraster::Raster raster_;
    std::vector<std::pair<NECKern::Punkt3, NECKern::Punkt3>> draehte_;
};
