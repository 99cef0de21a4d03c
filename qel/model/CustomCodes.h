#pragma once

#include <map>
#include <string>
#include <string_view>

namespace qel {

/// A host's own spelling of the codes: what to write in place of each, and of characters.
class CustomCodes {
 public:
  CustomCodes() = default;
  /// Reads items "code=replacement" separated by TAB, for example "/b1=<b>\t/b0=</b>\t/nl=<br>".
  /// An item for a single character ("<=&lt;") says how it is written in the text; the item
  /// "nested" asks for `NestedCodes`. The last item for a code counts; any other item is ignored.
  explicit CustomCodes(std::u16string_view items);

  /// Appends the replacement of each code in `codes`, a sequence of codes and nothing else. A code
  /// that has no replacement writes nothing.
  void append_translated(std::u16string& out, std::u16string_view codes) const;
  /// Appends a text with the replacements of its characters.
  void append_text(std::u16string& out, std::u16string_view text) const;

  bool has(std::u16string_view code) const { return replacements_.contains(code); }
  bool are_nested() const { return are_nested_; }

 private:
  std::map<std::u16string, std::u16string, std::less<>> replacements_;
  std::map<char16_t, std::u16string> characters_;
  bool are_nested_ = false;
};

/// Writes codes as elements that lie within each other, as HTML wants them: what is on within an
/// element that ends is closed before it and opened again behind.
class NestedCodes {
 public:
  /// Goes on to a run in which the codes `on` hold, and no others.
  void change(std::u16string& out, std::u16string_view on, const CustomCodes& spelling);
  /// Closes what does not hold there.
  void close(std::u16string& out, std::u16string_view on, const CustomCodes& spelling);

 private:
  std::u16string open_;  // the outermost first
};

}  // namespace qel
