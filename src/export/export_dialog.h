// The Export dialog: which entries and which fields go out. It writes them itself and tells how many they
// were.
#pragma once

#include <windows.h>

#include <string>

#include "data/session.h"
#include "export/export_job.h"
#include "list/selection_set.h"

// What the dialog chooses from.
struct ExportSource {
    ColumnSet& columns; // keeps which of them were chosen
    const SelectionSet& selection;
    const Session& session;
};

// Returns when the dialog has closed.
void RunExportDialog(HWND owner, const std::wstring& path, ExportFormat format, const ExportSource& source);

// Whether the dialog has its wide layout in such a work area, at this resolution.
bool UsesWideLayout(const RECT& workArea, int dpi);
