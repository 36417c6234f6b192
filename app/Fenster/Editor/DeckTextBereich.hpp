#pragma once

#include "NECKern/Modell.hpp"

#include <QTimer>
#include <QWidget>

#include <string>

class AppModell;
class DeckHervorhebung;
class QLabel;
class QPlainTextEdit;

// Der Textmodus: das ganze Deck, wie Modell::schreiben es gibt, in einem
// Editor mit fester Breite. Eine Pause von 300 ms im Tippen oder das Verlassen
// liest den Text mit Modell::lesen zurück. Der Text selbst bleibt, wie er
// getippt wurde – auch Zeilen, die der Leser übergeht –, solange das Modell
// nicht von anderer Seite geändert wird.
class DeckTextBereich : public QWidget {
    Q_OBJECT

  public:
    explicit DeckTextBereich(AppModell& app, QWidget* eltern = nullptr);

    // Beim Umschalten in den Textmodus und zurück.
    void zeigen();
    void verlassen();
    // Liest den Text jetzt zurück, wenn er sich geändert hat.
    void uebernehmen();

    QPlainTextEdit* editor() const { return editor_; }

  protected:
    bool eventFilter(QObject* objekt, QEvent* ereignis) override;

  private:
    void modellGeaendert();
    void textSetzen(const std::string& text);
    void statusSetzen(const std::string& text);

    AppModell& app_;
    QPlainTextEdit* editor_;
    DeckHervorhebung* hervorhebung_;
    QLabel* status_;
    QTimer pause_;
    bool aktiv_ = false;
    std::string textStand_;         // zuletzt gezeigter oder gelesener Text
    NECKern::Modell modellAusText_; // das Modell, das zu diesem Text gehört
    bool stand_ = false;            // gibt es schon einen Text?
};
