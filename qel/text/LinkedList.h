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
/// Nodes are known by ids from 1 up, which stay valid until the node is taken out, or renumbered by
/// `Compress`; 0 is no node. The place of a node that was taken out stays as a hole: its id is not
/// used again before the list is compressed, or emptied by `DeleteCurrent` or `Clear`.
///
/// `GotoID` lets the cursor stand on a hole or on nothing. Members that work on the current node
/// then do so without a check: they read and write the links of the hole, or those of an unused
/// place with id 0, and may leave nodes out of the list. This is meant, and harms nothing but the
/// order. A cursor on an id that has no place at all makes them raise error 9 (subscript out of
/// range) and change nothing. Walks along the list end after as many nodes as there are places;
/// links that lead on from there would raise the same error.
class LinkedList {
 public:
  // Adding returns the id of the new node, which becomes the current one.

  std::int32_t AddToTop(Variant Value);
  std::int32_t AddToBottom(Variant Value);
  /// Adds above the current node; an empty list gets its only node.
  std::int32_t AddBeforeCurrent(Variant Value);
  /// Adds below the current node; an empty list gets its only node.
  std::int32_t AddAfterCurrent(Variant Value);

  /// Takes the current node out and returns the id of the new current node: the one below, at the
  /// bottom the last, 0 in a list that is now empty. The hole keeps its value, but with the last
  /// node all places and values go. A current node without neighbours counts as the last one, and
  /// so does a cursor on nothing: then the whole list goes.
  Variant DeleteCurrent();
  /// Takes the current node out and returns its value, which becomes the empty text in the hole.
  /// The node below becomes the current one, or the one above. Empty, without any change, when
  /// there is no current node.
  Variant RemoveCurrentLink();
  /// Deletes all nodes, and the holes with them. A list that has only holes keeps them.
  void Clear();
  /// Renumbers the nodes 1, 2, ... in their order and drops the holes. The cursor stays on its
  /// node, but goes from the first node to none (0), and from none to the id after the last.
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
  /// One node down or up, where there is one. Returns the current id.
  std::int32_t GotoNext();
  std::int32_t GotoPrevious();
  /// Puts the cursor on any id up to the highest that has a place, also on holes, 0 and below.
  /// A higher one is ignored.
  void GotoID(std::int32_t ID);
  /// Puts the cursor on a node of the list and returns its id; 0, without any change, for any
  /// other id. Takes time in proportion to the list, as do `Count` and `ListIndex`.
  std::int32_t SetCurrent(std::int32_t ID);

  std::int32_t Count() const;
  /// Position of the current node from the top, from 1; 0 when it is not in the list.
  std::int32_t ListIndex() const;

  // Moving the current node. It gets a new id, which is returned, and leaves a hole, also where it
  // stands at that end already. Without a current node, or one to pass: 0 and no change.

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

  // Place 0 is no node, so that ids are indexes.
  std::vector<ListNode> nodes_ = std::vector<ListNode>(1);
  std::int32_t first_ = 0;
  std::int32_t last_ = 0;
  std::int32_t current_ = 0;
};

}  // namespace qel
