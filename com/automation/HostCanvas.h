#pragma once

#include <oaidl.h>
#include <windows.h>

#include <memory>

#include "qel/platform/Canvas.h"
#include "qel/platform/MeasuringSurface.h"
#include "windows/Pointer.h"

/// Measuring and drawing on an object of the host that has a property `hDC`, such as a form, a
/// printer or a text box. The object is kept as long as the canvas or surface that uses it.
namespace qel::com {

/// A canvas on the host's object; its units are pixels of the device context. `FontName` and
/// `FontSize` of the object, if it has them, are the canvas's own font. Null for null. Raises for
/// an object without `hDC`.
std::shared_ptr<platform::Canvas> canvas_on(IDispatch* object);

/// The object behind such a canvas; null for any other.
Pointer<IDispatch> host_object(const std::shared_ptr<platform::Canvas>& canvas);

/// A surface on the host's object, which has a writable `TestFont` and a readable `hDC`. For null
/// it is that of the thread's control, or the platform's own when there is no control.
std::shared_ptr<platform::MeasuringSurface> surface_on(IDispatch* object);

}  // namespace qel::com
