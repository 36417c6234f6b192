#pragma once

#include "Modell/Auftrag.hpp"
#include "Modell/FeldErgebnis.hpp"
#include "Modell/Hintergrund.hpp"
#include "Modell/Verlauf.hpp"

#include "NECKern/Analyse.hpp"
#include "NECKern/Ergebnis.hpp"
#include "NECKern/Modell.hpp"
#include "NECKern/Modellpruefung.hpp"
#include "NECKern/Optimierer.hpp"
#include "NECKern/Rechenkerne/Rechenkern.hpp"
#include "NECKern/Selbsttest.hpp"
#include "NECKern/Urteile.hpp"

#include <QObject>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// Die Typen der beobachteten Felder, mit Namen, die moc lesen kann.
using OptionalerPfad = std::optional<std::filesystem::path>;
using OptionalesErgebnis = std::optional<NECKern::NECErgebnis>;
using OptionalerText = std::optional<std::string>;
using OptionalesModell = std::optional<NECKern::Modell>;
using OptionaleZahl = std::optional<double>;
using OptionaleGegenprobe = std::optional<NECKern::Urteile::Gegenprobe>;
using OptionalesFeld = std::optional<FeldErgebnis>;
using Frequenzpunkte = std::vector<NECKern::Frequenzpunkt>;
using Kerne = std::vector<NECKern::KernZeiger>;
using Ziele = std::vector<NECKern::Ziel>;
using Befunde = std::vector<NECKern::Befund>;
using Selbsttestzeilen = std::vector<NECKern::Selbsttest::Zeile>;
using OptimiererZeiger = std::shared_ptr<NECKern::Optimierer>;
using AuftragZeiger = std::shared_ptr<Auftrag>;

// Ein Schritt des Optimierers für seinen Verlauf.
struct OptSchritt {
    int schritt = 0;
    double kosten = 0;
    bool operator==(const OptSchritt&) const = default;
};
using OptVerlauf = std::vector<OptSchritt>;

// Gerechnete Punkte von allen Punkten des laufenden Frequenzgangs.
struct Fortschritt {
    int fertig = 0;
    int gesamt = 0;
    bool operator==(const Fortschritt&) const = default;
};

