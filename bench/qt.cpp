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

richtext::Document content_of(const Documents& text) {
  return richtext::read_document(text.rtf, richtext::CharFormat());
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
  const richtext::Document content = content_of(text);
  std::vector<std::pair<QString, QTextCharFormat>> runs;
  for (std::size_t i = 0; i < content.runs().run_count(); ++i) {
    const richtext::RunList::Run run = content.runs().run(i);
    runs.emplace_back(qt::to_qt(content.text().substr(run.start, run.end - run.start)),
                      qt::to_qt(content.format(run.value), Color{0}));
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
constexpr int keystrokes = 2'000;

void key_in_widget(State& state) {
  Desk desk(input(state));
  type_keys(state, *qobject_cast<QTextEdit*>(desk.box.focusProxy()));
}
BENCHMARK(key_in_widget)->Arg(small_size)->Iterations(keystrokes)->Unit(benchmark::kMicrosecond);

void key_in_text_edit(State& state) {
  QTextEdit edit;
  edit.resize(window_size);
  edit.show();
  qt::DocumentDisplay(*edit.document()).load(content_of(input(state)));
  edit.document()->setUndoRedoEnabled(true);
  type_keys(state, edit);
}
BENCHMARK(key_in_text_edit)->Arg(small_size)->Iterations(keystrokes)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace qel::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  qel::bench::AimReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
}
