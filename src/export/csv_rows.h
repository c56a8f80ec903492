// The rows of the comma-separated format. Nothing inside a value is escaped or doubled.
#pragma once

#include "columns/column_set.h"
#include "data/value_texts.h"
#include "export/exported_record.h"
#include "export/piece_writer.h"

// The names of the chosen columns. The row is ended also when none is chosen.
void WriteHeaderRow(const ColumnSet& columns, PieceWriter& file);
// The entry's values of the chosen columns; a property that it lacks is an empty field. The row is ended only
// when the entry has at least one of them: otherwise the next row goes on in the same line. A value for which
// there is no memory is left out.
void WriteEntryRow(const ColumnSet& columns, const ExportedRecord& entry, ValueTexts& texts,
                   PieceWriter& file);
