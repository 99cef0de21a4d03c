#include "Tags.h"

#include <algorithm>
#include <array>

#include "Ascii.h"

namespace qel::html {
namespace {

/// By name.
constexpr std::array<Tag, tag_count> tags = {{
    {"a", TagKind::phrasing, "span"},
    {"abbr", TagKind::phrasing, "abbr"},
    {"acronym", TagKind::phrasing, "acronym"},
    {"address", TagKind::block, "address"},
    {"article", TagKind::block, "article"},
    {"aside", TagKind::block, "aside"},
    {"audio", TagKind::hidden, "audio"},
    {"b", TagKind::formatting, "b"},
    {"bdi", TagKind::phrasing, "bdi"},
    {"bdo", TagKind::phrasing, "bdo"},
    {"big", TagKind::formatting, "big"},
    {"blockquote", TagKind::block, "blockquote"},
    {"body", TagKind::body, "body"},
    {"br", TagKind::empty, "br"},
    {"canvas", TagKind::hidden, "canvas"},
    {"caption", TagKind::cell, "caption"},
    {"center", TagKind::block, "center"},
    {"cite", TagKind::phrasing, "cite"},
    {"code", TagKind::formatting, "code"},
    {"datalist", TagKind::hidden, "datalist"},
    {"dd", TagKind::item, "p"},
    {"del", TagKind::phrasing, "del"},
    {"details", TagKind::block, "details"},
    {"dfn", TagKind::phrasing, "dfn"},
    {"dialog", TagKind::block, "div"},
    {"dir", TagKind::block, "dir"},
    {"div", TagKind::block, "div"},
    {"dl", TagKind::block, "dl"},
    {"dt", TagKind::item, "p"},
    {"em", TagKind::formatting, "em"},
    {"fieldset", TagKind::block, "div"},
    {"figcaption", TagKind::block, "figcaption"},
    {"figure", TagKind::block, "figure"},
    {"font", TagKind::formatting, "font"},
    {"footer", TagKind::block, "footer"},
    {"form", TagKind::block, "div"},
    {"h1", TagKind::heading, "h1"},
    {"h2", TagKind::heading, "h2"},
    {"h3", TagKind::heading, "h3"},
    {"h4", TagKind::heading, "h4"},
    {"h5", TagKind::heading, "h5"},
    {"h6", TagKind::heading, "h6"},
    {"header", TagKind::block, "header"},
    {"hgroup", TagKind::block, "hgroup"},
    {"hr", TagKind::empty, "hr"},
    {"i", TagKind::formatting, "i"},
    {"iframe", TagKind::raw, "iframe"},
    {"img", TagKind::empty, "img"},
    {"ins", TagKind::phrasing, "ins"},
    {"kbd", TagKind::phrasing, "kbd"},
    {"label", TagKind::phrasing, "span"},
    {"legend", TagKind::block, "div"},
    {"li", TagKind::item, "li"},
    {"listing", TagKind::block, "pre"},
    {"main", TagKind::block, "main"},
    {"mark", TagKind::phrasing, "mark"},
    {"menu", TagKind::block, "menu"},
    {"nav", TagKind::block, "nav"},
    {"noembed", TagKind::raw, "noembed"},
    {"noframes", TagKind::raw, "noframes"},
    {"ol", TagKind::block, "ol"},
    {"optgroup", TagKind::block, "div"},
    {"p", TagKind::item, "p"},
    {"plaintext", TagKind::preformatted, "pre"},
    {"pre", TagKind::block, "pre"},
    {"q", TagKind::phrasing, "q"},
    {"s", TagKind::formatting, "s"},
    {"samp", TagKind::phrasing, "samp"},
    {"script", TagKind::raw, "script"},
    {"section", TagKind::block, "section"},
    {"select", TagKind::hidden, "select"},
    {"small", TagKind::formatting, "small"},
    {"span", TagKind::phrasing, "span"},
    {"strike", TagKind::formatting, "strike"},
    {"strong", TagKind::formatting, "strong"},
    {"style", TagKind::raw, "style"},
    {"sub", TagKind::phrasing, "sub"},
    {"summary", TagKind::block, "summary"},
    {"sup", TagKind::phrasing, "sup"},
    {"svg", TagKind::hidden, "svg"},
    {"table", TagKind::table, "table"},
    {"tbody", TagKind::row, "tbody"},
    {"td", TagKind::cell, "td"},
    {"template", TagKind::hidden, "template"},
    {"textarea", TagKind::preformatted, "pre"},
    {"tfoot", TagKind::row, "tfoot"},
    {"th", TagKind::cell, "th"},
    {"thead", TagKind::row, "thead"},
    {"time", TagKind::phrasing, "span"},
    {"title", TagKind::raw, "title"},
    {"tr", TagKind::row, "tr"},
    {"tt", TagKind::formatting, "tt"},
    {"u", TagKind::formatting, "u"},
    {"ul", TagKind::block, "ul"},
    {"var", TagKind::phrasing, "var"},
    {"video", TagKind::hidden, "video"},
    {"xmp", TagKind::preformatted, "pre"},
}};

constexpr bool comes_before(std::string_view one, std::string_view other) {
  return std::lexicographical_compare(one.begin(), one.end(), other.begin(), other.end(),
                                      [](char a, char b) { return lower(a) < lower(b); });
}

}  // namespace

const Tag* find_tag(std::string_view name) {
  const auto* const found = std::lower_bound(
      tags.begin(), tags.end(), name,
      [](const Tag& tag, std::string_view wanted) { return comes_before(tag.name, wanted); });
  return found != tags.end() && equals(name, found->name) ? found : nullptr;
}

std::size_t index_of(const Tag& tag) { return static_cast<std::size_t>(&tag - tags.data()); }

const Tag& tag_at(std::size_t index) { return tags[index]; }

}  // namespace qel::html
