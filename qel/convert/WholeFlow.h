#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "qel/convert/Flow.h"
#include "qel/convert/Reader.h"
#include "qel/richtext/Document.h"
#include "qel/richtext/DocumentReader.h"

/// Conversions that have all of a text in memory before they write.
namespace qel::convert {

/// Writes RTF with all formats that a document of RTF or HTML has: its tables come first, and only
/// the end tells what they need.
class RewritingFlow : public Flow {
 public:
  RewritingFlow(const Options& options, InputFormat from, richtext::RtfReader::Units units);

  std::size_t read(std::u16string_view part, bool is_last) override {
    return reader_->read(part, is_last);
  }
  void finish() override { reader_->finish(); }
  bool is_closed() const override { return reader_->is_closed(); }
  void drain(const Take& take, bool all) override;
  void report(Report& report) const override { reader_->report(report); }

 private:
  richtext::CharFormat base_;
  richtext::Document document_;
  richtext::DocumentBuilder builder_;
  std::unique_ptr<Reader> reader_;
};

/// Writes markup in the shortest way, which takes a look at what follows.
class NormalizingFlow : public Flow {
 public:
  /// `flow` writes the markup; without one it is what is read. With `is_file`, the line break at
  /// the end does not count. `stop` has to outlive this object.
  NormalizingFlow(std::unique_ptr<Flow> flow, bool is_file, const std::function<bool()>& stop)
      : flow_(std::move(flow)), is_file_(is_file), stop_(stop) {}

  std::size_t read(std::u16string_view part, bool is_last) override {
    if (flow_) return flow_->read(part, is_last);
    markup_.append(part);
    return part.size();
  }
  void finish() override;
  bool is_closed() const override { return flow_ && flow_->is_closed(); }
  void drain(const Take& take, bool all) override;
  void report(Report& report) const override {
    if (flow_) flow_->report(report);
  }

 private:
  std::unique_ptr<Flow> flow_;
  bool is_file_;
  const std::function<bool()>& stop_;
  std::u16string markup_;
};

/// Converts in the stated way, whose rules are stated for whole strings.
class StatedFlow : public Flow {
 public:
  StatedFlow(const Options& options, InputFormat from, richtext::RtfReader::Units units,
             std::u16string_view line_break)
      : options_(options), from_(from), units_(units), line_break_(line_break) {}

  std::size_t read(std::u16string_view part, bool /*is_last*/) override {
    input_.append(part);
    return part.size();
  }
  void finish() override {}
  void drain(const Take& take, bool all) override;
  void report(Report& report) const override {
    report.dropped = report_.dropped;
    report.is_broken_off = report_.is_broken_off;
  }

 private:
  void prepare_rtf();

  const Options& options_;
  InputFormat from_;
  richtext::RtfReader::Units units_;
  std::u16string_view line_break_;
  std::u16string input_;
  Report report_;
};

}  // namespace qel::convert
