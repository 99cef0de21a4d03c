#include "qel/model/iStyle.h"

#include <cmath>
#include <tuple>

#include "qel/base/Records.h"
#include "qel/model/StyleCodes.h"

namespace qel {
namespace {

using style_codes::CodeSet;

constexpr std::u16string_view separator = u"<Font:Rec>";

/// Stored records depend on this order: the indexes stand before superscript and subscript.
template <class Style>
auto fields_of(Style& style) {
  return std::tie(style.Name, style.Size, style.Bold, style.Italic, style.Underline,
                  style.SmallCaps, style.StrikeThru, style.FontID, style.ColorID, style.Superscript,
                  style.Subscript, style.Unicode);
}

std::u16string on_codes(const iStyle& style, CodeSet set) {
  std::u16string codes;
  style_codes::append_on(codes, style_codes::state_of(style), set);
  return codes;
}

std::u16string off_codes(const iStyle& style, CodeSet set) {
  std::u16string codes;
  style_codes::append_off(codes, style_codes::state_of(style), set);
  return codes;
}

std::u16string different_on_codes(const iStyle& style, const iStyle& last, CodeSet set) {
  std::u16string codes;
  style_codes::append_different_on(codes, style_codes::state_of(style), style_codes::state_of(last),
                                   set);
  return codes;
}

std::u16string different_off_codes(const iStyle& style, const iStyle* next, CodeSet set) {
  if (next == nullptr) return off_codes(style, set);
  std::u16string codes;
  const style_codes::CodeState next_state = style_codes::state_of(*next);
  style_codes::append_different_off(codes, style_codes::state_of(style), &next_state, set);
  return codes;
}

}  // namespace

std::u16string iStyle::get_All() const {
  return records::write_fields(fields_of(*this), separator);
}

void iStyle::put_All(std::u16string_view Value) {
  const std::u16string record(Value);  // `Value` may be a part of this very record
  records::read_fields(fields_of(*this), record, separator);
}

void iStyle::copy_record(const iStyle& source) {
  // Only a separator in the name, or a size that is not finite, changes on the way through the
  // text.
  if (source.Name.find(separator) != std::u16string::npos || !std::isfinite(source.Size)) {
    put_All(source.get_All());
    return;
  }
  const bool title_case = TitleCase;
  *this = source;
  TitleCase = title_case;
}

void iStyle::Initialize() {
  const bool title_case = TitleCase;
  *this = iStyle();
  TitleCase = title_case;
}

std::u16string iStyle::OnCodes(const iStyle& pStyle) { return on_codes(pStyle, CodeSet::current); }

std::u16string iStyle::OffCodes(const iStyle& pStyle) {
  return off_codes(pStyle, CodeSet::current);
}

std::u16string iStyle::DifferentOnCodes(const iStyle& pStyle, const iStyle& LastStyle) {
  return different_on_codes(pStyle, LastStyle, CodeSet::current);
}

std::u16string iStyle::DifferentOffCodes(const iStyle& pStyle, const iStyle* NextStyle) {
  return different_off_codes(pStyle, NextStyle, CodeSet::current);
}

std::u16string iStyle::v6OnCodes(const iStyle& pStyle) { return on_codes(pStyle, CodeSet::v6); }

std::u16string iStyle::v6OffCodes(const iStyle& pStyle) { return off_codes(pStyle, CodeSet::v6); }

std::u16string iStyle::v6DifferentOnCodes(const iStyle& pStyle, const iStyle& LastStyle) {
  return different_on_codes(pStyle, LastStyle, CodeSet::v6);
}

std::u16string iStyle::v6DifferentOffCodes(const iStyle& pStyle, const iStyle* NextStyle) {
  return different_off_codes(pStyle, NextStyle, CodeSet::v6);
}

}  // namespace qel
