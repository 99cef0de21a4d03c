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
                  style.SmallCaps, style.StrikeThru, style.FontID, style.ColorID,
                  style.Superscript, style.Subscript, style.Unicode);
}

template <auto append, class... Arguments>
std::u16string built(const Arguments&... arguments) {
  std::u16string codes;
  append(codes, arguments...);
  return codes;
}

}  // namespace

std::u16string iStyle::get_All() const {
  return records::write_fields(fields_of(*this), separator);
}

void iStyle::put_All(std::u16string_view Value) {
  records::read_fields(fields_of(*this), Value, separator);
}

void iStyle::copy_record(const iStyle& source) {
  // Only a separator in the name, or a size that is no decimal number, changes on the way through
  // the text.
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

std::u16string iStyle::OnCodes(const iStyle& pStyle) {
  return built<style_codes::append_on>(pStyle, CodeSet::current);
}

std::u16string iStyle::OffCodes(const iStyle& pStyle) {
  return built<style_codes::append_off>(pStyle, CodeSet::current);
}

std::u16string iStyle::DifferentOnCodes(const iStyle& pStyle, const iStyle& LastStyle) {
  return built<style_codes::append_different_on>(pStyle, LastStyle, CodeSet::current);
}

std::u16string iStyle::DifferentOffCodes(const iStyle& pStyle, const iStyle* NextStyle) {
  return built<style_codes::append_different_off>(pStyle, NextStyle, CodeSet::current);
}

std::u16string iStyle::v6OnCodes(const iStyle& pStyle) {
  return built<style_codes::append_on>(pStyle, CodeSet::v6);
}

std::u16string iStyle::v6OffCodes(const iStyle& pStyle) {
  return built<style_codes::append_off>(pStyle, CodeSet::v6);
}

std::u16string iStyle::v6DifferentOnCodes(const iStyle& pStyle, const iStyle& LastStyle) {
  return built<style_codes::append_different_on>(pStyle, LastStyle, CodeSet::v6);
}

std::u16string iStyle::v6DifferentOffCodes(const iStyle& pStyle, const iStyle* NextStyle) {
  return built<style_codes::append_different_off>(pStyle, NextStyle, CodeSet::v6);
}

}  // namespace qel
