#include "qel/html/HtmlReader.h"

#include <gumbo.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Ascii.h"
#include "Encoding.h"
#include "TagFilter.h"
#include "Tags.h"
#include "TreeReader.h"

namespace qel::html {
namespace {

/// Memory that is given back all at once: the parser asks for many small pieces.
class Arena {
 public:
  void* allocate(std::size_t size) {
    constexpr std::size_t alignment = alignof(std::max_align_t);
    constexpr std::size_t block_size = 1 << 20;
    size = (size + alignment - 1) / alignment * alignment;
    if (size > block_size / 4) return own_block(size);
    if (size > left_) {
      next_ = own_block(block_size);
      left_ = block_size;
    }
    left_ -= size;
    return std::exchange(next_, next_ + size);
  }

 private:
  char* own_block(std::size_t size) {
    blocks_.push_back(std::unique_ptr<char[]>(new char[size]));
    return blocks_.back().get();
  }

  std::vector<std::unique_ptr<char[]>> blocks_;
  char* next_ = nullptr;
  std::size_t left_ = 0;
};

/// A page as the parser has read it, as long as the text lives. That has been filtered: in deep
/// pages the parser would look at all that is open again and again.
///
/// There are two parsers: one takes its memory from whom it is told, the other has limits of its
/// own, beyond which it would leave out the rest of the page.
template <class Options, class Output>
class ParsedPage {
 public:
  explicit ParsedPage(const std::string& html) {
    options_.max_errors = 0;
    if constexpr (takes_memory) {
      options_.userdata = &arena_;
      options_.allocator = [](void* memory, std::size_t size) {
        return static_cast<Arena*>(memory)->allocate(size);
      };
      options_.deallocator = [](void* /*memory*/, void* /*piece*/) {};
    } else {
      options_.max_tree_depth = -1;
      options_.max_attributes = -1;
    }
    output_ = gumbo_parse_with_options(&options_, html.data(), html.size());
  }
  ParsedPage(const ParsedPage&) = delete;
  ParsedPage& operator=(const ParsedPage&) = delete;
  ~ParsedPage() {
    if constexpr (!takes_memory) gumbo_destroy_output(output_);
  }

  const GumboNode& root() const { return *output_->root; }

 private:
  static constexpr bool takes_memory = requires(Options & options) { options.allocator; };

  Arena arena_;
  Options options_ = kGumboDefaultOptions;
  Output* output_ = nullptr;
};

/// Whether the text begins with the lines that precede HTML on a clipboard.
bool has_clipboard_header(std::string_view text) {
  constexpr std::size_t longest = 512;
  const std::string_view head = text.substr(0, longest);
  return begins_with(head, "version:") && find(head, "\nstarthtml:", 0) < head.size();
}

std::string_view without_clipboard_header(std::string_view text) {
  if (!has_clipboard_header(text)) return text;
  return text.substr(std::min(text.find('<'), text.size()));
}

/// What stands behind white space, comments and processing instructions.
std::string_view first_tag(std::string_view text) {
  for (;;) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n\f"), text.size()));
    const bool is_comment = text.starts_with("<!--");
    if (!is_comment && !text.starts_with("<?")) return text;
    const std::string_view end = is_comment ? "-->" : ">";
    text.remove_prefix(std::min(text.find(end), text.size() - end.size()) + end.size());
  }
}

/// Whether what follows a name ends a tag, or gives it attributes. A slash that may be the
/// beginning of something else does not.
bool goes_on_as_tag(std::string_view rest) {
  if (rest.starts_with('>') || rest.starts_with("/>")) return true;
  return !rest.empty() && is_space(rest.front()) && rest.find_first_of("=>") != rest.npos;
}

}  // namespace

bool is_html(std::string_view bytes) {
  constexpr std::size_t looked_at = 16384;
  const std::string text = to_valid_utf8(bytes.substr(0, looked_at));
  const std::string_view begin = first_tag(text);
  if (has_clipboard_header(begin) || begins_with(begin, "<!doctype html")) return true;
  if (!begin.starts_with('<')) return false;
  const std::string_view name = begin.substr(1, begin.find_first_of(" \t\r\n\f/>", 1) - 1);
  if (!goes_on_as_tag(begin.substr(name.size() + 1))) return false;
  const Tag* const tag = find_tag(name);
  return (tag != nullptr && name != "svg") || equals(name, "html") || equals(name, "head") ||
         equals(name, "meta");
}

richtext::DroppedParts read_html(std::string_view bytes, const richtext::CharFormat& base,
                                 richtext::DocumentSink& sink) {
  const std::string text = to_valid_utf8(bytes);
  const FilteredHtml filtered = filter_html(without_clipboard_header(text));
  const StyleSheet sheet(filtered.style_sheet);
  const ParsedPage<GumboOptions, GumboOutput> page(filtered.html);
  TreeReader reader(sheet, base, sink);
  reader.read(page.root());
  richtext::DroppedParts dropped = reader.dropped();
  dropped.pictures += filtered.pictures;
  dropped.objects += filtered.objects;
  return dropped;
}

convert::HtmlReader reader() { return {is_html, read_html}; }

}  // namespace qel::html
