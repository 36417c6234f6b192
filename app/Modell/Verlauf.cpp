#include "Modell/Verlauf.hpp"

void Verlauf::merken(NECKern::Modell vorher) {
    zurueck_.push_back(std::move(vorher));
    if (zurueck_.size() > hoechstens) zurueck_.pop_front();
    vor_.clear();
}

std::optional<NECKern::Modell> Verlauf::zurueck(NECKern::Modell jetzt) {
    if (zurueck_.empty()) return std::nullopt;
    auto m = std::move(zurueck_.back());
    zurueck_.pop_back();
    vor_.push_back(std::move(jetzt));
    return m;
}

std::optional<NECKern::Modell> Verlauf::vor(NECKern::Modell jetzt) {
    if (vor_.empty()) return std::nullopt;
    auto m = std::move(vor_.back());
    vor_.pop_back();
    zurueck_.push_back(std::move(jetzt));
    return m;
}

void Verlauf::leeren() {
    zurueck_.clear();
    vor_.clear();
}
