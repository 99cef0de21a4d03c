#pragma once

#include <string>

#include "qel/model/iStyle.h"

/// The code builders of `iStyle` in the form that the encoder uses: they append to a buffer.
namespace qel::style_codes {

enum class CodeSet { current, v6 };

void append_on(std::u16string& out, const iStyle& style, CodeSet set);
void append_off(std::u16string& out, const iStyle& style, CodeSet set);
void append_different_on(std::u16string& out, const iStyle& style, const iStyle& last, CodeSet set);
/// `next` is null after the last run: then everything is switched off.
void append_different_off(std::u16string& out, const iStyle& style, const iStyle* next,
                          CodeSet set);

}  // namespace qel::style_codes
