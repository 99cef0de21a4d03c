#include "qel/richtext/RtfWords.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "qel/richtext/CodePage.h"
#include "qel/richtext/RtfState.h"

namespace qel::richtext {
namespace {

/// An open-addressing hash table, a good deal larger than its content.
class WordTable {
 public:
  WordTable() {
    add_character_properties();
    add_paragraphs();
    add_characters();
    add_tables();
    add_destinations();
  }

  const KnownWord* find(WordKey key) const {
    for (std::size_t slot = slot_of(key); slots_[slot].key != no_word; slot = (slot + 1) % size) {
      if (slots_[slot].key == key) return &slots_[slot];
    }
    return nullptr;
  }

 private:
  static constexpr std::size_t size = 512;

  static std::size_t slot_of(WordKey key) {
    constexpr WordKey factor = 0x9E3779B97F4A7C15U;
    constexpr unsigned shift = 55;  // leaves nine bits, enough for 512 slots
    return static_cast<std::size_t>(key * factor >> shift);
  }

  void add(std::string_view name, WordAction action, std::int32_t argument) {
    std::size_t slot = slot_of(word_key(name));
    while (slots_[slot].key != no_word) slot = (slot + 1) % size;
    slots_[slot] = {word_key(name), action, argument};
  }

  void add_all(std::initializer_list<std::string_view> names, WordAction action,
               std::int32_t argument) {
    for (const std::string_view name : names) add(name, action, argument);
  }

  void add_character_properties();
  void add_paragraphs();
  void add_characters();
  void add_tables();
  void add_destinations();

