#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "qel/model/CustomCodes.h"
#include "qel/model/QELCode.h"
#include "qel/model/SegmentCollection.h"
#include "qel/model/WordCollection.h"

namespace qel {

/// Flags of `GetQELText` and `GetQELTextv6`; they combine.
enum OutputFlags : std::int32_t {
  ofMarkup = 0,
  ofPlainText = 1,       ///< the text without codes
  ofWithoutIgnored = 2,  ///< leave out runs in colour 1
  ofWithoutHidden = 4,   ///< leave out runs in colour 2
  ofWithoutNote = 8,     ///< leave out runs in colour 3
  /// Write "/nl" (in plain text CR LF) where the decoded text had it. Without this flag line codes
  /// are dropped, as decoding drops them from the runs.
  ofLineCodes = 16,
};

/// Turns markup into styled segments and segments back into markup. Decoding never fails: whatever
/// is not a code is text. Positions and lengths count visible characters in UTF-16 code units.
class StyleDecoder {
 public:
  StyleDecoder() = default;
  // Copies would share their segments.
  StyleDecoder(const StyleDecoder&) = delete;
  StyleDecoder& operator=(const StyleDecoder&) = delete;

  /// Whether all that markup can say survives. Then line codes are kept, as are CR LF, CR and LF,
  /// which are the same; a run keeps its font where a colour comes on; and text that looks like a
  /// code stays text: "~/b1" is the text "/b1" in segments and words, in plain text and positions,
  /// and segments have no placeholders. Where a tilde cannot help, a code of no effect keeps
  /// characters apart, as in "//b0c1" for the text "/c1". False at first. A text that the decoder
  /// has already is encoded in the old way and decoded in the new one.
  bool get_Lossless() const { return segments_->way() == Way::lossless; }
  void put_Lossless(bool Value);

  /// The markup of the segments, without their line codes (unless lossless). Between two runs are
  /// the codes that change from one style to the other, and the last run closes everything. A run
  /// that has a colour and the font of the run before is written with "/f0" (see
  /// `iStyle::DifferentOnCodes`): where coloured text in a font was divided, the second part has
  /// lost its font when the markup is read again.
  std::u16string get_QELText() const;
  /// Decodes `Text`, replacing the segments.
  void put_QELText(std::u16string_view Text);
  /// Decodes `Text` as the property does. Options 1 to 3 then divide the segments and leave the
  /// text and its styles as they are: 1 between words and blanks, 2 around numbers too, 3 around
  /// punctuation too. Any other value divides nothing.
  void SetQELText(std::u16string_view Text, std::int32_t Options);

  /// The decoder's own segments, shared with the caller. In them, escaped codes are placeholders
  /// ("<b1]" for "~/b1"), which `restore_escaped_codes` turns back, unless the decoder is lossless.
  std::shared_ptr<SegmentCollection> get_Segments() { return segments_; }
  std::int32_t get_SegmentCount() const { return segments_->Count(); }
  /// Text of the segment at the one-based `Index`; empty when there is none.
  std::u16string SegmentText(std::int32_t Index) const;
  /// The segment's own style record; none when there is no such segment.
  std::shared_ptr<iStyle> SegmentStyle(std::int32_t Index) const;

  static bool IsQELCode(std::u16string_view Text, std::int32_t Flags = sfAll) {
    return qel::IsQELCode(Text, Flags);
  }

  /// The same for a part of a text that may be put together with others again: lossless, its end
  /// does not join what follows it as a code.
  std::u16string markup_of_part() const;

  // Other outputs. In the stated way all of them turn placeholders back into escaped codes.

  /// The text as `Flags` (see `OutputFlags`) asks for it. Trimming and removing double blanks take
  /// away visible blanks, across runs too; codes stay.
  std::u16string GetQELText(std::int32_t Flags, bool RemoveLeadingAndTrailingSpaces,
                            bool RemoveDoubleSpaces) const;
  /// The same in the older code set.
  std::u16string GetQELTextv6(std::int32_t Flags, bool RemoveLeadingAndTrailingSpaces,
                              bool RemoveDoubleSpaces) const;
  std::u16string get_QELTextv6() const;
  /// The markup without the runs in colour 1.
  std::u16string get_QELTextWithoutIgnored() const;
  /// The text without codes; its length is the sum of the segments' lengths.
  std::u16string get_Text() const;

