#include "qt/platform/BoxDrag.h"

#include <QDrag>
#include <QDropEvent>
#include <algorithm>
#include <iterator>

#include "qel/richtext/RtfBytes.h"
#include "qel/richtext/RtfWriter.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/DocumentMapping.h"
#include "qt/platform/MimeData.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using namespace platform;

namespace {

constexpr std::int32_t box_acts = 2;
constexpr std::int32_t box_drags = 1;

bool is_rtf_name(const QString& name) {
  return std::any_of(std::begin(mime::rtf_names), std::end(mime::rtf_names),
                     [&](const char* rtf_name) { return name == QLatin1String(rtf_name); });
}

bool is_text_name(const QString& name) { return name.startsWith(QLatin1String("text/plain")); }

Qt::DropActions actions_of(std::int32_t effects) {
  Qt::DropActions actions;
  actions.setFlag(Qt::CopyAction, (effects & copy_drop) != 0);
  actions.setFlag(Qt::MoveAction, (effects & move_drop) != 0);
  return actions;
}

std::int32_t effects_of(Qt::DropActions actions) {
  return (actions.testFlag(Qt::CopyAction) ? copy_drop : no_drop) |
         (actions.testFlag(Qt::MoveAction) ? move_drop : no_drop);
}

Qt::DropAction action_of(std::int32_t effect) {
  if ((effect & move_drop) != 0) return Qt::MoveAction;
  return (effect & copy_drop) != 0 ? Qt::CopyAction : Qt::IgnoreAction;
}

}  // namespace

// What is dragged.

bool DragMimeData::hasFormat(const QString& name) const { return formats().contains(name); }

QStringList DragMimeData::formats() const {
  QStringList names;
  if (data_.has(rtf_format)) {
    for (const char* name : mime::rtf_names) names.append(QLatin1String(name));
  }
  if (data_.has(text_format)) names.append(QStringLiteral("text/plain"));
  return names;
}

