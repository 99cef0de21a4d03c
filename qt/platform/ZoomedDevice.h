#pragma once

#include <QPaintDevice>
#include <QWidget>

namespace qel::qt {

/// The screen of a widget as if it had more or fewer dots per inch: a layout of text made for it is
/// larger or smaller by so much, while the formats of the text stay as they are.
class ZoomedDevice : public QPaintDevice {
 public:
  /// The widget must outlive this.
  explicit ZoomedDevice(const QWidget& widget) : widget_(widget) {}

  void put_zoom(int per_cent) { zoom_ = per_cent; }
  QPaintEngine* paintEngine() const override { return nullptr; }

 protected:
  int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmDpiX:
        return zoomed(widget_.logicalDpiX());
      case PdmDpiY:
        return zoomed(widget_.logicalDpiY());
      case PdmPhysicalDpiX:
        return widget_.physicalDpiX();
      case PdmPhysicalDpiY:
        return widget_.physicalDpiY();
      case PdmWidth:
        return widget_.width();
      case PdmHeight:
        return widget_.height();
      case PdmWidthMM:
        return widget_.widthMM();
      case PdmHeightMM:
        return widget_.heightMM();
      case PdmNumColors:
        return widget_.colorCount();
      case PdmDepth:
        return widget_.depth();
      case PdmDevicePixelRatio:
        return static_cast<int>(widget_.devicePixelRatio());
      case PdmDevicePixelRatioScaled:
        return static_cast<int>(widget_.devicePixelRatioF() * devicePixelRatioFScale());
    }
    return 0;
  }

 private:
  int zoomed(int dots) const {
    constexpr int whole = 100;
    return (dots * zoom_ + whole / 2) / whole;
  }

  const QWidget& widget_;
  int zoom_ = 100;
};

}  // namespace qel::qt
