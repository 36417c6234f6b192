#pragma once

#include "Fenster/Ansicht3D/Kamera.hpp"
#include "Fenster/Ansicht3D/Szene.hpp"
#include "NECKern/Ergebnis.hpp"
#include "NECKern/Modell.hpp"

#include <QElapsedTimer>
#include <QWidget>
#include <cstdint>
#include <optional>

class QTimer;

// Drähte, Ströme und Diagrammkörper einer Frequenz, mit QPainter gezeichnet: Ziehen
// dreht, Umschalt+Ziehen oder die mittlere Taste schiebt, das Rad zoomt um den Zeiger,
// Doppelklick passt ein; Tasten 1/2/3 für Drauf-, Vorder- und Seitenansicht, 0 passt ein.
class Ansicht3D : public QWidget {
    Q_OBJECT
  public:
    // Startwerte der drei Schalter im Fenster: Ströme sofort sichtbar, weil sie einen
    // falschen Speisepunkt verraten; der Körper verdeckt die Drähte, die Animation
    // kostet dauernd Rechenzeit: beide erst auf Wunsch.
    static constexpr bool startDiagramm3D = false;
    static constexpr bool startStrom = true;
    static constexpr bool startAnimation = false;

    explicit Ansicht3D(QWidget* eltern = nullptr);

    // Die gezeigte Frequenz (keine vor dem ersten Ergebnis) und das Modell, aus dem
    // sie gerechnet wurde (für die Lasten). Die Kamera bleibt, ausser die Antenne ist
    // eine ganz andere.
    void zeigen(std::optional<NECKern::FrequenzErgebnis> aktuell, const NECKern::Modell& modell);
    void setDiagramm3D(bool an);
    void setStrom(bool an);
    void setAnimation(bool an);
    void hervorheben(std::optional<std::int64_t> tag);
    // Legende und Farben der Ströme in dB unter dem Maximum statt in mA/V.
    void setStromInDb(bool an);
    bool stromInDb() const { return stromInDb_; }

    // Eine Zeichenfunktion für Bildschirm, PNG, SVG und Zwischenablage.
    void malen(QPainter& maler, const QRectF& rahmen) const;

    void einpassen();
    void blick(Raumbild::Blick b);
    const Raumbild::Kamera& kamera() const { return kamera_; }
    // Die Projektion, mit der malen() in diesen Rahmen zeichnet.
    Raumbild::Projektion projektion(const QRectF& rahmen) const;
    bool animationLaeuft() const;

    QSize sizeHint() const override { return {640, 400}; }
    QSize minimumSizeHint() const override { return {240, 160}; }

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;
    void showEvent(QShowEvent* ereignis) override;
    void hideEvent(QHideEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void mouseMoveEvent(QMouseEvent* ereignis) override;
    void mouseReleaseEvent(QMouseEvent* ereignis) override;
    void mouseDoubleClickEvent(QMouseEvent* ereignis) override;
    void wheelEvent(QWheelEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;
    void contextMenuEvent(QContextMenuEvent* ereignis) override;

  private:
    Raumbild::Kamera kameraFuer(const QRectF& rahmen) const;
    void zeitgeberPruefen();
    void takt();
    void zeigerErklaeren(const QMouseEvent& ereignis);
    std::optional<std::size_t> stueckUnter(const QPointF& punkt) const;
    QString stueckText(const Raumbild::Drahtstueck& stueck) const;
    // Die Stromlegende; ein Klick darauf wechselt zwischen mA/V und dB.
    QRectF stromLegende(const QRectF& rahmen) const;

    std::optional<Raumbild::Szene> szene_;
    Raumbild::Kamera kamera_;
    bool diagramm3D_ = startDiagramm3D;
    bool strom_ = startStrom;
    bool animation_ = startAnimation;
    bool stromInDb_ = false;
    std::optional<std::int64_t> hervorgehoben_;
    QTimer* zeitgeber_;
    QElapsedTimer uhr_;
    double phase_ = 0; // ωt im Bogenmass
    std::optional<QPointF> gezogenAb_;
};