  std::array<KnownWord, size> slots_;
};

void WordTable::add_character_properties() {
  add("b", WordAction::set_flag, CharState::bold);
  add("i", WordAction::set_flag, CharState::italic);
  add_all(
      {"ul", "uld", "uldash", "uldashd", "uldashdd", "uldb", "ulhair", "ulhwave", "ulldash", "ulth",
       "ulthd", "ulthdash", "ulthdashd", "ulthdashdd", "ulthldash", "ululdbwave", "ulw", "ulwave"},
      WordAction::set_flag, CharState::underline);
  add("ulnone", WordAction::clear_flag, CharState::underline);
  add_all({"strike", "striked"}, WordAction::set_flag, CharState::strike_through);
  add("scaps", WordAction::set_flag, CharState::small_caps);
  add("v", WordAction::set_flag, CharState::hidden);
  add("deleted", WordAction::set_flag, CharState::deleted);
  add("up", WordAction::set_offset, 1);
  add("dn", WordAction::set_offset, -1);
  add("super", WordAction::set_fixed_offset, 4);
  add("sub", WordAction::set_fixed_offset, -4);
  add("nosupersub", WordAction::set_fixed_offset, 0);
  add("plain", WordAction::set_plain, 0);
  add("f", WordAction::set_font, 0);
  add("fs", WordAction::set_size, 0);
  add("cf", WordAction::set_color, 0);
}

void WordTable::add_paragraphs() {
  add_all({"pard", "ql", "qj", "qd"}, WordAction::set_alignment,
          static_cast<std::int32_t>(Alignment::left));
  add("qr", WordAction::set_alignment, static_cast<std::int32_t>(Alignment::right));
  add("qc", WordAction::set_alignment, static_cast<std::int32_t>(Alignment::center));
  add_all({"par", "line"}, WordAction::add_break, 0);
  add_all({"sect", "page", "column"}, WordAction::add_break, 1);
  add("tab", WordAction::add_character, u'\t');
  add_all({"cell", "nestcell"}, WordAction::end_cell, 0);
  add_all({"row", "nestrow"}, WordAction::end_row, 0);
}

void WordTable::add_characters() {
  constexpr std::array<std::pair<std::string_view, std::int32_t>, 16> characters = {
      {{"bullet", 0x2022},
       {"emdash", 0x2014},
       {"endash", 0x2013},
       {"lquote", 0x2018},
       {"rquote", 0x2019},
       {"ldblquote", 0x201C},
       {"rdblquote", 0x201D},
       {"emspace", 0x2003},
       {"enspace", 0x2002},
       {"qmspace", 0x2005},
       {"zwj", 0x200D},
       {"zwnj", 0x200C},
       {"zwbo", 0x200B},
       {"zwnbo", 0x2060},
       {"ltrmark", 0x200E},
       {"rtlmark", 0x200F}}};
  for (const auto& [name, character] : characters) add(name, WordAction::add_character, character);

  add("u", WordAction::add_unicode, 0);
  add("bin", WordAction::skip_binary, 0);
  add("uc", WordAction::set_replacement_length, 0);
}

void WordTable::add_tables() {
  add("deff", WordAction::set_default_font, 0);
  add("ansi", WordAction::set_code_page, CodePage::western);
  add("mac", WordAction::set_code_page, 10000);
  add("pc", WordAction::set_code_page, 437);
  add("pca", WordAction::set_code_page, 850);
  add("ansicpg", WordAction::set_code_page, 0);
  add("fcharset", WordAction::set_character_set, 0);
  add("cpg", WordAction::set_font_code_page, 0);
  add("red", WordAction::set_color_component, 0);
  add("green", WordAction::set_color_component, 1);
  add("blue", WordAction::set_color_component, 2);
}

void WordTable::add_destinations() {
  const auto destination = [](Destination where) { return static_cast<std::int32_t>(where); };
  add("fonttbl", WordAction::set_destination, destination(Destination::font_table));
  add("colortbl", WordAction::set_destination, destination(Destination::color_table));
  add("upr", WordAction::set_destination, destination(Destination::unicode_pair));
  add("ud", WordAction::begin_text_part, destination(Destination::unicode_pair));
  add("field", WordAction::begin_field, 0);
  add("fldinst", WordAction::set_destination, destination(Destination::field_instruction));
  add("fldrslt", WordAction::begin_field_result, 0);
  add_all({"shpinst", "do"}, WordAction::set_destination, destination(Destination::shape));
  add_all({"shptxt", "dptxbxtext"}, WordAction::begin_text_part, destination(Destination::shape));
  add("object", WordAction::begin_object, 0);
  add("result", WordAction::begin_text_part, destination(Destination::object));
  add("nesttableprops", WordAction::begin_text_part, destination(Destination::text));
  add_all({"listtext", "pntext"}, WordAction::set_destination, destination(Destination::list_text));
  add_all({"pict", "shppict"}, WordAction::begin_picture, 0);
  add("picprop", WordAction::begin_picture_properties, 0);
  add("sn", WordAction::begin_property_part, destination(Destination::property_name));
  add("sv", WordAction::begin_property_part, destination(Destination::property_value));
  add_all({"footnote", "annotation"}, WordAction::begin_aside,
          static_cast<std::int32_t>(Aside::note));
  add_all({"header", "headerl", "headerr", "headerf", "footer", "footerl", "footerr", "footerf"},
          WordAction::begin_aside, static_cast<std::int32_t>(Aside::header));
  add_all(
      {"stylesheet", "info",     "nonesttables", "nonshppict", "listtable", "revtbl",    "filetbl",
       "xe",         "tc",       "tcn",          "rxe",        "ftnsep",    "ftnsepc",   "ftncn",
       "aftnsep",    "aftnsepc", "aftncn",       "pntxta",     "pntxtb",    "shprslt",   "fontemb",
       "fontfile",   "falt",     "panose",       "comment",    "docvar",    "datafield", "private",
       "rsidtbl",    "template", "background",   "objdata"},
      WordAction::set_destination, destination(Destination::skipped));
}

}  // namespace

const KnownWord* find_word(WordKey key) {
  static const WordTable words;
  return words.find(key);
}

}  // namespace qel::richtext
