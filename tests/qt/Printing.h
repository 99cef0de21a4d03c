#pragma once

#include <QString>
#include <ostream>

/// Readable in messages of tests.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << qPrintable(text) << '"';
}
