#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace qel::convert {

/// The shortest markup that the lossless way reads as the same text in the same formats. Every
/// character counts, blanks too, since fonts, sizes and lines show in them; a line break has no
/// format. What only conversions to RTF read as codes ("/r1") acts in them as it did.
///
/// - Codes without effect go, and "/f0" and "/y0" where a higher index follows.
/// - A code that is text is written with a tilde, where a tilde helps.
/// - A line break of the text is a line feed; "/nl" stays.
/// - Formats that are closed behind the last text stay closed, others stay open.
///
/// The markup is a whole text: a code that kept the end of a part from what follows it goes as
/// well. The result is never longer, and is its own shortest markup. Takes linear time. When
/// `stop`, asked every few thousand characters, says yes, it is only a beginning.
std::u16string normalized(std::u16string_view markup, const std::function<bool()>& stop = {});

}  // namespace qel::convert
