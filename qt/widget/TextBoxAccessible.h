#pragma once

/// What assistive programs see of a text box: a group, whose only part is the visible box.
namespace qel::qt::accessible {

/// Makes Qt ask here about text boxes; later calls do nothing.
void install();

}  // namespace qel::qt::accessible
