#include "Fenster/Ansicht3D/Lasten.hpp"

#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

namespace Raumbild {

namespace {

struct Ld {
    std::int64_t typ, tag, von, bis;
};

std::string_view naechstesTeil(std::string_view& rest) {
    auto anfang = rest.find_first_not_of(" \t\r");
    if (anfang == std::string_view::npos) {
        rest = {};
        return {};
    }
    rest.remove_prefix(anfang);
    auto ende = rest.find_first_of(" \t\r");
    auto teil = rest.substr(0, ende);
    rest.remove_prefix(teil.size());
    return teil;
}

std::optional<Ld> ldLesen(std::string_view zeile) {
    if (naechstesTeil(zeile) != "LD") return std::nullopt;
    std::array<std::int64_t, 4> werte{};
    for (auto& w : werte) {
        auto teil = naechstesTeil(zeile);
        auto [ende, fehler] = std::from_chars(teil.data(), teil.data() + teil.size(), w);
        if (teil.empty() || fehler != std::errc() || ende != teil.data() + teil.size()) return std::nullopt;
    }
    return Ld{werte[0], werte[1], werte[2], werte[3]};
}

void markieren(const Ld& ld, const std::vector<NECKern::Segment>& segmente, std::vector<bool>& last) {
    const bool alle = ld.von == 0 && ld.bis == 0;
    const std::int64_t bis = ld.bis == 0 ? ld.von : ld.bis;
    std::int64_t imTag = 0;
    for (std::size_t i = 0; i < segmente.size(); ++i) {
        const auto& s = segmente[i];
        if (ld.tag != 0 && s.tag != ld.tag) continue;
        const std::int64_t nummer = ld.tag == 0 ? s.nummer : ++imTag;
        if (alle || (nummer >= ld.von && nummer <= bis)) last[i] = true;
    }
}

} // namespace

std::vector<bool> lasten(std::string_view deck, const std::vector<NECKern::Segment>& segmente) {
    std::vector<bool> last(segmente.size(), false);
    while (!deck.empty()) {
        auto ende = deck.find('\n');
        auto zeile = deck.substr(0, ende);
        deck.remove_prefix(ende == std::string_view::npos ? deck.size() : ende + 1);
        auto ld = ldLesen(zeile);
        if (!ld || ld->typ == 5) continue;
        if (ld->typ < 0)
            last.assign(segmente.size(), false);
        else
            markieren(*ld, segmente, last);
    }
    return last;
}

} // namespace Raumbild
