#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "qel/richtext/Alignment.h"
#include "qel/richtext/CharFormat.h"
#include "qel/richtext/RunList.h"

namespace qel::richtext {

/// The distinct character formats of a document, each kept once and known by its number.
class FormatPool {
 public:
  using Id = RunList::Value;

  FormatPool() = default;
  FormatPool(FormatPool&&) = default;
  FormatPool& operator=(FormatPool&&) = default;

  Id intern(const CharFormat& format);
  /// The reference is valid as long as the pool.
  const CharFormat& operator[](Id id) const { return *formats_[id]; }

 private:
  struct Hash {
    std::size_t operator()(const CharFormat& format) const;
  };

  std::unordered_map<CharFormat, Id, Hash> ids_;
  std::vector<const CharFormat*> formats_;
};

/// A part of a document: UTF-16 code units from `start` up to, but not including, `end`.
struct Extent {
  std::size_t start = 0;
  std::size_t end = 0;

  std::size_t length() const { return end - start; }
};

/// A rich text in memory: characters, a format for each, and an alignment for each paragraph.
/// A paragraph break is CR LF; a document of n breaks has n + 1 paragraphs. It never holds NUL,
/// which RTF cannot say.
class Document {
 public:
  Document() { alignments_.append(1, 0); }
  Document(const Document& other) : Document() { assign(other); }
  Document(Document&&) = default;
  Document& operator=(const Document& other);
  Document& operator=(Document&&) = default;
  ~Document() = default;

  const std::u16string& text() const { return text_; }
  std::size_t size() const { return text_.size(); }
  const RunList& runs() const { return runs_; }
  const CharFormat& format(FormatPool::Id id) const { return pool_[id]; }
  /// Format of the character at `position`, which must be below `size`.
  const CharFormat& format_at(std::size_t position) const { return pool_[runs_.at(position)]; }
  /// Alignment of the paragraph at `position`, which may be `size`.
  Alignment alignment_at(std::size_t position) const;
  const RunList& alignments() const { return alignments_; }

  /// Makes room for a text of that many code units.
  void reserve(std::size_t length) { text_.reserve(length); }
  /// Gives back the room that was not needed.
  void release_unused();
  FormatPool::Id intern(const CharFormat& format) { return pool_.intern(format); }
  /// Adds text without breaks to the last paragraph. NUL characters in it are dropped.
  void append(std::u16string_view text, FormatPool::Id format);
  /// Ends the last paragraph, which gets the alignment, and begins another.
  void append_break(FormatPool::Id format, Alignment alignment);
  /// Aligns the last paragraph.
  void align_last(Alignment alignment);

  /// Replaces the characters of the extent, which lies within the document and cuts no break in
  /// two, with the content. A paragraph joined from two parts takes the alignment of its last part,
  /// one cut in two keeps its alignment in both, and whole paragraphs of the content keep theirs.
  void replace(Extent extent, Document content);
  /// Replaces each part, in the format of its first character, with a text without breaks. The
  /// parts are in order, not empty, and hold no break.
  void replace_each(const std::vector<Extent>& parts, std::u16string_view text);
  /// The inverse of `replace`: puts a `part` back, with the alignments that its first and last
  /// paragraphs had.
  void restore(Extent extent, Document part);
  /// Replaces all characters with as many others; breaks must be where they were.
  void put_characters(std::u16string text) { text_ = std::move(text); }
  void change_format(Extent extent, const FormatChange& change);
  /// The same with what `change` says for each format.
  void change_formats(Extent extent,
                      const std::function<FormatChange(const CharFormat& format)>& change);
  /// The paragraphs that the extent touches.
  Extent paragraphs(Extent extent) const {
    return {paragraph_start(extent.start), paragraph_end(extent.end)};
  }
  /// Aligns the paragraphs that the extent touches.
  void align(Extent extent, Alignment alignment);

  /// The part as a document of its own.
  Document part(Extent extent) const;
  /// The extent widened so that its edges do not lie between CR and LF.
  Extent without_cut_breaks(Extent extent) const;

  /// Whether text, formats and alignments are the same.
  friend bool operator==(const Document& left, const Document& right);
  /// Whether text, formats and alignments fit together.
  bool check() const;

 private:
  class Translation;

  void assign(const Document& other);
  /// Adds the runs of a part of another document, translated to the numbers of this one's formats.
  void append_runs(RunList& runs, const Document& other, Extent extent);
  std::size_t paragraph_start(std::size_t position) const;
  std::size_t paragraph_end(std::size_t position) const;

  std::u16string text_;
  FormatPool pool_;
  RunList runs_;
  RunList alignments_;  // one position more than the text: the end belongs to the last paragraph
};

/// Plain text as a document in one format. CR LF, lone CR and lone LF all become breaks.
Document plain_document(std::u16string_view text, const CharFormat& format);

/// The document with breaks in place of lone CR and lone LF, which are characters of its
/// paragraphs.
Document with_whole_breaks(Document document);

}  // namespace qel::richtext
