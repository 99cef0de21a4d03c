#pragma once

#include <QMimeData>
#include <QPointer>
#include <cstdint>

#include "qel/platform/DragData.h"

namespace qel::qt {

/// What a box drags, as Qt carries it. What was only promised is supplied when somebody reads it.
class DragMimeData : public QMimeData {
  Q_OBJECT

 public:
  /// The data must live until it is taken away by `end`.
  explicit DragMimeData(platform::DragData& data) : data_(&data) {}

  /// The drag is over: there is nothing to be had any more.
  void end() { data_ = nullptr; }
  platform::DragData* dragged() const { return data_; }

  bool hasFormat(const QString& name) const override;
  QStringList formats() const override;

 protected:
  QVariant retrieveData(const QString& name, QMetaType type) const override;

 private:
  platform::DragData* data_;
};

/// What is dragged over a box, whoever drags it.
class DropData {
 public:
  /// The data in the library's terms: what a box of this program drags as it is, all else is read
  /// when it is asked for. It holds until this looks at other data.
  platform::DragData& look_at(const QMimeData& data);

 private:
  platform::DragData foreign_;
  QPointer<const QMimeData> source_;
};

}  // namespace qel::qt
