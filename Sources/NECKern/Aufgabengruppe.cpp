#include "NECKern/Aufgabengruppe.hpp"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace NECKern {

void aufgabengruppe(std::size_t anzahl, std::size_t gleichzeitig,
                    const std::function<void(std::size_t)>& aufgabe) {
    if (anzahl == 0) return;
    std::atomic<std::size_t> naechste{0};
    std::atomic<bool> gescheitert{false};
    std::mutex sperre;
    std::exception_ptr fehler;

    auto arbeiten = [&] {
        while (!gescheitert.load()) {
            std::size_t i = naechste.fetch_add(1);
            if (i >= anzahl) return;
            try {
                aufgabe(i);
            } catch (...) {
                std::lock_guard<std::mutex> halten(sperre);
                if (!fehler) fehler = std::current_exception();
                gescheitert = true;
            }
        }
    };

    std::size_t helfer = std::clamp<std::size_t>(gleichzeitig, 1, anzahl) - 1;
    {
        std::vector<std::jthread> faeden;
        faeden.reserve(helfer);
        for (std::size_t i = 0; i < helfer; ++i) {
            // Gibt das System keinen Thread mehr her, arbeiten eben weniger.
            try {
                faeden.emplace_back(arbeiten);
            } catch (const std::system_error&) {
                break;
            }
        }
        arbeiten();
    } // jthread wartet beim Abbau auf jeden Helfer
    if (fehler) std::rethrow_exception(fehler);
}

} // namespace NECKern
