#include "NECKern/Uuid.hpp"

#include "NECKern/Json.hpp"

#include <random>

namespace NECKern {

namespace {

std::mt19937_64& zufall() {
    thread_local std::mt19937_64 erzeuger{[] {
        std::random_device quelle;
        std::seed_seq saat{quelle(), quelle(), quelle(), quelle()};
        return std::mt19937_64(saat);
    }()};
    return erzeuger;
}

int hexWert(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

} // namespace

Uuid::Uuid() {
    auto& z = zufall();
    for (std::size_t i = 0; i < bytes_.size(); i += 8) {
        auto wert = z();
        for (std::size_t k = 0; k < 8; ++k)
            bytes_[i + k] = static_cast<std::uint8_t>(wert >> (8 * k));
    }
    bytes_[6] = static_cast<std::uint8_t>((bytes_[6] & 0x0F) | 0x40);
    bytes_[8] = static_cast<std::uint8_t>((bytes_[8] & 0x3F) | 0x80);
}

std::string Uuid::text() const {
    static constexpr char ziffern[] = "0123456789ABCDEF";
    std::string s;
    s.reserve(36);
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) s.push_back('-');
        s.push_back(ziffern[bytes_[i] >> 4]);
        s.push_back(ziffern[bytes_[i] & 0x0F]);
    }
    return s;
}

std::optional<Uuid> Uuid::ausText(std::string_view text) {
    if (text.size() != 36) return std::nullopt;
    Uuid u;
    std::size_t b = 0;
    for (std::size_t i = 0; i < text.size();) {
        if (i == 8 || i == 13 || i == 18 || i == 23) {
            if (text[i] != '-') return std::nullopt;
            ++i;
            continue;
        }
        int hoch = hexWert(text[i]);
        int tief = hexWert(text[i + 1]);
        if (hoch < 0 || tief < 0) return std::nullopt;
        u.bytes_[b++] = static_cast<std::uint8_t>(hoch * 16 + tief);
        i += 2;
    }
    return u;
}

void to_json(nlohmann::ordered_json& j, const Uuid& u) {
    j = u.text();
}

void from_json(const nlohmann::ordered_json& j, Uuid& u) {
    if (!j.is_string()) throw DatenFehler("Eine Kennung (UUID) muss als Text gespeichert sein.");
    auto gelesen = Uuid::ausText(j.get_ref<const std::string&>());
    if (!gelesen) throw DatenFehler("Die Kennung „" + j.get<std::string>() + "“ ist keine gültige UUID.");
    u = *gelesen;
}

} // namespace NECKern
