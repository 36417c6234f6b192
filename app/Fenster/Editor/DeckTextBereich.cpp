#include "Fenster/Editor/DeckTextBereich.hpp"

#include "Fenster/Editor/Bedienelemente.hpp"
#include "Fenster/Editor/DeckHervorhebung.hpp"
#include "Fenster/Editor/Deckzeile.hpp"
#include "Fenster/Editor/Textabgleich.hpp"

#include "Modell/AppModell.hpp"

#include <QEvent>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>

#include <fmt/format.h>

namespace {

int ignorierteZeilen(const std::string& text) {
    int n = 0;
    std::size_t anfang = 0;
    while (anfang <= text.size()) {
        auto ende = text.find('\n', anfang);
        if (ende == std::string::npos) ende = text.size();
        if (Deckzeile::art(std::string_view(text).substr(anfang, ende - anfang)) == Deckzeile::Art::ignoriert)
            ++n;
        anfang = ende + 1;
    }
    return n;
}

} // namespace

DeckTextBereich::DeckTextBereich(AppModell& app, QWidget* eltern)
    : QWidget(eltern), app_(app), editor_(new QPlainTextEdit(this)),
      hervorhebung_(new DeckHervorhebung(editor_->document())), status_(Bedienelemente::hinweis({}, this)) {
    editor_->setObjectName("decktext");
    auto schrift = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    schrift.setFamily("DejaVu Sans Mono");
    schrift.setStyleHint(QFont::Monospace);
    schrift.setPointSizeF(font().pointSizeF());
    editor_->setFont(schrift);
    editor_->setLineWrapMode(QPlainTextEdit::NoWrap);
    editor_->installEventFilter(this);
    status_->setObjectName("textStatus");

    auto* spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(4);
    spalte->addWidget(editor_, 1);
    spalte->addWidget(status_);

    pause_.setSingleShot(true);
    pause_.setInterval(300);
    connect(&pause_, &QTimer::timeout, this, &DeckTextBereich::uebernehmen);
    connect(editor_, &QPlainTextEdit::textChanged, this, [this] {
        if (aktiv_) pause_.start();
    });
    connect(&app_, &AppModell::modellGeaendert, this, &DeckTextBereich::modellGeaendert);
}

void DeckTextBereich::zeigen() {
    aktiv_ = true;
    // Unverändertes Modell: der Text des Nutzers bleibt, mit allem, was der Leser übergeht.
    if (stand_ && app_.modell() == modellAusText_) return;
    textSetzen(app_.modell().schreiben());
}

void DeckTextBereich::verlassen() {
    uebernehmen();
    aktiv_ = false;
}

void DeckTextBereich::textSetzen(const std::string& text) {
    const int zeile = editor_->verticalScrollBar()->value();
    const bool alt = aktiv_;
    aktiv_ = false; // kein Zurücklesen des eigenen Texts
    editor_->setPlainText(QString::fromStdString(text));
    aktiv_ = alt;
    editor_->verticalScrollBar()->setValue(zeile);
    textStand_ = text;
    modellAusText_ = app_.modell();
    stand_ = true;
    statusSetzen(text);
}

void DeckTextBereich::uebernehmen() {
    pause_.stop();
    if (!stand_) return;
    auto text = editor_->toPlainText().toStdString();
    if (text == textStand_) return;
    const auto& alt = app_.modell();
    auto neu = Textabgleich::zusammenfuehren(alt, NECKern::Modell::lesen(text, alt.name));
    textStand_ = std::move(text);
    modellAusText_ = neu;
    statusSetzen(textStand_);
    app_.setModell(neu);
}

void DeckTextBereich::modellGeaendert() {
    if (!aktiv_ || app_.modell() == modellAusText_) return;
    // Noch nicht gelesene Eingaben gehen vor: sie kommen nach der Pause ins Modell.
    if (pause_.isActive()) return;
    textSetzen(app_.modell().schreiben());
}

bool DeckTextBereich::eventFilter(QObject* objekt, QEvent* ereignis) {
    if (objekt == editor_ && ereignis->type() == QEvent::FocusOut && aktiv_) uebernehmen();
    return QWidget::eventFilter(objekt, ereignis);
}

void DeckTextBereich::statusSetzen(const std::string& text) {
    const int n = ignorierteZeilen(text);
    if (n == 0)
        status_->setText("Änderungen gelten nach einer kurzen Pause im Tippen.");
    else if (n == 1)
        status_->setText(
            "1 Zeile wird nicht gelesen (rot unterstrichen) – sie bleibt im Text, geht aber nicht "
            "ins Modell.");
    else
        status_->setText(QString::fromStdString(fmt::format(
            "{} Zeilen werden nicht gelesen (rot unterstrichen) – sie bleiben im Text, gehen aber "
            "nicht ins Modell.",
            n)));
}
