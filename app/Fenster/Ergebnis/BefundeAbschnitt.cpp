#include "Fenster/Ergebnis/BefundeAbschnitt.hpp"

#include "Fenster/Ergebnis/Abschnitt.hpp"

#include "Modell/AppModell.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace {

struct Aussehen {
    const char* name;
    QColor farbe;
    QString zeichen;
};

Aussehen aussehen(NECKern::Stufe stufe) {
    switch (stufe) {
    case NECKern::Stufe::hinweis:
        return {"hinweis", QColor(0x15, 0x65, 0xC0), "i"};
    case NECKern::Stufe::warnung:
        return {"warnung", QColor(0xE6, 0x51, 0x00), "!"};
    case NECKern::Stufe::fehler:
        return {"fehler", QColor(0xC6, 0x28, 0x28), "×"};
    }
    return {"hinweis", QColor(0x15, 0x65, 0xC0), "i"};
}

// Ein runder Punkt in der Farbe der Stufe mit ihrem Zeichen.
QPixmap symbol(const QColor& farbe, const QString& zeichen, const QFont& schrift, qreal pixelVerhaeltnis) {
    const int seite = 16;
    QPixmap bild(QSize(seite, seite) * pixelVerhaeltnis);
    bild.setDevicePixelRatio(pixelVerhaeltnis);
    bild.fill(Qt::transparent);
    QPainter maler(&bild);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(Qt::NoPen);
    maler.setBrush(farbe);
    maler.drawEllipse(QRectF(0.5, 0.5, seite - 1, seite - 1));
    auto fett = schrift;
    fett.setBold(true);
    fett.setPixelSize(11);
    maler.setFont(fett);
    maler.setPen(Qt::white);
    maler.drawText(QRect(0, 0, seite, seite), Qt::AlignCenter, zeichen);
    return bild;
}

QWidget* zeile(const QString& text, const char* stufe, const QColor& farbe, const QString& zeichen,
               QWidget* eltern) {
    auto* z = new QWidget(eltern);
    auto* bild = new QLabel(z);
    bild->setPixmap(symbol(farbe, zeichen, z->font(), z->devicePixelRatioF()));
    auto* satz = Abschnitt::wert(z);
    satz->setText(text);
    satz->setWordWrap(true);
    satz->setObjectName("befund");
    satz->setProperty("stufe", stufe);
    satz->setStyleSheet(QString("color: %1;").arg(farbe.darker(130).name()));
    auto* reihe = new QHBoxLayout(z);
    reihe->setContentsMargins(0, 0, 0, 0);
    reihe->setSpacing(8);
    reihe->addWidget(bild, 0, Qt::AlignTop);
    reihe->addWidget(satz, 1);
    return z;
}

} // namespace

BefundeAbschnitt::BefundeAbschnitt(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), liste_(nullptr), zeilen_(new QVBoxLayout) {
    zeilen_->setSpacing(6);
    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(6);
    spalte->addWidget(Abschnitt::titel("Befunde", this));
    spalte->addLayout(zeilen_);
    aktualisieren();
}

void BefundeAbschnitt::aktualisieren() {
    delete liste_;
    liste_ = new QWidget(this);
    auto* spalte = new QVBoxLayout(liste_);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(6);
    const auto& befunde = app_.befunde();
    for (const auto& b : befunde) {
        const auto a = aussehen(b.stufe);
        spalte->addWidget(zeile(QString::fromStdString(b.text), a.name, a.farbe, a.zeichen, liste_));
    }
    if (befunde.empty())
        spalte->addWidget(zeile("Segmentierung und Drähte nach den NEC-Regeln in Ordnung", "ok",
                                QColor(0x2E, 0x7D, 0x32), "✓", liste_));
    zeilen_->addWidget(liste_);
}
