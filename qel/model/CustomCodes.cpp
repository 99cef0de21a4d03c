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

}  // namespace qel
