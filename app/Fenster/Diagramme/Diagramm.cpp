#include "Fenster/Diagramme/Diagramm.hpp"

#include "Fenster/Diagramme/Dateiausgabe.hpp"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QHelpEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QSvgGenerator>
#include <QToolTip>

Diagramm::Diagramm(QString dateiname, QWidget* eltern) : QWidget(eltern), dateiname_(std::move(dateiname)) {
    setMouseTracking(true);
}

QFont Diagramm::schrift(double pixel, bool fett) {
    QFont f = QApplication::font();
    f.setPixelSize(static_cast<int>(std::lround(pixel)));
    f.setBold(fett);
    return f;
}

void Diagramm::titelMalen(QPainter& p, const QRectF& rahmen, const QString& titel) {
    p.setFont(schrift(Diagrammmass::titelPixel, true));
    p.setPen(Diagrammfarben::text());
    const QPointF anfang(rahmen.left() + Diagrammmass::innenrand, rahmen.top() + Diagrammmass::innenrand);
    p.drawText(anfang + QPointF(0, QFontMetricsF(p.font()).ascent()), titel);
}

QImage Diagramm::bild(QSize groesse, qreal pixelverhaeltnis) const {
    QImage bild(groesse * pixelverhaeltnis, QImage::Format_ARGB32_Premultiplied);
    bild.setDevicePixelRatio(pixelverhaeltnis);
    bild.fill(Diagrammfarben::hintergrund());
    QPainter p(&bild);
    malen(p, QRectF(QPointF(0, 0), QSizeF(groesse)));
    return bild;
}

QByteArray Diagramm::svg(QSize groesse) const {
    QByteArray daten;
    QBuffer puffer(&daten);
    QSvgGenerator erzeuger;
    erzeuger.setOutputDevice(&puffer);
    erzeuger.setSize(groesse);
    erzeuger.setViewBox(QRect(QPoint(0, 0), groesse));
    // Dieselbe Auflösung wie der Schirm, damit Linienbreiten und Schrift gleich messen.
    erzeuger.setResolution(96);
    erzeuger.setTitle(dateiname_);
    QPainter p(&erzeuger);
    malen(p, QRectF(QPointF(0, 0), QSizeF(groesse)));
    p.end();
    return daten;
}

std::optional<QString> Diagramm::sichern(const QString& pfad) const {
    const bool alsSvg = QFileInfo(pfad).suffix().compare("svg", Qt::CaseInsensitive) == 0;
    QByteArray daten;
    if (alsSvg) {
        daten = svg(size());
    } else {
        QBuffer puffer(&daten);
        puffer.open(QIODevice::WriteOnly);
        bild(size(), 2.0).save(&puffer, "PNG");
    }
    return Dateiausgabe::schreiben(pfad, daten, "Das Bild");
}

void Diagramm::kopieren() const {
    QApplication::clipboard()->setImage(bild(size(), devicePixelRatioF()));
}

QString Diagramm::tipp(QPointF) const {
    return {};
}

bool Diagramm::event(QEvent* ereignis) {
    if (ereignis->type() != QEvent::ToolTip) return QWidget::event(ereignis);
    auto* hilfe = static_cast<QHelpEvent*>(ereignis);
    const QString text = tipp(hilfe->pos());
    if (text.isEmpty()) {
        QToolTip::hideText();
        ereignis->ignore();
    } else {
        QToolTip::showText(hilfe->globalPos(), text, this);
    }
    return true;
}

void Diagramm::paintEvent(QPaintEvent*) {
    QPainter p(this);
    malen(p, QRectF(rect()));
}

void Diagramm::menueErgaenzen(QMenu&) {}

void Diagramm::contextMenuEvent(QContextMenuEvent* ereignis) {
    QMenu menue(this);
    menueErgaenzen(menue);
    if (!menue.isEmpty()) menue.addSeparator();
    menue.addAction("Als Bild sichern …", this, &Diagramm::sichernFragen);
    menue.addAction("Kopieren", this, &Diagramm::kopieren);
    menue.exec(ereignis->globalPos());
}

void Diagramm::sichernFragen() {
    QString filter;
    QString pfad = QFileDialog::getSaveFileName(this, "Als Bild sichern", dateiname_ + ".png",
                                                "PNG-Bild (*.png);;SVG-Grafik (*.svg)", &filter);
    if (pfad.isEmpty()) return;
    if (QFileInfo(pfad).suffix().isEmpty()) pfad += filter.startsWith("SVG") ? ".svg" : ".png";
    if (const auto fehler = sichern(pfad)) QMessageBox::warning(this, "Bild nicht gesichert", *fehler);
}
