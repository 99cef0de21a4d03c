#include <stdio.h>

#include "functions.h"

enum { piece_size = 65536, longest_escape = 32 };

/** The character at the beginning of a text, and its size in bytes; 0 where there is none. */
static uint32_t first_character(qel_text text, size_t* size) {
  static const uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
  const unsigned char lead = (unsigned char)text.data[0];
  const size_t length = lead < 0xC0 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : 0;
  if (length == 0 || length > text.size) return 0;
  uint32_t character = lead & (0x7FU >> length);
  for (size_t i = 1; i < length; ++i) {
    const unsigned char byte = (unsigned char)text.data[i];
    if ((byte & 0xC0) != 0x80) return 0;
    character = character << 6 | (byte & 0x3FU);
  }
  const int is_surrogate = character >= 0xD800 && character < 0xE000;
  if (character < least[length] || character > 0x10FFFF || is_surrogate) return 0;
  *size = length;
  return character;
}

/** Writes the first character, which is not ASCII, as RTF does; returns how much that is. */
static size_t write_escaped(char* out, qel_text text, size_t* size) {
  const uint32_t character = first_character(text, size);
  if (character == 0) {
    *size = 1;
    return (size_t)snprintf(out, longest_escape, "\\'%02x", (unsigned char)text.data[0]);
  }
  if (character < 0x10000) {
    return (size_t)snprintf(out, longest_escape, "\\u%d?", (int16_t)character);
  }
  const uint32_t beyond = character - 0x10000;
  return (size_t)snprintf(out, longest_escape, "\\u%d?\\u%d?", (int16_t)(0xD800 + (beyond >> 10)),
                          (int16_t)(0xDC00 + (beyond & 0x3FF)));
}

static void take_off(qel_text* text, size_t size) {
  text->data += size;
  text->size -= size;
}

static qel_status push_characters(qel_converter* converter, qel_text* rest, qel_error* error) {
  char bytes[4096];
  size_t count = 0;
  while (rest->size > 0 && count + longest_escape <= sizeof(bytes)) {
    size_t size = 1;
    if ((unsigned char)rest->data[0] < 0x80) {
      bytes[count++] = rest->data[0];
    } else {
      count += write_escaped(bytes + count, *rest, &size);
    }
    take_off(rest, size);
  }
  const qel_text piece = {bytes, count};
  return qel_converter_push(converter, piece, error);
}

qel_status qel_sql_push(qel_converter* converter, qel_text* rest, int is_characters,
                        qel_error* error) {
  if (is_characters) return push_characters(converter, rest, error);
  const qel_text piece = {rest->data, rest->size < piece_size ? rest->size : piece_size};
  take_off(rest, piece.size);
  return qel_converter_push(converter, piece, error);
}
