#pragma once

#include <QDialog>
#include <cstdint>
#include <string>

namespace qel::forms {

/// Shows two versions of a record beside each other, with the words that differ marked, and asks
/// which to keep.
class ConflictDialog : public QDialog {
  Q_OBJECT

 public:
  enum class Answer : std::uint8_t { cancel, keep_both, use_mine, use_theirs };

  /// A version of a record, in markup.
  struct Version {
    std::u16string title;
    std::u16string body;
  };

  ConflictDialog(const Version& theirs, const Version& mine, QWidget* parent = nullptr);

  Answer answer() const { return answer_; }

 private:
  QWidget* create_versions(const Version& theirs, const Version& mine);
  QWidget* create_buttons();

  Answer answer_ = Answer::cancel;
};

}  // namespace qel::forms
