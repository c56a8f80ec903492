// An entry as a block of lines in the simple text format.
#pragma once

#include "export/exported_record.h"
#include "export/piece_writer.h"
#include "mervane/file/trouble.h"

// Appends the entry's block. Without memory for one of its pieces the block ends there. trouble: as
// WriteValue has it.
void WriteEntryText(const ExportedRecord& entry, bool withLabels, PieceWriter& file,
                    StoreTrouble* trouble = nullptr);
