#pragma once

#include "Modell/AppModell.hpp"

#include <QWidget>

class QPainter;

// Der Verlauf des Optimierers: beste Kosten über dem Schritt, Kosten logarithmisch.
// Alles Zeichnen steckt in malen(), damit ein Bild denselben Inhalt hat wie der Schirm.
class KostenDiagramm : public QWidget {
    Q_OBJECT

  public:
    explicit KostenDiagramm(QWidget* eltern = nullptr);

    void setVerlauf(OptVerlauf verlauf);
    const OptVerlauf& verlauf() const { return verlauf_; }

    void malen(QPainter& p, const QRectF& rahmen) const;

    QSize sizeHint() const override { return {480, 240}; }
    QSize minimumSizeHint() const override { return {300, 200}; }

  protected:
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    OptVerlauf verlauf_;
};
