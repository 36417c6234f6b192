#include "Fenster/Ansicht3D/Ansicht3D.hpp"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>
#include <exception>
#include <fmt/format.h>
#include <numbers>

namespace {

constexpr int bildAbstandMs = 33;    // bis zu 30 Bilder je Sekunde
constexpr double trefferAbstand = 6; // Bildpunkte um einen Draht, die noch zu ihm gehören

double abstandZurStrecke(const QPointF& p, const QPointF& a, const QPointF& b) {
    const QPointF ab = b - a;
    const double laenge2 = QPointF::dotProduct(ab, ab);
    const double t = laenge2 > 0 ? std::clamp(QPointF::dotProduct(p - a, ab) / laenge2, 0.0, 1.0) : 0.0;
    const QPointF d = p - (a + ab * t);
    return std::hypot(d.x(), d.y());
}

} // namespace

Ansicht3D::Ansicht3D(QWidget* eltern) : QWidget(eltern), zeitgeber_(new QTimer(this)) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    zeitgeber_->setInterval(bildAbstandMs);
    connect(zeitgeber_, &QTimer::timeout, this, &Ansicht3D::takt);
    kamera_.setGroesse(size());
}

void Ansicht3D::zeigen(std::optional<NECKern::FrequenzErgebnis> aktuell, const NECKern::Modell& modell) {
    if (!aktuell) {
        szene_.reset();
    } else {
        std::string deck;
        try {
            deck = modell.deck();
        } catch (const std::exception&) {
            // Ohne auswertbares Deck fehlen nur die Lastmarken; das Modell meldet den Fehler selbst.
        }
        auto neu = Raumbild::szeneBauen(*aktuell, deck);
        const bool neuEinpassen =
            !szene_ || kamera_.eingepasst() || Raumbild::ganzAndereAntenne(szene_->grenzen, neu.grenzen);
        szene_ = std::move(neu);
        if (neuEinpassen) einpassen();
    }
    zeitgeberPruefen();
    update();
}

void Ansicht3D::setDiagramm3D(bool an) {
    if (diagramm3D_ == an) return;
    diagramm3D_ = an;
    if (kamera_.eingepasst()) einpassen();
    update();
}

void Ansicht3D::setStrom(bool an) {
    strom_ = an;
    update();
}

void Ansicht3D::setAnimation(bool an) {
    animation_ = an;
    zeitgeberPruefen();
    update();
}

void Ansicht3D::hervorheben(std::optional<std::int64_t> tag) {
    hervorgehoben_ = tag;
    update();
}

void Ansicht3D::setStromInDb(bool an) {
    stromInDb_ = an;
    update();
}

void Ansicht3D::einpassen() {
    kamera_.setGroesse(size());
    if (szene_) kamera_.einpassen(szene_->passpunkte(diagramm3D_));
    update();
}

void Ansicht3D::blick(Raumbild::Blick b) {
    kamera_.blick(b);
    einpassen();
}

Raumbild::Kamera Ansicht3D::kameraFuer(const QRectF& rahmen) const {
    Raumbild::Kamera k = kamera_;
    if (szene_ && k.eingepasst() && rahmen.size() != k.groesse()) {
        k.setGroesse(rahmen.size());
        k.einpassen(szene_->passpunkte(diagramm3D_));
    }
    return k;
}

Raumbild::Projektion Ansicht3D::projektion(const QRectF& rahmen) const {
    return kameraFuer(rahmen).projektion(rahmen);
}

bool Ansicht3D::animationLaeuft() const {
    return zeitgeber_->isActive();
}

void Ansicht3D::zeitgeberPruefen() {
    const bool laufen = animation_ && isVisible() && szene_ && szene_->stroeme && szene_->maxStrom > 0;
    if (laufen == zeitgeber_->isActive()) return;
    if (laufen) {
        uhr_.start();
        zeitgeber_->start();
    } else {
        zeitgeber_->stop();
        phase_ = 0;
    }
}

void Ansicht3D::takt() {
    if (!isVisible()) return zeitgeberPruefen();
    phase_ = std::fmod(static_cast<double>(uhr_.elapsed()) / 1000.0, 1.0) * 2 * std::numbers::pi;
    update();
}

void Ansicht3D::paintEvent(QPaintEvent*) {
    QPainter maler(this);
    malen(maler, rect());
    if (!szene_ || width() < 700) return;
    maler.setPen(QColor(120, 124, 132));
    QFont klein = font();
    klein.setPointSizeF(font().pointSizeF() * 0.85);
    maler.setFont(klein);
    maler.drawText(
        QRectF(rect()).adjusted(0, 0, -8, -4), Qt::AlignRight | Qt::AlignBottom,
        "Ziehen dreht · Umschalt+Ziehen schiebt · Rad zoomt · Doppelklick passt ein · Tasten 1 2 3 0");
}

void Ansicht3D::resizeEvent(QResizeEvent*) {
    kamera_.setGroesse(size());
    if (kamera_.eingepasst()) einpassen();
}

void Ansicht3D::showEvent(QShowEvent*) {
    zeitgeberPruefen();
}

void Ansicht3D::hideEvent(QHideEvent*) {
    zeitgeberPruefen();
}