// Das eine Objekt der Anwendung: das offene Modell, der gewählte Kern, das letzte
// Ergebnis und alles daraus Abgeleitete. Es treibt den Rechengang und die
// Nebenrechnungen; die Seiten lesen seine Felder und rufen seine Operationen.
// Jedes Feld wird nur auf dem Hauptthread gelesen und geschrieben; Kernläufe
// laufen auf eigenen Threads und melden sich über die Ereignisschleife zurück.
class AppModell : public QObject {
    Q_OBJECT
    Q_PROPERTY(NECKern::Modell modell READ modell WRITE setModell NOTIFY modellGeaendert)
    Q_PROPERTY(OptionalerPfad datei READ datei NOTIFY dateiGeaendert)
    Q_PROPERTY(OptionalesErgebnis ergebnis READ ergebnis NOTIFY ergebnisGeaendert)
    Q_PROPERTY(int frequenzIndex READ frequenzIndex WRITE setFrequenzIndex NOTIFY frequenzIndexGeaendert)
    Q_PROPERTY(OptionalerText fehler READ fehler NOTIFY fehlerGeaendert)
    Q_PROPERTY(bool rechnetGerade READ rechnetGerade NOTIFY rechnetGeradeGeaendert)
    Q_PROPERTY(Frequenzpunkte gang READ gang NOTIFY gangGeaendert)
    Q_PROPERTY(double gangVon READ gangVon WRITE setGangVon NOTIFY gangVonGeaendert)
    Q_PROPERTY(double gangBis READ gangBis WRITE setGangBis NOTIFY gangBisGeaendert)
    Q_PROPERTY(int gangPunkte READ gangPunkte WRITE setGangPunkte NOTIFY gangPunkteGeaendert)
    Q_PROPERTY(Kerne kerne READ kerne NOTIFY kerneGeaendert)
    Q_PROPERTY(std::string kernKennung READ kernKennung WRITE setKernKennung NOTIFY kernKennungGeaendert)
    Q_PROPERTY(Ziele ziele READ ziele WRITE setZiele NOTIFY zieleGeaendert)
    Q_PROPERTY(OptimiererZeiger optimierer READ optimierer NOTIFY optimiererGeaendert)
    Q_PROPERTY(OptVerlauf optVerlauf READ optVerlauf NOTIFY optVerlaufGeaendert)
    Q_PROPERTY(NECKern::Werte optWerte READ optWerte NOTIFY optWerteGeaendert)
    Q_PROPERTY(bool automatisch READ automatisch WRITE setAutomatisch NOTIFY automatischGeaendert)
    Q_PROPERTY(AuftragZeiger rechenAuftrag READ rechenAuftrag NOTIFY rechenAuftragGeaendert)
    Q_PROPERTY(OptionalesModell beispielVorlage READ beispielVorlage NOTIFY beispielVorlageGeaendert)
    Q_PROPERTY(OptionaleGegenprobe gegenprobe READ gegenprobe NOTIFY gegenprobeGeaendert)
    Q_PROPERTY(Befunde befunde READ befunde NOTIFY befundeGeaendert)
    Q_PROPERTY(OptionaleZahl guete READ guete NOTIFY gueteGeaendert)
    Q_PROPERTY(bool gueteLaeuft READ gueteLaeuft NOTIFY gueteLaeuftGeaendert)
    Q_PROPERTY(AuftragZeiger gueteAuftrag READ gueteAuftrag NOTIFY gueteAuftragGeaendert)
    Q_PROPERTY(Selbsttestzeilen selbsttest READ selbsttest NOTIFY selbsttestGeaendert)
    Q_PROPERTY(bool selbsttestLaeuft READ selbsttestLaeuft NOTIFY selbsttestLaeuftGeaendert)
    Q_PROPERTY(
        bool zeigeSelbsttest READ zeigeSelbsttest WRITE setZeigeSelbsttest NOTIFY zeigeSelbsttestGeaendert)
    Q_PROPERTY(double feldLeistung READ feldLeistung WRITE setFeldLeistung NOTIFY feldLeistungGeaendert)
    Q_PROPERTY(double feldHoehe READ feldHoehe WRITE setFeldHoehe NOTIFY feldHoeheGeaendert)
    Q_PROPERTY(double feldHalb READ feldHalb WRITE setFeldHalb NOTIFY feldHalbGeaendert)
    Q_PROPERTY(int feldPunkte READ feldPunkte WRITE setFeldPunkte NOTIFY feldPunkteGeaendert)
    Q_PROPERTY(OptionalesFeld feld READ feld NOTIFY feldGeaendert)
    Q_PROPERTY(bool feldLaeuft READ feldLaeuft NOTIFY feldLaeuftGeaendert)
    Q_PROPERTY(OptionalerText installation READ installation NOTIFY installationGeaendert)
    Q_PROPERTY(bool kannRueckgaengig READ kannRueckgaengig NOTIFY kannRueckgaengigGeaendert)
    Q_PROPERTY(bool kannWiederholen READ kannWiederholen NOTIFY kannWiederholenGeaendert)
    Q_PROPERTY(bool geaendert READ geaendert NOTIFY geaendertGeaendert)
    Q_PROPERTY(Fortschritt gangFortschritt READ gangFortschritt NOTIFY gangFortschrittGeaendert)

  public:
    // Was von aussen kommt: Kerne, Ordner, Programme. Tests setzen ihre eigenen.
    struct Umgebung {
        std::function<Kerne()> kerneFinden;
        std::function<NECKern::KernZeiger()> nec2c; // Gegenprobe und Ersatz für einen fehlenden Kern
        std::filesystem::path datenOrdner;          // …/Wellenwerk im Datenordner des Benutzers
        std::vector<std::filesystem::path> pythonKandidaten;
        std::filesystem::path shell = "/bin/zsh";
        int parallel = 1; // Kernläufe zugleich im Frequenzgang

