#include "NECKern/Beispiele.hpp"

#include <array>
#include <fmt/format.h>
#include <string>

namespace NECKern::Beispiele {

namespace {

using Punkt = std::array<std::string, 3>;

Karte draht(int tag, int segmente, const Punkt& von, const Punkt& bis, const std::string& radius) {
    return Karte("GW", {std::to_string(tag), std::to_string(segmente)},
                 {von[0], von[1], von[2], bis[0], bis[1], bis[2], radius});
}

// GE 1: Drähte dürfen den Boden berühren; GE 0: freier Raum.
Karte geometrieEnde(const std::string& boden) {
    return Karte("GE", {boden}, {});
}

Karte idealerBoden() {
    return Karte("GN", {"1", "0", "0", "0"}, {});
}

Karte frequenz() {
    return Karte("FR", {"0", "1", "0", "0"}, {"f", "0"});
}

// Ganze Kugel für Antennen im freien Raum; 72 Azimutschritte schliessen den Kreis.
Karte rpKugel() {
    return Karte("RP", {"0", "37", "72", "1000"}, {"0", "0", "5", "5"});
}

Karte kupfer() {
    return Karte("LD", {"5", "0", "0", "0"}, {"5.8e7"});
}

// Verlängerungsspule: Induktivität lspule in µH, Verlustwiderstand aus der Güte q.
Karte spule(int tag, const std::string& segment) {
    return Karte("LD", {"0", std::to_string(tag), segment, segment}, {"2*pi*f*lspule/q", "lspule*1e-6", "0"});
}

Karte ende() {
    return Karte("EN", {}, {});
}

Modell dipol() {
    return m("Halbwellendipol 20 m", {{"f", "14.175"}, {"l", "10.25"}, {"h", "10"}, {"rad", "1mm"}},
             {draht(1, 21, {"0", "-l/2", "h"}, {"0", "l/2", "h"}, "rad"), geometrieEnde("1"), boden(),
              ex(1, "11"), frequenz(), rp(), ende()});
}

// Kurzer Speisedraht in der Mitte, die Schenkel hängen um w Grad nach unten.
Modell invertedV() {
    return m("Inverted-V 40 m",
             {{"f", "7.1"}, {"arm", "10.1"}, {"h", "12"}, {"w", "45"}, {"g", "0.5"}, {"rad", "1mm"}},
             {draht(1, 1, {"0", "-g/2", "h"}, {"0", "g/2", "h"}, "rad"),
              draht(2, 15, {"0", "g/2", "h"}, {"0", "g/2+arm*cosd(w)", "h-arm*sind(w)"}, "rad"),
              draht(3, 15, {"0", "-g/2", "h"}, {"0", "-g/2-arm*cosd(w)", "h-arm*sind(w)"}, "rad"),
              geometrieEnde("1"), boden(), ex(1, "1"), frequenz(), rp(), ende()});
}

Modell yagi() {
    return m("3-Element-Yagi 20 m",
             {{"f", "14.15"},
              {"refl", "10.7"},
              {"dipl", "10.1"},
              {"dir", "9.55"},
              {"a1", "3.2"},
              {"a2", "3.0"},
              {"h", "15"},
              {"rad", "15mm"}},
             {draht(1, 21, {"-a1", "-refl/2", "h"}, {"-a1", "refl/2", "h"}, "rad"),
              draht(2, 21, {"0", "-dipl/2", "h"}, {"0", "dipl/2", "h"}, "rad"),
              draht(3, 21, {"a2", "-dir/2", "h"}, {"a2", "dir/2", "h"}, "rad"), geometrieEnde("1"), boden(),
              ex(2, "11"), frequenz(), rp(), ende()});
}

// GR vervielfacht den einen Radial; der Strahler kommt danach, sonst würde er mitgedreht.
Modell groundplane() {
    return m("Groundplane λ/4 mit Radials",
             {{"f", "28.5"},
              {"l", "c0/f/4*0.95"},
              {"rl", "c0/f/4"},
              {"nr", "4"},
              {"h", "6"},
              {"w", "45"},
              {"rad", "2mm"}},
             {draht(1, 9, {"0", "0", "h"}, {"rl*cosd(w)", "0", "h-rl*sind(w)"}, "rad"),
              Karte("GR", {"0", "nr"}, {}), draht(2, 9, {"0", "0", "h"}, {"0", "0", "h+l"}, "rad"),
              geometrieEnde("1"), boden(), ex(2, "1"), frequenz(), rp(), ende()});
}

// Die Schleife (Umfang 1,02 λ) ist bei f noch kapazitiv und hat um 110 Ω. Eine Spule
// macht sie resonant, eine λ/4-Leitung mit 75 Ω bringt sie auf 50 Ω. Die Quelle sitzt
// auf einem kurzen Hilfsdraht am anderen Leitungsende.
Modell quad() {
    return m("Quad-Schleife 20 m", {{"f", "14.15"}, {"s", "c0/f/4*1.02"}, {"h", "12"}, {"rad", "1mm"}},
             {draht(1, 9, {"0", "-s/2", "h"}, {"0", "s/2", "h"}, "rad"),
              draht(2, 9, {"0", "s/2", "h"}, {"0", "s/2", "h+s"}, "rad"),
              draht(3, 9, {"0", "s/2", "h+s"}, {"0", "-s/2", "h+s"}, "rad"),
              draht(4, 9, {"0", "-s/2", "h+s"}, {"0", "-s/2", "h"}, "rad"),
              draht(5, 1, {"0", "-5cm", "h-2"}, {"0", "5cm", "h-2"}, "rad"), geometrieEnde("1"), boden(),
              Karte("LD", {"0", "1", "5", "5"}, {"0", "0.95e-6", "0"}, "Abgleichspule für Resonanz"),
              Karte("TL", {"1", "5", "5", "1"}, {"75", "c0/f/4", "0", "0", "0", "0"},
                    "λ/4-Transformator 75 Ω zum Hilfsdraht mit der Quelle"),
              ex(5, "1"), frequenz(), rp(), ende()});
}

// Axialmodus: Umfang ≈ λ, Steigung λ/4. GM hebt die Wendel um z0 an, der Speisedraht
// führt vom idealen Boden hinauf. Die Wendel hat um 240 Ω; eine λ/4-Leitung mit 110 Ω
// bringt sie auf 50 Ω.
Modell helix() {
    return m(
        "Wendelantenne (Helix) 70 cm",
        {{"f", "435"},
         {"lam", "c0/f"},
         {"d", "lam/3.14"},
         {"ganghoehe", "lam/4"},
         {"windungen", "8"},
         {"z0", "2cm"},
         {"rad", "1mm"}},
        {Karte("GH", {"1", "120"}, {"ganghoehe", "ganghoehe*windungen", "d/2", "d/2", "d/2", "d/2", "rad"}),
         Karte("GM", {"0", "0"}, {"0", "0", "0", "0", "0", "z0", "0"}),
         draht(2, 1, {"d/2", "0", "0"}, {"d/2", "0", "z0"}, "rad"),
         draht(3, 1, {"-0.5", "-1cm", "10cm"}, {"-0.5", "1cm", "10cm"}, "rad"), geometrieEnde("1"),
         idealerBoden(),
         Karte("TL", {"2", "1", "3", "1"}, {"110", "c0/f/4", "0", "0", "0", "0"},
               "λ/4-Transformator 110 Ω zum Hilfsdraht mit der Quelle"),
         ex(3, "1"), frequenz(), rp(), ende()});
}

Modell dipol2m() {
    return vertikalDipol("Dipol 2 m (vertikal)", "145", "3mm");
}

Modell dipol70cm() {
    return vertikalDipol("Dipol 70 cm (vertikal)", "435", "2mm");
}

Modell yagi2m() {
    return yagi5("Yagi 2 m, 5 Elemente", {.f = "145",
                                          .refl = "1.013",
                                          .strahler = "0.982",
                                          .dir1 = "0.933",
                                          .dir2 = "0.937",
                                          .dir3 = "0.928",
                                          .a1 = "0.383",
                                          .a2 = "0.222",
                                          .a3 = "0.546",
                                          .a4 = "0.476",
                                          .rad = "2mm"});
}

Modell yagi70cm() {
    return yagi5("Yagi 70 cm, 5 Elemente", {.f = "435",
                                            .refl = "0.352",
                                            .strahler = "0.3315",
                                            .dir1 = "0.306",
                                            .dir2 = "0.305",
                                            .dir3 = "0.286",
                                            .a1 = "0.152",
                                            .a2 = "0.090",
                                            .a3 = "0.175",
                                            .a4 = "0.172",
                                            .rad = "2mm"});
}

// Unterer 5/8-λ-Teil, Phasenspule auf einem kurzen Draht, oberer Teil; vier waagrechte
// Radials am Fusspunkt, alles im freien Raum.
Modell kollinear70cm() {
    return m("Kollinear 70 cm, 2 × 5/8 λ",
             {{"f", "435"},
              {"lam", "c0/f"},
              {"unten", "lam*5/8"},
              {"spule", "3cm"},
              {"oben", "0.4163"},
              {"lphase", "158.7e-9"},
              {"rl", "lam/4"},
              {"rad", "1.5mm"}},
             {draht(1, 20, {"0", "0", "0"}, {"0", "0", "unten"}, "rad"),
              draht(2, 1, {"0", "0", "unten"}, {"0", "0", "unten+spule"}, "rad"),
              draht(3, 20, {"0", "0", "unten+spule"}, {"0", "0", "unten+spule+oben"}, "rad"),
              draht(4, 10, {"0", "0", "0"}, {"rl", "0", "0"}, "rad"),
              draht(5, 10, {"0", "0", "0"}, {"-rl", "0", "0"}, "rad"),
              draht(6, 10, {"0", "0", "0"}, {"0", "rl", "0"}, "rad"),
              draht(7, 10, {"0", "0", "0"}, {"0", "-rl", "0"}, "rad"), geometrieEnde("0"),
              Karte("LD", {"0", "2", "1", "1"}, {"0", "lphase", "0"}), ex(1, "1"), frequenz(), rpKugel(),
              ende()});
}

// Gehäuse 60 × 30 × 110 mm als zwölf Kantendrähte, Stab auf einer oberen Ecke. Die Spule
// sitzt im Fusspunktsegment; der Stabradius ist so gewählt, dass lspule bei f abstimmt.
Modell handfunk2m() {
    std::vector<Karte> karten{
        draht(1, 8, {"30mm", "15mm", "110mm"}, {"30mm", "15mm", "110mm+stab"}, "0.65mm")};
    int tag = 2;
    for (const char* z : {"0", "110mm"}) {
        for (const char* y : {"-15mm", "15mm"})
            karten.push_back(draht(tag++, 3, {"-30mm", y, z}, {"30mm", y, z}, "0.5mm"));
        for (const char* x : {"-30mm", "30mm"})
            karten.push_back(draht(tag++, 2, {x, "-15mm", z}, {x, "15mm", z}, "0.5mm"));
    }
    for (const char* x : {"-30mm", "30mm"})
        for (const char* y : {"-15mm", "15mm"})
            karten.push_back(draht(tag++, 6, {x, y, "0"}, {x, y, "110mm"}, "0.5mm"));
    for (auto& k : {geometrieEnde("0"), kupfer(), spule(1, "1"), ex(1, "1"), frequenz(), rpKugel(), ende()})
        karten.push_back(k);
    return m("Handfunkgerät 2 m, kurze Antenne",
             {{"f", "145"}, {"stab", "16cm"}, {"lspule", "0.793"}, {"q", "100"}}, std::move(karten));
}

Modell loraStab() {
    std::vector<Karte> karten{draht(1, 8, {"0", "0", "50mm"}, {"0", "0", "50mm+stab"}, "0.4mm")};
    for (auto& k : platine(2))
        karten.push_back(std::move(k));
    for (auto& k : {geometrieEnde("0"), kupfer(), ex(1, "1"), frequenz(), rpKugel(), ende()})
        karten.push_back(k);
    return m("868-MHz-Funkmodul: λ/4-Stab auf Platine", {{"f", "869.525"}, {"stab", "92.35mm"}},
             std::move(karten));
}

// Die Feder als 13-mm-Stummel mit Spule im Fusspunktsegment; der Stummelradius ist so
// gewählt, dass lspule bei f abstimmt.
Modell loraFeder() {
    std::vector<Karte> karten{draht(1, 2, {"0", "0", "50mm"}, {"0", "0", "50mm+feder"}, "0.56mm")};
    for (auto& k : platine(2))
        karten.push_back(std::move(k));
    for (auto& k : {geometrieEnde("0"), kupfer(), spule(1, "1"), ex(1, "1"), frequenz(), rpKugel(), ende()})
        karten.push_back(k);
    return m("868-MHz-Funkmodul: Federwendel auf Platine",
             {{"f", "869.525"}, {"feder", "13mm"}, {"lspule", "0.165"}, {"q", "60"}}, std::move(karten));
}

} // namespace

const std::vector<Beispiel>& alle() {
    static const std::vector<Beispiel> liste{
        {"Halbwellendipol 20 m", dipol},
        {"Inverted-V 40 m", invertedV},
        {"3-Element-Yagi 20 m", yagi},
        {"Groundplane λ/4 mit Radials", groundplane},
        {"Quad-Schleife 20 m", quad},
        {"Wendelantenne (Helix) 70 cm", helix},
        {"Dipol 2 m (vertikal)", dipol2m},
        {"Dipol 70 cm (vertikal)", dipol70cm},
        {"Yagi 2 m, 5 Elemente", yagi2m},
        {"Yagi 70 cm, 5 Elemente", yagi70cm},
        {"Kollinear 70 cm, 2 × 5/8 λ", kollinear70cm},
        {"Handfunkgerät 2 m, kurze Antenne", handfunk2m},
        {"868-MHz-Funkmodul: λ/4-Stab auf Platine", loraStab},
        {"868-MHz-Funkmodul: Federwendel auf Platine", loraFeder},
    };
    return liste;
}

const std::map<std::string, std::vector<std::string>>& hinweise() {
    static const std::map<std::string, std::vector<std::string>> tabelle{
        {"Halbwellendipol 20 m",
         {"Blanker Draht. Isolierte Litze verkürzt die Resonanz um 2–5 % (NEC-2 kennt keine Isolierung)."}},
        {"Groundplane λ/4 mit Radials",
         {"Fünf Drähte treffen am Speisepunkt zusammen: Gütetest +0,27 dB, die Impedanz kann einige Prozent "
          "abweichen."}},
        {"Yagi 2 m, 5 Elemente",
         {"Elemente isoliert über dem Boom gedacht. Bei Elementen durch einen Metallboom ist eine "
          "Boomkorrektur "
          "nötig (NEC rechnet den Boom nicht)."}},
        {"Yagi 70 cm, 5 Elemente",
         {"Elemente isoliert über dem Boom gedacht (sonst Boomkorrektur). 4-mm-Stab ist für 70 cm dick: "
          "Rechenkerne weichen beim Blindanteil um einige Ω ab."}},
        {"Kollinear 70 cm, 2 × 5/8 λ",
         {"Fusspunkt ≈ 680 − j340 Ω ohne Anpassglied – in echten Antennen sitzt dort eines. Darum ist das "
          "SWR an "
          "50 Ω hier nicht aussagekräftig; Gewinn und Diagramm schon.",
          "Phasenspule verlustlos; Spule und oberer Teil auf maximalen Gewinn am Horizont optimiert."}},
        {"Handfunkgerät 2 m, kurze Antenne",
         {"Ersatzmodell: 16-cm-Stab mit Verlängerungsspule (Güte q) statt der Wendel, die NEC-2 nicht "
          "zuverlässig rechnet.",
          "Gerechnet wird das Funkgerät allein im freien Raum. Wer es in der Hand hält, verliert in der "
          "Praxis "
          "zusätzlich einige dB, weil Hand und Körper Leistung schlucken.",
          "Fusspunkt ≈ 10 Ω: das SWR an 50 Ω ohne Anpassung ist hoch – entscheidend sind Wirkungsgrad und "
          "Gewinn. Rechenkerne weichen hier merklich ab."}},
        {"868-MHz-Funkmodul: λ/4-Stab auf Platine",
         {"Platine 25 × 50 mm als Drahtgitter. Alle Rechenkerne stimmen hier gut überein."}},
        {"868-MHz-Funkmodul: Federwendel auf Platine",
         {"Ersatzmodell: 13-mm-Stummel mit Spule (Güte q). Nur als Grössenordnung lesen: die Kerne im "
          "NEC-5-Format versagen hier, nec2c und zirkon (NEC-2-Format) stimmen überein.",
          "Händlerangaben von 2,15 dBi für solche Federn entsprechen einem vollen λ/2-Dipol."}},
    };
    return tabelle;
}

Karte rp() {
    return Karte("RP", {"0", "19", "73", "1000"}, {"0", "0", "5", "5"});
}

Karte boden() {
    return Karte("GN", {"2", "0", "0", "0"}, {"13", "0.005"});
}

Karte ex(int tag, std::string segment) {
    return Karte("EX", {"0", std::to_string(tag), std::move(segment), "0"}, {"1", "0"});
}

Modell m(const std::string& name, const Variablen& variablen, std::vector<Karte> karten, double z0) {
    Modell modell;
    modell.name = name;
    modell.kommentar.push_back(name);
    if (auto h = hinweise().find(name); h != hinweise().end())
        modell.kommentar.insert(modell.kommentar.end(), h->second.begin(), h->second.end());
    for (const auto& [n, ausdruck] : variablen)
        modell.variablen.emplace_back(n, ausdruck);
    modell.karten = std::move(karten);
    modell.z0 = z0;
    return modell;
}

// Ein Draht senkrecht, Mitte zwei Wellenlängen über realem Boden; 0,94 × λ/2 stimmt für
// Rohre von einigen Millimetern ab. Höher aufgehängt zerfällt das Diagramm in Keulen,
// die das 5°-Raster nicht mehr auflöst.
Modell vertikalDipol(const std::string& name, const std::string& f, const std::string& rad) {
    return m(name, {{"f", f}, {"l", "c0/f/2*0.94"}, {"h", "2*c0/f"}, {"rad", rad}},
             {draht(1, 15, {"0", "0", "h-l/2"}, {"0", "0", "h+l/2"}, "rad"), geometrieEnde("1"), boden(),
              ex(1, "8"), frequenz(), rp(), ende()});
}

// Waagrechte Elemente parallel zu y, Boom entlang x, Strahler bei x = 0; freier Raum.
Modell yagi5(const std::string& name, const Yagi5Masse& masse) {
    auto element = [](int tag, const std::string& x, const std::string& laenge) {
        return draht(tag, 15, {x, "-" + laenge + "/2", "0"}, {x, laenge + "/2", "0"}, "rad");
    };
    return m(name,
             {{"f", masse.f},
              {"refl", masse.refl},
              {"strahler", masse.strahler},
              {"dir1", masse.dir1},
              {"dir2", masse.dir2},
              {"dir3", masse.dir3},
              {"a1", masse.a1},
              {"a2", masse.a2},
              {"a3", masse.a3},
              {"a4", masse.a4},
              {"rad", masse.rad}},
             {element(1, "-a1", "refl"), element(2, "0", "strahler"), element(3, "a2", "dir1"),
              element(4, "a2+a3", "dir2"), element(5, "a2+a3+a4", "dir3"), geometrieEnde("0"), ex(2, "8"),
              frequenz(), rpKugel(), ende()});
}

// Gitter mit 6,25 mm Maschenweite: neun waagrechte Drähte zu je vier Segmenten, fünf
// senkrechte zu je acht, so dass sich alle Drähte an Segmentenden treffen.
std::vector<Karte> platine(int ersterTag) {
    auto mm = [](double wert) { return wert == 0 ? std::string("0") : fmt::format("{}mm", wert); };
    std::vector<Karte> karten;
    int tag = ersterTag;
    for (int zeile = 0; zeile <= 8; ++zeile)
        karten.push_back(
            draht(tag++, 4, {"-12.5mm", "0", mm(6.25 * zeile)}, {"12.5mm", "0", mm(6.25 * zeile)}, "0.5mm"));
    for (int spalte = 0; spalte <= 4; ++spalte)
        karten.push_back(draht(tag++, 8, {mm(-12.5 + 6.25 * spalte), "0", "0"},
                               {mm(-12.5 + 6.25 * spalte), "0", "50mm"}, "0.5mm"));
    return karten;
}

} // namespace NECKern::Beispiele
