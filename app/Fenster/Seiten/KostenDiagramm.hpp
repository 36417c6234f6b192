#pragma once

#include "Fenster/Diagramme/Diagramm.hpp"
#include "Modell/AppModell.hpp"

// Der Verlauf des Optimierers: beste Kosten über dem Schritt, Kosten logarithmisch.
class KostenDiagramm : public Diagramm {
    Q_OBJECT

  public:
    explicit KostenDiagramm(QWidget* eltern = nullptr);

    void setVerlauf(OptVerlauf verlauf);
    const OptVerlauf& verlauf() const { return verlauf_; }

    void malen(QPainter& p, const QRectF& rahmen) const override;

    QSize sizeHint() const override { return {480, 240}; }
    QSize minimumSizeHint() const override { return {300, 200}; }

  private:
    OptVerlauf verlauf_;
};
