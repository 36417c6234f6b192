#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>

namespace NECKern {

// Fehler beim Lesen der gespeicherten (JSON-)Form eines Werts.
class DatenFehler : public std::runtime_error {
  public:
    explicit DatenFehler(const std::string& text) : std::runtime_error(text) {}
    const char* description() const noexcept { return what(); }
};

namespace Json {

// Ein Pflichtschlüssel: fehlt er oder passt sein Typ nicht, gibt es einen deutschen Satz.
template <typename T> T pflicht(const nlohmann::ordered_json& j, const char* schluessel, const char* typ) {
    if (!j.is_object()) throw DatenFehler(std::string(typ) + ": gespeicherte Form ist kein JSON-Objekt.");
    auto it = j.find(schluessel);
    if (it == j.end()) throw DatenFehler(std::string(typ) + ": der Schlüssel „" + schluessel + "“ fehlt.");
    try {
        return it->template get<T>();
    } catch (const nlohmann::ordered_json::exception&) {
        throw DatenFehler(std::string(typ) + ": der Schlüssel „" + schluessel + "“ hat den falschen Typ.");
    }
}

// Ein freiwilliger Schlüssel: fehlt er oder ist er null, ist der Wert leer.
template <typename T>
std::optional<T> freiwillig(const nlohmann::ordered_json& j, const char* schluessel, const char* typ) {
    auto it = j.find(schluessel);
    if (it == j.end() || it->is_null()) return std::nullopt;
    return pflicht<T>(j, schluessel, typ);
}

template <typename T>
void optionalSetzen(nlohmann::ordered_json& j, const char* schluessel, const std::optional<T>& wert) {
    if (wert) j[schluessel] = *wert;
}

} // namespace Json
} // namespace NECKern
