#include "Fenster/Ergebnis/ErgebnisDetails.hpp"

#include "Fenster/Ergebnis/Abschnitt.hpp"
#include "Fenster/Ergebnis/Ergebnistexte.hpp"

#include "Modell/AppModell.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

#include <fmt/printf.h>

namespace {

std::string zeile(const std::string& name, const std::string& wert) {
    return "<tr><td style=\"color:#5f6368; padding-right:14px\">" + name + "</td><td>" + wert + "</td></tr>";
}

std::string ueberschrift(const std::string& text) {
    return "<tr><td colspan=\"2\" style=\"padding-top:6px\"><b>" + text + "</b></td></tr>";
}

std::string quellen(const NECKern::FrequenzErgebnis& f) {
    std::string html;
    int n = 0;
    for (const auto& q : f.quellen) {
        const double leistung = 0.5 * (q.spannung.re * q.strom.re + q.spannung.im * q.strom.im);
        html += ueberschrift(fmt::sprintf("Quelle %d: Tag %d, Segment %d", ++n, q.tag, q.segment));
        html += zeile("Spannung", Ergebnistexte::komplex(q.spannung, "V"));
        html += zeile("Strom", Ergebnistexte::komplex(q.strom, "A"));
        html += zeile("Impedanz", Ergebnistexte::impedanz(q.impedanz));
        html += zeile("Leistung", Ergebnistexte::leistung(leistung));
    }
    return html;
}

std::string bilanz(const NECKern::FrequenzErgebnis& f) {
    std::optional<double> verluste;
    if (f.leistungEingang && f.leistungAbgestrahlt) verluste = *f.leistungEingang - *f.leistungAbgestrahlt;
    std::string html = ueberschrift("Leistungsbilanz");
    html += zeile("Eingang", Ergebnistexte::leistung(f.leistungEingang));
    html += zeile("Abgestrahlt", Ergebnistexte::leistung(f.leistungAbgestrahlt));
    html += zeile("Verluste", Ergebnistexte::leistung(verluste));
    html += zeile("Wirkungsgrad", f.wirkungsgrad ? fmt::sprintf("%.2f %%", *f.wirkungsgrad) : "–");
    return html;
}

std::string kern(const NECKern::NECErgebnis& e) {
    return ueberschrift("Rechnung") +
           zeile("Rechenkern", QString::fromStdString(e.kern).toHtmlEscaped().toStdString()) +
           zeile("Rechenzeit", fmt::sprintf("%.2f s", e.dauer));
}

} // namespace

ErgebnisDetails::ErgebnisDetails(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), tabelle_(Abschnitt::wert(this)), warnungen_(new QWidget(this)),
      warnungsText_(Abschnitt::wert(warnungen_)) {
    tabelle_->setObjectName("details");
    tabelle_->setTextFormat(Qt::RichText);
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

    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(6);
    spalte->addWidget(Abschnitt::titel("Einzelheiten", this));
    spalte->addWidget(warnungen_);
    spalte->addWidget(tabelle_);
    aktualisieren();
}

void ErgebnisDetails::aktualisieren() {
    const auto& e = app_.ergebnis();
    if (!e) return;
    std::string html = "<table cellspacing=\"0\" cellpadding=\"1\">";
    if (const auto* f = app_.aktuell()) html += quellen(*f) + bilanz(*f);
    html += kern(*e) + "</table>";
    tabelle_->setText(QString::fromStdString(html));

    QStringList meldungen;
    for (const auto& w : e->warnungen)
        meldungen << QString::fromStdString(w);
    warnungsText_->setText(meldungen.join('\n'));
    warnungen_->setVisible(!meldungen.isEmpty());
}
