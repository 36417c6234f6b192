#include "Fenster/Ergebnis/GegenprobeAbschnitt.hpp"

#include "Fenster/Ergebnis/Abschnitt.hpp"
#include "Fenster/Ergebnis/Plakette.hpp"

#include "Modell/AppModell.hpp"

#include <QLabel>
#include <QVBoxLayout>

namespace {

NECKern::Urteile::Farbe farbe(NECKern::Urteile::Abweichung a) {
    switch (a) {
    case NECKern::Urteile::Abweichung::keine:
        return NECKern::Urteile::Farbe::gruen;
    case NECKern::Urteile::Abweichung::merklich:
        return NECKern::Urteile::Farbe::gelb;
    case NECKern::Urteile::Abweichung::stark:
        return NECKern::Urteile::Farbe::orange;
    }
    return NECKern::Urteile::Farbe::orange;
}

} // namespace

GegenprobeAbschnitt::GegenprobeAbschnitt(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), nec2c_(Abschnitt::wert(this)), abweichung_(Abschnitt::wert(this)),
      urteil_(new Plakette(this)) {
    nec2c_->setObjectName("gegenprobeNec2c");
    abweichung_->setObjectName("gegenprobeAbweichung");
    urteil_->setObjectName("gegenprobeUrteil");
    urteil_->setWordWrap(true);
    urteil_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);

    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(4);
    spalte->addWidget(Abschnitt::trenner(this));
    spalte->addSpacing(6);
    spalte->addWidget(Abschnitt::titel("Gegenprobe mit nec2c", this));
    spalte->addWidget(nec2c_);
    spalte->addWidget(abweichung_);
    spalte->addWidget(urteil_);
    aktualisieren();
}

void GegenprobeAbschnitt::aktualisieren() {
    const auto u = app_.gegenprobeUrteil();
    setVisible(u.has_value());
    if (!u) return;
    nec2c_->setVisible(u->nec2c.has_value());
    nec2c_->setText(QString::fromStdString(u->nec2c.value_or("")));
    abweichung_->setText(QString::fromStdString(u->abweichung));
    urteil_->setzen(QString::fromStdString(u->urteil), farbe(u->stufe));
}
