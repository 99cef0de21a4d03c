#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <map>
#include <memory>

#include "com/automation/Values.h"
#include "com/pages/Preview.h"
#include "com/pages/Settings.h"

namespace qel::com {

/// The controls of the property page, and what the user has changed in them.
class PageDialog : public std::enable_shared_from_this<PageDialog> {
 public:
  /// Shows the settings. `changed` is called when the user changes one. Raises if the system has no
  /// window left.
  PageDialog(HWND parent, const SharedSettings& settings, std::function<void()> changed);
  PageDialog(const PageDialog&) = delete;
  PageDialog& operator=(const PageDialog&) = delete;
  ~PageDialog();

  HWND handle() const { return dialog_; }
  /// Shows the settings as they are, whatever the user has changed.
  void show_settings();
  void put_focus(const Setting& setting) const;
  bool is_changed() const { return !changes_.empty(); }
  /// Gives the text boxes what the user has changed. Raises for the first value that does not
  /// convert or is refused, with the focus in its control.
  void apply();
  /// Whether the page has a use for a key.
  bool handle_key(MSG& message) const;

 private:
  static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM w, LPARAM l) noexcept;
  bool handle(UINT message, WPARAM w, LPARAM l);

  void show(const Setting& setting, const Value& value);
  void show_choices(const Setting& setting) const;
  void on_command(int id, UINT notice);
  void choose_color(const Setting& setting);
  void change(const Setting& setting, const Value& value);
  void draw_item(const DRAWITEMSTRUCT& item);
  bool leads_out(const MSG& message) const;
  HWND control(const Setting& setting) const { return GetDlgItem(dialog_, setting.id); }

  const SharedSettings& settings_;
  std::function<void()> changed_;
  HWND dialog_ = nullptr;
  bool is_showing_ = false;
  // What the controls show where the boxes agree, and what the user has changed.
  std::map<int, Value> shown_;
  std::map<int, Value> changes_;
  std::array<COLORREF, 16> own_colors_ = {};
  Preview preview_;
};

}  // namespace qel::com
