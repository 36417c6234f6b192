#pragma once

// Ein Bild, dessen Malgerät nur die gemalten Texte festhält: so lässt sich prüfen, was eine
// Ansicht schreibt, ohne Schrift in Bildpunkten zu suchen. Masse und Auflösung gibt QImage.
#include <QImage>
#include <QPaintEngine>
#include <QString>
#include <QStringList>

class Textaufzeichner : public QImage {
  public:
    explicit Textaufzeichner(QSize groesse) : QImage(groesse, QImage::Format_ARGB32) {}
    QPaintEngine* paintEngine() const override { return &motor_; }
    // Aneinandergehängt: Qt teilt eine Zeile an Schriftwechseln (etwa bei θ) in Stücke.
    QString texte() const { return motor_.texte.join(QString()); }

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
    mutable Motor motor_;
};
