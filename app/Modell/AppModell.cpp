// Felder und Dokument des Anwendungsmodells: Beispiel, Öffnen, Sichern, Verlauf.
#include "Modell/AppModell.hpp"

#include "Modell/ZirkonInstallation.hpp"

#include "NECKern/Beispiele.hpp"
#include "NECKern/Rechenkerne/Kernliste.hpp"
#include "NECKern/Rechenkerne/Nec2cKern.hpp"

#include <QSaveFile>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <thread>

namespace {

NECKern::Modell startModell() {
    for (const auto& b : NECKern::Beispiele::alle())
        if (b.name == "3-Element-Yagi 20 m") return b.modell();
    return NECKern::Beispiele::alle().front().modell();
}

Ziele startZiele() {
    return {NECKern::Ziel(NECKern::Ziel::Art::swr, 14.15, 1.2, 1.0),
            NECKern::Ziel(NECKern::Ziel::Art::gewinn, 14.15, 13.0, 1.0)};
}

std::optional<std::string> dateiLesen(const std::filesystem::path& pfad) {
    std::ifstream datei(pfad, std::ios::binary);
    if (!datei) return std::nullopt;
    std::string text((std::istreambuf_iterator<char>(datei)), std::istreambuf_iterator<char>());
    if (datei.bad()) return std::nullopt;
    return text;
}

} // namespace

AppModell::Umgebung AppModell::Umgebung::standard() {
    Umgebung u;
    u.kerneFinden = [] { return NECKern::Kernliste::kerneFinden(); };
    u.nec2c = [] { return std::make_shared<const NECKern::Nec2cKern>(); };
    u.datenOrdner = NECKern::Kernliste::kernordner().parent_path();
    u.pythonKandidaten = ZirkonInstallation::pythonKandidaten();
    u.parallel = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    return u;
}

AppModell::AppModell(QObject* eltern) : AppModell(Umgebung::standard(), eltern) {}

AppModell::AppModell(Umgebung umgebung, QObject* eltern)
    : QObject(eltern), umgebung_(std::move(umgebung)), modell_(startModell()),
      kerne_(umgebung_.kerneFinden()), ziele_(startZiele()), beispielVorlage_(modell_),
      gespeichert_(modell_) {}

AppModell::~AppModell() {
    if (optimierer_) optimierer_->anhalten();
    hintergrund_.beenden();
}

// --- Felder ---------------------------------------------------------------

void AppModell::setModell(const NECKern::Modell& m) {
    modellSpeichern(m, Schritt::merken);
}

void AppModell::modellSpeichern(const NECKern::Modell& m, Schritt schritt) {
    const bool konnteZurueck = kannRueckgaengig();
    const bool konnteVor = kannWiederholen();
    // Ein geladenes Beispiel oder eine geöffnete Datei beginnt einen neuen Verlauf,
    // auch wenn das Modell gleich bleibt.
    if (schritt == Schritt::neuerVerlauf) verlauf_.leeren();
    if (modell_ == m) {
        verlaufGemeldet(konnteZurueck, konnteVor);
        return;
    }
    if (schritt == Schritt::merken) verlauf_.merken(modell_);
    modell_ = m;
    emit modellGeaendert();
    verlaufGemeldet(konnteZurueck, konnteVor);
    geaendertPruefen();
    if (automatisch_) rechnen(true);
}

void AppModell::verlaufGemeldet(bool konnteZurueck, bool konnteVor) {
    if (konnteZurueck != kannRueckgaengig()) emit kannRueckgaengigGeaendert();
    if (konnteVor != kannWiederholen()) emit kannWiederholenGeaendert();
}

void AppModell::gespeichertSetzen(const NECKern::Modell& m) {
    gespeichert_ = m;
    geaendertPruefen();
}

void AppModell::geaendertPruefen() {
    setzen(geaendert_, !(modell_ == gespeichert_), &AppModell::geaendertGeaendert);
}

void AppModell::setFrequenzIndex(int i) {
    if (setzen(frequenzIndex_, i, &AppModell::frequenzIndexGeaendert)) emit aktuellGeaendert();
}