QVariant DragMimeData::retrieveData(const QString& name, QMetaType /*type*/) const {
  if (is_rtf_name(name)) {
    const auto rtf = data_.get(rtf_format);
    if (rtf) return QByteArray::fromStdString(richtext::rtf_to_bytes(*rtf));
  } else if (is_text_name(name)) {
    const auto text = data_.get(text_format);
    if (text) return to_qt(*text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
  }
  return {};
}

// The box as the source.

void BoxDrag::start() {
  dragged_ = view_.selected();
  auto mime_data = std::make_unique<DragMimeData>();
  DragData& data = mime_data->dragged();
  const richtext::Document content = read(*view_.document(), dragged_);
  dragged_text_ = content.text();
  if (!dragged_.is_empty()) {
    data.put(text_format, content.text());
    data.put(rtf_format, richtext::write_rtf(content, {0, content.size()}, richtext::CharFormat()));
  }
  data.put_supply([this](DragData& promised, std::int16_t format) {
    view_.listener().on_set_data(promised, format);
  });
  std::int32_t effects = copy_drop | (view_.isReadOnly() ? no_drop : move_drop);
  view_.listener().on_start_drag(data, effects);
  if (effects == no_drop || !data.is_text()) return;

  auto* drag = new QDrag(&view_);  // deletes itself and the data
  drag->setMimeData(mime_data.release());
  const auto tell_effect = [this](Qt::DropAction action) {
    std::int32_t effect = effects_of(action);
    bool default_cursors = true;
    view_.listener().on_give_feedback(effect, default_cursors);
  };
  QObject::connect(drag, &QDrag::actionChanged, &view_, tell_effect);
  drags_ = true;
  stays_here_ = false;
  const QPointer<BoxView> view = &view_;
  const Qt::DropAction action = drag->exec(actions_of(effects), action_of(effects));
  if (!view) return;
  drags_ = false;
  std::int32_t effect = effects_of(action);
  const bool moves = effect == move_drop && view_.appearance().drag_mode == box_drags;
  if (moves && !stays_here_ && is_still_there()) view_.replace(dragged_, {});
  view_.listener().on_complete_drag(effect);
}

/// What was changed meanwhile is not taken out.
bool BoxDrag::is_still_there() const {
  const QTextDocument& document = *view_.document();
  return dragged_.end <= whole(document).end && text_in(document, dragged_) == dragged_text_;
}

// The box as the target.

void BoxDrag::look_at(const QMimeData& data) {
  own_ = qobject_cast<const DragMimeData*>(&data);
  source_ = &data;
  foreign_.clear();
  if (mime::has_rtf(data)) foreign_.promise(rtf_format);
  if (data.hasText()) foreign_.promise(text_format);
  foreign_.put_supply([this](DragData& promised, std::int16_t format) {
    if (!source_) return;
    const auto value = format == rtf_format ? mime::rtf(*source_) : mime::text(*source_);
    if (value) promised.put(format, *value);
  });
}

/// Whether the box itself puts in what is dropped on it.
bool BoxDrag::takes() const {
  return view_.appearance().drop_mode == box_acts && !view_.isReadOnly();
}

std::int32_t BoxDrag::suggested_effect(const QDropEvent& event) {
  if (!takes() || !data().is_text()) return no_drop;
  return usual_drop(effects_of(event.possibleActions()),
                    event.modifiers().testFlag(Qt::ControlModifier));
}

void BoxDrag::tell_target(QDropEvent& event, DragState state) {
  std::int32_t effect = suggested_effect(event);
  const QPointF at = event.position();
  view_.listener().on_drag_over(data(), effect, button_mask(event.buttons()),
                                shift_mask(event.modifiers()), static_cast<float>(at.x()),
                                static_cast<float>(at.y()), state);
  effect_ = effect & effects_of(event.possibleActions());
  event.setDropAction(action_of(effect_));
  event.setAccepted(effect_ != no_drop);
}

void BoxDrag::enter(QDropEvent& event) {
  look_at(*event.mimeData());
  tell_target(event, drag_enters);
  // Whoever refuses now is not asked again.
  event.accept();
}

void BoxDrag::move(QDropEvent& event) { tell_target(event, drag_moves); }

void BoxDrag::leave() {
  if (!source_) return;
  std::int32_t effect = no_drop;
  view_.listener().on_drag_over(data(), effect, 0, 0, 0, 0, drag_leaves);
  source_.clear();
  effect_ = no_drop;
}

bool BoxDrag::would_insert() const { return effect_ != no_drop && takes(); }

void BoxDrag::drop(QDropEvent& event) {
  look_at(*event.mimeData());
  const QPointF at = event.position();
  std::int32_t effect = effect_;
  const bool by_box = takes();
  view_.listener().on_drag_drop(data(), effect, button_mask(event.buttons()),
                                shift_mask(event.modifiers()), static_cast<float>(at.x()),
                                static_cast<float>(at.y()));
  effect_ = effect & effects_of(event.possibleActions());
  if (by_box && effect_ != no_drop) {
    const int position = view_.cursorForPosition(at.toPoint()).position();
    stays_here_ = insert_at(position, effect_);
    if (!stays_here_) effect_ = no_drop;
  }
  event.setDropAction(action_of(effect_));
  event.setAccepted(effect_ != no_drop);
  source_.clear();
  effect_ = no_drop;
}

/// Whether there was text in what was dropped. It is selected afterwards.
bool BoxDrag::insert_at(int position, std::int32_t effect) {
  if (drags_ && effect == move_drop) {
    if (!is_still_there()) return false;
    view_.select(dragged_);
    view_.move_selection(position);
    return true;
  }
  const auto rtf = data().get(rtf_format);
  const auto text = rtf ? std::nullopt : data().get(text_format);
  view_.select({position, position});
  if (!view_.insert(rtf, text)) return false;
  view_.select({position, view_.selected().end});
  return true;
}

}  // namespace qel::qt
