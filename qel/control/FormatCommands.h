#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/control/QELTextbox.h"
#include "qel/platform/Keys.h"
#include "qel/text/TextCase.h"

/// The commands that users choose in bars, in menus and by keys: formats, changes of case, and the
/// edits of every box.
namespace qel::format_commands {

/// How a command is called. The name is that of the command in the large editor; in the caption,
/// "&" stands before the letter that chooses it. No key code is no key in the boxes.
struct Label {
  std::u16string_view name;
  std::u16string_view caption;
  std::int16_t key_code = 0;
  std::int16_t shift = 0;
};

/// A format that is on or off.
struct Toggle {
  Label label;
  bool (QELTextbox::*get)() const = nullptr;
  void (QELTextbox::*put)(bool) = nullptr;
};

inline constexpr std::array toggles = {
    Toggle{{u"mnuBold", u"&Bold", keys::letter_key('B'), keys::ctrl_key},
           &QELTextbox::get_SelBold,
           &QELTextbox::put_SelBold},
    Toggle{{u"mnuItalic", u"&Italic", keys::letter_key('I'), keys::ctrl_key},
           &QELTextbox::get_SelItalic,
           &QELTextbox::put_SelItalic},
    Toggle{{u"mnuUnderline", u"&Underline", keys::letter_key('U'), keys::ctrl_key},
           &QELTextbox::get_SelUnderline,
           &QELTextbox::put_SelUnderline},
    Toggle{{u"mnuStrikeOut", u"Stri&keout", keys::letter_key('K'), keys::ctrl_shift},
           &QELTextbox::get_SelStrikeOut,
           &QELTextbox::put_SelStrikeOut},
    Toggle{{u"mnuSuperscript", u"&Superscript", keys::letter_key('P'), keys::ctrl_shift},
           &QELTextbox::get_SelSuperscript,
           &QELTextbox::put_SelSuperscript},
    Toggle{{u"mnuSubscript", u"Subsc&ript", keys::letter_key('B'), keys::ctrl_shift},
           &QELTextbox::get_SelSubscript,
           &QELTextbox::put_SelSubscript},
    Toggle{{u"mnuSmallCaps", u"Small Ca&pitals"},
           &QELTextbox::get_SelSmallCaps,
           &QELTextbox::put_SelSmallCaps},
};

inline constexpr Label plain = {u"mnuPlain", u"P&lain", keys::space_key, keys::ctrl_key};

// A box does these by the keys themselves.

inline constexpr Label undo = {u"mnuUndoStep", u"&Undo", keys::letter_key('Z'), keys::ctrl_key};
inline constexpr Label redo = {u"mnuRedo", u"&Redo", keys::letter_key('Y'), keys::ctrl_key};
inline constexpr Label cut = {u"mnuCut", u"Cu&t", keys::letter_key('X'), keys::ctrl_key};
inline constexpr Label copy = {u"mnuCopy", u"&Copy", keys::letter_key('C'), keys::ctrl_key};
inline constexpr Label paste = {u"mnuPaste", u"&Paste", keys::letter_key('V'), keys::ctrl_key};
inline constexpr Label paste_text = {u"mnuPasteText", u"Paste as Te&xt", keys::letter_key('V'),
                                     keys::ctrl_shift};
inline constexpr Label erase = {u"mnuDelete", u"&Delete", keys::delete_key, keys::no_modifier};
inline constexpr Label select_all = {u"mnuSelectAll", u"Select &All", keys::letter_key('A'),
                                     keys::ctrl_key};

struct Case {
  Label label;
  CaseChange change = CaseChange::lower;
};

inline constexpr std::array cases = {
    Case{{u"mnuLowercase", u"&Lowercase"}, CaseChange::lower},
    Case{{u"mnuUppercase", u"&Uppercase"}, CaseChange::upper},
    Case{{u"mnuChangeCase", u"Cha&nge Case"}, CaseChange::swap},
    Case{{u"mnuTitleCase", u"&Title Case"}, CaseChange::title},
    Case{{u"mnuFirstToLower", u"First Letter to Lo&wercase"}, CaseChange::first_to_lower},
    Case{{u"mnuFirstToUpper", u"First Letter to Upp&ercase"}, CaseChange::first_to_upper},
};

/// The name of font 0 to 9 as users read it, where font 0 is `plain_font`; empty for an entry that
/// is not in use.
std::u16string font_caption(std::int16_t index, std::u16string_view name);
/// The same for colour 0 to 9 of the colour table.
std::u16string_view color_caption(std::int16_t index, Color color);

/// The command that gives the selection a font or a colour of the tables.
std::u16string font_command(std::int16_t index);
std::u16string color_command(std::int16_t index);

/// How a key is written, such as "Ctrl+Shift+K"; empty without one.
std::u16string key_text(std::int16_t key_code, std::int16_t shift);
/// A caption, and behind a TAB its key if it has one.
std::u16string menu_text(std::u16string_view caption, std::int16_t key_code, std::int16_t shift);

}  // namespace qel::format_commands
