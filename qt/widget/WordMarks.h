#pragma once

#include <QStringList>
#include <string>
#include <vector>

#include "qt/platform/BoxMarks.h"

namespace qel::qt {

/// How a hit of a search is marked in the box's window: as by a text marker that leaves the text
/// readable, on a dark background too.
QTextCharFormat hit_format(const box::Box& box);

/// Marks the words of a text that begin with one of those given, whatever their case and accents.
class WordMarks : public MarkSource {
  Q_OBJECT

 public:
  void put_words(const QStringList& words);
  std::vector<Mark> marks(const box::Box& box, richtext::Extent visible) override;

 private:
  std::vector<std::u16string> words_;  // without case and accents
};

}  // namespace qel::qt
