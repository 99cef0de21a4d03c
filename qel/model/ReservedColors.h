#pragma once

#include <cstdint>

namespace qel {

/// Colour indexes that also say what kind of text a run is.
enum ReservedColor : std::int16_t { ignored_color = 1, hidden_color = 2, note_color = 3 };

/// The properties `Ignored`, `Hidden` and `Note` of a record with a `ColorID`. They store nothing
/// of their own: true writes the reserved index, false writes 0, whatever colour was there before.
template <class Record>
class ReservedColors {
 public:
  bool get_Ignored() const { return is(ignored_color); }
  void put_Ignored(bool Value) { set(ignored_color, Value); }
  bool get_Hidden() const { return is(hidden_color); }
  void put_Hidden(bool Value) { set(hidden_color, Value); }
  bool get_Note() const { return is(note_color); }
  void put_Note(bool Value) { set(note_color, Value); }

  friend bool operator==(const ReservedColors&, const ReservedColors&) = default;

 private:
  friend Record;
  ReservedColors() = default;

  bool is(ReservedColor color) const { return static_cast<const Record&>(*this).ColorID == color; }
  void set(ReservedColor color, bool on) {
    static_cast<Record&>(*this).ColorID = on ? static_cast<std::int16_t>(color) : std::int16_t{0};
  }
};

}  // namespace qel
