#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "qel/model/RunSink.h"
#include "qel/richtext/DocumentSink.h"
#include "qel/rtf/LackingFormats.h"
#include "qel/rtf/TableIndexes.h"

namespace qel::rtf {

/// Passes on what markup can say of a document: its formats by their numbers in the tables,
/// and its text in UTF-16 or UTF-8.
template <class Char>
class BasicRunsOfDocument : public richtext::DocumentSink {
 public:
  /// `sink` has to outlive this object.
  BasicRunsOfDocument(std::shared_ptr<const TableIndexes> indexes, BasicRunSink<Char>& sink)
      : indexes_(std::move(indexes)), sink_(sink) {}

  /// Of the formats so far.
  const LackingFormats& lacking() const { return lacking_; }

  FormatId intern(const richtext::CharFormat& format) override;
  void text(std::u16string_view text, FormatId format) override;
  void ascii(std::string_view text, FormatId format) override;
  void paragraph_break(FormatId format, richtext::Alignment alignment) override;
  void finish(richtext::Alignment alignment) override;

 private:
  void pass(std::u16string_view text, FormatId format);
  void pass_half();

  std::shared_ptr<const TableIndexes> indexes_;
  LackingFormats lacking_;
  BasicRunSink<Char>& sink_;
  char16_t half_ = 0;  // of a surrogate pair, until the other half comes
  FormatId half_format_ = 0;
  std::string bytes_;
};

using RunsOfDocument = BasicRunsOfDocument<char16_t>;

}  // namespace qel::rtf
