#include "Options.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "qel/base/Records.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"
#include "qel/convert/Formats.h"
#if QEL_CAPI_HTML
#include "qel/html/HtmlReader.h"
#endif

qel_options::qel_options() {
  conversion.keeps_last_break = true;
#if QEL_CAPI_HTML
  conversion.html_reader = qel::html::reader();
#endif
  qel::convert::prepare(conversion);
}

namespace qel::capi {
namespace {

constexpr int table_size = 10;

void require_index(int index) {
  require(index >= 0 && index < table_size, "the index is not one from 0 to 9");
}

std::string line_of(std::u16string_view line) {
  constexpr std::size_t enough = 40;
  return to_utf8(line.substr(0, enough));
}

/// Options share the tables of those that they were copied from.
std::shared_ptr<QELIndexColors> copy_of(const QELIndexColors& colors) {
  auto copy = std::make_shared<QELIndexColors>();
  copy->CopyFrom(colors);
  return copy;
}

struct Switch {
  std::string_view name;
  void (*set)(convert::Options& options, bool is_on);
};

constexpr std::array switches = {
    Switch{"lossless",
           [](convert::Options& o, bool on) { o.way = on ? Way::lossless : Way::stated; }},
    Switch{"convert-nl-to-space",
           [](convert::Options& o, bool on) { o.switches.convert_nl_to_space = on; }},
    Switch{"convert-tabs-to-space",
           [](convert::Options& o, bool on) { o.switches.convert_tabs_to_space = on; }},
    Switch{"recognize-crlf", [](convert::Options& o, bool on) { o.switches.recognize_crlf = on; }},
    Switch{"recognize-tabs", [](convert::Options& o, bool on) { o.switches.recognize_tabs = on; }},
    Switch{"normalize", [](convert::Options& o, bool on) { o.normalizes = on; }},
    Switch{"notes", [](convert::Options& o, bool on) { o.extras.notes = on; }},
    Switch{"headers", [](convert::Options& o, bool on) { o.extras.headers = on; }},
    Switch{"links", [](convert::Options& o, bool on) { o.extras.links = on; }},
    Switch{"alternative-texts",
           [](convert::Options& o, bool on) { o.extras.alternative_texts = on; }},
    Switch{"html-document", [](convert::Options& o, bool on) { o.html.whole_document = on; }},
    Switch{"html-paragraphs", [](convert::Options& o, bool on) { o.html.paragraphs = on; }},
    Switch{"html-classes", [](convert::Options& o, bool on) { o.html.classes = on; }}};

}  // namespace

const qel_options& or_defaults(const qel_options* options) {
  static const qel_options defaults;
  return options == nullptr ? defaults : *options;
}

void set_from(convert::Options& options, std::string_view format) {
  const auto named = convert::input_format_named(format);
  if (!named && !format.empty()) throw Failure(QEL_BAD_ARGUMENT, format, "is no format to read");
  if (named == convert::InputFormat::html && !options.html_reader.read) {
    throw Failure(QEL_BAD_ARGUMENT, format, "cannot be read: the library was built without it");
  }
  options.from = named;
}

void set_to(convert::Options& options, std::string_view format) {
  const auto named = convert::output_format_named(format);
  if (!named) throw Failure(QEL_BAD_ARGUMENT, format, "is no format to write");
  options.to = *named;
}

void set_font(convert::Options& options, int index, std::string_view name) {
  require_index(index);
  const bool has_control =
      std::any_of(name.begin(), name.end(), [](unsigned char c) { return c < ' '; });
  require(!has_control, "the name of a font has control characters");
  options.fonts.put_Font(static_cast<std::int16_t>(index), convert::decode_text(name));
}

void set_font_size(convert::Options& options, double points) {
  constexpr double largest = 16383;
  require(std::isfinite(points) && points >= 0 && points <= largest,
          "the font size is not one from 0 to 16383");
  options.fonts.put_FontSize(static_cast<float>(points));
}

void set_color(convert::Options& options, int index, std::uint32_t rgb) {
  constexpr std::uint32_t largest = 0xFFFFFF;
  require_index(index);
  require(rgb <= largest, "the colour is not one from 0 to 0xFFFFFF");
  const auto value = static_cast<int>(rgb);
  auto colors = copy_of(*options.colors);
  colors->put_Color(static_cast<std::int16_t>(index),
                    qel::rgb(value >> 16, (value >> 8) & 0xFF, value & 0xFF));
  options.colors = std::move(colors);
}

void set_tables(convert::Options& options, std::string_view records) {
  QELIndexFonts fonts = options.fonts;
  auto colors = copy_of(*options.colors);
  const std::u16string text = convert::decode_text(records);
  for (std::u16string_view line : records::split(text, u"\n")) {
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    if (line.empty()) continue;
    if (line.find(u"<Fonts:Rec>") != std::u16string_view::npos) {
      fonts.put_All(line);
    } else if (line.find(u"<Colors:Rec>") != std::u16string_view::npos) {
      colors->put_All(line);
    } else {
      throw Failure(QEL_BAD_ARGUMENT, line_of(line), "is neither a record of fonts nor of colours");
    }
  }
  // Reading a record leaves the colour table of RTF as it was; setting a colour rebuilds it.
  colors->put_Color(0, colors->get_Color(0));
  options.fonts = std::move(fonts);
  options.colors = std::move(colors);
}

bool set_switch(convert::Options& options, std::string_view name, bool is_on) {
  const auto found = std::find_if(switches.begin(), switches.end(),
                                  [&](const Switch& candidate) { return candidate.name == name; });
  if (found == switches.end()) return false;
  found->set(options, is_on);
  return true;
}

}  // namespace qel::capi

