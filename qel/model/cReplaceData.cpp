#include "qel/model/cReplaceData.h"

#include <tuple>

#include "qel/base/Records.h"

namespace qel {
namespace {

constexpr std::u16string_view separator = u"<Repl:Data>";

template <class Record>
auto fields_of(Record& record) {
  return std::tie(record.DontChangeStyle, record.DontChangeFont, record.DontChangeColor,
                  record.Bold, record.Italic, record.Underline, record.StrikeOut,
                  record.Superscript, record.Subscript, record.FontID, record.ColorID);
}

}  // namespace

std::u16string cReplaceData::get_All() const {
  return records::write_fields(fields_of(*this), separator);
}

void cReplaceData::put_All(std::u16string_view Value) {
  records::read_fields(fields_of(*this), Value, separator);
}

void cReplaceData::Initialize() { *this = cReplaceData(); }

}  // namespace qel