void Ansicht3D::mousePressEvent(QMouseEvent* ereignis) {
    if (ereignis->button() == Qt::LeftButton && stromLegende(rect()).contains(ereignis->position())) {
        setStromInDb(!stromInDb_);
        return;
    }
    if (ereignis->button() == Qt::LeftButton || ereignis->button() == Qt::MiddleButton) {
        gezogenAb_ = ereignis->position();
        QToolTip::hideText();
    }
}

void Ansicht3D::mouseMoveEvent(QMouseEvent* ereignis) {
    if (!gezogenAb_) return zeigerErklaeren(*ereignis);
    const QPointF verschiebung = ereignis->position() - *gezogenAb_;
    gezogenAb_ = ereignis->position();
    const bool schieben =
        ereignis->buttons().testFlag(Qt::MiddleButton) || ereignis->modifiers().testFlag(Qt::ShiftModifier);
    if (schieben)
        kamera_.schieben(verschiebung);
    else
        kamera_.drehen(verschiebung);
    update();
}

void Ansicht3D::mouseReleaseEvent(QMouseEvent*) {
    gezogenAb_.reset();
}

void Ansicht3D::mouseDoubleClickEvent(QMouseEvent* ereignis) {
    if (ereignis->button() == Qt::LeftButton) einpassen();
}

void Ansicht3D::wheelEvent(QWheelEvent* ereignis) {
    const double rasten = ereignis->angleDelta().y() / 120.0;
    if (rasten == 0) return;
    kamera_.zoomen(ereignis->position(), std::pow(1.2, rasten));
    update();
}

void Ansicht3D::keyPressEvent(QKeyEvent* ereignis) {
    switch (ereignis->key()) {
    case Qt::Key_1:
    case Qt::Key_O:
        return blick(Raumbild::Blick::oben);
    case Qt::Key_2:
    case Qt::Key_V:
        return blick(Raumbild::Blick::vorne);
    case Qt::Key_3:
    case Qt::Key_S:
        return blick(Raumbild::Blick::seite);
    case Qt::Key_0:
    case Qt::Key_E:
    case Qt::Key_Home:
        return einpassen();
    case Qt::Key_L:
        return setStromInDb(!stromInDb_);
    default:
        QWidget::keyPressEvent(ereignis);
    }
}

void Ansicht3D::contextMenuEvent(QContextMenuEvent* ereignis) {
    QMenu menue(this);
    menue.addAction("Draufsicht\t1", this, [this] { blick(Raumbild::Blick::oben); });
    menue.addAction("Vorderansicht\t2", this, [this] { blick(Raumbild::Blick::vorne); });
    menue.addAction("Seitenansicht\t3", this, [this] { blick(Raumbild::Blick::seite); });
    menue.addAction("Einpassen\t0", this, [this] { einpassen(); });
    menue.addSeparator();
    auto* db =
        menue.addAction("Strom in dB unter dem Maximum\tL", this, [this] { setStromInDb(!stromInDb_); });
    db->setCheckable(true);
    db->setChecked(stromInDb_);
    menue.exec(ereignis->globalPos());
}

void Ansicht3D::zeigerErklaeren(const QMouseEvent& ereignis) {
    const QPointF punkt = ereignis.position();
    const QPoint global = ereignis.globalPosition().toPoint();
    if (auto i = stueckUnter(punkt)) return QToolTip::showText(global, stueckText(szene_->stuecke[*i]), this);
    if (stromLegende(rect()).contains(punkt))
        return QToolTip::showText(global, "Klick wechselt zwischen mA/V und dB", this);
    QToolTip::hideText();
}

std::optional<std::size_t> Ansicht3D::stueckUnter(const QPointF& punkt) const {
    if (!szene_) return std::nullopt;
    const auto p = projektion(rect());
    std::optional<std::size_t> bestes;
    double besterAbstand = trefferAbstand;
    double bestesTiefe = 0;
    for (std::size_t i = 0; i < szene_->stuecke.size(); ++i) {
        const auto& s = szene_->stuecke[i];
        const double abstand = abstandZurStrecke(punkt, p.bild(s.anfang), p.bild(s.ende));
        const double tiefe = p.tiefe(s.mitte);
        // Fast gleich nah: das vordere gewinnt.
        const bool besser =
            abstand < besterAbstand - 0.5 || (abstand < besterAbstand + 0.5 && tiefe > bestesTiefe);
        if (abstand > trefferAbstand || (bestes && !besser)) continue;
        bestes = i;
        besterAbstand = abstand;
        bestesTiefe = tiefe;
    }
    return bestes;
}

QString Ansicht3D::stueckText(const Raumbild::Drahtstueck& s) const {
    auto text = fmt::format("Tag {}, Segment {} (Nr. {})", s.tag, s.imTag, s.nummer);
    if (szene_->stroeme)
        text += fmt::format("\n|I| = {:.4g} {}, Phase {:.1f}°", s.betrag * 1000,
                            szene_->jeVolt ? "mA/V" : "mA", s.strom.phaseGrad());
    if (s.speisung) text += "\nSpeisung";
    if (s.last) text += "\nLast";
    return QString::fromStdString(text);
}
