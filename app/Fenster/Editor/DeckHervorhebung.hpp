#pragma once

#include <QRegularExpression>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>

// Farben im Textmodus: Kartentypen, SY-Zeilen mit ihren Namen, Kommentare und
// Zahlen. Zeilen, die der Deckleser überspringt, sind grau und rot unterstrichen.
class DeckHervorhebung : public QSyntaxHighlighter {
    Q_OBJECT

  public:
    explicit DeckHervorhebung(QTextDocument* dokument);

  protected:
    void highlightBlock(const QString& text) override;

  private:
    // Zahlen und Namen zwischen von und bis; ab einem Apostroph Kommentar.
    void felderFaerben(const QString& text, qsizetype von);
    void faerben(qsizetype von, qsizetype laenge, const QTextCharFormat& f);

    QTextCharFormat typ_, unbekannt_, symbol_, name_, zahl_, kommentar_, ignoriert_;
    QRegularExpression zahlMuster_, nameMuster_, zuweisungMuster_;
};
