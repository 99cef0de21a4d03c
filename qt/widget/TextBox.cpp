#include "qel/qt/TextBox.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPointer>
#include <QResizeEvent>
#include <QStyle>
#include <algorithm>
#include <utility>

#include "qel/base/Scoped.h"
#include "qel/qt/FormatBar.h"
#include "qel/qt/QtPlatform.h"
#include "qt/platform/BoxHost.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"
#include "qt/widget/TextBoxAccessible.h"
#include "qt/widget/TextBoxMenu.h"
#include "qt/widget/WordMarks.h"

namespace qel::qt {

class TextBox::Site : public platform::ControlSite {
 public:
  explicit Site(TextBox& widget) : widget_(widget) {}

  void property_changed(std::u16string_view name) override { widget_.note_property(to_qt(name)); }
  bool is_run_time() const override { return widget_.is_run_time(); }
  platform::ControlExtent extent() const override { return {widget_.width(), widget_.height()}; }
  void put_extent(platform::ControlExtent extent) override {
    widget_.resize(extent.width, extent.height);
  }
  void put_enabled(bool enabled) override { widget_.setEnabled(enabled); }
  void invalidate() override { widget_.update(); }
  void focus() override { widget_.setFocus(); }
  platform::WindowHandle window() const override {
    return reinterpret_cast<platform::WindowHandle>(static_cast<QWidget*>(&widget_));
  }
  std::uintptr_t device_context() const override { return 0; }

 private:
  TextBox& widget_;
};

class TextBox::Host : public BoxHost {
 public:
  explicit Host(TextBox& widget) : widget_(widget) {}

  void fill_menu(QMenu& menu, BoxView& view, int position) override {
    qt::fill_menu(menu, widget_, view);
    emit widget_.AboutToShowMenu(&menu, position);
  }
  QToolBar* create_bar(QWidget& window) override {
    if (!widget_.get_Lossless()) return nullptr;
    auto* const bar = new FormatBar(&window);
    bar->follow(&widget_);
    return bar;
  }
  bool asks_before_closing() const override { return widget_.get_AsksBeforeClosing(); }

 private:
  TextBox& widget_;
};

class TextBox::Events : public ControlEvents {
 public:
  explicit Events(TextBox& widget) : widget_(widget) {}

  void Change() override {
    const QPointer<TextBox> widget(&widget_);
    emit widget->Change();
    if (widget != nullptr) emit widget->TextQELChanged();
  }
  void SelectionChanged() override { emit widget_.SelectionChanged(); }
  void Click() override { emit widget_.Click(); }
  void DblClick() override { emit widget_.DblClick(); }
  void KeyDown(std::int16_t& KeyCode, std::int16_t& Shift) override {
    emit widget_.KeyDown(&KeyCode, &Shift);
  }
  void KeyPress(std::int16_t& KeyAscii) override { emit widget_.KeyPress(&KeyAscii); }
  void KeyUp(std::int16_t& KeyCode, std::int16_t& Shift) override {
    emit widget_.KeyUp(&KeyCode, &Shift);
  }
  void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) override {
    emit widget_.MouseDown(Button, Shift, X, Y);
  }
  void MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) override {
    emit widget_.MouseMove(Button, Shift, X, Y);
  }
  void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) override {
    emit widget_.MouseUp(Button, Shift, X, Y);
  }
  void OLEStartDrag(platform::DragData& Data, std::int32_t& AllowedEffects) override {
    emit widget_.OLEStartDrag(&Data, &AllowedEffects);
  }
  void OLESetData(platform::DragData& Data, std::int16_t DataFormat) override {
    emit widget_.OLESetData(&Data, DataFormat);
  }
  void OLEGiveFeedback(std::int32_t& Effect, bool& DefaultCursors) override {
    emit widget_.OLEGiveFeedback(&Effect, &DefaultCursors);
  }
  void OLEDragOver(platform::DragData& Data, std::int32_t& Effect, std::int16_t Button,
                   std::int16_t Shift, float X, float Y, std::int16_t State) override {
    emit widget_.OLEDragOver(&Data, &Effect, Button, Shift, X, Y, State);
  }
  void OLEDragDrop(platform::DragData& Data, std::int32_t& Effect, std::int16_t Button,
                   std::int16_t Shift, float X, float Y) override {
    emit widget_.OLEDragDrop(&Data, &Effect, Button, Shift, X, Y);
  }
  void OLECompleteDrag(std::int32_t& Effect) override { emit widget_.OLECompleteDrag(&Effect); }

 private:
  TextBox& widget_;
};

