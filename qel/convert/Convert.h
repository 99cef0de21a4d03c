#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "qel/convert/Options.h"
#include "qel/convert/Report.h"

/// Conversions of formatted text between its formats.
///
/// Broken RTF and broken markup are text, not errors. A file that begins with a byte order mark is
/// in UTF-16 or UTF-8. RTF without one is bytes of the code page that it declares; all else is
/// UTF-8, in which each invalid byte is read in code page 1252. Output is UTF-8, and RTF is ASCII.
/// RTF that mail stores keep compressed (`richtext/CompressedRtf.h`) is RTF.
///
/// In the lossless way, conversions read and write as they go and take a few hundred kilobytes,
/// whatever the size of the text. It is all in memory, though, where the output begins with what
/// only its end tells (RTF and HTML rewritten as RTF, reduced RTF), where HTML or compressed RTF is
/// read, and in the stated way.
///
/// A file that is neither text nor RTF nor HTML raises an error unless its format was named; the
/// conversion is over then.
///
/// Any thread may convert, also with the same options.
namespace qel::convert {

/// Fills the buffer with the next bytes of the input and returns their number; 0 at its end.
using Source = std::function<std::size_t(char* buffer, std::size_t size)>;

/// Options that outlive a converter and do not change meanwhile: to copy them would take as long as
/// the conversion of a small text.
class BorrowedOptions {
 public:
  explicit BorrowedOptions(const Options& options) : options_(options) {}
  const Options& get() const { return options_; }

 private:
  const Options& options_;
};

/// A conversion whose input is pushed into it, piece by piece, cut anywhere.
class Converter {
 public:
  /// Raises what `sink` raises from all members. After an error, the members raise it again.
  Converter(const Options& options, Sink sink);
  Converter(BorrowedOptions options, Sink sink);
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter();

  /// Returns whether more input makes sense: not after the caller's question to stop, nor behind
  /// the end of an RTF document.
  bool push(std::string_view bytes);
  /// Ends the input, and with it the output.
  Report finish();

 private:
  class Stages;
  template <class Work>
  auto unless_failed(Work work);

  std::unique_ptr<Stages> stages_;
  std::exception_ptr error_;
};

/// Pulls the input and writes the output.
Report convert(const Source& source, const Sink& sink, const Options& options);
/// The same for bytes in memory.
std::string convert(std::string_view bytes, const Options& options);

/// Spares many short conversions what their tables cost, if these do not change any more.
void prepare(Options& options);

/// Whether the bytes of a file are an RTF document.
bool is_rtf(std::string_view bytes);
/// Whether the bytes of a file, by how they begin, are no text in any encoding.
bool is_binary(std::string_view bytes);
/// The text of a file in the encodings above. A byte order mark is dropped.
std::u16string decode_text(std::string_view bytes);

/// The everyday conversions of strings, lossless unless `options` say otherwise, whose formats do
/// not matter. A `std::string` is UTF-8, and RTF in it is bytes. Strings are no files: a byte order
/// mark is a character of the text, and a line break at the end of markup is kept.
std::string rtf_from_markup(std::string_view markup, const Options& options = {});
std::string markup_from_rtf(std::string_view rtf, const Options& options = {});
std::string text_from_markup(std::string_view markup, const Options& options = {});
std::string text_from_rtf(std::string_view rtf, const Options& options = {});
std::string html_from_markup(std::string_view markup, const Options& options = {});
std::string html_from_rtf(std::string_view rtf, const Options& options = {});
std::string markup_from_text(std::string_view text, const Options& options = {});
/// `options` need a reader of HTML.
std::string markup_from_html(std::string_view html, const Options& options);
std::u16string rtf_from_markup(std::u16string_view markup, const Options& options = {});
std::u16string markup_from_rtf(std::u16string_view rtf, const Options& options = {});
std::u16string text_from_markup(std::u16string_view markup, const Options& options = {});
std::u16string text_from_rtf(std::u16string_view rtf, const Options& options = {});
std::u16string html_from_markup(std::u16string_view markup, const Options& options = {});
std::u16string html_from_rtf(std::u16string_view rtf, const Options& options = {});
std::u16string markup_from_text(std::u16string_view text, const Options& options = {});

}  // namespace qel::convert
