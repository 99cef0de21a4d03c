#pragma once

#include <QString>
#include <QStringList>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// Words and times as the window shows them.
namespace qel::forms {

/// The text with a blank in place of each line break and each run of blanks.
QString on_one_line(std::u16string_view text);
/// A title between quotes, cut where it is long.
QString quoted(const QString& title);
/// The words that are searched for in `text`.
QStringList words_of(const QString& text);
int count_words(const QString& text);
/// What a reader counts: line breaks and marks upon letters do not.
int count_characters(const QString& text);
/// The text for a number: `many` has "%1" where it stands.
QString counted(int number, const QString& one, const QString& many);
/// "1 record" or "3 records".
QString records_counted(std::size_t number);
/// A day and time of today, the day of this year, or the whole date.
QString short_date(std::int64_t time);
QString long_date(std::int64_t time);

}  // namespace qel::forms
