#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace qel {

/// An address written in a text, from `start` up to, but not including, `end`.
struct Address {
  std::size_t start = 0;
  std::size_t end = 0;
  /// What to open: as it is written, with the scheme that it lacks.
  std::u16string target;

  friend bool operator==(const Address&, const Address&) = default;
};

/// The address that contains the character at a position: one that begins with "http://",
/// "https://", "ftp://", "mailto:" or "www.", or a bare address of e-mail. Punctuation at its end,
/// and brackets there that are not opened in it, belong to the text around it. However long the
/// text is, this looks only at what stands between blanks there, up to a limit.
std::optional<Address> address_at(std::u16string_view text, std::size_t position);

}  // namespace qel
