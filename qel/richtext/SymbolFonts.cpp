#include "qel/richtext/SymbolFonts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

#include "qel/base/Utf16.h"
#include "qel/richtext/CodePage.h"
#include "qel/richtext/FieldInstructions.h"

namespace qel::richtext {
namespace {

constexpr char16_t first_number = 0x20;
constexpr int numbers = 0xE0;
constexpr char16_t private_use = 0xF000;
constexpr char32_t none = U'\uFFFD';

/// After Unicode's own mapping of the encoding (MAPPINGS/VENDORS/ADOBE/symbol.txt). The parts of
/// tall brackets, private there, are the characters that Unicode got later.
constexpr std::u32string_view symbol =
    U" !∀#∃%&∋()∗+,−./"
    U"0123456789:;<=>?"
    U"≅ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟ"
    U"ΠΘΡΣΤΥςΩΞΨΖ[∴]⊥_"
    U"‾αβχδεφγηιϕκλμνο"
    U"πθρστυϖωξψζ{|}∼�"
    U"����������������"
    U"����������������"
    U"€ϒ′≤⁄∞ƒ♣♦♥♠↔←↑→↓"
    U"°±″≥×∝∂•÷≠≡≈…⏐⎯↵"
    U"ℵℑℜ℘⊗⊕∅∩∪⊃⊇⊄⊂⊆∈∉"
    U"∠∇®©™∏√⋅¬∧∨⇔⇐⇑⇒⇓"
    U"◊⟨®©™∑⎛⎜⎝⎡⎢⎣⎧⎨⎩⎪"
    U"�⟩∫⌠⎮⌡⎞⎟⎠⎤⎥⎦⎫⎬⎭�";

/// After the correspondence that was published when Unicode took in what it lacked of this font
/// (7.0); but where a character of the same look is older, and so found in more fonts, that one.
constexpr std::u32string_view wingdings =
    U" ✏✂✁👓🔔📖🕯☎✆✉🖃📪📫📬📭"
    U"📁📂📄🗏🗐🗄⌛⌨🖰🖲💻🖴💾🖬✇✍"
    U"🖎✌👌👍👎☜☞☝☟✋☺😐☹💣☠🏳"
    U"🏱✈☼💧❄🕆✞🕈✠✡☪☯ॐ☸♈♉"
    U"♊♋♌♍♎♏♐♑♒♓🙰🙵●❍■□"
    U"□❑❒⬧⧫◆❖⬥⌧⍓⌘❀✿❝❞▯"
    U"⓪①②③④⑤⑥⑦⑧⑨⑩⓿❶❷❸❹"
    U"❺❻❼❽❾❿🙢🙠🙡🙣🙞🙜🙝🙟·•"
    U"▪○⭕⭕◉◎❍▪◻🟂✦★✶✴✹✵"
    U"⯐⌖⟡⌑⯑✪✰🕐🕑🕒🕓🕔🕕🕖🕗🕘"
    U"🕙🕚🕛⮰⮱⮲⮳⮴⮵⮶⮷🙪🙫🙕🙔🙗"
    U"🙖🙐🙑🙒🙓⌫⌦⮘➢⮙⮛⮈➲⮉⮋←"
    U"→↑↓↖↗↙↘⬅➔⬆⬇⬉⬈⬋⬊⇦"
    U"⇨⇧⇩⬄⇳⬁⬀⬃⬂▭▫✗✓☒☑�";

static_assert(symbol.size() == numbers && wingdings.size() == numbers);

constexpr std::array<SymbolFont, 2> fonts = {SymbolFont(u"symbol", symbol),
                                             SymbolFont(u"wingdings", wingdings)};

bool equals_ignoring_case(std::u16string_view text, std::u16string_view lower) {
  return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](auto a, auto b) {
    return (a >= u'A' && a <= u'Z' ? a + (u'a' - u'A') : a) == b;
  });
}

void append(std::u16string& out, char32_t character) {
  if (units_of(character) == 1) {
    out.push_back(static_cast<char16_t>(character));
    return;
  }
  out.push_back(static_cast<char16_t>(0xD800U + ((character - 0x10000U) >> 10U)));
  out.push_back(static_cast<char16_t>(0xDC00U + (character & 0x3FFU)));
}

/// A character's number: decimal, or hexadecimal after "0x".
std::optional<char32_t> number_of(std::u16string_view word) {
  const bool is_hexadecimal = word.starts_with(u"0x") || word.starts_with(u"0X");
  if (is_hexadecimal) word.remove_prefix(2);
  const std::string digits(word.begin(), word.end());
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number,
                                            is_hexadecimal ? 16 : 10);
  const bool is_character = error == std::errc() && end == digits.data() + digits.size() &&
                            number >= first_number && number <= 0x10FFFFU &&
                            (number & 0xFFFFF800U) != 0xD800U;
  return is_character ? std::optional<char32_t>(number) : std::nullopt;
}

}  // namespace

const SymbolFont* SymbolFont::find(std::u16string_view name) {
  const auto* const found = std::find_if(fonts.begin(), fonts.end(), [&](const SymbolFont& font) {
    return equals_ignoring_case(name, font.name_);
  });
  return found == fonts.end() ? nullptr : found;
}

std::u16string SymbolFont::in_unicode(std::u16string_view text) const {
  std::u16string out;
  for (const char16_t unit : text) {
    const int number = (unit >= private_use ? unit - private_use : unit) - first_number;
    const bool is_picture = number >= 0 && number < numbers;
    const char32_t character = is_picture ? characters_[static_cast<std::size_t>(number)] : none;
    append(out, character == none ? unit : character);
  }
  return out;
}

std::u16string symbol_of_field(std::u16string_view instruction) {
  if (!equals_ignoring_case(next_field_word(instruction), u"symbol")) return {};
  const auto number = number_of(next_field_word(instruction));
  if (!number) return {};
  const SymbolFont* font = nullptr;
  bool is_unicode = *number > 0xFF;
  while (!instruction.empty()) {
    const std::u16string_view word = next_field_word(instruction);
    if (equals_ignoring_case(word, u"\\f")) font = SymbolFont::find(next_field_word(instruction));
    if (equals_ignoring_case(word, u"\\u")) is_unicode = true;
  }
  std::u16string text;
  append(text, is_unicode || font != nullptr ? *number
                                             : decode_western(static_cast<std::uint8_t>(*number)));
  return font != nullptr ? font->in_unicode(text) : text;
}

}  // namespace qel::richtext