using qel::capi::existing;
using qel::capi::guarded;
using qel::capi::view;

namespace {

/// Passes the options on to a setter. They stay as they are where that raises.
template <class Set>
qel_status change(qel_options* options, qel_error* error, Set set) noexcept {
  return guarded(error, [&] {
    qel_options& given = existing(options);
    qel::convert::Options changed = given.conversion;
    set(changed);
    qel::convert::prepare(changed);
    given.conversion = std::move(changed);
  });
}

}  // namespace

qel_options* qel_options_new(void) {
  qel_options* made = nullptr;
  guarded(nullptr, [&] { made = new qel_options; });
  return made;
}

void qel_options_free(qel_options* options) { delete options; }

qel_status qel_options_set_from(qel_options* options, qel_text format, qel_error* error) {
  return change(options, error,
                [&](auto& conversion) { qel::capi::set_from(conversion, view(format)); });
}

qel_status qel_options_set_to(qel_options* options, qel_text format, qel_error* error) {
  return change(options, error,
                [&](auto& conversion) { qel::capi::set_to(conversion, view(format)); });
}

qel_status qel_options_set_font(qel_options* options, int index, qel_text name, qel_error* error) {
  return change(options, error,
                [&](auto& conversion) { qel::capi::set_font(conversion, index, view(name)); });
}

qel_status qel_options_set_font_size(qel_options* options, double points, qel_error* error) {
  return change(options, error,
                [&](auto& conversion) { qel::capi::set_font_size(conversion, points); });
}

qel_status qel_options_set_color(qel_options* options, int index, uint32_t rgb, qel_error* error) {
  return change(options, error,
                [&](auto& conversion) { qel::capi::set_color(conversion, index, rgb); });
}

qel_status qel_options_set_tables(qel_options* options, qel_text records, qel_error* error) {
  return change(options, error,
                [&](auto& conversion) { qel::capi::set_tables(conversion, view(records)); });
}

qel_status qel_options_set_switch(qel_options* options, qel_text name, int is_on,
                                  qel_error* error) {
  return change(options, error, [&](auto& conversion) {
    const auto named = view(name);
    if (!qel::capi::set_switch(conversion, named, is_on != 0)) {
      throw qel::capi::Failure(QEL_BAD_ARGUMENT, named, "is no switch");
    }
  });
}

qel_status qel_options_set_json(qel_options* options, qel_text json, qel_error* error) {
  return change(options, error,
                [&](auto& conversion) { qel::capi::set_json(conversion, view(json)); });
}

void qel_options_set_stop(qel_options* options, int (*stop)(void* data), void* data) {
  if (options == nullptr) return;
  if (stop == nullptr) {
    options->conversion.stop = nullptr;
  } else {
    options->conversion.stop = [stop, data] { return stop(data) != 0; };
  }
}
