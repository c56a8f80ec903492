// What both formats write for a property that an entry has.
#pragma once

#include "export/piece_writer.h"
#include "mervane/file/trouble.h"
#include "mervane/values/ce_types.h"

// Writes the property's text as one piece: date and time, words, phrase, the text itself as stored, or names
// joined; nothing for an empty text and for a property that has none. False when there was no memory for it.
// *trouble, which may be null, becomes why names could not be read; of what was read before it stays.
[[nodiscard]] bool WriteValue(const CEPROPVAL& property, PieceWriter& file, StoreTrouble* trouble = nullptr);
