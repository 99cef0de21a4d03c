#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "qel/base/Variant.h"

namespace qel {

/// A node of a `LinkedList`.
struct ListNode {
  std::int32_t NextID = 0;  ///< the node below; 0 for none
  std::int32_t PrevID = 0;  ///< the node above; 0 for none
  Variant Data;
};

/// A doubly linked list of values with a cursor, the current node.
///
/// Nodes have ids from 1 up, which stay valid until the node is removed or `Compress` renumbers it;
/// 0 is no node. The place of a removed node remains as a hole: its id is not used again before the
/// list is compressed, or emptied by `DeleteCurrent` or `Clear`.
///
/// `GotoID` lets the cursor stand on a hole or on nothing. Members that work on the current node do
/// not check that: they read and write the links of the hole, or of an unused place with id 0, and
/// may cut nodes off the list. This is intended and harms only the order. With a cursor on an id
/// that has no place at all, they raise error 9 (subscript out of range) and change nothing. Walks
/// along the list end after as many nodes as there are places; links that lead on from there would
/// raise the same error.
class LinkedList {
 public:
  // Adding returns the id of the new node, which becomes the current one.

  std::int32_t AddToTop(Variant Value);
  std::int32_t AddToBottom(Variant Value);
  /// Adds above the current node; an empty list gets its only node.
  std::int32_t AddBeforeCurrent(Variant Value);
  /// Adds below the current node; an empty list gets its only node.
  std::int32_t AddAfterCurrent(Variant Value);

  /// Removes the current node and returns the id of the new current node: the one below, at the
  /// bottom the last, 0 in a list that is now empty. The hole keeps its value, but when the only
  /// node is removed, all places and values are dropped. A current node without neighbours counts
  /// as the only one, and so does a cursor on nothing: the whole list is dropped.
  Variant DeleteCurrent();
  /// Removes the current node and returns its value; the hole holds the empty text. The node below
  /// becomes the current one, else the one above. Without a current node the result is empty and
  /// nothing changes.
  Variant RemoveCurrentLink();
  /// Deletes all nodes, and the holes with them. A list that has only holes keeps them.
  void Clear();
  /// Renumbers the nodes 1, 2, ... in order and drops the holes. The cursor stays on its node, but
  /// moves from the first node to none (0), and from none to the id after the last.
  void Compress();

  std::int32_t Current() const { return current_; }
  /// The top node; 0 in an empty list.
  std::int32_t First() const { return first_; }
  /// The bottom node; 0 in an empty list.
  std::int32_t Last() const { return last_; }

  /// The value of any node or hole; an id that has no place raises error 9.
  Variant GetData(std::int32_t ID) const;
  /// Replaces the value of the current node. Returns 0.
  std::int32_t SetData(Variant Value);

  // Moving the cursor.

  std::int32_t GotoFirst() { return current_ = first_; }
  std::int32_t GotoLast() { return current_ = last_; }
  /// Moves one node down or up, if there is one. Returns the current id.
  std::int32_t GotoNext();
  std::int32_t GotoPrevious();
  /// Puts the cursor on any id up to the highest that has a place, including holes, 0 and negative
  /// ids. A higher id is ignored.
  void GotoID(std::int32_t ID);
  /// Puts the cursor on a node of the list and returns its id. For any other id it returns 0 and
  /// changes nothing. Takes time in proportion to the list, as do `Count` and `ListIndex`.
  std::int32_t SetCurrent(std::int32_t ID);

  std::int32_t Count() const;
  /// Position of the current node from the top, from 1; 0 when it is not in the list.
  std::int32_t ListIndex() const;

  // Moving the current node. It gets a new id, which is returned, and leaves a hole, even if it is
  // at that end already. Without a current node, or a node to pass, these return 0 and change
  // nothing.

  std::int32_t MoveCurrentToTop();
  std::int32_t MoveCurrentToBottom();
  std::int32_t MoveCurrentUpOne();
  std::int32_t MoveCurrentDownOne();

 private:
  std::size_t checked(std::int32_t id, std::string_view member) const;
  ListNode& current_node(std::string_view member) { return nodes_[checked(current_, member)]; }
  /// For links, `first_` and `last_`, which always lead to a place; the cursor may not.
  ListNode& node(std::int32_t id) { return nodes_[static_cast<std::size_t>(id)]; }
  const ListNode& node(std::int32_t id) const { return nodes_[static_cast<std::size_t>(id)]; }
  std::int32_t append(Variant value);
  void reset();
  template <class Visit>
  void walk(std::string_view member, Visit visit) const;

  // Place 0 is not a node, so that ids are indexes.
  std::vector<ListNode> nodes_ = std::vector<ListNode>(1);
  std::int32_t first_ = 0;
  std::int32_t last_ = 0;
  std::int32_t current_ = 0;
};

}  // namespace qel
