#include "qt/widget/WordMarks.h"

#include <QString>
#include <algorithm>
#include <string_view>

#include "qel/base/CaseMapping.h"
#include "qel/base/Graphemes.h"
#include "qel/base/Utf16.h"
#include "qel/base/Words.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using richtext::Extent;

namespace {

/// A text without case and accents, and where each unit of it comes from.
struct Plain {
  explicit Plain(std::u16string_view of) {
    for (std::size_t at = 0; at < of.size();) {
      const std::size_t length = units_of(character_at(of, at));
      const QString apart = to_qt(of.substr(at, length)).normalized(QString::NormalizationForm_KD);
      for (std::size_t i = 0; i < static_cast<std::size_t>(apart.size());) {
        const char32_t character = character_at(view_of(apart), i);
        if (!extends_cluster(character)) {
          text += fold_case(view_of(apart).substr(i, units_of(character)));
          places.resize(text.size(), at);
        }
        i += units_of(character);
      }
      at += length;
    }
    places.push_back(of.size());
  }

  std::u16string text;
  std::vector<std::size_t> places;
};

}  // namespace

QTextCharFormat hit_format(const box::Box& box) {
  const BoxView* const view = BoxView::of(box);
  const QColor base = view == nullptr ? QColor(Qt::white) : view->palette().color(QPalette::Base);
  constexpr double light = 0.5;
  QTextCharFormat format;
  format.setBackground(base.lightnessF() < light ? QColor(0x6E, 0x53, 0x00)
                                                 : QColor(0xFF, 0xE0, 0x66));
  return format;
}

void WordMarks::put_words(const QStringList& words) {
  words_.clear();
  for (const QString& word : words) {
    std::u16string plain = Plain(view_of(word)).text;
    if (!plain.empty()) words_.push_back(std::move(plain));
  }
  emit changed();
}

std::vector<Mark> WordMarks::marks(const box::Box& box, Extent visible) {
  std::vector<Mark> found;
  if (words_.empty()) return found;
  const std::u16string_view all = box.text();
  while (cuts_word(all, visible.start)) visible.start = step_before(all, visible.start);
  while (cuts_word(all, visible.end)) visible.end = step_after(all, visible.end);
  const std::u16string_view text = all.substr(visible.start, visible.length());
  const Plain plain(text);
  const QTextCharFormat format = hit_format(box);
  for (const std::u16string& word : words_) {
    for (std::size_t at = plain.text.find(word); at != std::u16string::npos;
         at = plain.text.find(word, at + word.size())) {
      const std::size_t start = plain.places[at];
      if (cuts_word(text, start)) continue;
      // Accents that follow the last letter are marked with it.
      const std::size_t end = cluster_after(text, plain.places[at + word.size() - 1]);
      found.push_back({{visible.start + start, visible.start + end}, format});
    }
  }
  return found;
}

}  // namespace qel::qt
