// The text forms of records: reading any text never raises, and what was written reads back.

#include <cstddef>
#include <cstdint>
#include <string>

#include "Input.h"
#include "qel/model/cReplaceData.h"
#include "qel/model/iStyle.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"
#include "qel/tables/QELIndexLabels.h"

namespace {

using qel::fuzz::require;

template <class Record>
void check_same_object(const std::u16string& text, Record& record) {
  record.put_All(text);
  const std::u16string written = record.get_All();
  record.put_All(written);
  require(record.get_All() == written, "an object that reads its own record stays as it is");
}

template <class Record>
void check(const std::u16string& text) {
  Record record;
  check_same_object(text, record);
  Record fresh;
  fresh.put_All(record.get_All());
  require(fresh.get_All() == record.get_All(), "a new object that reads a record has its values");
}

template <class Table>
void check_copy(const std::u16string& text) {
  Table table;
  check_same_object(text, table);
  Table copy;
  copy.CopyFrom(table);
  require(copy.get_All() == table.get_All(), "a copy writes the same record");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string text = qel::fuzz::Input(data, size).text();
  check<qel::iStyle>(text);
  check<qel::cReplaceData>(text);
  check<qel::QELIndexFonts>(text);
  check<qel::QELIndexLabels>(text);
  check_copy<qel::QELIndexFonts>(text);
  check_copy<qel::QELIndexLabels>(text);
  // Not into a new object: a label's system colour is written as the value that it had, which is
  // more than the 16 bits that reading converts.
  check_copy<qel::QELIndexColors>(text);
  return 0;
}
