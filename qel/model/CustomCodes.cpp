#include "qel/model/CustomCodes.h"

#include <cstddef>

#include "qel/base/Records.h"
#include "qel/model/QELCode.h"

namespace qel {
namespace {

constexpr std::size_t code_length = 3;

}  // namespace

CustomCodes::CustomCodes(std::u16string_view items) {
  for (const std::u16string_view item : records::split(items, u"\t")) {
    const std::u16string_view code = item.substr(0, code_length);
    are_nested_ = are_nested_ || item == u"nested";
    if (item.size() > 1 && item[1] == u'=') characters_[item[0]] = item.substr(2);
    if (item.size() <= code_length || item[code_length] != u'=' || !IsQELCode(code)) continue;
    replacements_.insert_or_assign(std::u16string(code),
                                   std::u16string(item.substr(code_length + 1)));
  }
}

void CustomCodes::append_translated(std::u16string& out, std::u16string_view codes) const {
  for (; codes.size() >= code_length; codes.remove_prefix(code_length)) {
    const auto found = replacements_.find(codes.substr(0, code_length));
    if (found != replacements_.end()) out.append(found->second);
  }
}

void CustomCodes::append_text(std::u16string& out, std::u16string_view text) const {
  if (characters_.empty()) {
    out.append(text);
    return;
  }
  for (const char16_t character : text) {
    const auto found = characters_.find(character);
    if (found == characters_.end()) {
      out.push_back(character);
    } else {
      out.append(found->second);
    }
  }
}

void NestedCodes::close(std::u16string& out, std::u16string_view on, const CustomCodes& spelling) {
  std::size_t kept = 0;
  while (kept < open_.size() && on.find(open_.substr(kept, code_length)) != on.npos) {
    kept += code_length;
  }
  while (open_.size() > kept) {
    open_.back() = u'0';
    spelling.append_translated(out, std::u16string_view(open_).substr(open_.size() - code_length));
    open_.resize(open_.size() - code_length);
  }
}

void NestedCodes::change(std::u16string& out, std::u16string_view on, const CustomCodes& spelling) {
  close(out, on, spelling);
  for (; !on.empty(); on.remove_prefix(code_length)) {
    const std::u16string_view code = on.substr(0, code_length);
    if (!spelling.has(code) || open_.find(code) != open_.npos) continue;
    spelling.append_translated(out, code);
    open_.append(code);
  }
}

}  // namespace qel
