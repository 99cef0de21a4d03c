#include "qt/platform/Spelling.h"

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <QTextDocument>
#include <algorithm>
#include <string_view>
#include <utility>

#include "qel/base/Addresses.h"
#include "qel/base/CaseMapping.h"
#include "qel/base/CodeRanges.h"
#include "qel/base/Utf16.h"
#include "qel/base/Words.h"
#include "qt/platform/BoxHandling.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using richtext::Extent;

namespace {

constexpr char16_t right_quote = 0x2019;
constexpr char16_t soft_hyphen = 0xAD;

/// Scripts in which blanks do not divide words: of South East Asia, China and Japan.
constexpr CodeRange undivided[] = {{0xE00, 0xEFF},   {0x1000, 0x109F}, {0x1780, 0x17FF},
                                   {0x2E80, 0x9FFF}, {0xF900, 0xFAFF}, {0x20000, 0x3FFFF}};

/// The word as a dictionary has it.
QString plain_word(std::u16string_view word) {
  return to_qt(word)
      .remove(QChar(soft_hyphen))
      .replace(QChar(right_quote), QLatin1Char('\''))
      .normalized(QString::NormalizationForm_C);
}

/// Whether a dictionary may have the word.
bool is_of_letters(std::u16string_view word) {
  bool has_small = false;
  std::size_t count = 0;
  for (std::size_t at = 0; at < word.size(); ++count) {
    const char32_t character = next_character(word, at);
    if (find_range(undivided, character) != nullptr || QChar::isDigit(character)) return false;
    // Letters without case count as small ones.
    has_small = has_small || (is_word_character(character) && to_lower(character) == character);
  }
  return has_small && count > 1;
}

/// As much of the text around the extent as belongs to its first and its last word.
Extent with_whole_words(std::u16string_view text, Extent extent) {
  constexpr std::size_t longest = 100;
  for (std::size_t i = 0; i < longest && cuts_word(text, extent.start); ++i) {
    extent.start = step_before(text, extent.start);
  }
  for (std::size_t i = 0; i < longest && cuts_word(text, extent.end); ++i) {
    extent.end = step_after(text, extent.end);
  }
  return extent;
}

}  // namespace

std::shared_ptr<CheckedWords> CheckedWords::of_language(const QString& language) {
  static QHash<QString, std::shared_ptr<CheckedWords>> all;
  std::shared_ptr<CheckedWords>& words = all[language];
  if (words == nullptr) {
    words = std::make_shared<CheckedWords>();
    words->language_ = language;
  }
  return words;
}

std::shared_ptr<CheckedWords> CheckedWords::of_speller(std::shared_ptr<Speller> speller) {
  static QHash<Speller*, std::weak_ptr<CheckedWords>> all;
  std::weak_ptr<CheckedWords>& known = all[speller.get()];
  std::shared_ptr<CheckedWords> words = known.lock();
  if (words == nullptr) {
    words = std::make_shared<CheckedWords>();
    words->speller_ = std::move(speller);
    known = words;
  }
  return words;
}

Speller* CheckedWords::speller() {
  if (!speller_) speller_ = Speller::of_language(language_);
  return speller_->get();
}

bool CheckedWords::is_right(const QString& word) {
  constexpr qsizetype most = 50'000;
  if (speller() == nullptr) return true;
  const auto known = known_.constFind(word);
  if (known != known_.constEnd()) return *known;
  if (known_.size() >= most) known_.clear();
  return *known_.insert(word, speller()->is_right(word));
}

QStringList CheckedWords::suggestions(const QString& word) {
  constexpr qsizetype most = 6;
  return speller() == nullptr ? QStringList() : speller()->suggestions(word).mid(0, most);
}

void CheckedWords::add(const QString& word) {
  if (speller() != nullptr) speller()->add(word);
  known_.clear();  // other forms of the word may be right now, too
  emit changed();
}

void CheckedWords::ignore(const QString& word) {
  if (speller() != nullptr) speller()->ignore(word);
  known_.clear();
  emit changed();
}

Spelling::Spelling(BoxView& view, std::shared_ptr<CheckedWords> words)
    : MarkSource(&view), view_(view), words_(std::move(words)) {
  connect(words_.get(), &CheckedWords::changed, this, &MarkSource::changed);
  connect(view.document(), &QTextDocument::contentsChange, this, [this] { has_changed_ = true; });
  connect(&view, &QTextEdit::cursorPositionChanged, this, &Spelling::note_caret);
  view.installEventFilter(this);
  view.marks().add(*this, BoxMarks::Layer::spelling);
}

