#pragma once

#include <map>
#include <string>
#include <string_view>

namespace qel {

/// A host's own spelling of the codes: what to write in place of each.
class CustomCodes {
 public:
  CustomCodes() = default;
  /// Reads items "code=replacement" separated by TAB, for example "/b1=<b>\t/b0=</b>\t/nl=<br>".
  /// The last item for a code counts; an item that does not begin with a code and "=" is ignored.
  explicit CustomCodes(std::u16string_view items);

  /// Appends the replacement of each code in `codes`, a sequence of codes and nothing else. A code
  /// that has no replacement writes nothing.
  void append_translated(std::u16string& out, std::u16string_view codes) const;

 private:
  std::map<std::u16string, std::u16string, std::less<>> replacements_;
};

}  // namespace qel
