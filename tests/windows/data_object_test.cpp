// Dragged data as objects of the system.

#include <gtest/gtest.h>
#include <ole2.h>
#include <windows.h>

#include <stdexcept>
#include <string>

#include "ForeignObject.h"
#include "windows/DataObject.h"
#include "windows/GlobalMemory.h"

namespace qel::windows {
namespace {

using namespace platform;
using test::ForeignObject;
using test::others_of;
using namespace std::string_literals;
using namespace std::string_view_literals;

FORMATETC in_memory(UINT format) {
  return {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

std::string bytes_of(HGLOBAL block) {
  std::string bytes(static_cast<const char*>(GlobalLock(block)), GlobalSize(block));
  GlobalUnlock(block);
  return bytes;
}

/// What the object gives in that format; the failure's code where it gives nothing.
std::string bytes_of(IDataObject& object, UINT format) {
  FORMATETC form = in_memory(format);
  STGMEDIUM medium = {};
  const HRESULT result = object.GetData(&form, &medium);
  if (FAILED(result)) return result == DV_E_FORMATETC ? "none" : "failed";
  std::string bytes = bytes_of(medium.hGlobal);
  ReleaseStgMedium(&medium);
  return bytes;
}

Pointer<DataObject> data_object(DragData data) {
  return Pointer<DataObject>::adopted(new DataObject(std::move(data)));
}

/// The part of HTML from the clipboard between the bytes that two lines of its header name.
std::string part_of_html(const std::string& html, const char* begin, const char* end) {
  const auto number = [&](const char* name) {
    return std::stoul(html.substr(html.find(name) + std::string_view(name).size()));
  };
  return html.substr(number(begin), number(end) - number(begin));
}

TEST(DataObject, OffersTextRTFAndHTML) {
  DragData data;
  data.put(text_format, u"a\u4E2D");
  data.put(rtf_format, u"{\\rtf1 \\b \u00E4}");
  const auto object = data_object(data);
  const UINT rtf = rtf_clipboard_format();
  EXPECT_EQ(bytes_of(*object, CF_UNICODETEXT).substr(0, 6), "a\0\x2D\x4E\0\0"sv);
  EXPECT_EQ(bytes_of(*object, CF_TEXT).substr(0, 3), "a?\0"sv);
  EXPECT_STREQ(bytes_of(*object, rtf).c_str(), "{\\rtf1 \\b \\'e4}");
  EXPECT_EQ(bytes_of(*object, CF_BITMAP), "none");
  const std::string block = bytes_of(*object, html_clipboard_format());
  const std::string html = block.substr(0, block.find('\0'));
  EXPECT_EQ(part_of_html(html, "StartFragment:", "EndFragment:"),
            "<b><span style=\"font-family:'Arial'\">\xC3\xA4</span></b>");
  EXPECT_EQ(part_of_html(html, "StartHTML:", "EndHTML:"), html.substr(html.find("<html>")));

  struct Row {
    FORMATETC form;
    HRESULT expected;
  };
  FORMATETC icon = in_memory(CF_TEXT);
  icon.dwAspect = DVASPECT_ICON;
  FORMATETC file = in_memory(CF_TEXT);
  file.tymed = TYMED_FILE;
  FORMATETC any = in_memory(CF_TEXT);
  any.tymed = TYMED_FILE | TYMED_HGLOBAL;
  for (Row row :
       {Row{in_memory(rtf), S_OK}, Row{in_memory(html_clipboard_format()), S_OK}, Row{any, S_OK},
        Row{file, DV_E_TYMED}, Row{icon, DV_E_TYMED}, Row{in_memory(CF_HDROP), DV_E_FORMATETC}}) {
    EXPECT_EQ(object->QueryGetData(&row.form), row.expected);
    STGMEDIUM medium = {};
    EXPECT_EQ(object->GetData(&row.form, &medium), row.expected);
    ReleaseStgMedium(&medium);
  }
  EXPECT_EQ(object->QueryGetData(nullptr), E_POINTER);
}

TEST(DataObject, ListsItsForms) {
  DragData data;
  data.promise(text_format);
  const auto object = data_object(data);
  IEnumFORMATETC* forms = nullptr;
  ASSERT_EQ(object->EnumFormatEtc(DATADIR_GET, &forms), S_OK);
  FORMATETC listed[8] = {};
  ULONG count = 0;
  forms->Next(8, listed, &count);
  forms->Release();
  ASSERT_GE(count, 2U);
  EXPECT_EQ(listed[0].cfFormat, CF_UNICODETEXT);
  EXPECT_EQ(listed[1].cfFormat, CF_TEXT);
  for (ULONG i = 0; i < count; ++i) EXPECT_EQ(object->QueryGetData(&listed[i]), S_OK);
  EXPECT_NE(object->EnumFormatEtc(DATADIR_SET, &forms), S_OK);
  EXPECT_EQ(forms, nullptr);
}

TEST(DataObject, SuppliesWhatWasPromisedWhileTheDragLasts) {
  DragData data;
  data.promise(text_format);
  data.promise(rtf_format);
  int asked = 0;
  data.put_supply([&](DragData& promised, std::int16_t format) {
    ++asked;
    if (format == rtf_format) throw std::runtime_error("a host's");
    promised.put(format, u"supplied");
  });
  const auto object = data_object(data);
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(bytes_of(*object, rtf_clipboard_format()), "failed") << "and nothing is thrown";
  EXPECT_EQ(bytes_of(*object, CF_TEXT).substr(0, 9), "supplied\0"sv);
  EXPECT_EQ(asked, 2);
  object->end_supply();
  EXPECT_EQ(bytes_of(*object, rtf_clipboard_format()), "none");
  EXPECT_EQ(bytes_of(*object, CF_TEXT).substr(0, 9), "supplied\0"sv);
  EXPECT_EQ(asked, 2);
}

TEST(DataObject, IsFoundBehindWhatStandsInItsPlace) {
  const auto own = data_object({});
  EXPECT_EQ(DataObject::behind(*own), own.get());
  EXPECT_EQ(DataObject::behind(*ForeignObject::create({}, own.get())), own.get());
  FORMATETC forms[8] = {};
  ULONG count = 0;
  IEnumFORMATETC* list = nullptr;
  own->EnumFormatEtc(DATADIR_GET, &list);
  list->Next(8, forms, &count);
  list->Release();
  const UINT origin = forms[count - 1].cfFormat;
  std::string bytes = bytes_of(*own, origin);
  EXPECT_EQ(DataObject::behind(*ForeignObject::create({{origin, bytes}})), own.get());
  for (std::string other : {bytes, bytes.substr(0, 5)}) {
    other[0] = static_cast<char>(other[0] + 1);
    EXPECT_EQ(DataObject::behind(*ForeignObject::create({{origin, other}})), nullptr)
        << "of another process, or not ours at all";
  }
  EXPECT_EQ(others_of(own), 0U);
}

TEST(DataObject, ReadsOthersWhenTheyAreAskedFor) {
  const UINT rtf = rtf_clipboard_format();
  const auto foreign = ForeignObject::create(
      {{CF_TEXT, "old"}, {CF_UNICODETEXT, "n\0e\0w\0"s}, {rtf, "{\\rtf1 \xE4}"}});
  {
    DragData data = read_data_object(*foreign);
    EXPECT_EQ(others_of(foreign), 1U);
    EXPECT_TRUE(data.has(text_format));
    EXPECT_TRUE(data.has(rtf_format));
    EXPECT_EQ(foreign->reads, 0);
    EXPECT_EQ(data.get(text_format), u"new");
    EXPECT_EQ(data.get(text_format), u"new");
    EXPECT_EQ(foreign->reads, 1);
    EXPECT_EQ(data.get(rtf_format), u"{\\rtf1 \\'e4}");
  }
  EXPECT_EQ(others_of(foreign), 0U);
  DragData old = read_data_object(*ForeignObject::create({{CF_TEXT, "old"}}));
  EXPECT_EQ(old.get(text_format), u"old") << "held as long as the data";
  EXPECT_FALSE(old.has(rtf_format));
  DragData page = read_data_object(*ForeignObject::create({{html_clipboard_format(), "<b>x"}}));
  EXPECT_EQ(page.get(html_format), u"<b>x");
  EXPECT_FALSE(read_data_object(*ForeignObject::create({{CF_HDROP, "x"}})).is_text());
}

}  // namespace
}  // namespace qel::windows
