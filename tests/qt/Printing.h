#pragma once

#include <QString>
#include <ostream>

/// Makes strings readable in test messages.
inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << qPrintable(text) << '"';
}
