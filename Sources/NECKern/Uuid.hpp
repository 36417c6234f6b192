#pragma once

#include <array>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace NECKern {

// Zufällige Kennung (Version 4), als Text in der üblichen Grossschreibung.
class Uuid {
  public:
    Uuid(); // frisch und zufällig
    static std::optional<Uuid> ausText(std::string_view text);
    std::string text() const;
    bool operator==(const Uuid&) const = default;
    auto operator<=>(const Uuid&) const = default;

  private:
    std::array<std::uint8_t, 16> bytes_{};
};

void to_json(nlohmann::ordered_json& j, const Uuid& u);
void from_json(const nlohmann::ordered_json& j, Uuid& u);

} // namespace NECKern
