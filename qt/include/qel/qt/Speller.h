#pragma once

#include <QString>
#include <QStringList>
#include <memory>

namespace qel::qt {

/// Knows the words of a language. A host may supply its own to text boxes; all members are called
/// on the application's thread, and must return before other events are handled or a box is
/// changed.
class Speller {
 public:
  Speller() = default;
  Speller(const Speller&) = delete;
  Speller& operator=(const Speller&) = delete;
  virtual ~Speller() = default;

  /// The system's speller of a language such as "en_GB", or else of another country with that
  /// language; it is loaded once. Null without a dictionary, or where the library was built without
  /// enchant.
  static std::shared_ptr<Speller> of_language(const QString& language);

  /// The word has letters only, and an apostrophe, U+0027, perhaps.
  virtual bool is_right(const QString& word) = 0;
  /// What the word might be, the likeliest first.
  virtual QStringList suggestions(const QString& word) = 0;
  /// From now on the word is right: always, or until the program ends.
  virtual void add(const QString& word) = 0;
  virtual void ignore(const QString& word) = 0;
};

}  // namespace qel::qt
