#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "qel/model/CustomCodes.h"
#include "qel/model/Encoder.h"
#include "qel/model/LosslessMarkup.h"
#include "qel/model/Trimming.h"

namespace qel {

/// Writes runs as they come, in the form that the options ask for, placeholders as they are. The
/// codes between two runs depend on both, so each run waits for the next.
class RunWriter {
 public:
  /// Both have to outlive this object.
  RunWriter(std::u16string& out, const OutputOptions& options);
  RunWriter(const RunWriter&) = delete;
  RunWriter& operator=(const RunWriter&) = delete;

  void add(const Run& run);
  /// Closes everything, and keeps the end apart from what may follow if more of the text does. Runs
  /// that are added after that begin another text.
  void finish(std::int32_t line_codes_at_end, bool is_cut);

 private:
  bool is_custom() const { return options_.codes == OutputOptions::Codes::custom; }
  bool is_nested() const { return is_custom() && options_.custom->are_nested(); }
  void write(const Run& run, const style_codes::CodeState* next);
  void write_text(const Run& run);
  void open(const style_codes::CodeState& state);
  void close(const style_codes::CodeState& state, const style_codes::CodeState* next);
  std::u16string_view codes_on(const style_codes::CodeState& state);
  void line_codes(std::int32_t count);
  template <class Append>
  void codes(Append append);

  std::u16string& out_;
  const OutputOptions& options_;
  style_codes::CodeSet set_;
  std::optional<LosslessMarkup> lossless_;
  NestedCodes nested_;
  std::u16string scratch_;
  std::optional<Run> run_;  // waits for the next
  std::optional<style_codes::CodeState> last_;
  bool ends_with_tilde_ = false;         // of an escaped code that was cut
  style_codes::CodeState state_before_;  // of that run
};

}  // namespace qel
