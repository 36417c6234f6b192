#pragma once

// Ein Malgerät, das nur die gemalten Texte festhält: so lässt sich prüfen, was eine
// Ansicht schreibt, ohne Schrift in Bildpunkten zu suchen.
#include <QPaintDevice>
#include <QPaintEngine>
#include <QString>
#include <QStringList>

class Textaufzeichner : public QPaintDevice {
  public:
    explicit Textaufzeichner(QSize groesse) : groesse_(groesse) {}
    QPaintEngine* paintEngine() const override { return &motor_; }
    // Aneinandergehängt: Qt teilt eine Zeile an Schriftwechseln (etwa bei θ) in Stücke.
    QString texte() const { return motor_.texte.join(QString()); }

  protected:
    int metric(PaintDeviceMetric m) const override {
        switch (m) {
        case PdmWidth:
            return groesse_.width();
        case PdmHeight:
            return groesse_.height();
        case PdmWidthMM:
            return groesse_.width() / 4;
        case PdmHeightMM:
            return groesse_.height() / 4;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDepth:
            return 32;
        case PdmNumColors:
            return 1 << 24;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        }
        return 0;
    }

  private:
    struct Motor : QPaintEngine {
        Motor() : QPaintEngine(QPaintEngine::AllFeatures) {}
        bool begin(QPaintDevice*) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState&) override {}
        void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
        void drawPath(const QPainterPath&) override {}
        void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
        void drawLines(const QLineF*, int) override {}
        void drawRects(const QRectF*, int) override {}
        void drawEllipse(const QRectF&) override {}
        void drawTextItem(const QPointF&, const QTextItem& text) override { texte << text.text(); }
        Type type() const override { return QPaintEngine::User; }
        QStringList texte;
    };
    QSize groesse_;
    mutable Motor motor_;
};
