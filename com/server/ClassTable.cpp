#include "com/server/ClassTable.h"

#include <vector>

#include "com/control/QELTextboxObject.h"
#include "com/objects/DragDataObject.h"
#include "com/objects/LinkedListObject.h"
#include "com/objects/QELIndexColorsObject.h"
#include "com/objects/QELIndexFontsObject.h"
#include "com/objects/QELIndexLabelsObject.h"
#include "com/objects/QELTextObject.h"
#include "com/objects/RTFParserObject.h"
#include "com/objects/RichTextBoxObject.h"
#include "com/objects/SegmentCollectionObject.h"
#include "com/objects/SegmentObject.h"
#include "com/objects/StyleDecoderObject.h"
#include "com/objects/TextAndFormattingObject.h"
#include "com/objects/TextCaseObject.h"
#include "com/objects/WordCollectionObject.h"
#include "com/objects/WordObject.h"
#include "com/objects/cReplaceDataObject.h"
#include "com/objects/iStyleObject.h"
#include "com/pages/PropertyPage.h"

namespace qel::com {

namespace {

template <class Row>
constexpr ClassKind kind_of() {
  if (std::is_same_v<typename Row::Class, QELTextbox>) return ClassKind::control;
  return std::is_same_v<typename Row::Class, RTFParser> ? ClassKind::file_user : ClassKind::object;
}

template <class Row>
IUnknown* create(IUnknown* outer) {
  if constexpr (kind_of<Row>() == ClassKind::control) {
    return (new typename Row::Adapter)->created_for(outer);
  } else {
    return (new typename Row::Adapter(std::make_shared<typename Row::Class>()))->created_for(outer);
  }
}

template <class Row>
void list([[maybe_unused]] std::vector<ClassEntry>& entries) {
  if constexpr (Row::is_creatable) {
    entries.push_back({Row::id(), kind_of<Row>(), create<Row>});
  }
}

template <class... Rows>
std::vector<ClassEntry> listed(Table<Rows...> /*classes*/) {
  std::vector<ClassEntry> entries;
  (list<Rows>(entries), ...);
  entries.push_back({__uuidof(::QELTextboxPage), ClassKind::page, make_property_page});
  return entries;
}

}  // namespace

std::span<const ClassEntry> creatable_classes() {
  static const std::vector<ClassEntry> entries = listed(Classes());
  return entries;
}

}  // namespace qel::com
