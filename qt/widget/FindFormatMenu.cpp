#include "qt/widget/FindFormatMenu.h"

#include <QStringList>

#include "qel/control/QELTextbox.h"
#include "qel/qt/FormatBar.h"
#include "qt/platform/FormatIcons.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using box::WantedFormat;

namespace {

struct Style {
  const char* caption;
  std::optional<bool> WantedFormat::*field;
};

constexpr Style styles[] = {
    {QT_TRANSLATE_NOOP("qel::qt::FindFormatMenu", "Bold"), &WantedFormat::bold},
    {QT_TRANSLATE_NOOP("qel::qt::FindFormatMenu", "Italic"), &WantedFormat::italic},
    {QT_TRANSLATE_NOOP("qel::qt::FindFormatMenu", "Underline"), &WantedFormat::underline},
    {QT_TRANSLATE_NOOP("qel::qt::FindFormatMenu", "Strike-through"), &WantedFormat::strike_through},
    {QT_TRANSLATE_NOOP("qel::qt::FindFormatMenu", "Small Capitals"), &WantedFormat::small_caps},
};

}  // namespace

FindFormatMenu::FindFormatMenu(QWidget* parent) : QMenu(parent) { fill(nullptr); }

QAction* FindFormatMenu::add(QMenu& menu, const QString& caption, bool checked,
                             const std::function<void(bool)>& put) {
  QAction* const action = menu.addAction(caption);
  action->setCheckable(true);
  action->setChecked(checked);
  connect(action, &QAction::triggered, this, [this, put](bool on) {
    put(on);
    emit format_changed();
  });
  return action;
}

/// One of several that exclude each other; chosen again, it is none.
template <class Value>
QAction* FindFormatMenu::add_choice(QMenu& menu, const QString& caption,
                                    std::optional<Value>& field, const Value& value) {
  return add(menu, caption, field == value,
             [&field, value](bool on) { field = on ? std::optional<Value>(value) : std::nullopt; });
}

void FindFormatMenu::fill(const QELTextbox* control) {
  clear();
  QAction* const any = addAction(tr("Any Format"));
  any->setEnabled(format_ != WantedFormat());
  connect(any, &QAction::triggered, this, [this] {
    format_ = {};
    emit format_changed();
  });
  addSeparator();
  for (const Style& style : styles)
    add_choice(*this, tr(style.caption), format_.*style.field, true);
  add_choice(*this, tr("Raised"), format_.level, WantedFormat::Level::raised);
  add_choice(*this, tr("Lowered"), format_.level, WantedFormat::Level::lowered);
  if (control == nullptr) return;
  addSeparator();
  QMenu& colors = *addMenu(tr("Colour"));
  QMenu& fonts = *addMenu(tr("Font"));
  constexpr std::int16_t entries = 10;
  for (std::int16_t i = 0; i < entries; ++i) {
    const Color color = control->GetColorGivenColorIndex(i);
    const QString caption = i == 0 ? tr("Colour of Plain Text") : FormatBar::color_name(color);
    add_choice(colors, caption, format_.color, color)->setIcon(icons::swatch(to_qt(color)));
    const std::u16string font = control->GetFontNameGivenFontIndex(i);
    if (!font.empty() && font != QELIndexFonts::unused) {
      QAction* const action = add_choice(fonts, to_qt(font), format_.font_name, font);
      action->setFont(icons::menu_font(to_qt(font), fonts.font()));
    }
  }
}

QString FindFormatMenu::description() const {
  QStringList names;
  for (const Style& style : styles) {
    if (format_.*style.field) names += tr(style.caption);
  }
  if (format_.level) {
    names += format_.level == WantedFormat::Level::raised ? tr("Raised") : tr("Lowered");
  }
  if (format_.color) names += FormatBar::color_name(*format_.color);
  if (format_.font_name) names += to_qt(*format_.font_name);
  return names.join(QStringLiteral(", "));
}

}  // namespace qel::qt
