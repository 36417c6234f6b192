#include "Fenster/Seiten/KernEintrag.hpp"

#include "Fenster/Seiten/Seitenbau.hpp"

#include "NECKern/Rechenkerne/ExternerKern.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <QApplication>
#include <QLabel>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

using Seitenbau::text;

namespace {

const std::vector<std::string> nec2cArgumente{"-i", "{ein}", "-o", "{aus}"};

// Ohne Vorlage bekommt ein externer Kern Eingabe und Ausgabe in dieser Folge.
std::vector<std::string> argumente(const NECKern::ExternerKern& kern) {
    return kern.argumente().empty() ? std::vector<std::string>{"{ein}", "{aus}"} : kern.argumente();
}

QString argument(const std::string& a) {
    return a.find(' ') == std::string::npos ? text(a) : "\"" + text(a) + "\"";
}

QString liste(const std::vector<std::string>& argumente) {
    QStringList teile;
    for (const auto& a : argumente)
        teile << argument(a);
    return teile.join(' ');
}

// Die Zeilen unter der Beschreibung; leer für einen Kern ohne Programm (etwa eine Attrappe).
QString programmzeile(const NECKern::Rechenkern& kern) {
    if (const auto* extern_ = dynamic_cast<const NECKern::ExternerKern*>(&kern))
        return "Programm: " + argument(extern_->programm().string()) + " " + liste(argumente(*extern_));
    if (const auto* nec2c = dynamic_cast<const NECKern::Nec2cKern*>(&kern); nec2c && nec2c->programm())
        return "Programm: " + argument(nec2c->programm()->string()) + " " + liste(nec2cArgumente);
    return {};
}

// Fehlt das Programm, nennt die Zeile darüber schon seinen Pfad; dann nur noch die Argumente.
QString argumentzeile(const NECKern::Rechenkern& kern) {
    if (const auto* extern_ = dynamic_cast<const NECKern::ExternerKern*>(&kern))
        return "Argumente: " + liste(argumente(*extern_));
    if (dynamic_cast<const NECKern::Nec2cKern*>(&kern)) return "Argumente: " + liste(nec2cArgumente);
    return {};
}

QString fehlt(const NECKern::Rechenkern& kern) {
    if (const auto* extern_ = dynamic_cast<const NECKern::ExternerKern*>(&kern))
        return "Programm fehlt: " + text(extern_->programm().string());
    if (const auto* nec2c = dynamic_cast<const NECKern::Nec2cKern*>(&kern); nec2c && nec2c->programm())
        return "Programm fehlt: " + text(nec2c->programm()->string());
    if (kern.kennung() == "nec2c")
        return "Programm fehlt: nec2c – weder neben Wellenwerk noch auf dem Suchpfad; bitte das Paket nec2c "
               "installieren.";
    return "Programm fehlt: " + text(kern.kennung());
}

QLabel* zeile(const QString& inhalt, const QColor& farbe, QWidget* eltern) {
    auto* l = new QLabel(inhalt, eltern);
    l->setWordWrap(true);
    auto palette = l->palette();
    palette.setColor(QPalette::WindowText, farbe);
    l->setPalette(palette);
    return l;
}

} // namespace

KernEintrag::KernEintrag(const NECKern::KernZeiger& kern, QWidget* eltern)
    : QFrame(eltern), kennung_(kern->kennung()), wahl_(new QRadioButton(text(kern->name()), this)) {
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    wahl_->setObjectName(text("kern-" + kennung_));
    auto schrift = wahl_->font();
    schrift.setBold(true);
    wahl_->setFont(schrift);
    const bool verfuegbar = kern->verfuegbar();
    wahl_->setEnabled(verfuegbar);

    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(8, 6, 8, 8);
    spalte->setSpacing(2);
    spalte->addWidget(wahl_);

    // Die Zeilen darunter beginnen dort, wo der Name beginnt.
    auto* details = new QVBoxLayout;
    const int einzug = style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                       style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
    details->setContentsMargins(einzug, 0, 0, 0);
    details->setSpacing(3);
    spalte->addLayout(details);

    details->addWidget(zeile(text(kern->beschreibung()), palette().color(QPalette::WindowText), this));
    auto* status = zeile(verfuegbar ? "✓ verfügbar" : fehlt(*kern),
                         verfuegbar ? Seitenbau::Farbe::gut() : Seitenbau::Farbe::schlecht(), this);
    status->setObjectName(text("status-" + kennung_));
    status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    details->addWidget(status);
    const auto aufruf = verfuegbar ? programmzeile(*kern) : argumentzeile(*kern);
    if (!aufruf.isEmpty()) {
        auto* aufrufZeile = zeile(aufruf, Seitenbau::Farbe::neutral(), this);
        aufrufZeile->setTextInteractionFlags(Qt::TextSelectableByMouse);
        details->addWidget(aufrufZeile);
    }
}

void KernEintrag::markieren(bool gewaehlt) {
    auto p = palette();
    const auto grund = parentWidget() ? parentWidget()->palette().color(QPalette::Window)
                                      : QApplication::palette().color(QPalette::Window);
    p.setColor(QPalette::Window,
               gewaehlt ? Seitenbau::mischen(grund, p.color(QPalette::Highlight), 0.15) : grund);
    setPalette(p);
}