        static Umgebung standard();
    };

    // Fragt nach einer Datei: speichern oder öffnen, mit vorgeschlagenem Namen.
    using Dateiwahl = std::function<OptionalerPfad(bool speichern, const std::string& vorschlag)>;

    static constexpr int optimiererSchritte = 200;

    explicit AppModell(QObject* eltern = nullptr);
    explicit AppModell(Umgebung umgebung, QObject* eltern = nullptr);
    // Hält alle Löser an, die dieses Objekt gestartet hat, und wartet auf ihre Threads.
    ~AppModell() override;

    // Beobachtete Felder.
    const NECKern::Modell& modell() const { return modell_; }
    void setModell(const NECKern::Modell& m);
    const OptionalerPfad& datei() const { return datei_; }
    const OptionalesErgebnis& ergebnis() const { return ergebnis_; }
    int frequenzIndex() const { return frequenzIndex_; }
    void setFrequenzIndex(int i);
    const OptionalerText& fehler() const { return fehler_; }
    bool rechnetGerade() const { return rechnetGerade_; }
    const Frequenzpunkte& gang() const { return gang_; }
    double gangVon() const { return gangVon_; }
    void setGangVon(double mhz);
    double gangBis() const { return gangBis_; }
    void setGangBis(double mhz);
    int gangPunkte() const { return gangPunkte_; }
    void setGangPunkte(int n);
    const Kerne& kerne() const { return kerne_; }
    const std::string& kernKennung() const { return kernKennung_; }
    void setKernKennung(const std::string& kennung);
    const Ziele& ziele() const { return ziele_; }
    void setZiele(const Ziele& z);
    const OptimiererZeiger& optimierer() const { return optimierer_; }
    const OptVerlauf& optVerlauf() const { return optVerlauf_; }
    const NECKern::Werte& optWerte() const { return optWerte_; }
    bool automatisch() const { return automatisch_; }
    void setAutomatisch(bool an);
    const AuftragZeiger& rechenAuftrag() const { return rechenAuftrag_; }
    const OptionalesModell& beispielVorlage() const { return beispielVorlage_; }
    const OptionaleGegenprobe& gegenprobe() const { return gegenprobe_; }
    const Befunde& befunde() const { return befunde_; }
    const OptionaleZahl& guete() const { return guete_; }
    bool gueteLaeuft() const { return gueteLaeuft_; }
    const AuftragZeiger& gueteAuftrag() const { return gueteAuftrag_; }
    const Selbsttestzeilen& selbsttest() const { return selbsttest_; }
    bool selbsttestLaeuft() const { return selbsttestLaeuft_; }
    bool zeigeSelbsttest() const { return zeigeSelbsttest_; }
    void setZeigeSelbsttest(bool an);
    double feldLeistung() const { return feldLeistung_; }
    void setFeldLeistung(double watt);
    double feldHoehe() const { return feldHoehe_; }
    void setFeldHoehe(double meter);
    double feldHalb() const { return feldHalb_; }
    void setFeldHalb(double meter);
    int feldPunkte() const { return feldPunkte_; }
    void setFeldPunkte(int n);
    const OptionalesFeld& feld() const { return feld_; }
    bool feldLaeuft() const { return feldLaeuft_; }
    const OptionalerText& installation() const { return installation_; }
    bool kannRueckgaengig() const { return verlauf_.kannZurueck(); }
    bool kannWiederholen() const { return verlauf_.kannVor(); }
    bool geaendert() const { return geaendert_; }
    const Fortschritt& gangFortschritt() const { return gangFortschritt_; }