Spelling* Spelling::of(const BoxView& view) {
  return view.findChild<Spelling*>(QString(), Qt::FindDirectChildrenOnly);
}

bool Spelling::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusOut:
      typing_.reset();
      [[fallthrough]];
    case QEvent::ReadOnlyChange:
    case QEvent::EnabledChange:
      emit changed();
      break;
    default:
      break;
  }
  return MarkSource::eventFilter(watched, event);
}

/// The word that was being typed is complete when the caret goes elsewhere.
void Spelling::note_caret() {
  if (!typing_ || has_changed_) return;
  typing_.reset();
  emit changed();
}

bool Spelling::is_wrong(std::u16string_view text, Extent word) {
  constexpr std::size_t longest = 100;
  const std::u16string_view letters = text.substr(word.start, word.length());
  return letters.size() <= longest && is_of_letters(letters) &&
         !words_->is_right(plain_word(letters)) && !address_at(text, word.start);
}

std::vector<Mark> Spelling::marks(const box::Box& box, Extent visible) {
  std::vector<Mark> found;
  const std::size_t caret = box.selected().caret;
  if (std::exchange(has_changed_, false) && view_.hasFocus()) typing_ = caret;
  if (!box.may_edit() || box.text().empty()) return found;
  if (!words_->has_speller()) {
    deleteLater();
    return found;
  }
  QTextCharFormat format;
  format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
  format.setUnderlineColor(QColor(0xE0, 0x30, 0x30));
  const std::u16string_view text = box.text();
  visible = with_whole_words(text, visible);
  for (std::size_t at = word_start(text, visible.start); at < visible.end;) {
    const Extent word = {at, word_end(text, at)};
    const bool is_typed = typing_ && *typing_ > word.start && *typing_ <= word.end;
    if (!is_typed && is_wrong(text, word)) found.push_back({word, format});
    at = word_start(text, word.end);
  }
  return found;
}

std::optional<Extent> Spelling::wrong_word(std::u16string_view text, std::size_t at) {
  const Extent around = with_whole_words(text, {at, at});
  if (around.length() == 0) return {};
  const std::size_t start = word_start(text, around.start);
  if (start >= around.end) return {};
  const Extent word = {start, word_end(text, start)};
  return is_wrong(text, word) ? std::optional(word) : std::nullopt;
}

void Spelling::add_to_menu(QMenu& menu, std::size_t at) {
  const box::Box* const box = view_.box();
  if (box == nullptr || !box->may_edit()) return;
  const auto extent = wrong_word(box->text(), at);
  if (!extent) return;
  const QString shown =
      to_qt(std::u16string_view(box->text()).substr(extent->start, extent->length()));
  const QString word = plain_word(view_of(shown));
  QAction* const first = menu.actions().value(0);
  const auto add = [&](const QString& caption, auto act) {
    auto* const action = new QAction(caption, &menu);
    connect(action, &QAction::triggered, this, act);
    menu.insertAction(first, action);
    return action;
  };
  const QStringList suggestions = words_->suggestions(word);
  for (QString by : suggestions) {
    if (shown.contains(QChar(right_quote))) by.replace(QLatin1Char('\''), QChar(right_quote));
    QAction* const action = add(QString(by).replace(QLatin1Char('&'), QStringLiteral("&&")),
                                [this, extent, shown, by] { replace(*extent, shown, by); });
    QFont font = action->font();
    font.setBold(true);
    action->setFont(font);
  }
  if (suggestions.isEmpty()) add(tr("No Suggestions"), [] {})->setEnabled(false);
  menu.insertSeparator(first);
  add(tr("Add to Dictionary"), [words = words_, word] { words->add(word); });
  add(tr("Ignore"), [words = words_, word] { words->ignore(word); });
  if (first != nullptr) menu.insertSeparator(first);
}

void Spelling::replace(Extent extent, const QString& word, const QString& by) {
  const BoxView::Handling handling(view_);
  box::Box* const box = view_.box();
  if (box == nullptr || !box->may_edit()) return;
  box->settle();
  if (box->text().compare(extent.start, extent.length(), view_of(word)) != 0) return;
  box->replace_each({extent}, view_of(by));
}

}  // namespace qel::qt
