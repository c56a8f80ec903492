// A file of a layer between SQLite and the system. As it is it passes every call on; a layer replaces the
// methods that it watches (sqlite.org/vfs.html).
#pragma once

#include <sqlite3.h>

// What SQLite's block of an open file begins with. The layer's szOsFile is the size of its own file, this
// first, and of the system's.
struct PassingFile {
    sqlite3_file base;
    sqlite3_file* real; // the system's, in the same block
};

inline sqlite3_file* RealFile(sqlite3_file* file)
{
    return reinterpret_cast<PassingFile*>(file)->real;
}

inline const sqlite3_io_methods* RealMethods(sqlite3_file* file)
{
    return RealFile(file)->pMethods;
}

sqlite3_io_methods PassingMethods();
