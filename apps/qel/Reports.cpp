#include "Reports.h"

#include <vector>

#include "System.h"
#include "qel/base/Json.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"

namespace qel::command {
namespace {

std::string line_of(std::string_view file, const convert::Report& report) {
  const std::string counts = convert::in_words(report.dropped);
  std::string line(file);
  line.append(": ").append(std::to_string(report.bytes_in)).append(" bytes became ");
  line.append(std::to_string(report.bytes_out)).append("; dropped: ");
  line.append(counts.empty() ? "nothing" : counts);
  return report.is_broken_off ? line.append("; the input breaks off") : line;
}

std::string json_of(std::string_view file, const convert::Report& report) {
  std::u16string name;
  append_json(name, convert::decode_text(file));
  std::string object = "{\"file\":\"" + to_utf8(name) + "\"";
  const auto member = [&](std::string_view key, const std::string& value) {
    if (object.back() != '{') object.push_back(',');
    object.append("\"").append(key).append("\":").append(value);
  };
  member("bytes_in", std::to_string(report.bytes_in));
  member("bytes_out", std::to_string(report.bytes_out));
  member("broken_off", report.is_broken_off ? "true" : "false");
  object.append(",\"dropped\":{");
  for (const convert::DroppedKind& kind : convert::dropped_kinds) {
    member(kind.name, std::to_string(report.dropped.*kind.count));
  }
  return object.append("}}");
}

}  // namespace

void Reports::add(std::string_view file, const convert::Report& report) {
  if (style_ == ReportStyle::text) progress_.report(line_of(file, report));
  if (style_ == ReportStyle::json) progress_.write_line(json_of(file, report));
  const std::lock_guard lock(mutex_);
  for (const auto& kind : convert::dropped_kinds) {
    dropped_.*kind.count += report.dropped.*kind.count;
  }
  if (report.is_broken_off) ++broken_off_;
}

void Reports::finish() const {
  if (style_ != ReportStyle::summary || !system::can_rewrite_errors()) return;
  const std::string counts = convert::in_words(dropped_);
  if (!counts.empty()) progress_.report("dropped: " + counts + " (--report says where)");
  if (broken_off_ > 0) progress_.report("the input breaks off within RTF");
}

}  // namespace qel::command
