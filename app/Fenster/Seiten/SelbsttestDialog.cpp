#include "Fenster/Seiten/SelbsttestDialog.hpp"

#include "Fenster/Seiten/Seitenbau.hpp"

#include "Modell/AppModell.hpp"

#include "NECKern/Selbsttest.hpp"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

using Seitenbau::faerben;
using Seitenbau::text;

namespace {

struct Urteil {
    QString text;
    QColor farbe;
};

Urteil urteilen(const NECKern::Selbsttest::Zeile& z, bool bekannt) {
    if (!z.bestanden) return {"– nicht beurteilt", Seitenbau::Farbe::neutral()};
    if (*z.bestanden) return {"✓ bestanden", Seitenbau::Farbe::gut()};
    if (bekannt) return {"≈ bekannte Abweichung", Seitenbau::Farbe::bekannt()};
    return {"✗ nicht bestanden", Seitenbau::Farbe::schlecht()};
}

} // namespace

SelbsttestDialog::SelbsttestDialog(AppModell& app, QWidget* eltern)
    : QDialog(eltern), app_(app), titel_(new QLabel(this)), tabelle_(new QTableWidget(0, spalten, this)),
      laeuft_(new QProgressBar(this)), laufText_(new QLabel(this)), zusammenfassung_(new QLabel(this)),
      bekannt_(new QLabel(this)) {
    setWindowTitle("Selbsttest der Rechenkerne");
    setWindowModality(Qt::WindowModal);
    resize(940, 560);

    auto* spalte = new QVBoxLayout(this);
    auto schrift = titel_->font();
    schrift.setBold(true);
    schrift.setPointSizeF(schrift.pointSizeF() * 1.15);
    titel_->setFont(schrift);
    spalte->addWidget(titel_);
    spalte->addWidget(Seitenbau::hinweis("Kleine Fälle mit bekannter Lösung bei 299,792458 MHz (λ = 1 m). "
                                         "Ein Fall besteht, wenn der Kern innerhalb der Toleranz trifft.",
                                         this));

    tabelle_->setObjectName("zeilen");
    tabelle_->setHorizontalHeaderLabels({"Urteil", "Prüfung", "Soll", "Ist", "Quelle"});
    tabelle_->verticalHeader()->hide();
    tabelle_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tabelle_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabelle_->setWordWrap(true);
    auto* kopf = tabelle_->horizontalHeader();
    kopf->setSectionResizeMode(QHeaderView::ResizeToContents);
    kopf->setSectionResizeMode(pruefung, QHeaderView::Stretch);
    kopf->setSectionResizeMode(quelle, QHeaderView::Stretch);
    kopf->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    spalte->addWidget(tabelle_, 1);

    auto* lauf = new QHBoxLayout;
    laeuft_->setRange(0, 0);
    laeuft_->setTextVisible(false);
    laeuft_->setMaximumWidth(160);
    lauf->addWidget(laeuft_);
    lauf->addWidget(laufText_, 1);
    spalte->addLayout(lauf);

    schrift = zusammenfassung_->font();
    schrift.setBold(true);
    zusammenfassung_->setFont(schrift);
    zusammenfassung_->setObjectName("zusammenfassung");
    zusammenfassung_->setWordWrap(true);
    spalte->addWidget(zusammenfassung_);
    bekannt_->setObjectName("bekannt");
    bekannt_->setWordWrap(true);
    faerben(*bekannt_, Seitenbau::Farbe::bekannt());
    spalte->addWidget(bekannt_);

    auto* knoepfe = new QHBoxLayout;
    knoepfe->addStretch(1);
    auto* schliessen = new QPushButton("Schließen", this);
    schliessen->setDefault(true);
    knoepfe->addWidget(schliessen);
    spalte->addLayout(knoepfe);
    connect(schliessen, &QPushButton::clicked, this, [this] { app_.setZeigeSelbsttest(false); });

    connect(&app_, &AppModell::zeigeSelbsttestGeaendert, this, &SelbsttestDialog::sichtbarkeitZeigen);
    connect(&app_, &AppModell::selbsttestGeaendert, this, &SelbsttestDialog::zeilenZeigen);
    connect(&app_, &AppModell::selbsttestLaeuftGeaendert, this, &SelbsttestDialog::zeilenZeigen);
    sichtbarkeitZeigen();
}

void SelbsttestDialog::reject() {
    app_.setZeigeSelbsttest(false);
    QDialog::reject();
}

void SelbsttestDialog::sichtbarkeitZeigen() {
    if (!app_.zeigeSelbsttest()) {
        hide();
        return;
    }
    // Geprüft wird der Kern, den der Selbsttest eben gewählt hat.
    const auto kern = app_.kernWaehlen();
    kennung_ = kern->kennung();
    kernName_ = kern->name();
    titel_->setText("Selbsttest: " + text(kernName_));
    zeilenZeigen();
    show();
    raise();
}

void SelbsttestDialog::zeilenZeigen() {
    const auto& zeilen = app_.selbsttest();
    const bool laeuft = app_.selbsttestLaeuft();
    tabelle_->setRowCount(static_cast<int>(zeilen.size()));
    int bekannte = 0;
    for (int i = 0; i < static_cast<int>(zeilen.size()); ++i) {
        const auto& z = zeilen[static_cast<std::size_t>(i)];
        const bool bekannt = NECKern::Selbsttest::bekannteAbweichung(kennung_, z.pruefung);
        if (bekannt && z.bestanden == false) ++bekannte;
        const auto u = urteilen(z, bekannt);
        auto* mark = new QTableWidgetItem(u.text);
        mark->setForeground(u.farbe);
        auto fett = mark->font();
        fett.setBold(true);
        mark->setFont(fett);
        if (bekannt)
            mark->setToolTip("Bekannte Abweichung von " + text(kernName_) +
                             " bei diesem Fall – kein Fehler der Kerninstallation.");
        tabelle_->setItem(i, urteil, mark);
        tabelle_->setItem(i, pruefung, new QTableWidgetItem(text(z.pruefung)));
        tabelle_->setItem(i, soll, new QTableWidgetItem(text(z.soll)));
        tabelle_->setItem(i, ist, new QTableWidgetItem(text(z.ist)));
        tabelle_->setItem(i, quelle, new QTableWidgetItem(text(z.quelle)));
    }
    tabelle_->resizeRowsToContents();

    laeuft_->setVisible(laeuft);
    laufText_->setVisible(laeuft);
    laufText_->setText(QString("Rechnet Fall %1 …").arg(zeilen.size() + 1));
    const bool fertig = !laeuft && !zeilen.empty();
    zusammenfassung_->setVisible(fertig);
    const auto satz = NECKern::Selbsttest::zusammenfassung(zeilen);
    zusammenfassung_->setText(text(satz));
    faerben(*zusammenfassung_, satz == NECKern::Selbsttest::zusammenfassung({})
                                   ? Seitenbau::Farbe::gut()
                                   : Seitenbau::Farbe::schlecht());
    bekannt_->setVisible(fertig && bekannte > 0);
    bekannt_->setText(bekannte == 1
                          ? "Davon ist 1 Fall eine bekannte Abweichung von " + text(kernName_) +
                                " und kein Fehler der Kerninstallation."
                          : QString("Davon sind %1 Fälle bekannte Abweichungen von ").arg(bekannte) +
                                text(kernName_) + " und kein Fehler der Kerninstallation.");
}
