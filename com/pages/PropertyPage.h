#pragma once

#include <unknwn.h>

namespace qel::com {

/// A new property page for text boxes, with a reference for the caller: formats, fonts and colours,
/// behaviour, and a preview. It is not made a part of other objects: raises unless `outer` is null.
IUnknown* make_property_page(IUnknown* outer);

}  // namespace qel::com
