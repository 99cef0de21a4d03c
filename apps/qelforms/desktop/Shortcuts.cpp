#include "Shortcuts.h"

#include <QAction>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace qel::forms {
namespace {

QString translated(const char* text) {
  return QCoreApplication::translate("qel::forms::Shortcuts", text);
}

/// Keys that belong to no menu.
constexpr const char* others[][2] = {
    {"Down, Enter", QT_TRANSLATE_NOOP("qel::forms::Shortcuts",
                                      "From the search field to the records that were found")},
    {"Enter", QT_TRANSLATE_NOOP("qel::forms::Shortcuts", "From the list to the record's text")},
    {"Esc", QT_TRANSLATE_NOOP("qel::forms::Shortcuts", "End the search and go back to the text")},
    {"Del", QT_TRANSLATE_NOOP("qel::forms::Shortcuts", "Delete the selected records of the list")},
    {"Ctrl+Space", QT_TRANSLATE_NOOP("qel::forms::Shortcuts", "Plain text")},
    {"Alt+F1 ... Alt+F9", QT_TRANSLATE_NOOP("qel::forms::Shortcuts", "A font of the table")},
    {"Ctrl+F1 ... Ctrl+F9", QT_TRANSLATE_NOOP("qel::forms::Shortcuts", "A colour of the table")},
};

QString row_of(const QString& keys, const QString& meaning) {
  return QStringLiteral("<tr><td width='62%'>%1</td><td>%2</td></tr>")
      .arg(meaning.toHtmlEscaped(), keys.toHtmlEscaped());
}

QString rows_of(const QMenu& menu) {
  QString rows;
  for (const QAction* const action : menu.actions()) {
    if (action->menu() != nullptr) {
      rows += rows_of(*action->menu());
      continue;
    }
    // Keys that a box handles itself stand behind a TAB.
    QString caption = action->text();
    const QString shown = caption.section(QChar(u'\t'), 1);
    const QString keys =
        shown.isEmpty() ? action->shortcut().toString(QKeySequence::NativeText) : shown;
    caption = caption.section(QChar(u'\t'), 0, 0).remove(QChar(u'&'));
    if (caption.endsWith(QLatin1String("..."))) caption.chop(3);
    if (!keys.isEmpty()) rows += row_of(keys, caption);
  }
  return rows;
}

QString overview(const QMenuBar& bar) {
  QString text;
  const QString part =
      QStringLiteral("<h4>%1</h4><table width='100%' cellpadding='2' cellspacing='0'>%2</table>");
  for (const QAction* const action : bar.actions()) {
    const QString rows = rows_of(*action->menu());
    QString caption = action->text();
    if (!rows.isEmpty()) text += part.arg(caption.remove(QChar(u'&')).toHtmlEscaped(), rows);
  }
  QString rows;
  for (const auto& [keys, meaning] : others) {
    rows += row_of(QString::fromLatin1(keys), translated(meaning));
  }
  return text + part.arg(translated("Elsewhere"), rows);
}

}  // namespace

void show_shortcuts(QMainWindow& window) {
  constexpr QSize preferred(520, 560);
  QDialog dialog(&window);
  dialog.setWindowTitle(translated("Keyboard Shortcuts"));
  auto* const text = new QTextBrowser;
  text->setHtml(overview(*window.menuBar()));
  text->setAccessibleName(dialog.windowTitle());
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  auto* const layout = new QVBoxLayout(&dialog);
  layout->addWidget(text);
  layout->addWidget(buttons);
  dialog.resize(preferred);
  dialog.exec();
}

}  // namespace qel::forms
