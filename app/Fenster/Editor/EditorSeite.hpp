#pragma once

#include <QWidget>

#include <cstdint>
#include <optional>

class AppModell;
class DeckTextBereich;
class KartenBereich;
class ModellKopf;
class QStackedWidget;
class QToolButton;
class VariablenBereich;

// Der Modelleditor links im Fenster: Kopf, Variablen und Karten als Tabellen
// oder das ganze Deck als Text. Er liest nur das Anwendungsmodell; jede
// angenommene Änderung speichert ein neues Modell (ein Schritt zum Rückgängigmachen).
class EditorSeite : public QWidget {
    Q_OBJECT

  public:
    explicit EditorSeite(AppModell& app, QWidget* eltern = nullptr);

    bool textmodus() const;
    void setTextmodus(bool an);

  signals:
    // Eine Karte GW wurde gewählt (ihr Tag) oder keine mehr.
    void drahtGewaehlt(std::optional<std::int64_t> tag);

  private:
    ModellKopf* kopf_;
    VariablenBereich* variablen_;
    KartenBereich* karten_;
    DeckTextBereich* text_;
    QStackedWidget* stapel_;
    QToolButton* tabellenKnopf_;
    QToolButton* textKnopf_;
};
