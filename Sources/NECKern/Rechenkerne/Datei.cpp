#include "NECKern/Rechenkerne/Datei.hpp"

#include "NECKern/Rechenkerne/KernFehler.hpp"
#include "NECKern/Systemgrund.hpp"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace NECKern::Datei {

namespace {

constexpr std::string_view leerraum = " \t\r\n\v\f";

std::string fehlerText(const std::filesystem::path& pfad, int fehler) {
    return "Die Datei „" + pfad.string() + "“ konnte nicht geschrieben werden: " + systemgrund(fehler) + ".";
}

class Fd {
  public:
    explicit Fd(int fd) : fd_(fd) {}
    ~Fd() {
        if (fd_ >= 0) ::close(fd_);
    }
    Fd(const Fd&) = delete;
    Fd& operator=(const Fd&) = delete;
    int get() const { return fd_; }
    int loslassen() { return std::exchange(fd_, -1); }

  private:
    int fd_;
};

bool allesSchreiben(int fd, std::string_view inhalt) {
    while (!inhalt.empty()) {
        const ssize_t n = ::write(fd, inhalt.data(), inhalt.size());
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        inhalt.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

} // namespace

void schreibenAtomar(const std::filesystem::path& pfad, std::string_view inhalt) {
    auto zwischen = pfad;
    zwischen += ".neu";
    Fd fd(::open(zwischen.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
    if (fd.get() < 0) throw KernFehler(fehlerText(pfad, errno));
    if (!allesSchreiben(fd.get(), inhalt) || ::close(fd.loslassen()) != 0) {
        const int e = errno;
        ::unlink(zwischen.c_str());
        throw KernFehler(fehlerText(pfad, e));
    }
    if (::rename(zwischen.c_str(), pfad.c_str()) != 0) {
        const int e = errno;
        ::unlink(zwischen.c_str());
        throw KernFehler(fehlerText(pfad, e));
    }
}

bool ausfuehrbar(const std::filesystem::path& pfad) {
    struct stat info;
    return ::stat(pfad.c_str(), &info) == 0 && S_ISREG(info.st_mode) && ::access(pfad.c_str(), X_OK) == 0;
}

std::string lesenAscii(const std::filesystem::path& pfad) {
    Fd fd(::open(pfad.c_str(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0) return {};
    struct stat info;
    if (::fstat(fd.get(), &info) != 0 || !S_ISREG(info.st_mode)) return {};
    std::string inhalt(static_cast<std::size_t>(info.st_size), '\0');
    std::size_t gelesen = 0;
    char rest[4096]; // falls die Datei seit fstat gewachsen ist
    for (;;) {
        const bool voll = gelesen == inhalt.size();
        char* ziel = voll ? rest : inhalt.data() + gelesen;
        const std::size_t platz = voll ? sizeof rest : inhalt.size() - gelesen;
        const ssize_t n = ::read(fd.get(), ziel, platz);
        if (n < 0) {
            if (errno == EINTR) continue;
            return {};
        }
        if (n == 0) break;
        if (voll) inhalt.append(rest, static_cast<std::size_t>(n));
        gelesen += static_cast<std::size_t>(n);
    }
    inhalt.resize(gelesen);
    for (char c : inhalt)
        if (static_cast<unsigned char>(c) >= 0x80) return {};
    return inhalt;
}

std::string_view trimmen(std::string_view text) {
    const auto anfang = text.find_first_not_of(leerraum);
    if (anfang == std::string_view::npos) return {};
    return text.substr(anfang, text.find_last_not_of(leerraum) - anfang + 1);
}

std::string_view letzteZeile(std::string_view text) {
    text = trimmen(text);
    const auto umbruch = text.find_last_of("\r\n");
    return umbruch == std::string_view::npos ? text : trimmen(text.substr(umbruch + 1));
}

} // namespace NECKern::Datei
