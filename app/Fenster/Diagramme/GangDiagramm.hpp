#pragma once

#include "Fenster/Diagramme/Diagramm.hpp"
#include "NECKern/Gangmarken.hpp"

#include "NECKern/Analyse.hpp"

#include <functional>
#include <optional>
#include <vector>

// SWR über der Frequenz (logarithmisch 1…10, Leitlinien bei 1,5 und 2) mit R und X
// auf der rechten Achse, darunter Gewinn und Vor-Rück, wenn die Punkte sie haben;
// der Bereich SWR < 2 mit seiner Breite und die Resonanz (X = 0) sind markiert.
class GangDiagramm : public Diagramm {
    Q_OBJECT

  public:
    explicit GangDiagramm(QWidget* eltern = nullptr);

    void zeigen(const std::vector<NECKern::Frequenzpunkt>& gang, double z0);

    void malen(QPainter& p, const QRectF& rahmen) const override;

    const std::vector<NECKern::Gangmarken::Band>& baender() const { return baender_; }
    const std::vector<double>& resonanzen() const { return resonanzen_; }

  private:
    struct Feld; // Zeichenfläche mit Abbildung von Frequenz und Wert auf Bildpunkte
    using Wert = std::function<std::optional<double>(const NECKern::Frequenzpunkt&)>;

    std::string zusammenfassung() const;
    // Titel, Legende und Zusammenfassung; gibt die Höhe des Kopfs zurück.
    double kopfMalen(QPainter& p, const QRectF& rahmen) const;
    void swrFeldMalen(QPainter& p, const Feld& f, bool frequenzenBeschriften) const;
    void gewinnFeldMalen(QPainter& p, const Feld& f) const;
    void frequenzachseMalen(QPainter& p, const Feld& f, bool beschriften) const;
    void linieMalen(QPainter& p, const Feld& f, const Wert& wert, const std::function<double(double)>& y,
                    const QPen& stift) const;

    std::vector<NECKern::Frequenzpunkt> gang_;
    double z0_ = 50;
    std::vector<NECKern::Gangmarken::Band> baender_;
    std::vector<double> resonanzen_;
    bool mitGewinn_ = false;
    bool mitVorRueck_ = false;
};