    // Abgeleitet: die gezeigte Frequenz (nichts ohne Ergebnis oder ohne Frequenzen).
    const NECKern::FrequenzErgebnis* aktuell() const;
    // Der gewählte Kern, wie ihn der nächste Lauf nimmt.
    NECKern::KernZeiger kernWaehlen() const;
    // Die Urteile der Ergebnisseite; nichts, solange es nichts zu beurteilen gibt.
    std::optional<NECKern::Urteile::SwrAnzeige> swrAnzeige() const;
    std::optional<NECKern::Urteile::GegenprobeUrteil> gegenprobeUrteil() const;
    std::optional<NECKern::Urteile::GueteUrteil> gueteUrteil() const;
    // Läuft gerade eine Rechnung, die rechnungAbbrechen() beenden kann?
    bool rechnungLaeuft() const;

    static Kerne kerneFinden();
    static OptionalerPfad zirkonEingebettet();

    // Dokument.
    void setDateiwahl(Dateiwahl wahl) { dateiwahl_ = std::move(wahl); }
    void beispiel(const NECKern::Modell& m);
    void oeffnen();
    // Liest die Datei und rechnet; false, wenn sie nicht lesbar ist (dann ändert sich nichts).
    bool oeffnen(const std::filesystem::path& pfad);
    void speichern(bool unter);
    void rueckgaengig();
    void wiederholen();

    // Rechengang und Nebenrechnungen.
    void rechnen(bool verzoegert);
    // Der Knopf „Abbrechen“: beendet die Löser des Rechengangs, des Frequenzgangs und
    // der Feldstärke sofort; das vorige Ergebnis bleibt stehen.
    void rechnungAbbrechen();
    void frequenzgangRechnen();
    void optimieren();
    void optimierungAbbrechen();
    void optimierungUebernehmen();
    void gueteRechnen(const NECKern::Modell& m, const NECKern::KernZeiger& kern, double mhz,
                      const std::vector<NECKern::Segment>& segmente);
    void selbsttestStarten();
    void feldRechnen();
    void zirkonInstallieren();

  signals:
    void modellGeaendert();
    void dateiGeaendert();
    void ergebnisGeaendert();
    void frequenzIndexGeaendert();
    void fehlerGeaendert();
    void rechnetGeradeGeaendert();
    void gangGeaendert();
    void gangVonGeaendert();
    void gangBisGeaendert();
    void gangPunkteGeaendert();
    void kerneGeaendert();
    void kernKennungGeaendert();
    void zieleGeaendert();
    void optimiererGeaendert();
    void optVerlaufGeaendert();
    void optWerteGeaendert();
    void automatischGeaendert();
    void rechenAuftragGeaendert();
    void beispielVorlageGeaendert();
    void gegenprobeGeaendert();
    void befundeGeaendert();
    void gueteGeaendert();
    void gueteLaeuftGeaendert();
    void gueteAuftragGeaendert();
    void selbsttestGeaendert();
    void selbsttestLaeuftGeaendert();
    void zeigeSelbsttestGeaendert();
    void feldLeistungGeaendert();
    void feldHoeheGeaendert();
    void feldHalbGeaendert();
    void feldPunkteGeaendert();
    void feldGeaendert();
    void feldLaeuftGeaendert();
    void installationGeaendert();
    void kannRueckgaengigGeaendert();
    void kannWiederholenGeaendert();
    void geaendertGeaendert();
    void gangFortschrittGeaendert();
    // Nach ergebnisGeaendert oder frequenzIndexGeaendert: aktuell() kann anders sein.
    void aktuellGeaendert();

  private:
    // Speichert ein Feld nur, wenn der Wert anders ist, und meldet es dann.
    template <typename T, typename U> bool setzen(T& feld, U&& wert, void (AppModell::*signal)()) {
        if (feld == wert) return false;
        feld = std::forward<U>(wert);
        emit(this->*signal)();
        return true;
    }