void AppModell::setGangVon(double mhz) {
    setzen(gangVon_, mhz, &AppModell::gangVonGeaendert);
}
void AppModell::setGangBis(double mhz) {
    setzen(gangBis_, mhz, &AppModell::gangBisGeaendert);
}
void AppModell::setGangPunkte(int n) {
    setzen(gangPunkte_, n, &AppModell::gangPunkteGeaendert);
}
void AppModell::setKernKennung(const std::string& kennung) {
    setzen(kernKennung_, kennung, &AppModell::kernKennungGeaendert);
}
void AppModell::setZiele(const Ziele& z) {
    setzen(ziele_, z, &AppModell::zieleGeaendert);
}
void AppModell::setAutomatisch(bool an) {
    setzen(automatisch_, an, &AppModell::automatischGeaendert);
}
void AppModell::setZeigeSelbsttest(bool an) {
    setzen(zeigeSelbsttest_, an, &AppModell::zeigeSelbsttestGeaendert);
}
void AppModell::setFeldLeistung(double watt) {
    setzen(feldLeistung_, watt, &AppModell::feldLeistungGeaendert);
}
void AppModell::setFeldHoehe(double meter) {
    setzen(feldHoehe_, meter, &AppModell::feldHoeheGeaendert);
}
void AppModell::setFeldHalb(double meter) {
    setzen(feldHalb_, meter, &AppModell::feldHalbGeaendert);
}
void AppModell::setFeldPunkte(int n) {
    setzen(feldPunkte_, n, &AppModell::feldPunkteGeaendert);
}

void AppModell::setDatei(OptionalerPfad d) {
    setzen(datei_, std::move(d), &AppModell::dateiGeaendert);
}
void AppModell::setErgebnis(OptionalesErgebnis e) {
    if (setzen(ergebnis_, std::move(e), &AppModell::ergebnisGeaendert)) emit aktuellGeaendert();
}
void AppModell::setFehler(OptionalerText f) {
    setzen(fehler_, std::move(f), &AppModell::fehlerGeaendert);
}
void AppModell::setRechnetGerade(bool an) {
    setzen(rechnetGerade_, an, &AppModell::rechnetGeradeGeaendert);
}
void AppModell::setGang(Frequenzpunkte g) {
    setzen(gang_, std::move(g), &AppModell::gangGeaendert);
}
void AppModell::setKerne(Kerne k) {
    setzen(kerne_, std::move(k), &AppModell::kerneGeaendert);
}
void AppModell::setOptimierer(OptimiererZeiger o) {
    setzen(optimierer_, std::move(o), &AppModell::optimiererGeaendert);
}
void AppModell::setOptVerlauf(OptVerlauf v) {
    setzen(optVerlauf_, std::move(v), &AppModell::optVerlaufGeaendert);
}
void AppModell::setOptWerte(NECKern::Werte w) {
    setzen(optWerte_, std::move(w), &AppModell::optWerteGeaendert);
}
void AppModell::setRechenAuftrag(AuftragZeiger a) {
    setzen(rechenAuftrag_, std::move(a), &AppModell::rechenAuftragGeaendert);
}
void AppModell::setBeispielVorlage(OptionalesModell m) {
    setzen(beispielVorlage_, std::move(m), &AppModell::beispielVorlageGeaendert);
}
void AppModell::setGegenprobe(OptionaleGegenprobe g) {
    setzen(gegenprobe_, std::move(g), &AppModell::gegenprobeGeaendert);
}
void AppModell::setBefunde(Befunde b) {
    setzen(befunde_, std::move(b), &AppModell::befundeGeaendert);
}
void AppModell::setGuete(OptionaleZahl g) {
    setzen(guete_, std::move(g), &AppModell::gueteGeaendert);
}
void AppModell::setGueteLaeuft(bool an) {
    setzen(gueteLaeuft_, an, &AppModell::gueteLaeuftGeaendert);
}
void AppModell::setGueteAuftrag(AuftragZeiger a) {
    setzen(gueteAuftrag_, std::move(a), &AppModell::gueteAuftragGeaendert);
}
void AppModell::setSelbsttest(Selbsttestzeilen z) {
    setzen(selbsttest_, std::move(z), &AppModell::selbsttestGeaendert);
}
void AppModell::setSelbsttestLaeuft(bool an) {
    setzen(selbsttestLaeuft_, an, &AppModell::selbsttestLaeuftGeaendert);
}
void AppModell::setFeld(OptionalesFeld f) {
    setzen(feld_, std::move(f), &AppModell::feldGeaendert);
}
void AppModell::setFeldLaeuft(bool an) {
    setzen(feldLaeuft_, an, &AppModell::feldLaeuftGeaendert);
}
void AppModell::setInstallation(OptionalerText t) {
    setzen(installation_, std::move(t), &AppModell::installationGeaendert);
}
void AppModell::setGangFortschritt(Fortschritt f) {
    setzen(gangFortschritt_, f, &AppModell::gangFortschrittGeaendert);
}

