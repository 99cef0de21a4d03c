#pragma once

#include <string>
#include <string_view>

/// RTF as mail stores keep it: compressed ("LZFu"), or as it is behind the same header ("MELA").
namespace qel::richtext {

/// Whether the bytes begin with the header of such RTF.
bool is_compressed_rtf(std::string_view bytes);

/// The bytes of the RTF; none where there is no such header. The sizes and the checksum of the
/// header are not relied on: broken input gives what was unpacked before the fault. Takes linear
/// time, and gives at most nine bytes for each byte that is read.
std::string unpack_rtf(std::string_view bytes);

}  // namespace qel::richtext