namespace {

QColor shown_color(Color color) {
  return to_qt(is_system_color(color) ? QtPlatform::system_color_value(system_color_index(color))
                                      : color);
}

}  // namespace

TextBox::TextBox(QWidget* parent)
    : QWidget(parent),
      site_(std::make_unique<Site>(*this)),
      events_(std::make_unique<Events>(*this)),
      host_(std::make_unique<Host>(*this)) {
  accessible::install();
  setFocusPolicy(Qt::StrongFocus);
  control_ = std::make_unique<QELTextbox>(*site_, QtPlatform::use());
  control_->begin_lossless();
  control_->InitProperties();
  take_events();
  for (const auto& box : control_->boxes()) {
    BoxView* const view = BoxView::of(*box);
    view->put_host(host_.get());
    connect(view, &BoxView::link_activated, this, &TextBox::LinkActivated);
    connect(view, &BoxView::options_changed, this,
            [this, view] { share_options(view->options()); });
  }
  note_property(QStringLiteral("Multiline"));
  check_spelling();
}

TextBox::~TextBox() {
  control_.reset();
  // A box that somebody else still holds must not be deleted here.
  for (BoxView* box : findChildren<BoxView*>(QString(), Qt::FindDirectChildrenOnly))
    box->setParent(nullptr);
}

void TextBox::take_events() { control_->listen(events_.get()); }

BoxView* TextBox::view() const {
  return BoxView::of(*control_->boxes()[control_->get_Multiline() ? 1 : 0]);
}

void TextBox::note_property(const QString& name) {
  if (name == QLatin1String("Multiline")) {
    setFocusProxy(view());
    setSizePolicy(QSizePolicy::Expanding,
                  get_Multiline() ? QSizePolicy::Expanding : QSizePolicy::Fixed);
  }
  if (name == QLatin1String("RevealCodes")) check_spelling();
  updateGeometry();
  update();
  emit PropertyChanged(name);
}

// Texts and sizes.

/// Whether the box still shows the markup, unedited.
bool TextBox::shows_markup() const {
  return markup_ && control_->CurrentRichTextBox()->get_TextRTF() == shown_;
}

void TextBox::keep(const QString& markup) {
  markup_ = markup;
  shown_ = control_->CurrentRichTextBox()->get_TextRTF();
}

template <class Put>
void TextBox::put_and_keep_text(Put put) {
  if (!shows_markup()) markup_.reset();
  put();
  if (!markup_) return;
  const QString markup = *markup_;
  control_->put_TextQEL(view_of(markup));
  keep(markup);
}

QString TextBox::get_Text() const { return to_qt(control_->get_Text()); }

void TextBox::put_Text(const QString& Value) {
  // A form's file may also hold the text without its formats; breaks in XML are line feeds.
  const auto lines = [](QString text) {
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  };
  if (shows_markup() && lines(Value) == lines(get_Text())) {
    put_and_keep_text([&] { control_->put_Text(view_of(Value)); });
  } else {
    control_->put_Text(view_of(Value));
  }
}

QString TextBox::get_TextQEL() const { return to_qt(control_->get_TextQEL()); }

void TextBox::put_TextQEL(const QString& Value) {
  control_->put_TextQEL(view_of(Value));
  if (is_in_the_making()) keep(Value);
}

QString TextBox::get_FontName() const { return to_qt(control_->get_FontName()); }

void TextBox::put_FontName(const QString& Value) {
  put_and_keep_text([&] { control_->put_FontName(view_of(Value)); });
}

void TextBox::put_FontSize(double Value) {
  put_and_keep_text([&] { control_->put_FontSize(static_cast<float>(Value)); });
}

void TextBox::put_HideColor(int Value) {
  put_and_keep_text([&] { control_->put_HideColor(Value); });
}

void TextBox::put_IgnoreColor(int Value) {
  put_and_keep_text([&] { control_->put_IgnoreColor(Value); });
}

void TextBox::put_NoteColor(int Value) {
  put_and_keep_text([&] { control_->put_NoteColor(Value); });
}

void TextBox::put_SelAlignment(int Value) {
  put_and_keep_text([&] { control_->put_SelAlignment(Value); });
}

void TextBox::put_RevealCodes(bool Value) {
  put_and_keep_text([&] { control_->put_RevealCodes(Value); });
}

