// The figures, each family printing its part of the table.
#pragma once

namespace bench {

void MeasurePages();
void MeasureSorts();
void MeasureFilters();
void MeasureFinds();
void MeasureSaves();
void MeasureImports();
void MeasureExports();
void CountRequests();
void MeasureStarts();
void MeasureServer();
void MeasureCache(); // the list's
void MeasureAssign();
void CountPaint(); // part of CountRequests

} // namespace bench
