#include "qel/convert/PreparedTables.h"

#include "qel/convert/RtfOutput.h"
#include "qel/richtext/RtfBytes.h"

namespace qel::convert {
namespace {

std::shared_ptr<const rtf::TableIndexes> make_indexes(const Options& options) {
  return std::make_shared<const rtf::TableIndexes>(options.fonts, *options.colors, rtf::Origin::rtf,
                                                   Way::lossless);
}

}  // namespace

PreparedTables::PreparedTables(const Options& options)
    : rtf_head(convert::rtf_head(options)),
      rtf_head_in_bytes(richtext::rtf_to_bytes(rtf_head)),
      indexes_in_rtf(make_indexes(options)),
      html_tags(
          std::make_shared<const HtmlTags<char>>(options.fonts, *options.colors, options.html)) {}

std::shared_ptr<const rtf::TableIndexes> indexes_in_rtf(const Options& options) {
  return options.prepared ? options.prepared->indexes_in_rtf : make_indexes(options);
}

}  // namespace qel::convert