void TextBox::put_Multiline(bool Value) {
  const bool has_focus = focusProxy() != nullptr && focusProxy()->hasFocus();
  put_and_keep_text([&] {
    const std::int32_t alignment = control_->get_SelAlignment();
    control_->put_Multiline(Value);
    if (is_in_the_making()) control_->put_SelAlignment(alignment);
  });
  if (has_focus) setFocus();
}

QString TextBox::get_PlaceholderText() const {
  const BoxView* const box = view();
  return box == nullptr ? QString() : box->placeholder();
}

void TextBox::put_PlaceholderText(const QString& Value) {
  for (const auto& box : control_->boxes()) {
    if (BoxView* const shown = BoxView::of(*box)) shown->put_placeholder(Value);
  }
}

// How the text is shown.

const ViewOptions& TextBox::options() const {
  static const ViewOptions preset;
  const BoxView* const box = view();
  return box == nullptr ? preset : box->options();
}

template <class Value>
void TextBox::put_option(Value ViewOptions::*option, Value value) {
  ViewOptions options = this->options();
  options.*option = value;
  share_options(options);
}

void TextBox::share_options(const ViewOptions& options) {
  if (shares_options_) return;
  {
    const Scoped shares(shares_options_, true);
    for (const auto& box : control_->boxes()) {
      if (BoxView* const shown = BoxView::of(*box)) shown->put_options(options);
    }
  }
  updateGeometry();
  const int zoom = this->options().zoom;
  if (std::exchange(zoom_, zoom) != zoom) emit ZoomChanged(zoom);
}

void TextBox::put_Zoom(int Value) { put_option(&ViewOptions::zoom, Value); }
bool TextBox::get_AdaptsColors() const { return options().adapts_colors; }
void TextBox::put_AdaptsColors(bool Value) { put_option(&ViewOptions::adapts_colors, Value); }
int TextBox::get_LineSpacing() const { return options().line_spacing; }
void TextBox::put_LineSpacing(int Value) { put_option(&ViewOptions::line_spacing, Value); }
int TextBox::get_TextMargin() const { return options().margin; }
void TextBox::put_TextMargin(int Value) { put_option(&ViewOptions::margin, Value); }
bool TextBox::get_OpensLinks() const { return options().opens_links; }
void TextBox::put_OpensLinks(bool Value) { put_option(&ViewOptions::opens_links, Value); }

QSize TextBox::sizeHint() const {
  constexpr int columns = 24;
  constexpr int rows = 6;
  constexpr int frame = 1;
  constexpr int above = 3;  // a single line, and below it
  constexpr double whole = 100;
  const bool has_lines = get_Multiline();
  const double size = has_lines ? get_FontSize() : get_FontSize() * zoom_ / whole;
  QFont font(get_FontName());
  font.setPointSizeF(size);
  const QFontMetrics metrics(font);
  const int across = get_TextMargin() + frame;
  const int down = (has_lines ? get_TextMargin() : std::min(get_TextMargin(), above)) + frame;
  const double spacing = has_lines ? rows * get_LineSpacing() / whole : 1;
  return {columns * metrics.averageCharWidth() + 2 * across,
          qCeil(spacing * metrics.lineSpacing()) + 2 * down};
}

QSize TextBox::minimumSizeHint() const {
  const QSize hint = sizeHint();
  constexpr int share = 4;
  return {hint.width() / share, get_Multiline() ? hint.height() / 2 : hint.height()};
}

// The window.

void TextBox::paintEvent(QPaintEvent* /*event*/) {
  was_painted_ = true;
  if (is_run_time_) markup_.reset();
  const ControlFrame frame = control_->frame();
  const BoxView* const box = view();
  // A pen's line would fall between the pixels of a finer screen.
  const QRect outside(0, 0, frame.right + 1, frame.bottom + 1);
  QPainter painter(this);
  painter.fillRect(outside, shown_color(frame.color));
  painter.fillRect(outside.adjusted(1, 1, -1, -1),
                   box == nullptr ? palette().base() : box->palette().base());
}

void TextBox::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  control_->Resize();
}

void TextBox::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::EnabledChange) return;
  // Being disabled by a parent is not a property of the control.
  const bool enabled = !testAttribute(Qt::WA_ForceDisabled);
  if (control_ && control_->get_Enabled() != enabled) control_->put_Enabled(enabled);
}

}  // namespace qel::qt
