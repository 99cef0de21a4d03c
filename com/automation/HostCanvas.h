#pragma once

#include <oaidl.h>
#include <windows.h>

#include <memory>

#include "qel/platform/Canvas.h"
#include "qel/platform/MeasuringSurface.h"
#include "windows/Pointer.h"

/// What a host gives to measure and draw on: an object with a property `hDC`, such as a form, a
/// printer or a text box. It is kept as long as the canvas or surface that works on it.
namespace qel::com {

/// A canvas on the host's object; its units are pixels of the device context. `FontName` and
/// `FontSize` of the object, where it has them, are the canvas's own font. Nothing for nothing.
/// Raises for an object without `hDC`.
std::shared_ptr<platform::Canvas> canvas_on(IDispatch* object);

/// The object behind a canvas that was made so; nothing for another.
Pointer<IDispatch> host_object(const std::shared_ptr<platform::Canvas>& canvas);

/// A surface on the host's object, which has a writable `TestFont` and a readable `hDC`. For
/// nothing it is that of the thread's control, or the platform's own where there is no control.
std::shared_ptr<platform::MeasuringSurface> surface_on(IDispatch* object);

}  // namespace qel::com
