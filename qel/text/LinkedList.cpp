#include "qel/text/LinkedList.h"

#include <string>
#include <utility>

#include "qel/base/Error.h"

namespace qel {
namespace {

[[noreturn]] void raise(std::string_view member, const std::string& what) {
  throw Error(Error::subscript_out_of_range, "LinkedList", std::string(member) + ": " + what);
}

}  // namespace

std::size_t LinkedList::checked(std::int32_t id, std::string_view member) const {
  const auto place = static_cast<std::size_t>(id);
  if (id < 0 || place >= nodes_.size()) {
    raise(member, "no node has the id " + std::to_string(id));
  }
  return place;
}

/// Appends a node without neighbours, which becomes the current one.
std::int32_t LinkedList::append(Variant value) {
  nodes_.push_back({0, 0, std::move(value)});
  return current_ = static_cast<std::int32_t>(nodes_.size() - 1);
}

std::int32_t LinkedList::AddToTop(Variant Value) {
  const std::int32_t added = append(std::move(Value));
  if (first_ == 0) return first_ = last_ = added;
  node(first_).PrevID = added;
  node(added).NextID = first_;
  return first_ = added;
}

std::int32_t LinkedList::AddToBottom(Variant Value) {
  const std::int32_t added = append(std::move(Value));
  if (last_ == 0) return first_ = last_ = added;
  node(last_).NextID = added;
  node(added).PrevID = last_;
  return last_ = added;
}

std::int32_t LinkedList::AddBeforeCurrent(Variant Value) {
  if (first_ == 0) return AddToTop(std::move(Value));
  const std::int32_t below = current_;
  const std::int32_t above = current_node("AddBeforeCurrent").PrevID;
  const std::int32_t added = append(std::move(Value));
  node(below).PrevID = added;
  node(added).NextID = below;
  if (above == 0) return first_ = added;
  node(above).NextID = added;
  node(added).PrevID = above;
  return added;
}

std::int32_t LinkedList::AddAfterCurrent(Variant Value) {
  if (first_ == 0) return AddToTop(std::move(Value));
  const std::int32_t above = current_;
  const std::int32_t below = current_node("AddAfterCurrent").NextID;
  const std::int32_t added = append(std::move(Value));
  node(above).NextID = added;
  node(added).PrevID = above;
  if (below == 0) return last_ = added;
  node(below).PrevID = added;
  node(added).NextID = below;
  return added;
}

/// Resets the list to the state of a new one.
void LinkedList::reset() {
  // The values are released last: their destructors may run code that uses this list.
  const auto released = std::exchange(nodes_, std::vector<ListNode>(1));
  first_ = last_ = current_ = 0;
}

Variant LinkedList::DeleteCurrent() {
  const std::int32_t above = current_node("DeleteCurrent").PrevID;
  const std::int32_t below = current_node("DeleteCurrent").NextID;
  if (above == 0 && below == 0) {
    reset();
    return current_;
  }
  if (below != 0) node(below).PrevID = above;
  if (above != 0) node(above).NextID = below;
  const std::int32_t deleted = std::exchange(current_, below);
  if (deleted == first_) first_ = below;
  if (deleted == last_) last_ = above;
  if (current_ == 0) current_ = last_;
  if (current_ == 0) current_ = first_;
  return current_;
}

Variant LinkedList::RemoveCurrentLink() {
  if (current_ == 0) return {};
  ListNode& removed = current_node("RemoveCurrentLink");
  Variant value = std::exchange(removed.Data, std::u16string());
  const std::int32_t above = removed.PrevID;
  const std::int32_t below = removed.NextID;
  if (above == 0) first_ = below;
  if (below == 0) last_ = above;
  if (above != 0) node(above).NextID = below;
  if (below != 0) node(below).PrevID = above;
  current_ = below != 0 ? below : above;
  return value;
}

void LinkedList::Clear() {
  GotoFirst();
  for (std::size_t left = nodes_.size(); current_ != 0 && left > 0; --left) DeleteCurrent();
  if (current_ != 0) reset();
}

/// Calls `visit` with the id of each node from the top while it returns true. No way is known to
/// make a link lead back up, but the bound does not rely on that.
template <class Visit>
void LinkedList::walk(std::string_view member, Visit visit) const {
  std::size_t left = nodes_.size();
  for (std::int32_t id = first_; id != 0; id = node(id).NextID) {
    if (left-- == 0) raise(member, "the links form a circle");
    if (!visit(id)) return;
  }
}

void LinkedList::Compress() {
  std::vector<std::int32_t> order;
  walk("Compress", [&](std::int32_t id) {
    order.push_back(id);
    return true;
  });
  if (order.empty()) return;
  std::vector<ListNode> nodes(1);
  nodes.reserve(order.size() + 1);
  std::int32_t current = 0;
  for (const std::int32_t id : order) {
    const auto added = static_cast<std::int32_t>(nodes.size());
    ListNode& old = node(id);
    // The current node is found by the link to it: none leads to the first node, and 0 is the link
    // at the end.
    if (old.NextID == current_) current = added + 1;
    nodes.push_back({added + 1, added - 1, std::move(old.Data)});
  }
  nodes.back().NextID = 0;
  first_ = 1;
  last_ = static_cast<std::int32_t>(order.size());
  current_ = current;
  nodes_.swap(nodes);  // the values in holes are released last, as in `reset`
}

Variant LinkedList::GetData(std::int32_t ID) const { return nodes_[checked(ID, "GetData")].Data; }

std::int32_t LinkedList::SetData(Variant Value) {
  current_node("SetData").Data.swap(Value);  // the old value is released last, as in `reset`
  return 0;
}

std::int32_t LinkedList::GotoNext() {
  const std::int32_t next = current_ == 0 ? 0 : current_node("GotoNext").NextID;
  if (next != 0) current_ = next;
  return current_;
}

std::int32_t LinkedList::GotoPrevious() {
  const std::int32_t previous = current_ == 0 ? 0 : current_node("GotoPrevious").PrevID;
  if (previous != 0) current_ = previous;
  return current_;
}

void LinkedList::GotoID(std::int32_t ID) {
  if (ID < static_cast<std::int64_t>(nodes_.size())) current_ = ID;
}

std::int32_t LinkedList::SetCurrent(std::int32_t ID) {
  bool found = false;
  walk("SetCurrent", [&](std::int32_t id) {
    found = id == ID;
    return !found;
  });
  if (!found) return 0;
  return current_ = ID;
}

std::int32_t LinkedList::Count() const {
  std::int32_t count = 0;
  walk("Count", [&](std::int32_t /*id*/) {
    ++count;
    return true;
  });
  return count;
}

std::int32_t LinkedList::ListIndex() const {
  std::int32_t position = 0;
  bool found = false;
  walk("ListIndex", [&](std::int32_t id) {
    ++position;
    found = id == current_;
    return !found;
  });
  return found ? position : 0;
}

std::int32_t LinkedList::MoveCurrentToTop() {
  return current_ == 0 ? 0 : AddToTop(RemoveCurrentLink());
}

std::int32_t LinkedList::MoveCurrentToBottom() {
  return current_ == 0 ? 0 : AddToBottom(RemoveCurrentLink());
}

std::int32_t LinkedList::MoveCurrentUpOne() {
  const std::int32_t above = current_ == 0 ? 0 : current_node("MoveCurrentUpOne").PrevID;
  if (above == 0) return 0;
  Variant value = RemoveCurrentLink();
  GotoID(above);
  return AddBeforeCurrent(std::move(value));
}

std::int32_t LinkedList::MoveCurrentDownOne() {
  const std::int32_t below = current_ == 0 ? 0 : current_node("MoveCurrentDownOne").NextID;
  if (below == 0) return 0;
  Variant value = RemoveCurrentLink();
  GotoID(below);
  return AddAfterCurrent(std::move(value));
}

}  // namespace qel
