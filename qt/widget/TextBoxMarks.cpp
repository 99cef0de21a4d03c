// What a text box marks in its text.

#include <QLocale>
#include <utility>

#include "qel/qt/TextBox.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/Spelling.h"
#include "qt/widget/WordMarks.h"

namespace qel::qt {

void TextBox::MarkWords(const QStringList& Words) {
  if (Words.isEmpty()) {
    words_.reset();
    return;
  }
  if (words_ == nullptr) {
    words_ = std::make_unique<WordMarks>();
    for (const auto& box : control_->boxes()) {
      if (BoxView* const shown = BoxView::of(*box)) {
        shown->marks().add(*words_, BoxMarks::Layer::words);
      }
    }
  }
  words_->put_words(Words);
}

void TextBox::put_RunTime(bool Value) {
  is_run_time_ = Value;
  check_spelling();
}

void TextBox::put_ChecksSpelling(bool Value) {
  checks_spelling_ = Value;
  check_spelling();
}

void TextBox::put_SpellingLanguage(const QString& Value) {
  spelling_language_ = Value;
  check_spelling();
}

void TextBox::put_Speller(std::shared_ptr<Speller> Value) {
  speller_ = std::move(Value);
  check_spelling();
}

/// Begins to check words, or ends it.
void TextBox::check_spelling() {
  const bool checks = checks_spelling_ && is_run_time_ && !get_RevealCodes();
  const QString language = spelling_language_.isEmpty() ? QLocale().name() : spelling_language_;
  for (const auto& box : control_->boxes()) {
    BoxView* const shown = BoxView::of(*box);
    if (shown == nullptr) continue;
    delete Spelling::of(*shown);
    if (!checks) continue;
    new Spelling(*shown, speller_ ? CheckedWords::of_speller(speller_)
                                  : CheckedWords::of_language(language));
  }
}

}  // namespace qel::qt