  /// Sets the spelling of `TextCustom`: items "code=replacement" separated by TAB, where "/nl" is a
  /// code too. A code that is not listed writes nothing. An item for a character ("<=&lt;") says
  /// how that is written in the text, and the item "nested" closes and opens codes again where they
  /// would overlap: with these, `TextCustom` can be HTML.
  void SetCustomCodes(std::u16string_view Codes);
  /// The text with the custom spelling of its codes and line codes. The characters of the text
  /// that have none are written as they are, escaped codes with their tilde (unless lossless). As
  /// in markup, a font may be switched off twice where a colour comes on, unless codes are nested.
  std::u16string get_TextCustom() const;
  /// The codes that switch `Style` on or off, spelled as `Codes` says (items as in
  /// `SetCustomCodes`), or in markup when `Codes` is empty.
  std::u16string OnCodes(const iStyle& Style, std::u16string_view Codes = {}) const;
  std::u16string OffCodes(const iStyle& Style, std::u16string_view Codes = {}) const;
  /// As `OffCodes`, but an empty `Codes` means the spelling set with `SetCustomCodes`.
  std::u16string CustomOffCodes(const iStyle& Style, std::u16string_view Codes = {}) const;

  // Spans. `SelStart` is the number of characters before the span.

  /// Cuts segments so that boundaries fall exactly at the edges of the span. An edge beyond the
  /// text, or before it, cuts nothing. A placeholder that is cut becomes the four characters of the
  /// escaped code.
  void DivideSegmentsGivenSelStartAndLength(std::int16_t SelStart, std::int16_t SelLength) {
    divide(SelStart, SelLength);
  }
  /// The same for positions beyond 16 bits.
  void divide(std::ptrdiff_t start, std::ptrdiff_t length);
  /// Divides, then returns the one-based position of the span's first segment, 0 when no segment
  /// begins there, and sets `LastIndex` to that of its last. Without a segment that ends where the
  /// span does, `LastIndex` is the first; without a first segment it is left alone.
  std::int16_t GetSegmentIndexGivenStartAndLength(std::int16_t SelStart, std::int16_t SelLength,
                                                  std::int16_t& LastIndex);
  /// Divides, then returns the span's first segment; none when no segment begins there.
  std::shared_ptr<Segment> GetSegmentGivenStartAndLength(std::int16_t SelStart,
                                                         std::int16_t SelLength);
  /// Divides, then gives every segment inside the span a copy of `Style` (all that a style's record
  /// text carries). A span that reaches beyond the text is cut to it.
  void ApplyStyleToText(std::int16_t SelStart, std::int16_t SelLength, const iStyle& Style);
  /// Divides, then switches one attribute (see `TextAttribute`) of every segment inside the span.
  void ApplyAttributeToSegmentedText(std::int16_t SelStart, std::int16_t SelLength,
                                     std::int32_t Attribute, bool Value);

  // Words: maximal runs of characters that are not blank. They are found when first asked for after
  // a member of this class has changed the text or its segments; changes that a host makes to the
  // segments themselves do not show. Positions are one-based. Escaped codes appear as their
  // placeholders.

  std::shared_ptr<WordCollection> get_Words() const;
  std::int32_t get_WordCount() const { return get_Words()->Count(); }
  /// Empty when there is no such word.
  std::u16string WordText(std::int32_t Index) const;
  /// How many segments the word lies in; 0 when there is no such word.
  std::int32_t WordSegmentCount(std::int32_t Index) const;
  /// The word's `SegmentNumber`-th segment, if there is one.
  std::shared_ptr<Segment> WordSegment(std::int32_t Index, std::int32_t SegmentNumber) const;
  /// Where that segment stands in `Segments`; 0 when there is none.
  std::int32_t WordSegmentIndex(std::int32_t Index, std::int32_t SegmentNumber) const;

  // Each of these decodes `Text`, leaves it in the decoder, and returns its markup without the
  // visible blanks, or the punctuation, at one end or both. Codes stay.

  std::u16string TrimStr(std::u16string_view Text);
  std::u16string LTrimStr(std::u16string_view Text);
  std::u16string RTrimStr(std::u16string_view Text);
  std::u16string RemoveLeadingPunctuation(std::u16string_view Text);
  std::u16string RemoveTrailingPunctuation(std::u16string_view Text);

 private:
  std::shared_ptr<SegmentCollection> segments_ = std::make_shared<SegmentCollection>();
  mutable std::shared_ptr<WordCollection> words_;
  CustomCodes custom_codes_;
};

}  // namespace qel
