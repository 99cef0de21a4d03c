#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "qel/convert/Formats.h"
#include "qel/convert/HtmlWriter.h"
#include "qel/model/QELCode.h"
#include "qel/richtext/CharFormat.h"
#include "qel/richtext/DocumentSink.h"
#include "qel/richtext/DroppedParts.h"
#include "qel/richtext/RtfExtras.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::convert {

/// What becomes of breaks and tabs: the parser's switches of these names. A document that stays RTF
/// keeps both, and so does markup that becomes RTF.
struct Switches {
  bool convert_nl_to_space = false;
  bool convert_tabs_to_space = false;
  bool recognize_crlf = true;
  bool recognize_tabs = true;

  /// The initial switches of a control.
  static constexpr Switches of_a_field() { return {true, true, false, false}; }
  bool keep_breaks() const { return recognize_crlf && !convert_nl_to_space; }

  friend bool operator==(const Switches&, const Switches&) = default;
};

/// Receives the next piece of the output.
using Sink = std::function<void(std::string_view bytes)>;

/// How HTML is read. The library has no reader of its own: `qel::html::reader` is one.
struct HtmlReader {
  /// Whether the beginning of an input is that of HTML.
  std::function<bool(std::string_view bytes)> is_html;
  /// Reads a whole input, and returns what it has dropped. `base` gives the format of text for
  /// which the input names none.
  std::function<richtext::DroppedParts(std::string_view bytes, const richtext::CharFormat& base,
                                       richtext::DocumentSink& sink)>
      read;
};

struct PreparedTables;

struct Options {
  /// Empty: RTF if the input begins so, else markup; of a file also HTML, with a reader for it.
  std::optional<InputFormat> from;
  /// Whether `from` is only what a file's name suggests. Input that is binary is refused then, as
  /// it is where `from` is empty.
  bool is_from_guessed = false;
  OutputFormat to = OutputFormat::qel;
  Switches switches;
  QELIndexFonts fonts;
  std::shared_ptr<const QELIndexColors> colors = std::make_shared<QELIndexColors>();
  /// What `prepare` has made of these tables; none at first.
  std::shared_ptr<const PreparedTables> prepared;
  Way way = Way::lossless;
  /// What else of RTF is kept.
  richtext::RtfExtras extras;
  /// Whether the input is a file of lines: a byte order mark tells its encoding, it is refused
  /// where it is binary, and in the lossless way the line break at its end is not part of its
  /// markup.
  bool is_file = true;
  bool keeps_last_break = false;  ///< whether that line break is part of its markup all the same
  HtmlOptions html;               ///< how HTML is written
  HtmlReader html_reader;         ///< none: HTML cannot be read
  /// Whether markup is written in the shortest way. It is all in memory then. Lossless only.
  bool normalizes = false;
  /// Asked every few thousand bytes that are read, and then while the rest is written; when it says
  /// yes, the conversion ends where it is. Conversions that have all of a text in memory work in
  /// steps and ask between them: in each of them 100 MB take a second or so, but the parser of HTML
  /// takes ten times as long.
  std::function<bool()> stop;
};

}  // namespace qel::convert
