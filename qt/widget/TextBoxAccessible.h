#pragma once

/// What assistive programs see of a text box: the text of the box that is shown.
namespace qel::qt::accessible {

/// Makes Qt ask here about text boxes; does nothing from the second call on.
void install();

}  // namespace qel::qt::accessible
