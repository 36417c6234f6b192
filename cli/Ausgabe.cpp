#include "Ausgabe.hpp"

#include "NECKern/Systemgrund.hpp"

#include <cerrno>
#include <cmath>
#include <fmt/format.h>
#include <fmt/printf.h>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace Befehle::Ausgabe {

std::string impedanz(const std::optional<NECKern::Komplex>& z) {
    if (!z) return "–";
    return fmt::sprintf("%.2f %s j%.2f Ω", z->re, std::signbit(z->im) ? "-" : "+", std::fabs(z->im));
}

std::string swr(std::optional<double> wert) {
    if (!wert || std::isnan(*wert)) return "–";
    if (!std::isfinite(*wert)) return "∞";
    return fmt::sprintf("%.2f", *wert);
}

std::string wert(std::optional<double> x, const char* format, const char* einheit) {
    if (!x || !std::isfinite(*x)) return "–";
    return fmt::sprintf(format, *x) + einheit;
}

nlohmann::ordered_json jsonZahl(std::optional<double> x) {
    if (!x || !std::isfinite(*x)) return nullptr;
    return *x;
}

namespace {

std::optional<double> gewinn(const NECKern::FrequenzErgebnis& f) {
    if (auto r = f.maxGewinn()) return r->gesamt;
    return std::nullopt;
}

} // namespace

nlohmann::ordered_json frequenzJson(const NECKern::FrequenzErgebnis& f, double z0) {
    nlohmann::ordered_json j;
    j["mhz"] = jsonZahl(f.mhz);
    j["impedanz"] = f.impedanz ? nlohmann::ordered_json{{"re", jsonZahl(f.impedanz->re)},
                                                        {"im", jsonZahl(f.impedanz->im)}}
                               : nlohmann::ordered_json(nullptr);
    j["swr"] = jsonZahl(f.swr(z0));
    j["gewinn"] = jsonZahl(gewinn(f));
    j["vorRueck"] = jsonZahl(f.vorRueck());
    j["leistungEingang"] = jsonZahl(f.leistungEingang);
    j["leistungAbgestrahlt"] = jsonZahl(f.leistungAbgestrahlt);
    j["wirkungsgrad"] = jsonZahl(f.wirkungsgrad);
    j["segmente"] = f.segmente.size();
    j["stroemeGeliefert"] = f.stroemeGeliefert;
    return j;
}

std::string frequenzText(const NECKern::FrequenzErgebnis& f, double z0) {
    std::string text = fmt::sprintf("%.4f MHz\n", f.mhz);
    auto zeile = [&](const std::string& was, const std::string& inhalt) {
        text += fmt::format("  {:<24}{}\n", was + ":", inhalt);
    };
    zeile("Impedanz", impedanz(f.impedanz));
    zeile(fmt::sprintf("SWR (%.0f Ω)", z0), swr(f.swr(z0)));
    zeile("Max. Gewinn", wert(gewinn(f), "%.2f", " dBi"));
    zeile("Vor-Rück-Verhältnis", wert(f.vorRueck(), "%.2f", " dB"));
    zeile("Eingangsleistung", wert(f.leistungEingang, "%.4g", " W"));
    zeile("Abgestrahlte Leistung", wert(f.leistungAbgestrahlt, "%.4g", " W"));
    zeile("Wirkungsgrad", wert(f.wirkungsgrad, "%.2f", " %"));
    return text;
}

void dateiSchreiben(const std::string& pfad, const std::string& inhalt) {
    std::ofstream datei(pfad, std::ios::binary | std::ios::trunc);
    if (datei) datei << inhalt << std::flush;
    const int fehler = errno;
    if (!datei)
        throw std::runtime_error("Die Datei „" + pfad +
                                 "“ lässt sich nicht schreiben: " + NECKern::systemgrund(fehler) + ".");
}

} // namespace Befehle::Ausgabe
