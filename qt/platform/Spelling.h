#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "qel/qt/Speller.h"
#include "qt/platform/BoxMarks.h"

class QMenu;

namespace qel::qt {

/// The words of a speller, with what it has said of them.
class CheckedWords : public QObject {
  Q_OBJECT

 public:
  /// The words that all boxes with that language, or with that speller, share. A language's speller
  /// is loaded when the first word is checked.
  static std::shared_ptr<CheckedWords> of_language(const QString& language);
  static std::shared_ptr<CheckedWords> of_speller(std::shared_ptr<Speller> speller);

  bool has_speller() { return speller() != nullptr; }
  bool is_right(const QString& word);
  QStringList suggestions(const QString& word);
  void add(const QString& word);
  void ignore(const QString& word);

 signals:
  /// A word has become right.
  void changed();

 private:
  Speller* speller();

  QString language_;
  std::optional<std::shared_ptr<Speller>> speller_;
  QHash<QString, bool> known_;
};

/// Marks the wrong words in a box that may be edited, but for the one that is being typed, and
/// offers others in a menu; goes away when there is no dictionary. Words of one letter, in capitals
/// or with a digit, those within addresses, and scripts that do not divide words by blanks are not
/// checked.
class Spelling : public MarkSource {
  Q_OBJECT

 public:
  /// Belongs to the view.
  Spelling(BoxView& view, std::shared_ptr<CheckedWords> words);
  /// That of the view; null for none.
  static Spelling* of(const BoxView& view);

  const std::shared_ptr<CheckedWords>& words() const { return words_; }
  std::vector<Mark> marks(const box::Box& box, richtext::Extent visible) override;
  /// Puts what can be done about a wrong word at a position in front of the other items.
  void add_to_menu(QMenu& menu, std::size_t at);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool is_wrong(std::u16string_view text, richtext::Extent word);
  /// The wrong word at that place.
  std::optional<richtext::Extent> wrong_word(std::u16string_view text, std::size_t at);
  void note_caret();
  void replace(richtext::Extent extent, const QString& word, const QString& by);

  BoxView& view_;
  std::shared_ptr<CheckedWords> words_;
  bool has_changed_ = false;           // since the last words were marked
  std::optional<std::size_t> typing_;  // where the caret was after that
};

}  // namespace qel::qt
