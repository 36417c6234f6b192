#include "NECKern/Ausdruck.hpp"

#include "NECKern/Unicode.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace NECKern::Ausdruck {

namespace {

constexpr double pi = 3.141592653589793;
constexpr double c0 = 299.792458;
constexpr int maxTiefe = 200;

bool nurAscii(std::string_view s) {
    return std::all_of(s.begin(), s.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Ein Zeichen aus einem Byte wird direkt geprüft, alles andere über Unicode.
bool istZiffer(std::string_view z) {
    if (z.size() == 1) return z[0] >= '0' && z[0] <= '9';
    return Unicode::istZiffer(z);
}

bool istBuchstabe(std::string_view z) {
    if (z.size() == 1 && static_cast<unsigned char>(z[0]) < 0x80)
        return (z[0] >= 'a' && z[0] <= 'z') || (z[0] >= 'A' && z[0] <= 'Z');
    return Unicode::istBuchstabe(z);
}

// Typografische Rechenzeichen sind keine Operatoren. Wo ein Operator stehen könnte,
// werden sie als unerwartetes Zeichen gemeldet, damit der Benutzer sieht, welches Zeichen stört.
bool istTypografischesRechenzeichen(std::string_view z) {
    return z == "\u2212" || z == "\u2013" || z == "\u00d7" || z == "\u00b7" || z == "\u22c5" || z == "\u00f7";
}

// Klein schreiben, dann jedes Leerzeichen entfernen (nur das Leerzeichen, kein Tab).
std::string vorbereiten(std::string_view text) {
    std::string s;
    if (nurAscii(text)) {
        s.reserve(text.size());
        for (char c : text) {
            if (c == ' ') continue;
            s.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
        }
        return s;
    }
    s = Unicode::klein(text);
    std::erase(s, ' ');
    return s;
}

// Ob eine Zahl, die nicht in double passt, zu gross ist (sonst zu klein): entscheidet die
// Zehnerpotenz ihrer ersten gültigen Ziffer. Der Text ist schon als Zahl erkannt.
bool zuGross(std::string_view text) {
    auto e = text.find('e');
    long long exponent = 0;
    if (e != std::string_view::npos) {
        auto teil = text.substr(e + 1);
        bool negativ = !teil.empty() && teil.front() == '-';
        if (!teil.empty() && (teil.front() == '-' || teil.front() == '+')) teil.remove_prefix(1);
        for (char c : teil)
            exponent = std::min(exponent * 10 + (c - '0'), 1'000'000'000LL);
        if (negativ) exponent = -exponent;
    }
    auto mantisse = text.substr(0, e);
    auto punkt = mantisse.find('.');
    auto vorn = mantisse.substr(0, punkt);
    auto erste = vorn.find_first_not_of('0');
    if (erste != std::string_view::npos)
        return static_cast<long long>(vorn.size() - erste) - 1 + exponent > 0;
    auto hinten = punkt == std::string_view::npos ? std::string_view() : mantisse.substr(punkt + 1);
    auto nullen = hinten.find_first_not_of('0');
    return -static_cast<long long>(nullen) - 1 + exponent > 0;
}

// Wie die Zahlumwandlung der C-Bibliothek: der ganze Text muss eine Zahl sein; was
// über den Bereich von double hinausgeht, wird unendlich oder null.
double umwandeln(std::string_view text) {
    double wert = 0;
    const char* ende = text.data() + text.size();
    auto [stelle, fehler] = std::from_chars(text.data(), ende, wert);
    if (stelle != ende || (fehler != std::errc() && fehler != std::errc::result_out_of_range))
        throw Fehler("Zahl '" + std::string(text) + "'");
    if (fehler == std::errc::result_out_of_range)
        return zuGross(text) ? std::numeric_limits<double>::infinity() : 0.0;
    return wert;
}

double funktion(std::string_view name, double x) {
    if (name == "sin") return std::sin(x);
    if (name == "cos") return std::cos(x);
    if (name == "tan") return std::tan(x);
    if (name == "atn" || name == "atan") return std::atan(x);
    if (name == "sind") return std::sin(x * pi / 180);
    if (name == "cosd") return std::cos(x * pi / 180);
    if (name == "tand") return std::tan(x * pi / 180);
    if (name == "sqr" || name == "sqrt") return std::sqrt(x);
    if (name == "log" || name == "ln") return std::log(x);
    if (name == "log10") return std::log10(x);
    if (name == "exp") return std::exp(x);
    if (name == "abs") return std::fabs(x);
    if (name == "int") return std::trunc(x);
    throw Fehler("Funktion '" + std::string(name) + "' unbekannt");
}

} // namespace

double auswerten(std::string_view text, const Werte& variablen) {
    Leser leser(vorbereiten(text), variablen);
    double wert = leser.summe();
    if (!leser.amEnde())
        throw Fehler("Unerwartet: '" + std::string(leser.rest()) + "' in '" + Unicode::reparieren(text) +
                     "'");
    return wert;
}

Leser::Leser(std::string vorbereitet, const Werte& variablen)
    : text_(std::move(vorbereitet)), variablen_(variablen) {
    if (nurAscii(text_) && text_.find("\r\n") == std::string::npos) {
        anzahl_ = text_.size();
        return;
    }
    text_ = Unicode::reparieren(text_);
    grenzen_.reserve(text_.size() + 1);
    std::size_t anfang = 0;
    for (const auto& z : Unicode::zeichen(text_)) {
        grenzen_.push_back(anfang);
        anfang += z.size();
    }
    grenzen_.push_back(anfang);
    anzahl_ = grenzen_.size() - 1;
}

double Leser::summe() {
    double wert = produkt();
    for (;;) {
        if (ist("+")) {
            ++pos_;
            wert += produkt();
        } else if (ist("-")) {
            ++pos_;
            wert -= produkt();
        } else if (istTypografischesRechenzeichen(zeichen(pos_))) {
            throw Fehler("Unerwartetes Zeichen '" + std::string(zeichen(pos_)) + "'");
        } else {
            return wert;
        }
    }
}

double Leser::produkt() {
    double wert = potenz();
    for (;;) {
        if (ist("*")) {
            ++pos_;
            wert *= potenz();
        } else if (ist("/")) {
            ++pos_;
            wert /= potenz();
        } else {
            return wert;
        }
    }
}

double Leser::potenz() {
    double basis = einheit();
    if (!ist("^")) return basis;
    ++pos_;
    return std::pow(basis, tiefer(&Leser::potenz));
}

double Leser::einheit() {
    if (amEnde()) throw Fehler("Ausdruck endet zu frueh");
    auto z = zeichen(pos_);
    if (z == "-") {
        ++pos_;
        return -tiefer(&Leser::einheit);
    }
    if (z == "+") {
        ++pos_;
        return tiefer(&Leser::einheit);
    }
    if (z == "(") {
        ++pos_;
        double wert = tiefer(&Leser::summe);
        if (!ist(")")) throw Fehler("')' fehlt");
        ++pos_;
        return wert;
    }
    if (istZiffer(z) || z == ".") return zahl();
    if (istBuchstabe(z) || z == "_") return name();
    throw Fehler("Unerwartetes Zeichen '" + std::string(z) + "'");
}

// Jede Verschachtelung kostet Stapel; tiefer als maxTiefe wird nicht gelesen.
double Leser::tiefer(double (Leser::*stufe)()) {
    if (tiefe_ >= maxTiefe) throw Fehler("Ausdruck zu tief verschachtelt");
    ++tiefe_;
    double wert = (this->*stufe)();
    --tiefe_;
    return wert;
}

double Leser::zahl() {
    auto anfang = pos_;
    while (istZiffer(zeichen(pos_)) || ist("."))
        ++pos_;
    auto nach = zeichen(pos_ + 1);
    if (ist("e") && (istZiffer(nach) || nach == "-" || nach == "+")) {
        pos_ += (nach == "-" || nach == "+") ? 2 : 1;
        while (istZiffer(zeichen(pos_)))
            ++pos_;
    }
    double wert = umwandeln(abschnitt(anfang, pos_));
    return wert * einheitenFaktor();
}

// Eine Einheit gilt nur direkt nach der Zahl und nur, wenn kein Buchstabe folgt.
double Leser::einheitenFaktor() {
    struct Einheit {
        std::string_view erstes, zweites;
        double faktor;
    };
    static constexpr Einheit einheiten[] = {
        {"m", "m", 0.001}, {"c", "m", 0.01}, {"i", "n", 0.0254}, {"f", "t", 0.3048}};
    for (const auto& e : einheiten) {
        if (zeichen(pos_) != e.erstes || zeichen(pos_ + 1) != e.zweites || istBuchstabe(zeichen(pos_ + 2)))
            continue;
        pos_ += 2;
        return e.faktor;
    }
    return 1.0;
}

double Leser::name() {
    auto anfang = pos_;
    for (auto z = zeichen(pos_); istBuchstabe(z) || istZiffer(z) || z == "_"; z = zeichen(pos_))
        ++pos_;
    auto name = abschnitt(anfang, pos_);
    if (ist("(")) {
        ++pos_;
        double argument = tiefer(&Leser::summe);
        if (!ist(")")) throw Fehler("')' fehlt nach " + std::string(name));
        ++pos_;
        return funktion(name, argument);
    }
    if (name == "pi") return pi;
    if (name == "c0") return c0;
    auto gefunden = variablen_.find(std::string(name));
    if (gefunden == variablen_.end()) throw Fehler("Variable '" + std::string(name) + "' unbekannt");
    return gefunden->second;
}

} // namespace NECKern::Ausdruck