    enum class Schritt { merken, ohneVerlauf, neuerVerlauf };
    void modellSpeichern(const NECKern::Modell& m, Schritt schritt);
    void verlaufGemeldet(bool konnteZurueck, bool konnteVor);
    void gespeichertSetzen(const NECKern::Modell& m);
    void geaendertPruefen();

    void setDatei(OptionalerPfad d);
    void setErgebnis(OptionalesErgebnis e);
    void setFehler(OptionalerText f);
    void setRechnetGerade(bool an);
    void setGang(Frequenzpunkte g);
    void setKerne(Kerne k);
    void setOptimierer(OptimiererZeiger o);
    void setOptVerlauf(OptVerlauf v);
    void setOptWerte(NECKern::Werte w);
    void setRechenAuftrag(AuftragZeiger a);
    void setBeispielVorlage(OptionalesModell m);
    void setGegenprobe(OptionaleGegenprobe g);
    void setBefunde(Befunde b);
    void setGuete(OptionaleZahl g);
    void setGueteLaeuft(bool an);
    void setGueteAuftrag(AuftragZeiger a);
    void setSelbsttest(Selbsttestzeilen z);
    void setSelbsttestLaeuft(bool an);
    void setFeld(OptionalesFeld f);
    void setFeldLaeuft(bool an);
    void setInstallation(OptionalerText t);
    void setGangFortschritt(Fortschritt f);

    // Die Schritte des Rechengangs, jeweils nach einem Warten.
    void zyklusBeginnen(const AuftragZeiger& auftrag, const NECKern::Modell& kopie,
                        const NECKern::KernZeiger& kern);
    void zyklusErgebnis(const AuftragZeiger& auftrag, const NECKern::Modell& kopie,
                        const NECKern::KernZeiger& kern, const std::string& deck,
                        Ausgang<NECKern::NECErgebnis> ausgang);
    void gegenprobeStarten(const AuftragZeiger& auftrag, const std::string& deck);

    Umgebung umgebung_;
    Dateiwahl dateiwahl_;

    NECKern::Modell modell_;
    OptionalerPfad datei_;
    OptionalesErgebnis ergebnis_;
    int frequenzIndex_ = 0;
    OptionalerText fehler_;
    bool rechnetGerade_ = false;
    Frequenzpunkte gang_;
    double gangVon_ = 13.8;
    double gangBis_ = 14.6;
    int gangPunkte_ = 41;
    Kerne kerne_;
    std::string kernKennung_ = "nec2c";
    Ziele ziele_;
    OptimiererZeiger optimierer_;
    OptVerlauf optVerlauf_;
    NECKern::Werte optWerte_;
    bool automatisch_ = true;
    AuftragZeiger rechenAuftrag_;
    OptionalesModell beispielVorlage_;
    OptionaleGegenprobe gegenprobe_;
    Befunde befunde_;
    OptionaleZahl guete_;
    bool gueteLaeuft_ = false;
    AuftragZeiger gueteAuftrag_;
    Selbsttestzeilen selbsttest_;
    bool selbsttestLaeuft_ = false;
    bool zeigeSelbsttest_ = false;
    double feldLeistung_ = 100.0;
    double feldHoehe_ = 2.0;
    double feldHalb_ = 15.0;
    int feldPunkte_ = 31;
    OptionalesFeld feld_;
    bool feldLaeuft_ = false;
    OptionalerText installation_;

    Verlauf verlauf_;
    NECKern::Modell gespeichert_; // zuletzt geladen, geöffnet oder gesichert
    bool geaendert_ = false;
    Fortschritt gangFortschritt_;
    // Aufträge ohne eigenes Feld, damit der Knopf „Abbrechen“ ihre Löser erreicht.
    std::vector<std::weak_ptr<Auftrag>> nebenAuftraege_;
    AuftragZeiger selbsttestAuftrag_;
    // Zuletzt: ihr Abbau wartet auf alle Threads, bevor die Felder oben vergehen.
    Hintergrund hintergrund_{*this};
};
