// The text box as a widget, beside what Qt itself needs for the same: a text put in, read back, a
// key in it. Without a screen.

#include <QApplication>
#include <QKeyEvent>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <utility>
#include <vector>

#include "Aims.h"
#include "Speed.h"
#include "qel/base/Color.h"
#include "qel/base/Scan.h"
#include "qel/qel.h"
#include "qel/qt/TextBox.h"
#include "qel/richtext/DocumentReader.h"
#include "qt/platform/DocumentDisplay.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"

namespace qel::bench {
namespace {

using benchmark::DoNotOptimize;
using benchmark::State;

constexpr QSize window_size(600, 400);

/// A widget for many lines, on show and with the text.
struct Desk {
  explicit Desk(const Documents& text) {
    box.put_Multiline(true);
    box.resize(window_size);
    box.show();
    box.put_TextQEL(qt::to_qt(text.markup));
  }
  qt::TextBox box;
};

richtext::Document content_of(std::u16string_view markup) {
  QELIndexFonts fonts;
  const Common::ConversionSlots conversion_slots;  // Qt has a macro of the shorter name
  return richtext::read_document(RTFParser().QELToRTF(markup, fonts, QELIndexColors()),
                                 richtext::CharFormat());
}

void assign_to_widget(State& state) {
  const Documents& text = input(state);
  const QString markup = qt::to_qt(text.markup);
  Desk desk(text);
  measure(state, text.markup_bytes, [&] { desk.box.put_TextQEL(markup); });
}
BENCHMARK(assign_to_widget)->Arg(medium_size)->Unit(benchmark::kMillisecond);

void read_from_widget(State& state) {
  const Documents& text = input(state);
  const Desk desk(text);
  measure(state, text.markup_bytes, [&] { DoNotOptimize(desk.box.get_TextQEL()); });
}
BENCHMARK(read_from_widget)->Arg(medium_size)->Unit(benchmark::kMillisecond);

/// The peer: the runs that the widget is given, ready made.
void insert_by_qt(State& state) {
  const Documents& text = input(state);
  const richtext::Document content = content_of(text.markup);
  std::vector<std::pair<QString, QTextCharFormat>> runs;
  for (std::size_t i = 0; i < content.runs().run_count(); ++i) {
    const richtext::RunList::Run run = content.runs().run(i);
    runs.emplace_back(qt::to_qt(content.text().substr(run.start, run.end - run.start)),
                      qt::to_qt(content.format(run.value), qt::Scheme()));
  }
  measure(state, text.markup_bytes, [&] {
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (const auto& [run, format] : runs) cursor.insertText(run, format);
    cursor.endEditBlock();
  });
}
BENCHMARK(insert_by_qt)->Arg(medium_size)->Unit(benchmark::kMillisecond);

/// One key a time in the middle of the text.
void type_keys(State& state, QTextEdit& edit) {
  QTextCursor middle = edit.textCursor();
  middle.setPosition(edit.document()->characterCount() / 2);
  edit.setTextCursor(middle);
  QApplication::processEvents();
  for ([[maybe_unused]] auto _ : state) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QApplication::sendEvent(&edit, &press);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QApplication::sendEvent(&edit, &release);
  }
  count_bytes(state, 1);
}

/// How the text stands: in paragraphs, as a single one that wraps, or in a box for one line.
enum Shape { paragraphs, one_paragraph, one_line };

std::u16string shaped(const Documents& text, Shape shape) {
  if (shape == paragraphs) return text.markup;
  return replace_all(text.markup, u"/nl", u" ");
}

template <Shape shape>
void key_in_widget(State& state) {
  qt::TextBox box;
  box.put_Multiline(shape != one_line);
  box.resize(window_size);
  box.show();
  box.put_TextQEL(qt::to_qt(shaped(input(state), shape)));
  type_keys(state, *qobject_cast<QTextEdit*>(box.focusProxy()));
}

template <Shape shape>
void key_in_text_edit(State& state) {
  QTextEdit edit;
  if (shape == one_line) edit.setLineWrapMode(QTextEdit::NoWrap);
  edit.resize(window_size);
  edit.show();
  qt::DocumentDisplay(*edit.document()).load(content_of(shaped(input(state), shape)));
  edit.document()->setUndoRedoEnabled(true);
  type_keys(state, edit);
}

/// Keys in texts of one shape, in the widget and in a bare text edit.
template <Shape shape>
void add_keys(const std::string& place, int keys) {
  const auto add = [&](const char* name, void (*function)(State&)) {
    benchmark::RegisterBenchmark((place + name).c_str(), function)
        ->Arg(small_size)
        ->Iterations(keys)
        ->Unit(benchmark::kMicrosecond);
  };
  add("widget", key_in_widget<shape>);
  add("text_edit", key_in_text_edit<shape>);
}

void add_all_keys() {
  add_keys<paragraphs>("key_in_", 2'000);
  // Without paragraphs Qt lays out the whole text for each key.
  add_keys<one_paragraph>("key_in_long_paragraph_of_", 20);
  add_keys<one_line>("key_in_long_line_of_", 20);
}

}  // namespace
}  // namespace qel::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  qel::bench::add_all_keys();
  qel::bench::AimReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
}
