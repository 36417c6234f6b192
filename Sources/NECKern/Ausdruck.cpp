#include "NECKern/Ausdruck.hpp"

#include "NECKern/Unicode.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace NECKern::Ausdruck {

namespace {

constexpr double pi = 3.141592653589793;
constexpr double lichtgeschwindigkeit = 299.792458;
// Schützt den Stapel vor Eingaben wie 100 000 öffnenden Klammern.
constexpr int maximaleTiefe = 256;

bool istAsciiZiffer(std::string_view z) {
    return z.size() == 1 && z[0] >= '0' && z[0] <= '9';
}

// Wie die C-Umwandlung: ein zu grosser Wert wird unendlich, ein zu kleiner null.
bool umwandeln(const std::string& text, double& wert) {
    const char* ende = text.data() + text.size();
    auto [zeiger, fehler] = std::from_chars(text.data(), ende, wert, std::chars_format::general);
    if (zeiger != ende || text.empty()) return false;
    if (fehler == std::errc()) return true;
    if (fehler != std::errc::result_out_of_range) return false;
    auto e = text.find('e');
    bool klein = false;
    if (e != std::string::npos) {
        klein = text.compare(e + 1, 1, "-") == 0;
    } else {
        auto ganzteil = text.substr(0, text.find('.'));
        klein = ganzteil.find_first_not_of('0') == std::string::npos;
    }
    wert = klein ? 0.0 : HUGE_VAL;
    return true;
}

bool bekanntesZeichen(const std::string& z) {
    if (z.size() == 1 && std::string_view("+-*/^()._").find(z[0]) != std::string_view::npos) return true;
    return Unicode::istBuchstabe(z) || Unicode::istZiffer(z);
}

} // namespace

Leser::Leser(std::vector<std::string> zeichen, const Werte& variablen)
    : zeichen_(std::move(zeichen)), variablen_(variablen) {}

std::string Leser::rest() const {
    std::string s;
    for (std::size_t i = pos_; i < zeichen_.size(); ++i)
        s += zeichen_[i];
    return s;
}

bool Leser::ist(std::size_t stelle, std::string_view z) const {
    return stelle < zeichen_.size() && zeichen_[stelle] == z;
}

bool Leser::buchstabeBei(std::size_t stelle) const {
    return stelle < zeichen_.size() && Unicode::istBuchstabe(zeichen_[stelle]);
}

double Leser::summe() {
    double wert = produkt();
    while (ist(pos_, "+") || ist(pos_, "-")) {
        bool plus = zeichen_[pos_++] == "+";
        double rechts = produkt();
        wert = plus ? wert + rechts : wert - rechts;
    }
    return wert;
}

double Leser::produkt() {
    double wert = potenz();
    while (ist(pos_, "*") || ist(pos_, "/")) {
        bool mal = zeichen_[pos_++] == "*";
        double rechts = potenz();
        wert = mal ? wert * rechts : wert / rechts;
    }
    return wert;
}

double Leser::potenz() {
    double basis = einheit();
    if (!ist(pos_, "^")) return basis;
    ++pos_;
    return std::pow(basis, potenz());
}

double Leser::einheit() {
    if (amEnde()) throw Fehler("Ausdruck endet zu frueh");
    if (++tiefe_ > maximaleTiefe) throw Fehler("Ausdruck zu tief verschachtelt");
    struct Ebene {
        int& tiefe;
        ~Ebene() { --tiefe; }
    } ebene{tiefe_};

    const std::string& z = zeichen_[pos_];
    if (z == "-") {
        ++pos_;
        return -einheit();
    }
    if (z == "+") {
        ++pos_;
        return einheit();
    }
    if (z == "(") {
        ++pos_;
        double wert = summe();
        if (!ist(pos_, ")")) throw Fehler("')' fehlt");
        ++pos_;
        return wert;
    }
    if (istAsciiZiffer(z) || z == ".") return zahl();
    if (z == "_" || Unicode::istBuchstabe(z)) return name();
    throw Fehler("Unerwartetes Zeichen '" + z + "'");
}

double Leser::zahl() {
    std::string text;
    while (pos_ < zeichen_.size() && (istAsciiZiffer(zeichen_[pos_]) || zeichen_[pos_] == "."))
        text += zeichen_[pos_++];
    bool exponent =
        ist(pos_, "e") && pos_ + 1 < zeichen_.size() &&
        (istAsciiZiffer(zeichen_[pos_ + 1]) || zeichen_[pos_ + 1] == "-" || zeichen_[pos_ + 1] == "+");
    if (exponent) {
        text += zeichen_[pos_++];
        if (ist(pos_, "-") || ist(pos_, "+")) text += zeichen_[pos_++];
        while (pos_ < zeichen_.size() && istAsciiZiffer(zeichen_[pos_]))
            text += zeichen_[pos_++];
    }
    double wert = 0;
    if (!umwandeln(text, wert)) throw Fehler("Zahl '" + text + "'");

    static constexpr std::array<std::pair<std::string_view, double>, 4> einheiten{
        {{"mm", 0.001}, {"cm", 0.01}, {"in", 0.0254}, {"ft", 0.3048}}};
    for (const auto& [kuerzel, faktor] : einheiten) {
        if (!ist(pos_, kuerzel.substr(0, 1)) || !ist(pos_ + 1, kuerzel.substr(1, 1)) ||
            buchstabeBei(pos_ + 2))
            continue;
        pos_ += 2;
        return wert * faktor;
    }
    return wert;
}

double Leser::name() {
    std::string text;
    while (pos_ < zeichen_.size() && (zeichen_[pos_] == "_" || Unicode::istBuchstabe(zeichen_[pos_]) ||
                                      Unicode::istZiffer(zeichen_[pos_])))
        text += zeichen_[pos_++];
    if (ist(pos_, "(")) {
        ++pos_;
        double argument = summe();
        if (!ist(pos_, ")")) throw Fehler("')' fehlt nach " + text);
        ++pos_;
        return funktion(text, argument);
    }
    if (text == "pi") return pi;
    if (text == "c0") return lichtgeschwindigkeit;
    auto it = variablen_.find(text);
    if (it == variablen_.end()) throw Fehler("Variable '" + text + "' unbekannt");
    return it->second;
}

double Leser::funktion(const std::string& name, double x) const {
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
    throw Fehler("Funktion '" + name + "' unbekannt");
}

double auswerten(std::string_view text, const Werte& variablen) {
    auto vorbereitet = Unicode::klein(Unicode::reparieren(text));
    std::erase(vorbereitet, ' ');
    Leser leser(Unicode::zeichen(vorbereitet), variablen);
    double wert = leser.summe();
    if (leser.amEnde()) return wert;
    // Ein Zeichen, das in keiner Formel vorkommen kann (× oder das Minuszeichen −), wird als solches
    // benannt; sonst zeigt die Meldung den ganzen unverstandenen Rest.
    auto rest = leser.rest();
    auto erstes = Unicode::zeichen(rest).front();
    if (!bekanntesZeichen(erstes)) throw Fehler("Unerwartetes Zeichen '" + erstes + "'");
    throw Fehler("Unerwartet: '" + rest + "' in '" + Unicode::reparieren(text) + "'");
}

} // namespace NECKern::Ausdruck
