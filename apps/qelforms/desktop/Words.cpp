#include "Words.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>
#include <QTextBoundaryFinder>

namespace qel::forms {
namespace {

QString translated(const char* text) {
  return QCoreApplication::translate("qel::forms::Words", text);
}

}  // namespace

QString on_one_line(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())).simplified();
}

QString quoted(const QString& title) {
  constexpr qsizetype longest = 40;
  const QString shown =
      title.size() <= longest ? title : title.left(longest).trimmed() + QChar(u'\u2026');
  return translated("\u201C%1\u201D").arg(shown);
}

QStringList words_of(const QString& text) {
  return text.simplified().split(QChar(u' '), Qt::SkipEmptyParts);
}

int count_words(const QString& text) {
  int words = 0;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
  for (qsizetype at = 0; at >= 0; at = finder.toNextBoundary()) {
    if ((finder.boundaryReasons() & QTextBoundaryFinder::StartOfItem) != 0) ++words;
  }
  return words;
}

int count_characters(const QString& text) {
  int characters = 0;
  for (const QChar c : text) {
    const bool counts =
        c != QChar(u'\r') && c != QChar(u'\n') && !c.isLowSurrogate() && !c.isMark();
    characters += counts ? 1 : 0;
  }
  return characters;
}

QString counted(int number, const QString& one, const QString& many) {
  return number == 1 ? one : many.arg(QLocale().toString(number));
}

QString records_counted(std::size_t number) {
  return counted(static_cast<int>(number), translated("1 record"), translated("%1 records"));
}

QString short_date(std::int64_t time) {
  const QDateTime then = QDateTime::fromMSecsSinceEpoch(time);
  const QDate today = QDate::currentDate();
  const QLocale locale;
  if (then.date() == today) {
    QString format = locale.timeFormat(QLocale::ShortFormat);
    return locale.toString(then.time(), format.remove(QLatin1String(":ss")));
  }
  if (then.date() == today.addDays(-1)) return translated("Yesterday");
  if (then.date().year() != today.year()) return locale.toString(then.date(), QLocale::ShortFormat);
  return locale.toString(then.date(), translated("d MMM"));
}

QString long_date(std::int64_t time) {
  return QLocale().toString(QDateTime::fromMSecsSinceEpoch(time), QLocale::ShortFormat);
}

}  // namespace qel::forms
