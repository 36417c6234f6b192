#include "Fenster/Ergebnis/ErgebnisDetails.hpp"

#include "Fenster/Ergebnis/Abschnitt.hpp"
#include "Fenster/Ergebnis/Ergebnistexte.hpp"

#include "Modell/AppModell.hpp"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

#include <fmt/printf.h>

namespace {

QString text(const std::string& s) {
    return QString::fromStdString(s);
}

QGridLayout* raster(QWidget* eltern) {
    auto* r = new QGridLayout(eltern);
    r->setContentsMargins(0, 0, 0, 0);
    r->setHorizontalSpacing(14);
    r->setVerticalSpacing(2);
    r->setColumnStretch(1, 1);
    return r;
}

int naechsteZeile(const QGridLayout* raster) {
    return raster->count() == 0 ? 0 : raster->rowCount();
}

} // namespace

ErgebnisDetails::ErgebnisDetails(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), warnungen_(new QWidget(this)), warnungsText_(Abschnitt::wert(warnungen_)),
      spalte_(new QVBoxLayout(this)) {
    warnungen_->setObjectName("kernmeldungen");
    warnungen_->setAttribute(Qt::WA_StyledBackground);
    warnungen_->setStyleSheet(
        "QWidget#kernmeldungen { background: #fff3e0; border: 1px solid #ef6c00; border-radius: 6px; }");
    warnungsText_->setObjectName("kernmeldungenText");
    warnungsText_->setTextFormat(Qt::PlainText);
    warnungsText_->setWordWrap(true);

    auto* symbol = new QLabel(warnungen_);
    symbol->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(20, 20));
    auto* titel = new QLabel("Meldungen des Rechenkerns", warnungen_);
    auto f = titel->font();
    f.setBold(true);
    titel->setFont(f);
    auto* warnSpalte = new QVBoxLayout;
    warnSpalte->setSpacing(2);
    warnSpalte->addWidget(titel);
    warnSpalte->addWidget(warnungsText_);
    auto* warnZeile = new QHBoxLayout(warnungen_);
    warnZeile->setContentsMargins(8, 6, 8, 6);
    warnZeile->addWidget(symbol, 0, Qt::AlignTop);
    warnZeile->addLayout(warnSpalte, 1);

    spalte_->setContentsMargins(0, 0, 0, 0);
    spalte_->setSpacing(6);
    spalte_->addWidget(Abschnitt::titel("Einzelheiten", this));
    spalte_->addWidget(warnungen_);
    bauen(0);
    aktualisieren();
}

QLabel* ErgebnisDetails::ueberschrift(QGridLayout* raster, const QString& text) {
    auto* l = new QLabel(text, raster->parentWidget());
    auto f = l->font();
    f.setBold(true);
    l->setFont(f);
    const int zeile = naechsteZeile(raster);
    if (zeile > 0) raster->setRowMinimumHeight(zeile, fontMetrics().height() + 10);
    raster->addWidget(l, zeile, 0, 1, 2, Qt::AlignBottom);
    return l;
}

QLabel* ErgebnisDetails::zeile(QGridLayout* raster, const QString& name) {
    const int z = naechsteZeile(raster);
    auto* titel = new QLabel(name, raster->parentWidget());
    titel->setStyleSheet("color: #5f6368;");
    auto* wert = Abschnitt::wert(raster->parentWidget());
    wert->setTextFormat(Qt::PlainText);
    raster->addWidget(titel, z, 0);
    raster->addWidget(wert, z, 1);
    return wert;
}

void ErgebnisDetails::bauen(std::size_t quellen) {
    if (raster_ && quellzeilen_.size() == quellen) return;
    delete raster_;
    quellzeilen_.clear();
    raster_ = new QWidget(this);
    raster_->setObjectName("details");
    auto* r = raster(raster_);
    for (std::size_t i = 0; i < quellen; ++i) {
        auto* kopf = ueberschrift(r, {});
        quellzeilen_.push_back(
            {kopf, zeile(r, "Spannung"), zeile(r, "Strom"), zeile(r, "Impedanz"), zeile(r, "Leistung")});
    }
    ueberschrift(r, "Leistungsbilanz");
    eingang_ = zeile(r, "Eingang");
    abgestrahlt_ = zeile(r, "Abgestrahlt");
    verluste_ = zeile(r, "Verluste");
    wirkungsgrad_ = zeile(r, "Wirkungsgrad");
    ueberschrift(r, "Rechnung");
    kern_ = zeile(r, "Rechenkern");
    dauer_ = zeile(r, "Rechenzeit");
    spalte_->addWidget(raster_);
}

void ErgebnisDetails::aktualisieren() {
    const auto& e = app_.ergebnis();
    if (!e) return;
    QStringList meldungen;
    for (const auto& w : e->warnungen)
        meldungen << text(w);
    warnungsText_->setText(meldungen.join('\n'));
    warnungen_->setVisible(!meldungen.isEmpty());

    const auto* f = app_.aktuell();
    bauen(f ? f->quellen.size() : 0);
    kern_->setText(text(e->kern));
    dauer_->setText(text(fmt::sprintf("%.2f s", e->dauer)));
    if (!f) return;
    for (std::size_t i = 0; i < f->quellen.size(); ++i) {
        const auto& q = f->quellen[i];
        const auto& z = quellzeilen_[i];
        // Wirkleistung der Quelle: ½ Re(U · I*).
        const double leistung = 0.5 * (q.spannung.re * q.strom.re + q.spannung.im * q.strom.im);
        z.kopf->setText(text(fmt::sprintf("Quelle %d: Tag %d, Segment %d", i + 1, q.tag, q.segment)));
        z.spannung->setText(text(Ergebnistexte::komplex(q.spannung, "V")));
        z.strom->setText(text(Ergebnistexte::komplex(q.strom, "A")));
        z.impedanz->setText(text(Ergebnistexte::impedanz(q.impedanz)));
        z.leistung->setText(text(Ergebnistexte::leistung(leistung)));
    }
    std::optional<double> verluste;
    if (f->leistungEingang && f->leistungAbgestrahlt)
        verluste = *f->leistungEingang - *f->leistungAbgestrahlt;
    eingang_->setText(text(Ergebnistexte::leistung(f->leistungEingang)));
    abgestrahlt_->setText(text(Ergebnistexte::leistung(f->leistungAbgestrahlt)));
    verluste_->setText(text(Ergebnistexte::leistung(verluste)));
    wirkungsgrad_->setText(f->wirkungsgrad ? text(fmt::sprintf("%.2f %%", *f->wirkungsgrad)) : "–");
}
