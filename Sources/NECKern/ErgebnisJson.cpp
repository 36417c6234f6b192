// Gespeicherte Form der Ergebnistypen. JSON kennt weder NaN noch ∞: solche
// Zahlen werden als null geschrieben und in Pflichtfeldern als NaN gelesen.
#include "NECKern/Ergebnis.hpp"
#include "NECKern/Json.hpp"

#include <cmath>
#include <limits>

namespace NECKern {

namespace {

using nlohmann::ordered_json;

ordered_json zahl(double x) {
    return std::isfinite(x) ? ordered_json(x) : ordered_json(nullptr);
}

ordered_json zahlen(const std::vector<double>& liste) {
    auto j = ordered_json::array();
    for (double x : liste)
        j.push_back(zahl(x));
    return j;
}

void optionalSetzen(ordered_json& j, const char* schluessel, const std::optional<double>& wert) {
    if (wert) j[schluessel] = zahl(*wert);
}

double zahlLesen(const ordered_json& j, const char* schluessel, const char* typ) {
    auto it = j.is_object() ? j.find(schluessel) : j.end();
    if (it != j.end() && it->is_null()) return std::numeric_limits<double>::quiet_NaN();
    return Json::pflicht<double>(j, schluessel, typ);
}

std::vector<double> zahlenLesen(const ordered_json& j, const char* schluessel, const char* typ) {
    auto liste = Json::pflicht<ordered_json>(j, schluessel, typ);
    if (!liste.is_array())
        throw DatenFehler(std::string(typ) + ": der Schlüssel „" + schluessel + "“ hat den falschen Typ.");
    std::vector<double> werte;
    werte.reserve(liste.size());
    for (const auto& x : liste) {
        if (x.is_null()) {
            werte.push_back(std::numeric_limits<double>::quiet_NaN());
        } else if (x.is_number()) {
            werte.push_back(x.get<double>());
        } else {
            throw DatenFehler(std::string(typ) + ": der Schlüssel „" + schluessel +
                              "“ hat den falschen Typ.");
        }
    }
    return werte;
}

} // namespace

void to_json(ordered_json& j, const Komplex& k) {
    j = ordered_json::object();
    j["re"] = zahl(k.re);
    j["im"] = zahl(k.im);
}

void from_json(const ordered_json& j, Komplex& k) {
    constexpr const char* typ = "Komplex";
    k.re = zahlLesen(j, "re", typ);
    k.im = zahlLesen(j, "im", typ);
}

void to_json(ordered_json& j, const Quelle& q) {
    j = ordered_json::object();
    j["tag"] = q.tag;
    j["segment"] = q.segment;
    j["spannung"] = q.spannung;
    j["strom"] = q.strom;
    j["impedanz"] = q.impedanz;
}

void from_json(const ordered_json& j, Quelle& q) {
    constexpr const char* typ = "Quelle";
    q.tag = Json::pflicht<std::int64_t>(j, "tag", typ);
    q.segment = Json::pflicht<std::int64_t>(j, "segment", typ);
    q.spannung = Json::pflicht<Komplex>(j, "spannung", typ);
    q.strom = Json::pflicht<Komplex>(j, "strom", typ);
    q.impedanz = Json::pflicht<Komplex>(j, "impedanz", typ);
}

void to_json(ordered_json& j, const Segment& s) {
    j = ordered_json::object();
    j["nummer"] = s.nummer;
    j["tag"] = s.tag;
    j["x"] = zahl(s.x);
    j["y"] = zahl(s.y);
    j["z"] = zahl(s.z);
    j["laenge"] = zahl(s.laenge);
    j["alpha"] = zahl(s.alpha);
    j["beta"] = zahl(s.beta);
    j["radius"] = zahl(s.radius);
    j["strom"] = s.strom;
    Json::optionalSetzen(j, "vorher", s.vorher);
    Json::optionalSetzen(j, "nachher", s.nachher);
}

void from_json(const ordered_json& j, Segment& s) {
    constexpr const char* typ = "Segment";
    s.nummer = Json::pflicht<std::int64_t>(j, "nummer", typ);
    s.tag = Json::pflicht<std::int64_t>(j, "tag", typ);
    s.x = zahlLesen(j, "x", typ);
    s.y = zahlLesen(j, "y", typ);
    s.z = zahlLesen(j, "z", typ);
    s.laenge = zahlLesen(j, "laenge", typ);
    s.alpha = zahlLesen(j, "alpha", typ);
    s.beta = zahlLesen(j, "beta", typ);
    s.radius = zahlLesen(j, "radius", typ);
    s.strom = Json::pflicht<Komplex>(j, "strom", typ);
    s.vorher = Json::freiwillig<std::int64_t>(j, "vorher", typ);
    s.nachher = Json::freiwillig<std::int64_t>(j, "nachher", typ);
}

void to_json(ordered_json& j, const Richtung& r) {
    j = ordered_json::object();
    j["theta"] = zahl(r.theta);
    j["phi"] = zahl(r.phi);
    j["vertikal"] = zahl(r.vertikal);
    j["horizontal"] = zahl(r.horizontal);
    j["gesamt"] = zahl(r.gesamt);
}

void from_json(const ordered_json& j, Richtung& r) {
    constexpr const char* typ = "Richtung";
    r.theta = zahlLesen(j, "theta", typ);
    r.phi = zahlLesen(j, "phi", typ);
    r.vertikal = zahlLesen(j, "vertikal", typ);
    r.horizontal = zahlLesen(j, "horizontal", typ);
    r.gesamt = zahlLesen(j, "gesamt", typ);
}

void to_json(ordered_json& j, const Nahfeldpunkt& p) {
    j = ordered_json::object();
    j["x"] = zahl(p.x);
    j["y"] = zahl(p.y);
    j["z"] = zahl(p.z);
    j["betrag"] = zahlen(p.betrag);
    j["phase"] = zahlen(p.phase);
}

void from_json(const ordered_json& j, Nahfeldpunkt& p) {
    constexpr const char* typ = "Nahfeldpunkt";
    p.x = zahlLesen(j, "x", typ);
    p.y = zahlLesen(j, "y", typ);
    p.z = zahlLesen(j, "z", typ);
    p.betrag = zahlenLesen(j, "betrag", typ);
    p.phase = zahlenLesen(j, "phase", typ);
}

void to_json(ordered_json& j, const FrequenzErgebnis& f) {
    j = ordered_json::object();
    j["mhz"] = zahl(f.mhz);
    if (f.impedanz) j["impedanz"] = *f.impedanz;
    j["quellen"] = f.quellen;
    j["segmente"] = f.segmente;
    j["stroemeGeliefert"] = f.stroemeGeliefert;
    j["diagramm"] = f.diagramm;
    optionalSetzen(j, "leistungEingang", f.leistungEingang);
    optionalSetzen(j, "leistungAbgestrahlt", f.leistungAbgestrahlt);
    optionalSetzen(j, "wirkungsgrad", f.wirkungsgrad);
    j["nahfeldE"] = f.nahfeldE;
    j["nahfeldH"] = f.nahfeldH;
    Json::optionalSetzen(j, "speiseSegmentGeometrie", f.speiseSegmentGeometrie);
    j["mitBoden"] = f.mitBoden;
}

void from_json(const ordered_json& j, FrequenzErgebnis& f) {
    constexpr const char* typ = "FrequenzErgebnis";
    f.mhz = zahlLesen(j, "mhz", typ);
    f.impedanz = Json::freiwillig<Komplex>(j, "impedanz", typ);
    f.quellen = Json::pflicht<std::vector<Quelle>>(j, "quellen", typ);
    f.segmente = Json::pflicht<std::vector<Segment>>(j, "segmente", typ);
    f.stroemeGeliefert = Json::pflicht<bool>(j, "stroemeGeliefert", typ);
    f.diagramm = Json::pflicht<std::vector<Richtung>>(j, "diagramm", typ);
    f.leistungEingang = Json::freiwillig<double>(j, "leistungEingang", typ);
    f.leistungAbgestrahlt = Json::freiwillig<double>(j, "leistungAbgestrahlt", typ);
    f.wirkungsgrad = Json::freiwillig<double>(j, "wirkungsgrad", typ);
    f.nahfeldE = Json::pflicht<std::vector<Nahfeldpunkt>>(j, "nahfeldE", typ);
    f.nahfeldH = Json::pflicht<std::vector<Nahfeldpunkt>>(j, "nahfeldH", typ);
    f.speiseSegmentGeometrie = Json::freiwillig<std::int64_t>(j, "speiseSegmentGeometrie", typ);
    f.mitBoden = Json::pflicht<bool>(j, "mitBoden", typ);
}

void to_json(ordered_json& j, const NECErgebnis& e) {
    j = ordered_json::object();
    j["frequenzen"] = e.frequenzen;
    j["warnungen"] = e.warnungen;
    j["kern"] = e.kern;
    j["dauer"] = zahl(e.dauer);
}

void from_json(const ordered_json& j, NECErgebnis& e) {
    constexpr const char* typ = "NECErgebnis";
    e.frequenzen = Json::pflicht<std::vector<FrequenzErgebnis>>(j, "frequenzen", typ);
    e.warnungen = Json::pflicht<std::vector<std::string>>(j, "warnungen", typ);
    e.kern = Json::pflicht<std::string>(j, "kern", typ);
    e.dauer = zahlLesen(j, "dauer", typ);
}

} // namespace NECKern
