// RTF into a document, from strings and from bytes, and what the box writes read again.

#include <cstddef>
#include <cstdint>

#include "Input.h"
#include "qel/richtext/Document.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfBytes.h"
#include "qel/richtext/RtfReader.h"
#include "qel/richtext/RtfWriter.h"

namespace {

using qel::fuzz::Input;
using qel::fuzz::require;
using qel::richtext::Document;
using qel::richtext::Extent;

const qel::richtext::CharFormat base;

Document read(std::u16string_view rtf) {
  Document document = qel::richtext::read_document(rtf, base);
  require(document.check(), "text, formats and alignments fit together");
  return document;
}

std::u16string write(const Document& document) {
  return qel::richtext::write_rtf(document, {0, document.size()}, base);
}

bool equal(const Document& one, const Document& other) {
  if (one.text() != other.text() || one.runs().run_count() != other.runs().run_count())
    return false;
  for (std::size_t i = 0; i < one.runs().run_count(); ++i) {
    const auto run = one.runs().run(i);
    if (run.end != other.runs().run(i).end) return false;
    if (one.format(run.value) != other.format_at(run.start)) return false;
  }
  for (std::size_t i = 0; i <= one.size(); ++i) {
    if (one.alignment_at(i) != other.alignment_at(i)) return false;
  }
  return true;
}

/// Offsets and sizes that come from RTF are whole numbers of its units, so nothing is lost.
void check_writing(const Document& document) {
  const std::u16string written = write(document);
  const Document again = read(written);
  require(equal(again, document), "a document that is written reads back as it was");
  require(write(again) == written, "what is written twice is written the same");
  const std::string bytes = qel::richtext::rtf_to_bytes(written);
  require(equal(read(qel::richtext::rtf_from_bytes(bytes)), document), "a file keeps the document");
}

void check_replacing(Document& document, const Input& input) {
  const auto size = static_cast<std::int16_t>(document.size());
  const auto start = static_cast<std::size_t>(input.number(0, 0, size));
  const auto length =
      static_cast<std::size_t>(input.number(1, 0, size)) % (document.size() - start + 1);
  const Extent extent = document.without_cut_breaks({start, start + length});
  const Document before = document;
  const Document part = document.part(extent);
  require(part.check(), "a part is a document");
  document.replace(extent, part);
  require(document.check() && equal(document, before),
          "a part put in its own place changes nothing");
  document.replace(document.without_cut_breaks({start, start}), part);
  require(document.check(), "a part can be put anywhere");
}

void check_extras(std::u16string_view rtf) {
  using qel::richtext::RtfReader;
  Document document;
  qel::richtext::DocumentBuilder builder(document);
  RtfReader reader(base, builder, RtfReader::Extent::document, RtfReader::Units::characters,
                   {true, true, true, true});
  reader.read(rtf, true);
  reader.finish();
  require(document.check(), "text, formats and alignments fit together with extras");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0x7000) return 0;
  const Input input(data, size);
  for (const std::u16string& rtf : {input.text(), qel::richtext::rtf_from_bytes(input.bytes())}) {
    Document document = read(rtf);
    check_writing(document);
    check_replacing(document, input);
    check_extras(rtf);
  }
  return 0;
}
