// An entry as a block of lines in the simple text format.
#pragma once

#include "data/value_texts.h"
#include "export/exported_record.h"
#include "export/piece_writer.h"

// Appends the entry's block. Without memory for one of its pieces the block ends there.
void WriteEntryText(const ExportedRecord& entry, bool withLabels, ValueTexts& texts, PieceWriter& file);
