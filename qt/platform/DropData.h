#pragma once

#include <QMimeData>
#include <QPointer>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "qel/platform/DragData.h"

namespace qel::qt {

/// What a box drags or copies, as Qt carries it. Promised data is supplied when somebody reads it,
/// and HTML is made of RTF that comes without it.
class TransferMimeData : public QMimeData {
  Q_OBJECT

 public:
  /// The data must live until it is taken away by `end`.
  explicit TransferMimeData(platform::DragData& data) : data_(&data) {}
  explicit TransferMimeData(platform::DragData&& data) : own_(std::move(data)), data_(&own_) {}

  /// The drag is over: from now on there is no data.
  void end() { data_ = nullptr; }
  platform::DragData* content() const { return data_; }

  bool hasFormat(const QString& name) const override;
  QStringList formats() const override;

 protected:
  QVariant retrieveData(const QString& name, QMetaType type) const override;

 private:
  std::optional<std::u16string> offered_html() const;

  platform::DragData own_;
  platform::DragData* data_;
};

/// What is dragged over a box, by any program.
class DropData {
 public:
  /// The data in the library's terms: that of a box of this program as it is; any other is read
  /// when it is asked for. Valid until the next call with other data.
  platform::DragData& look_at(const QMimeData& data);

 private:
  platform::DragData foreign_;
  QPointer<const QMimeData> source_;
};

}  // namespace qel::qt