// --- Abgeleitetes ---------------------------------------------------------

const NECKern::FrequenzErgebnis* AppModell::aktuell() const {
    if (!ergebnis_ || ergebnis_->frequenzen.empty() || frequenzIndex_ < 0) return nullptr;
    const auto letzter = ergebnis_->frequenzen.size() - 1;
    return &ergebnis_->frequenzen[std::min(static_cast<std::size_t>(frequenzIndex_), letzter)];
}

NECKern::KernZeiger AppModell::kernWaehlen() const {
    for (const auto& k : kerne_)
        if (k && k->kennung() == kernKennung_ && k->verfuegbar()) return k;
    return umgebung_.nec2c();
}

std::optional<NECKern::Urteile::SwrAnzeige> AppModell::swrAnzeige() const {
    const auto* f = aktuell();
    if (!f) return std::nullopt;
    return NECKern::Urteile::swr(*f, modell_.z0);
}

std::optional<NECKern::Urteile::GegenprobeUrteil> AppModell::gegenprobeUrteil() const {
    if (!gegenprobe_) return std::nullopt;
    const auto* f = aktuell();
    return NECKern::Urteile::gegenprobe(f ? std::optional(*f) : std::nullopt, *gegenprobe_);
}

std::optional<NECKern::Urteile::GueteUrteil> AppModell::gueteUrteil() const {
    if (!guete_) return std::nullopt;
    return NECKern::Urteile::guete(*guete_);
}

Kerne AppModell::kerneFinden() {
    return NECKern::Kernliste::kerneFinden();
}

OptionalerPfad AppModell::zirkonEingebettet() {
    return NECKern::Kernliste::zirkonEingebettet();
}

// --- Dokument -------------------------------------------------------------

void AppModell::beispiel(const NECKern::Modell& m) {
    modellSpeichern(m, Schritt::neuerVerlauf);
    gespeichertSetzen(m);
    setBeispielVorlage(m);
    setDatei(std::nullopt);
    try {
        const double start = m.frequenzen().start;
        setGangVon(std::round(start * 0.96 * 100) / 100);
        setGangBis(std::round(start * 1.04 * 100) / 100);
        auto z = ziele_;
        for (auto& ziel : z)
            ziel.mhz = start;
        setZiele(z);
    } catch (const std::exception&) {
        // Ohne lesbare Frequenzkarte bleiben Bereich und Ziele, wie sie sind.
    }
    setGang({});
    rechnen(false);
}

void AppModell::oeffnen() {
    if (!dateiwahl_) return;
    if (auto pfad = dateiwahl_(false, {})) oeffnen(*pfad);
}

bool AppModell::oeffnen(const std::filesystem::path& pfad) {
    auto text = dateiLesen(pfad);
    if (!text) return false;
    auto m = NECKern::Modell::lesen(*text, pfad.stem().string());
    modellSpeichern(m, Schritt::neuerVerlauf);
    gespeichertSetzen(m);
    setBeispielVorlage(std::nullopt);
    setDatei(pfad);
    rechnen(false);
    return true;
}

void AppModell::speichern(bool unter) {
    OptionalerPfad ziel = unter ? std::nullopt : datei_;
    if (!ziel && dateiwahl_) ziel = dateiwahl_(true, modell_.name + ".nec");
    if (!ziel) return;
    QSaveFile datei(QString::fromStdString(ziel->string()));
    if (!datei.open(QIODevice::WriteOnly)) return;
    const auto text = modell_.schreiben();
    if (datei.write(text.data(), static_cast<qint64>(text.size())) != static_cast<qint64>(text.size())) {
        datei.cancelWriting();
        return;
    }
    if (!datei.commit()) return;
    gespeichertSetzen(modell_);
    setDatei(ziel);
}

void AppModell::rueckgaengig() {
    const bool konnteZurueck = kannRueckgaengig();
    const bool konnteVor = kannWiederholen();
    auto vorher = verlauf_.zurueck(modell_);
    if (!vorher) return;
    verlaufGemeldet(konnteZurueck, konnteVor);
    modellSpeichern(*vorher, Schritt::ohneVerlauf);
}

void AppModell::wiederholen() {
    const bool konnteZurueck = kannRueckgaengig();
    const bool konnteVor = kannWiederholen();
    auto nachher = verlauf_.vor(modell_);
    if (!nachher) return;
    verlaufGemeldet(konnteZurueck, konnteVor);
    modellSpeichern(*nachher, Schritt::ohneVerlauf);
}
