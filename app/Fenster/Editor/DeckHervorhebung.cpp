#include "Fenster/Editor/DeckHervorhebung.hpp"

#include "Fenster/Editor/Deckzeile.hpp"

#include "NECKern/Karte.hpp"

#include <QColor>

namespace {

QTextCharFormat zeichenFormat(QColor farbe, bool fett = false, bool kursiv = false) {
    QTextCharFormat f;
    f.setForeground(farbe);
    if (fett) f.setFontWeight(QFont::Bold);
    f.setFontItalic(kursiv);
    return f;
}

qsizetype einrueckung(const QString& text) {
    qsizetype i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
        ++i;
    return i;
}

} // namespace

DeckHervorhebung::DeckHervorhebung(QTextDocument* dokument)
    : QSyntaxHighlighter(dokument), typ_(zeichenFormat(QColor(0x15, 0x65, 0xC0), true)),
      unbekannt_(zeichenFormat(QColor(0xE6, 0x51, 0x00), true)),
      symbol_(zeichenFormat(QColor(0x6A, 0x1B, 0x9A), true)), name_(zeichenFormat(QColor(0x6A, 0x1B, 0x9A))),
      zahl_(zeichenFormat(QColor(0xAD, 0x14, 0x57))),
      kommentar_(zeichenFormat(QColor(0x55, 0x8B, 0x2F), false, true)),
      ignoriert_(zeichenFormat(QColor(0x9E, 0x9E, 0x9E))),
      zahlMuster_(R"((?<![\w.])[-+]?(?:\d+\.?\d*|\.\d+)(?:[eE][-+]?\d+)?(?:mm|cm|in|ft)?(?![\w.]))",
                  QRegularExpression::CaseInsensitiveOption),
      nameMuster_(R"((?<![\w.])[^\W\d]\w*)", QRegularExpression::UseUnicodePropertiesOption),
      zuweisungMuster_(R"(([^\W\d]\w*)\s*=)", QRegularExpression::UseUnicodePropertiesOption) {
    ignoriert_.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    ignoriert_.setUnderlineColor(QColor(0xC6, 0x28, 0x28));
}

void DeckHervorhebung::faerben(qsizetype von, qsizetype laenge, const QTextCharFormat& f) {
    setFormat(static_cast<int>(von), static_cast<int>(laenge), f);
}

void DeckHervorhebung::highlightBlock(const QString& text) {
    const auto art = Deckzeile::art(text.toStdString());
    const auto anfang = einrueckung(text);
    switch (art) {
    case Deckzeile::Art::leer:
        return;
    case Deckzeile::Art::kommentar:
        faerben(anfang, text.size() - anfang, kommentar_);
        return;
    case Deckzeile::Art::ignoriert:
        faerben(anfang, text.size() - anfang, ignoriert_);
        return;
    case Deckzeile::Art::symbol: {
        faerben(anfang, 2, symbol_);
        felderFaerben(text, anfang + 2);
        auto treffer = zuweisungMuster_.globalMatch(text, anfang + 2);
        const auto ende = text.indexOf('\'');
        while (treffer.hasNext()) {
            const auto t = treffer.next();
            if (ende >= 0 && t.capturedStart(1) > ende) break;
            faerben(t.capturedStart(1), t.capturedLength(1), symbol_);
        }
        return;
    }
    case Deckzeile::Art::karte: {
        const auto typ = text.mid(anfang, 2).toUpper().toStdString();
        const bool bekannt = NECKern::Karte::beschreibung().contains(typ);
        faerben(anfang, 2, bekannt ? typ_ : unbekannt_);
        felderFaerben(text, anfang + 2);
        return;
    }
    }
}

void DeckHervorhebung::felderFaerben(const QString& text, qsizetype von) {
    auto ende = text.indexOf('\'', von);
    if (ende < 0) ende = text.size();
    for (auto* muster : {&zahlMuster_, &nameMuster_}) {
        auto treffer = muster->globalMatch(text.left(ende), von);
        while (treffer.hasNext()) {
            const auto t = treffer.next();
            faerben(t.capturedStart(), t.capturedLength(), muster == &zahlMuster_ ? zahl_ : name_);
        }
    }
    if (ende < text.size()) faerben(ende, text.size() - ende, kommentar_);
}
