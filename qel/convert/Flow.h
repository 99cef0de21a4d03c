#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

#include "qel/convert/ByteInput.h"
#include "qel/convert/Options.h"
#include "qel/convert/Report.h"
#include "qel/richtext/RtfReader.h"
#include "qel/rtf/LackingFormats.h"

namespace qel::convert {

/// A conversion of UTF-16, or of UTF-8, from the reader of one format to the writer of another.
template <class Char>
class BasicFlow {
 public:
  using View = std::basic_string_view<Char>;
  using Take = std::function<void(View)>;

  virtual ~BasicFlow() = default;
  /// Reads on and returns how many units were read: what may go on behind the end is left, and
  /// comes again in front of the next part. The last part is read to its end, or until nothing
  /// that follows counts.
  virtual std::size_t read(View part, bool is_last) = 0;
  /// The input ends. To be called after the last part.
  virtual void finish() = 0;
  /// Whether nothing that may follow counts.
  virtual bool is_closed() const { return false; }
  /// Passes on what is written, or all of it after the end.
  virtual void drain(const Take& take, bool all) = 0;
  /// Says what has been dropped. To be called after the rest has been passed on.
  virtual void report(Report& /*report*/) const {}
};

using Flow = BasicFlow<char16_t>;

/// `options` have to outlive what is made. `line_break` is how breaks of plain text are written.
std::unique_ptr<Flow> make_flow(const Options& options, InputFormat from,
                                richtext::RtfReader::Units units, std::u16string_view line_break);
/// The same from valid UTF-8, or bytes of RTF, to UTF-8, or to RTF in ASCII.
std::unique_ptr<BasicFlow<char>> make_flow_of_bytes(const Options& options, InputFormat from);
/// Whether there is one: not where a text is all in memory.
bool has_flow_of_bytes(const Options& options, InputFormat from, Encoding encoding);

/// Raised within a conversion that its caller ends.
struct Stopped {};
/// Raises it if the caller says so.
void ask_to_stop(const Options& options);

/// Whether formats in it are numbers of the tables, so that those which the tables lack are
/// dropped.
bool has_formats(OutputFormat format);
void count_formats(Dropped& dropped, const rtf::LackingFormats& lacking);

/// The format of text for which a document names none: font and colour 0, and the size, of the
/// tables.
richtext::CharFormat base_format(const Options& options);

}  // namespace qel::convert
