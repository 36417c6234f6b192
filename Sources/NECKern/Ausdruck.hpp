#pragma once

#include "NECKern/Werte.hpp"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// Formeln in Variablen und Kartenfeldern: + - * / ^, Klammern, Funktionen,
// die Konstanten pi und c0 und die Einheiten mm, cm, in und ft direkt nach einer Zahl.
// Über 200 Ebenen aus Klammern, Funktionen, Vorzeichen und Potenzen hinaus wird
// nicht gelesen ("Ausdruck zu tief verschachtelt"), damit kein Text den Stapel sprengt.
// Typografische Rechenzeichen (− – × · ⋅ ÷) sind keine Operatoren; nach einem Wert
// meldet sie der Leser als "Unerwartetes Zeichen" statt als unerwarteten Rest.
namespace NECKern::Ausdruck {

class Fehler : public std::runtime_error {
  public:
    explicit Fehler(const std::string& meldung) : std::runtime_error(meldung) {}
    std::string description() const { return what(); }
};

// Wertet eine Formel aus. Namen zählen ohne Rücksicht auf Gross- und Kleinschreibung,
// daher müssen die Schlüssel der Variablen klein geschrieben sein.
double auswerten(std::string_view text, const Werte& variablen);

// Der Leser einer Auswertung: Zeichen (im Sinne des Benutzers) des vorbereiteten
// Texts, die Position und die Variablen. Jede Grammatikstufe liest ab der Position.
class Leser {
  public:
    // vorbereitet: schon klein geschrieben und ohne Leerzeichen.
    Leser(std::string vorbereitet, const Werte& variablen);

    double summe();   // produkt { (+|-) produkt }
    double produkt(); // potenz { (*|/) potenz }
    double potenz();  // einheit [ ^ potenz ], von rechts gruppiert
    double einheit(); // Vorzeichen, Klammer, Zahl oder Name

    bool amEnde() const { return pos_ >= anzahl_; }
    std::string_view rest() const { return abschnitt(pos_, anzahl_); }

  private:
    std::string text_;
    // Byte-Anfang jedes Zeichens und zuletzt das Textende. Leer, wenn jedes Byte
    // ein Zeichen ist (reines ASCII ohne CR LF): dann spart der Leser die Zerlegung.
    std::vector<std::size_t> grenzen_;
    std::size_t anzahl_ = 0;
    std::size_t pos_ = 0;
    int tiefe_ = 0;
    const Werte& variablen_;

    std::size_t byte(std::size_t i) const { return grenzen_.empty() ? i : grenzen_[i]; }
    std::string_view abschnitt(std::size_t von, std::size_t bis) const {
        return std::string_view(text_).substr(byte(von), byte(bis) - byte(von));
    }
    std::string_view zeichen(std::size_t i) const {
        return i < anzahl_ ? abschnitt(i, i + 1) : std::string_view();
    }
    bool ist(std::string_view z) const { return zeichen(pos_) == z; }

    double tiefer(double (Leser::*stufe)());
    double zahl();
    double einheitenFaktor();
    double name();
};

} // namespace NECKern::Ausdruck
