#pragma once

#include "NECKern/Werte.hpp"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// Formeln in Kartenfeldern und SY-Zeilen: + - * / ^, Klammern, Funktionen,
// pi und c0, Einheiten mm cm in ft direkt nach einer Zahl.
namespace NECKern::Ausdruck {

class Fehler : public std::runtime_error {
  public:
    explicit Fehler(const std::string& text) : std::runtime_error(text) {}
    const char* description() const noexcept { return what(); }
};

// Zustand einer Auswertung: die Zeichen des vorbereiteten Texts, die Stelle und die Variablen.
class Leser {
  public:
    Leser(std::vector<std::string> zeichen, const Werte& variablen);

    double summe();
    double produkt();
    double potenz();
    double einheit();

    bool amEnde() const { return pos_ >= zeichen_.size(); }
    std::string rest() const;

  private:
    double zahl();
    double name();
    double funktion(const std::string& name, double argument) const;
    bool ist(std::size_t stelle, std::string_view z) const;
    bool buchstabeBei(std::size_t stelle) const;

    std::vector<std::string> zeichen_;
    std::size_t pos_ = 0;
    const Werte& variablen_;
    int tiefe_ = 0;
};

// Wertet eine Formel aus; die Variablen sind nach kleingeschriebenem Namen abgelegt.
double auswerten(std::string_view text, const Werte& variablen);

} // namespace NECKern::Ausdruck
