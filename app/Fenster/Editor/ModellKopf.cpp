#include "Fenster/Editor/ModellKopf.hpp"

#include "Fenster/Editor/Bedienelemente.hpp"
#include "Fenster/Editor/Zellpruefung.hpp"

#include "Modell/AppModell.hpp"

#include "NECKern/Ausdruck.hpp"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <cmath>

namespace {

std::vector<std::string> zeilen(const QString& text) {
    std::vector<std::string> liste;
    for (const auto& z : text.split('\n'))
        liste.push_back(z.toStdString());
    return liste;
}

QString text(const std::vector<std::string>& zeilen) {
    QStringList liste;
    for (const auto& z : zeilen)
        liste << QString::fromStdString(z);
    return liste.join('\n');
}

} // namespace

ModellKopf::ModellKopf(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), name_(new QLineEdit(this)), z0_(new QLineEdit(this)),
      kommentar_(new QPlainTextEdit(this)), meldung_(Bedienelemente::meldungszeile(this)) {
    name_->setObjectName("name");
    z0_->setObjectName("z0");
    kommentar_->setObjectName("kommentar");
    meldung_->setObjectName("kopfMeldung");
    z0_->setToolTip("Bezugsimpedanz für SWR und Smith-Diagramm");
    z0_->setFixedWidth(fontMetrics().horizontalAdvance("00000.0") + 12);
    kommentar_->setTabChangesFocus(true);
    kommentar_->setPlaceholderText("Kommentarzeilen (CM)");
    const int zeile = fontMetrics().lineSpacing();
    kommentar_->setFixedHeight(3 * zeile + 2 * kommentar_->frameWidth() + 8);
    kommentar_->installEventFilter(this);

    auto* raster = new QGridLayout(this);
    raster->setContentsMargins(0, 0, 0, 0);
    raster->setHorizontalSpacing(6);
    raster->setVerticalSpacing(4);
    raster->addWidget(new QLabel("Name", this), 0, 0);
    raster->addWidget(name_, 0, 1);
    raster->addWidget(new QLabel("z0", this), 0, 2);
    raster->addWidget(z0_, 0, 3);
    raster->addWidget(new QLabel("Ω", this), 0, 4);
    raster->addWidget(new QLabel("Kommentar", this), 1, 0, Qt::AlignTop);
    raster->addWidget(kommentar_, 1, 1, 1, 4);
    raster->addWidget(meldung_, 2, 0, 1, 5);
    raster->setColumnStretch(1, 1);

    pause_.setSingleShot(true);
    pause_.setInterval(300);
    connect(&pause_, &QTimer::timeout, this, &ModellKopf::kommentarUebernehmen);
    connect(kommentar_, &QPlainTextEdit::textChanged, this, [this] {
        if (text(app_.modell().kommentar) == kommentar_->toPlainText()) return;
        kommentarOffen_ = true;
        pause_.start();
    });
    connect(name_, &QLineEdit::editingFinished, this, &ModellKopf::nameUebernehmen);
    connect(z0_, &QLineEdit::editingFinished, this, &ModellKopf::z0Uebernehmen);
    connect(&app_, &AppModell::modellGeaendert, this, &ModellKopf::anzeigen);
    anzeigen();
}

void ModellKopf::anzeigen() {
    const auto& m = app_.modell();
    if (!name_->isModified()) name_->setText(QString::fromStdString(m.name));
    if (!z0_->isModified()) z0_->setText(QString::fromStdString(Zellpruefung::zahl(m.z0)));
    const auto kommentar = text(m.kommentar);
    if (!kommentarOffen_ && kommentar_->toPlainText() != kommentar) kommentar_->setPlainText(kommentar);
}

bool ModellKopf::eventFilter(QObject* objekt, QEvent* ereignis) {
    if (objekt == kommentar_ && ereignis->type() == QEvent::FocusOut) kommentarUebernehmen();
    return QWidget::eventFilter(objekt, ereignis);
}

void ModellKopf::nameUebernehmen() {
    if (!name_->isModified()) return;
    const auto name = name_->text().trimmed().toStdString();
    if (name.empty()) {
        Bedienelemente::meldungSetzen(meldung_, "Das Modell braucht einen Namen.");
        return;
    }
    Bedienelemente::meldungSetzen(meldung_, {});
    name_->setModified(false);
    auto m = app_.modell();
    m.name = name;
    app_.setModell(m);
}

void ModellKopf::z0Uebernehmen() {
    if (!z0_->isModified()) return;
    double z0 = 0;
    try {
        z0 = NECKern::Ausdruck::auswerten(z0_->text().toStdString(), {});
    } catch (const NECKern::Ausdruck::Fehler&) {
        z0 = 0;
    }
    if (!std::isfinite(z0) || z0 <= 0) {
        Bedienelemente::meldungSetzen(meldung_, "z0 muss eine Zahl grösser als 0 sein, etwa 50 (Ω).");
        return;
    }
    Bedienelemente::meldungSetzen(meldung_, {});
    z0_->setModified(false);
    auto m = app_.modell();
    m.z0 = z0;
    app_.setModell(m);
}

void ModellKopf::kommentarUebernehmen() {
    pause_.stop();
    if (!kommentarOffen_) return;
    kommentarOffen_ = false;
    auto m = app_.modell();
    m.kommentar = zeilen(kommentar_->toPlainText());
    if (m.kommentar == std::vector<std::string>{""}) m.kommentar.clear();
    app_.setModell(m);
}
