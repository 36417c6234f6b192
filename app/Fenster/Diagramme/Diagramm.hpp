#pragma once

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QRectF>
#include <QString>
#include <QWidget>

#include <optional>
#include <string>

class QMenu;
class QPainter;

// Grundlage jedes Diagramms: eine Zeichenfunktion für Bildschirm, PNG, SVG und
// Zwischenablage – so gleicht jeder Export dem Bild auf dem Schirm – und das
// Kontextmenü „Als Bild sichern …“ und „Kopieren“.
class Diagramm : public QWidget {
    Q_OBJECT

  public:
    explicit Diagramm(QString dateiname, QWidget* eltern = nullptr);

    // Zeichnet das ganze Diagramm in `rahmen`, mit Hintergrund.
    virtual void malen(QPainter& p, const QRectF& rahmen) const = 0;

    // Rasterbild in Bildpunkten, mit Pixelverhältnis für scharfe Exporte.
    QImage bild(QSize groesse, qreal pixelverhaeltnis = 1.0) const;
    // SVG-Datei mit Grösse und Sichtfeld `groesse`.
    QByteArray svg(QSize groesse) const;
    // Schreibt PNG oder SVG nach der Endung von `pfad`; ein deutscher Satz bei Misserfolg.
    std::optional<QString> sichern(const QString& pfad) const;
    void kopieren() const;

    // Tooltip am Ort im Widget; leer, wo es nichts zu sagen gibt.
    virtual QString tipp(QPointF ort) const;

    QSize sizeHint() const override { return {480, 360}; }

    // Schrift des Programms in Pixelgrösse, damit Bild, SVG und Schirm gleich messen.
    static QFont schrift(double pixel, bool fett = false);
    // Überschrift oben links in `rahmen`.
    static void titelMalen(QPainter& p, const QRectF& rahmen, const QString& titel);

  protected:
    bool event(QEvent* ereignis) override;
    void paintEvent(QPaintEvent* ereignis) override;
    void contextMenuEvent(QContextMenuEvent* ereignis) override;
    // Eigene Einträge eines Diagramms vor den Exporten.
    virtual void menueErgaenzen(QMenu& menue);

  private:
    void sichernFragen();

    QString dateiname_;
};

// Ränder und Schriftgrössen (Pixel) aller Diagramme.
namespace Diagrammmass {
inline constexpr double innenrand = 8;
inline constexpr double titelPixel = 13;
inline constexpr double textPixel = 11.5;
inline constexpr double kleinPixel = 10.5;

inline QString q(const std::string& s) {
    return QString::fromStdString(s);
}
} // namespace Diagrammmass

// Die Farben aller Diagramme an einer Stelle.
namespace Diagrammfarben {
inline QColor hintergrund() {
    return QColor(255, 255, 255);
}
inline QColor text() {
    return QColor(30, 30, 30);
}
inline QColor nebentext() {
    return QColor(100, 100, 100);
}
inline QColor gitter() {
    return QColor(218, 218, 218);
}
inline QColor achse() {
    return QColor(120, 120, 120);
}
inline QColor spur() {
    return QColor(25, 95, 200);
}
inline QColor spurAlt() {
    return QColor(25, 95, 200, 70);
}
inline QColor marke() {
    return QColor(215, 40, 40);
}
inline QColor gut() {
    return QColor(40, 150, 70);
}
inline QColor mittel() {
    return QColor(230, 130, 20);
}
} // namespace Diagrammfarben
