#pragma once

class QMainWindow;

namespace qel::forms {

/// Shows the keys of the window's menus and those of its texts.
void show_shortcuts(QMainWindow& window);

}  // namespace qel::forms
